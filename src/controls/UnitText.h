#pragma once

#include "controls/BaseUnitAdapter.h"

#include <QStringView>

namespace Controls {

// What the text after a number means among the units of a quantity.
struct ParsedUnit
{
    int index = -1;     // the unit that is meant, -1 for none
    bool begun = false; // no unit yet, but the first letters of one
    QString refusal;    // a translated sentence, when no unit is meant
};

// `typed` without outer blanks, not empty. The exact text of a unit comes first, then any letter case, then
// the first letter alone; a letter whose case decides between two powers of ten is never guessed.
[[nodiscard]] ParsedUnit parseUnit(QStringView typed, const QVector<Unit>& units);

} // namespace Controls
