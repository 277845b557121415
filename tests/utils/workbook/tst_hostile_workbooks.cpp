// Workbooks that are broken, foreign or mean harm: they are refused with a reason, in bounded time and
// memory, and nothing of them is kept.

#include "utils/TranslationTable.h"
#include "utils/workbook/WorkbookBytes.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <malloc.h>
#include <random>

using namespace WorkbookBytes;
using Utils::TranslationTable;
using Outcome = TranslationTable::Outcome;

namespace {

constexpr int mebi = 1024 * 1024;
constexpr qint64 longestTime = 5000;  // ms, for one workbook, on a machine that has other things to do
constexpr int mostMemory = 64 * 1024; // KiB more than before, the workbook itself not counted

#if defined(__SANITIZE_ADDRESS__)
constexpr bool memoryTells = false; // the sanitizer's own is many times ours
#else
constexpr bool memoryTells = true;
#endif

// A line of /proc/self/status, in KiB.
int statusLine(const QByteArray& name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines)
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).replace("kB", "").trimmed().toInt();
    return 0;
}

// From now on the peak counts from what is in use; what was given back is no longer at hand.
void forgetPeak()
{
    malloc_trim(0);
    QFile references(QStringLiteral("/proc/self/clear_refs"));
    if (references.open(QIODevice::WriteOnly))
        references.write("5");
}

QByteArray headings()
{
    return "<row>" + cell({}, "Context") + cell({}, "Source") + cell({}, "German") + "</row>";
}

QByteArray textRow(const QByteArray& context, const QByteArray& source, const QByteArray& german)
{
    return "<row>" + cell({}, context) + cell({}, source) + cell({}, german) + "</row>";
}

// A table that is as it should be, with every sort of part.
Documents goodTable()
{
    Documents documents;
    documents.sheet = sheetXml(headings() + "<row r=\"2\">" + cell("A2", "Panel") + sharedCell("B2", 0) +
                               sharedCell("C2", 1) + "</row>" + textRow({}, "Localization", "de"));
    documents.sharedStrings = stringsXml("<si><t>Start</t></si><si><r><t>An</t></r><r><t>fang</t></r></si>");
    return documents;
}

} // namespace

class TestHostileWorkbooks final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void refused_data();
    void refused();
    void bombs_data();
    void bombs();
    void largeButAllowed();
    void truncated_data();
    void truncated();
    void mutatedBytes_data();
    void mutatedBytes();
    void mutatedDocuments_data();
    void mutatedDocuments();

private:
    // Reads it and holds the reader to its bounds; the test has failed if it breaks them.
    void readBounded(const QByteArray& bytes);

    TranslationTable m_table;
    Outcome m_outcome = Outcome::Read;
    QString m_problem;
    int m_grown = 0; // KiB, at the peak
};

void TestHostileWorkbooks::init()
{
    // Something of before, that must not survive.
    QBuffer buffer;
    buffer.setData(workbook(goodTable()));
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    QCOMPARE(m_table.read(buffer, QStringLiteral("German"), m_problem), Outcome::Read);
    QCOMPARE(m_table.find("Panel", "Start"), QStringLiteral("Anfang"));
    QCOMPARE(m_table.find("Any", "Localization"), QStringLiteral("de"));
}

void TestHostileWorkbooks::readBounded(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    forgetPeak();
    const int before = statusLine("VmRSS");
    QElapsedTimer clock;
    clock.start();
    m_outcome = m_table.read(buffer, QStringLiteral("German"), m_problem);
    QVERIFY2(clock.elapsed() < longestTime, qPrintable(QString::number(clock.elapsed())));
    m_grown = statusLine("VmHWM") - before;
    QVERIFY2(!memoryTells || m_grown < mostMemory, qPrintable(QString::number(m_grown)));
    QCOMPARE(m_problem.isEmpty(), m_outcome != Outcome::Refused);
    if (m_outcome == Outcome::Refused) {
        QCOMPARE(m_table.count(), 0);
        QVERIFY2(!m_problem.contains(QLatin1Char('\n')), qPrintable(m_problem));
    }
}

