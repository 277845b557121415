// Workbooks as different programs write them, and as the format allows: what is read of them.

#include "utils/workbook/ReadSheet.h"
#include "utils/workbook/WorkbookBytes.h"

#include <QBuffer>
#include <QTest>
#include <QTextCodec>

using namespace WorkbookBytes;

namespace {

using Rows = QVector<QStringList>;

class Collector final : public Workbook::RowTaker
{
public:
    [[nodiscard]] bool wantsColumn(int column) const override { return column != unwanted; }
    [[nodiscard]] QString takeRow(const Workbook::Row& row) override
    {
        rows.append(row.toList());
        return rows.size() == enough ? QStringLiteral("enough") : QString();
    }

    Rows rows;
    int unwanted = -1;
    int enough = -1;
};

QString read(const QByteArray& bytes, Collector& collector)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return Workbook::readSheet(buffer, QStringLiteral("Texts"), collector);
}

QByteArray row(const QByteArray& cells)
{
    return "<row>" + cells + "</row>";
}

Rows oneCell(const char* text)
{
    return {{QString::fromUtf8(text)}};
}

QByteArray inUtf16(const QByteArray& xml)
{
    const QString text = QString::fromUtf8(xml).replace(QLatin1String("UTF-8"), QLatin1String("UTF-16"));
    QTextCodec::ConverterState mark; // writes one
    return QTextCodec::codecForName("UTF-16LE")->fromUnicode(text.constData(), text.size(), &mark);
}

QByteArray inLatin1(QByteArray xml)
{
    return QString::fromUtf8(xml.replace("UTF-8", "ISO-8859-1")).toLatin1();
}

const QByteArray textRow = "<row r=\"1\">" + cell("A1", "T\xc3\xa4xt") + "</row>";
const char* const theText = "T\xc3\xa4xt";

} // namespace

class TestReadSheet final : public QObject
{
    Q_OBJECT

private slots:
    void cells_data();
    void cells();
    void sharedTexts_data();
    void sharedTexts();
    void archives_data();
    void archives();
    void packages_data();
    void packages();
    void unwantedColumns();
    void takerEndsTheReading();
};

