#include "simulator/modulation/ItemTalk.h"
#include "simulator/modulation/ModulationSuites.h"
#include "simulator/modulation/WaveformFiles.h"

#include <QSignalSpy>

using namespace Simulator;

namespace {

const QString quick = QStringLiteral("quick-waveform");
const QString playback = QStringLiteral("playback");
const QString streaming = QStringLiteral("streaming");
const QString notSupported = QStringLiteral("NOT_SUPPORTED");
const QString invalidArgument = QStringLiteral("INVALID_ARG");

QByteArray quoted(const QString& text)
{
    return '"' + text.toUtf8() + '"';
}

QByteArray select(const QString& path)
{
    return R"("action":"select-file","args":{"path":)" + quoted(path) + '}';
}

QByteArray list(const QStringList& paths)
{
    QByteArrayList texts;
    for (const QString& path : paths)
        texts += quoted(path);
    return setField("FileList", '[' + texts.join(',') + ']');
}

// Selects a file and waits until it is loaded or refused.
void load(Instrument& instrument, const QString& path)
{
    QVERIFY(instrument.take(quick, select(path)));
    QTRY_COMPARE(instrument.profile(quick, "loadInProgress"), QJsonValue(false));
}

} // namespace

// The items that play files.
class WaveformsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void loadingShows();
    void brokenFileKeepsTheLoadedOne();
    void refusedPaths();
    void withoutFolder();
    void quickBounds();
    void quickFieldsFollow();
    void quickScale();
    void quickRecording();
    void clearedFileSwitchesOff();
    void laterChoiceCounts();
    void playbackLoads();
    void playbackRefusals();
    void playbackRecording();
    void streamingList();
    void streamingSwitchesOff();
    void newInstrumentKeepsNothing();
};

void WaveformsSuite::loadingShows()
{
    WaveformFolder folder;
    const QString path = folder.add(QStringLiteral("deep/tone.wav"), wav(1000, 500000));
    Instrument instrument(folder.path());
    QCOMPARE(instrument.profile(quick, "rootPath"), QJsonValue(folder.path()));
    QCOMPARE(instrument.state(quick, "currentPath"), QJsonValue(folder.path()));
    QSignalSpy changed(&instrument.generator, &SignalGenerator::changed);
    QVERIFY(instrument.take(quick, select(path)));
    QCOMPARE(instrument.profile(quick, "loadInProgress"), QJsonValue(true));
    QCOMPARE(instrument.profile(quick, "loadedFilePath"), QJsonValue(QString()));
    QCOMPARE(instrument.item(quick).revision, 2);
    QTRY_COMPARE(changed.count(), 2);
    const ModBusinessEntry item = instrument.item(quick);
    QCOMPARE(item.revision, 3);
    QCOMPARE(text(item.profile), text({{QStringLiteral("iqsWavLoaded"), false},
                                       {QStringLiteral("loadError"), QString()},
                                       {QStringLiteral("loadInProgress"), false},
                                       {QStringLiteral("loadedFilePath"), path},
                                       {QStringLiteral("rootPath"), folder.path()},
                                       {QStringLiteral("samplesInFile"), 1000}}));
    QCOMPARE(text(item.editorState),
             text({{QStringLiteral("autoScale"), true},
                   {QStringLiteral("currentPath"), QString(folder.path() + QStringLiteral("/deep"))},
                   {QStringLiteral("iQScale"), 100},
                   {QStringLiteral("period"), 1000},
                   {QStringLiteral("periodLength"), 0.002},
                   {QStringLiteral("sampleOffset"), 0},
                   {QStringLiteral("sampleRate"), 500000},
                   {QStringLiteral("samplesToUse"), 1000},
                   {QStringLiteral("signalLength"), 0.002}}));
    QVERIFY(instrument.take(quick, R"("enabled":true)"));
    QCOMPARE(instrument.enabled(), quick);
}

