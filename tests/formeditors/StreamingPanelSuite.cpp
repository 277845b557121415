#include "formeditors/FormFixture.h"
#include "formeditors/PathList.h"
#include "formeditors/StreamedFiles.h"
#include "support/Ink.h"
#include "utils/WavBytes.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace {

QJsonObject state(const QStringList& files, double rate = 1000)
{
    return {{QStringLiteral("FileList"), QJsonArray::fromStringList(files)},
            {QStringLiteral("SampleRate"), rate}};
}

} // namespace

// The editor that plays a list of files.
class StreamingPanelSuite final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void rowsTellWhatIsInTheFiles();
    void soxFilesAreRead();
    void emptyPathsAreSkipped();
    void totals_data();
    void totals();
    void plainCountIsKeptTo32Bits();
    void currentRowStays();
    void emptyListOffersNothing();
    void rowsAreRefilledOnlyWhenSomethingDiffers();
    void changedFileIsReadAgain();
    void changeThatKeepsSizeAndTimeIsSeen();
    void thousandMissingFilesDoNotStall();
    void remove_data();
    void remove();
    void keysReorder_data();
    void keysReorder();
    void dragReorders();
    void listChangedBeforeTheOrderIsTold();
    void editorMayGoDuringAnOrder();

private:
    // A plain WAV file of 16-bit pairs.
    QString wav(const QString& name, int samples, quint32 rate = 48000, const QByteArray& more = {}) const
    {
        const QString path = m_folder.filePath(name);
        QFile file(path);
        const QByteArray chunks =
            WavBytes::fmt(1, 2, rate) + more + WavBytes::chunk("data", WavBytes::samples(samples * 4));
        if (!file.open(QIODevice::WriteOnly) || file.write(WavBytes::file(chunks)) < 0)
            qFatal("cannot write a test file");
        return path;
    }
    static PathList* listOf(const FormFixture& fixture) { return fixture.find<PathList>("FileList"); }
    static QStringList rowsOf(const FormFixture& fixture)
    {
        QStringList rows;
        for (int row = 0; row < listOf(fixture)->count(); ++row)
            rows.append(listOf(fixture)->item(row)->text());
        return rows;
    }
    static QPushButton* button(const FormFixture& fixture, const char* name)
    {
        return fixture.find<QPushButton>(name);
    }
    // The list that has left; nothing else has.
    static QStringList sentFiles(const FormFixture& fixture)
    {
        const QJsonObject edit = fixture.setField();
        if (edit.value(QLatin1String("key")) != QLatin1String("FileList") ||
            !edit.value(QLatin1String("value")).isArray())
            return {QStringLiteral("no such edit")};
        QStringList files;
        const QJsonArray sent = edit.value(QLatin1String("value")).toArray();
        for (const QJsonValue file : sent)
            files.append(file.toString());
        return files;
    }

    QTemporaryDir m_folder;
    const QStringList m_abc = {QStringLiteral("/n/a.wav"), QStringLiteral("/n/b.wav"),
                               QStringLiteral("/n/c.wav")};
};

void StreamingPanelSuite::initTestCase()
{
    QVERIFY(m_folder.isValid());
}

