#include "modeditors/QuickFixture.h"
#include "modeditors/QuickSuites.h"
#include "modeditors/WaveformListing.h"
#include "utils/WavBytes.h"

#include <QEvent>
#include <QFile>
#include <QProcess>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>

namespace {

constexpr int pathRole = Qt::UserRole;
constexpr int loadedRole = Qt::UserRole + 1;

QByteArray wav(const QByteArray& chunks)
{
    return WavBytes::file(chunks);
}

} // namespace

// Listing, walking and probing.
class QuickFolderSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<QuickFixture>(); }
    void cleanup() { m_fixture.reset(); }
    void lists_data();
    void lists();
    void rowsCarryPathsAndIcons();
    void loadedMarkMoves();
    void loadedFileInOtherSpelling_data();
    void loadedFileInOtherSpelling();
    void facts_data();
    void facts();
    void factsOfAnotherProgramsFile();
    void unreadableFiles();
    void walksDownAndUp();
    void firstFolder_data();
    void firstFolder();
    void secondClickDoesNotWalkOn();
    void foldersAreNotChosen();
    void longNamesHaveToolTips();
    void manyFiles();
    void emptyFolderSaysSo();

private:
    [[nodiscard]] QVariant data(int row, int role) const
    {
        return m_fixture->table().item(row, 0)->data(role);
    }

    std::unique_ptr<QuickFixture> m_fixture;
};

void QuickFolderSuite::lists_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("names");
    QTest::newRow("nothing") << QStringList() << QStringLiteral("");
    QTest::newRow("folders above files") << QStringList{QStringLiteral("a.wav"), QStringLiteral("z/x.wav"),
                                                        QStringLiteral("b.wav"), QStringLiteral("m/x.wav")}
                                         << QStringLiteral("m|z|a|b");
    QTest::newRow("suffix in any case")
        << QStringList{QStringLiteral("a.WAV"), QStringLiteral("b.Wav"), QStringLiteral("c.wav")}
        << QStringLiteral("a|b|c");
    QTest::newRow("other suffixes") << QStringList{QStringLiteral("a.wav.bak"), QStringLiteral("b.wave"),
                                                   QStringLiteral("c.mp3"),     QStringLiteral("wav"),
                                                   QStringLiteral("d_wav"),     QStringLiteral("e.wav")}
                                    << QStringLiteral("e");
    QTest::newRow("up to the last dot")
        << QStringList{QStringLiteral("a.b.wav"), QStringLiteral("c..wav"), QStringLiteral("d .wav")}
        << QStringLiteral("a.b|c.|d ");
    QTest::newRow("folder named as a file")
        << QStringList{QStringLiteral("x.wav/y.wav")} << QStringLiteral("x.wav");
    QTest::newRow("hidden") << QStringList{QStringLiteral(".hidden.wav"), QStringLiteral(".folder/x.wav"),
                                           QStringLiteral("a.wav")}
                            << QStringLiteral("a");
    QTest::newRow("any script") << QStringList{QStringLiteral("\u6D4B\u8BD5.wav"),
                                               QStringLiteral("\u0416.wav"), QStringLiteral("a\u0308.wav")}
                                << QStringLiteral("a\u0308|\u0416|\u6D4B\u8BD5");
    QTest::newRow("markup") << QStringList{QStringLiteral("<b>a<_b>.wav"), QStringLiteral("&b.wav"),
                                           QStringLiteral("%1.wav")}
                            << QStringLiteral("%1|&b|<b>a<_b>");
}

void QuickFolderSuite::lists()
{
    QFETCH(const QStringList, files);
    QFETCH(const QString, names);
    for (const QString& file : files) {
        m_fixture->addFile(file, "x");
    }
    m_fixture->apply();
    QCOMPARE(m_fixture->names(), names);
    QVERIFY(m_fixture->table().selectedItems().isEmpty());
}

