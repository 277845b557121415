#include "simulator/modulation/ItemTalk.h"
#include "simulator/modulation/ModulationSuites.h"

using namespace Simulator;

namespace {

const QString digital = QStringLiteral("digital");
const QString dsss = QStringLiteral("dsss");
const QString multitone = QStringLiteral("multitone");
const QString notSupported = QStringLiteral("NOT_SUPPORTED");
const QString invalidArgument = QStringLiteral("INVALID_ARG");

// The candidate tones as "index:frequency" with a "-" in front of those that are off.
QString tonesOf(const Instrument& instrument)
{
    QStringList texts;
    const QJsonArray tones = instrument.profile(multitone, "candidateTones").toArray();
    for (const QJsonValue tone : tones) {
        const QJsonObject object = tone.toObject();
        texts += (object.value(QStringLiteral("enabled")).toBool() ? QString() : QStringLiteral("-")) +
                 QString::number(object.value(QStringLiteral("latticeIndex")).toInt()) + QLatin1Char(':') +
                 QString::number(object.value(QStringLiteral("requestedFrequency")).toDouble());
    }
    return texts.join(QLatin1Char(' '));
}

QByteArray action(const char* word, const QByteArray& value)
{
    return QByteArray(R"("action":")") + word + R"(","args":{"value":)" + value + '}';
}

} // namespace

// The profile follows the state.
class ProfilesSuite final : public QObject
{
    Q_OBJECT

private slots:
    void filterAlpha_data();
    void filterAlpha();
    void fskDeviation_data();
    void fskDeviation();
    void oversampleFollowsTheSymbolRate_data();
    void oversampleFollowsTheSymbolRate();
    void waveformSize_data();
    void waveformSize();
    void defaultTrim();
    void randomPhases();
    void lattice_data();
    void lattice();
    void limitsOfTheLattice();
    void discreteTones();
    void discreteToneRefusals_data();
    void discreteToneRefusals();
    void shortestPeriod();
};

void ProfilesSuite::filterAlpha_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QByteArray>("filter");
    QTest::addColumn<bool>("editable");
    for (const char* filter : {"Rectangular", "RaisedCosine", "RootRaisedCosine", "Gaussian", "HalfSine"}) {
        const bool cosine = QByteArray(filter).endsWith("RaisedCosine");
        QTest::addRow("digital %s", filter) << digital << QByteArray(filter) << cosine;
        QTest::addRow("dsss %s", filter)
            << dsss << QByteArray(filter) << (cosine || QByteArray(filter) == "Gaussian");
    }
}

void ProfilesSuite::filterAlpha()
{
    QFETCH(QString, id);
    QFETCH(QByteArray, filter);
    QFETCH(bool, editable);
    Instrument instrument;
    QVERIFY(instrument.take(id, setField("FilterType", '"' + filter + '"')));
    QCOMPARE(instrument.profile(id, "filterAlphaEditable"), QJsonValue(editable));
    const Host::Response response = instrument.ask(id, setField("FilterAlpha", "0.2"));
    QCOMPARE(response.errorCode, editable ? QString() : notSupported);
    QCOMPARE(response.errorMessage.isEmpty(), editable);
    QCOMPARE(instrument.state(id, "FilterAlpha"), QJsonValue(editable ? 0.2 : 0.35));
}

void ProfilesSuite::fskDeviation_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<bool>("editable");
    for (const char* type : {"BPSK", "QPSK", "QAM64", "ASK8", "APSK16", "FSK2", "FSK4", "FSK8", "FSK16"})
        QTest::newRow(type) << QByteArray(type) << QByteArray(type).startsWith("FSK");
}

void ProfilesSuite::fskDeviation()
{
    QFETCH(QByteArray, type);
    QFETCH(bool, editable);
    Instrument instrument;
    QVERIFY(instrument.take(digital, setField("ModulationType", '"' + type + '"')));
    QCOMPARE(instrument.profile(digital, "fskDeviationEditable"), QJsonValue(editable));
    QCOMPARE(instrument.ask(digital, setField("FSKDeviation", "50e6")).errorCode,
             editable ? QString() : notSupported);
    if (editable) {
        QCOMPARE(instrument.ask(digital, setField("FSKDeviation", "50000001")).errorMessage,
                 QStringLiteral("The FSK deviation must lie between 0 Hz and 50 MHz."));
    }
}

