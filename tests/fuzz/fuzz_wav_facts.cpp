// The header of a WAV file: any bytes, never more samples than the file can hold.

#include "fuzz/Fuzzing.h"
#include "utils/WavHeader.h"

#include <QBuffer>

using Fuzzing::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray bytes = Fuzzing::bytes(data, size);
    QBuffer device(&bytes);
    require(device.open(QIODevice::ReadOnly), "a buffer can be opened");
    const Utils::WavHeader header = Utils::WavHeader::read(device);
    require(header.dataSize() <= size, "the data lie within the file");
    require(!header.isValid() || header.blockSize() > 0, "a sample has a size");
    require(header.isValid() || header.sampleCount() == 0, "an invalid header counts no samples");
    require(header.sampleCount() * header.blockSize() <= header.dataSize(),
            "the samples lie within the data");
    require(!header.isIqRecording() || (header.isValid() && header.channelCount() == 2),
            "an I/Q recording has two channels");
    return 0;
}
