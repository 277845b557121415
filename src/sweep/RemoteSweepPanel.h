#pragma once

#include "link/ChangeRequests.h"

#include <QWidget>

struct SweepWidgets;

// Shows the instrument's sweep plan as the last snapshot confirmed it. Every edit leaves as a request and the
// control goes back to the confirmed state at once; a numeric value is entered on the on-screen keyboard,
// which the owner of the panel opens. Applying a state emits nothing.
class RemoteSweepPanel final : public QWidget
{
    Q_OBJECT

public:
    enum class NumericField {
        Invalid = 0,
        FrequencyStart = 1, // Hz, as the next two
        FrequencyStop = 2,
        FrequencyStep = 3,
        LevelStart = 4, // dBm
        LevelStop = 5,  // dBm
        LevelStep = 6,  // dB
        Dwell = 7       // seconds, the same for both plans
    };
    Q_ENUM(NumericField)

    RemoteSweepPanel(bool lightTheme, QWidget* parent);
    ~RemoteSweepPanel() override;

    // An equal snapshot touches no widget.
    void applySweep(const SweepSnapshot& sweep);
    // There is no sweep to show.
    void clearSweep();
    // A busy panel shows what it is told but takes no edits.
    void setBusy(bool busy);

    // Marks the button of the field whose keyboard is open, and no other; none if not `active`.
    void setNumericFieldActive(NumericField field, bool active);
    // Asks for a field's new value, in the unit of NumericField. Its range is not looked at; without a sweep
    // that can be edited, for a value that is not finite and for no field nothing happens.
    void applyNumericValue(NumericField field, double value);

    // What the keyboard needs to know of a field.
    [[nodiscard]] QString fieldTitle(NumericField field) const;
    [[nodiscard]] QString fieldAdapterType(NumericField field) const;
    [[nodiscard]] double fieldValue(NumericField field) const; // in the unit of NumericField
    [[nodiscard]] double fieldStep(NumericField field) const;  // likewise
    [[nodiscard]] QString fieldUnitText(NumericField field) const;
    [[nodiscard]] QString fieldAuxText(NumericField field) const;
    [[nodiscard]] int fieldDecimals(NumericField field) const; // -1: as many as it takes
    [[nodiscard]] bool fieldRequiresPositive(NumericField field) const;

signals:
    void changeRequested(MinibarHelperProtocol::SweepChangeRequest request);
    // The user wants to enter a value; `anchor` is the field's button.
    void numericEditRequested(RemoteSweepPanel::NumericField field, QWidget* anchor);

private:
    void connectWidgets();
    // `force`: the plan selector may show something else than it was told.
    void refresh(bool force);
    void refreshEnabled();
    void showPlan(SweepPlanId plan, bool force);
    void showPlanText(const QString& text, bool force);
    void onEnabledToggled(bool on);
    void onPlanChosen(int index);
    [[nodiscard]] bool isEditable() const { return m_hasState && m_sweep.available && !m_busy; }
    void request(const SweepSettings& settings);

    std::unique_ptr<SweepWidgets> m_widgets;
    SweepSnapshot m_sweep; // what is confirmed
    bool m_hasState = false;
    bool m_busy = false;
    int m_shownPlan = -1; // the selector's item; -1: it shows a text
};