void WaveformsSuite::brokenFileKeepsTheLoadedOne()
{
    WaveformFolder folder;
    const QString good = folder.add(QStringLiteral("good.wav"), wav(10, 1000));
    const QString bad = folder.add(QStringLiteral("bad.wav"), "no wave");
    Instrument instrument(folder.path());
    load(instrument, good);
    load(instrument, bad);
    QCOMPARE(instrument.profile(quick, "loadError"),
             QJsonValue(QStringLiteral("'%1' is no WAV file.").arg(bad)));
    QCOMPARE(instrument.profile(quick, "loadedFilePath"), QJsonValue(good));
    load(instrument, good);
    QCOMPARE(instrument.profile(quick, "loadError"), QJsonValue(QString()));
}

void WaveformsSuite::refusedPaths()
{
    WaveformFolder folder;
    WaveformFolder elsewhere;
    const QString outside = elsewhere.add(QStringLiteral("a.wav"), wav(10, 1000));
    const QString beside = folder.path() + QStringLiteral("x");
    Instrument instrument(folder.path());
    const auto refused = [&](const QByteArray& request, const QString& sentence) {
        const Host::Response response = instrument.ask(quick, request);
        QCOMPARE(response.errorMessage, sentence);
        QCOMPARE(response.errorCode, invalidArgument);
    };
    refused(R"("action":"select-file","args":{})", QStringLiteral("The path of the file must be a text."));
    refused(select(QString()), QStringLiteral("There is no file ''."));
    refused(select(folder.path()), QStringLiteral("There is no file '%1'.").arg(folder.path()));
    refused(select(beside), QStringLiteral("There is no file '%1'.").arg(beside));
    refused(select(outside),
            QStringLiteral("'%1' does not lie in the folder of the waveforms.").arg(outside));
    refused(select(folder.path() + QStringLiteral("/../") + outside.section(QLatin1Char('/'), -2)),
            QStringLiteral("'%1' does not lie in the folder of the waveforms.").arg(outside));
    QCOMPARE(instrument.item(quick).revision, 1);
}

void WaveformsSuite::withoutFolder()
{
    for (const QString& folder : {QString(), QStringLiteral("/nonexistent/waves")}) {
        Instrument instrument(folder);
        QCOMPARE(instrument.profile(quick, "rootPath"), QJsonValue(QString()));
        WaveformFolder elsewhere;
        const QString path = elsewhere.add(QStringLiteral("a.wav"), wav(10, 1000));
        QCOMPARE(instrument.ask(quick, select(path)).errorCode, invalidArgument);
    }
}

void WaveformsSuite::quickBounds()
{
    WaveformFolder folder;
    Instrument instrument(folder.path());
    for (const char* key : {"sampleRate", "iQScale", "period", "samplesToUse", "sampleOffset"}) {
        const Host::Response response = instrument.ask(quick, setField(key, "1"));
        QCOMPARE(response.errorCode, notSupported);
        QCOMPARE(response.errorMessage, QStringLiteral("Quick Waveform has no file to play."));
    }
    load(instrument, folder.add(QStringLiteral("a.wav"), wav(1000, 1000)));
    QVERIFY(instrument.take(quick, setField("autoScale", "false")));
    const auto bounds = [&](const char* key, const char* below, const char* lowest, const char* highest,
                            const char* above, const char* sentence) {
        QVERIFY(instrument.take(quick, setField(key, lowest)));
        QVERIFY(instrument.take(quick, setField(key, highest)));
        for (const char* value : {below, above})
            QCOMPARE(instrument.ask(quick, setField(key, value)).errorMessage, QString::fromLatin1(sentence));
    };
    bounds("sampleRate", "0.9", "1", "125e6", "125000001",
           "The sample rate must lie between 1 Hz and 125 MHz.");
    bounds("iQScale", "0", "0.01", "100", "100.01", "The I/Q scale must lie between 0.01 % and 100 %.");
    bounds("period", "0", "1", "26214400", "26214401", "The period must lie between 1 and 26214400.");
    bounds("samplesToUse", "-1", "0", "1000", "1001",
           "The number of samples to use must lie between 0 and 1000.");
    bounds("sampleOffset", "-1", "0", "1000", "1001", "The sample offset must lie between 0 and 1000.");
    for (const char* key : {"currentPath", "periodLength", "signalLength"})
        QCOMPARE(instrument.ask(quick, setField(key, "1")).errorCode, notSupported);
}