void TestHostileWorkbooks::refused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("problem");
    const auto test = [](const char* name, const QByteArray& bytes, const char* problem) {
        QTest::newRow(name) << bytes << QString::fromUtf8(problem);
    };
    const auto documents = [&](const char* name, const char* problem,
                               const std::function<void(Documents&)>& change) {
        Documents changed = goodTable();
        change(changed);
        test(name, workbook(changed), problem);
    };
    const auto rows = [&](const char* name, const QByteArray& inner, const char* problem) {
        test(name, workbook(headings() + inner), problem);
    };
    const auto entry = [&](const char* name, const char* problem, const std::function<void(Entry&)>& change) {
        QVector<Entry> entries = goodTable().entries();
        change(entries[4]); // the sheet
        test(name, archive(entries), problem);
    };

    test("nothing", {}, "no ZIP archive");
    test("a byte", "P", "no ZIP archive");
    test("zeros", QByteArray(100000, '\0'), "no ZIP archive");
    test("a text", QByteArray("Context\tSource\tGerman\n").repeated(1000), "no ZIP archive");
    test("the end of an archive alone", archive({}), "no ZIP archive");
    test("another archive", archive({{"readme.txt", "hello"}}), "there is no \"_rels/.rels\"");
    test("more files than it has", archive(goodTable().entries(), {}, {}, 65535), "more than 4096 files");
    test("thousands of files", archive(QVector<Entry>(5000, {"a", {}, false})), "more than 4096 files");

    documents("a text document", "\"word/document.xml\"", [](Documents& changed) {
        changed.packageRelationships = relationshipsXml({"rId1 officeDocument word/document.xml"});
    });
    documents("no document", "there is no document", [](Documents& changed) {
        changed.packageRelationships = relationshipsXml({"rId1 thumbnail docProps/thumbnail.jpeg"});
    });
    documents("no sheet", "there is no sheet", [](Documents& changed) {
        changed.workbookRelationships = relationshipsXml({"rId1 chartsheet chartsheets/sheet1.xml"});
    });
    documents("a sheet outside the archive", "there is no sheet", [](Documents& changed) {
        changed.workbookRelationships.replace("<Relationship Id=\"rId1\"",
                                              "<Relationship TargetMode=\"External\" Id=\"rId1\"");
    });
    documents("a sheet that is missing", "there is no \"xl/worksheets/sheet2.xml\"",
              [](Documents& changed) { changed.workbookRelationships.replace("sheet1", "sheet2"); });
    documents("a target above everything", "there is no \"", [](Documents& changed) {
        changed.workbookRelationships.replace("worksheets/sheet1.xml", "../../../../../../etc/passwd");
    });
    documents("texts that are missing", "there is no \"xl/sharedStrings.xml\"",
              [](Documents& changed) { changed.sharedStrings.clear(); });
    documents("a workbook that is its own sheet", "its sheet is empty", [](Documents& changed) {
        changed.workbookRelationships.replace("worksheets/sheet1.xml", "workbook.xml");
    });
    documents("thousands of relationships", "more than 4096 relationships", [](Documents& changed) {
        changed.workbookRelationships = relationshipsXml(QVector<QByteArray>(5000, "rId1 worksheet a"));
    });
    documents("an empty document", "no element found", [](Documents& changed) { changed.workbook = ""; });
    documents("a document that is none", "not well-formed",
              [](Documents& changed) { changed.sheet = "PK\3\4"; });
    documents("an unknown encoding", "unknown encoding",
              [](Documents& changed) { changed.sheet.replace("UTF-8", "EBCDIC-37"); });

    test("no headings", workbook(textRow("a", "b", "c")), "no headings");
    test("an empty sheet", workbook(QByteArray()), "its sheet is empty");
    rows("a text that is not there", "<row>" + sharedCell("A2", 0) + "</row>",
         "refers to a text that is not there");
    for (const char* index :
         {"-1", "2", "4294967295", "99999999999999999999", "abc", "0x0", "1.0", " ", "0 0"})
        documents(index, "refers to a text that is not there", [index](Documents& changed) {
            changed.sheet.replace("<v>0</v>", QByteArray("<v>") + index + "</v>");
        });
    for (const char* reference : {"XFE1", "ZZZZZZZZZZZZZZZZZZZZ1", "A1048577", "A99999999999999999999", "A0",
                                  "A", "1", "", "A1B", "a1", "A-1", "A1 ",
                                  "\xc3\x84"
                                  "1"})
        rows(reference, "<row><c r=\"" + QByteArray(reference) + "\"/></row>", "a cell where none can be");
    for (const char* number : {"0", "-1", "1048577", "18446744073709551617", "one", ""})
        rows(QByteArray("row " + QByteArray(number)).constData(), "<row r=\"" + QByteArray(number) + "\"/>",
             "a row where none can be");
    rows("cells beyond the last column", "<row>" + QByteArray("<c/>").repeated(16385) + "</row>",
         "a cell where none can be");
    rows("a text too long", textRow("a", "b", QByteArray(4 * 32767 + 1, 'x')), "too long");
    test("a shared text too long",
         workbook(headings(), "<si>" + QByteArray("<r><t>xxxxxxxx</t></r>").repeated(20000) + "</si>"),
         "too long");

    entry("a wrong checksum", "cannot be unpacked", [](Entry& sheet) { sheet.saidChecksum = 7; });
    entry("a wrong checksum, stored", "cannot be unpacked", [](Entry& sheet) {
        sheet.deflated = false;
        sheet.saidChecksum = 7;
    });
    entry("a size too small", "cannot be unpacked",
          [](Entry& sheet) { sheet.saidSize = sheet.content.size() / 2; });
    entry("a size too large", "cannot be unpacked",
          [](Entry& sheet) { sheet.saidSize = sheet.content.size() + 1; });
    entry("a size of 4 GiB", "larger than 32 MiB", [](Entry& sheet) { sheet.saidSize = 0xFFFFFFFE; });
    entry("an unknown method", "cannot be unpacked", [](Entry& sheet) { sheet.saidMethod = 99; });
    entry("a method that workbooks do not use", "cannot be unpacked",
          [](Entry& sheet) { sheet.saidMethod = 12; });
    entry("deflated but called stored", "", [](Entry& sheet) { sheet.saidMethod = 0; });
    entry("encrypted", "", [](Entry& sheet) {
        sheet.flags = 1;
        sheet.packed = QByteArray(200, '\x5a');
    });
}