void QuickFolderSuite::rowsCarryPathsAndIcons()
{
    m_fixture->addFolder(QStringLiteral("f/inner"));
    m_fixture->addWaveform(QStringLiteral("f/1.wav"));
    m_fixture->addWaveform(QStringLiteral("f/2.WAV"));
    m_fixture->applyLoaded(QStringLiteral("f/2.WAV"),
                           {{QStringLiteral("currentPath"), m_fixture->path(QStringLiteral("f"))}});
    QCOMPARE(m_fixture->names(), QStringLiteral("..|inner|1|2"));
    const QStringList paths = {
        {}, QStringLiteral("f/inner"), QStringLiteral("f/1.wav"), QStringLiteral("f/2.WAV")};
    const char* const icons[] = {"back", "folder", "audio", "checked"};
    for (int row = 0; row < paths.size(); ++row) {
        QCOMPARE(data(row, pathRole).toString(), m_fixture->path(paths.at(row)));
        QCOMPARE(data(row, loadedRole), QVariant(row == 3));
        QCOMPARE(m_fixture->icon(row),
                 QLatin1String(":/QuickWaveform/Image/") + QLatin1String(icons[row]) + QLatin1String(".svg"));
        QVERIFY(!(m_fixture->table().item(row, 0)->flags() & Qt::ItemIsEditable));
    }
    for (const char* name : {"..", "inner"}) {
        QCOMPARE(m_fixture->facts(QLatin1String(name)), QStringLiteral("-"));
    }
}

void QuickFolderSuite::loadedMarkMoves()
{
    for (const char* name : {"1.wav", "2.wav", "3.wav"}) {
        m_fixture->addWaveform(QLatin1String(name));
    }
    const auto marked = [this] {
        QString rows;
        for (int row = 0; row < 3; ++row) {
            const bool loaded = data(row, loadedRole).toBool();
            const bool checked = m_fixture->icon(row).endsWith(QLatin1String("checked.svg"));
            rows += loaded == checked ? QString::number(int(loaded)) : QStringLiteral("?");
        }
        return rows;
    };
    m_fixture->apply();
    QCOMPARE(marked(), QStringLiteral("000"));
    m_fixture->applyLoaded(QStringLiteral("1.wav"));
    QCOMPARE(marked(), QStringLiteral("100"));
    m_fixture->applyLoaded(QStringLiteral("3.wav"));
    QCOMPARE(marked(), QStringLiteral("001"));
    m_fixture->applyLoaded(QStringLiteral("gone.wav"));
    QCOMPARE(marked(), QStringLiteral("000"));
    m_fixture->applyLoaded(QStringLiteral("2.wav"));
    m_fixture->apply();
    QCOMPARE(marked(), QStringLiteral("000"));
}

void QuickFolderSuite::loadedFileInOtherSpelling_data()
{
    QTest::addColumn<QString>("spelling");
    QTest::addColumn<bool>("loaded");
    QTest::newRow("as listed") << QStringLiteral("%1/w/a.wav") << true;
    QTest::newRow("letter case") << QStringLiteral("%1/W/A.WAV") << true;
    QTest::newRow("not clean") << QStringLiteral("%1/w/../w//a.wav") << true;
    QTest::newRow("through a link") << QStringLiteral("%1/link/a.wav") << true;
    QTest::newRow("other file") << QStringLiteral("%1/w/b.wav") << false;
    QTest::newRow("other folder") << QStringLiteral("%1/a.wav") << false;
}

void QuickFolderSuite::loadedFileInOtherSpelling()
{
    QFETCH(const QString, spelling);
    QFETCH(const bool, loaded);
    m_fixture->addWaveform(QStringLiteral("w/a.wav"));
    QVERIFY(QFile::link(m_fixture->path(QStringLiteral("w")), m_fixture->path(QStringLiteral("link"))));
    m_fixture->apply({{QStringLiteral("loadedFilePath"), spelling.arg(m_fixture->path())},
                      {QStringLiteral("rootPath"), m_fixture->path(QStringLiteral("w"))}});
    QCOMPARE(data(0, loadedRole).toBool(), loaded);
}

void QuickFolderSuite::facts_data()
{
    using namespace WavBytes;
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("facts");
    const auto file = [](int samples, quint32 rate) {
        return wav(fmt(1, 1, rate, 8) + chunk("data", WavBytes::samples(samples)));
    };
    QTest::newRow("one second") << file(48000, 48000) << QStringLiteral("48k / 1s");
    QTest::newRow("below half a thousand") << file(499, 1000) << QStringLiteral("0k / 499ms");
    QTest::newRow("half a thousand") << file(500, 1000) << QStringLiteral("1k / 500ms");
    QTest::newRow("half upward") << file(2500, 1000) << QStringLiteral("3k / 2.5s");
    QTest::newRow("no samples") << file(0, 1000) << QStringLiteral("0k / 0s");
    QTest::newRow("no rate") << file(2000, 0) << QStringLiteral("2k / -");
    QTest::newRow("stereo") << wav(fmt(1, 2, 1000, 16) + chunk("data", WavBytes::samples(4000)))
                            << QStringLiteral("1k / 1s");
    QTest::newRow("I/Q recording") << wav(fmt(1, 2, 1000000, 16) + chunk("auxi", "x") +
                                          chunk("data", WavBytes::samples(40000)))
                                   << QStringLiteral("10k / 10ms");
    QTest::newRow("no WAV") << QByteArray("no WAV") << QStringLiteral("-");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("-");
}