void TestReadSheet::cells_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QVector<QStringList>>("expected");
    const auto test = [](const char* name, const QByteArray& rows, const Rows& expected) {
        QTest::newRow(name) << rows << expected;
    };
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    const QString none;
    test("no rows", {}, {});
    test("a row without cells", "<row r=\"1\"/>", {});
    test("rows of empty cells", row("<c r=\"A1\"/>") + row("<c r=\"A2\" s=\"1\"><v/></c>"), {});
    test("empty rows are not given", row({}) + row(cell("A2", "a")) + row({}) + row(cell("A4", "b")),
         {{a}, {b}});
    test("cells with gaps", row(cell("B1", "a") + cell("D1", "b")), {{none, a, none, b}});
    test("cells without reference", row(cell({}, "a") + cell({}, "b")), {{a, b}});
    test("cells without reference after one with", row(cell("C1", "a") + cell({}, "b")),
         {{none, none, a, b}});
    test("cells from right to left", row(cell("B1", "b") + cell("A1", "a")), {{a, b}});
    test("a cell twice, the last counts", row(cell("A1", "a") + cell("A1", "b")), {{b}});
    test("columns of two letters", row(cell("AB1", "a")), {QVector<QString>(27).toList() + QStringList(a)});
    test("the last column of the format", row(cell("A1", "a") + cell("XFD1", "b")), {{a}});
    test("the last row of the format", "<row r=\"1048576\">" + cell("A1048576", "a") + "</row>", {{a}});
    test("no type is a number as it is spelt", row("<c r=\"A1\"><v>-1E-07</v></c>"),
         {{QStringLiteral("-1E-07")}});
    test("a number by its type", row("<c r=\"A1\" t=\"n\"><v>100</v></c>"), {{QStringLiteral("100")}});
    test("a formula's text", row("<c r=\"A1\" t=\"str\"><f>\"a\"&amp;\"\"</f><v>a</v></c>"), {{a}});
    test("true and false", row("<c r=\"A1\" t=\"b\"><v>1</v></c><c r=\"B1\" t=\"b\"><v>0</v></c>"),
         {{QStringLiteral("TRUE"), QStringLiteral("FALSE")}});
    test("a formula's error is no text", row("<c r=\"A1\" t=\"e\"><v>#N/A</v></c>" + cell("B1", "b")),
         {{none, b}});
    test("runs",
         row("<c r=\"A1\" t=\"inlineStr\"><is><r><rPr><b/></rPr><t>a</t></r><r><t>b</t></r></is></c>"),
         {{QStringLiteral("ab")}});
    test("phonetic runs are passed over",
         row("<c r=\"A1\" t=\"inlineStr\"><is><t>a</t><rPh sb=\"0\" eb=\"1\"><t>x</t></rPh><phoneticPr "
             "fontId=\"1\"/></is></c>"),
         {{a}});
    test("an inline text has no value", row("<c r=\"A1\" t=\"inlineStr\"><v>7</v><is><t>a</t></is></c>"),
         {{a}});
    test("escaped characters", row(cell("A1", "_x0041__x000A__x00e4__xD83D__xDEF0_")),
         oneCell("A\n\xc3\xa4\xf0\x9f\x9b\xb0"));
    test("an escaped underscore", row(cell("A1", "_x005F_x0041_")), oneCell("_x0041_"));
    test("what is no escape", row(cell("A1", "_x004_ _x00G1_ _X0041_ _x0041")),
         oneCell("_x004_ _x00G1_ _X0041_ _x0041"));
    test("line ends", row(cell("A1", "1&#10;2&#13;&#10;3_x000D_\n4\r\n5")), oneCell("1\n2\n3\n4\n5"));
    test("blanks stay", row(cell("A1", "  a\t")), oneCell("  a\t"));
    test("entities and character data", row(cell("A1", "&lt;&amp;&#x20AC;<![CDATA[<b>]]>")),
         oneCell("<&\xe2\x82\xac<b>"));
    test("a comment within", row(cell("A1", "a<!-- no -->b")), oneCell("ab"));
    test("foreign elements",
         row("<x:c xmlns:x=\"urn:x\" r=\"A1\" t=\"inlineStr\"><x:is><x:t>a</x:t></x:is><extLst><ext><c "
             "r=\"B1\"><v>7</v></c></ext></extLst></x:c>"),
         {{a}});
}

void TestReadSheet::cells()
{
    QFETCH(QByteArray, rows);
    QFETCH(Rows, expected);
    Collector collector;
    QCOMPARE(read(workbook(rows), collector), QString());
    QCOMPARE(collector.rows, expected);
}

void TestReadSheet::sharedTexts_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("plain") << QByteArray("<si><t>a</t></si><si><t xml:space=\"preserve\"> b </t></si>")
                           << QStringList{QStringLiteral("a"), QStringLiteral(" b ")};
    QTest::newRow("one is empty") << QByteArray("<si><t/></si><si><t>b</t></si>")
                                  << QStringList{QString(), QStringLiteral("b")};
    QTest::newRow("one is nothing") << QByteArray("<si/><si><t>b</t></si>")
                                    << QStringList{QString(), QStringLiteral("b")};
    QTest::newRow("runs and how they are spoken")
        << QByteArray(
               "<si><r><t>a</t></r><r><rPr><b/></rPr><t>b</t></r><rPh sb=\"0\" eb=\"1\"><t>x</t></rPh></si>"
               "<si><t>c</t><rPh sb=\"0\" eb=\"1\"><t>x</t></rPh></si>")
        << QStringList{QStringLiteral("ab"), QStringLiteral("c")};
    QTest::newRow("escaped") << QByteArray("<si><t>_x0041_</t></si><si><t>_x005F_x0041_</t></si>")
                             << QStringList{QStringLiteral("A"), QStringLiteral("_x0041_")};
}

