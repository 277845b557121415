#include "simulator/modulation/ItemTalk.h"
#include "simulator/modulation/ModulationSuites.h"

#include <QSignalSpy>

using namespace Simulator;

namespace {

// Every key that the editors of the mini bar read, as its own tables spell them, written down once more.
struct Keys
{
    const char* id;
    const char* name;
    const char* state;
    const char* profile;
};

const Keys keysOfItems[] = {
    {"digital", "Digital",
     "FSKDeviation FilterAlpha FilterLength FilterType ModulationType Oversample PN SequenceSeed SymbolRate",
     "defaultTrimDownload filterAlphaEditable filterTypeOptions fskDeviationEditable "
     "fullWaveformEstimatedBytes modulationTypeOptions oversampleOptions trimmedDownloadRequired"},
    {"multitone", "Multitone", "Count FreqSpacing NotchWidth PhaseMode Seed",
     "candidateTones countMaximum discreteKeepToneMode freqSpacingMaximum randomMode"},
    {"quick-waveform", "Quick Waveform",
     "autoScale currentPath iQScale period periodLength sampleOffset sampleRate samplesToUse signalLength",
     "iqsWavLoaded loadError loadInProgress loadedFilePath rootPath samplesInFile"},
    {"am", "AM", "Depth Rate Shape", ""},
    {"fm", "FM", "Deviation Rate Shape", ""},
    {"pm", "PM", "InitPhase PhaseDeviation Rate Shape", ""},
    {"pulse", "Pulse", "Period Width", ""},
    {"digital-ramp", "Digital Ramp", "Period Span SweepTime", ""},
    {"awgn", "AWGN", "Bandwith Length", ""},
    {"playback", "Playback", "AutoScale FileName IQScale Period SampleOffset SampleRate SamplesToUse",
     "autoScaleLocked periodEditable sampleOffsetEditable samplesInFile samplesToUseEditable"},
    {"streaming", "Streaming", "FileList IQScale SampleRate", ""},
    {"dsss", "DSSS",
     "Code FilterAlpha FilterLength FilterType ModulationType Oversample SequenceSeed SymbolRate",
     "filterAlphaEditable oversampleOptions"},
    {"ofdm", "OFDM",
     "FFTSize GuardBandCarriersLeft GuardBandCarriersRight GuardInterval ModulationType NullDC SampleRate "
     "SymbolCount WindowLength Windowed",
     ""},
};

QString word(const char* text)
{
    return QString::fromLatin1(text);
}

} // namespace

// What all items have in common: keys, revisions, one on at a time, refusals.
class ItemsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void orderOfTheItems();
    void closedInstrument();
    void malformed_data();
    void malformed();
    void everyItemRefusesForeignActions_data() { keys_data(); }
    void everyItemRefusesForeignActions();
    void revisions();
    void staleRevisions_data();
    void staleRevisions();
    void oneIsOn();
    void switchAndActAtOnce();
    void nothingAsked();
    void sameAgainIsNoChange();
};

void ItemsSuite::keys_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("profile");
    for (const Keys& row : keysOfItems)
        QTest::newRow(row.id) << word(row.id) << word(row.name) << word(row.state) << word(row.profile);
}

void ItemsSuite::keys()
{
    QFETCH(QString, id);
    const Instrument instrument;
    const ModBusinessEntry item = instrument.item(id);
    QTEST(item.name, "name");
    QVERIFY(!item.text.isEmpty());
    QCOMPARE(item.editorKind, id);
    QCOMPARE(item.revision, 1);
    QStringList keys = item.editorState.keys();
    keys.sort();
    QTEST(keys.join(QLatin1Char(' ')), "state");
    keys = item.profile.keys();
    keys.sort();
    QTEST(keys.join(QLatin1Char(' ')), "profile");
}

void ItemsSuite::orderOfTheItems()
{
    const SignalGenerator generator;
    const QJsonObject mod = snapshotOf(generator).value(QStringLiteral("mod")).toObject();
    QCOMPARE(mod.value(QStringLiteral("enabled")), QJsonValue(false));
    QCOMPARE(mod.value(QStringLiteral("enabledBusinessId")), QJsonValue(QString()));
    const auto items = MinibarHelperProtocol::parseModSnapshot(mod).businesses;
    QCOMPARE(items.size(), int(std::size(keysOfItems)));
    for (int i = 0; i < items.size(); ++i)
        QCOMPARE(items.at(i).id, word(keysOfItems[i].id));
}

void ItemsSuite::closedInstrument()
{
    Instrument instrument;
    QVERIFY(instrument.take(word("am"), R"("enabled":true)"));
    instrument.generator.setOpen(false);
    QCOMPARE(text(snapshotOf(instrument.generator).value(QStringLiteral("mod")).toObject()),
             QByteArray(R"({"businesses":[],"enabled":false})"));
    QCOMPARE(instrument.ask(word("am"), R"("enabled":false)").errorCode, word("NOT_OPEN"));
    instrument.generator.setOpen(true);
    QCOMPARE(instrument.enabled(), word("am"));
}

