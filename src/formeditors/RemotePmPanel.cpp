#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemotePmPanel.h"

namespace {

constexpr char context[] = "RemotePmPanel";

using Form = Ui::PMPanel;

// The state holds radians; shown and entered are degrees.
constexpr double degreesPerRadian = 57.29577951308232;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnRate, {"Rate", "Rate", Quantity::Frequency, 1, 3, 1, {}, "125"}},
    {&Form::btnPhaseDeviation, {"PhaseDeviation", "Phase Deviation(deg)", Quantity::Number, 1, 2, 0, 360, "", degreesPerRadian}},
    {&Form::btnInitPhase, {"InitPhase", "Init Phase(deg)", Quantity::Number, 1, 2, -180, 180, "", degreesPerRadian}},
};
// clang-format on

constexpr EnumRow<Form> enumFields[] = {{&Form::btnShape, "Shape", Choices(waveShapes)}};

class RemotePmPanel final : public FormPanel<Form>
{
public:
    explicit RemotePmPanel(QWidget* parent)
        : FormPanel(context, parent)
    {
        form().btnRecord->hide();
        bindEnableSwitch(form().enabled);
        bind(numericFields);
        bind(enumFields);
    }
};

} // namespace

RemoteModEditor* createPmPanel(QWidget* parent)
{
    return new RemotePmPanel(parent);
}
