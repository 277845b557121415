#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "ui_RemoteDsssPanel.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <algorithm>
#include <iterator>

namespace {

constexpr char context[] = "RemoteDsssPanel";

using Form = Ui::DssPanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnSymbolRate, {"SymbolRate", QT_TRANSLATE_NOOP("RemoteDsssPanel", "Symbol Rate"), Quantity::Frequency, 1e6, 3, 1, {}, "125"}},
    {&Form::btnFilterAlpha, {"FilterAlpha", QT_TRANSLATE_NOOP("RemoteDsssPanel", "Filter Alpha"), Quantity::Number, 0.1, 2, 0, 1}},
    {&Form::btnCode, {"Code", QT_TRANSLATE_NOOP("RemoteDsssPanel", "Code"), Quantity::Integer, 1, 0, 1}},
    {&Form::btnFilterLength, {"FilterLength", QT_TRANSLATE_NOOP("RemoteDsssPanel", "Filter Length (symbols)"), Quantity::Integer, 1, 0, 1}},
    {&Form::btnSequenceSeed, {"SequenceSeed", QT_TRANSLATE_NOOP("RemoteDsssPanel", "Sequence Seed"), Quantity::Integer, 1, 0, 0}},
};
// clang-format on

constexpr Choice filterTypes[] = {
    {"Rectangular", QT_TRANSLATE_NOOP("RemoteDsssPanel", "Rectangular")},
    {"RaisedCosine", QT_TRANSLATE_NOOP("RemoteDsssPanel", "Raised Cosine")},
    {"RootRaisedCosine", QT_TRANSLATE_NOOP("RemoteDsssPanel", "Root Raised Cosine")},
    {"Gaussian", QT_TRANSLATE_NOOP("RemoteDsssPanel", "Gaussian")},
    {"HalfSine", QT_TRANSLATE_NOOP("RemoteDsssPanel", "Half-Sine")},
};
// Where the profile does not say it.
constexpr QLatin1String filtersWithAlpha[] = {QLatin1String("RaisedCosine"),
                                              QLatin1String("RootRaisedCosine"), QLatin1String("Gaussian")};

constexpr Choice modulationTypes[] = {
    {"BPSK", QT_TRANSLATE_NOOP("RemoteDsssPanel", "BPSK")},
    {"QPSK", QT_TRANSLATE_NOOP("RemoteDsssPanel", "QPSK")},
};
constexpr int oversamples[] = {4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30, 32};

constexpr EnumRow<Form> enumFields[] = {
    {&Form::btnFilterType, "FilterType", Choices(filterTypes)},
    {&Form::btnModulationType, "ModulationType", Choices(modulationTypes)},
    {&Form::btnOversample, "Oversample", Choices(oversamples)},
};

class RemoteDsssPanel final : public FormPanel<Form>
{
public:
    explicit RemoteDsssPanel(QWidget* parent)
        : FormPanel(context, parent)
    {
        form().btnRecord->hide();
        bindEnableSwitch(form().enabled);
        bind(numericFields);
        bind(enumFields);
    }

protected:
    void applyPanelState() override
    {
        form().btnFilterAlpha->setEnabled(isFilterAlphaEditable());
        const QJsonArray options = profile().value(QLatin1String("oversampleOptions")).toArray();
        for (int item = 0; item < int(std::size(oversamples)); ++item) {
            const bool offered = options.isEmpty() || options.contains(oversamples[item]);
            if (form().btnOversample->isItemEnabled(item) != offered) {
                form().btnOversample->setItemEnabled(item, offered);
            }
        }
    }

private:
    [[nodiscard]] bool isFilterAlphaEditable() const
    {
        const QJsonValue told = profile().value(QLatin1String("filterAlphaEditable"));
        if (!told.isUndefined()) {
            return told.toBool();
        }
        const QString filter = editorState().value(QLatin1String("FilterType")).toString();
        return std::find(std::begin(filtersWithAlpha), std::end(filtersWithAlpha), filter) !=
               std::end(filtersWithAlpha);
    }
};

} // namespace

RemoteModEditor* createDsssPanel(QWidget* parent)
{
    return new RemoteDsssPanel(parent);
}
