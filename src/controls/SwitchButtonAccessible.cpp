#include "controls/SwitchButtonAccessible.h"

#include "controls/SwitchButton.h"

namespace Controls {
namespace {

QAccessibleInterface* create(const QString&, QObject* object)
{
    auto* const button = qobject_cast<SwitchButton*>(object);
    return button ? new SwitchButtonAccessible(button) : nullptr;
}

} // namespace

SwitchButtonAccessible::SwitchButtonAccessible(QWidget* button)
    : QAccessibleWidget(button, QAccessible::CheckBox)
{}

void SwitchButtonAccessible::install()
{
    static const bool installed = (QAccessible::installFactory(create), true);
    Q_UNUSED(installed);
}

QString SwitchButtonAccessible::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Name && widget()->accessibleName().isEmpty()) {
        return static_cast<const SwitchButton*>(widget())->text();
    }
    return QAccessibleWidget::text(kind);
}

QAccessible::State SwitchButtonAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = static_cast<const SwitchButton*>(widget())->status();
    return state;
}

QStringList SwitchButtonAccessible::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (widget()->isEnabled()) {
        names.prepend(toggleAction());
    }
    return names;
}

void SwitchButtonAccessible::doAction(const QString& actionName)
{
    auto* const button = static_cast<SwitchButton*>(widget());
    if (actionName == toggleAction() && button->isEnabled()) {
        button->setStatus(!button->status());
    } else {
        QAccessibleWidget::doAction(actionName);
    }
}

} // namespace Controls
