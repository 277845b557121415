#include "simulator/modulation/WaveformFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QtEndian>

#include <algorithm>

namespace Simulator {

namespace {

constexpr int riffHeaderSize = 12; // "RIFF", size, "WAVE"
constexpr int chunkHeaderSize = 8; // name, size
constexpr int formatSize = 16;     // what a "fmt " chunk holds at least

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

template <typename Number>
Number numberAt(const QByteArray& bytes, int position)
{
    return qFromLittleEndian<Number>(bytes.constData() + position);
}

struct Chunks
{
    QByteArray format;
    qint64 dataSize = -1; // bytes of it that are in the file
    bool hasAux = false;
};

// Walks over the chunks without reading their content.
Chunks chunksOf(QFile& file)
{
    Chunks chunks;
    for (;;) {
        const QByteArray header = file.read(chunkHeaderSize);
        if (header.size() < chunkHeaderSize)
            return chunks;
        const QByteArray name = header.left(4);
        const qint64 size = numberAt<quint32>(header, 4);
        const qint64 begin = file.pos();
        if (name == "fmt ")
            chunks.format = file.read(std::min<qint64>(size, formatSize));
        else if (name == "data")
            chunks.dataSize = std::min(size, file.size() - begin);
        else if (name == "auxi")
            chunks.hasAux = true;
        // Chunks begin at even positions.
        if (!file.seek(begin + size + size % 2))
            return chunks;
    }
}

} // namespace

std::optional<WaveformFacts> readWaveformFacts(const QString& path, QString& fault)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fault = translated("'%1' cannot be read: %2.").arg(path, file.errorString());
        return std::nullopt;
    }
    fault = translated("'%1' is no WAV file.").arg(path);
    const QByteArray riff = file.read(riffHeaderSize);
    if (!riff.startsWith("RIFF") || !riff.endsWith("WAVE") || riff.size() < riffHeaderSize)
        return std::nullopt;
    const Chunks chunks = chunksOf(file);
    if (chunks.format.size() < formatSize || chunks.dataSize < 0)
        return std::nullopt;
    const int channels = numberAt<quint16>(chunks.format, 2);
    const int bytesOfValue = numberAt<quint16>(chunks.format, 14) / 8;
    const auto sampleRate = numberAt<quint32>(chunks.format, 4);
    const qint64 block = qint64(channels) * bytesOfValue;
    if (block == 0 || sampleRate == 0)
        return std::nullopt;
    const auto samples = static_cast<double>(chunks.dataSize / block);
    if (samples == 0) {
        fault = translated("'%1' holds no samples.").arg(path);
        return std::nullopt;
    }
    fault.clear();
    return WaveformFacts{samples, static_cast<double>(sampleRate), channels == 2 && chunks.hasAux};
}

} // namespace Simulator
