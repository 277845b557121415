// What the line decoder costs beside the least that anything could do with the same bytes, measured in the
// same run: one memchr pass over them and, for what has to be copied, the plain copy.
//
//   long line    16 MiB and a line feed, in pieces of 4 KiB; next() after every piece, as a socket is read
//   short lines  250,000 in one burst, and 250,000 one by one through a backlog that nearly fills the storage
//
// The compared works take turns, so that other load on the machine meets them alike. "first" is the first
// round, in memory that comes fresh from the system.
//
// `--check` fails when a ratio is far beyond what noise explains: a decoder that scans or moves the same
// bytes again and again is some hundred times slower.

#include "link/LineDecoder.h"

#include <QStringBuilder>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <vector>

namespace {

constexpr int rounds = 21;
constexpr int pieceSize = 4096;
constexpr int shortLines = 250'000;
constexpr int backlog = 0x3FF00; // bytes
constexpr double longestLongRatio = 1.5;
constexpr double longestShortRatio = 3;

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

void measure(std::vector<Work>& works)
{
    for (int round = 0; round < rounds; ++round) {
        for (Work& work : works) {
            const auto start = std::chrono::steady_clock::now();
            work.run();
            const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
            work.times.push_back(time.count());
        }
    }
    for (const Work& work : works)
        std::printf("  %-42s median %8.3f ms   least %8.3f ms   first %8.3f ms\n", work.name, work.median(),
                    work.least(), work.times.front());
}

void printRatio(const char* name, double ofMedians, double ofLeast)
{
    std::printf("  %-42s median %8.2f      least %8.2f\n", name, ofMedians, ofLeast);
}

template <typename Take>
void forEachPiece(const QByteArray& stream, Take take)
{
    for (int position = 0; position < stream.size(); position += pieceSize)
        take(stream.constData() + position, std::min(pieceSize, stream.size() - position));
}

void copy(char* target, const char* source, int size)
{
    std::memcpy(target, source, static_cast<std::size_t>(size));
}

void decodeLongLine(const QByteArray& stream)
{
    LineDecoder decoder;
    QByteArray line;
    bool taken = false;
    forEachPiece(stream, [&](const char* bytes, int size) {
        copy(decoder.beginWrite(size), bytes, size);
        decoder.endWrite(size);
        taken = decoder.next(line) == LineDecoder::Result::Line;
    });
    require(taken && line.size() == LineDecoder::maximumLineLength, "long line");
}

void decodeShortLines(const QByteArray& stream)
{
    LineDecoder decoder;
    QByteArray line;
    decoder.append(stream);
    int count = 0;
    while (decoder.next(line) == LineDecoder::Result::Line)
        ++count;
    require(count == shortLines, "short lines");
}

// A line goes out for each that comes in, while `backlog` bytes always wait.
void decodeThroughBacklog(const QByteArray& stream)
{
    LineDecoder decoder;
    QByteArray line;
    int fed = stream.indexOf('\n', backlog) + 1;
    decoder.append(stream.left(fed));
    int count = 0;
    while (decoder.next(line) == LineDecoder::Result::Line) {
        ++count;
        const int size = std::min(line.size() + 1, stream.size() - fed);
        copy(decoder.beginWrite(size), stream.constData() + fed, size);
        decoder.endWrite(size);
        fed += size;
    }
    require(count == shortLines, "backlog");
}

// The least for lines that may be kept: find each end from a running offset, copy each line out.
void splitByOffset(const QByteArray& stream)
{
    QByteArray line;
    int count = 0;
    int start = 0;
    for (int end = stream.indexOf('\n'); end >= 0; end = stream.indexOf('\n', start)) {
        line = stream.mid(start, end - start);
        start = end + 1;
        ++count;
    }
    require(count == shortLines, "split");
}

// Each gives the ratio to check.
double longLine()
{
    const QByteArray stream = QByteArray(LineDecoder::maximumLineLength, 'x') + '\n';
    std::vector<char> block(static_cast<std::size_t>(stream.size()));
    std::vector<Work> works = {
        {"memchr pass",
         [&] {
             const void* feed =
                 std::memchr(stream.constData(), '\n', static_cast<std::size_t>(stream.size()));
             require(feed == stream.constData() + stream.size() - 1, "memchr");
         }},
        {"copy of the pieces into one block",
         [&] {
             forEachPiece(stream, [&](const char* bytes, int size) {
                 copy(block.data() + (bytes - stream.constData()), bytes, size);
             });
             require(block.front() == stream[0], "copy");
         }},
        {"decoder, the copy of the pieces included", [&] { decodeLongLine(stream); }},
    };
    std::printf("one line of 16 MiB in pieces of 4 KiB\n");
    measure(works);
    const Work& pass = works[0];
    const Work& plain = works[1];
    const Work& decoder = works[2];
    const double ratio = decoder.least() / (pass.least() + plain.least());
    printRatio("decoder / (memchr pass + copy)", decoder.median() / (pass.median() + plain.median()), ratio);
    printRatio("(decoder - copy) / memchr pass", (decoder.median() - plain.median()) / pass.median(),
               (decoder.least() - plain.least()) / pass.least());
    return ratio;
}

double manyShortLines()
{
    QByteArray stream;
    for (int i = 0; i < shortLines; ++i)
        stream.append("EVT {\"event\":\"STAT:SNAP\",\"payload\":{\"seq\":")
            .append(QByteArray::number(i))
            .append("}}\n");
    std::vector<Work> works = {
        {"split by offset", [&] { splitByOffset(stream); }},
        {"decoder, taking over the burst included", [&] { decodeShortLines(stream); }},
        {"decoder, one by one through a backlog", [&] { decodeThroughBacklog(stream); }},
    };
    std::printf("250,000 lines of about %d bytes\n", stream.size() / shortLines);
    measure(works);
    const Work& split = works[0];
    const Work& burst = works[1];
    const Work& passing = works[2];
    printRatio("burst / split by offset", burst.median() / split.median(), burst.least() / split.least());
    printRatio("backlog / split by offset", passing.median() / split.median(),
               passing.least() / split.least());
    return std::max(burst.least(), passing.least()) / split.least();
}

} // namespace

int main(int argc, char* argv[])
{
    const bool check = argc > 1 && std::strcmp(argv[1], "--check") == 0;
    const double longRatio = longLine();
    const double shortRatio = manyShortLines();
    if (!check || (longRatio <= longestLongRatio && shortRatio <= longestShortRatio))
        return 0;
    std::printf("too slow: the ratios may be %.1f and %.1f\n", longestLongRatio, longestShortRatio);
    return 1;
}
