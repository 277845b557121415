// The editors that play files, against the real simulator, with real files, on a real screen.

#include "support/HelperProcess.h"
#include "support/Waiting.h"
#include "system/EditorView.h"
#include "system/SampleWaves.h"
#include "system/SimulatorSession.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QTest>

using namespace TestSupport;

namespace {

const QString quickWaveform = QStringLiteral("Quick Waveform");
const QString playback = QStringLiteral("ARB Playback");
const QString streaming = QStringLiteral("Streaming");

struct Line
{
    QString title; // of the popup
    const char* id;
    int number; // in the menu
};

// Where the simulator's menu has them.
Line lineOf(const QString& title)
{
    constexpr int quickLine = 2;
    constexpr int playbackLine = 9;
    constexpr int streamingLine = 10;
    if (title == quickWaveform)
        return {title, "quick-waveform", quickLine};
    return title == playback ? Line{title, "playback", playbackLine}
                             : Line{title, "streaming", streamingLine};
}

QString shownName(const QString& file)
{
    return QFileInfo(file).completeBaseName();
}

} // namespace

class TestWaveforms final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void quickBrowsing();
    void quickLoading_data();
    void quickLoading();
    void quickFailure();
    void quickLocating();
    void quickNumbers();
    void playbackByMouse();
    void playbackNumbers();
    void playbackOfRecording();
    void streamingList();
    void nothingIsKept();

private:
    struct Session
    {
        Session(const PrivateDisplay& display, const Accessibility& accessibility)
            : simulator(display, accessibility)
            , bar(simulator.bar())
            , editor(bar, accessibility)
        {}

        // The editor is open.
        [[nodiscard]] bool begin(const QString& stage, const QString& title);
        // What the item says of itself, since the mark.
        [[nodiscard]] QJsonObject item();
        [[nodiscard]] QJsonObject state() { return item().value(QLatin1String("editorState")).toObject(); }
        [[nodiscard]] QJsonObject profile() { return item().value(QLatin1String("profile")).toObject(); }
        // The arguments of the last request, if there have been as many since the mark.
        [[nodiscard]] QJsonObject request(int count = 1);
        // Types the value into the field, and both the request and the state that follows hold it.
        [[nodiscard]] bool edit(const char* field, const char* typed, const char* key, double value);
        [[nodiscard]] bool doubleClick(const QString& name);
        // The chooser is open and has the keyboard.
        [[nodiscard]] bool openChooser(const QString& button, const QString& caption);
        [[nodiscard]] bool chooseTyped(const QString& button, const QString& caption, const QString& path);

        SimulatorSession simulator;
        BarView& bar;
        EditorView editor;
        QString id;
    };

    [[nodiscard]] QString path(const QString& file) const
    {
        return m_stage.path() + QStringLiteral("/data/") + file;
    }

    PrivateDisplay m_display{qEnvironmentVariable("TARVINEL_WINDOW_MANAGER", QStringLiteral("icewm"))};
    Accessibility m_accessibility{m_display};
    StageCopy m_stage;
    QVector<SampleWave> m_waves;
};

bool TestWaveforms::Session::begin(const QString& stage, const QString& title)
{
    const Line line = lineOf(title);
    constexpr int lines = 13;
    id = QLatin1String(line.id);
    return simulator.start(stage, {QStringLiteral("--no-window"), QStringLiteral("--minimised"),
                                   QStringLiteral("--anchor"), QStringLiteral("900,60"),
                                   QStringLiteral("--waveforms"), stage + QStringLiteral("/data")}) &&
           simulator.waitForLine("helper VISIBLE") && bar.attach(simulator.helperId()) && bar.expand() &&
           editor.open(line.number, lines, title);
}

QJsonObject TestWaveforms::Session::item()
{
    const QVector<QJsonObject> answers = simulator.payloads("main   RSP") + simulator.payloads("main   EVT");
    QJsonObject newest;
    double newestSequence = 0;
    for (const QJsonObject& answer : answers) {
        const QJsonObject snapshot = answer.value(QLatin1String("payload")).toObject();
        const double sequence = snapshot.value(QLatin1String("seq")).toDouble();
        if (sequence > newestSequence) {
            newestSequence = sequence;
            newest = snapshot;
        }
    }
    const QJsonArray items =
        newest.value(QLatin1String("mod")).toObject().value(QLatin1String("businesses")).toArray();
    for (const QJsonValue entry : items)
        if (entry.toObject().value(QLatin1String("id")).toString() == id)
            return entry.toObject();
    return {};
}

