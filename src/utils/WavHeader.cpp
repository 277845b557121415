#include "utils/WavHeader.h"

#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace Utils {
namespace {

constexpr int maximumChunks = 4096; // a file that has more is no recording
constexpr quint32 sizeElsewhere = 0xFFFFFFFF;
constexpr qint64 chunkHeadSize = 8;

// The formats whose samples are counted by their bits.
enum FormatTag : quint16 { Pcm = 1, Float = 3, ALaw = 6, MuLaw = 7, Extensible = 0xFFFE };

// What may follow an odd chunk that nobody padded.
constexpr const char* knownChunks[] = {"fmt ", "data", "auxi", "fact", "LIST",
                                       "bext", "cue ", "smpl", "JUNK", "id3 "};

template <typename Number>
Number littleEndian(const char* bytes)
{
    return qFromLittleEndian<Number>(bytes);
}

bool isId(const char* bytes, const char* id)
{
    return std::memcmp(bytes, id, 4) == 0;
}

bool isKnownId(const char* bytes)
{
    return std::any_of(std::begin(knownChunks), std::end(knownChunks),
                       [bytes](const char* id) { return isId(bytes, id); });
}

} // namespace

// Walks from chunk to chunk.
class WavReader final
{
public:
    explicit WavReader(QIODevice& device)
        : m_device(device)
        , m_size(device.isSequential() ? 0 : device.size())
    {}

    WavHeader read()
    {
        char form[12];
        if (!readAt(0, form, sizeof form) || !isId(form + 8, "WAVE"))
            return {};
        m_isLarge = isId(form, "RF64") || isId(form, "BW64");
        if (!m_isLarge && !isId(form, "RIFF"))
            return {};
        qint64 position = sizeof form;
        for (int chunk = 0; chunk < maximumChunks && position >= 0; ++chunk)
            position = readChunk(position);
        return m_hasFormat ? m_header : WavHeader();
    }

private:
    bool readAt(qint64 position, char* bytes, qint64 size)
    {
        return position + size <= m_size && m_device.seek(position) && m_device.read(bytes, size) == size;
    }

    // The position of the chunk that follows, -1 when there is none.
    qint64 readChunk(qint64 position)
    {
        char head[chunkHeadSize];
        if (!readAt(position, head, sizeof head))
            return -1;
        const qint64 begin = position + chunkHeadSize;
        const quint32 written = littleEndian<quint32>(head + 4);
        const qint64 rest = m_size - begin;
        qint64 size = written;
        if (isId(head, "data")) {
            size = dataSize(written, rest);
            if (!m_hasData)
                m_header.m_dataSize = static_cast<quint64>(size);
            m_hasData = true;
        } else if (isId(head, "fmt ") && !m_hasFormat) {
            readFormat(begin, size);
        } else if (isId(head, "ds64") && m_isLarge) {
            readLargeSizes(begin);
        } else if (isId(head, "auxi")) {
            m_header.m_hasAuxiliaryChunk = true;
        }
        return size < rest ? next(begin + size, size % 2 != 0) : -1;
    }

    qint64 dataSize(quint32 written, qint64 rest) const
    {
        if (written != sizeElsewhere)
            return std::min<qint64>(written, rest);
        // A writer that was cut short leaves this in a plain file as well.
        return m_largeDataSize <= static_cast<quint64>(rest) ? static_cast<qint64>(m_largeDataSize) : rest;
    }

    void readFormat(qint64 begin, qint64 size)
    {
        constexpr qint64 plainSize = 16;
        constexpr qint64 subFormatOffset = 24;
        char format[subFormatOffset + 2] = {};
        const qint64 wanted = size >= qint64(sizeof format) ? qint64(sizeof format) : plainSize;
        if (size < plainSize || !readAt(begin, format, wanted))
            return;
        auto tag = littleEndian<quint16>(format);
        if (tag == Extensible)
            tag = littleEndian<quint16>(format + subFormatOffset); // 0 if cut off
        if (tag != Pcm && tag != Float && tag != ALaw && tag != MuLaw)
            return;
        m_hasFormat = true;
        m_header.m_channelCount = littleEndian<quint16>(format + 2);
        m_header.m_sampleRate = littleEndian<quint32>(format + 4);
        m_header.m_bitsPerSample = littleEndian<quint16>(format + 14);
    }

    void readLargeSizes(qint64 begin)
    {
        char sizes[16]; // of the file and of the data
        if (readAt(begin, sizes, sizeof sizes))
            m_largeDataSize = littleEndian<quint64>(sizes + 8);
    }

    // An odd chunk is followed by a byte of padding, which some writers forget.
    qint64 next(qint64 end, bool isOdd)
    {
        char ids[5];
        if (!isOdd)
            return end;
        const bool forgotten = readAt(end, ids, sizeof ids) && isKnownId(ids) && !isKnownId(ids + 1);
        return forgotten ? end : end + 1;
    }

    QIODevice& m_device;
    qint64 m_size;
    WavHeader m_header;
    quint64 m_largeDataSize = sizeElsewhere * quint64(sizeElsewhere); // more than any file: all the rest
    bool m_isLarge = false;
    bool m_hasFormat = false;
    bool m_hasData = false;
};

WavHeader WavHeader::read(QIODevice& device)
{
    return WavReader(device).read();
}

} // namespace Utils
