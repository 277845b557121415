#pragma once

#include <QDateTime>
#include <QStringList>
#include <QVector>
#include <optional>

// What a WAV file on the list says of itself.
struct StreamedFacts
{
    quint64 samples = 0;
    quint32 rate = 0; // Hz; may be 0

    friend bool operator==(const StreamedFacts& a, const StreamedFacts& b)
    {
        return a.samples == b.samples && a.rate == b.rate;
    }
};

// Nothing when the file cannot be read or is no WAV file.
[[nodiscard]] std::optional<StreamedFacts> probeStreamedFile(const QString& path);

// The files of a streaming list. Asked for the same list again it looks only at the sizes and times of the
// files, and into those that have changed or whose time is so fresh that it would not tell.
class StreamedFiles final
{
public:
    struct File
    {
        QString path;
        qint64 size;       // -1: there is none
        QDateTime changed; // its bytes or its rights
        bool settled;      // a change after this look gives it another time
        std::optional<StreamedFacts> facts;
    };

    // True when the list or anything known of its files is not what it was.
    [[nodiscard]] bool update(const QStringList& paths);

    [[nodiscard]] const QVector<File>& files() const { return m_files; }
    [[nodiscard]] QStringList paths() const;
    // Of all files that can be read.
    [[nodiscard]] quint64 totalSamples() const;

private:
    QVector<File> m_files;
};
