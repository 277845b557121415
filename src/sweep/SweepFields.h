#pragma once

#include "sweep/RemoteSweepPanel.h"

#include <array>

// One numeric field of the sweep plan.
struct SweepField
{
    RemoteSweepPanel::NumericField field;
    const char* title; // to be translated in the context of the panel
    QString (*adapterType)();
    const char* unit;     // null: the frequency unit that fits the value
    double unitsPerValue; // with a unit: how many of it make 1 of the value
    double step;          // of the keyboard, in the unit of the value
    const char* auxText;
    int decimals; // of the keyboard; -1: as many as it takes
    bool requiresPositive;
    double SweepSettings::*value;
};

// Null for Invalid and for what is no field.
[[nodiscard]] const SweepField* sweepField(RemoteSweepPanel::NumericField field);

// What the field's button shows.
[[nodiscard]] QString valueText(const SweepField& field, const SweepSettings& settings);
// The unit to enter the field's value in.
[[nodiscard]] QString unitText(const SweepField& field, const SweepSettings& settings);
