#pragma once

#include <QRect>
#include <QWidget>

class QVBoxLayout;

namespace Controls {
class ElidedLabel;
}

// The window of an open drop-down: a title, if there is one, and a content below it. A press elsewhere or Esc
// closes it, and that press reaches nothing else in the program. It is opened once: closed, by whatever
// means, it says so and deletes itself. In the global namespace because style sheets select it by name.
class PopupWidget final : public QWidget
{
    Q_OBJECT

public:
    // `owner` is the widget it is opened for; the popup becomes a child of its window.
    explicit PopupWidget(QWidget* owner);
    ~PopupWidget() override;

    // Empty for none.
    void setTitle(const QString& title);
    // Becomes a child; it is given the focus.
    void setContent(QWidget* content);

    // Shows the popup below the anchor, else above it, as wide as the anchor or as the content wants, wholly
    // on the anchor's screen.
    void openBeside(const QWidget* anchor);

signals:
    void closed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    QVBoxLayout* m_rows;
    Controls::ElidedLabel* m_title;
    QRect m_anchor; // on the desktop
};
