#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemoteRampPanel.h"

#include <QCoreApplication>

namespace {

constexpr char context[] = "RemoteRampPanel";

using Form = Ui::RampPanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnSpan, {"Span", QT_TRANSLATE_NOOP("RemoteRampPanel", "Span"), Quantity::Frequency, 1e6, 3, 1, {}, "125"}},
    {&Form::btnSweepTime, {"SweepTime", QT_TRANSLATE_NOOP("RemoteRampPanel", "Sweep Time"), Quantity::Time, 1e-6, 6, 1e-12}},
    {&Form::btnPeriod, {"Period", QT_TRANSLATE_NOOP("RemoteRampPanel", "Period"), Quantity::Time, 1e-6, 6, 1e-12}},
};
// clang-format on

class RemoteRampPanel final : public FormPanel<Form>
{
public:
    explicit RemoteRampPanel(QWidget* parent)
        : FormPanel(context, parent)
    {
        form().btnRecord->hide();
        form().btnShowWaveForm->hide();
        bindEnableSwitch(form().enabled);
        bind(numericFields);
    }
};

} // namespace

RemoteModEditor* createRampPanel(QWidget* parent)
{
    return new RemoteRampPanel(parent);
}
