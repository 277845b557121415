#pragma once

#include "controls/TellThenPaint.h"

#include <QPushButton>

// A push button among value buttons, dressed as they are. A text that does not fit gets smaller and at last
// is shortened; then the whole of it is told before the tool tip.
// In the global namespace because style sheets select it by name.
class CommandButton final : public Controls::TellThenPaint<QPushButton>
{
    Q_OBJECT

public:
    explicit CommandButton(QWidget* parent = nullptr);
    ~CommandButton() override;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QFont fittingFont() const;
    [[nodiscard]] QString shownText() const;
};
