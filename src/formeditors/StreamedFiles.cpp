#include "formeditors/StreamedFiles.h"

#include "utils/WavFacts.h"

#include <QFileInfo>
#include <QHash>

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

    QVector<File> files;
    files.reserve(paths.size());
    bool differs = paths != this->paths();
    for (const QString& path : paths) {
        const QFileInfo info(path);
        File file{path, info.isFile() ? info.size() : -1, info.fileTime(QFileDevice::FileMetadataChangeTime),
                  std::nullopt};
        const File* const before = known.value(path);
        if (before && before->size == file.size && before->changed == file.changed) {
            file.facts = before->facts;
        } else {
            file.facts = probeStreamedFile(path);
            differs = true;
        }
        files.append(file);
    }
    if (differs)
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