void TestReadSheet::sharedTexts()
{
    QFETCH(QByteArray, items);
    QFETCH(QStringList, expected);
    Collector collector;
    // The second first, and a number with blanks around it.
    const QByteArray rows =
        row(sharedCell("A1", 1) + "<c r=\"B1\" t=\"s\"><v> 0 </v></c>" + cell("C1", "end"));
    QCOMPARE(read(workbook(rows, items), collector), QString());
    QCOMPARE(collector.rows, (Rows{{expected[1], expected[0], QStringLiteral("end")}}));
}

void TestReadSheet::archives_data()
{
    QTest::addColumn<QByteArray>("bytes");
    Documents documents;
    documents.sheet = sheetXml(textRow);
    const QVector<Entry> plain = documents.entries();
    const auto each = [&plain](const std::function<void(Entry&)>& change) {
        QVector<Entry> entries = plain;
        for (Entry& entry : entries)
            change(entry);
        return archive(entries);
    };
    QTest::newRow("deflated") << archive(plain);
    QTest::newRow("stored") << each([](Entry& entry) { entry.deflated = false; });
    QTest::newRow("sizes afterwards") << each([](Entry& entry) { entry.describedAfterwards = true; });
    QTest::newRow("in capitals") << each([](Entry& entry) { entry.name = entry.name.toUpper(); });
    QTest::newRow("in UTF-16") << each([](Entry& entry) { entry.content = inUtf16(entry.content); });
    QTest::newRow("in Latin-1") << each([](Entry& entry) { entry.content = inLatin1(entry.content); });
    QTest::newRow("with a byte order mark")
        << each([](Entry& entry) { entry.content.prepend("\xef\xbb\xbf"); });
    QTest::newRow("ZIP64") << archive(plain, {}, {}, -1, true);
    QTest::newRow("behind another file") << archive(plain, "#!/bin/sh\nexit\n");
    QTest::newRow("with a comment") << archive(plain, {}, "made by hand");
    QTest::newRow("with an empty folder") << archive(QVector<Entry>{{"xl/", {}, false}} + plain);
    QVector<Entry> backwards = plain;
    std::reverse(backwards.begin(), backwards.end());
    QTest::newRow("in another order") << archive(backwards);
    QVector<Entry> many = plain;
    for (int i = 0; i < 4000; ++i)
        many.prepend({"media/" + QByteArray::number(i), {}, false});
    QTest::newRow("beside many others") << archive(many);
}

void TestReadSheet::archives()
{
    QFETCH(QByteArray, bytes);
    Collector collector;
    QCOMPARE(read(bytes, collector), QString());
    QCOMPARE(collector.rows, oneCell(theText));
}

