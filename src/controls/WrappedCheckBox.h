#pragma once

#include "controls/TellThenPaint.h"

#include <QCheckBox>

namespace Controls {

// A check box whose caption is broken into lines when it is wider than the box, and elided when it does not
// fit in its height; then the whole caption is shown as tool tip, unless the box has a tool tip of its own. A
// tap anywhere in the box toggles it.
class WrappedCheckBox final : public TellThenPaint<QCheckBox>
{
    Q_OBJECT

public:
    explicit WrappedCheckBox(QWidget* parent = nullptr);
    ~WrappedCheckBox() override;

    // The caption may become as narrow as it wants.
    [[nodiscard]] QSize minimumSizeHint() const override;

    // The caption as it stands in the box, one entry a line.
    [[nodiscard]] QStringList shownLines() const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override;

private:
    bool m_focusByKeyboard = false;
};

} // namespace Controls
