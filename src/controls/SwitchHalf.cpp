#include "controls/SwitchHalf.h"

#include "controls/ElidedText.h"
#include "controls/Emphasis.h"
#include "controls/Marks.h"
#include "controls/ThemeManager.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyleOptionButton>
#include <QtMath>

namespace Controls {
namespace {

constexpr int touchSize = 44; // pixels, as all of these
constexpr int usualWidth = 72;
constexpr int wordSize = 14;
constexpr int smallestWordSize = 12;
constexpr int tickSize = 10;
constexpr int tickGap = 5;
constexpr int markWidth = tickSize + tickGap;
constexpr int inset = 6;
constexpr int roundedOff = 1; // advances are rounded, the elision is exact
constexpr double disabledOpacity = 0.4;

QColor themed(ThemeManager::Role role)
{
    return ThemeManager::instance().color(role);
}

} // namespace

SwitchHalf::SwitchHalf(bool on, QWidget* parent)
    : TellThenPaint(parent)
    , m_on(on)
{
    setCheckable(true);
    setAutoDefault(false);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QFont word = font();
    word.setPixelSize(wordSize);
    word.setWeight(emphasis());
    setFont(word);
}

void SwitchHalf::setWords(const QString& own, const QString& other)
{
    m_otherWord = other;
    setText(own);
    updateGeometry();
    if (testAttribute(Qt::WA_WState_Polished)) {
        tellCutWord();
    }
}

QSize SwitchHalf::sizeHint() const
{
    ensurePolished();
    const int word = fontMetrics().horizontalAdvance(widerWord()) + roundedOff;
    return {qMax(usualWidth, markWidth + word + 2 * inset), touchSize};
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
    const auto quietRole = isEnabled() ? ThemeManager::SecondaryText : ThemeManager::DisabledText;
    // On the faint colour of the active half the text of a disabled control would hardly be seen.
    const auto markedRole = isEnabled() ? activeRole : ThemeManager::SecondaryText;
    const QColor ink = themed(isChecked() ? markedRole : quietRole);
    painter.setFont(wordFont());
    option.text = shownWord(isChecked());
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
    tellCutWord();
}

// The second press of a double click would ask again for what the first has asked for, if the switch has been
// put back meanwhile until that is confirmed.
void SwitchHalf::mouseDoubleClickEvent(QMouseEvent*) {}

QString SwitchHalf::widerWord() const
{
    const QFontMetrics metrics = fontMetrics();
    const bool own = metrics.horizontalAdvance(text()) >= metrics.horizontalAdvance(m_otherWord);
    return own ? text() : m_otherWord;
}

// Of one size in both halves, whichever is active: nothing but the mark comes and goes.
QFont SwitchHalf::wordFont() const
{
    return fittingFont(font(), widerWord(), width() - 2 * inset - markWidth - roundedOff, smallestWordSize);
}

QString SwitchHalf::shownWord(bool besideMark) const
{
    const int room = width() - 2 * inset - (besideMark ? markWidth : 0);
    return QFontMetrics(wordFont()).elidedText(text(), Qt::ElideRight, room);
}

QRect SwitchHalf::wordRect() const
{
    if (!isChecked()) {
        return rect();
    }
    const double word = QFontMetricsF(wordFont()).horizontalAdvance(shownWord(true));
    const int left = qRound((width() - markWidth - word) / 2) + markWidth;
    return QStyle::visualRect(layoutDirection(), rect(), {left, 0, qCeil(word), height()});
}

QRect SwitchHalf::tickRect() const
{
    const QRect word = QStyle::visualRect(layoutDirection(), rect(), wordRect());
    const QRect tick(word.left() - markWidth, (height() - tickSize) / 2, tickSize, tickSize);
    return QStyle::visualRect(layoutDirection(), rect(), tick);
}

void SwitchHalf::tellCutWord()
{
    setToolTip(shownWord(true) == text() ? QString() : text());
}

} // namespace Controls
