#pragma once

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPointer>

#include <utility>

namespace Controls {

// The toolkit paints a button twice, at once, before it tells of a press, which takes up to a millisecond. A
// button of this kind tells first; the pixels follow in the same turn of the event loop. `Button` is the
// toolkit's own.
template <typename Button>
class TellThenPaint : public Button
{
public:
    template <typename... Arguments>
    explicit TellThenPaint(Arguments&&... arguments)
        : Button(std::forward<Arguments>(arguments)...)
    {
        // Before clicked(), whose slots may open windows that paint the button.
        QObject::connect(this, &QAbstractButton::released, this, [this] { this->setUpdatesEnabled(true); });
    }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        withoutPainting([&] { Button::mousePressEvent(event); });
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        withoutPainting([&] { Button::mouseReleaseEvent(event); });
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Space)
            withoutPainting([&] { Button::keyPressEvent(event); });
        else
            Button::keyPressEvent(event);
    }
    void keyReleaseEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Space)
            withoutPainting([&] { Button::keyReleaseEvent(event); });
        else
            Button::keyReleaseEvent(event);
    }

private:
    template <typename Work>
    void withoutPainting(Work work)
    {
        const QPointer<QWidget> self(this); // a slot may delete it
        this->setUpdatesEnabled(false);
        work();
        if (self)
            this->setUpdatesEnabled(true);
    }
};

} // namespace Controls
