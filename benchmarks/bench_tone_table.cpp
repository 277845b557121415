// What the tone table of the multitone editor costs with 4096 candidate tones, beside a bare QTableWidget of
// the same size in the same run: filled the first time, refilled with other tones, given the same tones
// again, and one tone tapped up to the request. Layout and painting are part of each time.
//
// `--check` fails when a time is beyond what the eye allows: 50 ms to fill, 16 ms for a tap.

#include "modeditors/RemoteMultitonePanel.h"

#include <QApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QTableWidget>
#include <QtTest>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int toneCount = 4096;
constexpr int rounds = 15;
constexpr double longestFill = 50; // ms
constexpr double longestTap = 16;  // ms

struct Work
{
    const char* name;
    double limit; // ms, of the median; 0: none
    std::function<void()> prepare;
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

void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

// All tones differ between the two lists, in frequency, mark and index.
QJsonObject profileOf(bool other)
{
    QJsonArray tones;
    for (int i = 0; i < toneCount; ++i) {
        tones.append(QJsonObject{
            {QStringLiteral("requestedFrequency"), (i - toneCount / 2) * 100e3 + (other ? 0.125 : 0)},
            {QStringLiteral("enabled"), (i % 2 == 0) == other},
            {QStringLiteral("latticeIndex"), i + (other ? toneCount : 0)}});
    }
    return {{QStringLiteral("candidateTones"), tones}, {QStringLiteral("discreteKeepToneMode"), true}};
}

void fillBare(QTableWidget& table)
{
    table.setRowCount(toneCount);
    for (int row = 0; row < toneCount; ++row) {
        table.setItem(row, 0, new QTableWidgetItem(QString::number(row + 1)));
        table.setItem(row, 1, new QTableWidgetItem(QString::number(row * 100) + QLatin1String("kHz")));
        auto* const mark = new QTableWidgetItem;
        mark->setCheckState(row % 2 == 0 ? Qt::Checked : Qt::Unchecked);
        mark->setData(Qt::UserRole, row);
        table.setItem(row, 2, mark);
    }
}

void measure(std::vector<Work>& works)
{
    for (int round = 0; round < rounds; ++round) {
        for (Work& work : works) {
            work.prepare();
            settle();
            const auto start = std::chrono::steady_clock::now();
            work.run();
            settle();
            const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
            work.times.push_back(time.count());
        }
    }
    for (const Work& work : works)
        std::printf("  %-42s median %8.3f ms   least %8.3f ms   first %8.3f ms\n", work.name, work.median(),
                    work.least(), work.times.front());
}

// The benchmark's windows: an editor that stays, one that is new each round, and the bare table.
struct Bench
{
    const QJsonObject tones = profileOf(false);
    const QJsonObject otherTones = profileOf(true);
    const QJsonObject sameTones = profileOf(false); // equal, not shared
    RemoteMultitonePanel editor;
    std::unique_ptr<RemoteMultitonePanel> fresh;
    std::unique_ptr<QTableWidget> bare;
    int requested = 0; // tones in the last request

    Bench()
    {
        editor.resize(560, 600);
        editor.show();
        QObject::connect(&editor, &RemoteModEditor::actionEdited, &editor,
                         [this](const QString&, const QJsonObject& arguments) {
                             requested = arguments.value(QLatin1String("value")).toArray().size();
                         });
    }
    void newEditor()
    {
        fresh = std::make_unique<RemoteMultitonePanel>();
        fresh->resize(560, 600);
        fresh->show();
    }
    void newBareTable()
    {
        bare = std::make_unique<QTableWidget>(0, 3);
        bare->verticalHeader()->hide();
        bare->resize(560, 300);
        bare->show();
    }
    void tap()
    {
        auto* const table = editor.findChild<QTableWidget*>();
        const int row = toneCount / 2;
        requested = -1;
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                          table->visualItemRect(table->item(row, 2)).center());
        require(requested == toneCount / 2 + 1 || requested == toneCount / 2 - 1, "tap");
    }
    void showMiddle()
    {
        editor.applyEditorState({}, tones, true);
        auto* const table = editor.findChild<QTableWidget*>();
        table->scrollToItem(table->item(toneCount / 2, 0));
    }
};

} // namespace

int main(int argc, char* argv[])
{
    const bool check = argc > 1 && std::strcmp(argv[1], "--check") == 0;
    const QApplication app(argc, argv);
    Bench bench;
    std::vector<Work> works = {
        {"bare QTableWidget, filled", 0, [&] { bench.newBareTable(); }, [&] { fillBare(*bench.bare); }},
        {"new editor, filled", longestFill, [&] { bench.newEditor(); },
         [&] { bench.fresh->applyEditorState({}, bench.tones, true); }},
        {"editor, other tones", longestFill,
         [&] { bench.editor.applyEditorState({}, bench.otherTones, true); },
         [&] { bench.editor.applyEditorState({}, bench.tones, true); }},
        {"editor, the same tones again", longestTap, [] {},
         [&] { bench.editor.applyEditorState({}, bench.sameTones, true); }},
        {"tap of a tone", longestTap, [&] { bench.showMiddle(); }, [&] { bench.tap(); }},
    };
    std::printf("%d tones\n", toneCount);
    measure(works);
    const Work& bare = works.front();
    bool fast = true;
    for (const Work& work : works) {
        std::printf("  %-42s median %8.2f      least %8.2f\n",
                    qPrintable(QLatin1String(work.name) + QLatin1String(" / bare")),
                    work.median() / bare.median(), work.least() / bare.least());
        if (work.limit > 0 && work.least() > work.limit) {
            std::printf("too slow: %s may take %.0f ms\n", work.name, work.limit);
            fast = false;
        }
    }
    return check && !fast ? 1 : 0;
}