QJsonObject TestWaveforms::Session::request(int count)
{
    if (!waitUntil([&] { return simulator.payloads("helper REQ").size() == count; }))
        return {};
    return simulator.payloads("helper REQ").last().value(QLatin1String("args")).toObject();
}

bool TestWaveforms::Session::edit(const char* field, const char* typed, const char* key, double value)
{
    simulator.markTraffic();
    const QString name = QLatin1String(key);
    if (!editor.perform(EditorView::Type, QLatin1String(field), QString::fromUtf8(typed)))
        return false;
    const QJsonObject args = request().value(QLatin1String("args")).toObject();
    return args.value(QLatin1String("key")).toString() == name &&
           args.value(QLatin1String("value")).toDouble() == value &&
           waitUntil([&] { return state().value(name).toDouble() == value; });
}

bool TestWaveforms::Session::doubleClick(const QString& name)
{
    const auto node = editor.find(name);
    return node && bar.desktop().doubleClick(node->extents.center());
}

bool TestWaveforms::Session::openChooser(const QString& button, const QString& caption)
{
    return editor.click(button) && bar.waitForKeyboard(caption);
}

bool TestWaveforms::Session::chooseTyped(const QString& button, const QString& caption, const QString& path)
{
    simulator.markTraffic();
    return openChooser(button, caption) && bar.desktop().type(path) &&
           bar.desktop().key(QStringLiteral("Return")) && bar.waitForBeside({editor.title()}) &&
           !request().isEmpty() && waitUntil([&] { return !item().isEmpty(); });
}

void TestWaveforms::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
    QVERIFY(m_stage.isValid());
    m_waves = writeSampleWaves(m_stage.path() + QStringLiteral("/data"));
    QVERIFY2(!m_waves.isEmpty(), "sox cannot write the files");
}

void TestWaveforms::quickBrowsing()
{
    Session session(m_display, m_accessibility);
    QVERIFY(session.begin(m_stage.path(), quickWaveform));
    const QString folder = m_waves.first().file.section(QLatin1Char('/'), 0, 0);
    const auto row = [](const QString& name, const QString& facts) -> QString {
        return name + QStringLiteral(" | ") + facts;
    };
    QStringList rows = {row(folder, QStringLiteral("-"))};
    for (int i = 1; i < m_waves.size(); ++i)
        rows.append(row(shownName(m_waves.at(i).file), m_waves.at(i).facts));
    QTRY_COMPARE(session.editor.tableRows(), rows);

    QVERIFY(session.editor.click(folder));
    const QStringList inner = {
        row(QStringLiteral(".."), QStringLiteral("-")),
        row(shownName(m_waves.first().file.section(QLatin1Char('/'), 1)), m_waves.first().facts)};
    QTRY_COMPARE(session.editor.tableRows(), inner);
    QVERIFY(session.editor.click(QStringLiteral("..")));
    QTRY_COMPARE(session.editor.tableRows(), rows);
    QVERIFY(!session.simulator.hasLine("helper REQ"));
}

void TestWaveforms::quickLoading_data()
{
    QTest::addColumn<int>("wave"); // of the order of the browser
    QTest::addColumn<bool>("byButton");
    constexpr int first = 1; // the one before lies in the folder
    constexpr int last = 8;
    constexpr int text = 6;
    for (int wave = first; wave <= last; ++wave) {
        if (wave != text)
            QTest::addRow("number %d, by %s", wave, wave % 2 ? "button" : "double click")
                << wave << (wave % 2 == 1);
    }
}

