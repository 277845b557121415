#include "modeditors/WaveformDelegate.h"

#include "controls/ThemeManager.h"
#include "modeditors/ItemMargin.h"
#include "modeditors/WaveformTable.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <QTransform>
#include <cmath>

using Controls::ThemeManager;

namespace {

constexpr int sheetPadding = 20; // pixels on either side of a text, as the style sheet has it
constexpr int edgeGap = 12;      // between a name and the edge, where there are no facts
constexpr int iconRim = 2;       // left of what an icon shows
constexpr int mostSnap = 3;      // to a whole pixel of the screen, at scales in quarters
constexpr int selectionBar = 3;  // marks the row by more than its colour, as in the theme's lists

// The line below a row would have a gap there, where the background is painted over its end.
bool endsWithinPixel(const QPainter& painter, const QRect& rect)
{
    const double end = painter.deviceTransform().map(QPointF(rect.right() + 1, 0)).x();
    return !qFuzzyCompare(end, std::round(end));
}

} // namespace

WaveformDelegate::WaveformDelegate(QTableView* table)
    : QStyledItemDelegate(table)
    , m_table(table)
{}

WaveformDelegate::~WaveformDelegate() = default;

void WaveformDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    if (index.column() == WaveformTable::Name) {
        paintName(painter, option.rect, option, index);
        return;
    }
    QStyleOptionViewItem facts = option;
    initStyleOption(&facts, index);
    facts.rect.setRight(facts.rect.right() + itemMargin(option, m_table));
    m_table->style()->drawControl(QStyle::CE_ItemViewItem, &facts, painter, m_table);
    QRect free = option.rect;
    free.setRight(factsLeft(option, index) - 1);
    paintName(painter, free, option, index);
}

bool WaveformDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                 const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || event->pos().x() >= factsLeft(option, index)) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const QStyleOptionViewItem name = nameOption(option, index);
    const QStyle* const style = m_table->style();
    const QRect room = style->subElementRect(QStyle::SE_ItemViewItemText, &name, m_table);
    const int textWidth = room.width() - 2 * itemMargin(name, m_table);
    const bool cut = name.fontMetrics.horizontalAdvance(name.text) > textWidth;
    // A file may be named as if it were markup.
    const QString tip = QStringLiteral("<span>%1</span>").arg(name.text.toHtmlEscaped());
    QToolTip::showText(event->globalPos(), cut ? tip : QString(), view);
    return true;
}

void WaveformDelegate::paintName(QPainter* painter, const QRect& clip, const QStyleOptionViewItem& cell,
                                 const QModelIndex& index) const
{
    QStyleOptionViewItem name = nameOption(cell, index);
    for (int i = 0; i < mostSnap && endsWithinPixel(*painter, name.rect); ++i) {
        name.rect.setRight(name.rect.right() - 1);
    }
    painter->save();
    painter->setClipRect(clip, Qt::IntersectClip);
    m_table->style()->drawControl(QStyle::CE_ItemViewItem, &name, painter, m_table);
    painter->restore();
    if (cell.state & QStyle::State_Selected) {
        const QRect bar(m_table->columnViewportPosition(WaveformTable::Name), cell.rect.top(), selectionBar,
                        cell.rect.height());
        painter->fillRect(bar, ThemeManager::instance().color(ThemeManager::FocusRing));
    }
}

QStyleOptionViewItem WaveformDelegate::nameOption(const QStyleOptionViewItem& cell,
                                                  const QModelIndex& index) const
{
    QStyleOptionViewItem option = cell;
    initStyleOption(&option, index.sibling(index.row(), WaveformTable::Name));
    option.textElideMode = Qt::ElideMiddle;
    option.rect.setLeft(m_table->columnViewportPosition(WaveformTable::Name) - itemMargin(cell, m_table) -
                        iconRim);
    option.rect.setRight(factsLeft(cell, index) - 1);
    return option;
}

int WaveformDelegate::factsLeft(const QStyleOptionViewItem& cell, const QModelIndex& index) const
{
    if (m_table->isColumnHidden(WaveformTable::Facts)) {
        return m_table->viewport()->width() - edgeGap + sheetPadding;
    }
    const QString facts = index.sibling(index.row(), WaveformTable::Facts).data().toString();
    const int right =
        m_table->columnViewportPosition(WaveformTable::Facts) + m_table->columnWidth(WaveformTable::Facts);
    return right - sheetPadding - cell.fontMetrics.horizontalAdvance(facts);
}
