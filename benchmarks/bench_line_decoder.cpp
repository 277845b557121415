// What the line decoder costs beside the least that anything could do with the same bytes, measured in the
// same run: one memchr pass over them and, for what has to be copied, the plain copy.
//
//   long line    16 MiB and a line feed, in pieces of 4 KiB; next() after every piece, as a socket is read
//   short lines  250,000 in one burst, and 250,000 one by one through a backlog that nearly fills the storage
//
// "first" is the first round, in memory that comes fresh from the system. A decoder that scans or moves the
// same bytes again and again is some hundred times slower.

#include "kit/Report.h"
#include "link/LineDecoder.h"

#include <QStringBuilder>
#include <algorithm>
#include <cstring>

namespace {

constexpr int rounds = 21;
constexpr int pieceSize = 4096;
constexpr int shortLines = 250'000;
constexpr int backlog = 0x3FF00;    // bytes
constexpr double mostForLong = 1.5; // times the floor
constexpr double mostForShort = 3;

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

// The least times are compared: a decoder that does too much never gets near them.
void longLine(Report& report)
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
    measure(works, rounds);
    report.printTimes("One line of 16 MiB in pieces of 4 KiB:", works);
    const double floor = works[0].times.least() + works[1].times.least();
    report.limit("long line: decoder / (memchr pass + copy)", works[2].times.least() / floor, mostForLong,
                 mostForLong);
}

void manyShortLines(Report& report)
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
    measure(works, rounds);
    report.printTimes("250,000 short lines:", works);
    const double floor = works[0].times.least();
    report.limit("short lines: burst / split by offset", works[1].times.least() / floor, mostForShort,
                 mostForShort);
    report.limit("short lines: backlog / split by offset", works[2].times.least() / floor, mostForShort,
                 mostForShort);
}

} // namespace

int main(int argc, char* argv[])
{
    Report report(argc, argv, "Line decoder");
    longLine(report);
    manyShortLines(report);
    return report.finish();
}
