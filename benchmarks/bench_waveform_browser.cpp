// What it costs to browse a folder of 10,000 WAV files in the quick waveform editor, beside a bare
// QTableWidget that is filled in one go with as many rows of the same content.
//
//   first rows   from the profile that names the folder to a painted table
//   all rows     until every row is written, and the longest turn of the event loop meanwhile
//   probing      the longest turn while files are read
//   change       a file comes first: from the listing to a table that has it, and the longest turn
//
// `--check` fails when the first rows take longer than 100 ms, or when more than a few turns while writing or
// probing take longer than 16 ms; other load on the machine may lengthen some.

#include "modeditors/ModEditorFactory.h"
#include "modeditors/contract/RemoteModEditor.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QTableWidget>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int files = 10'000;
constexpr int probedFiles = 1'000;
constexpr double longestFirst = 100; // ms
constexpr double longestTurn = 16;   // ms, of a display's frame
constexpr int strayTurns = 3;
constexpr double patience = 30'000; // ms

using Clock = std::chrono::steady_clock;

double since(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void require(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "wrong result: %s\n", what);
    std::exit(2);
}

struct Turns
{
    double total = 0; // ms
    double longest = 0;
    int beyond = 0; // turns longer than a frame
};

Turns turnUntil(const std::function<bool()>& done)
{
    Turns turns;
    const auto start = Clock::now();
    while (!done()) {
        const auto turn = Clock::now();
        QCoreApplication::processEvents();
        const double time = since(turn);
        turns.longest = std::max(turns.longest, time);
        turns.beyond += time > longestTurn ? 1 : 0;
        require(since(start) < patience, "never done");
    }
    turns.total = since(start);
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
    const auto start = Clock::now();
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
    return since(start);
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication app(argc, argv);
    const bool check = argc > 1 && std::strcmp(argv[1], "--check") == 0;
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

    const auto start = Clock::now();
    editor->applyEditorState({}, {{QStringLiteral("rootPath"), folder.path()}}, false);
    editor->repaint();
    const double first = since(start);
    require(table->rowCount() == files, "rows");
    const Turns writing = turnUntil(isWritten);
    const Turns probing = turnUntil([&] { return isProbed(probedFiles); });

    write(folder.path(), QStringLiteral("a.wav"));
    const Turns change = turnUntil([&] { return table->rowCount() == files + 1 && isWritten(); });
    require(table->item(0, 0)->text() == QLatin1String("a"), "the new file");

    std::printf("a folder of %d files\n", files);
    std::printf("  bare QTableWidget, listed, filled and shown   %8.1f ms\n", bare);
    std::printf("  first rows painted                            %8.1f ms\n", first);
    std::printf("  all rows written, after that                  %8.1f ms   longest turn %6.1f ms\n",
                writing.total, writing.longest);
    std::printf("  %d files probed                             %8.1f ms   longest turn %6.1f ms\n",
                probedFiles, probing.total, probing.longest);
    std::printf("  a further file, all rows moved                %8.1f ms   longest turn %6.1f ms\n",
                change.total, change.longest);
    const bool fluid = first <= longestFirst && writing.beyond <= strayTurns && probing.beyond <= strayTurns;
    if (!check || fluid)
        return 0;
    std::printf("too slow: %d and %d turns beyond %.0f ms\n", writing.beyond, probing.beyond, longestTurn);
    return 1;
}
