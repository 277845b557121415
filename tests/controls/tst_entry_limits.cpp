#include "controls/EntryScript.h"

#include <QTest>
#include <cmath>
#include <limits>

using namespace EntryScript;
using Controls::BaseUnitAdapter;
using Controls::NumericEntry;

class EntryLimitsTest final : public QObject
{
    Q_OBJECT

private slots:
    void opens_data();
    void opens();
    void fineness_data();
    void fineness();
    void limitsText_data();
    void limitsText();
    void contradictingLimitsAreIgnored();
    void steppingIsExact();
};

void EntryLimitsTest::opens_data()
{
    QTest::addColumn<QString>("quantity");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("shown");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("unit by magnitude") << "frequency" << 2412345678.0 << "" << -1 << "2.412345678 GHz";
    QTest::newRow("unit as passed") << "frequency" << 2412345678.0 << "MHz" << -1 << "2412.345678 MHz";
    QTest::newRow("unknown unit") << "frequency" << 5e6 << "furlong" << -1 << "5 MHz";
    QTest::newRow("zero in the base unit") << "frequency" << 0.0 << "" << -1 << "0 Hz";
    QTest::newRow("negative zero") << "power" << -0.0 << "" << -1 << "0 dBm";
    QTest::newRow("NaN is empty") << "frequency" << nan << "MHz" << -1 << "";
    QTest::newRow("infinite is empty") << "power" << -HUGE_VAL << "dBm" << -1 << "";
    QTest::newRow("plain number") << "" << 0.35 << "" << 2 << "0.35";
    QTest::newRow("dwell in ms") << "time" << 0.0025 << "ms" << 3 << "2.5 ms";
    QTest::newRow("arithmetic noise goes") << "power" << 0.1 + 0.2 << "" << 2 << "0.3 dBm";
    QTest::newRow("digits below the decimals go") << "" << 100.0 / 3 << "" << 2 << "33.33";
    QTest::newRow("a small value stays whole") << "" << 0.0123 << "" << 2 << "0.0123";
    QTest::newRow("noise stays without decimals")
        << "power" << 0.1 + 0.2 << "" << -1 << "0.30000000000000004 dBm";
}

void EntryLimitsTest::opens()
{
    QFETCH(const QString, quantity);
    QFETCH(const double, value);
    QFETCH(const QString, unit);
    QFETCH(const int, decimals);
    QFETCH(const QString, shown);
    const BaseUnitAdapter scale(unitsOf(quantity));
    NumericEntry config;
    config.value = value;
    config.unitText = unit;
    config.decimals = decimals < 0 ? std::nullopt : std::optional<int>(decimals);
    NumberEntry entry(scale, config);
    QCOMPARE(entry.quantityText(), shown);
    QCOMPARE(entry.isSelected(), !shown.isEmpty());
    if (!shown.isEmpty()) {
        // Untouched, the value goes back exactly as it came, whatever was rounded for the eye.
        QCOMPARE(textOf(entry.pressEnter()), textOf(value + 0.0));
    }
}

void EntryLimitsTest::fineness_data()
{
    QTest::addColumn<QString>("quantity");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("accepted");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("two decimals") << "power" << 2 << "1.25<Enter>"
                                  << "1.25"
                                  << "";
    QTest::newRow("third decimal") << "power" << 2 << "1.255<Enter>" << nothing
                                   << "The finest step is 0.01 dBm.";
    QTest::newRow("third decimal is a zero") << "power" << 2 << "1.250<Enter>"
                                             << "1.25"
                                             << "";
    QTest::newRow("millihertz in GHz") << "frequency" << 3 << "1.000000000001[GHz]"
                                       << "1000000000.001"
                                       << "";
    QTest::newRow("finer than a millihertz")
        << "frequency" << 3 << "1.0005[Hz]" << nothing << "The finest step is 0.001 Hz.";
    QTest::newRow("counted in the smallest unit") << "time" << 3 << "1.5[ns]"
                                                  << "0.0000000015"
                                                  << "";
    QTest::newRow("any fineness") << "power" << -1 << "1.23456789<Enter>"
                                  << "1.23456789"
                                  << "";
}

void EntryLimitsTest::fineness()
{
    QFETCH(const QString, quantity);
    QFETCH(const int, decimals);
    QFETCH(const QString, keys);
    const QVector<Unit> units = unitsOf(quantity);
    const BaseUnitAdapter scale(units);
    NumericEntry config;
    config.value = 1.0;
    config.decimals = decimals < 0 ? std::nullopt : std::optional<int>(decimals);
    NumberEntry entry(scale, config);
    QTEST(textOf(play(entry, units, keys)), "accepted");
    QTEST(entry.refusal(), "refusal");
}

void EntryLimitsTest::limitsText_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<QString>("text");
    const double none = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("both") << 9e3 << 6e9 << "9 kHz to 6 GHz";
    QTest::newRow("minimum") << 1.0 << none << "At least 1 Hz";
    QTest::newRow("maximum") << none << 6e9 << "At most 6 GHz";
    QTest::newRow("none") << none << none << "";
    QTest::newRow("infinite") << -HUGE_VAL << HUGE_VAL << "";
}

void EntryLimitsTest::limitsText()
{
    QFETCH(const double, minimum);
    QFETCH(const double, maximum);
    const BaseUnitAdapter scale(unitsOf(QStringLiteral("frequency")));
    NumericEntry config;
    config.minimum = minimum;
    config.maximum = maximum;
    QTEST(NumberEntry(scale, config).limits().text(), "text");
}

void EntryLimitsTest::contradictingLimitsAreIgnored()
{
    const BaseUnitAdapter scale(unitsOf(QStringLiteral("power")));
    NumericEntry config;
    config.title = QStringLiteral("Level");
    config.minimum = 10.0;
    config.maximum = -10.0;
    QTest::ignoreMessage(QtWarningMsg,
                         "Ignoring the limits of \"Level\": the minimum 10 is above the maximum -10");
    NumberEntry entry(scale, config);
    QCOMPARE(entry.limits().text(), QString());
    QCOMPARE(textOf(play(entry, unitsOf(QStringLiteral("power")), QStringLiteral("50<Enter>"))),
             QStringLiteral("50"));
}

void EntryLimitsTest::steppingIsExact()
{
    const BaseUnitAdapter scale({});
    NumericEntry config;
    config.step = 0.1;
    NumberEntry entry(scale, config);
    for (int i = 1; i <= 1000; ++i) {
        entry.stepUp();
        QCOMPARE(entry.text().toDouble(), i / 10.0);
        QVERIFY2(entry.text().size() <= 5, qPrintable(entry.text()));
    }
}

QTEST_GUILESS_MAIN(EntryLimitsTest)

#include "tst_entry_limits.moc"
