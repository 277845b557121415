// The translator against tables that real programs wrote, and against what may stand in a table's place.

#include "texttable/TableWorkbook.h"
#include "texttable/TextTable.h"
#include "utils/Translator.h"
#include "utils/workbook/WorkbookBytes.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace WorkbookBytes;
using Utils::Translator;

namespace {

const QString german = QStringLiteral("German");

QString inGerman(const Translator& translator, const char* context, const char* source)
{
    return translator.translate(context, source, nullptr, -1);
}

QByteArray rowOf(const QByteArrayList& texts)
{
    QByteArray cells;
    for (const QByteArray& text : texts)
        cells += text.isEmpty() ? QByteArray("<c/>") : cell({}, text);
    return "<row>" + cells + "</row>";
}

} // namespace

class TestTranslator final : public QObject
{
    Q_OBJECT

private slots:
    void writtenByOthers_data();
    void writtenByOthers();
    void headings_data();
    void headings();
    void rows_data();
    void rows();
    void languages();
    void loadedAgain();
    void installed();
    void notUsed_data();
    void notUsed();
    void passedOver_data();
    void passedOver();

private:
    [[nodiscard]] QString write(const QByteArray& bytes) const;
    [[nodiscard]] QString make(const QString& manner) const;

    QTemporaryDir m_folder;
};

QString TestTranslator::write(const QByteArray& bytes) const
{
    QFile file(m_folder.filePath(QStringLiteral("table.xlsx")));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
}

// The workbook that the manner names: our own tool's, one that was made once, or one made by openpyxl now.
QString TestTranslator::make(const QString& manner) const
{
    const QString fixtures = QStringLiteral(TEST_FOLDER "/fixtures/");
    const QString path = m_folder.filePath(manner + QStringLiteral(".xlsx"));
    if (manner == QLatin1String("libreoffice"))
        return fixtures + QStringLiteral("libreoffice.xlsx");
    if (manner == QLatin1String("ours")) {
        QFile text(fixtures + QStringLiteral("table.tsv"));
        TextTable table;
        const bool made = text.open(QIODevice::ReadOnly) && table.read(text.readAll()).isEmpty() &&
                          writeWorkbook(table, path).isEmpty();
        return made ? path : QString();
    }
    const int code = QProcess::execute(QStringLiteral("/usr/bin/python3"),
                                       {QStringLiteral(TEST_FOLDER "/make_workbook.py"), manner, path});
    return code == 0 ? path : QString();
}

void TestTranslator::writtenByOthers_data()
{
    QTest::addColumn<QString>("manner");
    QTest::addColumn<bool>(
        "escapesUnderscores"); // else a literal _x0041_ is read as the A that it stands for
    for (const char* manner : {"ours", "libreoffice"})
        QTest::newRow(manner) << QString::fromLatin1(manner) << true;
    for (const char* manner :
         {"plain", "write_only", "other_sheets", "columns_moved", "formatted", "hidden", "sheet_each"})
        QTest::newRow(manner) << QString::fromLatin1(manner) << false;
}

void TestTranslator::writtenByOthers()
{
    QFETCH(QString, manner);
    QFETCH(bool, escapesUnderscores);
    const QString path = make(manner);
    QVERIFY(!path.isEmpty());
    Translator translator;
    QVERIFY(translator.loadFile(path, german));
    translator.setCurrentLanguage(german);
    const auto text = [&](const char* context, const char* source) {
        return inGerman(translator, context, source);
    };
    QCOMPARE(text("Anything", "Localization"), QStringLiteral("de"));
    QCOMPARE(text("Panel", "Start"), QStringLiteral("Anfang"));
    QCOMPARE(text("Other", "Start"), QStringLiteral("Beginn"));
    QCOMPARE(text("Third", "Start"), QStringLiteral("Los"));
    QCOMPARE(text("Panel", "Two\nlines"), QStringLiteral("Zwei\nZeilen"));
    QCOMPARE(text("Panel", " blanks "), QStringLiteral(" Leerzeichen "));
    QCOMPARE(text("Panel", "a < b & \"c\""), QStringLiteral("ä < ö & „ü“"));
    QVERIFY(text("Panel", "No German").isNull());
    QVERIFY(text("Panel", "Nowhere").isNull());
    QCOMPARE(text("Panel", "Satellite"), QStringLiteral("Satellit \U0001f6f0"));
    QCOMPARE(text("Panel", "100"), QStringLiteral("hundert"));
    QCOMPARE(text("Panel", escapesUnderscores ? "_x0041_" : "A"), QStringLiteral("nicht A"));

    const QString chinese = QStringLiteral("Simplified Chinese");
    QVERIFY(translator.loadFile(path, chinese));
    translator.setCurrentLanguage(chinese);
    QCOMPARE(text("Anything", "Localization"), QStringLiteral("zh_CN"));
    QCOMPARE(text("Panel", "a < b & \"c\""), QStringLiteral("甲 < 乙"));
    QVERIFY(text("Other", "Start").isNull()); // its own row is empty: the general one does not serve it
}

