// However the bytes are chunked and by whichever door they come in, the decoder cuts the lines that a plain
// split cuts. The first byte of the input seeds the chunking.

#include "fuzz/Fuzzing.h"
#include "link/LineDecoder.h"

#include <QByteArrayList>

#include <algorithm>
#include <cstring>

using Fuzzing::require;

namespace {

constexpr unsigned longestChunk = 97;

class Chunks final
{
public:
    explicit Chunks(unsigned seed)
        : m_state(seed)
    {}
    [[nodiscard]] int next(int left)
    {
        m_state = m_state * 1103515245U + 12345U;
        return std::min(left, 1 + int((m_state >> 16U) % longestChunk));
    }
    [[nodiscard]] bool isOdd() const { return ((m_state >> 20U) & 1U) != 0; }

private:
    unsigned m_state;
};

void drain(LineDecoder& decoder, QByteArrayList& lines)
{
    QByteArray line;
    LineDecoder::Result result = decoder.next(line);
    while (result == LineDecoder::Result::Line) {
        lines.append(
            QByteArray(line.constData(), line.size())); // the decoder may use the line's memory again
        result = decoder.next(line);
    }
    require(result == LineDecoder::Result::NeedsMore, "no line of such an input is oversized");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    Chunks chunks(data[0]);
    const QByteArray input = Fuzzing::bytes(data + 1, size - 1);
    LineDecoder decoder;
    QByteArrayList lines;
    for (int position = 0; position < input.size();) {
        const int length = chunks.next(input.size() - position);
        if (chunks.isOdd()) {
            decoder.append(input.mid(position, length));
        } else {
            std::memcpy(decoder.beginWrite(length), input.constData() + position, std::size_t(length));
            decoder.endWrite(length);
        }
        position += length;
        if (chunks.isOdd() || position == input.size()) {
            drain(decoder, lines);
        }
    }
    QByteArrayList expected = input.split('\n');
    const QByteArray rest = expected.takeLast();
    require(lines == expected, "the lines are those of a plain split");
    require(decoder.bufferedBytes() == rest.size(), "what follows the last line feed is kept");
    return 0;
}