void QuickFolderSuite::facts()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, facts);
    m_fixture->addFile(QStringLiteral("a.wav"), content);
    m_fixture->addWaveform(QStringLiteral("b.wav")); // read after it
    m_fixture->apply();
    QCOMPARE(m_fixture->facts(QStringLiteral("a")), QStringLiteral("-"));
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("b")), QStringLiteral("48k / 1s"));
    QCOMPARE(m_fixture->facts(QStringLiteral("a")), facts);
}

void QuickFolderSuite::factsOfAnotherProgramsFile()
{
    QStringList arguments =
        QStringLiteral("-n -r 96000 -b 24 -c 2 FILE synth 0.25 sine 440").split(QLatin1Char(' '));
    arguments.replaceInStrings(QStringLiteral("FILE"), m_fixture->path(QStringLiteral("tone.wav")));
    QCOMPARE(QProcess::execute(QStringLiteral("sox"), arguments), 0);
    m_fixture->apply();
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("tone")), QStringLiteral("24k / 250ms"));
}

void QuickFolderSuite::unreadableFiles()
{
    QVERIFY(waveformFacts(m_fixture->path(QStringLiteral("none.wav"))) == QLatin1String("-"));
    QVERIFY(waveformFacts(m_fixture->path()) == QLatin1String("-"));
    m_fixture->addWaveform(QStringLiteral("a.wav"));
    m_fixture->addWaveform(QStringLiteral("b.wav"));
    m_fixture->apply();
    // Gone before it is read.
    QVERIFY(QFile::remove(m_fixture->path(QStringLiteral("a.wav"))));
    QTRY_COMPARE(m_fixture->names(), QStringLiteral("b"));
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("b")), QStringLiteral("48k / 1s"));
}

