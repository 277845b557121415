#include "simulator/modulation/ItemTalk.h"
#include "simulator/modulation/ModulationSuites.h"

using namespace Simulator;

// Every number on both sides of both of its bounds, every option list at its ends.
class BoundsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void bounds_data();
    void bounds();
    void choices_data();
    void choices();
    void betweenFields_data();
    void betweenFields();
};

void BoundsSuite::bounds_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("below");
    QTest::addColumn<QByteArray>("lowest");
    QTest::addColumn<QByteArray>("highest");
    QTest::addColumn<QByteArray>("above");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char* id, const char* key, const char* below, const char* lowest,
                        const char* highest, const char* above, const char* sentence) {
        QTest::addRow("%s %s", id, key)
            << QString::fromLatin1(id) << QByteArray(key) << QByteArray(below) << QByteArray(lowest)
            << QByteArray(highest) << QByteArray(above) << QString::fromUtf8(sentence);
    };
    row("digital", "SymbolRate", "0.999", "1", "62.5e6", "62500001",
        "The symbol rate must lie between 1 Hz and 62.5 MHz.");
    row("digital", "FilterAlpha", "-0.01", "0", "1", "1.01", "The filter alpha must lie between 0 and 1.");
    row("digital", "FilterLength", "0", "1", "128", "129", "The filter length must lie between 1 and 128.");
    row("digital", "PN", "3", "4", "24", "25", "The PN order must lie between 4 and 24.");
    row("digital", "SequenceSeed", "-1", "0", "2147483647", "2147483648",
        "The sequence seed must lie between 0 and 2147483647.");
    row("multitone", "Count", "0", "1", "101", "102", "The tone count must lie between 1 and 101.");
    row("multitone", "FreqSpacing", "0.9", "1", "10e6", "10000001",
        "The frequency spacing must lie between 1 Hz and 10 MHz.");
    row("multitone", "NotchWidth", "-1", "0", "100e6", "100000001",
        "The notch width must lie between 0 Hz and 100 MHz.");
    for (const char* id : {"am", "fm", "pm"})
        row(id, "Rate", "0.999", "1", "10e6", "10000001", "The rate must lie between 1 Hz and 10 MHz.");
    row("am", "Depth", "0.009", "0.01", "100", "100.01", "The depth must lie between 0.01 % and 100 %.");
    row("fm", "Deviation", "0", "1", "50e6", "50000001", "The deviation must lie between 1 Hz and 50 MHz.");
    // 360 and 180 degrees as an editor turns them into radians.
    row("pm", "PhaseDeviation", "-0.001", "0", "6.283185307179587", "6.2832",
        "The phase deviation must lie between 0° and 360°.");
    row("pm", "InitPhase", "-3.1416", "-3.141592653589794", "3.141592653589794", "3.1416",
        "The initial phase must lie between -180° and 180°.");
    row("pulse", "Width", "7.9e-9", "8e-9", "1e-3", "0.2098",
        "The width must lie between 8 ns and 209.715 ms.");
    row("pulse", "Period", "15.9e-9", "250e-6", "0.2097152", "0.2098",
        "The period must lie between 16 ns and 209.715 ms.");
    row("digital-ramp", "Span", "0.5", "1", "100e6", "100000001",
        "The span must lie between 1 Hz and 100 MHz.");
    row("digital-ramp", "SweepTime", "0.9e-6", "1e-6", "2e-3", "0.2098",
        "The sweep time must lie between 1 µs and 209.715 ms.");
    row("digital-ramp", "Period", "0.9e-6", "1e-3", "0.2097152", "0.2098",
        "The period must lie between 1 µs and 209.715 ms.");
    row("awgn", "Bandwith", "0.5", "1", "100e6", "100000001",
        "The bandwidth must lie between 1 Hz and 100 MHz.");
    row("awgn", "Length", "0.9e-6", "1e-6", "0.2097152", "0.2098",
        "The length must lie between 1 µs and 209.715 ms.");
    row("dsss", "SymbolRate", "0.5", "1", "31.25e6", "31250001",
        "The symbol rate must lie between 1 Hz and 31.25 MHz.");
    row("dsss", "FilterAlpha", "-0.01", "0", "1", "1.01", "The filter alpha must lie between 0 and 1.");
    row("dsss", "Code", "0", "1", "1023", "1024", "The code must lie between 1 and 1023.");
    row("dsss", "FilterLength", "0", "1", "128", "129", "The filter length must lie between 1 and 128.");
    row("dsss", "SequenceSeed", "-1", "0", "2147483647", "2147483648",
        "The sequence seed must lie between 0 and 2147483647.");
    row("ofdm", "SymbolCount", "0", "1", "1000", "1001", "The symbol count must lie between 1 and 1000.");
    row("ofdm", "GuardBandCarriersLeft", "-1", "0", "57", "2049",
        "The left guard band must lie between 0 and 2048.");
    row("ofdm", "GuardBandCarriersRight", "-1", "0", "56", "2049",
        "The right guard band must lie between 0 and 2048.");
    row("ofdm", "GuardInterval", "-0.1", "0", "100", "100.1",
        "The guard interval must lie between 0 % and 100 %.");
    row("ofdm", "WindowLength", "-0.1", "0", "100", "100.1",
        "The window length must lie between 0 % and 100 %.");
    row("ofdm", "SampleRate", "0.5", "1", "125e6", "125000001",
        "The sample rate must lie between 1 Hz and 125 MHz.");
    row("streaming", "SampleRate", "0.5", "1", "125e6", "125000001",
        "The sample rate must lie between 1 Hz and 125 MHz.");
    row("streaming", "IQScale", "0.009", "0.01", "100", "100.01",
        "The I/Q scale must lie between 0.01 % and 100 %.");
}

