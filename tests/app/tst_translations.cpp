// The language of an application: settings, table and Qt's own texts beside the program. Each case makes
// those folders anew.

#include "app/Translations.h"
#include "texttable/TableWorkbook.h"
#include "texttable/TextTable.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>
#include <QTranslator>

#include <unistd.h>

namespace {

const QByteArray tableText = "Context\tSource\tEnglish\tGerman\tSpanish\tKlingon\n"
                             "\tLocalization\ten\tde\tes\t\n"
                             "HelperApplication\tA text\tA text in English\tEin Text\tUn texto\tghItlh\n";

QString beside(const char* path)
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(path));
}

bool write(const char* path, const QByteArray& bytes)
{
    QFile file(beside(path));
    return QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly) &&
           file.write(bytes) == bytes.size();
}

bool writeTable(const QByteArray& text)
{
    TextTable table;
    return QDir().mkpath(beside("../configuration")) && table.read(text).isEmpty() &&
           writeWorkbook(table, beside("../configuration/Language.xlsx")).isEmpty();
}

QString ourText()
{
    return QCoreApplication::translate("HelperApplication", "A text");
}

QString qtText()
{
    return QCoreApplication::translate("QPlatformTheme", "Cancel");
}

} // namespace

class TestTranslations final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void language_data();
    void language();
    void settings_data();
    void settings();
    void withoutTable();
    void tableThatIsNone();
    void withoutQtTexts_data();
    void withoutQtTexts();
    void ourTableServesQtTexts();
};

void TestTranslations::init()
{
    QVERIFY(QDir(beside("../configuration")).removeRecursively());
    QFile::remove(beside("translations"));
    QVERIFY(QFile::link(QStringLiteral(QT_TRANSLATIONS), beside("translations")));
    QVERIFY(writeTable(tableText));
    QCOMPARE(ourText(), QStringLiteral("A text"));
    QCOMPARE(qtText(), QStringLiteral("Cancel"));
}

void TestTranslations::cleanup()
{
    const auto translators = QCoreApplication::instance()->findChildren<QTranslator*>();
    QCOMPARE(translators.size(), 2); // whatever was found, and owned by the application
    qDeleteAll(translators);
}

void TestTranslations::language_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("ours");
    QTest::addColumn<QString>("qt");
    const auto test = [](const char* name, const QByteArray& settings, const char* ours, const char* qt) {
        QTest::newRow(name) << settings << QString::fromUtf8(ours) << QString::fromUtf8(qt);
    };
    const char* const english = "A text in English";
    test("English", "[APP]\nLanguage=English\n", english, "Cancel");
    test("German", "[APP]\nLanguage=German\n", "Ein Text", "Abbrechen");
    test("Spanish", "[APP]\nTheme=Dark\nLanguage=Spanish\n", "Un texto", "Cancelar");
    test("quoted", "[APP]\nLanguage=\"German\"\n", "Ein Text", "Abbrechen");
    test("with carriage returns", "[APP]\r\nLanguage=German\r\n", "Ein Text", "Abbrechen");
    test("the last of two", "[APP]\nLanguage=Spanish\nLanguage=German\n", "Ein Text", "Abbrechen");
    test("no key", "[APP]\nTheme=Dark\n", english, "Cancel");
    test("no group", "Language=German\n", english, "Cancel");
    test("another group", "[Other]\nLanguage=German\n", english, "Cancel");
    test("an empty file", "", english, "Cancel");
    test("no language of the table", "[APP]\nLanguage=Elvish\n", "A text", "Cancel");
    test("no value", "[APP]\nLanguage=\n", "A text", "Cancel");
    // Its texts are there, its locale is not: Qt's file would be called "qt_Localization".
    test("a language without locale", "[APP]\nLanguage=Klingon\n", "ghItlh", "Cancel");
}

