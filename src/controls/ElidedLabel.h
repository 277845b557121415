#pragma once

#include <QLabel>

namespace Controls {

// A label for plain text that shortens what it shows, with an ellipsis, when the text does not fit; text()
// stays the whole text. It looks at its own font each time, so a change of size, font or style sheet needs
// nobody's care.
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
    [[nodiscard]] QFont fittingFont() const;

    int m_lines;
    int m_smallestSize = 0;
    Qt::TextElideMode m_elideMode = Qt::ElideRight;
};

} // namespace Controls
