// What the tone table of the multitone editor costs with 4096 candidate tones, beside a bare QTableWidget of
// the same size in the same run: filled the first time, refilled with other tones, given the same tones
// again, and one tone tapped up to the request. Layout and painting are part of each time.

#include "kit/Report.h"
#include "modeditors/RemoteMultitonePanel.h"

#include <QApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonObject>
#include <QTableWidget>
#include <QTest>
#include <memory>

namespace {

constexpr int toneCount = 4096;
constexpr int rounds = 15;
constexpr double longestFill = 50; // ms
constexpr double longestTap = 16;  // ms

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
    const QApplication app(argc, argv);
    Report report(argc, argv, "Tone table");
    Bench bench;
    std::vector<Work> works = {
        {"bare QTableWidget, filled",
         [&] {
             fillBare(*bench.bare);
             settle();
         },
         [&] {
             bench.newBareTable();
             settle();
         }},
        {"new editor, filled",
         [&] {
             bench.fresh->applyEditorState({}, bench.tones, true);
             settle();
         },
         [&] {
             bench.newEditor();
             settle();
         }},
        {"editor, other tones",
         [&] {
             bench.editor.applyEditorState({}, bench.tones, true);
             settle();
         },
         [&] {
             bench.editor.applyEditorState({}, bench.otherTones, true);
             settle();
         }},
        {"editor, the same tones again",
         [&] {
             bench.editor.applyEditorState({}, bench.sameTones, true);
             settle();
         }},
        {"tap of a tone",
         [&] {
             bench.tap();
             settle();
         },
         [&] {
             bench.showMiddle();
             settle();
         }},
    };
    measure(works, rounds);
    report.printTimes("4096 tones, layout and painting included:", works);
    for (std::size_t i = 1; i < works.size(); ++i) {
        const double most = i < 3 ? longestFill : longestTap;
        report.limit(works[i].name + ", least, ms", works[i].times.least(), most, 2 * most);
    }
    return report.finish();
}
