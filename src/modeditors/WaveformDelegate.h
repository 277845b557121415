#pragma once

#include <QStyledItemDelegate>

class QTableView;

// Draws the rows of a WaveformTable as its style sheet says, but gives names the room that the sheet keeps
// free around them and that the facts on their right leave. A name that does not fit keeps its beginning and
// its end; the whole of it is the tool tip.
class WaveformDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit WaveformDelegate(QTableView* table);
    ~WaveformDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    // `cell` is any of the row.
    void paintName(QPainter* painter, const QRect& clip, const QStyleOptionViewItem& cell,
                   const QModelIndex& index) const;
    [[nodiscard]] QStyleOptionViewItem nameOption(const QStyleOptionViewItem& cell,
                                                  const QModelIndex& index) const;
    // Where the facts begin, in the viewport, and with them the room for a name and its padding ends.
    [[nodiscard]] int factsLeft(const QStyleOptionViewItem& cell, const QModelIndex& index) const;

    QTableView* m_table;
};
