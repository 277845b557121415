#include "sweep/RemoteSweepPanel.h"

#include "controls/EnumTextButton.h"
#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"
#include "sweep/SweepFields.h"
#include "sweep/SweepWidgets.h"

#include <QStackedWidget>
#include <array>
#include <cmath>

namespace {

constexpr int textShown = -1;

// The plans that the selector offers, by its items.
constexpr std::array<SweepPlanId, 2> offeredPlans = {SweepPlanId::FrequencyScan, SweepPlanId::LevelScan};

SweepPlanId planOfItem(int index)
{
    const bool offered = index >= 0 && index < int(offeredPlans.size());
    return offered ? offeredPlans[std::size_t(index)] : SweepPlanId::None;
}

int itemOfPlan(SweepPlanId plan)
{
    for (int index = 0; index < int(offeredPlans.size()); ++index) {
        if (planOfItem(index) == plan) {
            return index;
        }
    }
    return textShown;
}

QString nothing()
{
    return QStringLiteral("--");
}

void showText(LabelButton* button, const QString& text)
{
    if (button->labelText() != text) {
        button->setLabelText(text);
    }
}

void showChecked(QAbstractButton* button, bool checked)
{
    if (button->isChecked() != checked) {
        button->setChecked(checked);
    }
}

void showStatus(SwitchButton* button, bool on)
{
    if (button->status() != on) {
        button->setStatus(on);
    }
}

} // namespace

RemoteSweepPanel::RemoteSweepPanel(bool lightTheme, QWidget* parent)
    : QWidget(parent)
{
    qRegisterMetaType<NumericField>(); // a class's own enumeration is not registered with its signals
    setObjectName(QStringLiteral("remoteSweepPanel"));
    setAttribute(Qt::WA_StyledBackground);
    m_widgets = std::make_unique<SweepWidgets>(this);
    connectWidgets();
    setStyleSheet(sweepStyleSheet(lightTheme));
    refresh(false);
}

RemoteSweepPanel::~RemoteSweepPanel() = default;

void RemoteSweepPanel::connectWidgets()
{
    connect(m_widgets->enabled, &SwitchButton::statusChanged, this, &RemoteSweepPanel::onEnabledToggled);
    connect(m_widgets->plan, &EnumTextButton::currentItemEdited, this, &RemoteSweepPanel::onPlanChosen);
    for (const SweepValueButton& value : qAsConst(m_widgets->values)) {
        LabelButton* const button = value.button;
        const NumericField field = value.field->field;
        connect(button, &LabelButton::clicked, this, [this, button, field](bool checked) {
            // The mark tells that the keyboard is open, so a click alone does not set it.
            button->setChecked(!checked);
            if (!m_busy && m_sweep.available) {
                emit numericEditRequested(field, button);
            }
        });
    }
}

void RemoteSweepPanel::applySweep(const SweepSnapshot& sweep)
{
    if (m_hasState && sweep == m_sweep) {
        return;
    }
    const bool first = !m_hasState;
    m_sweep = sweep;
    m_hasState = true;
    refresh(first);
}

void RemoteSweepPanel::clearSweep()
{
    if (!m_hasState) {
        return;
    }
    m_hasState = false;
    m_sweep = {};
    refresh(false);
}

void RemoteSweepPanel::setBusy(bool busy)
{
    if (busy != m_busy) {
        m_busy = busy;
        refreshEnabled();
    }
}

void RemoteSweepPanel::refresh(bool force)
{
    showStatus(m_widgets->enabled, m_hasState && m_sweep.settings.enabled);
    showPlan(m_hasState ? m_sweep.settings.selectedPlanId : SweepPlanId::None, force);
    if (!m_hasState) {
        showChecked(m_widgets->plan, false);
    }
    m_widgets->pages->setCurrentIndex(sweepPage(m_sweep.settings.selectedPlanId));
    for (const SweepValueButton& value : qAsConst(m_widgets->values)) {
        showText(value.button, m_hasState ? valueText(*value.field, m_sweep.settings) : nothing());
        if (!m_hasState) {
            showChecked(value.button, false);
        }
    }
    refreshEnabled();
}

