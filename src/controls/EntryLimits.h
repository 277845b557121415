#pragma once

#include "controls/BaseUnitAdapter.h"
#include "controls/NumericEntry.h"

#include <QCoreApplication>

namespace Controls {

// What a value may be: bounds and fineness, and the words for them. Numbers in the base unit.
class EntryLimits final
{
    Q_DECLARE_TR_FUNCTIONS(Controls::EntryLimits)

public:
    // `scale` must outlive the object. Bounds that are no numbers or contradict each other do not apply.
    EntryLimits(const BaseUnitAdapter& scale, const NumericEntry& entry);

    // "9 kHz to 6 GHz", "At least 1 Hz", "At most 100", or nothing.
    [[nodiscard]] QString text() const;

    // Why this value is not taken, a sentence that names the limit; empty when it is taken.
    [[nodiscard]] QString boundRefusal(double value) const;
    [[nodiscard]] QString finenessRefusal(double value) const;

    // What becomes of a value that is taken: where whole numbers are asked for, the nearest one, halves away
    // from zero.
    [[nodiscard]] double taken(double value) const;

    // Whether a number with a decimal point, in any of the units, or one below zero can be taken at all.
    [[nodiscard]] bool takesFractions() const;
    [[nodiscard]] bool takesNegatives() const;

    // The nearest value within the bounds.
    [[nodiscard]] double clamped(double value) const;

    // The number that stands for this value in units[unitIndex]: rounded to the decimals in use where that
    // loses nothing that matters, otherwise in full.
    [[nodiscard]] QString shownNumber(double value, int unitIndex) const;

    // With the unit that fits it best: "2.4 GHz".
    [[nodiscard]] QString quantityText(double value) const;

private:
    [[nodiscard]] Unit unitAt(int index) const;

    const BaseUnitAdapter& m_scale;
    std::optional<double> m_minimum;
    std::optional<double> m_maximum;
    std::optional<int> m_finestPower; // of ten, in the base unit
    bool m_rounds;
};

} // namespace Controls
