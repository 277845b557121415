#include "business/UnitAdapters.h"

#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <limits>

using Controls::BaseUnitAdapter;
using Controls::Unit;

namespace {

QStringList unitTexts(const BaseUnitAdapter& adapter)
{
    QStringList texts;
    for (const Unit& unit : adapter.units()) {
        texts.append(unit.text);
    }
    return texts;
}

} // namespace

class UnitAdaptersTest final : public QObject
{
    Q_OBJECT

private slots:
    void quantity_data();
    void quantity();
    void everyTypeHasItsOwnText();
    void unknownTypesArePlainNumbers_data();
    void unknownTypesArePlainNumbers();
    void unitByText();
    void bestUnit_data();
    void bestUnit();
    void currentValueTellsOfChangesOnly();
    void commitTellsOnceEachTime();
    void commitStoresTheValueBeforeItTells();
    void propertiesAreReachedByName();
};

void UnitAdaptersTest::quantity_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<QStringList>("units");
    QTest::addColumn<QVector<int>>("exponents");
    QTest::addColumn<int>("commitMode");

    const QStringList hertz = {QStringLiteral("GHz"), QStringLiteral("MHz"), QStringLiteral("kHz"),
                               QStringLiteral("Hz")};
    const QStringList seconds = {QStringLiteral("s"), QStringLiteral("ms"), QStringLiteral("\u00b5s"),
                                 QStringLiteral("ns"), QStringLiteral("ps")};
    QTest::newRow("frequency") << Adapters::FrequencyUnitAdapter::adapterType()
                               << QByteArray("Adapters::FrequencyUnitAdapter") << hertz
                               << QVector<int>{9, 6, 3, 0} << 0;
    QTest::newRow("output frequency")
        << Adapters::OutputFrequencyUnitAdapter::adapterType()
        << QByteArray("Adapters::OutputFrequencyUnitAdapter") << hertz << QVector<int>{9, 6, 3, 0} << 2;
    QTest::newRow("power") << Adapters::PowerUnitAdapter::adapterType()
                           << QByteArray("Adapters::PowerUnitAdapter") << QStringList{QStringLiteral("dBm")}
                           << QVector<int>{0} << 0;
    QTest::newRow("power step") << Adapters::PowerStepUnitAdapter::adapterType()
                                << QByteArray("Adapters::PowerStepUnitAdapter")
                                << QStringList{QStringLiteral("dB")} << QVector<int>{0} << 0;
    QTest::newRow("time") << Adapters::TimeUnitAdapter::adapterType()
                          << QByteArray("Adapters::TimeUnitAdapter") << seconds
                          << QVector<int>{0, -3, -6, -9, -12} << 0;
}

void UnitAdaptersTest::quantity()
{
    QFETCH(QString, type);
    QFETCH(QByteArray, className);
    const std::unique_ptr<BaseUnitAdapter> adapter = Adapters::createAdapter(type);
    QCOMPARE(QByteArray(adapter->metaObject()->className()), className);
    QTEST(unitTexts(*adapter), "units");
    QVector<int> exponents;
    for (const Unit& unit : adapter->units()) {
        exponents.append(unit.exponent);
    }
    QTEST(exponents, "exponents");
    QTEST(adapter->commitMode(), "commitMode");
    QCOMPARE(adapter->currentValue(), 0.0);
    QVERIFY(adapter->parent() == nullptr);
}

void UnitAdaptersTest::everyTypeHasItsOwnText()
{
    const QSet<QString> types = {
        Adapters::FrequencyUnitAdapter::adapterType(), Adapters::OutputFrequencyUnitAdapter::adapterType(),
        Adapters::PowerUnitAdapter::adapterType(), Adapters::PowerStepUnitAdapter::adapterType(),
        Adapters::TimeUnitAdapter::adapterType()};
    QCOMPARE(types.size(), 5);
    QVERIFY(!types.contains(QString()));
}

void UnitAdaptersTest::unknownTypesArePlainNumbers_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("empty") << QString();
    QTest::newRow("unknown") << QStringLiteral("VoltageUnitAdapter");
    QTest::newRow("other letter case") << Adapters::TimeUnitAdapter::adapterType().toLower();
}

void UnitAdaptersTest::unknownTypesArePlainNumbers()
{
    QFETCH(QString, type);
    const std::unique_ptr<BaseUnitAdapter> adapter = Adapters::createAdapter(type);
    QVERIFY(adapter->units().isEmpty());
    QCOMPARE(adapter->commitMode(), int(BaseUnitAdapter::OnAcceptance));
    QCOMPARE(adapter->indexOfBestUnit(5.0), -1);
}

