#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemoteAmPanel.h"

namespace {

constexpr char context[] = "RemoteAmPanel";

using Form = Ui::AMPanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnRate, {"Rate", "Rate", Quantity::Frequency, 1, 3, 1, {}, "125"}},
    {&Form::btnDepth, {"Depth", "Depth(%)", Quantity::Number, 10, 2, 0.01, 100}},
};
// clang-format on

constexpr EnumRow<Form> enumFields[] = {{&Form::btnShape, "Shape", Choices(waveShapes)}};

class RemoteAmPanel final : public FormPanel<Form>
{
public:
    explicit RemoteAmPanel(QWidget* parent)
        : FormPanel(context, parent)
    {
        form().btnSave->hide();
        bindEnableSwitch(form().enabled);
        bind(numericFields);
        bind(enumFields);
    }
};

} // namespace

RemoteModEditor* createAmPanel(QWidget* parent)
{
    return new RemoteAmPanel(parent);
}
