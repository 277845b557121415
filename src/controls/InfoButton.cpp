#include "controls/InfoButton.h"

#include "controls/ElidedLabel.h"
#include "controls/Emphasis.h"
#include "controls/InfoButtonAccessible.h"
#include "controls/Marks.h"
#include "controls/ThemeManager.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QVariant>
#include <algorithm>

using Controls::ElidedLabel;
using Controls::ThemeManager;

namespace {

constexpr int inset = 10;
constexpr int centredInset = 3; // centred texts keep away from the edges by themselves
constexpr int touchHeight = 44;
constexpr int textSize = 15; // pixels
constexpr char checkedProperty[] = "parentChecked";

// Without a style sheet the button still shows each of its states, from the palette.
void paintPlain(QPainter& painter, const QStyleOptionButton& option)
{
    QBrush background = option.palette.brush(QPalette::Button);
    if (option.state & QStyle::State_Sunken) {
        background = option.palette.brush(QPalette::Mid);
    } else if (option.state & QStyle::State_On) {
        background = option.palette.brush(QPalette::Highlight);
    } else if (option.state & QStyle::State_MouseOver) {
        background = option.palette.brush(QPalette::Midlight);
    }
    painter.fillRect(option.rect, background);
    Controls::paintFrame(painter, option.rect, option.palette.color(QPalette::Mid));
}

} // namespace

InfoButton::InfoButton(QWidget* parent)
    : TellThenPaint(parent)
{
    Controls::InfoButtonAccessible::install();
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_textLabel = addLabel(QStringLiteral("textLabel"), Qt::AlignLeft | Qt::AlignVCenter);
    setLabelFont(m_textLabel, textSize, Controls::emphasis());
    connect(this, &InfoButton::toggled, this, &InfoButton::tellLabels);
}

InfoButton::~InfoButton() = default;

QString InfoButton::text() const
{
    return m_textLabel->text();
}

void InfoButton::setText(const QString& text)
{
    if (text == m_textLabel->text()) {
        return;
    }
    m_textLabel->setText(text);
    // The inherited text is what generic code reads of a button; an "&" in it would make a shortcut.
    QAbstractButton::setText(QString(text).replace(QLatin1Char('&'), QLatin1String("&&")));
    rearrange();
}

void InfoButton::setReadOnly(bool readOnly)
{
    if (readOnly == m_readOnly) {
        return;
    }
    m_readOnly = readOnly;
    setFocusPolicy(readOnly ? Qt::NoFocus : Qt::StrongFocus);
    update();
}

void InfoButton::setPressedColor(const QColor& color)
{
    if (color != m_pressedColor) {
        m_pressedColor = color;
        update();
    }
}

Qt::Alignment InfoButton::textAlignment() const
{
    return m_textLabel->alignment();
}

void InfoButton::setTextAlignment(Qt::Alignment alignment)
{
    if (alignment != m_textLabel->alignment()) {
        m_textLabel->setAlignment(alignment);
        rearrange();
    }
}

QSize InfoButton::sizeHint() const
{
    ensurePolished();
    for (const ElidedLabel* label : m_labels) {
        label->ensurePolished();
    }
    const QSize content = contentSize() + QSize(2 * inset, 2 * inset);
    return content.expandedTo({touchHeight, touchHeight});
}

QSize InfoButton::minimumSizeHint() const
{
    return {touchHeight, touchHeight};
}

ElidedLabel* InfoButton::addLabel(const QString& objectName, Qt::Alignment alignment)
{
    auto* const label = new ElidedLabel(this);
    label->setObjectName(objectName);
    label->setAlignment(alignment);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(label, &ElidedLabel::metricsChanged, this, &InfoButton::rearrange);
    m_labels.append(label);
    return label;
}

void InfoButton::setLabelFont(ElidedLabel* label, int pixelSize, QFont::Weight weight)
{
    QFont font = label->font();
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    label->setFont(font);
}

bool InfoButton::isCentred() const
{
    const auto centred = [](const ElidedLabel* label) { return bool(label->alignment() & Qt::AlignHCenter); };
    return std::all_of(m_labels.cbegin(), m_labels.cend(), centred);
}

void InfoButton::arrange(const QRect& area)
{
    m_textLabel->setGeometry(area);
}

QSize InfoButton::contentSize() const
{
    return m_textLabel->sizeHint();
}

// Measuring a text loads its font, so a button that is not shown waits: its fonts may still be those from
// before the style sheet, and its texts may change many times until it is seen.
void InfoButton::rearrange()
{
    updateGeometry();
    if (isVisible()) {
        arrangeNow();
    }
}

void InfoButton::arrangeNow()
{
    if (m_arranging) {
        return;
    }
    m_arranging = true;
    for (const ElidedLabel* label : qAsConst(m_labels)) {
        label->ensurePolished();
    }
    const int side = isCentred() ? centredInset : inset;
    arrange(rect().adjusted(side, 0, -side, 0));
    tellCutTexts();
    m_arranging = false;
}

// A style sheet cannot ask for the state of a label's parent, so each label carries it.
void InfoButton::tellLabels(bool checked)
{
    for (ElidedLabel* label : qAsConst(m_labels)) {
        if (label->property(checkedProperty) != QVariant(checked)) {
            label->setProperty(checkedProperty, checked);
            if (label->testAttribute(Qt::WA_WState_Polished)) {
                label->style()->unpolish(label);
                label->style()->polish(label);
            }
        }
    }
}

void InfoButton::tellCutTexts()
{
    QStringList cut;
    for (const ElidedLabel* label : qAsConst(m_labels)) {
        if (label->isCut()) {
            cut.append(label->text());
        }
    }
    const QString text = cut.join(QLatin1Char('\n'));
    const bool hasToolTipOfItsOwn = !toolTip().isEmpty() && toolTip() != m_cutTexts;
    if (hasToolTipOfItsOwn) {
        return;
    }
    m_cutTexts = text;
    if (text != toolTip()) {
        setToolTip(text);
    }
}

bool InfoButton::hitButton(const QPoint& position) const
{
    return !m_readOnly && QAbstractButton::hitButton(position);
}

void InfoButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_readOnly) {
        painter.fillRect(rect(), ThemeManager::instance().color(ThemeManager::Surface));
        Controls::paintFrame(painter, rect(), ThemeManager::instance().color(ThemeManager::Border));
        return;
    }
    QStyleOptionButton option;
    option.initFrom(this);
    option.features = QStyleOptionButton::Flat;
    option.state |= isChecked() ? QStyle::State_On : QStyle::State_Off;
    if (isDown()) {
        option.state |= QStyle::State_Sunken;
    }
    if (testAttribute(Qt::WA_StyleSheetTarget)) {
        style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    } else {
        paintPlain(painter, option);
    }
    if (isDown() && m_pressedColor.isValid()) {
        painter.fillRect(rect(), m_pressedColor);
    }
    if (hasFocus() && m_focusByKeyboard) {
        Controls::paintFocusRing(painter, rect());
    }
}

void InfoButton::resizeEvent(QResizeEvent* event)
{
    QAbstractButton::resizeEvent(event);
    rearrange();
}

void InfoButton::showEvent(QShowEvent* event)
{
    QAbstractButton::showEvent(event);
    arrangeNow();
}

void InfoButton::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !event->isAutoRepeat()) {
        click();
        return;
    }
    TellThenPaint::keyPressEvent(event);
}

void InfoButton::focusInEvent(QFocusEvent* event)
{
    m_focusByKeyboard = Controls::marksFocus(event->reason(), m_focusByKeyboard);
    QAbstractButton::focusInEvent(event);
}