void ProfilesSuite::oversampleFollowsTheSymbolRate_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("chosen");
    QTest::addColumn<QByteArray>("symbolRate");
    QTest::addColumn<QString>("options");
    QTest::addColumn<int>("settled");
    const auto row = [](const char* name, const QString& id, int chosen, const char* rate,
                        const char* options, int settled) {
        QTest::newRow(name) << id << chosen << QByteArray(rate) << QString::fromLatin1(options) << settled;
    };
    row("digital slow", digital, 32, "3906250", "2,4,8,16,32", 32);
    row("digital a little faster", digital, 32, "3906251", "2,4,8,16", 16);
    row("digital small stays", digital, 4, "3906251", "2,4,8,16", 4);
    row("digital fastest", digital, 32, "62.5e6", "2", 2);
    row("dsss slow", dsss, 32, "3906250", "4,6,8,10,12,14,16,18,20,22,24,26,28,30,32", 32);
    row("dsss a little faster", dsss, 32, "3906251", "4,6,8,10,12,14,16,18,20,22,24,26,28,30", 30);
    row("dsss fastest", dsss, 8, "31.25e6", "4", 4);
}

void ProfilesSuite::oversampleFollowsTheSymbolRate()
{
    QFETCH(QString, id);
    QFETCH(int, chosen);
    QFETCH(QByteArray, symbolRate);
    Instrument instrument;
    QVERIFY(instrument.take(id, setField("Oversample", QByteArray::number(chosen))));
    QVERIFY(instrument.take(id, setField("SymbolRate", symbolRate)));
    QStringList options;
    const QJsonArray array = instrument.profile(id, "oversampleOptions").toArray();
    for (const QJsonValue option : array)
        options += QString::number(option.toInt());
    QTEST(options.join(QLatin1Char(',')), "options");
    QTEST(instrument.state(id, "Oversample").toInt(), "settled");
    const Host::Response response = instrument.ask(id, setField("Oversample", "34"));
    QCOMPARE(response.errorCode, invalidArgument);
    QCOMPARE(response.errorMessage,
             QStringLiteral("The oversampling must be one of: %1.").arg(options.join(QLatin1String(", "))));
}

void ProfilesSuite::waveformSize_data()
{
    QTest::addColumn<QByteArray>("pn");
    QTest::addColumn<QByteArray>("oversample");
    QTest::addColumn<QByteArray>("symbolRate");
    QTest::addColumn<double>("bytes");
    QTest::addColumn<bool>("trimmed");
    const auto row = [](const char* name, const char* pn, const char* oversample, const char* rate,
                        double bytes, bool trimmed) {
        QTest::newRow(name) << QByteArray(pn) << QByteArray(oversample) << QByteArray(rate) << bytes
                            << trimmed;
    };
    row("usual", "9", "4", "1e6", 511 * 4 * 4, false);
    row("more samples a symbol", "9", "16", "1e6", 511 * 16 * 4, false);
    row("slow symbols are stored finer", "9", "4", "100e3", 511 * 4 * 3 * 4, false);
    row("long but fits", "22", "4", "1e6", 4194303.0 * 4 * 4, false);
    row("too long for the memory", "23", "4", "1e6", 8388607.0 * 4 * 4, true);
    row("longest", "24", "32", "1e6", 16777215.0 * 32 * 4, true);
}

void ProfilesSuite::waveformSize()
{
    QFETCH(QByteArray, pn);
    QFETCH(QByteArray, oversample);
    QFETCH(QByteArray, symbolRate);
    Instrument instrument;
    QVERIFY(instrument.take(digital, setField("PN", pn)));
    QVERIFY(instrument.take(digital, setField("SymbolRate", symbolRate)));
    QVERIFY(instrument.take(digital, setField("Oversample", oversample)));
    QTEST(instrument.profile(digital, "fullWaveformEstimatedBytes").toDouble(), "bytes");
    QTEST(instrument.profile(digital, "trimmedDownloadRequired").toBool(), "trimmed");
}

