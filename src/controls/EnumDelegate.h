#pragma once

#include <QAbstractItemDelegate>

namespace Controls {

class EnumList;

// Draws the items of an EnumList: the current one filled with the accent and marked with a check, what cannot
// be picked at 40 %. A text that does not fit is elided and the whole text is its tool tip.
class EnumDelegate final : public QAbstractItemDelegate
{
    Q_OBJECT

public:
    explicit EnumDelegate(EnumList* list);

    // What an item needs to show any of the texts whole, in pixels.
    [[nodiscard]] static int widthOf(const QStringList& texts, const QFontMetrics& metrics);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    [[nodiscard]] QColor background(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    EnumList* m_list;
};

} // namespace Controls