void WaveformsSuite::quickFieldsFollow()
{
    WaveformFolder folder;
    Instrument instrument(folder.path());
    load(instrument, folder.add(QStringLiteral("a.wav"), wav(1000, 1000)));
    QVERIFY(instrument.take(quick, setField("sampleOffset", "400")));
    QCOMPARE(instrument.state(quick, "samplesToUse"), QJsonValue(600));
    QCOMPARE(instrument.ask(quick, setField("samplesToUse", "601")).errorMessage,
             QStringLiteral("The number of samples to use must lie between 0 and 600."));
    QVERIFY(instrument.take(quick, setField("period", "100")));
    QCOMPARE(instrument.state(quick, "samplesToUse"), QJsonValue(100));
    QVERIFY(instrument.take(quick, setField("samplesToUse", "50")));
    QVERIFY(instrument.take(quick, setField("sampleRate", "500")));
    QCOMPARE(instrument.state(quick, "periodLength"), QJsonValue(0.2));
    QCOMPARE(instrument.state(quick, "signalLength"), QJsonValue(0.1));
}

void WaveformsSuite::quickScale()
{
    WaveformFolder folder;
    Instrument instrument(folder.path());
    QVERIFY(instrument.take(quick, setField("autoScale", "false")));
    load(instrument, folder.add(QStringLiteral("a.wav"), wav(10, 1000)));
    QVERIFY(instrument.take(quick, setField("iQScale", "50")));
    QVERIFY(instrument.take(quick, setField("autoScale", "true")));
    const Host::Response response = instrument.ask(quick, setField("iQScale", "60"));
    QCOMPARE(response.errorCode, notSupported);
    QCOMPARE(response.errorMessage, QStringLiteral("The I/Q scale follows the auto scale."));
}

void WaveformsSuite::quickRecording()
{
    WaveformFolder folder;
    Instrument instrument(folder.path());
    QVERIFY(instrument.take(quick, setField("autoScale", "false")));
    load(instrument, folder.add(QStringLiteral("iq.wav"), wav(10, 1000, true)));
    QCOMPARE(instrument.profile(quick, "iqsWavLoaded"), QJsonValue(true));
    const Host::Response response = instrument.ask(quick, setField("iQScale", "60"));
    QCOMPARE(response.errorCode, notSupported);
    QCOMPARE(response.errorMessage, QStringLiteral("The I/Q scale of an I/Q recording is fixed."));
}

void WaveformsSuite::clearedFileSwitchesOff()
{
    WaveformFolder folder;
    const QString path = folder.add(QStringLiteral("a.wav"), wav(10, 1000));
    Instrument instrument(folder.path());
    load(instrument, path);
    QVERIFY(instrument.take(quick, R"("enabled":true)"));
    QVERIFY(instrument.take(quick, R"("action":"clear-file","args":{})"));
    QCOMPARE(instrument.enabled(), QString());
    QCOMPARE(instrument.profile(quick, "loadedFilePath"), QJsonValue(QString()));
    QCOMPARE(instrument.profile(quick, "samplesInFile"), QJsonValue(0));
    QCOMPARE(instrument.state(quick, "samplesToUse"), QJsonValue(0));
    // The same for the player.
    QVERIFY(instrument.take(playback, R"("enabled":true,)" + setField("FileName", quoted(path))));
    QCOMPARE(instrument.enabled(), playback);
    QVERIFY(instrument.take(playback, R"("action":"clear-file","args":{})"));
    QCOMPARE(instrument.enabled(), QString());
    QCOMPARE(instrument.state(playback, "FileName"), QJsonValue(QString()));
}

