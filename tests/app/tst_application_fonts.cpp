// Which fonts are loaded from the folder beside the program's. Each case makes that folder anew.

#include "app/ApplicationFonts.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFontDatabase>
#include <QTest>

#include <fontconfig/fontconfig.h>
#include <sys/stat.h>

namespace {

constexpr char systemFont[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

QString fontsPath()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../fonts"));
}

QString inFonts(const char* name)
{
    return fontsPath() + QLatin1Char('/') + QString::fromUtf8(name);
}

// A font with a family name of its own, so that it shows whether it was loaded: DejaVu Sans renamed, in both
// encodings in which a font names itself, to a name of the same length.
QByteArray fontNamed(const QByteArray& family)
{
    QFile file{QLatin1String(systemFont)};
    QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QByteArray old = "DejaVu Sans";
    const auto wide = [](const QByteArray& text) {
        QByteArray units;
        for (char letter : text)
            units.append('\0').append(letter);
        return units;
    };
    return bytes.replace(old, family).replace(wide(old), wide(family));
}

bool write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
           file.write(bytes) == bytes.size();
}

bool has(const char* family)
{
    return QFontDatabase().families().contains(QString::fromLatin1(family));
}

// As at the start of a process: nobody has asked for a font, none is added.
void forgetFonts()
{
    QVERIFY(QFontDatabase::addApplicationFont(QLatin1String(systemFont)) >= 0);
    QVERIFY(QFontDatabase::removeAllApplicationFonts()); // and with one the database
    FcConfigAppFontClear(nullptr);
}

// Read by the toolkit, not by way of fontconfig's cache.
bool readOneByOne()
{
    return !QFontDatabase::applicationFontFamilies(0).isEmpty();
}

} // namespace

class TestApplicationFonts final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void loaded_data();
    void loaded();
    void cached();
    void notCached_data();
    void notCached();
    void rejectedByTheUser();
    void besideOthers();
    void noFolder();
    void fileInTheFoldersPlace();
    void whatIsNoFont_data();
    void whatIsNoFont();
    void loops();
    void theWholeDisk();
};

void TestApplicationFonts::init()
{
    QVERIFY(QDir(fontsPath()).removeRecursively());
    QFile::remove(fontsPath());
    QVERIFY(!fontNamed("TestFontAAA").isEmpty());
    forgetFonts();
}

void TestApplicationFonts::cleanup()
{
    forgetFonts();
    QVERIFY(!has("TestFontAAA"));
}

void TestApplicationFonts::loaded_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("asked"); // for fonts, before ours are loaded; a platform's plug-in may do so
    QTest::addColumn<bool>("expected");
    const struct
    {
        const char* name;
        QString path;
        bool expected;
    } rows[] = {
        {"in the folder", inFonts("a.ttf"), true},
        {"in a folder below", inFonts("Roboto/a.ttf"), true},
        {"far below", inFonts("1/2/3/4/5/6/7/8/9/a.ttf"), true},
        {"in capitals", inFonts("A.TTF"), true},
        {"beyond ASCII", inFonts("Schriften \xc3\xa4/\xe5\xad\x97\xe4\xbd\x93.ttf"), true},
        {"in a folder that is called a font", inFonts("b.ttf/a.ttf"), true},
        {"another extension", inFonts("a.otf"), false},
        {"no extension", inFonts("ttf"), false},
        {"an extension behind it", inFonts("a.ttf.bak"), false},
        {"beside the folder", fontsPath() + QStringLiteral("2/a.ttf"), false},
    };
    for (const auto& row : rows) {
        QTest::newRow(row.name) << row.path << false << row.expected;
        QTest::addRow("%s, asked before", row.name) << row.path << true << row.expected;
    }
}

void TestApplicationFonts::loaded()
{
    QFETCH(QString, path);
    QFETCH(bool, asked);
    QFETCH(bool, expected);
    QVERIFY(write(path, fontNamed("TestFontAAA")));
    if (asked)
        QVERIFY(!has("TestFontAAA"));
    loadApplicationFonts();
    QCOMPARE(has("TestFontAAA"), expected);
    QCOMPARE(readOneByOne(), asked && expected);
}

// Fonts are taken from fontconfig's cache where that gives the same fonts.
void TestApplicationFonts::cached()
{
    QVERIFY(write(inFonts("a.ttf"), fontNamed("TestFontAAA")));
    QVERIFY(write(inFonts("inner/b.ttf"), fontNamed("TestFontBBB")));
    loadApplicationFonts();
    QVERIFY(has("TestFontAAA") && has("TestFontBBB"));
    QVERIFY(!readOneByOne());
}

void TestApplicationFonts::notCached_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("a font of another kind beside") << inFonts("b.otf") << fontNamed("TestFontBBB");
    QTest::newRow("the same below") << inFonts("inner/b.otf") << fontNamed("TestFontBBB");
    QTest::newRow("a broken font") << inFonts("b.ttf") << QByteArray("no font at all");
}