void QuickFolderSuite::walksDownAndUp()
{
    m_fixture->addWaveform(QStringLiteral("a/b/deep.wav"));
    m_fixture->addWaveform(QStringLiteral("a/mid.wav"));
    m_fixture->apply();
    QCOMPARE(m_fixture->names(), QStringLiteral("a"));
    m_fixture->click(QStringLiteral("a"));
    QCOMPARE(m_fixture->names(), QStringLiteral("..|b|mid"));
    QVERIFY(m_fixture->table().selectedItems().isEmpty());
    m_fixture->click(QStringLiteral("b"));
    QCOMPARE(m_fixture->names(), QStringLiteral("..|deep"));
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("deep")), QStringLiteral("48k / 1s"));
    m_fixture->apply(); // a snapshot leaves the folder
    QCOMPARE(m_fixture->names(), QStringLiteral("..|deep"));
    m_fixture->click(QStringLiteral(".."));
    QCOMPARE(m_fixture->names(), QStringLiteral("..|b|mid"));
    m_fixture->click(QStringLiteral(".."));
    QCOMPARE(m_fixture->names(), QStringLiteral("a"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickFolderSuite::firstFolder_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("names");
    QTest::newRow("none") << QStringLiteral("") << QStringLiteral("sub|top");
    QTest::newRow("below") << QStringLiteral("%1/sub") << QStringLiteral("..|in");
    QTest::newRow("root") << QStringLiteral("%1") << QStringLiteral("sub|top");
    QTest::newRow("above") << QStringLiteral("%1/..") << QStringLiteral("sub|top");
    QTest::newRow("elsewhere") << QStringLiteral("/") << QStringLiteral("sub|top");
    QTest::newRow("gone") << QStringLiteral("%1/gone") << QStringLiteral("sub|top");
    QTest::newRow("a file") << QStringLiteral("%1/top.wav") << QStringLiteral("sub|top");
}

void QuickFolderSuite::firstFolder()
{
    QFETCH(const QString, folder);
    QFETCH(const QString, names);
    m_fixture->addWaveform(QStringLiteral("sub/in.wav"));
    m_fixture->addWaveform(QStringLiteral("top.wav"));
    const QString path = folder.contains(QLatin1String("%1")) ? folder.arg(m_fixture->path()) : folder;
    m_fixture->apply({}, {{QStringLiteral("currentPath"), path}});
    QCOMPARE(m_fixture->names(), names);
    // Afterwards it is the user who walks.
    m_fixture->apply({}, {{QStringLiteral("currentPath"), m_fixture->path(QStringLiteral("sub"))}});
    QCOMPARE(m_fixture->names(), names);
}

// The second click of a double click finds other rows than the first.
void QuickFolderSuite::secondClickDoesNotWalkOn()
{
    m_fixture->addWaveform(QStringLiteral("a/x.wav"));
    m_fixture->addFolder(QStringLiteral("b"));
    m_fixture->addFolder(QStringLiteral("a/b/c"));
    m_fixture->apply();
    m_fixture->doubleClick(QStringLiteral("b"));
    QCOMPARE(m_fixture->names(), QStringLiteral(".."));
    m_fixture->doubleClick(QStringLiteral(".."));
    m_fixture->doubleClick(QStringLiteral("a"));
    QCOMPARE(m_fixture->names(), QStringLiteral("..|b|x"));
    m_fixture->click(QStringLiteral("b"));
    m_fixture->click(QStringLiteral(".."));
    m_fixture->doubleClick(QStringLiteral("b"));
    QCOMPARE(m_fixture->names(), QStringLiteral("..|c"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickFolderSuite::foldersAreNotChosen()
{
    m_fixture->addFolder(QStringLiteral("a.wav"));
    m_fixture->apply();
    QCOMPARE(m_fixture->names(), QStringLiteral("a.wav"));
    m_fixture->table().setCurrentCell(0, 0);
    m_fixture->editor.click(QStringLiteral("btnLoad"));
    m_fixture->doubleClick(QStringLiteral("a.wav"));
    QCOMPARE(m_fixture->names(), QStringLiteral(".."));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickFolderSuite::longNamesHaveToolTips()
{
    const QString longName = QStringLiteral("<b>a name that is far too long for the table of a popup</b>")
                                 .repeated(3)
                                 .replace(QLatin1Char('/'), QLatin1Char('_'));
    m_fixture->addWaveform(longName + QLatin1String(".wav"));
    m_fixture->addWaveform(QStringLiteral("short.wav"));
    m_fixture->apply();
    const auto tipOf = [this](const QString& name) {
        QTableWidget& table = m_fixture->table();
        const QPoint place = table.visualItemRect(table.item(m_fixture->rowOf(name), 0)).center();
        QHelpEvent event(QEvent::ToolTip, place, table.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(table.viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    QCOMPARE(tipOf(QStringLiteral("short")), QString());
    QVERIFY(tipOf(longName).contains(longName.toHtmlEscaped()));
    QVERIFY(QToolTip::isVisible());
    QCOMPARE(m_fixture->editor.editor().width(), 560);
}

void QuickFolderSuite::manyFiles()
{
    constexpr int count = 3000;
    for (int i = 0; i < count; ++i) {
        m_fixture->addFile(QStringLiteral("%1.wav").arg(i, 4, 10, QLatin1Char('0')), "x");
    }
    m_fixture->apply();
    QTableWidget& table = m_fixture->table();
    QCOMPARE(table.rowCount(), count);
    QCOMPARE(table.item(0, 0)->text(), QStringLiteral("0000"));
    // What is scrolled to is there at once.
    table.verticalScrollBar()->setValue(table.verticalScrollBar()->maximum());
    QCOMPARE(table.item(count - 1, 0)->text(), QStringLiteral("2999"));
    QTRY_VERIFY(table.item(count / 2, 0));
    for (int row = 0; row < count; ++row) {
        QTRY_VERIFY(table.item(row, 0) && table.item(row, 1));
        QCOMPARE(table.item(row, 0)->text().toInt(), row);
    }
}

void QuickFolderSuite::emptyFolderSaysSo()
{
    const auto drawn = [this] {
        const QImage image = m_fixture->table().viewport()->grab().toImage();
        const QRgb background = image.pixel(2, image.height() - 2);
        int differing = 0;
        for (int x = 0; x < image.width(); ++x) {
            for (int y = image.height() / 3; y < image.height(); ++y) {
                differing += image.pixel(x, y) == background ? 0 : 1;
            }
        }
        return differing;
    };
    m_fixture->apply();
    QVERIFY(drawn() > 100);
    m_fixture->addWaveform(QStringLiteral("a.wav"));
    QTRY_COMPARE(m_fixture->names(), QStringLiteral("a"));
    QCOMPARE(drawn(), 0);
}

std::unique_ptr<QObject> makeQuickFolderSuite()
{
    return std::make_unique<QuickFolderSuite>();
}

#include "QuickFolderSuite.moc"
