#include "controls/SecondClickGuard.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>

namespace Controls {
namespace {

class SecondClickGuard final : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject*, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonDblClick:
            m_swallowing = true;
            return true;
        case QEvent::MouseButtonPress:
            return endUnlessDoubleClick(static_cast<QMouseEvent*>(event));
        case QEvent::MouseButtonRelease:
            return m_swallowing && end();
        default:
            return false;
        }
    }

private:
    // The window system's layer announces a double click with a press that is marked as its beginning.
    bool endUnlessDoubleClick(const QMouseEvent* press)
    {
        if (!(press->flags() & Qt::MouseEventCreatedDoubleClick)) {
            end();
        }
        return false;
    }

    bool end()
    {
        QCoreApplication::instance()->removeEventFilter(this);
        deleteLater();
        return true;
    }

    bool m_swallowing = false;
};

} // namespace

void guardAgainstSecondClick()
{
    static QPointer<SecondClickGuard> guard;
    delete guard;
    guard = new SecondClickGuard(QCoreApplication::instance());
    QCoreApplication::instance()->installEventFilter(guard);
}

} // namespace Controls
