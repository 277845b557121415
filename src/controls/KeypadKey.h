#pragma once

#include "controls/TellThenPaint.h"

#include <QPushButton>

namespace Controls {

// One key of the numeric keyboard. It is reached with Tab, pressed with the space bar, and leaves all other
// keys to the keyboard; a click does not take the focus from the value line. A label that does not fit gets
// smaller and at last is elided, with the whole label as tool tip.
class KeypadKey final : public TellThenPaint<QPushButton>
{
    Q_OBJECT

public:
    // `fontSize` in pixels, of a label that fits.
    KeypadKey(const QString& label, int fontSize, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void fitLabel();

    QString m_label;
    int m_fontSize;
};

} // namespace Controls
