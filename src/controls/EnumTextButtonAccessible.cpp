#include "controls/EnumTextButtonAccessible.h"

#include "controls/EnumTextButton.h"

namespace Controls {
namespace {

QAccessibleInterface* create(const QString&, QObject* object)
{
    auto* const button = qobject_cast<EnumTextButton*>(object);
    return button ? new EnumTextButtonAccessible(button) : nullptr;
}

} // namespace

EnumTextButtonAccessible::EnumTextButtonAccessible(QWidget* button)
    : InfoButtonAccessible(button, QAccessible::ComboBox)
{}

void EnumTextButtonAccessible::install()
{
    static const bool installed = (QAccessible::installFactory(create), true);
    Q_UNUSED(installed);
}

QString EnumTextButtonAccessible::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Value) {
        return static_cast<const EnumTextButton*>(widget())->labelText();
    }
    return InfoButtonAccessible::text(kind);
}

QAccessible::State EnumTextButtonAccessible::state() const
{
    QAccessible::State state = InfoButtonAccessible::state();
    const bool open = static_cast<const EnumTextButton*>(widget())->isListOpen();
    state.checkable = false;
    state.checked = false;
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = open;
    state.collapsed = !open;
    return state;
}

} // namespace Controls
