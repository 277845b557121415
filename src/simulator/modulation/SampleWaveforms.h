#pragma once

#include <QString>

namespace Simulator {

// Sees to it that the folder holds a few short signals to try the players with: a chirp, eight tones, and an
// I/Q recording of QPSK symbols in a folder of its own. Makes what is missing and leaves alone what is there;
// a folder that cannot be written stays as it is.
void provideSampleWaveforms(const QString& folder);

} // namespace Simulator
