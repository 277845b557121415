#include "formeditors/StreamedFiles.h"

#include "utils/WavFacts.h"

#include <QFileInfo>
#include <QHash>

namespace {

constexpr qint64 coarsestClock = 2000; // ms between two times that a file can have

} // namespace

std::optional<StreamedFacts> probeStreamedFile(const QString& path)
{
    Utils::IqsWavInfo recording;
    if (Utils::probeIqsWav(path, recording))
        return StreamedFacts{recording.sampleCount, recording.sampleRate};
    const std::optional<Utils::WavFacts> facts = Utils::readWavFacts(path);
    if (!facts)
        return std::nullopt;
    // The instrument counts the samples of a plain file with 32 bits.
    return StreamedFacts{static_cast<quint32>(facts->sampleCount), facts->sampleRate};
}

bool StreamedFiles::update(const QStringList& paths)
{
    QHash<QString, const File*> known;
    for (const File& file : qAsConst(m_files))
        known.insert(file.path, &file);

    const QDateTime now = QDateTime::currentDateTime();
    QVector<File> files;
    files.reserve(paths.size());
    bool differs = paths != this->paths();
    for (const QString& path : paths) {
        const QFileInfo info(path);
        const QDateTime changed = info.fileTime(QFileDevice::FileMetadataChangeTime);
        const bool settled = !changed.isValid() || changed.msecsTo(now) > coarsestClock;
        File file{path, info.isFile() ? info.size() : -1, changed, settled, std::nullopt};
        const File* const before = known.value(path);
        const bool isKnown =
            before && before->settled && before->size == file.size && before->changed == file.changed;
        file.facts = isKnown ? before->facts : probeStreamedFile(path);
        differs = differs || !before || !(file.facts == before->facts);
        files.append(file);
    }
    m_files = files;
    return differs;
}

QStringList StreamedFiles::paths() const
{
    QStringList paths;
    paths.reserve(m_files.size());
    for (const File& file : m_files)
        paths.append(file.path);
    return paths;
}

quint64 StreamedFiles::totalSamples() const
{
    quint64 total = 0;
    for (const File& file : m_files)
        total += file.facts ? file.facts->samples : 0;
    return total;
}
