#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemoteAmPanel.h"

#include <QCoreApplication>

namespace {

constexpr char context[] = "RemoteAmPanel";

using Form = Ui::AMPanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnRate, {"Rate", QT_TRANSLATE_NOOP("RemoteAmPanel", "Rate"), Quantity::Frequency, 1, 3, 1, {}, "125"}},
    {&Form::btnDepth, {"Depth", QT_TRANSLATE_NOOP("RemoteAmPanel", "Depth(%)"), Quantity::Number, 10, 2, 0.01, 100}},
};
// clang-format on

constexpr Choice shapes[] = {
    {"Sine", QT_TRANSLATE_NOOP("RemoteAmPanel", "Sine")},
    {"Square", QT_TRANSLATE_NOOP("RemoteAmPanel", "Square")},
    {"Triangle", QT_TRANSLATE_NOOP("RemoteAmPanel", "Triangle")},
    {"Ramp", QT_TRANSLATE_NOOP("RemoteAmPanel", "Ramp")},
};

constexpr EnumRow<Form> enumFields[] = {{&Form::btnShape, "Shape", Choices(shapes)}};

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
