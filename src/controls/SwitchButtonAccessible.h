#pragma once

#include <QAccessibleWidget>

namespace Controls {

// A SwitchButton as assistive programs see it: a check box named by its caption, without the parts inside it.
class SwitchButtonAccessible final : public QAccessibleWidget
{
public:
    explicit SwitchButtonAccessible(QWidget* button);

    // Makes SwitchButton and what derives from it known to the accessibility layer; any number of times.
    static void install();

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
};

} // namespace Controls
