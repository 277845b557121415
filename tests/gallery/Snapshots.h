#pragma once

#include <QJsonObject>

// What the main process says of the instrument, for the screens of the gallery.
namespace Snapshots {

// Everything off, short values, no sweep and no modulation.
[[nodiscard]] QJsonObject quiet();
// Everything on, with values as long as they come.
[[nodiscard]] QJsonObject busy();

// Changes of the sweep alone, as "sweep" has them: frequency plan, level plan, one that is not known,
// one that cannot be edited.
[[nodiscard]] QJsonObject frequencySweep();
[[nodiscard]] QJsonObject levelSweep();
[[nodiscard]] QJsonObject unknownSweep();
[[nodiscard]] QJsonObject lockedSweep();

// All items of galleryItems() as businesses, with `files` as the folder of sample files. An item's id is its
// screen.
[[nodiscard]] QJsonObject modulation(const QString& files);
// The same in the menu's own words: one business for each editor there is, named as the instrument names it.
[[nodiscard]] QJsonObject menu();

} // namespace Snapshots
