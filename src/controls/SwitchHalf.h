#pragma once

#include "controls/TellThenPaint.h"

#include <QPushButton>

namespace Controls {

// One half of a SwitchButton. The active half carries a check mark beside its word, so that colour is not
// the only sign. The word, or the mark and the word together, stand in the middle.
class SwitchHalf final : public TellThenPaint<QPushButton>
{
    Q_OBJECT

public:
    // The half that means "on", or the one that means "off".
    explicit SwitchHalf(bool on, QWidget* parent);

    [[nodiscard]] bool meansOn() const { return m_on; }

    // The word of this half, and that of the other: both halves are as wide and as large as the wider one
    // wants.
    void setWords(const QString& own, const QString& other);

    // Wide enough for either word and the mark.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void paintBackground(QPainter& painter, const QStyleOptionButton& option);
    void paintWord(QPainter& painter, QStyleOptionButton option);
    [[nodiscard]] QString widerWord() const;
    [[nodiscard]] QFont wordFont() const;
    [[nodiscard]] QString shownWord(bool besideMark) const;
    [[nodiscard]] QRect wordRect() const;
    [[nodiscard]] QRect tickRect() const;
    void tellCutWord();

    bool m_on;
    QString m_otherWord;
};

} // namespace Controls
