#include "modeditors/WaveformDelegate.h"

#include "modeditors/WaveformTable.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace {

// Of the sheet's 20 pixels on either side of a name.
constexpr int unusedLeft = 10;
constexpr int unusedRight = 18;

} // namespace

WaveformDelegate::WaveformDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{}

WaveformDelegate::~WaveformDelegate() = default;

void WaveformDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    const QStyleOptionViewItem cell = contents(option, index);
    painter->save();
    painter->setClipRect(option.rect, Qt::IntersectClip);
    cell.widget->style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    painter->restore();
}

bool WaveformDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                 const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || index.column() != WaveformTable::Name) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const QStyleOptionViewItem cell = contents(option, index);
    const QStyle* const style = view->style();
    const QRect room = style->subElementRect(QStyle::SE_ItemViewItemText, &cell, view);
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, view) + 1;
    const bool cut = cell.fontMetrics.horizontalAdvance(cell.text) > room.width() - 2 * margin;
    // A file may be named as if it were markup.
    const QString tip = QStringLiteral("<span>%1</span>").arg(cell.text.toHtmlEscaped());
    QToolTip::showText(event->globalPos(), cut ? tip : QString(), view);
    return true;
}

QStyleOptionViewItem WaveformDelegate::contents(const QStyleOptionViewItem& cell,
                                                const QModelIndex& index) const
{
    QStyleOptionViewItem option = cell;
    initStyleOption(&option, index);
    option.state &= ~QStyle::State_HasFocus;
    option.textElideMode = Qt::ElideMiddle;
    if (index.column() == WaveformTable::Name) {
        option.rect.adjust(-unusedLeft, 0, unusedRight, 0);
    }
    return option;
}