void TestHostileWorkbooks::refused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, problem);
    readBounded(bytes);
    QCOMPARE(m_outcome, Outcome::Refused);
    QVERIFY2(m_problem.contains(problem), qPrintable(m_problem));
}

void TestHostileWorkbooks::bombs_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("problem");
    const auto sheet = [](const char* name, const QByteArray& xml, const char* problem) {
        Documents documents = goodTable();
        documents.sheet = xml;
        QTest::newRow(name) << workbook(documents) << QString::fromUtf8(problem);
    };
    // 256 MiB of blanks, which say of themselves what each row says, in each of the two large documents.
    const QByteArray packed = deflatedManyTimes(QByteArray(mebi, ' '), 256);
    for (int part : {1, 2, 4, 5}) {
        for (qint64 said : {qint64(256) * mebi, qint64(32) * mebi, qint64(1000)}) {
            QVector<Entry> entries = goodTable().entries();
            entries[part].packed = packed;
            entries[part].saidSize = said;
            QTest::addRow("blanks in %s, called %lld", entries[part].name.constData(), said)
                << archive(entries) << (said > 32 * mebi ? QStringLiteral("larger than 32 MiB") : QString());
        }
    }
    QByteArray laughs = "<?xml version=\"1.0\"?><!DOCTYPE worksheet [<!ENTITY a \"ha\">";
    for (char name = 'b'; name < 'm'; ++name)
        laughs += "<!ENTITY " + QByteArray(1, name) + " \"" +
                  QByteArray("&" + QByteArray(1, char(name - 1)) + ";").repeated(10) + "\">";
    sheet("a billion laughs", laughs + "]><worksheet>&l;</worksheet>", "document type");
    sheet("a file of the system", "<!DOCTYPE a [<!ENTITY b SYSTEM \"file:///etc/passwd\">]><a>&b;</a>",
          "document type");
    sheet("a document type that is elsewhere", "<!DOCTYPE a SYSTEM \"http://example.invalid/a.dtd\"><a/>",
          "document type");
    sheet("elements in elements", QByteArray("<a>").repeated(mebi), "more than 32 deep");
    sheet("millions of elements", sheetXml(QByteArray("<row/>").repeated(5 * mebi)),
          "more than 2000000 elements");
    sheet("millions of cells",
          sheetXml(headings() + "<row>" + QByteArray("<c r=\"A2\"/>").repeated(2 * mebi) + "</row>"),
          "more than 2000000 elements");
    QByteArray attributes = "<worksheet";
    attributes.reserve(16 * mebi); // a builder's += makes room for no more than it adds
    for (int i = 0; i < mebi; ++i)
        attributes += " a" + QByteArray::number(i) + "=\"\"";
    sheet("a million attributes", attributes + "/>", "a tag of more than 64 KiB");
    sheet("a long name", "<" + QByteArray(31 * mebi, 'a') + "/>", "a tag of more than 64 KiB");
    sheet("a long comment", "<a><!--" + QByteArray(31 * mebi, 'a') + "--></a>", "a tag of more than 64 KiB");
    sheet("a tag that never ends", "<a " + QByteArray(31 * mebi, ' '), "a tag of more than 64 KiB");

    // What one long text costs when many cells refer to it.
    const QByteArray longText = "<si><t>" + QByteArray(32767, 'x') + "</t></si>";
    QByteArray wide = "<row>";
    for (int column = 0; column < 16384; ++column)
        wide += "<c t=\"s\"><v>0</v></c>";
    QTest::newRow("a long text in every column")
        << workbook(wide + "</row>", longText) << QStringLiteral("no headings");
    QByteArray high = headings();
    high.reserve(16 * mebi);
    for (int line = 0; line < 100000; ++line)
        high += "<row>" + cell("A1", QByteArray::number(line)) +
                "<c r=\"B1\" t=\"s\"><v>0</v></c><c r=\"C1\" t=\"s\"><v>0</v></c></row>";
    QTest::newRow("a long text in every row")
        << workbook(high, longText) << QStringLiteral("more than 16 MiB");
    QTest::newRow("millions of texts") << workbook(headings(), QByteArray("<si/>").repeated(5 * mebi))
                                       << QStringLiteral("more than 2000000 elements");
}

