#include "utils/WavFacts.h"

#include "utils/WavHeader.h"

#include <QFile>
#include <QFileInfo>

namespace Utils {
namespace {

WavHeader headerOf(const QString& path)
{
    // Opening a pipe would wait for somebody to write into it.
    if (!QFileInfo(path).isFile())
        return {};
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? WavHeader::read(file) : WavHeader();
}

} // namespace

bool probeIqsWav(const QString& path, IqsWavInfo& info)
{
    const WavHeader header = headerOf(path);
    if (!header.isIqRecording())
        return false;
    info = {header.sampleCount(), header.sampleRate()};
    return true;
}

// An I/Q recording's count and rate are those of its header like any other's.
std::optional<WavFacts> readWavFacts(const QString& path)
{
    const WavHeader header = headerOf(path);
    if (!header.isValid())
        return std::nullopt;
    return WavFacts{header.sampleCount(), header.sampleRate()};
}

} // namespace Utils
