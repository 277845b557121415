#include "modeditors/WaveformListing.h"

#include "utils/NumberText.h"
#include "utils/WavFacts.h"

#include <QDirIterator>
#include <QFileInfo>
#include <algorithm>

QVector<WaveformEntry> listWaveforms(const QString& folder)
{
    QVector<WaveformEntry> entries;
    // Asks the file system for nothing but names and kinds: size and time of each would cost many times that.
    QDirIterator found(folder, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot);
    while (found.hasNext()) {
        found.next();
        const QString name = found.fileName();
        if (found.fileInfo().isDir()) {
            entries.append({WaveformEntry::Kind::Folder, name, found.filePath()});
        } else if (isNamedAsWaveform(name)) {
            entries.append(
                {WaveformEntry::Kind::File, name.left(name.lastIndexOf(QLatin1Char('.'))), found.filePath()});
        }
    }
    std::sort(entries.begin(), entries.end(), [](const WaveformEntry& left, const WaveformEntry& right) {
        return left.kind == right.kind ? left.path < right.path : left.kind == WaveformEntry::Kind::Folder;
    });
    return entries;
}

WaveformEntry parentOf(const QString& folder)
{
    return {WaveformEntry::Kind::Parent, QStringLiteral(".."),
            QFileInfo(QFileInfo(folder).path()).canonicalFilePath()};
}

bool isNamedAsWaveform(const QString& path)
{
    return path.endsWith(QLatin1String(".wav"), Qt::CaseInsensitive);
}

QString waveformFacts(const QString& path)
{
    const auto facts = Utils::readWavFacts(path);
    if (!facts) {
        return QStringLiteral("-");
    }
    constexpr quint64 thousand = 1000;
    const quint64 thousands =
        facts->sampleCount / thousand + (facts->sampleCount % thousand >= thousand / 2 ? 1 : 0);
    constexpr int decimals = 3;
    const QString span =
        facts->sampleRate > 0
            ? Utils::normalizeTimeSpan(double(facts->sampleCount) / facts->sampleRate, decimals)
            : QStringLiteral("-");
    return QStringLiteral("%1k / %2").arg(QString::number(thousands), span);
}
