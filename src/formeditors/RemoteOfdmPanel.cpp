#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemoteOfdmPanel.h"
#include "utils/NumberText.h"

#include <QCoreApplication>
#include <cmath>

namespace {

constexpr char context[] = "RemoteOfdmPanel";

using Form = Ui::OfdmPanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnSymbolCount, {"SymbolCount", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "Symbol Count"), Quantity::Integer, 1, 0, 0}},
    {&Form::btnGuardBandCarriers_Left, {"GuardBandCarriersLeft", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "Guard Band Carriers (Left)"), Quantity::Integer, 1, 0, 0}},
    {&Form::btnGuardBandCarriers_Right, {"GuardBandCarriersRight", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "Guard Band Carriers (Right)"), Quantity::Integer, 1, 0, 0}},
    {&Form::btnGuardInterval, {"GuardInterval", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "Guard Interval (%)"), Quantity::Number, 0.01, 3, 0}},
    {&Form::btnWindowLengthPer, {"WindowLength", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "Window Length (%)"), Quantity::Number, 1, 2, 0, 100}},
    {&Form::btnSampleRate, {"SampleRate", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "Sample Rate"), Quantity::Frequency, 1e6, 3, 1, {}, "125"}},
};
// clang-format on

constexpr Choice modulationTypes[] = {
    {"BPSK", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "BPSK")},
    {"QPSK", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "QPSK")},
    {"PSK8", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "8PSK")},
    {"PSK16", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "16PSK")},
    {"QAM16", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "16QAM")},
    {"QAM64", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "64QAM")},
    {"QAM256", QT_TRANSLATE_NOOP("RemoteOfdmPanel", "256QAM")},
};
constexpr int fftSizes[] = {16, 32, 64, 128, 256, 512, 1024, 2048};

constexpr EnumRow<Form> enumFields[] = {
    {&Form::btnModulationType, "ModulationType", Choices(modulationTypes)},
    {&Form::btnFFTSize, "FFTSize", Choices(fftSizes)},
};

constexpr SwitchRow<Form> switchFields[] = {
    {&Form::btnNullDC, "NullDC"},
    {&Form::btnWindowed, "Windowed"},
};

class RemoteOfdmPanel final : public FormPanel<Form>
{
    Q_DECLARE_TR_FUNCTIONS(RemoteOfdmPanel)

public:
    explicit RemoteOfdmPanel(QWidget* parent)
        : FormPanel(context, parent)
    {
        form().btnRecord->hide();
        bindEnableSwitch(form().enabled);
        bind(numericFields);
        bind(enumFields);
        bind(switchFields);
    }

protected:
    void applyPanelState() override
    {
        const double carriers = number(QStringLiteral("FFTSize"));
        const double guardSamples = number(QStringLiteral("GuardInterval")) * 0.01 * carriers;
        const double windowShare = number(QStringLiteral("WindowLength")) * 0.01;
        const double spacing = carriers > 0 ? number(QStringLiteral("SampleRate")) / carriers : 0;
        form().btnCarrierSpacing->setLabelText(Utils::normalizeFrequency(spacing, true, false));
        form().btnGuardIntervalLength->setLabelText(samples(guardSamples));
        form().btnWindowLength->setLabelText(samples(guardSamples * windowShare));
    }

private:
    // Whole samples only.
    [[nodiscard]] QString samples(double count) const
    {
        return tr("%1 samples").arg(Utils::toString(std::trunc(count), 0, true));
    }
};

} // namespace

RemoteModEditor* createOfdmPanel(QWidget* parent)
{
    return new RemoteOfdmPanel(parent);
}