void ItemsSuite::malformed_data()
{
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char* arguments, const char* code, const char* sentence) {
        QTest::newRow(arguments) << QByteArray(arguments) << word(code) << word(sentence);
    };
    const char* bad = "INVALID_ARG";
    row(R"({})", bad, "'businessId' must be a text.");
    row(R"({"businessId":3})", bad, "'businessId' must be a text.");
    row(R"({"businessId":""})", bad, "There is no modulation ''.");
    row(R"({"businessId":"AM"})", bad, "There is no modulation 'AM'.");
    row(R"({"businessId":"am","expectedRevision":"1"})", bad, "'expectedRevision' must be a whole number.");
    row(R"({"businessId":"am","expectedRevision":1.5})", bad, "'expectedRevision' must be a whole number.");
    row(R"({"businessId":"am","enabled":1})", bad, "'enabled' must be true or false.");
    row(R"({"businessId":"am","action":null})", bad, "'action' must be a text.");
    row(R"({"businessId":"am","action":"set-field","args":[]})", bad, "'args' must be an object.");
    row(R"({"businessId":"am","profile":1})", bad, "'profile' must be an object.");
    row(R"({"businessId":"am","profile":{}})", "NOT_SUPPORTED", "The profile of AM cannot be set.");
    row(R"({"businessId":"am","action":"set-fields"})", bad, "The action 'set-fields' is not known.");
    row(R"({"businessId":"am","action":"set-field"})", bad, "'key' must be a text.");
    row(R"({"businessId":"am","action":"set-field","args":{"key":1}})", bad, "'key' must be a text.");
    row(R"({"businessId":"am","action":"set-field","args":{"key":"rate","value":1}})", bad,
        "AM has no field 'rate'.");
    row(R"({"businessId":"am","action":"set-field","args":{"key":"Rate"}})", bad,
        "The rate must be a number.");
    row(R"({"businessId":"am","action":"set-field","args":{"key":"Rate","value":"1"}})", bad,
        "The rate must be a number.");
    row(R"({"businessId":"am","action":"set-field","args":{"key":"Shape","value":1}})", bad,
        "The shape must be one of: Sine, Square, Triangle, Ramp.");
    row(R"({"businessId":"am","action":"set-field","args":{"key":"Shape","value":"sine"}})", bad,
        "The shape must be one of: Sine, Square, Triangle, Ramp.");
    row(R"({"businessId":"ofdm","action":"set-field","args":{"key":"NullDC","value":1}})", bad,
        "The null DC must be true or false.");
    row(R"({"businessId":"digital","action":"set-field","args":{"key":"PN","value":9.5}})", bad,
        "The PN order must be a whole number.");
    row(R"({"businessId":"playback","action":"set-field","args":{"key":"FileName","value":7}})", bad,
        "The file name must be a text.");
    row(R"({"businessId":"streaming","action":"set-field","args":{"key":"FileList","value":"a.wav"}})", bad,
        "The file list must be an array of texts.");
    row(R"({"businessId":"streaming","action":"set-field","args":{"key":"FileList","value":["a.wav",1]}})",
        bad, "The file list must be an array of texts.");
    row(R"({"businessId":"quick-waveform","enabled":true})", "NOT_SUPPORTED",
        "Quick Waveform has no file to play.");
    row(R"({"businessId":"playback","enabled":true})", "NOT_SUPPORTED", "Playback has no file to play.");
    row(R"({"businessId":"streaming","enabled":true})", "NOT_SUPPORTED", "Streaming has no files to play.");
}

void ItemsSuite::malformed()
{
    QFETCH(QByteArray, arguments);
    SignalGenerator generator;
    const QJsonObject before = snapshotOf(generator);
    const Host::Response response = execute(generator, word("SOUR:MOD:CONF"), object(arguments));
    QVERIFY(!response.ok);
    QTEST(response.errorMessage, "sentence");
    QTEST(response.errorCode, "code");
    QCOMPARE(snapshotOf(generator), before);
}