void TestTranslator::headings_data()
{
    QTest::addColumn<QByteArrayList>("headings");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("expected");
    const auto test = [](const char* name, const QByteArrayList& headings, const char* language,
                         const char* expected) {
        QTest::newRow(name) << headings << QString::fromUtf8(language) << QString::fromUtf8(expected);
    };
    test("as named", {"Context", "Source", "German", "French"}, "German", "3");
    test("the other language", {"Context", "Source", "German", "French"}, "French", "4");
    test("in other letters", {"CONTEXT", "source", "german", "French"}, "GERMAN", "3");
    test("blanks around", {" Context", "Source ", " German\n", "French"}, " German ", "3");
    test("twice, the first counts", {"Context", "Source", "German", "German"}, "German", "3");
    test("not a part of a name", {"Context", "Source", "Swiss German", "German (old)"}, "German", nullptr);
    test("beyond ASCII",
         {"Context", "Source",
          "Fran\xc3\xa7"
          "ais",
          "\xe4\xb8\xad\xe6\x96\x87"},
         "FRAN\xc3\x87"
         "AIS",
         "3");
    test("the source as a language", {"Context", "Source", "German", "French"}, "Source", "Start");
    test("no name", {"Context", "Source", "", "French"}, "", nullptr);
    test("a name of blanks", {"Context", "Source", "", "French"}, "  ", nullptr);
    test("unknown", {"Context", "Source", "German", "French"}, "Klingon", nullptr);
}

void TestTranslator::headings()
{
    QFETCH(QByteArrayList, headings);
    QFETCH(QString, language);
    QFETCH(QString, expected);
    Translator translator;
    const QString path = write(workbook(rowOf(headings) + rowOf({"Panel", "Start", "3", "4"})));
    QCOMPARE(translator.loadFile(path, language), !expected.isNull());
    translator.setCurrentLanguage(language);
    QCOMPARE(inGerman(translator, "Panel", "Start"), expected);
    QCOMPARE(translator.isEmpty(), expected.isNull());
}

void TestTranslator::rows_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QString>("expected"); // of "Start" in "Panel"
    const auto test = [](const char* name, const QVector<QByteArrayList>& rows, const char* expected) {
        QByteArray xml;
        for (const QByteArrayList& row : rows)
            xml += rowOf(row);
        QTest::newRow(name) << xml << QString::fromUtf8(expected);
    };
    test("its own", {{"Panel", "Start", "1"}}, "1");
    test("for every context", {{"", "Start", "1"}}, "1");
    test("its own before the general one", {{"", "Start", "1"}, {"Panel", "Start", "2"}}, "2");
    test("its own is empty", {{"", "Start", "1"}, {"Panel", "Start", ""}}, nullptr);
    test("another context's", {{"Other", "Start", "1"}}, nullptr);
    test("the first of two", {{"Panel", "Start", "1"}, {"Panel", "Start", "2"}}, "1");
    test("the first of two, which is empty", {{"Panel", "Start", ""}, {"Panel", "Start", "2"}}, nullptr);
    test("a short row", {{"Panel", "Start"}}, nullptr);
    test("blanks around the context", {{" Panel ", "Start", "1"}}, "1");
    test("blanks around the source", {{"Panel", " Start ", "1"}}, nullptr);
    test("other letters in the context", {{"PANEL", "Start", "1"}}, nullptr);
    test("other letters in the source", {{"Panel", "START", "1"}}, nullptr);
    test("no source", {{"Panel", "", "1"}}, nullptr);
    test("context and source run together", {{"", "PanelStart", "1"}, {"PanelSta", "rt", "2"}}, nullptr);
}

void TestTranslator::rows()
{
    QFETCH(QByteArray, rows);
    QFETCH(QString, expected);
    Translator translator;
    QVERIFY(translator.loadFile(write(workbook(rowOf({"Context", "Source", "German"}) + rows)), german));
    translator.setCurrentLanguage(german);
    QCOMPARE(inGerman(translator, "Panel", "Start"), expected);
    QCOMPARE(inGerman(translator, "Panel", "Start").isNull(), expected.isNull());
}

