// What the translation table adds to a start: a process that reads the column of one language out of 600
// texts in 10 languages, beside the same process without it, which take turns; then the reading alone, and
// one lookup.
//
// Times are those of the processor, the system's share included, so that what else the machine does matters
// little. `--check` fails when the table makes a start longer than 10 ms.

#include "texttable/TableWorkbook.h"
#include "texttable/TextTable.h"
#include "utils/Translator.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <sys/resource.h>
#include <vector>

namespace {

constexpr int textCount = 600;
constexpr int languageCount = 10;
constexpr int rounds = 21;
constexpr int lookups = 100'000;
constexpr double longestLoad = 10; // ms
const QString language = QStringLiteral("Language 7");

struct Work
{
    const char* name;
    std::function<void()> run;
    std::vector<double> times = {}; // ms

    [[nodiscard]] double least() const { return *std::min_element(times.begin(), times.end()); }
    [[nodiscard]] double median() const
    {
        std::vector<double> sorted = times;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }
};

void require(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "wrong result: %s\n", what);
    std::exit(2);
}

double milliseconds(const timeval& time)
{
    return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
}

// What this process and those that it has waited for have used.
double processorTime()
{
    double total = 0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage = {};
        getrusage(who, &usage);
        total += milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
    }
    return total;
}

void measure(std::vector<Work>& works)
{
    for (int round = 0; round < rounds; ++round) {
        for (Work& work : works) {
            const double before = processorTime();
            work.run();
            work.times.push_back(processorTime() - before);
        }
    }
    for (const Work& work : works)
        std::printf("  %-42s median %8.3f ms   least %8.3f ms   first %8.3f ms\n", work.name, work.median(),
                    work.least(), work.times.front());
}

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

void lookUp(const Utils::Translator& translator)
{
    int found = 0;
    for (int i = 0; i < lookups; ++i)
        found += translator.translate("RemotePanel7", "Start frequency 32", nullptr, -1).size();
    require(found == lookups * QStringLiteral("起始频率 7 32").size(), "lookup");
}

void start(const QStringList& arguments)
{
    require(QProcess::execute(QCoreApplication::applicationFilePath(), arguments) == 0, "start");
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--start")) {
        Utils::Translator translator;
        if (arguments.size() > 2)
            load(translator, arguments[2]);
        return 0;
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("table.xlsx"));
    require(writeWorkbook(sampleTable(), path).isEmpty(), "workbook");
    std::printf("%d texts in %d languages, %d KiB\n", textCount, languageCount,
                int(QFileInfo(path).size() / 1024));

    Utils::Translator used;
    load(used, path);
    std::vector<Work> works = {
        {"start of a process", [] { start({QStringLiteral("--start")}); }},
        {"start of a process that reads the table",
         [&] {
             start({QStringLiteral("--start"), path});
         }},
        {"reading the table",
         [&] {
             Utils::Translator translator;
             load(translator, path);
         }},
        {"100,000 lookups", [&] { lookUp(used); }},
    };
    measure(works);
    const double added = works[1].least() - works[0].least();
    std::printf("  %-42s median %8.3f ms   least %8.3f ms\n", "added to the start",
                works[1].median() - works[0].median(), added);
    if (!arguments.contains(QStringLiteral("--check")) || added <= longestLoad)
        return 0;
    std::printf("too slow: the table may add %.0f ms\n", longestLoad);
    return 1;
}
