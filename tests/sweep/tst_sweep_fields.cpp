#include "business/UnitAdapters.h"
#include "sweep/SweepPanelFixture.h"

#include <QMetaEnum>
#include <QMetaMethod>
#include <QMetaObject>
#include <QTest>
#include <cmath>
#include <functional>
#include <limits>

using MinibarHelperProtocol::SweepChangeRequest;

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

double SweepSettings::*memberOf(Field field)
{
    switch (field) {
    case Field::FrequencyStart:
        return &SweepSettings::startHz;
    case Field::FrequencyStop:
        return &SweepSettings::stopHz;
    case Field::FrequencyStep:
        return &SweepSettings::stepHz;
    case Field::LevelStart:
        return &SweepSettings::startDbm;
    case Field::LevelStop:
        return &SweepSettings::stopDbm;
    case Field::LevelStep:
        return &SweepSettings::stepDb;
    case Field::Dwell:
        return &SweepSettings::dwellSeconds;
    case Field::Invalid:
        break;
    }
    return nullptr;
}

const char* nameOf(Field field)
{
    return QMetaEnum::fromType<Field>().valueToKey(int(field));
}

} // namespace

using SnapshotChange = std::function<void(SweepSnapshot&)>;
Q_DECLARE_METATYPE(SnapshotChange)

// What the panel says of its fields, and what it asks for when it is handed a value.
class SweepFieldsTest final : public QObject
{
    Q_OBJECT

private slots:
    void theFieldsAreNumbered();
    void theSignalsAreDeclaredAsAgreed();
    void whatTheKeyboardIsTold_data();
    void whatTheKeyboardIsTold();
    void theValueOfAFieldIsTheConfirmedOne();
    void theUnitFollowsTheMagnitude_data();
    void theUnitFollowsTheMagnitude();
    void aValueAsksForThatFieldAlone_data();
    void aValueAsksForThatFieldAlone();
    void whatIsNoValueAsksForNothing_data();
    void whatIsNoValueAsksForNothing();
    void withoutAnEditableSweepAValueAsksForNothing_data();
    void withoutAnEditableSweepAValueAsksForNothing();
    void buttonTexts_data();
    void buttonTexts();
};

void SweepFieldsTest::theFieldsAreNumbered()
{
    const QMetaEnum meta = QMetaEnum::fromType<Field>();
    QCOMPARE(QByteArray(meta.scope()), QByteArray("RemoteSweepPanel"));
    const char* const names[] = {"Invalid",    "FrequencyStart", "FrequencyStop", "FrequencyStep",
                                 "LevelStart", "LevelStop",      "LevelStep",     "Dwell"};
    QCOMPARE(meta.keyCount(), 8);
    for (int i = 0; i < 8; ++i) {
        QCOMPARE(QByteArray(meta.key(i)), QByteArray(names[i]));
        QCOMPARE(meta.value(i), i);
    }
}

void SweepFieldsTest::theSignalsAreDeclaredAsAgreed()
{
    const QMetaObject& meta = RemoteSweepPanel::staticMetaObject;
    const QMetaMethod change = meta.method(meta.methodOffset());
    QCOMPARE(change.methodSignature(),
             QByteArray("changeRequested(MinibarHelperProtocol::SweepChangeRequest)"));
    QCOMPARE(change.parameterNames(), QList<QByteArray>{"request"});
    const QMetaMethod edit = meta.method(meta.methodOffset() + 1);
    QCOMPARE(edit.methodSignature(),
             QByteArray("numericEditRequested(RemoteSweepPanel::NumericField,QWidget*)"));
    QCOMPARE(edit.parameterNames(), (QList<QByteArray>{"field", "anchor"}));
}

void SweepFieldsTest::whatTheKeyboardIsTold_data()
{
    QTest::addColumn<Field>("field");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("adapterType");
    QTest::addColumn<double>("step");
    QTest::addColumn<QString>("unitText");
    QTest::addColumn<QString>("auxText");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<bool>("requiresPositive");
    const QString frequency = Adapters::FrequencyUnitAdapter::adapterType();
    const QString power = Adapters::PowerUnitAdapter::adapterType();
    const QString powerStep = Adapters::PowerStepUnitAdapter::adapterType();
    const QString time = Adapters::TimeUnitAdapter::adapterType();
    const auto row = [](Field field) -> QTestData& { return QTest::newRow(nameOf(field)) << field; };
    row(Field::FrequencyStart) << "Start Frequency" << frequency << 1e6 << "GHz"
                               << "125" << -1 << false;
    row(Field::FrequencyStop) << "Stop Frequency" << frequency << 1e6 << "GHz"
                              << "125" << -1 << false;
    row(Field::FrequencyStep) << "Frequency Step" << frequency << 1e7 << "MHz"
                              << "" << -1 << true;
    row(Field::LevelStart) << "Start Level" << power << 10.0 << "dBm"
                           << "" << 2 << false;
    row(Field::LevelStop) << "Stop Level" << power << 10.0 << "dBm"
                          << "" << 2 << false;
    row(Field::LevelStep) << "Level Step" << powerStep << 10.0 << "dB"
                          << "" << 2 << true;
    row(Field::Dwell) << "Dwell Time" << time << 0.001 << "ms"
                      << "" << 3 << true;
    row(Field::Invalid) << ""
                        << "" << 1.0 << ""
                        << "" << -1 << false;
    QTest::newRow("no field") << Field(8) << ""
                              << "" << 1.0 << ""
                              << "" << -1 << false;
    QTest::newRow("no field, below") << Field(-1) << ""
                                     << "" << 1.0 << ""
                                     << "" << -1 << false;
}

