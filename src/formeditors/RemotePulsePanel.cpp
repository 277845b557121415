#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemotePulsePanel.h"
#include "utils/NumberText.h"

#include <QCoreApplication>
#include <cmath>

namespace {

constexpr char context[] = "RemotePulsePanel";

QString widthKey()
{
    return QStringLiteral("Width");
}

QString periodKey()
{
    return QStringLiteral("Period");
}

using Form = Ui::PulsePanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnWidth, {"Width", QT_TRANSLATE_NOOP("RemotePulsePanel", "Width"), Quantity::Time, 1e-6, 6, 1e-12}},
    {&Form::btnPeriod, {"Period", QT_TRANSLATE_NOOP("RemotePulsePanel", "Period"), Quantity::Time, 1e-6, 6, 1e-12}},
};
// clang-format on

// No key of the state: what the width is of the period, in percent, edited as a width.
constexpr NumericField dutyCycle = {
    "DutyCycle", QT_TRANSLATE_NOOP("RemotePulsePanel", "Duty Cycle(%)"), Quantity::Number, 1, 2, 0, 100};

class RemotePulsePanel final : public FormPanel<Form>
{
public:
    explicit RemotePulsePanel(QWidget* parent)
        : FormPanel(context, parent)
    {
        form().btnRecord->hide();
        bindEnableSwitch(form().enabled);
        bind(numericFields);
        requestNumericEditOnClick(form().btnDutyCycle, dutyCycleKey());
    }

    [[nodiscard]] bool describeNumericField(const QString& key, NumericFieldSpec& spec) const override
    {
        if (key != dutyCycleKey()) {
            return FormPanel::describeNumericField(key, spec);
        }
        spec = dutyCycle.spec(context);
        spec.value = duty();
        return true;
    }

    void applyNumericValue(const QString& key, double value) override
    {
        if (key != dutyCycleKey()) {
            FormPanel::applyNumericValue(key, value);
            return;
        }
        const double width = value * 0.01 * number(periodKey());
        if (std::isfinite(width)) {
            setField(widthKey(), width);
        }
    }

    void setNumericFieldActive(const QString& key, bool active) override
    {
        FormPanel::setNumericFieldActive(key, active);
        form().btnDutyCycle->setChecked(active && key == dutyCycleKey());
    }

protected:
    void applyPanelState() override
    {
        form().btnDutyCycle->setLabelText(Utils::toString(duty(), dutyCycle.decimals, true));
    }

private:
    [[nodiscard]] static QString dutyCycleKey() { return QLatin1String(dutyCycle.key); }

    // In percent.
    [[nodiscard]] double duty() const
    {
        const double period = number(periodKey());
        return period > 0 ? number(widthKey()) / period * 100 : 0;
    }
};

} // namespace

RemoteModEditor* createPulsePanel(QWidget* parent)
{
    return new RemotePulsePanel(parent);
}