void WaveformsSuite::laterChoiceCounts()
{
    WaveformFolder folder;
    const QString first = folder.add(QStringLiteral("a.wav"), wav(10, 1000));
    const QString second = folder.add(QStringLiteral("b.wav"), wav(20, 1000));
    Instrument instrument(folder.path());
    QVERIFY(instrument.take(quick, select(first)));
    load(instrument, second);
    QCOMPARE(instrument.profile(quick, "loadedFilePath"), QJsonValue(second));
    QVERIFY(instrument.take(quick, select(first)));
    QVERIFY(instrument.take(quick, R"("action":"clear-file")"));
    QCOMPARE(instrument.profile(quick, "loadInProgress"), QJsonValue(false));
    QCoreApplication::processEvents();
    QCOMPARE(instrument.profile(quick, "loadedFilePath"), QJsonValue(QString()));
}

void WaveformsSuite::playbackLoads()
{
    WaveformFolder folder;
    const QString path = folder.add(QStringLiteral("a.wav"), wav(500, 2000));
    Instrument instrument;
    QVERIFY(instrument.take(playback, setField("FileName", quoted(path))));
    QCOMPARE(instrument.state(playback, "FileName"), QJsonValue(path));
    QCOMPARE(instrument.state(playback, "SampleRate"), QJsonValue(2000));
    QCOMPARE(instrument.state(playback, "Period"), QJsonValue(500));
    QCOMPARE(instrument.state(playback, "SamplesToUse"), QJsonValue(500));
    QCOMPARE(instrument.profile(playback, "samplesInFile"), QJsonValue(500));
    QCOMPARE(instrument.profile(playback, "autoScaleLocked"), QJsonValue(false));
    QCOMPARE(instrument.profile(playback, "periodEditable"), QJsonValue(true));
    QVERIFY(instrument.take(playback, setField("SampleOffset", "500")));
    QCOMPARE(instrument.state(playback, "SamplesToUse"), QJsonValue(0));
    QCOMPARE(instrument.ask(playback, setField("SampleOffset", "501")).errorMessage,
             QStringLiteral("The sample offset must lie between 0 and 500."));
    QVERIFY(instrument.take(playback, setField("Period", "26214400")));
    QVERIFY(!instrument.ask(playback, setField("Period", "26214401")).ok);
    QVERIFY(!instrument.ask(playback, setField("Period", "0")).ok);
    QVERIFY(instrument.take(playback, setField("FileName", "\"\"")));
    QCOMPARE(instrument.profile(playback, "samplesInFile"), QJsonValue(0));
}

void WaveformsSuite::playbackRefusals()
{
    WaveformFolder folder;
    const QString bad = folder.add(QStringLiteral("bad.wav"), "no wave");
    Instrument instrument;
    const Host::Response response = instrument.ask(playback, setField("FileName", quoted(bad)));
    QCOMPARE(response.errorCode, invalidArgument);
    QCOMPARE(response.errorMessage, QStringLiteral("'%1' is no WAV file.").arg(bad));
    QCOMPARE(instrument.item(playback), Instrument().item(playback));
    for (const char* key : {"SampleRate", "IQScale", "Period", "SamplesToUse", "SampleOffset"}) {
        const Host::Response locked = instrument.ask(playback, setField(key, "1"));
        QCOMPARE(locked.errorCode, notSupported);
        QCOMPARE(locked.errorMessage, QStringLiteral("Playback has no file to play."));
    }
    QVERIFY(instrument.take(playback, setField("AutoScale", "false")));
}