void BoundsSuite::bounds()
{
    QFETCH(QString, id);
    QFETCH(QByteArray, key);
    QFETCH(QString, sentence);
    for (const char* column : {"lowest", "highest"}) {
        Instrument instrument;
        const QByteArray value = *static_cast<QByteArray*>(QTest::qData(column, qMetaTypeId<QByteArray>()));
        QVERIFY2(instrument.take(id, setField(key.constData(), value)), column);
        QCOMPARE(instrument.state(id, key.constData()).toDouble(), value.toDouble());
    }
    for (const char* column : {"below", "above"}) {
        Instrument instrument;
        const QByteArray value = *static_cast<QByteArray*>(QTest::qData(column, qMetaTypeId<QByteArray>()));
        const Host::Response response = instrument.ask(id, setField(key.constData(), value));
        QCOMPARE(response.errorMessage, sentence);
        QCOMPARE(response.errorCode, QStringLiteral("INVALID_ARG"));
        QCOMPARE(instrument.item(id), Instrument().item(id));
    }
}

void BoundsSuite::choices_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("taken"); // all of them, as a JSON array
    QTest::addColumn<QByteArray>("other");
    const auto row = [](const char* id, const char* key, const char* taken, const char* other) {
        QTest::addRow("%s %s", id, key)
            << QString::fromLatin1(id) << QByteArray(key) << QByteArray(taken) << QByteArray(other);
    };
    const char* shapes = R"(["Square","Triangle","Ramp","Sine"])";
    for (const char* id : {"am", "fm", "pm"})
        row(id, "Shape", shapes, R"("Saw")");
    const char* filters = R"(["Rectangular","RaisedCosine","Gaussian","HalfSine","RootRaisedCosine"])";
    row("digital", "FilterType", filters, R"("None")");
    row("dsss", "FilterType", filters, R"("None")");
    row("digital", "ModulationType",
        R"(["BPSK","Pi4DQPSK","PSK8","PSK16","QAM16","QAM64","QAM256","QAM1024","APSK16","ASK2","ASK4","ASK8",)"
        R"("FSK2","FSK4","FSK8","FSK16","QPSK"])",
        R"("16QAM")");
    row("digital", "Oversample", "[2,8,16,32,4]", "3");
    row("dsss", "Oversample", "[6,8,10,12,14,16,18,20,22,24,26,28,30,32,4]", "5");
    row("ofdm", "ModulationType", R"(["BPSK","QPSK","PSK8","PSK16","QAM64","QAM256","QAM16"])",
        R"("QAM1024")");
    row("ofdm", "FFTSize", "[16,32,128,256,512,1024,2048,64]", "8");
    row("ofdm", "NullDC", "[false,true]", "0");
    row("ofdm", "Windowed", "[true,false]", "\"on\"");
    row("multitone", "PhaseMode", "[1,2,0]", "3");
}

