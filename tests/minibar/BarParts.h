#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QPushButton>
#include <QVector>

class LabelButton;
class QWidget;

namespace Controls {
class TouchNumKeyboard;
}

// The bar's pages and buttons, found as a style sheet would find them. All stay the window's own.
namespace BarParts {

// The object of a JSON text.
[[nodiscard]] QJsonObject json(const QByteArray& text);

[[nodiscard]] QWidget* collapsed(const QWidget& window);
[[nodiscard]] QWidget* expanded(const QWidget& window);
// The info buttons of a page, top to bottom.
[[nodiscard]] QVector<LabelButton*> infoButtons(const QWidget* page);
// The push button of a page by its text; null if there is none.
[[nodiscard]] QPushButton* pushButton(const QWidget* page, const char* text);
// The numeric keyboard that is shown; null if there is none.
[[nodiscard]] Controls::TouchNumKeyboard* keyboard(const QWidget& window);

void click(QWidget* widget);

} // namespace BarParts