void ProfilesSuite::defaultTrim()
{
    Instrument instrument;
    QCOMPARE(instrument.profile(digital, "defaultTrimDownload"), QJsonValue(true));
    QVERIFY(instrument.take(digital, action("set-default-trim", "false")));
    QCOMPARE(instrument.profile(digital, "defaultTrimDownload"), QJsonValue(false));
    QCOMPARE(instrument.item(digital).revision, 2);
    QVERIFY(instrument.take(digital, setField("PN", "24")));
    QCOMPARE(instrument.profile(digital, "defaultTrimDownload"), QJsonValue(false));
    for (const char* wrong : {"1", "null", "\"true\""}) {
        const Host::Response response = instrument.ask(digital, action("set-default-trim", wrong));
        QCOMPARE(response.errorCode, invalidArgument);
        QCOMPARE(response.errorMessage, QStringLiteral("The default trim must be true or false."));
    }
}

void ProfilesSuite::randomPhases()
{
    Instrument instrument;
    for (const int mode : {0, 1, 2}) {
        QVERIFY(instrument.take(multitone, setField("PhaseMode", QByteArray::number(mode))));
        QCOMPARE(instrument.profile(multitone, "randomMode"), QJsonValue(mode == 1));
        QCOMPARE(instrument.ask(multitone, setField("Seed", "2147483647")).errorCode,
                 mode == 1 ? QString() : notSupported);
    }
    QVERIFY(instrument.take(multitone, setField("PhaseMode", "1")));
    QCOMPARE(instrument.ask(multitone, setField("Seed", "-1")).errorMessage,
             QStringLiteral("The phase seed must lie between 0 and 2147483647."));
}

void ProfilesSuite::lattice_data()
{
    QTest::addColumn<QByteArray>("count");
    QTest::addColumn<QByteArray>("spacing");
    QTest::addColumn<QByteArray>("notch");
    QTest::addColumn<QString>("tones");
    const auto row = [](const char* name, const char* count, const char* spacing, const char* notch,
                        const char* tones) {
        QTest::newRow(name) << QByteArray(count) << QByteArray(spacing) << QByteArray(notch)
                            << QString::fromLatin1(tones);
    };
    row("one", "1", "1000", "0", "0:0");
    row("odd", "3", "1000", "0", "0:-1000 1:0 2:1000");
    row("even", "4", "1000", "0", "0:-1500 1:-500 2:500 3:1500");
    row("notch takes the middle", "3", "1000", "1", "0:-1000 2:1000");
    row("notch ends on a tone", "3", "1000", "2000", "0:-1000 2:1000");
    row("notch beyond a tone", "5", "1000", "2001", "0:-2000 4:2000");
    row("narrow notch between tones", "4", "1000", "1000", "0:-1500 1:-500 2:500 3:1500");
    row("notch over all", "3", "1000", "1e6", "");
}

void ProfilesSuite::lattice()
{
    QFETCH(QByteArray, count);
    QFETCH(QByteArray, spacing);
    QFETCH(QByteArray, notch);
    Instrument instrument;
    QVERIFY(instrument.take(multitone, setField("Count", count)));
    QVERIFY(instrument.take(multitone, setField("FreqSpacing", spacing)));
    QVERIFY(instrument.take(multitone, setField("NotchWidth", notch)));
    QTEST(tonesOf(instrument), "tones");
    // The discrete mode knows no notch.
    QVERIFY(instrument.take(multitone, action("set-discrete-mode", "true")));
    QCOMPARE(instrument.profile(multitone, "discreteKeepToneMode"), QJsonValue(true));
    QCOMPARE(instrument.profile(multitone, "candidateTones").toArray().size(), count.toInt());
    QVERIFY(instrument.take(multitone, action("set-discrete-mode", "false")));
    QTEST(tonesOf(instrument), "tones");
}

void ProfilesSuite::limitsOfTheLattice()
{
    Instrument instrument;
    QCOMPARE(instrument.profile(multitone, "countMaximum"), QJsonValue(101));
    QCOMPARE(instrument.profile(multitone, "freqSpacingMaximum"), QJsonValue(10e6));
    QVERIFY(instrument.take(multitone, setField("FreqSpacing", "10e6")));
    QCOMPARE(instrument.profile(multitone, "countMaximum"), QJsonValue(11));
    QCOMPARE(instrument.ask(multitone, setField("Count", "12")).errorMessage,
             QStringLiteral("The tone count must lie between 1 and 11."));
    QVERIFY(instrument.take(multitone, setField("FreqSpacing", "1")));
    QCOMPARE(instrument.profile(multitone, "countMaximum"), QJsonValue(1001));
    QVERIFY(instrument.take(multitone, setField("Count", "1001")));
    QCOMPARE(instrument.profile(multitone, "freqSpacingMaximum"), QJsonValue(100e3));
    QVERIFY(instrument.take(multitone, setField("Count", "1")));
    QCOMPARE(instrument.profile(multitone, "freqSpacingMaximum"), QJsonValue(100e6));
}

