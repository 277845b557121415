#pragma once

#include <QFont>
#include <QStringList>

namespace Controls {

// The text as it is shown in `width` pixels: broken into at most `lines` lines, one entry each, the last one
// shortened with an ellipsis when the text does not fit.
[[nodiscard]] QStringList elidedLines(const QString& text, const QFont& font, int width, int lines);

// Whether such lines show less than the whole text.
[[nodiscard]] bool isCut(const QStringList& shownLines, const QString& text);

// The font, or a smaller one if the text is wider in it than `width` pixels; not below `smallest` pixels.
[[nodiscard]] QFont fittingFont(const QFont& font, const QString& text, int width, int smallest);

} // namespace Controls
