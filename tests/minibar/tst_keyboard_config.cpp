#include "business/UnitAdapters.h"
#include "minibar/BarStatus.h"
#include "minibar/KeyboardConfig.h"
#include "modeditors/contract/NumericFieldSpec.h"

#include <QTest>

using Config = PropertyBindingHelper::NumericKeyboardConfig;
using Field = RemoteSweepPanel::NumericField;

Q_DECLARE_METATYPE(Config)

// What the numeric keyboard is told, for every value that can be entered on it.
class TestKeyboardConfig final : public QObject
{
    Q_OBJECT

private slots:
    void quickEdits();
    void sweepFields_data();
    void sweepFields();
    void modFields_data();
    void modFields();
};

namespace {

void compare(const Config& actual, const Config& expected)
{
    QCOMPARE(actual.title, expected.title);
    QCOMPARE(actual.adapterType, expected.adapterType);
    QCOMPARE(actual.value, expected.value);
    QVERIFY(actual.step == expected.step);
    QVERIFY(actual.minimum == expected.minimum);
    QVERIFY(actual.maximum == expected.maximum);
    QVERIFY(actual.decimals == expected.decimals);
    QCOMPARE(actual.integerOnly, expected.integerOnly);
    QCOMPARE(actual.unitText, expected.unitText);
    QCOMPARE(actual.auxText, expected.auxText);
}

Config config(const char* title, const QString& adapterType, double value, double step, const char* unit)
{
    Config config;
    config.title = QLatin1String(title);
    config.adapterType = adapterType;
    config.value = value;
    config.step = step;
    config.unitText = QLatin1String(unit);
    return config;
}

} // namespace

void TestKeyboardConfig::quickEdits()
{
    BarStatus status;
    status.centerUnit = QStringLiteral("MHz");
    status.levelUnit = QStringLiteral("dBm");
    compare(frequencyKeyboardConfig(status),
            config("Frequency", Adapters::OutputFrequencyUnitAdapter::adapterType(), 1e9, 1e6, "MHz"));
    compare(levelKeyboardConfig(status),
            config("Level", Adapters::PowerUnitAdapter::adapterType(), -20, 5, "dBm"));
}

void TestKeyboardConfig::sweepFields_data()
{
    QTest::addColumn<Field>("field");
    QTest::addColumn<Config>("expected");
    const auto row = [](Field field, Config expected, std::optional<double> minimum,
                        std::optional<int> decimals, const char* auxText = "") {
        expected.minimum = minimum;
        expected.decimals = decimals;
        expected.auxText = QLatin1String(auxText);
        QTest::newRow(qPrintable(expected.title)) << field << expected;
    };
    const QString frequency = Adapters::FrequencyUnitAdapter::adapterType();
    const QString power = Adapters::PowerUnitAdapter::adapterType();
    row(Field::FrequencyStart, config("Start Frequency", frequency, 1e9, 1e6, "GHz"), {}, {}, "125");
    row(Field::FrequencyStop, config("Stop Frequency", frequency, 2e9, 1e6, "GHz"), {}, {}, "125");
    row(Field::FrequencyStep, config("Frequency Step", frequency, 1e7, 1e7, "MHz"), 1.0, {});
    row(Field::LevelStart, config("Start Level", power, -20, 10, "dBm"), {}, 2);
    row(Field::LevelStop, config("Stop Level", power, -19, 10, "dBm"), {}, 2);
    row(Field::LevelStep, config("Level Step", Adapters::PowerStepUnitAdapter::adapterType(), 1, 10, "dB"),
        1e-6, 2);
    row(Field::Dwell, config("Dwell Time", Adapters::TimeUnitAdapter::adapterType(), 0.001, 0.001, "ms"),
        1e-12, 3);
}

void TestKeyboardConfig::sweepFields()
{
    QFETCH(Field, field);
    QFETCH(Config, expected);
    const RemoteSweepPanel panel(true, nullptr);
    compare(sweepKeyboardConfig(panel, field), expected);
}

void TestKeyboardConfig::modFields_data()
{
    QTest::addColumn<bool>("full");
    QTest::newRow("nothing optional") << false;
    QTest::newRow("everything") << true;
}

void TestKeyboardConfig::modFields()
{
    QFETCH(bool, full);
    NumericFieldSpec spec;
    spec.describe(QStringLiteral("Key"), QStringLiteral("Title"), 12, full ? 3 : 0, full ? 4 : -1, full);
    Config expected;
    expected.title = QStringLiteral("Title");
    expected.value = 12;
    if (full) {
        spec.unitType = expected.adapterType = Adapters::TimeUnitAdapter::adapterType();
        spec.unitText = expected.unitText = QStringLiteral("ms");
        spec.auxText = expected.auxText = QStringLiteral("125");
        spec.setMinimum(5);
        spec.setMaximum(60);
        expected.step = 3;
        expected.minimum = 5;
        expected.maximum = 60;
        expected.decimals = 4;
        expected.integerOnly = true;
    }
    compare(modKeyboardConfig(spec), expected);
}

QTEST_MAIN(TestKeyboardConfig)
#include "tst_keyboard_config.moc"