void SweepFieldsTest::whatTheKeyboardIsTold()
{
    QFETCH(const Field, field);
    SweepPanelFixture fixture;
    for (const bool withSweep : {false, true}) { // the defaults have the same units
        if (withSweep) {
            fixture.panel.applySweep(editableSweep());
        }
        QTEST(fixture.panel.fieldTitle(field), "title");
        QTEST(fixture.panel.fieldAdapterType(field), "adapterType");
        QTEST(fixture.panel.fieldStep(field), "step");
        QTEST(fixture.panel.fieldUnitText(field), "unitText");
        QTEST(fixture.panel.fieldAuxText(field), "auxText");
        QTEST(fixture.panel.fieldDecimals(field), "decimals");
        QTEST(fixture.panel.fieldRequiresPositive(field), "requiresPositive");
    }
}

void SweepFieldsTest::theValueOfAFieldIsTheConfirmedOne()
{
    SweepPanelFixture fixture;
    const auto compare = [&](const SweepSettings& settings) {
        for (const Field field : allFields) {
            QVERIFY2(fixture.panel.fieldValue(field) == settings.*memberOf(field), nameOf(field));
        }
        QCOMPARE(fixture.panel.fieldValue(Field::Invalid), 0.0);
        QCOMPARE(fixture.panel.fieldValue(Field(8)), 0.0);
    };
    compare(SweepSettings());
    const SweepSnapshot sweep = editableSweep();
    fixture.panel.applySweep(sweep);
    compare(sweep.settings);
    fixture.panel.applyNumericValue(Field::Dwell, 5); // asks, and changes nothing
    compare(sweep.settings);
    fixture.panel.clearSweep();
    compare(SweepSettings());
}

void SweepFieldsTest::theUnitFollowsTheMagnitude_data()
{
    QTest::addColumn<double>("hz");
    QTest::addColumn<QString>("unit");
    QTest::newRow("1 GHz") << 1e9 << "GHz";
    QTest::newRow("below 1 GHz") << std::nextafter(1e9, 0.0) << "MHz";
    QTest::newRow("-1 GHz") << -1e9 << "GHz";
    QTest::newRow("1 MHz") << 1e6 << "MHz";
    QTest::newRow("below 1 MHz") << 999999.999 << "kHz";
    QTest::newRow("-2 MHz") << -2e6 << "MHz";
    QTest::newRow("1 kHz") << 1000.0 << "kHz";
    QTest::newRow("below 1 kHz") << 999.999 << "Hz";
    QTest::newRow("0") << 0.0 << "Hz";
    QTest::newRow("very large") << 1e15 << "GHz";
    QTest::newRow("NaN") << noNumber << "Hz";
}

void SweepFieldsTest::theUnitFollowsTheMagnitude()
{
    QFETCH(const double, hz);
    SweepPanelFixture fixture;
    for (const Field field : {Field::FrequencyStart, Field::FrequencyStop, Field::FrequencyStep}) {
        SweepSnapshot sweep = editableSweep();
        sweep.settings.*memberOf(field) = hz;
        fixture.panel.applySweep(sweep);
        QTEST(fixture.panel.fieldUnitText(field), "unit");
    }
}

void SweepFieldsTest::aValueAsksForThatFieldAlone_data()
{
    QTest::addColumn<Field>("field");
    QTest::addColumn<double>("value");
    for (const Field field : allFields) {
        QTest::newRow(nameOf(field)) << field << 12.75;
    }
    QTest::newRow("the confirmed value again") << Field::FrequencyStart << 1.5e9;
    QTest::newRow("no limits here: 0") << Field::Dwell << 0.0;
    QTest::newRow("no limits here: below 0") << Field::FrequencyStep << -5.0;
    QTest::newRow("no limits here: huge") << Field::LevelStop << 1e300;
    QTest::newRow("a field of the other plan") << Field::LevelStep << 3.0;
}

void SweepFieldsTest::aValueAsksForThatFieldAlone()
{
    QFETCH(const Field, field);
    QFETCH(const double, value);
    SweepPanelFixture fixture;
    SweepSnapshot sweep = editableSweep();
    sweep.settings.enabled = true;
    fixture.panel.applySweep(sweep);
    fixture.panel.applyNumericValue(field, value);
    QCOMPARE(fixture.emitted(), 1);
    QCOMPARE(fixture.changes.count(), 1);
    QCOMPARE(fixture.request(0).expectedRevision, 41);
    sweep.settings.*memberOf(field) = value;
    QVERIFY(fixture.request(0).settings == sweep.settings);
}

