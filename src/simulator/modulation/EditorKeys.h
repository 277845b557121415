#pragma once

#include "link/LatinWord.h"

// The vocabulary of editor states and profiles, as the main process spells it: every key once, named as its
// word.
namespace Simulator::EditorKeys {

// Digital, DSSS and OFDM: state.
inline constexpr QLatin1String SymbolRate = MinibarHelperProtocol::latinWord("SymbolRate");
inline constexpr QLatin1String FilterAlpha = MinibarHelperProtocol::latinWord("FilterAlpha");
inline constexpr QLatin1String FSKDeviation = MinibarHelperProtocol::latinWord("FSKDeviation");
inline constexpr QLatin1String SequenceSeed = MinibarHelperProtocol::latinWord("SequenceSeed");
inline constexpr QLatin1String PN = MinibarHelperProtocol::latinWord("PN");
inline constexpr QLatin1String FilterLength = MinibarHelperProtocol::latinWord("FilterLength");
inline constexpr QLatin1String ModulationType = MinibarHelperProtocol::latinWord("ModulationType");
inline constexpr QLatin1String FilterType = MinibarHelperProtocol::latinWord("FilterType");
inline constexpr QLatin1String Oversample = MinibarHelperProtocol::latinWord("Oversample");
inline constexpr QLatin1String Code = MinibarHelperProtocol::latinWord("Code");
inline constexpr QLatin1String FFTSize = MinibarHelperProtocol::latinWord("FFTSize");
inline constexpr QLatin1String SymbolCount = MinibarHelperProtocol::latinWord("SymbolCount");
inline constexpr QLatin1String GuardBandCarriersLeft =
    MinibarHelperProtocol::latinWord("GuardBandCarriersLeft");
inline constexpr QLatin1String GuardBandCarriersRight =
    MinibarHelperProtocol::latinWord("GuardBandCarriersRight");
inline constexpr QLatin1String GuardInterval = MinibarHelperProtocol::latinWord("GuardInterval");
inline constexpr QLatin1String WindowLength = MinibarHelperProtocol::latinWord("WindowLength");
inline constexpr QLatin1String NullDC = MinibarHelperProtocol::latinWord("NullDC");
inline constexpr QLatin1String Windowed = MinibarHelperProtocol::latinWord("Windowed");

// Digital and DSSS: profile.
inline constexpr QLatin1String defaultTrimDownload = MinibarHelperProtocol::latinWord("defaultTrimDownload");
inline constexpr QLatin1String trimmedDownloadRequired =
    MinibarHelperProtocol::latinWord("trimmedDownloadRequired");
inline constexpr QLatin1String fullWaveformEstimatedBytes =
    MinibarHelperProtocol::latinWord("fullWaveformEstimatedBytes");
inline constexpr QLatin1String filterAlphaEditable = MinibarHelperProtocol::latinWord("filterAlphaEditable");
inline constexpr QLatin1String fskDeviationEditable =
    MinibarHelperProtocol::latinWord("fskDeviationEditable");
inline constexpr QLatin1String modulationTypeOptions =
    MinibarHelperProtocol::latinWord("modulationTypeOptions");
inline constexpr QLatin1String filterTypeOptions = MinibarHelperProtocol::latinWord("filterTypeOptions");
inline constexpr QLatin1String oversampleOptions = MinibarHelperProtocol::latinWord("oversampleOptions");

// Multitone: state, profile and candidate tones.
inline constexpr QLatin1String PhaseMode = MinibarHelperProtocol::latinWord("PhaseMode");
inline constexpr QLatin1String Seed = MinibarHelperProtocol::latinWord("Seed");
inline constexpr QLatin1String Count = MinibarHelperProtocol::latinWord("Count");
inline constexpr QLatin1String FreqSpacing = MinibarHelperProtocol::latinWord("FreqSpacing");
inline constexpr QLatin1String NotchWidth = MinibarHelperProtocol::latinWord("NotchWidth");
inline constexpr QLatin1String randomMode = MinibarHelperProtocol::latinWord("randomMode");
inline constexpr QLatin1String discreteKeepToneMode =
    MinibarHelperProtocol::latinWord("discreteKeepToneMode");
inline constexpr QLatin1String countMaximum = MinibarHelperProtocol::latinWord("countMaximum");
inline constexpr QLatin1String freqSpacingMaximum = MinibarHelperProtocol::latinWord("freqSpacingMaximum");
inline constexpr QLatin1String candidateTones = MinibarHelperProtocol::latinWord("candidateTones");
inline constexpr QLatin1String requestedFrequency = MinibarHelperProtocol::latinWord("requestedFrequency");
inline constexpr QLatin1String latticeIndex = MinibarHelperProtocol::latinWord("latticeIndex");

// Analog, pulse, ramp and noise: state.
inline constexpr QLatin1String Rate = MinibarHelperProtocol::latinWord("Rate");
inline constexpr QLatin1String Depth = MinibarHelperProtocol::latinWord("Depth");
inline constexpr QLatin1String Shape = MinibarHelperProtocol::latinWord("Shape");
inline constexpr QLatin1String Deviation = MinibarHelperProtocol::latinWord("Deviation");
inline constexpr QLatin1String PhaseDeviation = MinibarHelperProtocol::latinWord("PhaseDeviation");
inline constexpr QLatin1String InitPhase = MinibarHelperProtocol::latinWord("InitPhase");
inline constexpr QLatin1String Width = MinibarHelperProtocol::latinWord("Width");
inline constexpr QLatin1String Period = MinibarHelperProtocol::latinWord("Period");
inline constexpr QLatin1String Span = MinibarHelperProtocol::latinWord("Span");
inline constexpr QLatin1String SweepTime = MinibarHelperProtocol::latinWord("SweepTime");
inline constexpr QLatin1String Bandwith = MinibarHelperProtocol::latinWord("Bandwith");
inline constexpr QLatin1String Length = MinibarHelperProtocol::latinWord("Length");

// Quick waveform: state and profile.
inline constexpr QLatin1String currentPath = MinibarHelperProtocol::latinWord("currentPath");
inline constexpr QLatin1String autoScale = MinibarHelperProtocol::latinWord("autoScale");
inline constexpr QLatin1String iQScale = MinibarHelperProtocol::latinWord("iQScale");
inline constexpr QLatin1String sampleRate = MinibarHelperProtocol::latinWord("sampleRate");
inline constexpr QLatin1String period = MinibarHelperProtocol::latinWord("period");
inline constexpr QLatin1String samplesToUse = MinibarHelperProtocol::latinWord("samplesToUse");
inline constexpr QLatin1String sampleOffset = MinibarHelperProtocol::latinWord("sampleOffset");
inline constexpr QLatin1String periodLength = MinibarHelperProtocol::latinWord("periodLength");
inline constexpr QLatin1String signalLength = MinibarHelperProtocol::latinWord("signalLength");
inline constexpr QLatin1String loadedFilePath = MinibarHelperProtocol::latinWord("loadedFilePath");
inline constexpr QLatin1String rootPath = MinibarHelperProtocol::latinWord("rootPath");
inline constexpr QLatin1String loadInProgress = MinibarHelperProtocol::latinWord("loadInProgress");
inline constexpr QLatin1String iqsWavLoaded = MinibarHelperProtocol::latinWord("iqsWavLoaded");
inline constexpr QLatin1String loadError = MinibarHelperProtocol::latinWord("loadError");
inline constexpr QLatin1String samplesInFile = MinibarHelperProtocol::latinWord("samplesInFile");

// Playback and streaming: state and profile.
inline constexpr QLatin1String FileName = MinibarHelperProtocol::latinWord("FileName");
inline constexpr QLatin1String AutoScale = MinibarHelperProtocol::latinWord("AutoScale");
inline constexpr QLatin1String IQScale = MinibarHelperProtocol::latinWord("IQScale");
inline constexpr QLatin1String SampleRate = MinibarHelperProtocol::latinWord("SampleRate");
inline constexpr QLatin1String SampleOffset = MinibarHelperProtocol::latinWord("SampleOffset");
inline constexpr QLatin1String SamplesToUse = MinibarHelperProtocol::latinWord("SamplesToUse");
inline constexpr QLatin1String FileList = MinibarHelperProtocol::latinWord("FileList");
inline constexpr QLatin1String autoScaleLocked = MinibarHelperProtocol::latinWord("autoScaleLocked");
inline constexpr QLatin1String sampleOffsetEditable =
    MinibarHelperProtocol::latinWord("sampleOffsetEditable");
inline constexpr QLatin1String samplesToUseEditable =
    MinibarHelperProtocol::latinWord("samplesToUseEditable");
inline constexpr QLatin1String periodEditable = MinibarHelperProtocol::latinWord("periodEditable");

// Argument of select-file.
inline constexpr QLatin1String path = MinibarHelperProtocol::latinWord("path");

} // namespace Simulator::EditorKeys
