#include "controls/SwitchButton.h"

#include "controls/ElidedLabel.h"
#include "controls/Marks.h"
#include "controls/SwitchButtonAccessible.h"
#include "controls/SwitchHalf.h"
#include "controls/ThemeManager.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QKeyEvent>
#include <QPainter>

using Controls::ElidedLabel;
using Controls::SwitchHalf;
using Controls::ThemeManager;

namespace {

constexpr int captionInset = 10; // pixels, as all of these
constexpr int halvesInset = 8;
constexpr int rowGap = 4;
constexpr int columnGap = 8;
constexpr int captionSize = 14;
constexpr int compactHalf = 72;
constexpr int compactLines = 2; // of the caption, for the halves leave it little width

} // namespace

SwitchButton::SwitchButton(QWidget* parent)
    : QWidget(parent)
    , m_rows(new QBoxLayout(QBoxLayout::TopToBottom, this))
    , m_caption(new ElidedLabel(this))
{
    Controls::SwitchButtonAccessible::install();
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_caption->setObjectName(QStringLiteral("textLabel"));
    QFont font = m_caption->font();
    font.setPixelSize(captionSize);
    m_caption->setFont(font);
    connect(m_caption, &ElidedLabel::metricsChanged, this, &SwitchButton::tellCutCaption);
    m_rows->addWidget(m_caption, 1);
    auto* const halves = new QHBoxLayout;
    halves->setSpacing(0);
    m_on = addHalf(QStringLiteral("btnOn"), true, halves);
    m_off = addHalf(QStringLiteral("btnOff"), false, halves);
    m_rows->addLayout(halves);
    auto* const group = new QButtonGroup(this);
    group->addButton(m_on);
    group->addButton(m_off);
    showWords();
    showStatus();
    arrange();
}

SwitchButton::~SwitchButton() = default;

QString SwitchButton::text() const
{
    return m_caption->text();
}

void SwitchButton::setText(const QString& text)
{
    if (text == m_caption->text()) {
        return;
    }
    m_caption->setText(text);
    tellCutCaption();
    QAccessibleEvent event(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void SwitchButton::setStatus(bool on)
{
    if (on == m_status) {
        return;
    }
    m_status = on;
    showStatus();
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
    emit statusChanged(on);
}

void SwitchButton::setCompactMode(bool compact)
{
    if (compact != m_compact) {
        m_compact = compact;
        arrange();
    }
}

SwitchHalf* SwitchButton::addHalf(const QString& objectName, bool on, QBoxLayout* layout)
{
    auto* const half = new SwitchHalf(on, this);
    half->setObjectName(objectName);
    layout->addWidget(half);
    connect(half, &SwitchHalf::clicked, this, [this, half] { setStatus(half->meansOn()); });
    return half;
}

void SwitchButton::arrange()
{
    m_rows->setDirection(m_compact ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_rows->setContentsMargins(captionInset, halvesInset, m_compact ? halvesInset : captionInset,
                               halvesInset);
    m_rows->setSpacing(m_compact ? columnGap : rowGap);
    m_caption->setLines(m_compact ? compactLines : 1);
    for (SwitchHalf* half : {m_on, m_off}) {
        half->setMinimumWidth(m_compact ? compactHalf : 0);
        half->setMaximumWidth(m_compact ? compactHalf : QWIDGETSIZE_MAX);
    }
    m_rows->activate();
    tellCutCaption();
    update();
}

void SwitchButton::showStatus()
{
    (m_status ? m_on : m_off)->setChecked(true);
}

void SwitchButton::showWords()
{
    const QString on = tr("ON");
    const QString off = tr("OFF");
    m_on->setWords(on, off);
    m_off->setWords(off, on);
}

void SwitchButton::tellCutCaption()
{
    const bool hasToolTipOfItsOwn = !toolTip().isEmpty() && toolTip() != m_cutCaption;
    if (hasToolTipOfItsOwn) {
        return;
    }
    m_cutCaption = m_caption->isCut() ? m_caption->text() : QString();
    if (m_cutCaption != toolTip()) {
        setToolTip(m_cutCaption);
    }
}

void SwitchButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    Controls::paintStyledBackground(painter, *this);
    Controls::paintFrameAround(painter, m_on->geometry().united(m_off->geometry()),
                               ThemeManager::instance().color(ThemeManager::Border));
    if (hasFocus() && m_focusByKeyboard) {
        Controls::paintFocusRing(painter, rect());
    }
}

void SwitchButton::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    tellCutCaption();
}

void SwitchButton::keyPressEvent(QKeyEvent* event)
{
    const bool leftIsOn = m_on->x() < m_off->x();
    switch (event->key()) {
    case Qt::Key_Space:
        if (!event->isAutoRepeat()) {
            setStatus(!m_status);
        }
        break;
    case Qt::Key_Left:
        setStatus(leftIsOn);
        break;
    case Qt::Key_Right:
        setStatus(!leftIsOn);
        break;
    default:
        QWidget::keyPressEvent(event);
        break;
    }
}

void SwitchButton::focusInEvent(QFocusEvent* event)
{
    m_focusByKeyboard = Controls::marksFocus(event->reason(), m_focusByKeyboard);
    QWidget::focusInEvent(event);
}

void SwitchButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        showWords();
    }
    QWidget::changeEvent(event);
}