void StreamingPanelSuite::rowsTellWhatIsInTheFiles()
{
    const QString plain = wav(QStringLiteral("plain.wav"), 1230);
    const QString recording =
        wav(QStringLiteral("iq %1 %2.wav"), 5, 30720000, WavBytes::chunk("auxi", QByteArray(164, '\0')));
    const QString rateless = wav(QStringLiteral("rateless.wav"), 7, 0);
    QFile text(m_folder.filePath(QStringLiteral("text.wav")));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("no waveform") > 0);
    text.close();
    const FormFixture fixture("streaming");
    fixture.apply(state(
        {plain, recording, rateless, text.fileName(), QStringLiteral("/nowhere/gone.wav"), m_folder.path()}));
    QCOMPARE(rowsOf(fixture),
             (QStringList{QStringLiteral("plain.wav -- 1.23k Samples -- Sample Rate: 48kHz"),
                          QStringLiteral("iq %1 %2.wav -- 5 Samples -- Sample Rate: 30.72MHz"),
                          QStringLiteral("rateless.wav -- 7 Samples -- Sample Rate: <unknown>"),
                          QStringLiteral("text.wav"), QStringLiteral("gone.wav"),
                          QDir(m_folder.path()).dirName()}));
    QCOMPARE(listOf(fixture)->item(0)->data(Qt::UserRole).toString(), plain);
    QCOMPARE(listOf(fixture)->item(0)->toolTip(), rowsOf(fixture).first() + QLatin1Char('\n') + plain);
    QCOMPARE(listOf(fixture)->item(4)->toolTip(), QStringLiteral("/nowhere/gone.wav"));
    QCOMPARE(fixture.shown("btnTotalFiles"), QStringLiteral("6"));
    QCOMPARE(fixture.shown("btnTotalSamples"), QStringLiteral("1242"));
    QCOMPARE(fixture.shown("btnTotalDuration"), QStringLiteral("1.242s"));
    QCOMPARE(fixture.shown("btnPlaybackPos"), QStringLiteral("0%"));
    QCOMPARE(fixture.emitted(), 0);
}

// Files of somebody else's making.
void StreamingPanelSuite::soxFilesAreRead()
{
    const QString path = m_folder.filePath(QStringLiteral("sox.wav"));
    QCOMPARE(QProcess::execute(QStringLiteral("sox"),
                               {QStringLiteral("-n"), QStringLiteral("-r"), QStringLiteral("44100"),
                                QStringLiteral("-c"), QStringLiteral("2"), QStringLiteral("-b"),
                                QStringLiteral("24"), path, QStringLiteral("synth"), QStringLiteral("1"),
                                QStringLiteral("sine"), QStringLiteral("440")}),
             0);
    const FormFixture fixture("streaming");
    fixture.apply(state({path}));
    QCOMPARE(rowsOf(fixture),
             QStringList{QStringLiteral("sox.wav -- 44.1k Samples -- Sample Rate: 44.1kHz")});
}

void StreamingPanelSuite::emptyPathsAreSkipped()
{
    const FormFixture fixture("streaming");
    fixture.apply(R"({"FileList":["","/n/a.wav",7,null,"/n/b.wav",["/n/c.wav"]]})");
    QCOMPARE(rowsOf(fixture), (QStringList{QStringLiteral("a.wav"), QStringLiteral("b.wav")}));
    QCOMPARE(fixture.shown("btnTotalFiles"), QStringLiteral("2"));
    listOf(fixture)->setCurrentRow(1);
    button(fixture, "Remove")->click();
    QCOMPARE(sentFiles(fixture), QStringList{QStringLiteral("/n/a.wav")});
}

void StreamingPanelSuite::totals_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<bool>("readable");
    QTest::addColumn<QString>("duration");
    QTest::newRow("the panel's own rate") << 500.0 << true << QStringLiteral("2s");
    QTest::newRow("rate 0") << 0.0 << true << QStringLiteral("0s");
    QTest::newRow("negative rate") << -500.0 << true << QStringLiteral("0s");
    QTest::newRow("no samples") << 500.0 << false << QStringLiteral("0s");
}

void StreamingPanelSuite::totals()
{
    QFETCH(const double, rate);
    QFETCH(const bool, readable);
    QFETCH(const QString, duration);
    QStringList files = {QStringLiteral("/nowhere/gone.wav")};
    if (readable)
        files << wav(QStringLiteral("1.wav"), 400) << wav(QStringLiteral("2.wav"), 600, 8000);
    const FormFixture fixture("streaming");
    fixture.apply(state(files, rate));
    QCOMPARE(fixture.shown("btnTotalFiles"), QString::number(files.size()));
    QCOMPARE(fixture.shown("btnTotalSamples"), QString::number(readable ? 1000 : 0));
    QCOMPARE(fixture.shown("btnTotalDuration"), duration);
}

