#pragma once

#include "controls/EnumTextButton.h"
#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"
#include "sweep/RemoteSweepPanel.h"

#include <QSignalSpy>
#include <QStackedWidget>

using Field = RemoteSweepPanel::NumericField;

struct ButtonOfField
{
    const char* objectName;
    Field field;
    int page;
};

// The eight value buttons.
constexpr ButtonOfField valueButtons[] = {
    {"btnStartFreq", Field::FrequencyStart, 0}, {"btnStopFreq", Field::FrequencyStop, 0},
    {"btnStepFreq", Field::FrequencyStep, 0},   {"btnDwellTime_Analog", Field::Dwell, 0},
    {"btnStartLevel", Field::LevelStart, 1},    {"btnStopLevel", Field::LevelStop, 1},
    {"btnStepLevel", Field::LevelStep, 1},      {"btnDwellTime_Analog_Level", Field::Dwell, 1},
};

constexpr Field allFields[] = {Field::FrequencyStart, Field::FrequencyStop, Field::FrequencyStep,
                               Field::LevelStart,     Field::LevelStop,     Field::LevelStep,
                               Field::Dwell};

// A sweep that can be edited, with a different number in each field.
inline SweepSnapshot editableSweep(SweepPlanId plan = SweepPlanId::FrequencyScan)
{
    SweepSnapshot sweep;
    sweep.available = true;
    sweep.revision = 41;
    sweep.supportedPlanIds = {SweepPlanId::FrequencyScan, SweepPlanId::LevelScan};
    sweep.settings = {false, plan, 1.5e9, 2.25e9, 2.5e6, -30, -10.5, 0.25, 0.0025};
    return sweep;
}

// A panel with what is in it and what leaves it.
struct SweepPanelFixture
{
    explicit SweepPanelFixture(QWidget* parent = nullptr, bool lightTheme = true)
        : panel(lightTheme, parent)
    {}

    [[nodiscard]] SwitchButton* enabledSwitch() const
    {
        return panel.findChild<SwitchButton*>(QStringLiteral("enabled"));
    }
    [[nodiscard]] EnumTextButton* plan() const
    {
        return panel.findChild<EnumTextButton*>(QStringLiteral("btnMode"));
    }
    [[nodiscard]] QStackedWidget* pages() const { return panel.findChild<QStackedWidget*>(); }
    [[nodiscard]] LabelButton* button(const char* objectName) const
    {
        return panel.findChild<LabelButton*>(QLatin1String(objectName));
    }
    // The names of the value buttons that are marked.
    [[nodiscard]] QStringList marked() const
    {
        QStringList names;
        for (const ButtonOfField& entry : valueButtons) {
            if (button(entry.objectName)->isChecked()) {
                names.append(QLatin1String(entry.objectName));
            }
        }
        return names;
    }
    // All that the panel shows, in words.
    [[nodiscard]] QStringList shown() const
    {
        const auto flag = [](bool on) { return on ? QStringLiteral("yes") : QStringLiteral("no"); };
        QStringList words = {flag(enabledSwitch()->status()),
                             flag(enabledSwitch()->isEnabled()),
                             plan()->labelText(),
                             QString::number(plan()->currentEnum()),
                             flag(plan()->isChecked()),
                             flag(plan()->isEnabled()),
                             flag(plan()->isItemEnabled(0)),
                             flag(plan()->isItemEnabled(1)),
                             QString::number(pages()->currentIndex())};
        for (const ButtonOfField& entry : valueButtons) {
            const LabelButton* const value = button(entry.objectName);
            words << value->labelText() << flag(value->isEnabled()) << flag(value->isChecked());
        }
        return words;
    }
    [[nodiscard]] int emitted() const { return changes.count() + edits.count(); }
    [[nodiscard]] MinibarHelperProtocol::SweepChangeRequest request(int index) const
    {
        return changes.at(index).first().value<MinibarHelperProtocol::SweepChangeRequest>();
    }

    RemoteSweepPanel panel;
    QSignalSpy changes{&panel, &RemoteSweepPanel::changeRequested};
    QSignalSpy edits{&panel, &RemoteSweepPanel::numericEditRequested};
};