void TestApplicationFonts::notCached()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, bytes);
    QVERIFY(write(inFonts("a.ttf"), fontNamed("TestFontAAA")));
    QVERIFY(write(path, bytes));
    loadApplicationFonts();
    QVERIFY(has("TestFontAAA"));
    QVERIFY(!has("TestFontBBB"));
    QVERIFY(readOneByOne());
}

// A font that the user's configuration keeps from all programs is ours all the same.
void TestApplicationFonts::rejectedByTheUser()
{
    const char rule[] =
        "<fontconfig><selectfont><rejectfont><pattern><patelt name='family'>"
        "<string>TestFontRRR</string></patelt></pattern></rejectfont></selectfont></fontconfig>";
    QVERIFY(
        FcConfigParseAndLoadFromMemory(FcConfigGetCurrent(), reinterpret_cast<const FcChar8*>(rule), FcTrue));
    QVERIFY(write(inFonts("a.ttf"), fontNamed("TestFontAAA")));
    QVERIFY(write(inFonts("r.ttf"), fontNamed("TestFontRRR")));
    loadApplicationFonts();
    QVERIFY(has("TestFontAAA") && has("TestFontRRR"));
}

// Neither what is broken nor what is nested keeps the others from being loaded.
void TestApplicationFonts::besideOthers()
{
    QVERIFY(write(inFonts("0.ttf"), "no font at all"));
    QVERIFY(write(inFonts("1.ttf"), fontNamed("TestFontAAA")));
    QVERIFY(write(inFonts("inner/0.ttf"), fontNamed("TestFontBBB").left(1000)));
    QVERIFY(write(inFonts("inner/1.ttf"), fontNamed("TestFontBBB")));
    QVERIFY(write(inFonts("inner/deeper/1.ttf"), fontNamed("TestFontCCC")));
    loadApplicationFonts();
    QVERIFY(has("TestFontAAA") && has("TestFontBBB") && has("TestFontCCC"));
}

void TestApplicationFonts::noFolder()
{
    const int before = QFontDatabase().families().size();
    loadApplicationFonts();
    QCOMPARE(QFontDatabase().families().size(), before);
}

void TestApplicationFonts::fileInTheFoldersPlace()
{
    QVERIFY(write(fontsPath(), fontNamed("TestFontAAA")));
    loadApplicationFonts();
    QVERIFY(!has("TestFontAAA"));
}

void TestApplicationFonts::whatIsNoFont_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray font = fontNamed("TestFontAAA");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a text") << QByteArray("fonts are what printers cast.\n").repeated(100);
    QTest::newRow("zeros") << QByteArray(100000, '\0');
    QTest::newRow("its header") << font.left(12);
    QTest::newRow("its tables cut off") << font.left(400);
}

void TestApplicationFonts::whatIsNoFont()
{
    QFETCH(QByteArray, bytes);
    const int before = QFontDatabase().families().size();
    QVERIFY(write(inFonts("a.ttf"), bytes));
    loadApplicationFonts();
    QCOMPARE(QFontDatabase().families().size(), before);
}

// Folders that lead back into themselves in several ways, and links to what never ends when it is opened.
void TestApplicationFonts::loops()
{
    QVERIFY(write(inFonts("inner/a.ttf"), fontNamed("TestFontAAA")));
    QVERIFY(write(inFonts("other/b.txt"), "b"));
    for (const char* name : {"self", "inner/up", "inner/again", "other/up"})
        QVERIFY(QFile::link(fontsPath(), inFonts(name)));
    QVERIFY(QFile::link(inFonts("inner"), inFonts("other/inner")));
    QVERIFY(QFile::link(inFonts("other"), inFonts("inner/other")));
    QVERIFY(QFile::link(inFonts("circle"), inFonts("circle")));
    QVERIFY(QFile::link(inFonts("circle.ttf"), inFonts("circle.ttf")));
    QVERIFY(QFile::link(QStringLiteral("/nonexistent.ttf"), inFonts("gone.ttf")));
    QVERIFY(QFile::link(QStringLiteral("/dev/zero"), inFonts("zero.ttf")));
    const QString pipe = inFonts("pipe.ttf");
    QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
    QVERIFY(QFile::link(pipe, inFonts("link to a pipe.ttf")));
    QFile huge(inFonts("huge.ttf"));
    QVERIFY(huge.open(QIODevice::WriteOnly) && huge.resize(qint64(1) << 40)); // on paper
    loadApplicationFonts();
    QVERIFY(has("TestFontAAA"));
    QVERIFY(huge.remove());
}

void TestApplicationFonts::theWholeDisk()
{
    QVERIFY(write(inFonts("a.ttf"), fontNamed("TestFontAAA")));
    QVERIFY(QFile::link(QStringLiteral("/"), inFonts("disk")));
    QElapsedTimer clock;
    clock.start();
    loadApplicationFonts();
    QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    QVERIFY(has("TestFontAAA"));
}

QTEST_MAIN(TestApplicationFonts)

#include "tst_application_fonts.moc"
