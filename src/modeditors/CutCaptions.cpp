#include "modeditors/CutCaptions.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableWidget>

namespace {

class CutCaptions final : public QObject
{
public:
    explicit CutCaptions(QTableWidget* table)
        : QObject(table)
        , m_table(table)
    {
        connect(table->horizontalHeader(), &QHeaderView::sectionResized, this,
                [this](int column, int, int width) { tell(column, width); });
        connect(table->model(), &QAbstractItemModel::headerDataChanged, this, &CutCaptions::tellChanged);
    }

private:
    void tellChanged(Qt::Orientation orientation, int first, int last)
    {
        for (int column = first; orientation == Qt::Horizontal && column <= last; ++column)
            tell(column, m_table->columnWidth(column));
    }

    void tell(int column, int width)
    {
        QTableWidgetItem* const caption = m_table->horizontalHeaderItem(column);
        if (m_telling || !caption)
            return; // a tool tip is header data as well
        const QScopedValueRollback<bool> telling(m_telling, true);
        const QHeaderView* const header = m_table->horizontalHeader();
        const QStringList tips = {caption->text(), header->toolTip()};
        const bool isCut = header->sectionSizeHint(column) > width;
        // An empty text of its own would hide the header's.
        caption->setData(Qt::ToolTipRole,
                         isCut ? QVariant(tips.join(QLatin1Char('\n')).trimmed()) : QVariant());
    }

    QTableWidget* m_table;
    bool m_telling = false;
};

} // namespace

void tellCutCaptions(QTableWidget* table)
{
    new CutCaptions(table);
}