void TestReadSheet::packages_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto test = [](const char* name, const std::function<void(Documents&)>& change) {
        Documents documents;
        documents.sheet = sheetXml(textRow);
        change(documents);
        QTest::newRow(name) << workbook(documents);
    };
    const QByteArray strings = "rId2 sharedStrings sharedStrings.xml";
    test("relative targets", [](Documents&) {});
    test("absolute targets", [](Documents& documents) {
        documents.packageRelationships = relationshipsXml({"rId1 officeDocument /xl/workbook.xml"});
        documents.workbookRelationships = relationshipsXml(
            {"rId1 worksheet /xl/worksheets/sheet1.xml", "rId2 sharedStrings /xl/sharedStrings.xml"});
    });
    test("roundabout targets", [&](Documents& documents) {
        documents.packageRelationships = relationshipsXml({"rId1 officeDocument ./xl/../xl/workbook.xml"});
        documents.workbookRelationships =
            relationshipsXml({"rId1 worksheet ../xl/worksheets/sheet1.xml", strings});
    });
    test("other relationships before", [&](Documents& documents) {
        documents.packageRelationships = relationshipsXml(
            {"rId9 core-properties docProps/core.xml", "rId1 officeDocument xl/workbook.xml"});
        documents.workbookRelationships =
            relationshipsXml({"rId7 styles styles.xml", strings, "rId1 worksheet worksheets/sheet1.xml"});
    });
    test("no shared strings", [](Documents& documents) {
        documents.workbookRelationships = relationshipsXml({"rId1 worksheet worksheets/sheet1.xml"});
        documents.sharedStrings.clear();
    });
    // Sheets by name, in the workbook's order, each with its relationship.
    using Sheets = QVector<QPair<QByteArray, QByteArray>>;
    const QByteArray here = "worksheet worksheets/sheet1.xml"; // whose text is to be read
    const QByteArray missing = "worksheet worksheets/missing.xml";
    const QByteArray picture = "chartsheet chartsheets/sheet1.xml";
    const auto book = [&test](const char* name, const Sheets& sheets, const QByteArray& more = {}) {
        test(name, [&](Documents& documents) {
            QByteArray inner;
            QVector<QByteArray> relationships;
            for (const auto& sheet : sheets) {
                // The relationships stand the other way round, which means nothing.
                const QByteArray id = "rId" + QByteArray::number(relationships.size() + 3);
                inner += "<sheet name=\"" + sheet.first + "\" sheetId=\"" + id.mid(3) + "\" r:id=\"" + id +
                         '"' + more + "/>";
                relationships.prepend(id + ' ' + sheet.second);
            }
            const int begin = documents.workbook.indexOf("<sheet ");
            const int end = documents.workbook.indexOf("</sheets>");
            documents.workbook.replace(begin, end - begin, inner);
            documents.workbookRelationships = relationshipsXml(relationships);
        });
    };
    book("first in the workbook's order", {{"b", here}, {"a", missing}});
    book("a picture stands before it", {{"p", picture}, {"t", here}});
    book("hidden", {{"t", here}}, " state=\"hidden\"");
    book("of the name", {{"a", missing}, {"Texts", here}, {"b", missing}});
    book("of the name in other letters", {{"a", missing}, {"tEXTS", here}, {"b", missing}});
    book("of the name with blanks around it", {{"a", missing}, {" Texts ", here}, {"b", missing}});
    book("a picture of the name does not count", {{"Texts", picture}, {"t", here}});
    book("two of the name, the first counts", {{"Texts", here}, {"Texts", missing}});
    book("a name that only begins so", {{"t", here}, {"Texts 2", missing}});
    test("prefixes everywhere", [](Documents& documents) {
        for (QByteArray* xml :
             {&documents.packageRelationships, &documents.workbook, &documents.workbookRelationships,
              &documents.sheet, &documents.sharedStrings}) {
            const int root = xml->indexOf("?>") + 2;
            QByteArray body = xml->mid(root);
            body.replace("</", "@").replace("<", "<x:").replace("@", "</x:").replace("xmlns=", "xmlns:x=");
            *xml = xml->left(root) + body;
        }
    });
    test("the strict namespace", [](Documents& documents) {
        for (QByteArray* xml : {&documents.packageRelationships, &documents.workbook,
                                &documents.workbookRelationships, &documents.sheet, &documents.sharedStrings})
            xml->replace("http://schemas.openxmlformats.org/spreadsheetml/2006/main",
                         "http://purl.oclc.org/ooxml/spreadsheetml/main")
                .replace("http://schemas.openxmlformats.org/officeDocument/2006/relationships",
                         "http://purl.oclc.org/ooxml/officeDocument/relationships");
    });
}

void TestReadSheet::packages()
{
    archives();
}

void TestReadSheet::unwantedColumns()
{
    Collector collector;
    collector.unwanted = 1;
    // What is not wanted is not looked at: this index leads nowhere.
    const QByteArray rows =
        row(cell("A1", "a") + sharedCell("B1", 99) + cell("C1", "c")) + row(cell("B2", "b"));
    QCOMPARE(read(workbook(rows), collector), QString());
    QCOMPARE(collector.rows, (Rows{{QStringLiteral("a"), QString(), QStringLiteral("c")}}));
}

void TestReadSheet::takerEndsTheReading()
{
    Collector collector;
    collector.enough = 2;
    QVERIFY(read(workbook(row(cell("A1", "a")) + row(cell("A2", "b")) + row(cell("A3", "c"))), collector)
                .endsWith(QStringLiteral("enough")));
    QCOMPARE(collector.rows.size(), 2);
}

QTEST_GUILESS_MAIN(TestReadSheet)

#include "tst_read_sheet.moc"
