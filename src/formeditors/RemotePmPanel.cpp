#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemotePmPanel.h"

#include <QCoreApplication>

namespace {

constexpr char context[] = "RemotePmPanel";

using Form = Ui::PMPanel;

// The state holds radians; shown and entered are degrees.
constexpr double degreesPerRadian = 57.29577951308232;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnRate, {"Rate", QT_TRANSLATE_NOOP("RemotePmPanel", "Rate"), Quantity::Frequency, 1, 3, 1, {}, "125"}},
    {&Form::btnPhaseDeviation, {"PhaseDeviation", QT_TRANSLATE_NOOP("RemotePmPanel", "Phase Deviation(deg)"), Quantity::Number, 1, 2, 0, 360, "", degreesPerRadian}},
    {&Form::btnInitPhase, {"InitPhase", QT_TRANSLATE_NOOP("RemotePmPanel", "Init Phase(deg)"), Quantity::Number, 1, 2, -180, 180, "", degreesPerRadian}},
};
// clang-format on

constexpr Choice shapes[] = {
    {"Sine", QT_TRANSLATE_NOOP("RemotePmPanel", "Sine")},
    {"Square", QT_TRANSLATE_NOOP("RemotePmPanel", "Square")},
    {"Triangle", QT_TRANSLATE_NOOP("RemotePmPanel", "Triangle")},
    {"Ramp", QT_TRANSLATE_NOOP("RemotePmPanel", "Ramp")},
};

constexpr EnumRow<Form> enumFields[] = {{&Form::btnShape, "Shape", Choices(shapes)}};

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
