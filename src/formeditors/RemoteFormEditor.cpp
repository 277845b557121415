#include "formeditors/RemoteFormEditor.h"

#include "controls/EnumTextButton.h"
#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"
#include "utils/NumberText.h"

#include <QPointer>
#include <QScopedValueRollback>
#include <QVariant>
#include <cmath>

namespace {

constexpr int usualDecimals = 3; // where a field does not say
constexpr int fewItems = 6;      // longer lists are easier to reach in a grid

void alignTexts(LabelButton* button)
{
    button->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    button->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void showStatus(SwitchButton* button, bool on)
{
    if (button->status() != on) {
        button->setStatus(on);
    }
}

void showChecked(LabelButton* button, bool checked)
{
    if (button->isChecked() != checked) {
        button->setChecked(checked);
    }
}

} // namespace

RemoteFormEditor::RemoteFormEditor(QWidget* parent)
    : RemoteModEditor(parent)
{}

RemoteFormEditor::~RemoteFormEditor() = default;

// Bindings

void RemoteFormEditor::bindEnableSwitch(SwitchButton* button)
{
    m_enableSwitch = button;
    connect(button, &SwitchButton::statusChanged, this, &RemoteFormEditor::onEnableToggled);
}

void RemoteFormEditor::bindNumericField(LabelButton* button, const NumericFieldSpec& spec, int displayMode,
                                        double displayScale, const QString& suffix)
{
    m_numericFields.insert(spec.key, {button, spec, displayMode, displayScale, suffix});
    requestNumericEditOnClick(button, spec.key);
}

void RemoteFormEditor::bindEnumField(EnumTextButton* button, const QString& key,
                                     const QList<QJsonValue>& values)
{
    alignTexts(button);
    button->setTitleText(button->InfoButton::text());
    button->setViewMode(values.size() > fewItems ? EnumTextButton::Grid : EnumTextButton::List);
    m_enumFields.insert(key, {button, values});
    connect(button, &EnumTextButton::currentItemEdited, this,
            [this, key](int index) { onChosen(key, index); });
}

void RemoteFormEditor::bindSwitchField(SwitchButton* button, const QString& key)
{
    m_switchFields.insert(key, button);
    connect(button, &SwitchButton::statusChanged, this, [this, key](bool on) { onSwitched(key, on); });
}

void RemoteFormEditor::requestNumericEditOnClick(LabelButton* button, const QString& key)
{
    alignTexts(button);
    button->setCheckable(true);
    connect(button, &LabelButton::clicked, this, [this, button, key](bool checked) {
        // The mark tells that the keyboard is open, so a click alone does not set it.
        button->setChecked(!checked);
        emit numericEditRequested(key, button);
    });
}

void RemoteFormEditor::setField(const QString& key, const QJsonValue& value)
{
    editField(key, value);
}

// Showing

void RemoteFormEditor::applyEditorState(const QJsonObject& state, const QJsonObject& profile, bool enabled)
{
    const QScopedValueRollback<bool> applying(m_applying, true);
    m_editorState = state;
    m_profile = profile;
    m_enabled = enabled;
    if (m_enableSwitch) {
        showStatus(m_enableSwitch, enabled);
    }
    for (const NumericFieldBinding& binding : qAsConst(m_numericFields)) {
        showNumber(binding);
    }
    for (auto field = m_enumFields.cbegin(); field != m_enumFields.cend(); ++field) {
        showChoice(field.key());
    }
    for (auto field = m_switchFields.cbegin(); field != m_switchFields.cend(); ++field) {
        showSwitch(field.key());
    }
    applyPanelState();
}

void RemoteFormEditor::applyPanelState() {}

double RemoteFormEditor::shownValue(const NumericFieldBinding& binding) const
{
    return number(binding.spec.key) * binding.displayScale;
}

void RemoteFormEditor::showNumber(const NumericFieldBinding& binding)
{
    const double value = shownValue(binding);
    const int decimals = binding.spec.decimals < 0 ? usualDecimals : binding.spec.decimals;
    QString text;
    if (binding.displayMode == Frequency) {
        text = Utils::normalizeFrequency(value, true, false);
    } else if (binding.displayMode == TimeSpan) {
        text = Utils::normalizeTimeSpan(value, decimals);
    } else {
        text = Utils::toString(value, binding.spec.integerOnly ? 0 : decimals, true);
    }
    if (!binding.suffix.isEmpty()) {
        text += QLatin1Char(' ') + binding.suffix;
    }
    if (binding.button->labelText() != text) {
        binding.button->setLabelText(text);
    }
}

void RemoteFormEditor::showChoice(const QString& key)
{
    const EnumFieldBinding binding = m_enumFields.value(key);
    const QJsonValue value = m_editorState.value(key);
    const int index = binding.values.indexOf(value);
    if (index >= 0) {
        if (binding.button->currentEnum() != index) {
            binding.button->setCurrentEnum(index);
        }
        return;
    }
    // A value that is no item may read like one.
    const QString text = value.toVariant().toString();
    if (binding.button->currentEnum() >= 0 || binding.button->labelText() != text) {
        binding.button->setLabelText(text);
    }
}

void RemoteFormEditor::showSwitch(const QString& key)
{
    showStatus(m_switchFields.value(key), isSwitchOn(key));
}

bool RemoteFormEditor::isSwitchOn(const QString& key) const
{
    const QJsonValue value = m_editorState.value(key);
    return value.isBool() ? value.toBool() : std::trunc(value.toDouble()) != 0;
}

// Edits. Whoever hears of one may apply another state, or delete the editor.

void RemoteFormEditor::onEnableToggled()
{
    if (m_applying) {
        return;
    }
    const QPointer<RemoteFormEditor> self(this);
    emit enabledEdited();
    if (self) {
        const QScopedValueRollback<bool> applying(m_applying, true);
        showStatus(m_enableSwitch, m_enabled);
    }
}

void RemoteFormEditor::onChosen(const QString& key, int index)
{
    if (m_applying) {
        return;
    }
    const QPointer<RemoteFormEditor> self(this);
    const QList<QJsonValue> values = m_enumFields.value(key).values;
    if (index >= 0 && index < values.size()) {
        setField(key, values.at(index));
    }
    if (self) {
        showChoice(key);
    }
}

void RemoteFormEditor::onSwitched(const QString& key, bool on)
{
    if (m_applying) {
        return;
    }
    const QPointer<RemoteFormEditor> self(this);
    setField(key, on);
    if (self) {
        const QScopedValueRollback<bool> applying(m_applying, true);
        showSwitch(key);
    }
}

// The contract

bool RemoteFormEditor::isModulationEnabled() const
{
    return m_enableSwitch && m_enableSwitch->status();
}

bool RemoteFormEditor::describeNumericField(const QString& key, NumericFieldSpec& spec) const
{
    const auto field = m_numericFields.constFind(key);
    if (field == m_numericFields.cend() || !field->button->isEnabled()) {
        return false;
    }
    spec = field->spec;
    spec.value = shownValue(*field);
    return true;
}

void RemoteFormEditor::applyNumericValue(const QString& key, double value)
{
    NumericFieldSpec spec;
    if (!describeNumericField(key, spec)) {
        return;
    }
    const double scale = m_numericFields.value(key).displayScale;
    const double stored = scale == 0 ? value : value / scale;
    // JSON has no word for NaN and the infinities.
    if (std::isfinite(stored)) {
        setField(key, spec.integerOnly ? std::round(stored) : stored);
    }
}

void RemoteFormEditor::setNumericFieldActive(const QString& key, bool active)
{
    for (auto field = m_numericFields.cbegin(); field != m_numericFields.cend(); ++field) {
        showChecked(field->button, active && field.key() == key);
    }
}
