#pragma once

#include "sweep/RemoteSweepPanel.h"

#include <QVector>

class EnumTextButton;
class LabelButton;
class QGridLayout;
class QStackedWidget;
class SwitchButton;
struct SweepField;

// The page of a plan in the stack: frequency, level, or the sentence that there is no page for it.
[[nodiscard]] int sweepPage(SweepPlanId plan);

// A button that shows a field's value.
struct SweepValueButton
{
    const SweepField* field;
    int page; // only the dwell time stands on both
    LabelButton* button;
};

// The widgets of the panel, built into it and owned by it, before anything is shown.
struct SweepWidgets
{
    explicit SweepWidgets(RemoteSweepPanel* panel);

    SwitchButton* enabled;
    EnumTextButton* plan;
    QStackedWidget* pages;
    QVector<SweepValueButton> values;

private:
    void addPlanPage(int page);
    void addUnsupportedPage();
};

[[nodiscard]] QString sweepStyleSheet(bool lightTheme);
