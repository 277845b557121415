#pragma once

#include <QPushButton>

namespace Controls {

// One half of a SwitchButton. The active half carries a check mark beside its word, so that colour is not
// the only sign; the word stands still when the mark comes and goes.
class SwitchHalf final : public QPushButton
{
    Q_OBJECT

public:
    // The half that means "on", or the one that means "off".
    explicit SwitchHalf(bool on, QWidget* parent);

    [[nodiscard]] bool meansOn() const { return m_on; }

    // Wide enough for the word and the mark.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void paintBackground(QPainter& painter, const QStyleOptionButton& option);
    void paintWord(QPainter& painter, QStyleOptionButton option);
    [[nodiscard]] QRect wordRect() const;
    [[nodiscard]] QRect tickRect() const;
    [[nodiscard]] QString shownWord() const;

    bool m_on;
};

} // namespace Controls
