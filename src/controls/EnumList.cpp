#include "controls/EnumList.h"

#include "controls/EnumDelegate.h"
#include "controls/EnumModel.h"
#include "controls/ThemeManager.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

namespace Controls {
namespace {

constexpr int rowHeight = 44; // pixels
constexpr int mostRows = 8;
constexpr int wrapMargin = 1; // a row of cells that leaves nothing is one too many for the view
constexpr int widest = 600;   // pixels; a longer text is elided
constexpr int fontSize = 15;  // pixels

bool comesFromFinger(const QMouseEvent& event)
{
    return event.source() != Qt::MouseEventNotSynthesized;
}

bool picks(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Select:
        return true;
    default:
        return false;
    }
}

} // namespace

EnumList::EnumList(QSharedPointer<EnumModel> model, int columns, QWidget* parent)
    : QListView(parent)
    , m_items(std::move(model))
    , m_columns(columns)
{
    setObjectName(QStringLiteral("enumList"));
    setModel(m_items.data());
    setItemDelegate(new EnumDelegate(this));
    QFont text = font();
    text.setPixelSize(fontSize);
    setFont(text);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setSingleStep(rowHeight);
    setUniformItemSizes(true);
    setResizeMode(Adjust);
    if (columns > 1) {
        setFlow(LeftToRight);
        setWrapping(true);
    }
    viewport()->setAttribute(Qt::WA_Hover);
    connect(&ThemeManager::instance(), &ThemeManager::themeChanged, viewport(),
            qOverload<>(&QWidget::update));
    setCurrentIndex(m_items->index(m_items->current(), 0));
}

QSize EnumList::sizeHint() const
{
    ensurePolished();
    const int cell = EnumDelegate::widthOf(m_items->texts(), fontMetrics());
    const bool scrolls = rowsOfCells() > mostRows;
    const int bar = scrolls ? verticalScrollBar()->sizeHint().width() : 0;
    return {std::min(cell * m_columns + wrapMargin, widest) + bar,
            std::min(rowsOfCells(), mostRows) * rowHeight};
}

QSize EnumList::minimumSizeHint() const
{
    return {rowHeight * m_columns, rowHeight};
}

QSize EnumList::cellSize() const
{
    const int margin = m_columns > 1 ? wrapMargin : 0;
    return {(viewport()->width() - margin) / m_columns, rowHeight};
}

QRect EnumList::visualRect(const QModelIndex& index) const
{
    const QRect view = viewport()->rect();
    QRect cell = QStyle::visualRect(layoutDirection(), view, QListView::visualRect(index));
    if (index.isValid() && index.row() % m_columns == m_columns - 1) {
        cell.setRight(view.right());
    }
    return QStyle::visualRect(layoutDirection(), view, cell);
}

QModelIndex EnumList::indexAt(const QPoint& position) const
{
    const QRect view = viewport()->rect();
    QPoint place = QStyle::visualPos(layoutDirection(), view, position);
    if (view.contains(place)) {
        place.setX(std::min(place.x(), cellSize().width() * m_columns - 1));
    }
    return QListView::indexAt(QStyle::visualPos(layoutDirection(), view, place));
}

bool EnumList::marksCursorAt(const QModelIndex& index) const
{
    return m_marksCursor && index == currentIndex();
}

void EnumList::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_held = true;
    m_panning = false;
    m_pressPosition = event->pos();
    m_pressScroll = verticalScrollBar()->value();
    setPressed(enabledAt(event->pos()));
}

void EnumList::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_held) {
        return;
    }
    if (comesFromFinger(*event) && verticalScrollBar()->maximum() > 0) {
        pan(event->pos());
    }
    setPressed(m_panning ? QModelIndex() : enabledAt(event->pos()));
}

void EnumList::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_held) {
        return;
    }
    m_held = false;
    const QModelIndex released = m_panning ? QModelIndex() : enabledAt(event->pos());
    setPressed({});
    pick(released);
}

void EnumList::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

