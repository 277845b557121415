#include "formeditors/PathList.h"

#include "controls/ListHint.h"

#include <QKeyEvent>

namespace {

constexpr int rowHeight = 44; // pixels; as high as a finger needs
constexpr int usualRows = 4;
constexpr int fewestRows = 2;

} // namespace

PathList::PathList(QWidget* parent)
    : QListWidget(parent)
{
    setDragDropMode(InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setUniformItemSizes(true);
    connect(model(), &QAbstractItemModel::rowsMoved, this, &PathList::tellOrderLater);
}

PathList::~PathList() = default;

QStringList PathList::paths() const
{
    QStringList paths;
    for (int row = 0; row < count(); ++row)
        paths.append(item(row)->data(Qt::UserRole).toString());
    return paths;
}

QString PathList::currentPath() const
{
    return currentItem() ? currentItem()->data(Qt::UserRole).toString() : QString();
}

QSize PathList::sizeHint() const
{
    return {QListWidget::sizeHint().width(), usualRows * rowHeight + 2 * frameWidth()};
}

QSize PathList::minimumSizeHint() const
{
    return {0, fewestRows * rowHeight + 2 * frameWidth()};
}

void PathList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (count() == 0)
        Controls::paintListHint(*this, tr("No files"));
}

// Moves no row itself: what stands here is what is confirmed.
void PathList::keyPressEvent(QKeyEvent* event)
{
    const int step = event->key() == Qt::Key_Up ? -1 : event->key() == Qt::Key_Down ? 1 : 0;
    if (step == 0 || event->modifiers().setFlag(Qt::KeypadModifier, false) != Qt::AltModifier) {
        QListWidget::keyPressEvent(event);
        return;
    }
    const int from = currentRow();
    const int to = from + step;
    if (from < 0 || to < 0 || to >= count())
        return;
    QStringList wanted = paths();
    wanted.move(from, to);
    emit orderEdited(wanted);
}

// A row may move in the middle of a drop, which goes on with the list as it is then.
void PathList::tellOrderLater()
{
    if (m_orderToTell)
        return;
    m_orderToTell = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_orderToTell = false;
            emit orderEdited(paths());
        },
        Qt::QueuedConnection);
}
