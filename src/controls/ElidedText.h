#pragma once

#include <QFont>
#include <QStringList>

namespace Controls {

// The text as it is shown in `width` pixels: broken into at most `lines` lines, one entry each, the last one
// shortened with an ellipsis when the text does not fit.
[[nodiscard]] QStringList elidedLines(const QString& text, const QFont& font, int width, int lines);

// Whether such lines show less than the whole text.
[[nodiscard]] bool isCut(const QStringList& shownLines, const QString& text);

} // namespace Controls
