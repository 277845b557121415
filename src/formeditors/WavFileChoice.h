#pragma once

class QString;
class QWidget;

// Lets the user choose a WAV file, starting among the program's data. Empty when none was chosen. Runs an
// event loop, in which `panel` may be deleted.
[[nodiscard]] QString chooseWavFile(const QString& caption, const QString& filter, QWidget* panel);