void TestWaveforms::quickLoading()
{
    QFETCH(int, wave);
    QFETCH(bool, byButton);
    Session session(m_display, m_accessibility);
    QVERIFY(session.begin(m_stage.path(), quickWaveform));
    const SampleWave& expected = m_waves.at(wave);
    const QString name = shownName(expected.file);
    QCOMPARE(session.editor.shown(QStringLiteral("Enabled")), QStringLiteral("off (locked)"));
    session.simulator.markTraffic();
    if (byButton) {
        QVERIFY(session.editor.click(name));
        QVERIFY(session.editor.click(QStringLiteral("Load")));
    } else {
        QVERIFY(session.doubleClick(name));
    }
    const QJsonObject request = session.request();
    QCOMPARE(request.value(QLatin1String("action")).toString(), QStringLiteral("select-file"));
    QCOMPARE(request.value(QLatin1String("args")).toObject(),
             QJsonObject({{QStringLiteral("path"), path(expected.file)}}));
    QTRY_COMPARE(session.profile().value(QLatin1String("loadedFilePath")).toString(), path(expected.file));
    QVERIFY(session.simulator.hasLine("\"loadInProgress\":true")); // before that
    QCOMPARE(session.profile().value(QLatin1String("samplesInFile")).toDouble(), expected.samples);
    const QString samples = QString::number(expected.samples, 'f', 0);
    QVERIFY(session.editor.waitForShown(QStringLiteral("Samples To Use"), samples));
    QCOMPARE(session.editor.shown(QStringLiteral("Period_Arb")), samples);
    QCOMPARE(session.editor.shown(QStringLiteral("Enabled")), QStringLiteral("off"));
    QVERIFY(session.editor.find(QStringLiteral("Load")));
}

void TestWaveforms::quickFailure()
{
    Session session(m_display, m_accessibility);
    QVERIFY(session.begin(m_stage.path(), quickWaveform));
    QVERIFY(session.doubleClick(QStringLiteral("text")));
    const auto load = session.editor.find(QStringLiteral("Load Failed"));
    QVERIFY(load);
    QCOMPARE(load->description,
             QString(QStringLiteral("'%1' is no WAV file.").arg(path(QStringLiteral("text.wav")))));
    QCOMPARE(session.editor.shown(QStringLiteral("Sample Rate")), QStringLiteral("1MHz (locked)"));
    QVERIFY(session.doubleClick(QStringLiteral("first")));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Samples To Use"), QStringLiteral("48000")));
    QVERIFY(session.editor.find(QStringLiteral("Load")));
}

void TestWaveforms::quickLocating()
{
    Session session(m_display, m_accessibility);
    QVERIFY(session.begin(m_stage.path(), quickWaveform));
    const QString folder = m_waves.first().file.section(QLatin1Char('/'), 0, 0);
    const QString inner = shownName(m_waves.first().file.section(QLatin1Char('/'), 1));
    const auto header = session.editor.find(QStringLiteral("Samples / Duration"));
    QVERIFY(header);
    const Desktop& desktop = session.bar.desktop();
    QVERIFY(session.editor.click(folder));
    QVERIFY(session.doubleClick(inner));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Samples To Use"), QStringLiteral("24000")));
    QVERIFY(desktop.waitForCalm(header->extents));
    const QImage unmarked = desktop.x().grab(header->extents);
    QVERIFY(session.editor.click(QStringLiteral("..")));
    QTRY_VERIFY(desktop.x().grab(header->extents) != unmarked);
    QVERIFY(session.bar.click(header->extents.center()));
    QVERIFY(session.editor.find(inner));
    QVERIFY(session.bar.leave());
    QTRY_VERIFY(desktop.x().grab(header->extents) == unmarked);
}

void TestWaveforms::quickNumbers()
{
    Session session(m_display, m_accessibility);
    QVERIFY(session.begin(m_stage.path(), quickWaveform));
    QVERIFY(session.doubleClick(QStringLiteral("first")));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Samples To Use"), QStringLiteral("48000")));
    QVERIFY(session.edit("Sample Rate", "12.345678901M", "sampleRate", 12345678.901));
    QVERIFY(session.edit("Sample Offset", "47999", "sampleOffset", 47999));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Samples To Use"), QStringLiteral("1")));
    QVERIFY(session.edit("Sample Offset", "8000", "sampleOffset", 8000));
    QVERIFY(session.edit("Samples To Use", "40000", "samplesToUse", 40000)); // all that is left
    QVERIFY(session.edit("Period_Arb", "26214400", "period", 26214400));
    QVERIFY(session.editor.perform(EditorView::Switch, QStringLiteral("Auto Scale"), QStringLiteral("Off")));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Auto Scale"), QStringLiteral("off")));
    QVERIFY(session.edit("I/Q Scale(%)", "12.34", "iQScale", 12.34));

    session.simulator.markTraffic();
    QVERIFY(session.editor.click(QStringLiteral("Samples To Use")));
    QVERIFY(session.bar.waitForKeyboard(QStringLiteral("Samples To Use")));
    QVERIFY(session.bar.desktop().type(QStringLiteral("40001")));
    QVERIFY(session.bar.desktop().key(QStringLiteral("Return")));
    QTRY_COMPARE(session.bar.keypadRemark(), QStringLiteral("The maximum is 40000."));
    QVERIFY(!session.simulator.hasLine("helper REQ"));
}