// A file with a hole: large to look at, small on the disk.
void StreamingPanelSuite::plainCountIsKeptTo32Bits()
{
    const qint64 samples = (qint64(1) << 32U) + 5;
    QFile file(m_folder.filePath(QStringLiteral("large.wav")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QByteArray header = WavBytes::file(WavBytes::ds64(samples) + WavBytes::fmt(1, 1, 48000, 8) +
                                                 WavBytes::chunk("data", {}, 0xFFFFFFFF),
                                             "RF64");
    QVERIFY(file.write(header) == header.size() && file.resize(header.size() + samples));
    file.close();
    const auto facts = probeStreamedFile(file.fileName());
    QVERIFY(facts);
    QCOMPARE(facts->samples, quint64(5));
    QVERIFY(file.remove());
}

void StreamingPanelSuite::currentRowStays()
{
    const FormFixture fixture("streaming");
    PathList* const list = listOf(fixture);
    const QString a = m_abc.at(0);
    const QString b = m_abc.at(1);
    const QString c = m_abc.at(2);
    fixture.apply(state({a, b, c}));
    QCOMPARE(list->currentRow(), 2); // none was: the last
    list->setCurrentRow(1);
    fixture.apply(state({b, a, c}));
    QCOMPARE(list->currentPath(), b);
    QCOMPARE(list->currentRow(), 0);
    fixture.apply(state({a, c}));
    QCOMPARE(list->currentRow(), 1); // it has gone: the last
    list->setCurrentRow(-1);
    fixture.apply(state({a, c}));
    QCOMPARE(list->currentRow(), 1);
    fixture.apply(state({}));
    QCOMPARE(list->currentRow(), -1);
    fixture.apply(state({a, b, a, c}));
    list->setCurrentRow(2); // of two that are alike
    fixture.apply(state({a, b, a}));
    QCOMPARE(list->currentRow(), 2);
    QCOMPARE(fixture.emitted(), 0);
}

void StreamingPanelSuite::emptyListOffersNothing()
{
    FormFixture fixture("streaming");
    QVERIFY(fixture.show());
    for (const char* none :
         {"{}", R"({"FileList":[]})", R"({"FileList":[""]})", R"({"FileList":"/n/a.wav"})"}) {
        fixture.apply(state(m_abc), "{}", true);
        for (const char* name : {"Remove", "Unload", "Load"})
            QVERIFY(button(fixture, name)->isEnabled());
        QVERIFY(fixture.onOff("enabled")->isEnabled());
        fixture.apply(none, "{}", true);
        QVERIFY(!button(fixture, "Remove")->isEnabled());
        QVERIFY(!button(fixture, "Unload")->isEnabled());
        QVERIFY(!fixture.onOff("enabled")->isEnabled());
        QVERIFY(fixture.onOff("enabled")->status());
        QVERIFY(button(fixture, "Load")->isEnabled());
        QCOMPARE(fixture.shown("btnTotalFiles"), QStringLiteral("0"));
        QCOMPARE(listOf(fixture)->count(), 0);
        QVERIFY(TestSupport::hasInk(listOf(fixture)->viewport())); // it says that there are none
        QTest::mouseClick(button(fixture, "Remove"), Qt::LeftButton);
        FormFixture::toggle(fixture.onOff("enabled"));
    }
    QCOMPARE(fixture.emitted(), 0);
}

void StreamingPanelSuite::rowsAreRefilledOnlyWhenSomethingDiffers()
{
    const QStringList files = {wav(QStringLiteral("same.wav"), 10), QStringLiteral("/nowhere/gone.wav")};
    const FormFixture fixture("streaming");
    fixture.apply(state(files));
    const QSignalSpy refills(listOf(fixture)->model(), &QAbstractItemModel::rowsInserted);
    fixture.apply(state(files));
    fixture.apply(state(files, 2000), "{}", true);
    QCOMPARE(refills.count(), 0);
    QCOMPARE(fixture.shown("btnTotalDuration"), QStringLiteral("5ms"));
    fixture.apply(state({files.at(1), files.at(0)}));
    QVERIFY(refills.count() > 0);
}

void StreamingPanelSuite::changedFileIsReadAgain()
{
    const QString path = wav(QStringLiteral("changing.wav"), 10);
    const FormFixture fixture("streaming");
    fixture.apply(state({path}));
    wav(QStringLiteral("changing.wav"), 20);
    fixture.apply(state({path}));
    QCOMPARE(fixture.shown("btnTotalSamples"), QStringLiteral("20"));
    QVERIFY(QFile::remove(path));
    fixture.apply(state({path}));
    QCOMPARE(rowsOf(fixture), QStringList{QStringLiteral("changing.wav")});
    QCOMPARE(fixture.shown("btnTotalSamples"), QStringLiteral("0"));
    wav(QStringLiteral("changing.wav"), 30);
    fixture.apply(state({path}));
    QCOMPARE(fixture.shown("btnTotalSamples"), QStringLiteral("30"));
}

void StreamingPanelSuite::changeThatKeepsSizeAndTimeIsSeen()
{
    const QString path = wav(QStringLiteral("rewritten.wav"), 10);
    const FormFixture fixture("streaming");
    fixture.apply(state({path}));
    QCOMPARE(fixture.shown("btnTotalSamples"), QStringLiteral("10"));
    const QDateTime modified = QFileInfo(path).lastModified();
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    constexpr int channels = 22; // where the header tells their number
    QVERIFY(file.seek(channels));
    QCOMPARE(file.write("\1", 1), 1);
    QVERIFY(file.setFileTime(modified, QFileDevice::FileModificationTime));
    file.close();
    fixture.apply(state({path}));
    QCOMPARE(fixture.shown("btnTotalSamples"), QStringLiteral("20"));
}

void StreamingPanelSuite::thousandMissingFilesDoNotStall()
{
    QStringList files;
    for (int i = 0; i < 1000; ++i)
        files.append(QStringLiteral("/nowhere/%1.wav").arg(i));
    const FormFixture fixture("streaming");
    const QJsonObject thousand = state(files);
    constexpr int bound = 2000; // ms; a hundred times what it takes
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 10; ++i)
        fixture.editor->applyEditorState(thousand, {}, i % 2 == 0);
    QVERIFY2(timer.elapsed() < bound, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(fixture.shown("btnTotalFiles"), QStringLiteral("1000"));
}

void StreamingPanelSuite::remove_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("first") << 0 << QStringList{m_abc.at(1), m_abc.at(2)};
    QTest::newRow("middle") << 1 << QStringList{m_abc.at(0), m_abc.at(2)};
    QTest::newRow("last") << 2 << QStringList{m_abc.at(0), m_abc.at(1)};
    QTest::newRow("none is current") << -1 << QStringList{m_abc.at(1), m_abc.at(2)};
    QTest::newRow("all") << 1 << QStringList{};
}

void StreamingPanelSuite::remove()
{
    QFETCH(const int, current);
    QFETCH(const QStringList, left);
    FormFixture fixture("streaming");
    fixture.apply(state(m_abc));
    QVERIFY(fixture.show());
    listOf(fixture)->setCurrentRow(current);
    QTest::mouseClick(button(fixture, left.isEmpty() ? "Unload" : "Remove"), Qt::LeftButton);
    QCOMPARE(sentFiles(fixture), left);
    QCOMPARE(listOf(fixture)->paths(), m_abc); // until it is confirmed
}

void StreamingPanelSuite::keysReorder_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("key");
    QTest::addColumn<QVector<int>>("order"); // empty: nothing is sent
    QTest::newRow("up") << 2 << int(Qt::Key_Up) << QVector<int>{0, 2, 1};
    QTest::newRow("down") << 0 << int(Qt::Key_Down) << QVector<int>{1, 0, 2};
    QTest::newRow("above the first") << 0 << int(Qt::Key_Up) << QVector<int>{};
    QTest::newRow("below the last") << 2 << int(Qt::Key_Down) << QVector<int>{};
    QTest::newRow("nothing") << -1 << int(Qt::Key_Down) << QVector<int>{};
}

