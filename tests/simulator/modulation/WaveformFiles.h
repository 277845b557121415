#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtEndian>

// A number as it stands in a WAV file.
template <typename Number>
QByteArray littleEndian(Number number)
{
    QByteArray bytes(int(sizeof number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

inline QByteArray chunk(const QByteArray& name, const QByteArray& content)
{
    return name + littleEndian<quint32>(quint32(content.size())) + content +
           (content.size() % 2 ? QByteArray(1, '\0') : QByteArray());
}

inline QByteArray formatChunk(int channels, int sampleRate, int bits = 16)
{
    const int block = channels * bits / 8;
    return chunk("fmt ", littleEndian<quint16>(1) + littleEndian(quint16(channels)) +
                             littleEndian(quint32(sampleRate)) + littleEndian(quint32(sampleRate * block)) +
                             littleEndian(quint16(block)) + littleEndian(quint16(bits)));
}

inline QByteArray riff(const QByteArray& chunks)
{
    return chunk("RIFF", "WAVE" + chunks);
}

// A stereo file of that many samples; an I/Q recording has an "auxi" chunk besides.
inline QByteArray wav(int samples, int sampleRate, bool recording = false)
{
    return riff(formatChunk(2, sampleRate) + (recording ? chunk("auxi", "???") : QByteArray()) +
                chunk("data", QByteArray(samples * 4, '\0')));
}

// A folder of waveforms that goes with the case.
class WaveformFolder final
{
public:
    [[nodiscard]] QString path() const { return QFileInfo(m_folder.path()).canonicalFilePath(); }
    // Writes the file and gives its path.
    QString add(const QString& name, const QByteArray& bytes)
    {
        const QString path = this->path() + QLatin1Char('/') + name;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("Cannot write %s", qUtf8Printable(path));
        return path;
    }

private:
    QTemporaryDir m_folder;
};
