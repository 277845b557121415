#pragma once

#include <QtGlobal>

class QIODevice;

namespace Utils {

// What the header of a WAV file says. Read are RIFF, RF64 and BW64 (EBU Tech 3306, ITU-R BS.2088) with plain
// and extensible formats of PCM, float, A-law and mu-law samples, whatever the order of the chunks and
// whether odd ones are padded. Samples are never read: the cost does not depend on the size of the file.
class WavHeader final
{
public:
    // An invalid header.
    WavHeader() = default;
    // Reads from the device's beginning and leaves its position anywhere. The device is open for reading; one
    // that cannot be positioned (a pipe) gives an invalid header.
    [[nodiscard]] static WavHeader read(QIODevice& device);

    // A format of samples of at least one whole byte has been found.
    [[nodiscard]] bool isValid() const { return blockSize() > 0; }

    [[nodiscard]] quint16 channelCount() const { return m_channelCount; }
    [[nodiscard]] quint16 bitsPerSample() const { return m_bitsPerSample; }
    [[nodiscard]] quint32 sampleRate() const { return m_sampleRate; } // Hz; may be 0
    // Bytes of samples that the file really holds, however many the header promises; 0 without a data chunk.
    [[nodiscard]] quint64 dataSize() const { return m_dataSize; }
    // Bytes of one sample of every channel, from bits and channels; the header's own field is not believed.
    [[nodiscard]] quint32 blockSize() const { return m_bitsPerSample / 8U * m_channelCount; }
    // Samples of each channel; 0 for an invalid header.
    [[nodiscard]] quint64 sampleCount() const { return isValid() ? m_dataSize / blockSize() : 0; }
    // Two channels, in phase and quadrature, and the "auxi" chunk that the writers of such recordings leave.
    [[nodiscard]] bool isIqRecording() const
    {
        return isValid() && m_channelCount == 2 && m_hasAuxiliaryChunk;
    }

private:
    friend class WavReader;

    quint64 m_dataSize = 0;
    quint32 m_sampleRate = 0;
    quint16 m_channelCount = 0;
    quint16 m_bitsPerSample = 0;
    bool m_hasAuxiliaryChunk = false;
};

} // namespace Utils
