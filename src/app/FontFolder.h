#pragma once

#include <QString>

// Makes the fonts in `folder`, and in all folders below it, known to the application through fontconfig,
// which keeps in its cache what it has read of a folder once. QFontDatabase::addApplicationFont reads each
// font whole at every start. `files` is the number of font files there. False when not all of them are known
// then: some are broken or the user's configuration rejects them, or the toolkit had looked for fonts before.
// Those that are known may be added once more.
[[nodiscard]] bool addFontFolder(const QString& folder, int files);
