// The table of texts: what is refused and in which line, and the workbook that comes of what is taken.

#include "texttable/TableWorkbook.h"
#include "texttable/TextTable.h"
#include "utils/TranslationTable.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QByteArray headings = "Context\tSource\tEnglish\tGerman\n";
const QByteArray longestName = "a language of 31 characters, it";

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestTextTable final : public QObject
{
    Q_OBJECT

private slots:
    void taken_data();
    void taken();
    void refused_data();
    void refused();
    void readBack();
    void sameBytesEverywhere();
    void nothingOfTodayIsWritten();
    void toolRefuses_data();
    void toolRefuses();
    void toolReplaces();

private:
    struct Run
    {
        int code = -1;
        QString errors;
    };
    [[nodiscard]] Run runTool(const QStringList& arguments, const QStringList& environment = {}) const;
    [[nodiscard]] QString write(const QByteArray& text) const;

    QTemporaryDir m_folder;
};

TestTextTable::Run TestTextTable::runTool(const QStringList& arguments, const QStringList& environment) const
{
    QProcess tool;
    tool.setEnvironment(QProcess::systemEnvironment() + environment);
    tool.start(QStringLiteral(TOOL), arguments);
    tool.waitForFinished();
    return {tool.exitStatus() == QProcess::NormalExit ? tool.exitCode() : -1,
            QString::fromUtf8(tool.readAllStandardError())};
}

QString TestTextTable::write(const QByteArray& text) const
{
    QFile file(m_folder.filePath(QStringLiteral("table.tsv")));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? file.fileName() : QString();
}

void TestTextTable::taken_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QVector<QStringList>>("rows");
    const auto test = [](const char* name, const QByteArray& text, const QVector<QStringList>& rows) {
        QTest::newRow(name) << text << rows;
    };
    const auto row = [](const char* a, const char* b, const char* c, const char* d) {
        return QStringList{QString::fromUtf8(a), QString::fromUtf8(b), QString::fromUtf8(c),
                           QString::fromUtf8(d)};
    };
    test("headings alone", headings, {});
    test("no line feed at the end", headings.chopped(1), {});
    test("a row", headings + "P\ts\te\tg\n", {row("P", "s", "e", "g")});
    test("a row without line feed", headings + "P\ts\te\tg", {row("P", "s", "e", "g")});
    test("empty cells", headings + "\ts\t\t\n", {row("", "s", "", "")});
    test("escapes", headings + "P\ta\\nb\\tc\\\\d\\\\n\t\\\\\t\n", {row("P", "a\nb\tc\\d\\n", "\\", "")});
    test("blanks and quotes stay", headings + "P\t \"s\" \t 'e'\t,\n", {row("P", " \"s\" ", " 'e'", ",")});
    test("beyond ASCII", headings + "P\ts\t\xc2\xb5\t\xe4\xb8\xad\xf0\x9f\x9b\xb0\n",
         {row("P", "s", "\xc2\xb5", "\xe4\xb8\xad\xf0\x9f\x9b\xb0")});
    test("one source in two contexts", headings + "P\ts\t1\t\nQ\ts\t2\t\n\ts\t3\t\n",
         {row("P", "s", "1", ""), row("Q", "s", "2", ""), row("", "s", "3", "")});
    test("other letters are another source", headings + "P\ts\t1\t\nP\tS\t2\t\n",
         {row("P", "s", "1", ""), row("P", "S", "2", "")});
    test("the longest text", headings + "P\t" + QByteArray(32767, 's') + "\t\t\n",
         {{QStringLiteral("P"), QString(32767, QLatin1Char('s')), {}, {}}});
}

void TestTextTable::taken()
{
    QFETCH(QByteArray, text);
    QFETCH(QVector<QStringList>, rows);
    TextTable table;
    QCOMPARE(table.read(text), QString());
    QCOMPARE(table.headings.join(QLatin1Char('|')), QStringLiteral("Context|Source|English|German"));
    QCOMPARE(table.rows, rows);
}

