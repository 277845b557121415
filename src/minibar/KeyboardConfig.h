#pragma once

#include "business/PropertyBindingHelper.h"
#include "sweep/RemoteSweepPanel.h"

struct BarStatus;
struct NumericFieldSpec;

// What the numeric keyboard is told of a quick edit's value ...
[[nodiscard]] PropertyBindingHelper::NumericKeyboardConfig frequencyKeyboardConfig(const BarStatus& status);
[[nodiscard]] PropertyBindingHelper::NumericKeyboardConfig levelKeyboardConfig(const BarStatus& status);

// ... and of an editor's field.
[[nodiscard]] PropertyBindingHelper::NumericKeyboardConfig
sweepKeyboardConfig(const RemoteSweepPanel& panel, RemoteSweepPanel::NumericField field);
[[nodiscard]] PropertyBindingHelper::NumericKeyboardConfig modKeyboardConfig(const NumericFieldSpec& spec);
