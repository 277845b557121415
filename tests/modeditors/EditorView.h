#pragma once

#include <QStringList>

class QWidget;

// All that an editor shows of its item, a line for each widget.
[[nodiscard]] QStringList shownBy(const QWidget& editor);
