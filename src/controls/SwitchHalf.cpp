#include "controls/SwitchHalf.h"

#include "controls/Marks.h"
#include "controls/ThemeManager.h"

#include <QPainter>
#include <QStyleOptionButton>

namespace Controls {
namespace {

constexpr int touchSize = 44; // pixels, as all of these
constexpr int usualWidth = 72;
constexpr int wordSize = 14;
constexpr int tickSize = 10;
constexpr int tickGap = 5;
constexpr int inset = 6;
constexpr int beforeWord = inset + tickSize + tickGap;
constexpr double disabledOpacity = 0.4;

QColor themed(ThemeManager::Role role)
{
    return ThemeManager::instance().color(role);
}

} // namespace

SwitchHalf::SwitchHalf(bool on, QWidget* parent)
    : QPushButton(parent)
    , m_on(on)
{
    setCheckable(true);
    setAutoDefault(false);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QFont word = font();
    word.setPixelSize(wordSize);
    word.setWeight(QFont::DemiBold);
    setFont(word);
}

QSize SwitchHalf::sizeHint() const
{
    ensurePolished();
    const int word = fontMetrics().horizontalAdvance(text()) + 1;
    return {qMax(usualWidth, word + 2 * beforeWord), touchSize};
}

QSize SwitchHalf::minimumSizeHint() const
{
    return {touchSize, touchSize};
}

void SwitchHalf::paintEvent(QPaintEvent*)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    // A disabled half looks like an enabled one, only fainter: which of the two is active must still be seen.
    option.state |= QStyle::State_Enabled;
    option.state &= ~QStyle::State_Sunken;
    option.palette.setCurrentColorGroup(QPalette::Active);
    QPainter painter(this);
    painter.setOpacity(isEnabled() ? 1.0 : disabledOpacity);
    paintBackground(painter, option);
    painter.setOpacity(1.0);
    paintWord(painter, option);
}

void SwitchHalf::paintBackground(QPainter& painter, const QStyleOptionButton& option)
{
    if (testAttribute(Qt::WA_StyleSheetTarget)) {
        style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, this);
    } else if (isChecked()) {
        painter.fillRect(rect(), themed(m_on ? ThemeManager::On : ThemeManager::Off));
    }
    if (isDown() && !isChecked()) {
        painter.fillRect(rect(), themed(ThemeManager::Pressed));
    }
}

void SwitchHalf::paintWord(QPainter& painter, QStyleOptionButton option)
{
    const auto activeRole = m_on ? ThemeManager::OnText : ThemeManager::Text;
    const QColor ink = themed(!isEnabled()  ? ThemeManager::DisabledText
                              : isChecked() ? activeRole
                                            : ThemeManager::SecondaryText);
    option.text = shownWord();
    option.rect = wordRect();
    if (isEnabled()) {
        option.palette.setColor(QPalette::ButtonText, ink); // a style sheet has the last word
        style()->drawControl(QStyle::CE_PushButtonLabel, &option, &painter, this);
    } else {
        painter.setPen(ink);
        painter.drawText(option.rect, Qt::AlignCenter | Qt::TextSingleLine, option.text);
    }
    if (isChecked()) {
        paintTick(painter, tickRect(), ink);
    }
}

void SwitchHalf::resizeEvent(QResizeEvent* event)
{
    QPushButton::resizeEvent(event);
    setToolTip(shownWord() == text() ? QString() : text());
}

// The second press of a double click would ask again for what the first has asked for, if the switch has been
// put back meanwhile until that is confirmed.
void SwitchHalf::mouseDoubleClickEvent(QMouseEvent*) {}

// In the middle; beside the mark when there the word would run into it.
QRect SwitchHalf::wordRect() const
{
    const int word = fontMetrics().horizontalAdvance(text()) + 1;
    if (word + 2 * beforeWord <= width()) {
        const int left = (width() - word) / 2;
        return QStyle::visualRect(layoutDirection(), rect(), {left, 0, word, height()});
    }
    return QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(beforeWord, 0, -inset, 0));
}

QRect SwitchHalf::tickRect() const
{
    const QRect word = QStyle::visualRect(layoutDirection(), rect(), wordRect());
    const QRect tick(word.left() - tickGap - tickSize, (height() - tickSize) / 2, tickSize, tickSize);
    return QStyle::visualRect(layoutDirection(), rect(), tick);
}

QString SwitchHalf::shownWord() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, wordRect().width());
}

} // namespace Controls
