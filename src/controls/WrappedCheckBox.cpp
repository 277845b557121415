#include "controls/WrappedCheckBox.h"

#include "controls/ElidedText.h"
#include "controls/Marks.h"

#include <QFocusEvent>
#include <QHelpEvent>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>

namespace Controls {
namespace {

constexpr int captionSize = 14; // pixels

} // namespace

WrappedCheckBox::WrappedCheckBox(QWidget* parent)
    : TellThenPaint(parent)
{
    QSizePolicy policy = sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Preferred);
    setSizePolicy(policy);
    QFont captionFont = font();
    captionFont.setPixelSize(captionSize);
    setFont(captionFont);
}

WrappedCheckBox::~WrappedCheckBox() = default;

QSize WrappedCheckBox::minimumSizeHint() const
{
    QStyleOptionButton option;
    initStyleOption(&option);
    return {style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this).left(), sizeHint().height()};
}

QStringList WrappedCheckBox::shownLines() const
{
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRect room = style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this);
    const int lines = std::max(1, contentsRect().height() / fontMetrics().height());
    return elidedLines(text(), font(), room.width(), lines);
}

bool WrappedCheckBox::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && isCut(shownLines(), text())) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QCheckBox::event(event);
}

void WrappedCheckBox::paintEvent(QPaintEvent*)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text = shownLines().join(QLatin1Char('\n'));
    QStylePainter painter(this);
    painter.drawControl(QStyle::CE_CheckBox, option);
    if (hasFocus() && m_focusByKeyboard) {
        paintFocusRing(painter, rect());
    }
}

void WrappedCheckBox::focusInEvent(QFocusEvent* event)
{
    m_focusByKeyboard = marksFocus(event->reason(), m_focusByKeyboard);
    QCheckBox::focusInEvent(event);
}

bool WrappedCheckBox::hitButton(const QPoint& position) const
{
    return rect().contains(position);
}

} // namespace Controls
