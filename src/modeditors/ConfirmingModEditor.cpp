#include "modeditors/ConfirmingModEditor.h"

#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"

#include <QScopedValueRollback>

ConfirmingModEditor::ConfirmingModEditor(QWidget* parent)
    : RemoteModEditor(parent)
{}

ConfirmingModEditor::~ConfirmingModEditor() = default;

void ConfirmingModEditor::applyEditorState(const QJsonObject& state, const QJsonObject& profile, bool enabled)
{
    m_state = state;
    m_profile = profile;
    m_enabled = enabled;
    showConfirmed();
}

bool ConfirmingModEditor::isModulationEnabled() const
{
    return m_enableSwitch->status();
}

bool ConfirmingModEditor::describeNumericField(const QString& key, NumericFieldSpec& spec) const
{
    const NumericField* const field = findField(key);
    if (!field || !field->isEditable(m_profile)) {
        return false;
    }
    spec = field->spec(m_state, m_profile, *metaObject());
    return completeSpec(spec);
}

void ConfirmingModEditor::applyNumericValue(const QString& key, double value)
{
    RemoteModEditor::applyNumericValue(key, value);
}

void ConfirmingModEditor::setNumericFieldActive(const QString& key, bool active)
{
    for (const BoundField& bound : qAsConst(m_fields)) {
        bound.button->setChecked(active && key == bound.field->key);
    }
}

bool ConfirmingModEditor::completeSpec(NumericFieldSpec& /*spec*/) const
{
    return true;
}

bool ConfirmingModEditor::isEditable(QLatin1String key) const
{
    const NumericField* const field = findField(key);
    return field && field->isEditable(m_profile);
}

void ConfirmingModEditor::bindEnableSwitch(SwitchButton* enableSwitch)
{
    m_enableSwitch = enableSwitch;
    connect(enableSwitch, &SwitchButton::statusChanged, this,
            [this] { edit([this] { emit enabledEdited(); }); });
}

void ConfirmingModEditor::bindField(const NumericField& field)
{
    auto* const button = findChild<LabelButton*>(field.button);
    Q_ASSERT(button);
    button->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    button->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    button->setCheckable(true);
    m_fields.append({&field, button});
    connect(button, &LabelButton::clicked, this, [this, button, &field](bool checked) {
        button->setChecked(
            !checked); // the mark tells that the keyboard is open; a click alone does not set it
        if (!m_updating) {
            emit numericEditRequested(field.key, button);
        }
    });
}

const NumericField* ConfirmingModEditor::findField(const QString& key) const
{
    for (const BoundField& bound : m_fields) {
        if (key == bound.field->key) {
            return bound.field;
        }
    }
    return nullptr;
}

void ConfirmingModEditor::showConfirmed()
{
    const QScopedValueRollback<bool> updating(m_updating, true);
    m_enableSwitch->setEnabled(canBeEnabled());
    m_enableSwitch->setStatus(m_enabled && canBeEnabled());
    for (const BoundField& bound : qAsConst(m_fields)) {
        bound.button->setLabelText(bound.field->text(m_state));
    }
    showState();
}
