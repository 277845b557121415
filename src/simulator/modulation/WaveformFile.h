#pragma once

#include <QString>

#include <optional>

namespace Simulator {

// What the header of a waveform file tells.
struct WaveformFacts
{
    double samples = 0;         // of each channel; for an I/Q recording: pairs
    double sampleRateHz = 0;    // above 0
    bool isIqRecording = false; // two channels and an "auxi" chunk
};

// Reads the header only, whatever the size of the file. Nothing when the file cannot be read or is no WAV
// file; `fault` then says so in a sentence.
[[nodiscard]] std::optional<WaveformFacts> readWaveformFacts(const QString& path, QString& fault);

} // namespace Simulator
