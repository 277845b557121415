#pragma once

#include <QFont>

namespace Controls {

// The weight of what stands out: values, titles, the words of a switch. Widgets take it when they are built.
[[nodiscard]] QFont::Weight emphasis();
void setEmphasis(QFont::Weight weight);

} // namespace Controls
