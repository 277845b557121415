#pragma once

#include <QStyledItemDelegate>

// Draws the rows of a WaveformTable as its style sheet says, but leaves names the room that the sheet keeps
// free on both sides. A name that does not fit keeps its beginning and its end; the whole of it is the tool
// tip.
class WaveformDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit WaveformDelegate(QObject* parent = nullptr);
    ~WaveformDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    // The cell with what is drawn in it.
    [[nodiscard]] QStyleOptionViewItem contents(const QStyleOptionViewItem& cell,
                                                const QModelIndex& index) const;
};