void TestHostileWorkbooks::bombs()
{
    refused();
}

// Beyond what anybody needs, and yet no reason to refuse it.
void TestHostileWorkbooks::largeButAllowed()
{
    QByteArray rows = headings();
    rows.reserve(32 * mebi);
    for (int line = 0; line < 100000; ++line)
        rows += textRow("Panel", QByteArray::number(line), "Text " + QByteArray::number(line));
    rows += textRow("Panel", "long", QByteArray(32767, 'x'));
    rows += "<row r=\"1048576\">" + cell("XFD1048576", "far away") + "</row>";
    readBounded(workbook(rows));
    QCOMPARE(m_problem, QString());
    QCOMPARE(m_table.count(), 100001);
    QCOMPARE(m_table.find("Panel", "99999"), QStringLiteral("Text 99999"));
    QCOMPARE(m_table.find("Panel", "long").size(), 32767);
    QVERIFY2(!memoryTells || m_grown > 8 * 1024, "the meter must see what is kept");
}

void TestHostileWorkbooks::truncated_data()
{
    QTest::addColumn<bool>("deflated");
    QTest::newRow("deflated") << true;
    QTest::newRow("stored") << false;
}

void TestHostileWorkbooks::truncated()
{
    QFETCH(bool, deflated);
    QVector<Entry> entries = goodTable().entries();
    for (Entry& entry : entries)
        entry.deflated = deflated;
    const QByteArray whole = archive(entries);
    for (int part = 0; part < 100; ++part) {
        readBounded(whole.left(int(qint64(whole.size()) * part / 100)));
        QCOMPARE(m_outcome, Outcome::Refused);
    }
    readBounded(whole.chopped(7)); // what follows is where the directory lies, and a comment of no length
    QCOMPARE(m_outcome, Outcome::Refused);
    readBounded(whole);
    QCOMPARE(m_outcome, Outcome::Read);
}

