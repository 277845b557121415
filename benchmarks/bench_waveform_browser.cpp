// What it costs to browse a folder of 10,000 WAV files in the quick waveform editor, beside a bare
// QTableWidget that is filled in one go with as many rows of the same content.
//
//   first rows   from the profile that names the folder to a painted table
//   all rows     until every row is written, and the longest turn of the event loop meanwhile
//   probing      the longest turn while files are read
//   change       a file comes first: from the listing to a table that has it, and the longest turn

#include "kit/Clocks.h"
#include "kit/Report.h"
#include "modeditors/ModEditorFactory.h"
#include "modeditors/contract/RemoteModEditor.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QTableWidget>
#include <QTemporaryDir>
#include <algorithm>
#include <memory>

namespace {

constexpr int files = 10'000;
constexpr int probedFiles = 1'000;
constexpr double longestFirst = 100; // ms
constexpr double longestTurn = 16;   // ms, of a display's frame
constexpr int strayTurns = 3;
constexpr double patience = 30'000; // ms

struct Turns
{
    double total = 0; // ms
    double longest = 0;
    int beyond = 0; // turns of more processor time than a frame
};

Turns turnUntil(const std::function<bool()>& done)
{
    Turns turns;
    const Stopwatch start;
    while (!done()) {
        const Stopwatch turn;
        const double before = threadCpuMs();
        QCoreApplication::processEvents();
        turns.longest = std::max(turns.longest, turn.ms());
        turns.beyond += threadCpuMs() - before > longestTurn ? 1 : 0;
        require(start.ms() < patience, "never done");
    }
    turns.total = start.ms();
    return turns;
}

// Four samples of two channels at 48 kHz.
QByteArray waveform()
{
    constexpr char bytes[] = "RIFF\x34\0\0\0WAVEfmt \x10\0\0\0\1\0\2\0\x80\xbb\0\0\0\xee\2\0\4\0\x10\0"
                             "data\x10\0\0\0................";
    return QByteArray(bytes, sizeof bytes - 1);
}

QString nameOf(int number)
{
    return QStringLiteral("waveform_%1.wav").arg(number, 5, 10, QLatin1Char('0'));
}

void write(const QDir& folder, const QString& name)
{
    QFile file(folder.filePath(name));
    require(file.open(QIODevice::WriteOnly) && file.write(waveform()) > 0, "no file to write");
}

double bareTable(const QDir& folder)
{
    const Stopwatch start;
    QTableWidget table;
    table.setColumnCount(2);
    const QFileInfoList entries =
        folder.entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::Name | QDir::DirsFirst);
    table.setRowCount(entries.size());
    for (int row = 0; row < entries.size(); ++row) {
        auto* const name = new QTableWidgetItem(entries.at(row).completeBaseName());
        name->setData(Qt::UserRole, entries.at(row).absoluteFilePath());
        table.setItem(row, 0, name);
        table.setItem(row, 1, new QTableWidgetItem(QStringLiteral("-")));
    }
    table.resize(400, 600);
    table.show();
    QCoreApplication::processEvents();
    return start.ms();
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication app(argc, argv);
    Report report(argc, argv, "Waveform browser");
    const QTemporaryDir folder;
    for (int i = 0; i < files; ++i)
        write(folder.path(), nameOf(i));
    const double bare = bareTable(folder.path());

    const std::unique_ptr<RemoteModEditor> editor(createModEditor(QStringLiteral("quick-waveform"), nullptr));
    require(editor != nullptr, "no editor");
    editor->resize(560, 670);
    editor->show();
    QCoreApplication::processEvents();
    auto* const table = editor->findChild<QTableWidget*>(QStringLiteral("tableWidget"));
    const auto isWritten = [&] { return table->item(table->rowCount() - 1, 0) != nullptr; };
    const auto isProbed = [&](int row) {
        return table->item(row, 1) && table->item(row, 1)->text() != QLatin1String("-");
    };

    const Stopwatch start;
    editor->applyEditorState({}, {{QStringLiteral("rootPath"), folder.path()}}, false);
    editor->repaint();
    const double first = start.ms();
    require(table->rowCount() == files, "rows");
    const Turns writing = turnUntil(isWritten);
    const Turns probing = turnUntil([&] { return isProbed(probedFiles); });

    write(folder.path(), QStringLiteral("a.wav"));
    const Turns change = turnUntil([&] { return table->rowCount() == files + 1 && isWritten(); });
    require(table->item(0, 0)->text() == QLatin1String("a"), "the new file");

    Table figures({"a folder of 10,000 files, ms", "until done", "longest turn"});
    figures.add({"bare QTableWidget, listed, filled and shown", figure(bare), figure(bare)});
    figures.add({"first rows painted", figure(first), figure(first)});
    figures.add({"all rows written, after that", figure(writing.total), figure(writing.longest)});
    figures.add({"1,000 files probed", figure(probing.total), figure(probing.longest)});
    figures.add({"a further file, all rows moved", figure(change.total), figure(change.longest)});
    report.print("From the profile that names the folder:", figures);
    report.limit("first rows painted, ms", first, longestFirst, 3 * longestFirst);
    report.limit("turns beyond a frame while rows are written", writing.beyond, 0, strayTurns);
    report.limit("turns beyond a frame while files are probed", probing.beyond, 0, strayTurns);
    return report.finish();
}