void TestWaveforms::playbackByMouse()
{
    Session session(m_display, m_accessibility);
    QVERIFY(session.begin(m_stage.path(), playback));
    QCOMPARE(session.editor.shown(QStringLiteral("File Name")), QStringLiteral("N/A"));
    const QString caption = QStringLiteral("Select WAV/ARB file");
    const QString folder = QStringLiteral("папка"); // in no Latin script, as the file in it
    const QString file = path(folder + QStringLiteral("/внутри.wav"));
    QVERIFY(session.openChooser(QStringLiteral("Load"), caption));
    // The toolkit does not tell assistive programs where the rows of this list stand. Folders come first.
    constexpr int rowHeight = 44;
    const QRect list = session.bar.control(caption, QStringLiteral("list"), QStringLiteral("Files"));
    const QPoint firstRow(list.center().x(), list.top() + rowHeight / 2);
    QVERIFY(session.bar.desktop().doubleClick(firstRow));
    QVERIFY(session.bar.control(caption, QStringLiteral("combo box"), path(folder)).isValid());
    session.simulator.markTraffic();
    QVERIFY(session.bar.desktop().doubleClick(firstRow));
    QCOMPARE(
        session.request().value(QLatin1String("args")).toObject(),
        QJsonObject({{QStringLiteral("key"), QStringLiteral("FileName")}, {QStringLiteral("value"), file}}));
    QVERIFY(session.editor.waitForShown(QStringLiteral("File Name"), file));
    QCOMPARE(session.editor.shown(QStringLiteral("Samples In File")), QStringLiteral("24000"));
    QCOMPARE(session.editor.shown(QStringLiteral("Signal Length")), QStringLiteral("500ms"));
}

void TestWaveforms::playbackNumbers()
{
    Session session(m_display, m_accessibility);
    QVERIFY(session.begin(m_stage.path(), playback));
    QVERIFY(session.chooseTyped(QStringLiteral("Load"), QStringLiteral("Select WAV/ARB file"),
                                path(QStringLiteral("first.wav"))));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Samples To Use"), QStringLiteral("48000")));
    QVERIFY(session.edit("Sample Rate", "30.720000001M", "SampleRate", 30720000.001));
    QVERIFY(session.edit("Sample Offset", "16000", "SampleOffset", 16000));
    QVERIFY(session.edit("Samples To Use", "31999", "SamplesToUse", 31999));
    QVERIFY(session.edit("Period_Arb", "31998", "Period", 31998));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Samples To Use"), QStringLiteral("31998")));
    QVERIFY(session.editor.perform(EditorView::Switch, QStringLiteral("Auto Scale"), QStringLiteral("Off")));
    QVERIFY(session.editor.waitForShown(QStringLiteral("I/Q Scale(%)"), QStringLiteral("100")));
    QVERIFY(session.edit("I/Q Scale(%)", "33.33", "IQScale", 33.33));
    QVERIFY(session.editor.perform(EditorView::Switch, QStringLiteral("Enabled"), QStringLiteral("On")));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Enabled"), QStringLiteral("on")));
}

