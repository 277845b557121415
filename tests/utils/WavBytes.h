#pragma once

#include <QByteArray>
#include <QtEndian>

// Puts WAV files together, byte by byte.
namespace WavBytes {

template <typename Number>
QByteArray little(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

// A chunk with its padding; `size` is what it says of itself, its own size if negative.
inline QByteArray chunk(const QByteArray& id, const QByteArray& content, qint64 size = -1, bool padded = true)
{
    QByteArray bytes = id + little(quint32(size < 0 ? content.size() : size)) + content;
    if (padded && content.size() % 2 != 0)
        bytes += '\0';
    return bytes;
}

inline QByteArray format(quint16 tag, quint16 channels, quint32 rate, quint16 bits)
{
    const auto block = quint16(bits / 8 * channels);
    return little(tag) + little(channels) + little(rate) + little(rate * block) + little(block) +
           little(bits);
}

// The extensible form: 24 valid bits may stand in 32.
inline QByteArray extensible(quint16 subFormat, quint16 channels, quint32 rate, quint16 bits)
{
    return format(0xFFFE, channels, rate, bits) + little(quint16(22)) + little(bits) + little(quint32(0)) +
           little(subFormat) + QByteArray::fromHex("000000001000800000aa00389b71");
}

inline QByteArray file(const QByteArray& chunks, const QByteArray& form = "RIFF")
{
    return form + little(quint32(form == "RIFF" ? chunks.size() + 4 : -1)) + "WAVE" + chunks;
}

inline QByteArray fmt(quint16 tag = 1, quint16 channels = 2, quint32 rate = 48000, quint16 bits = 16)
{
    return chunk("fmt ", format(tag, channels, rate, bits));
}

// Sizes of the file, the data and the samples, and an empty table.
inline QByteArray ds64(quint64 dataSize)
{
    return chunk("ds64", little(quint64(0)) + little(dataSize) + little(quint64(0)) + little(quint32(0)));
}

inline QByteArray samples(int bytes)
{
    return QByteArray(bytes, '\x5a');
}

} // namespace WavBytes
