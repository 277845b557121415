#include "controls/KeypadKey.h"

#include "controls/ElidedText.h"

#include <QKeyEvent>

namespace Controls {
namespace {

constexpr int smallestFont = 12; // pixels
constexpr int inset = 4;

} // namespace

KeypadKey::KeypadKey(const QString& label, int fontSize, QWidget* parent)
    : TellThenPaint(label, parent)
    , m_label(label)
    , m_fontSize(fontSize)
{
    setAutoDefault(false);
    setFocusPolicy(Qt::TabFocus);
}

void KeypadKey::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space) {
        TellThenPaint::keyPressEvent(event);
    } else {
        event->ignore();
    }
}

void KeypadKey::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space) {
        TellThenPaint::keyReleaseEvent(event);
    } else {
        event->ignore();
    }
}

void KeypadKey::resizeEvent(QResizeEvent* event)
{
    QPushButton::resizeEvent(event);
    fitLabel();
}

bool KeypadKey::event(QEvent* event)
{
    const bool handled = QPushButton::event(event);
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange) {
        fitLabel();
    }
    return handled;
}

void KeypadKey::fitLabel()
{
    const int room = width() - 2 * inset;
    QFont usual = font();
    usual.setPixelSize(m_fontSize);
    const QFont fitting = fittingFont(usual, m_label, room, smallestFont);
    if (fitting.pixelSize() != font().pixelSize()) {
        setFont(fitting);
    }
    const QString shown = fontMetrics().elidedText(m_label, Qt::ElideRight, room);
    if (shown != text()) {
        setText(shown);
        setToolTip(shown == m_label ? QString() : m_label);
    }
}

} // namespace Controls