void TestTranslations::language()
{
    QFETCH(QByteArray, settings);
    QFETCH(QString, ours);
    QFETCH(QString, qt);
    QVERIFY(write("../configuration/Settings.ini", settings));
    installTranslations(*QCoreApplication::instance());
    QCOMPARE(ourText(), ours);
    QCOMPARE(qtText(), qt);
    QCOMPARE(QFile(beside("../configuration/Settings.ini")).size(), qint64(settings.size())); // only read
    QCOMPARE(QDir(beside("../configuration")).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

void TestTranslations::settings_data()
{
    QTest::addColumn<QByteArray>("target"); // of a link in the place of the settings; empty: none
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("a link to nothing") << QByteArray("/nonexistent");
    QTest::newRow("a link to itself") << QByteArray("Settings.ini");
    QTest::newRow("a folder") << QByteArray("/usr");
    QTest::newRow("what cannot be read") << QByteArray("/proc/self/mem");
    QTest::newRow("what holds other things") << QFile::encodeName(QCoreApplication::applicationFilePath());
}

void TestTranslations::settings()
{
    QFETCH(QByteArray, target);
    if (!target.isEmpty())
        QCOMPARE(symlink(target.constData(),
                         QFile::encodeName(beside("../configuration/Settings.ini")).constData()),
                 0);
    installTranslations(*QCoreApplication::instance());
    QCOMPARE(ourText(), QStringLiteral("A text in English"));
    QCOMPARE(qtText(), QStringLiteral("Cancel"));
}

void TestTranslations::withoutTable()
{
    QVERIFY(write("../configuration/Settings.ini", "[APP]\nLanguage=German\n"));
    QVERIFY(QFile::remove(beside("../configuration/Language.xlsx")));
    installTranslations(*QCoreApplication::instance());
    QCOMPARE(ourText(), QStringLiteral("A text"));
    QCOMPARE(qtText(), QStringLiteral("Cancel"));
}

void TestTranslations::tableThatIsNone()
{
    QVERIFY(write("../configuration/Settings.ini", "[APP]\nLanguage=German\n"));
    QVERIFY(write("../configuration/Language.xlsx", "garbage"));
    QTest::ignoreMessage(
        QtWarningMsg,
        qPrintable(QStringLiteral("The translation table \"%1\" is not used: it is no ZIP archive")
                       .arg(beside("../configuration/Language.xlsx"))));
    installTranslations(*QCoreApplication::instance());
    QCOMPARE(ourText(), QStringLiteral("A text"));
    QCOMPARE(qtText(), QStringLiteral("Cancel"));
}

void TestTranslations::withoutQtTexts_data()
{
    QTest::addColumn<QByteArray>("target"); // of the link to Qt's texts; empty: none
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("a link to nothing") << QByteArray("/nonexistent");
    QTest::newRow("a file") << QFile::encodeName(QCoreApplication::applicationFilePath());
    QTest::newRow("an empty folder") << QByteArray("/proc/self/fdinfo");
}

void TestTranslations::withoutQtTexts()
{
    QFETCH(QByteArray, target);
    QVERIFY(write("../configuration/Settings.ini", "[APP]\nLanguage=German\n"));
    QVERIFY(QFile::remove(beside("translations")));
    if (!target.isEmpty())
        QVERIFY(QFile::link(QFile::decodeName(target), beside("translations")));
    installTranslations(*QCoreApplication::instance());
    QCOMPARE(ourText(), QStringLiteral("Ein Text"));
    QCOMPARE(qtText(), QStringLiteral("Cancel"));
}

// Qt's own file is asked first; what it lacks the table may have, without knowing Qt's contexts.
void TestTranslations::ourTableServesQtTexts()
{
    QVERIFY(write("../configuration/Settings.ini", "[APP]\nLanguage=German\n"));
    QVERIFY(writeTable(tableText + "\tCancel\t\tAbbruch\t\t\n"));
    installTranslations(*QCoreApplication::instance());
    QCOMPARE(qtText(), QStringLiteral("Abbrechen"));
    QCOMPARE(QCoreApplication::translate("OurPanel", "Cancel"), QStringLiteral("Abbruch"));
}

QTEST_GUILESS_MAIN(TestTranslations)

#include "tst_translations.moc"
