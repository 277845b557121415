#include "controls/ElidedLabel.h"

#include "controls/ElidedText.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace Controls {

ElidedLabel::ElidedLabel(QWidget* parent, int lines)
    : QLabel(parent)
    , m_lines(lines)
{
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setLines(int lines)
{
    if (lines != m_lines) {
        m_lines = lines;
        updateGeometry();
        update();
    }
}

void ElidedLabel::setSmallestSize(int pixels)
{
    m_smallestSize = pixels;
    update();
}

void ElidedLabel::setElideMode(Qt::TextElideMode mode)
{
    m_elideMode = mode;
    update();
}

QStringList ElidedLabel::shownLines() const
{
    if (m_lines == 1) {
        const QFontMetrics metrics(fittingFont());
        return {metrics.elidedText(text(), m_elideMode, contentsRect().width())};
    }
    return elidedLines(text(), fittingFont(), contentsRect().width(), m_lines);
}

bool ElidedLabel::isCut() const
{
    return Controls::isCut(shownLines(), text());
}

QFont ElidedLabel::fittingFont() const
{
    QFont fitting = font();
    if (m_lines > 1 || m_smallestSize == 0) {
        return fitting;
    }
    const int width = contentsRect().width();
    int size = QFontInfo(fitting).pixelSize();
    while (size > m_smallestSize && QFontMetrics(fitting).horizontalAdvance(text()) > width) {
        fitting.setPixelSize(--size);
    }
    return fitting;
}

QSize ElidedLabel::sizeHint() const
{
    const QMargins margins = contentsMargins();
    const QFontMetrics metrics = fontMetrics();
    constexpr int roundedOff = 1; // advances are rounded, the elision is exact
    return {metrics.horizontalAdvance(text()) + roundedOff + margins.left() + margins.right(),
            metrics.height() * m_lines + margins.top() + margins.bottom()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawFrame(&painter);
    painter.setFont(fittingFont());
    const QString shown = shownLines().join(QLatin1Char('\n'));
    style()->drawItemText(&painter, contentsRect(), int(alignment()), palette(), isEnabled(), shown,
                          foregroundRole());
}

void ElidedLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        emit metricsChanged();
    }
}

} // namespace Controls
