#pragma once

#include "controls/InfoButtonAccessible.h"

namespace Controls {

// An EnumTextButton as assistive programs see it: a combo box with the shown text as its value. Pressing it
// opens the list, which is a window of its own.
class EnumTextButtonAccessible final : public InfoButtonAccessible
{
public:
    explicit EnumTextButtonAccessible(QWidget* button);

    // Makes EnumTextButton known to the accessibility layer, after InfoButton; any number of times.
    static void install();

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;
};

} // namespace Controls
