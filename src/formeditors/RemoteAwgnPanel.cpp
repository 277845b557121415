#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemoteAwgnPanel.h"

#include <QCoreApplication>

namespace {

constexpr char context[] = "RemoteAwgnPanel";

using Form = Ui::AwgnPanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnBandwidth, {"Bandwith", QT_TRANSLATE_NOOP("RemoteAwgnPanel", "Bandwidth"), Quantity::Frequency, 1e6, 3, 1, {}, "125"}},
    {&Form::btnLength, {"Length", QT_TRANSLATE_NOOP("RemoteAwgnPanel", "Length"), Quantity::Time, 0.001, 6, 1e-12}},
};
// clang-format on

class RemoteAwgnPanel final : public FormPanel<Form>
{
public:
    explicit RemoteAwgnPanel(QWidget* parent)
        : FormPanel(context, parent)
    {
        form().btnRecord->hide();
        form().btnSeed->hide();
        bindEnableSwitch(form().enabled);
        bind(numericFields);
    }
};

} // namespace

RemoteModEditor* createAwgnPanel(QWidget* parent)
{
    return new RemoteAwgnPanel(parent);
}