void ItemsSuite::everyItemRefusesForeignActions()
{
    QFETCH(QString, id);
    QFETCH(QString, name);
    Instrument instrument;
    const auto isIts = [&id](const char* action) {
        const QString its = id == word("digital")          ? word("set-default-trim")
                            : id == word("multitone")      ? word("set-discrete-mode set-enabled-tones")
                            : id == word("quick-waveform") ? word("select-file clear-file")
                            : id == word("playback")       ? word("clear-file")
                                                           : QString();
        return its.split(QLatin1Char(' ')).contains(word(action));
    };
    int refused = 0;
    for (const char* action :
         {"set-default-trim", "set-discrete-mode", "set-enabled-tones", "select-file", "clear-file"}) {
        if (isIts(action))
            continue;
        const Host::Response response =
            instrument.ask(id, QByteArray(R"("action":")") + action + R"(","args":{"value":true})");
        QCOMPARE(response.errorCode, word("NOT_SUPPORTED"));
        QCOMPARE(response.errorMessage, word("The action '%1' is not for %2.").arg(word(action), name));
        ++refused;
    }
    QVERIFY(refused >= 3);
    QCOMPARE(instrument.item(id).revision, 1);
}

void ItemsSuite::revisions()
{
    Instrument instrument;
    QSignalSpy changed(&instrument.generator, &SignalGenerator::changed);
    QVERIFY(instrument.take(word("am"), R"("expectedRevision":1,)" + setField("Rate", "2000")));
    QCOMPARE(instrument.item(word("am")).revision, 2);
    QVERIFY(instrument.take(word("am"), R"("expectedRevision":2,)" + setField("Depth", "30")));
    QCOMPARE(instrument.item(word("am")).revision, 3);
    QCOMPARE(instrument.item(word("fm")).revision, 1);
    QCOMPARE(instrument.state(word("am"), "Rate"), QJsonValue(2000));
    QCOMPARE(changed.count(), 2);
}

void ItemsSuite::staleRevisions_data()
{
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<bool>("taken");
    QTest::newRow("present") << QByteArray(R"("expectedRevision":2,)") << true;
    QTest::newRow("absent") << QByteArray() << true;
    QTest::newRow("zero") << QByteArray(R"("expectedRevision":0,)") << true;
    QTest::newRow("negative") << QByteArray(R"("expectedRevision":-1,)") << true;
    QTest::newRow("older") << QByteArray(R"("expectedRevision":1,)") << false;
    QTest::newRow("newer") << QByteArray(R"("expectedRevision":3,)") << false;
    QTest::newRow("beyond 32 bits") << QByteArray(R"("expectedRevision":4294967298,)") << false;
}

void ItemsSuite::staleRevisions()
{
    QFETCH(QByteArray, expected);
    QFETCH(bool, taken);
    Instrument instrument;
    QVERIFY(instrument.take(word("fm"), setField("Rate", "2000")));
    const Host::Response response = instrument.ask(word("fm"), expected + setField("Rate", "3000"));
    QCOMPARE(response.ok, taken);
    QCOMPARE(response.errorCode, taken ? QString() : word("CONFLICT"));
    QCOMPARE(response.errorMessage, taken ? QString() : word("FM has changed in the meantime."));
    QCOMPARE(instrument.state(word("fm"), "Rate"), QJsonValue(taken ? 3000 : 2000));
}

void ItemsSuite::oneIsOn()
{
    Instrument instrument;
    QSignalSpy changed(&instrument.generator, &SignalGenerator::changed);
    QVERIFY(instrument.take(word("am"), R"("enabled":true)"));
    QCOMPARE(instrument.enabled(), word("am"));
    QVERIFY(instrument.take(word("fm"), R"("enabled":true)"));
    QCOMPARE(instrument.enabled(), word("fm"));
    QCOMPARE(instrument.item(word("fm")).revision, 2);
    QCOMPARE(instrument.item(word("am")).revision, 3); // on, and off again
    QVERIFY(instrument.take(word("am"), R"("enabled":false)"));
    QCOMPARE(instrument.enabled(), word("fm"));
    QVERIFY(instrument.take(word("fm"), R"("enabled":false)"));
    QCOMPARE(instrument.enabled(), QString());
    QCOMPARE(snapshotOf(instrument.generator)
                 .value(QStringLiteral("mod"))
                 .toObject()
                 .value(QStringLiteral("enabled")),
             QJsonValue(false));
    QCOMPARE(changed.count(), 3);
}

void ItemsSuite::switchAndActAtOnce()
{
    Instrument instrument;
    QVERIFY(instrument.take(word("pm"), R"("enabled":true,)" + setField("Rate", "5000")));
    QCOMPARE(instrument.enabled(), word("pm"));
    QCOMPARE(instrument.item(word("pm")).revision, 2);
    // All or nothing.
    QVERIFY(!instrument.ask(word("pm"), R"("enabled":false,)" + setField("Rate", "0")).ok);
    QCOMPARE(instrument.enabled(), word("pm"));
    QVERIFY(!instrument.ask(word("streaming"), R"("enabled":true,)" + setField("SampleRate", "5")).ok);
    QCOMPARE(instrument.state(word("streaming"), "SampleRate"), QJsonValue(1e6));
    QCOMPARE(instrument.item(word("streaming")).revision, 1);
}

void ItemsSuite::nothingAsked()
{
    SignalGenerator generator;
    const QJsonObject before = snapshotOf(generator);
    QVERIFY(execute(generator, word("SOUR:MOD:CONF"), object(R"({"businessId":"am"})")).ok);
    QCOMPARE(snapshotOf(generator), before);
}

void ItemsSuite::sameAgainIsNoChange()
{
    Instrument instrument;
    QSignalSpy changed(&instrument.generator, &SignalGenerator::changed);
    QVERIFY(instrument.take(word("am"), setField("Rate", "1000")));
    QVERIFY(instrument.take(word("am"), R"("enabled":false)"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(instrument.item(word("am")).revision, 1);
}

std::unique_ptr<QObject> makeItemsSuite()
{
    return std::make_unique<ItemsSuite>();
}

#include "ItemsSuite.moc"
