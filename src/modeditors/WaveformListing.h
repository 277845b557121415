#pragma once

#include <QString>
#include <QVector>

// One row of the browser of waveforms.
struct WaveformEntry
{
    enum class Kind { Parent, Folder, File };

    Kind kind = Kind::File;
    QString name;       // as it is shown
    QString path;       // absolute
    QString facts = {}; // waveformFacts() of a file, once they have been read
};

// The folders of a folder and its WAV files, by name, the folders first. Nothing when it cannot be read. The
// folder is an absolute path.
[[nodiscard]] QVector<WaveformEntry> listWaveforms(const QString& folder);

// The row ".." of a folder.
[[nodiscard]] WaveformEntry parentOf(const QString& folder);

// Whether the path ends as that of a WAV file does.
[[nodiscard]] bool isNamedAsWaveform(const QString& path);

// Length of a WAV file in samples and in time, as it is shown: "48k / 1s". "-" when there is no such file or
// it is none.
[[nodiscard]] QString waveformFacts(const QString& path);