void BoundsSuite::choices()
{
    QFETCH(QString, id);
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, taken);
    QFETCH(QByteArray, other);
    Instrument instrument;
    const QJsonArray values = object(R"({"values":)" + taken + '}').value(QStringLiteral("values")).toArray();
    QVERIFY(values.size() > 1);
    for (const QJsonValue value : values) {
        const QByteArray json = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
        QVERIFY(instrument.take(id, setField(key.constData(), json.mid(1, json.size() - 2))));
        QCOMPARE(instrument.state(id, key.constData()), value);
    }
    const ModBusinessEntry before = instrument.item(id);
    QCOMPARE(before.revision, 1 + values.size());
    const Host::Response response = instrument.ask(id, setField(key.constData(), other));
    QCOMPARE(response.errorCode, QStringLiteral("INVALID_ARG"));
    QVERIFY(response.errorMessage.startsWith(QLatin1String("The ")));
    QCOMPARE(instrument.item(id), before);
}

void BoundsSuite::betweenFields_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("sentence"); // empty: taken
    const auto row = [](const char* name, const char* id, const QByteArray& request, const char* sentence) {
        QTest::newRow(name) << QString::fromLatin1(id) << request << QString::fromUtf8(sentence);
    };
    row("pulse as long as its period", "pulse", setField("Width", "0.001"), "");
    row("pulse longer", "pulse", setField("Width", "0.0010001"),
        "The width must not be longer than the period (1 ms).");
    row("period as long as the pulse", "pulse", setField("Period", "0.00025"), "");
    row("period shorter", "pulse", setField("Period", "0.0002499"),
        "The period must not be shorter than the width (250 µs).");
    row("ramp as long as its period", "digital-ramp", setField("SweepTime", "0.002"), "");
    row("ramp longer", "digital-ramp", setField("SweepTime", "0.00201"),
        "The sweep time must not be longer than the period (2 ms).");
    row("period of the ramp shorter", "digital-ramp", setField("Period", "0.00099"),
        "The period must not be shorter than the sweep time (1 ms).");
    row("one carrier left", "ofdm", setField("GuardBandCarriersLeft", "57"), "");
    row("no carrier left", "ofdm", setField("GuardBandCarriersLeft", "58"),
        "The guard bands leave none of the 64 carriers of the FFT.");
    row("small FFT", "ofdm", setField("FFTSize", "16"), "");
    row("DSSS modulation", "dsss", setField("ModulationType", "\"QPSK\""),
        "The modulation type cannot be set.");
    row("seed of fixed phases", "multitone", setField("Seed", "5"),
        "The phase seed can be set for random phases only.");
    row("FSK deviation of QPSK", "digital", setField("FSKDeviation", "1000"),
        "The FSK deviation can be set for FSK modulations only.");
}

void BoundsSuite::betweenFields()
{
    QFETCH(QString, id);
    QFETCH(QByteArray, request);
    QFETCH(QString, sentence);
    Instrument instrument;
    QCOMPARE(instrument.ask(id, request).errorMessage, sentence);
    QCOMPARE(instrument.item(id).revision, sentence.isEmpty() ? 2 : 1);
}

std::unique_ptr<QObject> makeBoundsSuite()
{
    return std::make_unique<BoundsSuite>();
}

#include "BoundsSuite.moc"