void EnumList::keyPressEvent(QKeyEvent* event)
{
    if (picks(*event)) {
        // A key that is still held from opening the list picks nothing.
        if (!event->isAutoRepeat()) {
            pick(currentIndex());
        }
        return;
    }
    m_marksCursor = true;
    QListView::keyPressEvent(event);
    viewport()->update();
}

void EnumList::paintEvent(QPaintEvent* event)
{
    QPainter(viewport())
        .fillRect(event->rect(), ThemeManager::instance().color(ThemeManager::ListItemDefault));
    QListView::paintEvent(event);
}

void EnumList::showEvent(QShowEvent* event)
{
    QListView::showEvent(event);
    scrollTo(currentIndex(), PositionAtCenter);
    verticalScrollBar()->setValue(verticalScrollBar()->value() / rowHeight * rowHeight); // whole rows
}

// Decided here: the view itself tries with the bar first and then keeps it, even where all just fits.
void EnumList::resizeEvent(QResizeEvent* event)
{
    const bool scrolls = rowsOfCells() * rowHeight > height();
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    QListView::resizeEvent(event);
}

QModelIndex EnumList::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    const int here = currentIndex().row();
    const int sideways = m_columns > 1 ? 1 : 0;
    const auto stepped = [this, here](int step) {
        if (step == 0) {
            return here;
        }
        const int there = here < 0 ? nextEnabled(0, 1) : nextEnabled(here + step, step);
        return there < 0 ? here : there;
    };
    switch (action) {
    case MoveUp:
        return m_items->index(stepped(-m_columns));
    case MoveDown:
        return m_items->index(stepped(m_columns));
    case MoveLeft:
        return m_items->index(stepped(-sideways));
    case MoveRight:
        return m_items->index(stepped(sideways));
    case MovePrevious:
        return m_items->index(stepped(-1));
    case MoveNext:
        return m_items->index(stepped(1));
    case MoveHome:
        return m_items->index(nextEnabled(0, 1));
    case MoveEnd:
        return m_items->index(nextEnabled(m_items->rowCount() - 1, -1));
    case MovePageUp:
        return m_items->index(pageAway(-1));
    case MovePageDown:
        return m_items->index(pageAway(1));
    }
    return currentIndex();
}

int EnumList::rowsOfCells() const
{
    return (m_items->rowCount() + m_columns - 1) / m_columns;
}

// The first item that can be picked, from `row` on in steps; -1 if there is none.
int EnumList::nextEnabled(int row, int step) const
{
    while (m_items->has(row) && !m_items->isItemEnabled(row)) {
        row += step;
    }
    return m_items->has(row) ? row : -1;
}

// One page on in the direction of `step`, or as far as there is an item that can be picked.
int EnumList::pageAway(int step) const
{
    const int here = std::max(0, currentIndex().row());
    const int page = std::max(1, viewport()->height() / rowHeight) * m_columns;
    const int wanted = std::clamp(here + step * page, 0, std::max(0, m_items->rowCount() - 1));
    const int near = nextEnabled(wanted, -step);
    const bool progress = near >= 0 && (near - here) * step > 0;
    const int found = progress ? near : nextEnabled(wanted, step);
    return found < 0 ? currentIndex().row() : found;
}

QModelIndex EnumList::enabledAt(const QPoint& position) const
{
    const QModelIndex index = viewport()->rect().contains(position) ? indexAt(position) : QModelIndex();
    return m_items->isItemEnabled(index.row()) ? index : QModelIndex();
}

void EnumList::setPressed(const QModelIndex& index)
{
    if (m_pressed != index) {
        m_pressed = index;
        viewport()->update();
    }
}

void EnumList::pan(const QPoint& position)
{
    const int way = m_pressPosition.y() - position.y();
    m_panning = m_panning || std::abs(way) >= QApplication::startDragDistance();
    if (m_panning) {
        verticalScrollBar()->setValue(m_pressScroll + way);
    }
}

// Nothing may follow: a slot may have deleted the list.
void EnumList::pick(const QModelIndex& index)
{
    if (!m_hasPicked && m_items->isItemEnabled(index.row())) {
        m_hasPicked = true;
        emit picked(index.row());
    }
}

} // namespace Controls
