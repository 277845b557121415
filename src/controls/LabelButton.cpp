#include "controls/LabelButton.h"

#include "controls/ElidedLabel.h"

#include <QAccessible>

namespace {

constexpr int lineGap = 2;
constexpr int columnGap = 8;
constexpr int verticalInset = 10;
constexpr int spareInset = 4;         // of the inset, where a caption has more than one line
constexpr int captionSize = 14;       // pixels
constexpr int valueSize = 16;         // pixels
constexpr int smallestValueSize = 11; // pixels; still read, and whole
constexpr int contentHeight = 40;     // pixels; with the insets a value button is 60 high

} // namespace

LabelButton::LabelButton(QWidget* parent)
    : InfoButton(parent)
    , m_infoLabel(addLabel(QStringLiteral("infoLabel"), Qt::AlignRight | Qt::AlignVCenter))
{
    setLabelFont(textLabel(), captionSize, QFont::Normal);
    setLabelFont(m_infoLabel, valueSize, QFont::DemiBold);
    m_infoLabel->setSmallestSize(smallestValueSize); // a value is read to its unit at its end
}

LabelButton::~LabelButton() = default;

QString LabelButton::labelText() const
{
    return m_infoLabel->text();
}

void LabelButton::setLabelText(const QString& text)
{
    if (text == m_infoLabel->text()) {
        return;
    }
    m_infoLabel->setText(text);
    rearrange();
    QAccessibleEvent event(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

Qt::Alignment LabelButton::labelAlignment() const
{
    return m_infoLabel->alignment();
}

void LabelButton::setLabelAlignment(Qt::Alignment alignment)
{
    if (alignment != m_infoLabel->alignment()) {
        m_infoLabel->setAlignment(alignment);
        rearrange();
    }
}

void LabelButton::setCaptionLines(int lines)
{
    if (lines != m_captionLines) {
        m_captionLines = lines;
        textLabel()->setLines(lines);
        rearrange();
    }
}

void LabelButton::setLabelElideMode(Qt::TextElideMode mode)
{
    m_infoLabel->setElideMode(mode);
}

void LabelButton::arrange(const QRect& area)
{
    const QSize caption = textLabel()->sizeHint();
    const QSize value = m_infoLabel->sizeHint();
    const int stacked = caption.height() + lineGap + value.height();
    if (stacked > area.height()) {
        const int valueWidth = qMin(value.width(), area.width());
        const int captionWidth = qMax(0, area.width() - valueWidth - columnGap);
        textLabel()->setGeometry(area.left(), area.top(), captionWidth, area.height());
        m_infoLabel->setGeometry(area.right() + 1 - valueWidth, area.top(), valueWidth, area.height());
        return;
    }
    const bool centred = isCentred();
    const int slack = area.height() - stacked;
    const int top = area.top() + (centred ? slack / 2 : qMin(slack / 2, verticalInset));
    const int gap =
        centred ? lineGap : area.height() - 2 * (top - area.top()) - caption.height() - value.height();
    textLabel()->setGeometry(area.left(), top, area.width(), caption.height());
    m_infoLabel->setGeometry(area.left(), top + caption.height() + gap, area.width(), value.height());
}

QSize LabelButton::contentSize() const
{
    const QSize caption = textLabel()->sizeHint();
    const QSize value = m_infoLabel->sizeHint();
    const int saved = m_captionLines > 1 ? 2 * spareInset : 0;
    return {qMax(caption.width(), value.width()),
            qMax(contentHeight, caption.height() + lineGap + value.height() - saved)};
}