void TestTextTable::refused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("problem");
    const auto test = [](const char* name, const QByteArray& text, const char* problem) {
        QTest::newRow(name) << text << QString::fromUtf8(problem);
    };
    const auto row = [&](const char* name, const QByteArray& line, const char* problem) {
        test(name, headings + "P\tok\t\t\n" + line + "P\tlater\t\t\n", problem);
    };
    const char* const wrongHeadings =
        "line 1: the headings are not \"Context\", \"Source\" and the languages";
    test("nothing", {}, "line 1: the headings are missing");
    test("an empty first line", "\n" + headings, wrongHeadings);
    test("no headings", "P\ts\te\tg\n", wrongHeadings);
    test("no languages", "Context\tSource\n", wrongHeadings);
    test("headings in other letters", "context\tsource\tGerman\n", wrongHeadings);
    test("headings the other way round", "Source\tContext\tGerman\n", wrongHeadings);
    test("a language without a name", "Context\tSource\t\tGerman\n",
         "line 1: heading 3 is empty or has blanks around it");
    test("a language with a blank", "Context\tSource\tGerman \n",
         "line 1: heading 3 is empty or has blanks around it");
    test("a language twice", "Context\tSource\tGerman\tGerman\n",
         "line 1: the heading \"German\" stands there twice");
    test("a language twice, in other letters", "Context\tSource\tGerman\tGERMAN\n",
         "line 1: the heading \"GERMAN\" stands there twice");
    for (const char* name : {"a language of just 32 characters", "German/Swiss", "German [Swiss]", "What?",
                             "*", "a:b", "a\\\\b", "'German", "German'"})
        test(name, QByteArray("Context\tSource\t") + name + "\n",
             qPrintable(
                 QStringLiteral("line 1: the heading \"%1\" cannot be the name of a sheet")
                     .arg(QString::fromUtf8(name).replace(QLatin1String("\\\\"), QLatin1String("\\")))));
    test("a byte order mark", "\xef\xbb\xbf" + headings, "line 1: it has the character U+feff in it");
    row("too few cells", "P\ts\te\n", "line 3: it has 3 cells, the headings are 4");
    row("too many cells", "P\ts\te\tg\t\n", "line 3: it has 5 cells, the headings are 4");
    row("an empty line", "\n", "line 3: it has 1 cells, the headings are 4");
    row("no source", "P\t\te\tg\n", "line 3: the source text is empty");
    row("the same twice", "P\tok\te\tg\n", "line 3: the same context and source stand in line 2");
    row("the same twice, spelt otherwise", "P\tA\\\\\t\t\nP\tA\\\\\t\t\n",
        "line 4: the same context and source stand in line 3");
    row("an unknown escape", "P\ts\t\\x\t\n", "line 3: a \\ stands before something else than n, t or \\");
    row("an escape in capitals", "P\ts\t\\N\t\n",
        "line 3: a \\ stands before something else than n, t or \\");
    row("a \\ at the end of a cell", "P\ts\t\\\tg\n",
        "line 3: a \\ stands before something else than n, t or \\");
    row("a \\ at the end of a line", "P\ts\te\t\\\n",
        "line 3: a \\ stands before something else than n, t or \\");
    row("a carriage return", "P\ts\te\tg\r\n", "line 3: it has the character U+000d in it");
    row("a control character", "P\ts\t\x01\tg\n", "line 3: it has the character U+0001 in it");
    row("a zero byte", QByteArray("P\ts\t\0\tg\n", 8), "line 3: it has the character U+0000 in it");
    row("Latin-1", "P\ts\t\xe4\tg\n", "line 3: it is not UTF-8");
    row("half a character", "P\ts\te\t\xc3\n", "line 3: it is not UTF-8");
    row("a surrogate", "P\ts\t\xed\xa0\x80\t\n", "line 3: it is not UTF-8");
    row("an overlong character", "P\ts\t\xc0\xaf\t\n", "line 3: it is not UTF-8");
    row("a text too long", "P\ts\t" + QByteArray(32768, 's') + "\t\n",
        "line 3: a text has more than 32767 characters");
}

void TestTextTable::refused()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, problem);
    TextTable table;
    QCOMPARE(table.read(text), problem);
}

