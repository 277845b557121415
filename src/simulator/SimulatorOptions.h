#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>

#include <optional>

namespace Simulator {

// The command line of TarvinelSimulator.
struct SimulatorOptions
{
    QString helper;               // path of the mini bar
    QString scenario;             // path of a scenario file, empty for none
    QString waveforms;            // folder of the quick waveforms
    bool ownWaveforms = true;     // nobody has named it: signals to try are put there
    std::optional<QPoint> anchor; // where the bar is to stand instead of at the main window's corner
    bool minimised = false;       // begin with the bar
    bool printTraffic = false;    // the conversation on standard output
    bool window = true;           // false: no main window
    bool exitAfterClose = false;  // end when the mini bar has ended
};

enum class OptionsResult { Run, Help, Invalid };

// arguments: with the program in front. `text` gets what is to be printed for Help and Invalid.
[[nodiscard]] OptionsResult parseOptions(const QStringList& arguments, SimulatorOptions& options,
                                         QString& text);

} // namespace Simulator
