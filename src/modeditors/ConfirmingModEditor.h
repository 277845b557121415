#pragma once

#include "modeditors/NumericField.h"
#include "modeditors/contract/RemoteModEditor.h"

#include <QPointer>
#include <QVector>

class LabelButton;
class SwitchButton;

// An editor over a form with an enable switch and numeric buttons. It keeps the state that was applied last;
// after each edit has been emitted, the form shows that state again.
class ConfirmingModEditor : public RemoteModEditor
{
    Q_OBJECT

public:
    explicit ConfirmingModEditor(QWidget* parent = nullptr);
    ~ConfirmingModEditor() override;

    void applyEditorState(const QJsonObject& state, const QJsonObject& profile, bool enabled) final;
    [[nodiscard]] bool isModulationEnabled() const final;
    [[nodiscard]] bool describeNumericField(const QString& key, NumericFieldSpec& spec) const final;
    void applyNumericValue(const QString& key, double value) final;
    void setNumericFieldActive(const QString& key, bool active) final;

protected:
    // To be called once, when the form is built. The table must outlive the editor; each of its buttons must
    // be in the form.
    template <std::size_t count>
    void bind(SwitchButton* enableSwitch, const NumericField (&fields)[count])
    {
        bindEnableSwitch(enableSwitch);
        for (const NumericField& field : fields) {
            bindField(field);
        }
    }

    // Shows what the derived editor has besides switch and numeric texts, from state() and profile(). Called
    // whenever a state is applied and after each edit; a widget that shows the right thing must not be
    // touched.
    virtual void showState() = 0;
    // While it cannot, the enable switch is off and not to be used, whatever the main process says.
    [[nodiscard]] virtual bool canBeEnabled() const { return true; }
    // Adds to a field's description what the table cannot say. False when the field cannot be edited now.
    [[nodiscard]] virtual bool completeSpec(NumericFieldSpec& spec) const;
    // Shows everything as it was last applied; emits nothing.
    void showConfirmed();

    // Emits an edit through `emitEdit`, unless a state is being shown, and goes back to the confirmed state.
    template <typename EmitEdit>
    void edit(EmitEdit emitEdit)
    {
        if (m_updating) {
            return;
        }
        const QPointer<ConfirmingModEditor> self(this); // an edit may end in another editor
        emitEdit();
        if (self) {
            showConfirmed();
        }
    }

    [[nodiscard]] const QJsonObject& state() const { return m_state; }
    [[nodiscard]] const QJsonObject& profile() const { return m_profile; }
    // False for a field that is not in the table.
    [[nodiscard]] bool isEditable(QLatin1String key) const;

private:
    struct BoundField
    {
        const NumericField* field;
        LabelButton* button;
    };

    void bindEnableSwitch(SwitchButton* enableSwitch);
    void bindField(const NumericField& field);
    [[nodiscard]] const NumericField* findField(const QString& key) const;

    SwitchButton* m_enableSwitch = nullptr;
    QVector<BoundField> m_fields;
    QJsonObject m_state;
    QJsonObject m_profile;
    bool m_enabled = false;
    bool m_updating = false;
};
