#pragma once

#include <QLabel>

namespace Controls {

// A label for plain text that shortens what it shows, with an ellipsis, when the text does not fit; text()
// stays the whole text. It notices when its text, font or size has changed, so that this needs nobody's care.
class ElidedLabel final : public QLabel
{
    Q_OBJECT

public:
    // `lines`: the text is broken into at most so many lines before it is shortened.
    explicit ElidedLabel(QWidget* parent = nullptr, int lines = 1);

    void setLines(int lines);

    // A text of one line gets smaller, down to this size in pixels, before it is shortened; 0: never.
    void setSmallestSize(int pixels);
    // Where a text of one line is shortened; at its end unless told otherwise.
    void setElideMode(Qt::TextElideMode mode);

    // What stands in the label at its present width, one entry a line.
    [[nodiscard]] QStringList shownLines() const;
    [[nodiscard]] bool isCut() const;

    // The width that shows the whole text in one line, the height of all its lines.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    // The font or the style has changed and with it what fits.
    void metricsChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] int textWidth() const;
    [[nodiscard]] bool fits() const;
    [[nodiscard]] QFont fittingFont() const;

    int m_lines;
    int m_smallestSize = 0;
    Qt::TextElideMode m_elideMode = Qt::ElideRight;
    // The last text that was measured, and its width in the font that was not fitted; pixels, negative: none.
    mutable QString m_measuredText;
    mutable int m_measuredWidth = -1;
};

} // namespace Controls