void StreamingPanelSuite::keysReorder()
{
    QFETCH(const int, current);
    QFETCH(const int, key);
    QFETCH(const QVector<int>, order);
    FormFixture fixture("streaming");
    fixture.apply(state(m_abc));
    QVERIFY(fixture.show());
    PathList* const list = listOf(fixture);
    list->setCurrentRow(current);
    QTest::keyClick(list, Qt::Key(key), Qt::AltModifier);
    if (order.isEmpty()) {
        QCOMPARE(fixture.emitted(), 0);
    } else {
        QStringList wanted;
        for (int row : order)
            wanted.append(m_abc.at(row));
        QCOMPARE(sentFiles(fixture), wanted);
    }
    QCOMPARE(list->paths(), m_abc);
    QCOMPARE(list->currentRow(), current);
    fixture.forget();
    QTest::keyClick(list, Qt::Key_Up); // alone it only chooses
    QCOMPARE(fixture.emitted(), 0);
}

// What a drop does to the list; the drag itself needs a hand on a real mouse.
void StreamingPanelSuite::dragReorders()
{
    const FormFixture fixture("streaming");
    fixture.apply(state(m_abc));
    PathList* const list = listOf(fixture);
    QCOMPARE(list->dragDropMode(), QAbstractItemView::InternalMove);
    list->setCurrentRow(0);
    QVERIFY(list->model()->moveRow({}, 0, {}, 3));
    QTRY_COMPARE(fixture.emitted(), 1);
    QCOMPARE(sentFiles(fixture), (QStringList{m_abc.at(1), m_abc.at(2), m_abc.at(0)}));
    QCOMPARE(list->paths(), m_abc);
    QCOMPARE(list->currentRow(), 0);
    fixture.forget();
    // There and back again is no other order.
    QVERIFY(list->model()->moveRow({}, 0, {}, 3));
    QVERIFY(list->model()->moveRow({}, 2, {}, 0));
    QCoreApplication::processEvents();
    QCOMPARE(fixture.emitted(), 0);
}

void StreamingPanelSuite::listChangedBeforeTheOrderIsTold()
{
    const FormFixture fixture("streaming");
    fixture.apply(state(m_abc));
    QVERIFY(listOf(fixture)->model()->moveRow({}, 0, {}, 3));
    fixture.apply(state({m_abc.at(2)}));
    QCoreApplication::processEvents();
    QCOMPARE(fixture.emitted(), 0); // what is no longer on the list does not come back
    QCOMPARE(listOf(fixture)->paths(), QStringList{m_abc.at(2)});
}

void StreamingPanelSuite::editorMayGoDuringAnOrder()
{
    const FormFixture fixture("streaming");
    fixture.apply(state(m_abc));
    connect(fixture.editor, &RemoteModEditor::actionEdited, this, [&] { delete fixture.editor.data(); });
    QVERIFY(listOf(fixture)->model()->moveRow({}, 0, {}, 3));
    QTRY_VERIFY(!fixture.editor);
    QCOMPARE(fixture.actions->count(), 1);
}

std::unique_ptr<QObject> makeStreamingPanelSuite()
{
    return std::make_unique<StreamingPanelSuite>();
}

#include "StreamingPanelSuite.moc"
