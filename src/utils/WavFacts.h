#pragma once

#include <QString>

#include <optional>

namespace Utils {

// An I/Q recording: a WAV file of two channels, in phase and quadrature, with an "auxi" chunk.
struct IqsWavInfo
{
    quint64 sampleCount = 0; // I/Q pairs
    quint32 sampleRate = 0;  // Hz; may be 0
};

// False, with `info` untouched, when the path leads to no I/Q recording. Reads the header only.
[[nodiscard]] bool probeIqsWav(const QString& path, IqsWavInfo& info);

// The facts of a WAV file of either sort.
struct WavFacts
{
    quint64 sampleCount = 0; // of each channel
    quint32 sampleRate = 0;  // Hz; may be 0
};

// Nothing when the path leads to no file, to one that cannot be opened, or to one that is no WAV file.
[[nodiscard]] std::optional<WavFacts> readWavFacts(const QString& path);

} // namespace Utils
