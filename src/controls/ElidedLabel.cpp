#include "controls/ElidedLabel.h"

#include "controls/ElidedText.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace Controls {

namespace {

constexpr int roundedOff = 1; // advances are rounded, the elision is exact

} // namespace

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

// Measuring shapes the text, which is the dearest thing that happens to a label; most texts are asked for
// often.
int ElidedLabel::textWidth() const
{
    const QString now = text();
    if (m_measuredWidth < 0 || m_measuredText != now) {
        m_measuredText = now;
        m_measuredWidth = fontMetrics().horizontalAdvance(now) + roundedOff;
    }
    return m_measuredWidth;
}

// The whole text stands in one line, in full size.
bool ElidedLabel::fits() const
{
    return textWidth() <= contentsRect().width();
}

QStringList ElidedLabel::shownLines() const
{
    if (fits()) {
        return {text()};
    }
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
    if (m_lines > 1 || m_smallestSize == 0 || fits()) {
        return font();
    }
    return Controls::fittingFont(font(), text(), contentsRect().width(), m_smallestSize);
}

QSize ElidedLabel::sizeHint() const
{
    const QMargins margins = contentsMargins();
    return {textWidth() + margins.left() + margins.right(),
            fontMetrics().height() * m_lines + margins.top() + margins.bottom()};
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
        m_measuredWidth = -1;
        emit metricsChanged();
    }
}

} // namespace Controls
