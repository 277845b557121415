#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemoteFmPanel.h"

#include <QCoreApplication>

namespace {

constexpr char context[] = "RemoteFmPanel";

using Form = Ui::FMPanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnRate, {"Rate", QT_TRANSLATE_NOOP("RemoteFmPanel", "Rate"), Quantity::Frequency, 1, 3, 1, {}, "125"}},
    {&Form::btnDeviation, {"Deviation", QT_TRANSLATE_NOOP("RemoteFmPanel", "Deviation"), Quantity::Frequency, 1, 3, 1, {}, "125"}},
};
// clang-format on

constexpr Choice shapes[] = {
    {"Sine", QT_TRANSLATE_NOOP("RemoteFmPanel", "Sine")},
    {"Square", QT_TRANSLATE_NOOP("RemoteFmPanel", "Square")},
    {"Triangle", QT_TRANSLATE_NOOP("RemoteFmPanel", "Triangle")},
    {"Ramp", QT_TRANSLATE_NOOP("RemoteFmPanel", "Ramp")},
};

constexpr EnumRow<Form> enumFields[] = {{&Form::btnShape, "Shape", Choices(shapes)}};

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
