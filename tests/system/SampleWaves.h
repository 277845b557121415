#pragma once

#include <QString>
#include <QVector>

// Waveform files as they come from elsewhere, made when a test begins.
struct SampleWave
{
    QString file; // below the folder
    double samples;
    double rate;   // Hz
    QString facts; // as the browser shows them
};

// Writes them, a folder with one more, and things that are no waveforms; nothing when a tool is missing. They
// are in the order of the browser.
[[nodiscard]] QVector<SampleWave> writeSampleWaves(const QString& folder);
