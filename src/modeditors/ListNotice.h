#pragma once

#include <QString>

class QRect;
class QWidget;

namespace Controls {
class ElidedLabel;
}

// A sentence over the lower edge of a list, in the child "refusal" of the list, as long as it has something
// to say.
class ListNotice final
{
public:
    explicit ListNotice(QWidget* list);

    [[nodiscard]] QString text() const;
    // It is seen from the next place() on.
    void setText(const QString& text);

    // Takes its place above the lower edge of the list's viewport, which is given in the list's coordinates,
    // and answers how much of it is covered, in pixels.
    [[nodiscard]] int place(const QRect& viewport);

private:
    Controls::ElidedLabel* m_label;
};
