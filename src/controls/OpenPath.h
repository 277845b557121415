#pragma once

#include <QFileDialog>
#include <QString>

namespace Controls {

// Lets the user choose an existing file, or with `directory` a folder, and gives its absolute path; empty
// when nothing was chosen. `folder`: where the choice starts. `filter`: as QFileDialog has it.
//
// The toolkit's own dialog, on top of everything else of the program. Nothing in it renames or deletes a
// file, and it leaves no trace on the disk: no history, no places, no sizes.
//
// Runs an event loop. When `parent` hides or is deleted meanwhile, nothing is chosen; the caller must be
// prepared to be gone afterwards.
[[nodiscard]] QString getOpenPath(const QString& folder, bool directory = false, const QString& caption = {},
                                  const QString& filter = {}, QWidget* parent = nullptr,
                                  QFileDialog::Options options = {});

} // namespace Controls