void TestTranslator::languages()
{
    Translator translator;
    const QString path =
        write(workbook(rowOf({"Context", "Source", "German", "French"}) + rowOf({"Panel", "Start", "Anfang",
                                                                                 "D\xc3\xa9"
                                                                                 "but"})));
    QVERIFY(translator.isEmpty());
    QVERIFY(translator.loadFile(path, german));
    QVERIFY(inGerman(translator, "Panel", "Start").isNull()); // no language is current yet
    translator.setCurrentLanguage(german);
    QCOMPARE(inGerman(translator, "Panel", "Start"), QStringLiteral("Anfang"));
    translator.setCurrentLanguage(QStringLiteral("French")); // of which nothing was read
    QVERIFY(inGerman(translator, "Panel", "Start").isNull());
    QVERIFY(translator.isEmpty());
    QVERIFY(translator.loadFile(path, QStringLiteral("French")));
    QCOMPARE(inGerman(translator, "Panel", "Start"), QStringLiteral("Début"));
    translator.setCurrentLanguage(QStringLiteral("german"));
    QCOMPARE(inGerman(translator, "Panel", "Start"), QStringLiteral("Anfang"));
    QVERIFY(translator.translate(nullptr, "Start", nullptr, -1).isNull());
    QVERIFY(translator.translate("Panel", nullptr, nullptr, -1).isNull());
    QCOMPARE(translator.translate("Panel", "Start", "a remark", 3), QStringLiteral("Anfang"));
}

void TestTranslator::loadedAgain()
{
    Translator translator;
    const QByteArray heading = rowOf({"Context", "Source", "German"});
    QVERIFY(translator.loadFile(
        write(workbook(heading + rowOf({"Panel", "Start", "1"}) + rowOf({"Panel", "Stop", "1"}))), german));
    translator.setCurrentLanguage(german);
    QVERIFY(translator.loadFile(write(workbook(heading + rowOf({"Panel", "Start", "2"}))), german));
    QCOMPARE(inGerman(translator, "Panel", "Start"), QStringLiteral("2"));
    QVERIFY(inGerman(translator, "Panel", "Stop").isNull());
    QVERIFY(!translator.loadFile(m_folder.filePath(QStringLiteral("none.xlsx")), german));
    QVERIFY(inGerman(translator, "Panel", "Start").isNull());
}

void TestTranslator::installed()
{
    Translator translator;
    QVERIFY(translator.loadFile(
        write(workbook(rowOf({"Context", "Source", "German"}) + rowOf({"Panel", "%n of %1", "%n von %1"}) +
                       rowOf({"Panel", "Same", ""}))),
        german));
    translator.setCurrentLanguage(german);
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(QCoreApplication::translate("Panel", "%n of %1", nullptr, 3).arg(5), QStringLiteral("3 von 5"));
    QCOMPARE(QCoreApplication::translate("Panel", "Same"), QStringLiteral("Same"));
    QCOMPARE(QCoreApplication::translate("Panel", "Nowhere"), QStringLiteral("Nowhere"));
}

void TestTranslator::notUsed_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("problem");
    const QString text = m_folder.filePath(QStringLiteral("text.xlsx"));
    QFile file(text);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("Context\tSource\tGerman\n") > 0);
    const QString pipe = m_folder.filePath(QStringLiteral("pipe.xlsx"));
    QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
    QTest::newRow("a text") << text << QStringLiteral("it is no ZIP archive");
    QTest::newRow("a folder") << m_folder.path() << QStringLiteral("it is no file");
    QTest::newRow("a pipe") << pipe << QStringLiteral("it is no file"); // opening it would take for ever
    QTest::newRow("a device") << QStringLiteral("/dev/zero") << QStringLiteral("it is no file");
    QTest::newRow("what opens and cannot be read")
        << QStringLiteral("/proc/self/mem") << QStringLiteral("it is no ZIP archive");
}

// One sentence in the log, and texts that stay as they are.
void TestTranslator::notUsed()
{
    QFETCH(QString, path);
    QFETCH(QString, problem);
    Translator translator;
    const QString sentence =
        QStringLiteral("The translation table \"%1\" is not used: %2").arg(path, problem);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(sentence));
    QVERIFY(!translator.loadFile(path, german));
    translator.setCurrentLanguage(german);
    QVERIFY(translator.isEmpty());
    QVERIFY(inGerman(translator, "Panel", "Start").isNull());
}

void TestTranslator::passedOver_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no path") << QString();
    QTest::newRow("no file") << QStringLiteral("/nonexistent/Language.xlsx");
    QTest::newRow("a file where a folder should be") << QStringLiteral("/proc/self/status/Language.xlsx");
    const QString link = m_folder.filePath(QStringLiteral("link.xlsx"));
    QVERIFY(QFile::link(m_folder.filePath(QStringLiteral("gone.xlsx")), link));
    QTest::newRow("a link to nothing") << link;
    const QString circle = m_folder.filePath(QStringLiteral("circle.xlsx"));
    QVERIFY(QFile::link(circle, circle));
    QTest::newRow("a link to itself") << circle;
}

// A missing table is no fault: not a word of it.
void TestTranslator::passedOver()
{
    QFETCH(QString, path);
    Translator translator;
    QVERIFY(!translator.loadFile(path, german));
    translator.setCurrentLanguage(german);
    QVERIFY(translator.isEmpty());
}

QTEST_GUILESS_MAIN(TestTranslator)

#include "tst_translator.moc"
