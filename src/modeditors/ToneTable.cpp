#include "modeditors/ToneTable.h"

#include "controls/ListHint.h"
#include "controls/Marks.h"
#include "controls/ThemeManager.h"
#include "modeditors/CutCaptions.h"
#include "modeditors/ItemMargin.h"
#include "utils/NumberText.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

using Controls::ThemeManager;

namespace {

enum Column { Number, Frequency, Enabled, columnsInAll };

constexpr int toneRowHeight = 45; // pixels
constexpr int comfortableRows = 5;
constexpr int textSize = 15;    // pixels, as the next
constexpr int captionSize = 18; // as the style sheet has it; a header shortens by its own font

bool operator==(const Tone& left, const Tone& right)
{
    return left.frequency == right.frequency && left.enabled == right.enabled &&
           left.latticeIndex == right.latticeIndex;
}

QTableWidgetItem* makeItem()
{
    auto* const item = new QTableWidgetItem;
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    return item;
}

Qt::CheckState checkState(bool on)
{
    return on ? Qt::Checked : Qt::Unchecked;
}

// Draws the rows as the style sheet says, the texts right below those of the header, and the marks from the
// theme's colours. A table that cannot be used is pale.
class ToneDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyle* const style = option.widget->style();
        QStyleOptionViewItem cell = option;
        cell.rect.setLeft(cell.rect.left() - itemMargin(option, option.widget));
        initStyleOption(&cell, index);
        cell.state &= ~QStyle::State_HasFocus;
        const QRect mark = style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &cell, cell.widget);
        const bool hasMark = cell.features & QStyleOptionViewItem::HasCheckIndicator;
        cell.features &= ~QStyleOptionViewItem::HasCheckIndicator;
        const bool enabled = cell.state & QStyle::State_Enabled;
        painter->save();
        const double pale = ThemeManager::instance().color(ThemeManager::DisabledText).alphaF();
        painter->setOpacity(enabled ? 1 : pale);
        style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
        painter->restore();
        if (hasMark) {
            Controls::paintCheckMark(*painter, mark, cell.checkState == Qt::Checked, enabled);
        }
    }

    // A number that long captions leave too little room.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        if (event->type() != QEvent::ToolTip) {
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        }
        const bool isCut = sizeHint(option, index).width() > option.rect.width();
        QToolTip::showText(event->globalPos(), isCut ? index.data().toString() : QString(), view);
        return true;
    }
};

} // namespace

ToneTable::ToneTable(QWidget* parent)
    : QTableWidget(parent)
{
    setColumnCount(columnsInAll);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setShowGrid(false);
    setItemDelegate(new ToneDelegate(this));
    QFont rowFont = font();
    rowFont.setPixelSize(textSize);
    setFont(rowFont);
    QHeaderView* const header = horizontalHeader();
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    QFont captionFont = header->font();
    captionFont.setPixelSize(captionSize);
    header->setFont(captionFont);
    header->setHighlightSections(false);
    header->setTextElideMode(Qt::ElideRight);
    header->setSectionResizeMode(Number, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(Frequency, QHeaderView::Stretch);
    header->setSectionResizeMode(Enabled, QHeaderView::ResizeToContents);
    tellCutCaptions(this);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(toneRowHeight);
    verticalHeader()->setDefaultSectionSize(toneRowHeight);
    connect(this, &QTableWidget::cellClicked, this, &ToneTable::flip);
    connect(this, &QTableWidget::itemChanged, this, &ToneTable::onItemChanged);
}

ToneTable::~ToneTable() = default;

void ToneTable::showTones(QVector<Tone> tones)
{
    std::stable_sort(tones.begin(), tones.end(),
                     [](const Tone& left, const Tone& right) { return left.frequency < right.frequency; });
    const QScopedValueRollback<bool> populating(m_populating, true);
    tones.swap(m_tones); // `tones` is now what is shown
    setRowCount(m_tones.size());
    int first = -1;
    int last = -1;
    {
        // Each item that tells of its change makes the view measure its columns: once is enough.
        const QSignalBlocker silence(model());
        for (int row = 0; row < m_tones.size(); ++row) {
            if (row >= tones.size() || !(tones.at(row) == m_tones.at(row))) {
                showRow(row);
                first = first < 0 ? row : first;
                last = row;
            }
        }
    }
    if (first >= 0) {
        emit model()->dataChanged(model()->index(first, 0), model()->index(last, columnsInAll - 1));
    }
}

QSize ToneTable::sizeHint() const
{
    const int height =
        horizontalHeader()->sizeHint().height() + comfortableRows * toneRowHeight + 2 * frameWidth();
    return {QTableWidget::sizeHint().width(), height};
}

// The rows are alike, and the last one has the longest number.
int ToneTable::sizeHintForColumn(int column) const
{
    const QModelIndex last = model()->index(rowCount() - 1, column);
    return last.isValid() ? itemDelegate()->sizeHint(viewOptions(), last).width() : 0;
}

void ToneTable::paintEvent(QPaintEvent* event)
{
    QTableWidget::paintEvent(event);
    if (rowCount() == 0) {
        Controls::paintListHint(*this, tr("No tones"));
    }
}

void ToneTable::showRow(int row)
{
    const Tone& tone = m_tones.at(row);
    if (!item(row, Number)) {
        for (int column = 0; column < columnsInAll; ++column) {
            setItem(row, column, makeItem());
        }
        item(row, Number)->setText(QString::number(row + 1));
    }
    item(row, Frequency)->setText(Utils::normalizeFrequency(tone.frequency, true, false));
    QTableWidgetItem* const mark = item(row, Enabled);
    mark->setData(Qt::UserRole, tone.latticeIndex);
    mark->setCheckState(checkState(tone.enabled));
}

void ToneTable::flip(int row, int column)
{
    QTableWidgetItem* const mark = column == Enabled ? item(row, column) : nullptr;
    if (mark && !m_populating) {
        mark->setCheckState(checkState(mark->checkState() != Qt::Checked));
    }
}

void ToneTable::onItemChanged(const QTableWidgetItem* changed)
{
    if (m_populating || changed->tableWidget() != this || changed->column() != Enabled) {
        return;
    }
    const int row = changed->row();
    QVector<int> enabled;
    for (int i = 0; i < rowCount(); ++i) {
        const QTableWidgetItem* const mark = item(i, Enabled);
        if (mark->checkState() == Qt::Checked) {
            enabled.append(mark->data(Qt::UserRole).toInt());
        }
    }
    const QPointer<ToneTable> self(this); // an edit may end in another editor
    emit enabledTonesEdited(enabled);
    if (self && row < m_tones.size()) {
        const QScopedValueRollback<bool> populating(m_populating, true);
        showRow(row);
    }
}
