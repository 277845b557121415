#include "controls/CommandButton.h"

#include "controls/ElidedText.h"
#include "controls/Emphasis.h"

#include <QHelpEvent>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolTip>

namespace {

constexpr int textSize = 15; // pixels, as all of these
constexpr int smallestSize = 12;
constexpr int inset = 10;
constexpr int touchSize = 44;
constexpr int usualHeight = 60;

} // namespace

CommandButton::CommandButton(QWidget* parent)
    : TellThenPaint(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    QFont textFont = font();
    textFont.setPixelSize(textSize);
    textFont.setWeight(Controls::emphasis());
    setFont(textFont);
}

CommandButton::~CommandButton() = default;

QSize CommandButton::sizeHint() const
{
    ensurePolished();
    return {fontMetrics().horizontalAdvance(text()) + 2 * inset, usualHeight};
}

QSize CommandButton::minimumSizeHint() const
{
    return {touchSize, usualHeight};
}

bool CommandButton::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && shownText() != text()) {
        const QStringList tips = {text(), toolTip()};
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           tips.join(QLatin1Char('\n')).trimmed(), this);
        return true;
    }
    return QPushButton::event(event);
}

void CommandButton::paintEvent(QPaintEvent*)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text = shownText();
    QStylePainter painter(this);
    painter.setFont(fittingFont());
    painter.drawControl(QStyle::CE_PushButton, option);
}

QFont CommandButton::fittingFont() const
{
    return Controls::fittingFont(font(), text(), width() - 2 * inset, smallestSize);
}

QString CommandButton::shownText() const
{
    return QFontMetrics(fittingFont()).elidedText(text(), Qt::ElideRight, width() - 2 * inset);
}
