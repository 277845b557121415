#pragma once

#include <QAccessibleWidget>

namespace Controls {

// An InfoButton as assistive programs see it: a button named by its caption and described by its value, with
// its checked state and one action, and without the labels inside it.
class InfoButtonAccessible : public QAccessibleWidget
{
public:
    explicit InfoButtonAccessible(QWidget* button, QAccessible::Role role = QAccessible::Button);

    // Makes InfoButton and what derives from it known to the accessibility layer; any number of times.
    static void install();

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
};

} // namespace Controls