void UnitAdaptersTest::unitByText()
{
    const Adapters::TimeUnitAdapter time;
    QCOMPARE(time.indexOfUnit(QStringLiteral("s")), 0);
    QCOMPARE(time.indexOfUnit(QStringLiteral("\u00b5s")), 2);
    QCOMPARE(time.indexOfUnit(QStringLiteral("MS")), -1);
    QCOMPARE(time.indexOfUnit(QString()), -1);
}

void UnitAdaptersTest::bestUnit_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("unit");

    const auto row = [](const char* name, const QString& type, double value, const char* unit) {
        QTest::newRow(name) << type << value << QString::fromUtf8(unit);
    };
    const QString frequency = Adapters::FrequencyUnitAdapter::adapterType();
    row("1 GHz", frequency, 1e9, "GHz");
    row("below 1 GHz", frequency, 999999999.9999999, "MHz");
    row("far above 1 GHz", frequency, 1e308, "GHz");
    row("1 MHz", frequency, 1e6, "MHz");
    row("below 1 MHz", frequency, 999999.9999, "kHz");
    row("1 kHz", frequency, 1000.0, "kHz");
    row("below 1 kHz", frequency, 999.9999, "Hz");
    row("below 1 Hz", frequency, 1e-9, "Hz");
    row("negative", frequency, -2.4e9, "GHz");
    row("zero", frequency, 0.0, "Hz");
    row("negative zero", frequency, -0.0, "Hz");
    row("not a number", frequency, std::numeric_limits<double>::quiet_NaN(), "Hz");
    row("infinity", frequency, std::numeric_limits<double>::infinity(), "Hz");

    const QString time = Adapters::TimeUnitAdapter::adapterType();
    row("1 s", time, 1.0, "s");
    row("1 ms", time, 1e-3, "ms");
    row("1 \u00b5s", time, 1e-6, "\u00b5s");
    row("1 ns", time, 1e-9, "ns");
    row("1 ps", time, 1e-12, "ps");
    row("below 1 ns", time, 9.999999999999999e-10, "ps");
    row("below 1 ps", time, 1e-15, "ps");
    row("zero seconds", time, 0.0, "s");

    row("level", Adapters::PowerUnitAdapter::adapterType(), 0.01, "dBm");
}

void UnitAdaptersTest::bestUnit()
{
    QFETCH(QString, type);
    QFETCH(double, value);
    const std::unique_ptr<BaseUnitAdapter> adapter = Adapters::createAdapter(type);
    const int index = adapter->indexOfBestUnit(value);
    QVERIFY(index >= 0 && index < adapter->units().size());
    QTEST(adapter->units().at(index).text, "unit");
}

void UnitAdaptersTest::currentValueTellsOfChangesOnly()
{
    Adapters::PowerUnitAdapter adapter;
    QSignalSpy changed(&adapter, &BaseUnitAdapter::currentValueChanged);
    QSignalSpy finished(&adapter, &BaseUnitAdapter::editingFinished);
    adapter.setCurrentValue(-20.0);
    adapter.setCurrentValue(-20.0);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).toDouble(), -20.0);
    adapter.setCurrentValue(std::numeric_limits<double>::quiet_NaN());
    adapter.setCurrentValue(std::numeric_limits<double>::quiet_NaN());
    QCOMPARE(changed.size(), 2);
    QCOMPARE(finished.size(), 0);
}

void UnitAdaptersTest::commitTellsOnceEachTime()
{
    Adapters::OutputFrequencyUnitAdapter adapter;
    QSignalSpy changed(&adapter, &BaseUnitAdapter::currentValueChanged);
    QSignalSpy finished(&adapter, &BaseUnitAdapter::editingFinished);
    adapter.commit(2.4e9);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.at(0).at(0).toDouble(), 2.4e9);
    adapter.commit(2.4e9); // an edit that leaves the value alone is an edit, too
    QCOMPARE(finished.size(), 2);
    QCOMPARE(changed.size(), 1);
}

void UnitAdaptersTest::commitStoresTheValueBeforeItTells()
{
    Adapters::OutputFrequencyUnitAdapter adapter;
    double seen = 0.0;
    connect(&adapter, &BaseUnitAdapter::editingFinished, this, [&] { seen = adapter.currentValue(); });
    adapter.commit(2.4e9);
    QCOMPARE(seen, 2.4e9);
}

void UnitAdaptersTest::propertiesAreReachedByName()
{
    Adapters::OutputFrequencyUnitAdapter adapter;
    QVERIFY(adapter.setProperty("currentValue", 5.0));
    QCOMPARE(adapter.currentValue(), 5.0);
    QCOMPARE(adapter.property("commitMode").toInt(), 2);
    QVERIFY(!adapter.setProperty("commitMode", 0));
}

QTEST_GUILESS_MAIN(UnitAdaptersTest)
#include "tst_unit_adapters.moc"