void TestTextTable::readBack()
{
    const QByteArray text =
        "Context\tSource\t" + longestName + "\tGerman\n" +
        "P\ta\\nb\\tc\\\\\t_x0041_\t __x005F_ \nP\t=1+1\t1\tTRUE\n\t<&>\"'\t\xc2\xb5\t\xf0\x9f\x9b\xb0\n" +
        "P\tlong\t\t" + QByteArray(32767, 'x') + "\n";
    TextTable table;
    QCOMPARE(table.read(text), QString());
    const QString path = m_folder.filePath(QStringLiteral("back.xlsx"));
    QCOMPARE(writeWorkbook(table, path), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    for (int column = 2; column < table.headings.size(); ++column) {
        Utils::TranslationTable texts;
        QString problem;
        QCOMPARE(texts.read(file, table.headings[column], problem), Utils::TranslationTable::Outcome::Read);
        QCOMPARE(texts.count(), table.rows.size());
        for (const QStringList& row : qAsConst(table.rows))
            QCOMPARE(texts.find(row[0].toUtf8().constData(), row[1].toUtf8().constData()), row[column]);
    }
}

void TestTextTable::sameBytesEverywhere()
{
    const QString table = write(headings + "P\ts\te\t\xc3\xa4\n");
    QByteArray first;
    const QStringList surroundings[] = {
        {},
        {QStringLiteral("TZ=Pacific/Kiritimati")},
        {QStringLiteral("TZ=America/Los_Angeles"), QStringLiteral("LC_ALL=C")},
        {QStringLiteral("LC_ALL=de_DE.UTF-8"), QStringLiteral("LANG=de_DE.UTF-8")},
        {QStringLiteral("LC_ALL=ja_JP.UTF-8"), QStringLiteral("SOURCE_DATE_EPOCH=1")}};
    for (int i = 0; i < int(std::size(surroundings)); ++i) {
        const QString path = m_folder.filePath(QStringLiteral("same%1.xlsx").arg(i));
        const Run run = runTool({table, path}, surroundings[i]);
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.code, 0);
        const QByteArray bytes = contentOf(path);
        QVERIFY(!bytes.isEmpty());
        if (i == 0)
            first = bytes;
        QVERIFY2(bytes == first, qPrintable(surroundings[i].join(QLatin1Char(' '))));
    }
}

// Which the same second of two runs would hide.
void TestTextTable::nothingOfTodayIsWritten()
{
    const QString path = m_folder.filePath(QStringLiteral("dates.xlsx"));
    QCOMPARE(runTool({write(headings), path}).code, 0);
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-c"),
                  QStringLiteral("import re, sys, zipfile\n"
                                 "archive = zipfile.ZipFile(sys.argv[1])\n"
                                 "print(sorted({entry.date_time for entry in archive.infolist()}),\n"
                                 "      sorted(set(re.findall(rb'20\\d\\d-\\d\\d-\\d\\dT[\\d:]*', "
                                 "archive.read('docProps/core.xml')))))"),
                  path});
    QVERIFY(python.waitForFinished());
    QCOMPARE(python.readAllStandardOutput(),
             QByteArray("[(1980, 1, 1, 0, 0, 0)] [b'2020-01-01T00:00:00']\n"));
}

void TestTextTable::toolRefuses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("error");
    QTest::newRow("a malformed table")
        << headings + "P\ts\n"
        << m_folder.filePath(QStringLiteral("bad.xlsx"))
        << QStringLiteral("table.tsv, line 2: it has 2 cells, the headings are 4\n");
    QTest::newRow("a folder that is missing")
        << headings << m_folder.filePath(QStringLiteral("none/bad.xlsx"))
        << QStringLiteral("none/bad.xlsx: ");
    QTest::newRow("a folder in its place")
        << headings << m_folder.path() << QStringLiteral("it cannot be replaced\n");
}

void TestTextTable::toolRefuses()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, target);
    QFETCH(QString, error);
    const QString table = write(text);
    const QStringList before = QDir(m_folder.path()).entryList();
    const Run run = runTool({table, target});
    QCOMPARE(run.code, 1);
    QVERIFY2(run.errors.contains(error), qPrintable(run.errors));
    QVERIFY(
        run.errors.contains(QLatin1String("make_translation_table: "))); // the library has a say of its own
    QCOMPARE(QDir(m_folder.path()).entryList(), before);
    QVERIFY(!QFile::exists(target + QStringLiteral(".part")));
    QCOMPARE(runTool({table}).code, 1);
    QCOMPARE(runTool({m_folder.filePath(QStringLiteral("none.tsv")), target}).code, 1);
}

void TestTextTable::toolReplaces()
{
    const QString path = m_folder.filePath(QStringLiteral("replaced.xlsx"));
    QCOMPARE(runTool({write(headings + "P\ts\t1\t1\n"), path}).code, 0);
    const QByteArray before = contentOf(path);
    QCOMPARE(runTool({write(headings + "P\ts\t2\t2\n"), path}).code, 0);
    QVERIFY(contentOf(path) != before);
    QCOMPARE(runTool({write(headings + "P\ts\t1\t1\n"), path}).code, 0);
    QCOMPARE(contentOf(path), before);
}

QTEST_GUILESS_MAIN(TestTextTable)

#include "tst_text_table.moc"