void ProfilesSuite::discreteTones()
{
    Instrument instrument;
    QVERIFY(instrument.take(multitone, setField("Count", "4")));
    QVERIFY(instrument.take(multitone, setField("FreqSpacing", "1000")));
    QVERIFY(instrument.take(multitone, action("set-discrete-mode", "true")));
    QVERIFY(instrument.take(multitone, action("set-enabled-tones", "[0,3]")));
    QCOMPARE(tonesOf(instrument), QStringLiteral("0:-1500 -1:-500 -2:500 3:1500"));
    QVERIFY(instrument.take(multitone, setField("Count", "5")));
    QCOMPARE(tonesOf(instrument), QStringLiteral("0:-2000 -1:-1000 -2:0 3:1000 4:2000"));
    QVERIFY(instrument.take(multitone, setField("Count", "2")));
    QVERIFY(instrument.take(multitone, action("set-enabled-tones", "[1]")));
    QVERIFY(instrument.take(multitone, setField("Count", "4")));
    QCOMPARE(tonesOf(instrument), QStringLiteral("-0:-1500 1:-500 -2:500 3:1500"));
    // All are on outside of the mode, and come back as they were.
    QVERIFY(instrument.take(multitone, action("set-discrete-mode", "false")));
    QCOMPARE(tonesOf(instrument), QStringLiteral("0:-1500 1:-500 2:500 3:1500"));
    QVERIFY(instrument.take(multitone, action("set-discrete-mode", "true")));
    QCOMPARE(tonesOf(instrument), QStringLiteral("-0:-1500 1:-500 -2:500 3:1500"));
    QVERIFY(instrument.take(multitone, action("set-enabled-tones", "[]")));
    QCOMPARE(tonesOf(instrument), QStringLiteral("-0:-1500 -1:-500 -2:500 -3:1500"));
    QCOMPARE(instrument.ask(multitone, setField("NotchWidth", "5")).errorCode, notSupported);
}

void ProfilesSuite::discreteToneRefusals_data()
{
    QTest::addColumn<bool>("discrete");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char* name, bool discrete, const QByteArray& request, const QString& code,
                        const char* sentence) {
        QTest::newRow(name) << discrete << request << code << QString::fromLatin1(sentence);
    };
    const char* array = "The enabled tones must be an array of whole numbers from 0 to 10.";
    row("not discrete", false, action("set-enabled-tones", "[1]"), notSupported,
        "Single tones can be chosen in the discrete tone mode only.");
    row("number", true, action("set-enabled-tones", "1"), invalidArgument, array);
    row("text in it", true, action("set-enabled-tones", "[1,\"2\"]"), invalidArgument, array);
    row("fraction", true, action("set-enabled-tones", "[1.5]"), invalidArgument, array);
    row("below", true, action("set-enabled-tones", "[-1]"), invalidArgument, array);
    row("above", true, action("set-enabled-tones", "[10,11]"), invalidArgument, array);
    row("mode number", true, action("set-discrete-mode", "0"), invalidArgument,
        "The discrete tone mode must be true or false.");
}

void ProfilesSuite::discreteToneRefusals()
{
    QFETCH(bool, discrete);
    QFETCH(QByteArray, request);
    Instrument instrument;
    QVERIFY(instrument.take(multitone, action("set-discrete-mode", discrete ? "true" : "false")));
    const ModBusinessEntry before = instrument.item(multitone);
    const Host::Response response = instrument.ask(multitone, request);
    QTEST(response.errorCode, "code");
    QTEST(response.errorMessage, "sentence");
    QCOMPARE(instrument.item(multitone), before);
}

void ProfilesSuite::shortestPeriod()
{
    const QString pulse = QStringLiteral("pulse");
    Instrument instrument;
    QVERIFY(instrument.take(pulse, setField("Width", "8e-9")));
    QVERIFY(instrument.take(pulse, setField("Period", "16e-9")));
    QVERIFY(!instrument.ask(pulse, setField("Period", "15.9e-9")).ok);
}

std::unique_ptr<QObject> makeProfilesSuite()
{
    return std::make_unique<ProfilesSuite>();
}

#include "ProfilesSuite.moc"
