#pragma once

#include "modeditors/contract/RemoteModEditor.h"

#include <QHash>
#include <QList>

class EnumTextButton;
class LabelButton;
class SwitchButton;

// The base of the editors that are a fixed form: buttons of the form are bound to keys of the item's editor
// state, and the bindings do all that an editor has to do. After an edit the control shows again what was
// applied last. What no binding can say is a panel's applyPanelState().
class RemoteFormEditor : public RemoteModEditor
{
    Q_OBJECT

public:
    // How a number is shown.
    enum DisplayMode { PlainNumber = 0, Frequency = 1, TimeSpan = 2 };

    explicit RemoteFormEditor(QWidget* parent = nullptr);
    ~RemoteFormEditor() override;

    void applyEditorState(const QJsonObject& state, const QJsonObject& profile, bool enabled) final;
    [[nodiscard]] bool isModulationEnabled() const override;
    // False also for a field whose button is disabled.
    [[nodiscard]] bool describeNumericField(const QString& key, NumericFieldSpec& spec) const override;
    void applyNumericValue(const QString& key, double value) override;
    void setNumericFieldActive(const QString& key, bool active) override;

protected:
    // To be called by a panel's constructor, once its form is set up. Each key is bound once; the buttons
    // belong to the form.
    void bindEnableSwitch(SwitchButton* button);
    // `displayScale`: what is shown and edited, in the field's own unit, for a stored value of 1. `suffix`:
    // text behind the value, or empty.
    void bindNumericField(LabelButton* button, const NumericFieldSpec& spec, int displayMode,
                          double displayScale, const QString& suffix);
    // `values`: what is stored, in the order of the button's items.
    void bindEnumField(EnumTextButton* button, const QString& key, const QList<QJsonValue>& values);
    void bindSwitchField(SwitchButton* button, const QString& key);

    // Makes `button` ask for the keyboard for a field. For a panel's own fields: bindNumericField() does it.
    void requestNumericEditOnClick(LabelButton* button, const QString& key);

    // Emits the edit of one field.
    void setField(const QString& key, const QJsonValue& value);

    // Called last when a state is applied, for what follows from state and profile.
    virtual void applyPanelState();

    // What a bound switch is to show of the state.
    [[nodiscard]] virtual bool isSwitchOn(const QString& key) const;

    // As last applied.
    [[nodiscard]] const QJsonObject& editorState() const { return m_editorState; }
    [[nodiscard]] const QJsonObject& profile() const { return m_profile; }
    // The number under a key of the state; 0 if there is none.
    [[nodiscard]] double number(const QString& key) const { return m_editorState.value(key).toDouble(); }
    // What a control says meanwhile is no edit.
    [[nodiscard]] bool isApplying() const { return m_applying; }

private:
    struct NumericFieldBinding
    {
        LabelButton* button = nullptr;
        NumericFieldSpec spec;
        int displayMode = PlainNumber;
        double displayScale = 1.0;
        QString suffix;
    };
    struct EnumFieldBinding
    {
        EnumTextButton* button = nullptr;
        QList<QJsonValue> values;
    };

    [[nodiscard]] double shownValue(const NumericFieldBinding& binding) const;
    void showNumber(const NumericFieldBinding& binding);
    void showChoice(const QString& key);
    void showSwitch(const QString& key);
    void onEnableToggled();
    void onChosen(const QString& key, int index);
    void onSwitched(const QString& key, bool on);

    SwitchButton* m_enableSwitch = nullptr;
    QHash<QString, NumericFieldBinding> m_numericFields;
    QHash<QString, EnumFieldBinding> m_enumFields;
    QHash<QString, SwitchButton*> m_switchFields;
    QJsonObject m_editorState;
    QJsonObject m_profile;
    bool m_enabled = false; // as last applied
    bool m_applying = false;
};
