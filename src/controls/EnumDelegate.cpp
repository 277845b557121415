#include "controls/EnumDelegate.h"

#include "controls/EnumList.h"
#include "controls/Marks.h"
#include "controls/ThemeManager.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

namespace Controls {
namespace {

constexpr int inset = 10; // pixels, as the next two
constexpr int tickSize = 12;
constexpr int tickGap = 8;

QColor themed(ThemeManager::Role role)
{
    return ThemeManager::instance().color(role);
}

QRect tickRect(const QStyleOptionViewItem& option)
{
    const QRect cell = option.rect;
    const QRect tick(cell.left() + inset, cell.center().y() - tickSize / 2, tickSize, tickSize);
    return QStyle::visualRect(option.direction, cell, tick);
}

QRect textRect(const QStyleOptionViewItem& option)
{
    const QRect text = option.rect.adjusted(inset + tickSize + tickGap, 0, -inset, 0);
    return QStyle::visualRect(option.direction, option.rect, text);
}

QString shownText(const QStyleOptionViewItem& option, const QString& text)
{
    return option.fontMetrics.elidedText(text, Qt::ElideRight, textRect(option).width());
}

bool isChecked(const QModelIndex& index)
{
    return index.data(Qt::CheckStateRole) == QVariant(Qt::Checked);
}

} // namespace

EnumDelegate::EnumDelegate(EnumList* list)
    : QAbstractItemDelegate(list)
    , m_list(list)
{}

int EnumDelegate::widthOf(const QStringList& texts, const QFontMetrics& metrics)
{
    int widest = 0;
    for (const QString& text : texts) {
        widest = std::max(widest, metrics.horizontalAdvance(text));
    }
    constexpr int roundedOff = 1; // advances are rounded, the elision is exact
    return inset + tickSize + tickGap + widest + roundedOff + inset;
}

void EnumDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    const bool enabled = option.state & QStyle::State_Enabled;
    const QColor ink = themed(enabled ? ThemeManager::Text : ThemeManager::DisabledText);
    painter->fillRect(option.rect, background(option, index));
    painter->setPen(ink);
    painter->setFont(option.font);
    const QRect room = textRect(option);
    const QString text = index.data(Qt::DisplayRole).toString();
    painter->drawText(room,
                      int(QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter)) |
                          Qt::TextSingleLine,
                      shownText(option, text));
    if (isChecked(index)) {
        paintTick(*painter, tickRect(option), ink);
    }
    if (m_list->marksCursorAt(index)) {
        paintFocusRing(*painter, option.rect);
    }
}

QSize EnumDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return m_list->cellSize();
}

bool EnumDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip) {
        return QAbstractItemDelegate::helpEvent(event, view, option, index);
    }
    const QString text = index.data(Qt::DisplayRole).toString();
    const bool isCut = shownText(option, text) != text;
    QToolTip::showText(event->globalPos(), isCut ? text : QString(), view);
    return true;
}

QColor EnumDelegate::background(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (m_list->isPressed(index)) {
        return themed(ThemeManager::Pressed);
    }
    if (isChecked(index)) {
        return themed(ThemeManager::ListItemSelected);
    }
    const bool hovered = (option.state & QStyle::State_MouseOver) && (option.state & QStyle::State_Enabled);
    return themed(hovered ? ThemeManager::Hovered : ThemeManager::ListItemDefault);
}

} // namespace Controls
