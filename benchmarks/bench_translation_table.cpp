// What the translation table costs: reading the column of one language out of 600 texts in 10 languages,
// beside the least that any reader takes, which unpacks the same sheet and has expat see it without taking
// anything; and looking texts up, beside the bare hash.

#include "kit/Report.h"
#include "texttable/TableWorkbook.h"
#include "texttable/TextTable.h"
#include "utils/Translator.h"
#include "utils/workbook/ZipAccess.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <expat.h>
#include <memory>

namespace {

constexpr int textCount = 600;
constexpr int languageCount = 10;
constexpr int lookups = 100'000;
constexpr double mostForReading = 2; // times the floor
constexpr double alarmForReading = 3;
constexpr double mostForLookups = 3;
constexpr double alarmForLookups = 5;
const QString language = QStringLiteral("Language 7");
constexpr char lookedUp[] = "Start frequency 32";
const QString found = QStringLiteral("起始频率 7 32");

// Sentences of the length that the program's have, in letters of several scripts.
TextTable sampleTable()
{
    TextTable table;
    table.headings = QStringList{QStringLiteral("Context"), QStringLiteral("Source")};
    for (int i = 0; i < languageCount; ++i)
        table.headings.append(QStringLiteral("Language %1").arg(i));
    for (int text = 0; text < textCount; ++text) {
        QStringList row = {QStringLiteral("RemotePanel%1").arg(text % 25),
                           QStringLiteral("Start frequency %1").arg(text)};
        for (int i = 0; i < languageCount; ++i)
            row.append((i < 6 ? QStringLiteral("Fréquence initiale %1 %2") : QStringLiteral("起始频率 %1 %2"))
                           .arg(i)
                           .arg(text));
        table.rows.append(row);
    }
    return table;
}

void load(Utils::Translator& translator, const QString& path)
{
    require(translator.loadFile(path, language), "load");
    translator.setCurrentLanguage(language);
}

void unpackAndParse(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "open");
    const Workbook::ZipAccess archive(file);
    for (const char* part : {"xl/worksheets/sheet8.xml"}) {
        const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate(nullptr),
                                                                                  XML_ParserFree);
        const QString problem = archive.read(QLatin1String(part), [&parser](const char* bytes, int size) {
            return XML_Parse(parser.get(), bytes, size, XML_FALSE) == XML_STATUS_OK;
        });
        require(problem.isEmpty() && XML_Parse(parser.get(), nullptr, 0, XML_TRUE) == XML_STATUS_OK, part);
    }
}

void reading(Report& report, const QString& path)
{
    std::vector<Work> works = {
        {"unpacked and parsed, nothing taken", [&] { unpackAndParse(path); }},
        {"read",
         [&] {
             Utils::Translator translator;
             load(translator, path);
         }},
    };
    measure(works, report.pick(201, 41));
    report.printTimes("600 texts in 10 languages:", works);
    report.limit("reading / unpacking and parsing", works[1].times.least() / works[0].times.least(),
                 mostForReading, alarmForReading);
}

// As the translator looks them up.
QByteArray keyOf(const QByteArray& source)
{
    return QByteArrayLiteral("RemotePanel7") + '\0' + source;
}

void lookingUp(Report& report, const QString& path)
{
    Utils::Translator translator;
    load(translator, path);
    QHash<QByteArray, QString> texts;
    for (int i = 0; i < textCount; ++i)
        texts.insert(keyOf("Start frequency " + QByteArray::number(i)), found);
    std::vector<Work> works = {
        {"hash of the texts",
         [&texts] {
             int size = 0;
             for (int i = 0; i < lookups; ++i)
                 size += texts.value(keyOf(lookedUp)).size();
             require(size == lookups * found.size(), "hash");
         }},
        {"translator",
         [&translator] {
             int size = 0;
             for (int i = 0; i < lookups; ++i)
                 size += translator.translate("RemotePanel7", lookedUp, nullptr, -1).size();
             require(size == lookups * found.size(), "lookup");
         }},
    };
    measure(works, report.pick(41, 11));
    report.printTimes("100,000 lookups:", works);
    report.limit("translator / hash", works[1].times.least() / works[0].times.least(), mostForLookups,
                 alarmForLookups);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Report report(argc, argv, "Translation table");
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("table.xlsx"));
    require(writeWorkbook(sampleTable(), path).isEmpty(), "workbook");
    reading(report, path);
    lookingUp(report, path);
    return report.finish();
}