// It is played as it was recorded.
void TestWaveforms::playbackOfRecording()
{
    Session session(m_display, m_accessibility);
    QVERIFY(session.begin(m_stage.path(), playback));
    QVERIFY(session.chooseTyped(QStringLiteral("Load"), QStringLiteral("Select WAV/ARB file"),
                                path(QStringLiteral("recording.wav"))));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Samples To Use"), QStringLiteral("5000 (locked)")));
    QCOMPARE(session.editor.shown(QStringLiteral("Auto Scale")), QStringLiteral("on (locked)"));
    QCOMPARE(session.editor.shown(QStringLiteral("I/Q Scale(%)")), QStringLiteral("100 (locked)"));
    QVERIFY(session.edit("Sample Rate", "2M", "SampleRate", 2e6));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Signal Length"), QStringLiteral("2.5ms")));
}

void TestWaveforms::streamingList()
{
    Session session(m_display, m_accessibility);
    QVERIFY(session.begin(m_stage.path(), streaming));
    QCOMPARE(session.editor.shown(QStringLiteral("Enabled")), QStringLiteral("off (locked)"));
    const QString load = QStringLiteral("Load Files");
    const QString caption = QStringLiteral("Select WAV file");
    const auto listed = [&session] {
        QStringList names;
        const QJsonArray files = session.state().value(QLatin1String("FileList")).toArray();
        for (const QJsonValue file : files)
            names.append(QFileInfo(file.toString()).fileName());
        return names;
    };
    const QString first = QStringLiteral("first.wav");
    const QString eight = QStringLiteral("eight bits.wav");
    const QString recording = QStringLiteral("recording.wav");
    for (const QString& file : {first, eight, recording})
        QVERIFY(session.chooseTyped(load, caption, path(file)));
    QCOMPARE(listed(), QStringList({first, eight, recording}));
    const QString total = QStringLiteral("Total Samples");
    QVERIFY(session.editor.waitForShown(total, QStringLiteral("57000")));
    QCOMPARE(session.editor.shown(QStringLiteral("Total Files")), QStringLiteral("3"));
    QCOMPARE(session.editor.shown(QStringLiteral("Total Duration")), QStringLiteral("57ms"));

    // The first is dragged below the last.
    const auto row = [&session](const QString& name) { return session.editor.listRow(name); };
    session.simulator.markTraffic();
    const QRect last = row(recording);
    QVERIFY(session.editor.dragRow(row(first).center(), last.bottomLeft() + QPoint(last.width() / 2, -2)));
    QTRY_COMPARE(listed(), QStringList({eight, recording, first}));
    QCOMPARE(session.simulator.payloads("helper REQ").size(), 1);
    // And moved back by a key.
    QVERIFY(session.bar.click(row(first).center()));
    QVERIFY(session.bar.desktop().key(QStringLiteral("alt+Up")));
    QTRY_COMPARE(listed(), QStringList({eight, first, recording}));

    QVERIFY(session.edit("Sample Rate", "57k", "SampleRate", 57e3));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Total Duration"), QStringLiteral("1s")));
    QVERIFY(session.edit("I/Q Scale(%)", "0.01", "IQScale", 0.01));
    QVERIFY(session.bar.click(row(first).center()));
    QVERIFY(session.editor.click(QStringLiteral("Remove File")));
    QTRY_COMPARE(listed(), QStringList({eight, recording}));
    QVERIFY(session.editor.waitForShown(total, QStringLiteral("9000")));
    QVERIFY(session.editor.click(QStringLiteral("Unload Files")));
    QTRY_COMPARE(listed(), QStringList());
    QVERIFY(session.editor.waitForShown(total, QStringLiteral("0")));
    QVERIFY(session.editor.waitForShown(QStringLiteral("Enabled"), QStringLiteral("off (locked)")));
}

void TestWaveforms::nothingIsKept()
{
    {
        Session session(m_display, m_accessibility);
        QVERIFY(session.begin(m_stage.path(), streaming));
        QVERIFY(session.chooseTyped(QStringLiteral("Load Files"), QStringLiteral("Select WAV file"),
                                    path(QStringLiteral("first.wav"))));
        QVERIFY(session.editor.waitForShown(QStringLiteral("Total Files"), QStringLiteral("1")));
    }
    Session session(m_display, m_accessibility);
    QVERIFY(session.begin(m_stage.path(), streaming));
    QCOMPARE(session.editor.shown(QStringLiteral("Total Files")), QStringLiteral("0"));
}

QTEST_GUILESS_MAIN(TestWaveforms)

#include "tst_waveforms.moc"
