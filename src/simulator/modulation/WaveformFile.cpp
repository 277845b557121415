#include "simulator/modulation/WaveformFile.h"

#include "utils/WavHeader.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace Simulator {

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

} // namespace

std::optional<WaveformFacts> readWaveformFacts(const QString& path, QString& fault)
{
    QFile file(path);
    // A folder or a pipe opens as well, and the pipe only with its writer.
    const bool isOther = QFileInfo::exists(path) && !QFileInfo(path).isFile();
    if (!isOther && !file.open(QIODevice::ReadOnly)) {
        fault = translated("'%1' cannot be read: %2.").arg(path, file.errorString());
        return std::nullopt;
    }
    const Utils::WavHeader header = isOther ? Utils::WavHeader() : Utils::WavHeader::read(file);
    if (!header.isValid() || header.sampleRate() == 0) {
        fault = translated("'%1' is no WAV file.").arg(path);
        return std::nullopt;
    }
    if (header.sampleCount() == 0) {
        fault = translated("'%1' holds no samples.").arg(path);
        return std::nullopt;
    }
    fault.clear();
    return WaveformFacts{static_cast<double>(header.sampleCount()), static_cast<double>(header.sampleRate()),
                         header.isIqRecording()};
}

} // namespace Simulator
