#include "controls/InfoButtonAccessible.h"

#include "controls/LabelButton.h"

namespace Controls {
namespace {

QAccessibleInterface* create(const QString&, QObject* object)
{
    auto* const button = qobject_cast<InfoButton*>(object);
    return button ? new InfoButtonAccessible(button) : nullptr;
}

} // namespace

InfoButtonAccessible::InfoButtonAccessible(QWidget* button, QAccessible::Role role)
    : QAccessibleWidget(button, role)
{}

void InfoButtonAccessible::install()
{
    static const bool installed = (QAccessible::installFactory(create), true);
    Q_UNUSED(installed);
}

QString InfoButtonAccessible::text(QAccessible::Text kind) const
{
    const auto* const button = static_cast<const InfoButton*>(widget());
    const QString given = QAccessibleWidget::text(kind);
    if (kind == QAccessible::Name && button->accessibleName().isEmpty()) {
        return button->text();
    }
    if (kind == QAccessible::Description && button->accessibleDescription().isEmpty()) {
        const auto* const labelled = qobject_cast<const LabelButton*>(button);
        return labelled ? labelled->labelText() : given;
    }
    return given;
}

QAccessible::State InfoButtonAccessible::state() const
{
    const auto* const button = static_cast<const InfoButton*>(widget());
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = button->isCheckable();
    state.checked = button->isChecked();
    state.pressed = button->isDown();
    state.readOnly = button->isReadOnly();
    return state;
}

QStringList InfoButtonAccessible::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (widget()->isEnabled() && !static_cast<const InfoButton*>(widget())->isReadOnly()) {
        names.prepend(pressAction());
    }
    return names;
}

void InfoButtonAccessible::doAction(const QString& actionName)
{
    if (actionName == pressAction()) {
        static_cast<InfoButton*>(widget())->animateClick();
    } else {
        QAccessibleWidget::doAction(actionName);
    }
}

} // namespace Controls
