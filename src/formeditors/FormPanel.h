#pragma once

#include "controls/EnumTextButton.h"
#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"
#include "formeditors/FormTables.h"
#include "formeditors/RemoteFormEditor.h"

// A panel over the generated form `Form`, which it sets up as itself, and whose fields are tables.
template <typename Form>
class FormPanel : public RemoteFormEditor
{
protected:
    // `context`: of the translations of the panel's class; a literal.
    FormPanel(const char* context, QWidget* parent)
        : RemoteFormEditor(parent)
        , m_context(context)
    {
        m_form.setupUi(this);
    }

    template <std::size_t count>
    void bind(const NumericRow<Form> (&rows)[count])
    {
        for (const NumericRow<Form>& row : rows) {
            bindNumericField(m_form.*row.button, row.field.spec(m_context), row.field.displayMode(),
                             row.field.scale, {});
        }
    }

    template <std::size_t count>
    void bind(const EnumRow<Form> (&rows)[count])
    {
        for (const EnumRow<Form>& row : rows) {
            EnumTextButton* const button = m_form.*row.button;
            button->setEnums(row.choices.texts(m_context));
            bindEnumField(button, QLatin1String(row.key), row.choices.values());
        }
    }

    template <std::size_t count>
    void bind(const SwitchRow<Form> (&rows)[count])
    {
        for (const SwitchRow<Form>& row : rows) {
            bindSwitchField(m_form.*row.button, QLatin1String(row.key));
        }
    }

    [[nodiscard]] const Form& form() const { return m_form; }

private:
    const char* m_context;
    Form m_form{};
};