void WaveformsSuite::playbackRecording()
{
    WaveformFolder folder;
    Instrument instrument;
    QVERIFY(instrument.take(
        playback, setField("FileName", quoted(folder.add(QStringLiteral("iq.wav"), wav(10, 1000, true))))));
    QCOMPARE(instrument.profile(playback, "autoScaleLocked"), QJsonValue(true));
    for (const char* key : {"periodEditable", "sampleOffsetEditable", "samplesToUseEditable"})
        QCOMPARE(instrument.profile(playback, key), QJsonValue(false));
    for (const char* key : {"AutoScale", "IQScale", "Period", "SamplesToUse", "SampleOffset"}) {
        const Host::Response response = instrument.ask(playback, setField(key, "1"));
        QCOMPARE(response.errorCode, notSupported);
        QCOMPARE(response.errorMessage,
                 QStringLiteral("An I/Q recording is played whole and scaled by itself."));
    }
    QVERIFY(instrument.take(playback, setField("SampleRate", "2000")));
}

void WaveformsSuite::streamingList()
{
    WaveformFolder folder;
    const QString a = folder.add(QStringLiteral("a.wav"), wav(10, 1000));
    const QString b = folder.add(QStringLiteral("b.wav"), wav(20, 1000));
    const QString bad = folder.add(QStringLiteral("bad.wav"), "no wave");
    Instrument instrument;
    const auto files = [&] { return instrument.state(streaming, "FileList").toArray(); };
    QVERIFY(instrument.take(streaming, list({a, QString(), b})));
    QCOMPARE(files(), (QJsonArray{a, b}));
    QVERIFY(instrument.take(streaming, list({b, a, b})));
    QCOMPARE(files(), (QJsonArray{b, a, b}));
    const Host::Response response = instrument.ask(streaming, list({b, bad}));
    QCOMPARE(response.errorCode, invalidArgument);
    QCOMPARE(response.errorMessage, QStringLiteral("'%1' is no WAV file.").arg(bad));
    QCOMPARE(files(), (QJsonArray{b, a, b}));
    // A file that has gone stays in the list until somebody takes it out.
    QVERIFY(QFile::remove(b));
    QVERIFY(instrument.take(streaming, list({a, b})));
    QCOMPARE(files(), (QJsonArray{a, b}));
    QVERIFY(instrument.take(streaming, list({a})));
    QCOMPARE(instrument.ask(streaming, list({a, b})).errorCode, invalidArgument);

    QStringList many;
    for (int i = 0; i < 256; ++i)
        many += a;
    QVERIFY(instrument.take(streaming, list(many)));
    QCOMPARE(instrument.ask(streaming, list(many + many)).errorMessage,
             QStringLiteral("The file list must not hold more than 256 files."));
}

void WaveformsSuite::streamingSwitchesOff()
{
    WaveformFolder folder;
    const QString a = folder.add(QStringLiteral("a.wav"), wav(10, 1000));
    Instrument instrument;
    QVERIFY(instrument.take(streaming, R"("enabled":true,)" + list({a})));
    QCOMPARE(instrument.enabled(), streaming);
    QVERIFY(instrument.take(streaming, list({})));
    QCOMPARE(instrument.enabled(), QString());
    QCOMPARE(instrument.item(streaming).revision, 3);
}

void WaveformsSuite::newInstrumentKeepsNothing()
{
    WaveformFolder folder;
    const Instrument fresh(folder.path());
    {
        Instrument instrument(folder.path());
        load(instrument, folder.add(QStringLiteral("a.wav"), wav(10, 1000)));
        QVERIFY(instrument.take(streaming, list({instrument.profile(quick, "loadedFilePath").toString()})));
    }
    const Instrument next(folder.path());
    QCOMPARE(snapshotOf(next.generator), snapshotOf(fresh.generator));
}

std::unique_ptr<QObject> makeWaveformsSuite()
{
    return std::make_unique<WaveformsSuite>();
}

#include "WaveformsSuite.moc"
