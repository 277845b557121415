#pragma once

#include <QListView>
#include <QSharedPointer>

namespace Controls {

class EnumModel;

// The open list of an EnumTextButton, in one column or several. A release on the item that was pressed picks
// it, Space and Enter pick the item under the cursor, the arrow keys, Home, End and the page keys move the
// cursor past what is disabled, a letter jumps. A finger that moves scrolls.
class EnumList final : public QListView
{
    Q_OBJECT

public:
    EnumList(QSharedPointer<EnumModel> model, int columns, QWidget* parent = nullptr);

    // Wide enough for the longest text within reason, eight rows high or less.
    [[nodiscard]] QSize sizeHint() const override;
    // One row.
    [[nodiscard]] QSize minimumSizeHint() const override;

    // The cells in the last column reach the edge, over the pixels that columns of one width leave.
    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& position) const override;

    // The size of an item at the list's present width.
    [[nodiscard]] QSize cellSize() const;
    // The item that is held down.
    [[nodiscard]] bool isPressed(const QModelIndex& index) const { return index == m_pressed; }
    // The cursor is marked from the first key on.
    [[nodiscard]] bool marksCursorAt(const QModelIndex& index) const;

signals:
    // Once; then the list has done its work and waits to be closed.
    void picked(int row);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    [[nodiscard]] int rowsOfCells() const;
    [[nodiscard]] int nextEnabled(int row, int step) const;
    [[nodiscard]] int pageAway(int step) const;
    [[nodiscard]] QModelIndex enabledAt(const QPoint& position) const;
    void setPressed(const QModelIndex& index);
    void pan(const QPoint& position);
    void pick(const QModelIndex& index);

    // Shared with the button: a list that has closed may outlive it by a turn of the event loop.
    QSharedPointer<EnumModel> m_items;
    int m_columns;
    QPersistentModelIndex m_pressed;
    QPoint m_pressPosition;
    int m_pressScroll = 0;
    bool m_held = false;    // a press that began in the list is under way
    bool m_panning = false; // it has become a scrolling
    bool m_marksCursor = false;
    bool m_hasPicked = false;
};

} // namespace Controls
