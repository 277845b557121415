#pragma once

#include "controls/BaseUnitAdapter.h"

namespace Controls {

// What a typed or pasted text means for a quantity.
struct ParsedQuantity
{
    enum class Status {
        Value,      // `value` holds it
        Incomplete, // nothing wrong yet, but not all there either: "", "-", "1e", "2.4 GH"
        Refused     // cannot be taken as it stands: `refusal` says why
    };

    Status status = Status::Incomplete;
    double value = 0.0; // in the base unit; the double nearest to the decimal text, never -0
    int unitIndex = -1; // the unit that the text names, -1 if it names none
    // A translated sentence, plain text: the reason and the way out. An incomplete text has one too, for the
    // moment when it is to be accepted as it stands; a value has none.
    QString refusal;
};

// Reads a number with an optional unit: "2.4 GHz", "2,4g", "-20 dBm", "1e9". A number without a unit counts
// in units[unitIndex] (in the base unit for -1). Independent of the locale; a text that could mean two values
// is refused, never guessed - but for a single ".", which is always the decimal mark, as in every text of the
// program. The whole grammar: docs/number-entry.md.
[[nodiscard]] ParsedQuantity parseQuantity(const QString& text, const QVector<Unit>& units, int unitIndex);

// The shortest decimal text, in this unit and without its name, that reads back as exactly `value` (in the
// base unit). No exponent as long as the plain text stays within 24 characters. Empty for NaN and infinities.
[[nodiscard]] QString formatQuantity(double value, const Unit& unit);

} // namespace Controls
