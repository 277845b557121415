// Which fonts are loaded from the folder beside the program's. Each case makes that folder anew.

#include "app/ApplicationFonts.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFontDatabase>
#include <QTest>

#include <sys/stat.h>

namespace {

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
    QFile file(QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"));
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

} // namespace

class TestApplicationFonts final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void loaded_data();
    void loaded();
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
    QVERIFY(!has("TestFontAAA"));
}

void TestApplicationFonts::cleanup()
{
    QFontDatabase::removeAllApplicationFonts();
    QVERIFY(!has("TestFontAAA"));
}

void TestApplicationFonts::loaded_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("expected");
    QTest::newRow("in the folder") << inFonts("a.ttf") << true;
    QTest::newRow("in a folder below") << inFonts("Roboto/a.ttf") << true;
    QTest::newRow("far below") << inFonts("1/2/3/4/5/6/7/8/9/a.ttf") << true;
    QTest::newRow("in capitals") << inFonts("A.TTF") << true;
    QTest::newRow("beyond ASCII") << inFonts("Schriften \xc3\xa4/\xe5\xad\x97\xe4\xbd\x93.ttf") << true;
    QTest::newRow("in a folder that is called a font") << inFonts("b.ttf/a.ttf") << true;
    QTest::newRow("another extension") << inFonts("a.otf") << false;
    QTest::newRow("no extension") << inFonts("ttf") << false;
    QTest::newRow("an extension behind it") << inFonts("a.ttf.bak") << false;
    QTest::newRow("beside the folder") << fontsPath() + QStringLiteral("2/a.ttf") << false;
}

void TestApplicationFonts::loaded()
{
    QFETCH(QString, path);
    QFETCH(bool, expected);
    QVERIFY(write(path, fontNamed("TestFontAAA")));
    loadApplicationFonts();
    QCOMPARE(has("TestFontAAA"), expected);
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