void RemoteSweepPanel::showPlan(SweepPlanId plan, bool force)
{
    const int item = itemOfPlan(plan);
    if (item == textShown) {
        showPlanText(plan == SweepPlanId::Unsupported ? tr("Unsupported") : nothing(), force);
    } else if (force || m_shownPlan != item) {
        m_widgets->plan->setCurrentEnum(item);
    }
    m_shownPlan = item;
}

void RemoteSweepPanel::showPlanText(const QString& text, bool force)
{
    if (force || m_shownPlan != textShown || m_widgets->plan->labelText() != text) {
        m_widgets->plan->setLabelText(text);
    }
}

void RemoteSweepPanel::refreshEnabled()
{
    const bool editable = isEditable();
    m_widgets->enabled->setEnabled(editable);
    bool anyPlan = false;
    for (int index = 0; index < int(offeredPlans.size()); ++index) {
        const bool offered = editable && m_sweep.supportedPlanIds.contains(planOfItem(index));
        if (m_widgets->plan->isItemEnabled(index) != offered) {
            m_widgets->plan->setItemEnabled(index, offered);
        }
        anyPlan = anyPlan || offered;
    }
    m_widgets->plan->setEnabled(anyPlan);
    for (const SweepValueButton& value : qAsConst(m_widgets->values)) {
        value.button->setEnabled(editable);
    }
}

// Also called when the code turns the switch, but the code only ever turns it to what is confirmed.
void RemoteSweepPanel::onEnabledToggled(bool on)
{
    showStatus(m_widgets->enabled, m_hasState && m_sweep.settings.enabled);
    if (isEditable() && on != m_sweep.settings.enabled) {
        SweepSettings settings = m_sweep.settings;
        settings.enabled = on;
        request(settings);
    }
}

void RemoteSweepPanel::onPlanChosen(int index)
{
    refresh(true);
    const SweepPlanId plan = planOfItem(index);
    if (isEditable() && plan != m_sweep.settings.selectedPlanId && m_sweep.supportedPlanIds.contains(plan)) {
        SweepSettings settings = m_sweep.settings;
        settings.selectedPlanId = plan;
        request(settings);
    }
}

void RemoteSweepPanel::setNumericFieldActive(NumericField field, bool active)
{
    const int page = sweepPage(m_sweep.settings.selectedPlanId);
    for (const SweepValueButton& value : qAsConst(m_widgets->values)) {
        const bool marked = active && value.field->field == field;
        showChecked(value.button, marked && (field != NumericField::Dwell || value.page == page));
    }
}

void RemoteSweepPanel::applyNumericValue(NumericField field, double value)
{
    const SweepField* const entry = sweepField(field);
    if (entry && isEditable() && std::isfinite(value)) {
        SweepSettings settings = m_sweep.settings;
        settings.*entry->value = value;
        request(settings);
    }
}

void RemoteSweepPanel::request(const SweepSettings& settings)
{
    emit changeRequested({m_sweep.revision, settings});
}

QString RemoteSweepPanel::fieldTitle(NumericField field) const
{
    const SweepField* const entry = sweepField(field);
    return entry ? tr(entry->title) : QString();
}

QString RemoteSweepPanel::fieldAdapterType(NumericField field) const
{
    const SweepField* const entry = sweepField(field);
    return entry ? entry->adapterType() : QString();
}

double RemoteSweepPanel::fieldValue(NumericField field) const
{
    const SweepField* const entry = sweepField(field);
    return entry ? m_sweep.settings.*entry->value : 0.0;
}

double RemoteSweepPanel::fieldStep(NumericField field) const
{
    const SweepField* const entry = sweepField(field);
    return entry ? entry->step : 1.0;
}

QString RemoteSweepPanel::fieldUnitText(NumericField field) const
{
    const SweepField* const entry = sweepField(field);
    return entry ? unitText(*entry, m_sweep.settings) : QString();
}

QString RemoteSweepPanel::fieldAuxText(NumericField field) const
{
    const SweepField* const entry = sweepField(field);
    return entry ? QString(QLatin1String(entry->auxText)) : QString();
}

int RemoteSweepPanel::fieldDecimals(NumericField field) const
{
    const SweepField* const entry = sweepField(field);
    return entry ? entry->decimals : -1;
}

bool RemoteSweepPanel::fieldRequiresPositive(NumericField field) const
{
    const SweepField* const entry = sweepField(field);
    return entry && entry->requiresPositive;
}