void SweepFieldsTest::whatIsNoValueAsksForNothing_data()
{
    QTest::addColumn<Field>("field");
    QTest::addColumn<double>("value");
    QTest::newRow("no field") << Field::Invalid << 1.0;
    QTest::newRow("a field that is none") << Field(8) << 1.0;
    QTest::newRow("NaN") << Field::Dwell << noNumber;
    QTest::newRow("infinity") << Field::FrequencyStart << infinite;
    QTest::newRow("minus infinity") << Field::LevelStart << -infinite;
}

void SweepFieldsTest::whatIsNoValueAsksForNothing()
{
    QFETCH(const Field, field);
    QFETCH(const double, value);
    SweepPanelFixture fixture;
    fixture.panel.applySweep(editableSweep());
    fixture.panel.applyNumericValue(field, value);
    QCOMPARE(fixture.emitted(), 0);
}

void SweepFieldsTest::withoutAnEditableSweepAValueAsksForNothing_data()
{
    QTest::addColumn<QString>("situation");
    QTest::newRow("no sweep yet") << "none";
    QTest::newRow("sweep gone") << "gone";
    QTest::newRow("busy") << "busy";
    QTest::newRow("not available") << "unavailable";
}

void SweepFieldsTest::withoutAnEditableSweepAValueAsksForNothing()
{
    QFETCH(const QString, situation);
    SweepPanelFixture fixture;
    SweepSnapshot sweep = editableSweep();
    sweep.available = situation != QLatin1String("unavailable");
    fixture.panel.setBusy(situation == QLatin1String("busy"));
    if (situation != QLatin1String("none")) {
        fixture.panel.applySweep(sweep);
    }
    if (situation == QLatin1String("gone")) {
        fixture.panel.clearSweep();
    }
    for (const Field field : allFields) {
        fixture.panel.applyNumericValue(field, 1);
    }
    QCOMPARE(fixture.emitted(), 0);
}

void SweepFieldsTest::buttonTexts_data()
{
    QTest::addColumn<SnapshotChange>("change");
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, std::initializer_list<const char*> buttons, const char* text,
                        const SnapshotChange& change) {
        QStringList names;
        for (const char* button : buttons) {
            names.append(QLatin1String(button));
        }
        QTest::newRow(name) << change << names << text;
    };
    const auto number = [&](const char* name, std::initializer_list<const char*> buttons,
                            double SweepSettings::*member, double value, const char* text) {
        row(name, buttons, text, [=](SweepSnapshot& sweep) { sweep.settings.*member = value; });
    };
    number("start frequency", {"btnStartFreq"}, &SweepSettings::startHz, 2.4e9, "2.4GHz");
    number("stop frequency", {"btnStopFreq"}, &SweepSettings::stopHz, 999999.5, "999.9995kHz");
    number("frequency step", {"btnStepFreq"}, &SweepSettings::stepHz, 12.5, "12.5Hz");
    number("start level", {"btnStartLevel"}, &SweepSettings::startDbm, -20, "-20 dBm");
    number("stop level", {"btnStopLevel"}, &SweepSettings::stopDbm, 3.14159, "3.142 dBm");
    number("level that rounds to 0", {"btnStopLevel"}, &SweepSettings::stopDbm, -0.0001, "0 dBm");
    number("level step", {"btnStepLevel"}, &SweepSettings::stepDb, 0.25, "0.25 dB");
    number("dwell", {"btnDwellTime_Analog", "btnDwellTime_Analog_Level"}, &SweepSettings::dwellSeconds,
           0.0025, "2.5 ms");
    number("dwell of a second", {"btnDwellTime_Analog", "btnDwellTime_Analog_Level"},
           &SweepSettings::dwellSeconds, 1, "1000 ms");
    number("dwell of 100 ns", {"btnDwellTime_Analog"}, &SweepSettings::dwellSeconds, 1e-7, "0 ms");
    number("frequency without a value", {"btnStartFreq"}, &SweepSettings::startHz, noNumber, "--");
    number("level without a value", {"btnStartLevel"}, &SweepSettings::startDbm, noNumber, "-- dBm");
}

void SweepFieldsTest::buttonTexts()
{
    QFETCH(const SnapshotChange, change);
    QFETCH(const QStringList, buttons);
    SweepPanelFixture fixture;
    SweepSnapshot sweep = editableSweep();
    change(sweep);
    fixture.panel.applySweep(sweep);
    for (const QString& name : buttons) {
        QTEST(fixture.button(qPrintable(name))->labelText(), "text");
    }
    fixture.panel.clearSweep();
    for (const ButtonOfField& entry : valueButtons) {
        QCOMPARE(fixture.button(entry.objectName)->labelText(), QStringLiteral("--"));
    }
}

QTEST_MAIN(SweepFieldsTest)

#include "tst_sweep_fields.moc"
