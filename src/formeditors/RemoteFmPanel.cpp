#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemoteFmPanel.h"

namespace {

constexpr char context[] = "RemoteFmPanel";

using Form = Ui::FMPanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnRate, {"Rate", "Rate", Quantity::Frequency, 1, 3, 1, {}, "125"}},
    {&Form::btnDeviation, {"Deviation", "Deviation", Quantity::Frequency, 1, 3, 1, {}, "125"}},
};
// clang-format on

constexpr EnumRow<Form> enumFields[] = {{&Form::btnShape, "Shape", Choices(waveShapes)}};

class RemoteFmPanel final : public FormPanel<Form>
{
public:
    explicit RemoteFmPanel(QWidget* parent)
        : FormPanel(context, parent)
    {
        form().btnRecord->hide();
        bindEnableSwitch(form().enabled);
        bind(numericFields);
        bind(enumFields);
    }
};

} // namespace

RemoteModEditor* createFmPanel(QWidget* parent)
{
    return new RemoteFmPanel(parent);
}
