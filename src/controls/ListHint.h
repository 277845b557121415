#pragma once

class QAbstractItemView;
class QString;

namespace Controls {

// Writes into the middle of a list what is to be read where it has no entry. To be called at the end of its
// paintEvent(). `listed`: the height of the entries that it has, in pixels from the top.
void paintListHint(QAbstractItemView& list, const QString& hint, int listed = 0);

} // namespace Controls
