#include "controls/EnumTextButton.h"

#include "controls/ElidedLabel.h"
#include "controls/EnumList.h"
#include "controls/EnumModel.h"
#include "controls/EnumTextButtonAccessible.h"
#include "controls/Marks.h"
#include "controls/PopupWidget.h"
#include "controls/SecondClickGuard.h"
#include "controls/ThemeManager.h"

#include <QPainter>

using Controls::EnumList;
using Controls::EnumModel;
using Controls::ThemeManager;

namespace {

constexpr int gridColumns = 3;
constexpr int chevronSize = 10; // pixels, as the next
constexpr int chevronGap = 6;

} // namespace

EnumTextButton::EnumTextButton(QWidget* parent)
    : LabelButton(parent)
    , m_items(QSharedPointer<EnumModel>::create())
{
    Controls::EnumTextButtonAccessible::install();
    setCheckable(true);
    connect(this, &EnumTextButton::clicked, this, &EnumTextButton::toggleList);
}

EnumTextButton::~EnumTextButton()
{
    closeList();
}

void EnumTextButton::setEnums(const QStringList& items)
{
    if (m_items->setTexts(items)) {
        closeList();
        update();
    }
}

QStringList EnumTextButton::enums() const
{
    return m_items->texts();
}

void EnumTextButton::setCurrentEnum(int index)
{
    if (m_items->has(index)) {
        m_items->setCurrent(index);
        showText(m_items->texts().at(index));
    }
}

int EnumTextButton::currentEnum() const
{
    return m_items->current();
}

void EnumTextButton::setItemEnabled(int index, bool enabled)
{
    if (m_items->setItemEnabled(index, enabled)) {
        closeList();
    }
}

bool EnumTextButton::isItemEnabled(int index) const
{
    return m_items->isItemEnabled(index);
}

void EnumTextButton::setLabelText(const QString& text)
{
    m_items->setCurrent(-1);
    showText(text);
}

void EnumTextButton::setViewMode(int mode)
{
    if (mode == List || mode == Grid) {
        m_viewMode = mode;
    }
}

bool EnumTextButton::isListOpen() const
{
    return m_popup;
}

// The chevron stands behind the caption, or behind everything where there is one line only.
void EnumTextButton::arrange(const QRect& area)
{
    constexpr int width = chevronSize + chevronGap;
    LabelButton::arrange(area);
    QRect line = textLabel()->geometry();
    const bool oneLine = line.height() == area.height();
    if (oneLine) {
        LabelButton::arrange(area.adjusted(0, 0, -width, 0));
    } else {
        textLabel()->setGeometry(isCentred() ? line.adjusted(width, 0, -width, 0)
                                             : line.adjusted(0, 0, -width, 0));
    }
    m_chevron =
        QRect(area.right() + 1 - chevronSize, line.center().y() - chevronSize / 2, chevronSize, chevronSize);
}

QSize EnumTextButton::contentSize() const
{
    const QSize content = LabelButton::contentSize();
    const int caption = textLabel()->sizeHint().width() + chevronGap + chevronSize;
    return content.expandedTo({caption, 0});
}

void EnumTextButton::paintEvent(QPaintEvent* event)
{
    LabelButton::paintEvent(event);
    if (m_items->rowCount() > 0) {
        QPainter painter(this);
        const auto role = isEnabled() ? ThemeManager::SecondaryText : ThemeManager::DisabledText;
        Controls::paintChevron(painter, m_chevron, ThemeManager::instance().color(role));
    }
}

void EnumTextButton::hideEvent(QHideEvent* event)
{
    closeList();
    LabelButton::hideEvent(event);
}

void EnumTextButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled()) {
        closeList();
    }
    LabelButton::changeEvent(event);
}

void EnumTextButton::nextCheckState() {}

void EnumTextButton::toggleList()
{
    if (m_popup) {
        closeList();
    } else if (m_items->rowCount() > 0 && isVisible()) {
        openList();
    }
}

void EnumTextButton::openList()
{
    m_popup = new PopupWidget(this);
    auto* const list = new EnumList(m_items, m_viewMode == Grid ? gridColumns : 1, m_popup);
    list->setAccessibleName(m_titleText.isEmpty() ? text() : m_titleText);
    m_popup->setTitle(m_titleText);
    m_popup->setContent(list);
    connect(list, &EnumList::picked, this, &EnumTextButton::takeChoice);
    connect(m_popup, &PopupWidget::closed, this, [this] {
        m_popup.clear();
        tellOpen();
    });
    m_popup->openBeside(this);
    tellOpen();
}

void EnumTextButton::closeList()
{
    if (m_popup) {
        m_popup->close();
    }
}

void EnumTextButton::tellOpen()
{
    setChecked(isListOpen());
    QAccessible::State changed;
    changed.expanded = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

void EnumTextButton::takeChoice(int index)
{
    // Closing takes longer than what a choice asks for, so it comes after that; posted, so that a slot with
    // an event loop of its own finds the list closed.
    if (m_popup) {
        QMetaObject::invokeMethod(m_popup, &QWidget::close, Qt::QueuedConnection);
    }
    Controls::guardAgainstSecondClick();
    setCurrentEnum(index);
    emit currentItemEdited(index);
}

void EnumTextButton::showText(const QString& text)
{
    if (text != labelText()) {
        LabelButton::setLabelText(text);
        QAccessibleValueChangeEvent event(this, text);
        QAccessible::updateAccessibility(&event);
    }
}