void TestHostileWorkbooks::mutatedBytes_data()
{
    truncated_data();
}

// No byte of an archive can be wrong without being noticed or without meaning.
void TestHostileWorkbooks::mutatedBytes()
{
    QFETCH(bool, deflated);
    constexpr int count = 400;
    QVector<Entry> entries = goodTable().entries();
    for (Entry& entry : entries)
        entry.deflated = deflated;
    const QByteArray whole = archive(entries);
    std::mt19937 random(20261121);
    int refusals = 0;
    for (int i = 0; i < count; ++i) {
        QByteArray bytes = whole;
        const int changes = 1 + int(random() % 4);
        for (int change = 0; change < changes; ++change)
            bytes[int(random() % uint(bytes.size()))] = char(random() % 2 == 0 ? random() : 0xFF);
        readBounded(bytes);
        if (QTest::currentTestFailed())
            QFAIL(bytes.toBase64().constData());
        refusals += m_outcome == Outcome::Refused ? 1 : 0;
        if (m_outcome == Outcome::Read) {
            QCOMPARE(m_table.find("Panel", "Start"), QStringLiteral("Anfang"));
            QCOMPARE(m_table.find("Any", "Localization"), QStringLiteral("de"));
        }
    }
    QVERIFY(refusals > count / 4 && refusals < count);
}

void TestHostileWorkbooks::mutatedDocuments_data()
{
    QTest::addColumn<int>("part");
    QTest::newRow("package relationships") << 1;
    QTest::newRow("workbook") << 2;
    QTest::newRow("workbook relationships") << 3;
    QTest::newRow("sheet") << 4;
    QTest::newRow("shared strings") << 5;
}

// In an archive that is whole, so that the reader of the document has to notice.
void TestHostileWorkbooks::mutatedDocuments()
{
    QFETCH(int, part);
    constexpr int count = 150;
    const QByteArray snippets[] = {"<",       ">",    "/",   "\"",   "&",    "=", QByteArray(1, '\0'),
                                   "<c r=\"", "</v>", "]]>", "<!--", "\xff", "9"};
    std::mt19937 random(uint(20261121 + part));
    int refusals = 0;
    for (int i = 0; i < count; ++i) {
        QVector<Entry> entries = goodTable().entries();
        QByteArray& xml = entries[part].content;
        const int position = int(random() % uint(xml.size()));
        if (random() % 3 == 0)
            xml.remove(position, int(random() % 20));
        else
            xml.replace(position, int(random() % 3), snippets[random() % std::size(snippets)]);
        readBounded(archive(entries));
        if (QTest::currentTestFailed())
            QFAIL(xml.constData());
        refusals += m_outcome == Outcome::Refused ? 1 : 0;
    }
    QVERIFY(refusals > count / 4);
}

QTEST_GUILESS_MAIN(TestHostileWorkbooks)

#include "tst_hostile_workbooks.moc"
