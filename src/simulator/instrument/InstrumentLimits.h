#pragma once

// What the simulated instrument can do, in one place.
namespace Simulator::InstrumentLimits {

inline constexpr double minimumHz = 9e3;
inline constexpr double maximumHz = 6e9;
inline constexpr double minimumDbm = -120;
inline constexpr double maximumDbm = 20;

// The baseband generator.
inline constexpr double bandwidthHz = 100e6;
inline constexpr double maximumSampleRateHz = 125e6;
inline constexpr double minimumSampleRateHz = 1e6; // slower waveforms are stored with more samples a symbol
inline constexpr double maximumSamples = 26214400; // of the waveform memory
inline constexpr double bytesOfSample = 4;         // I and Q, 16 bits each
inline constexpr double oneSampleSeconds = 1 / maximumSampleRateHz;
inline constexpr double maximumSeconds = maximumSamples / maximumSampleRateHz; // of a repeated waveform

} // namespace Simulator::InstrumentLimits
