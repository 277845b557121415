#pragma once

#include <QString>
#include <optional>

class QWidget;

namespace Controls {
class TouchNumKeyboard;
}

// Opens the numeric keyboard for a value that lives elsewhere.
namespace PropertyBindingHelper {

// Numbers in the adapter's base unit.
struct NumericKeyboardConfig
{
    QString title;
    QString adapterType; // one of Adapters::...::adapterType(); empty: a plain number
    double value = 0.0;
    std::optional<double> step;
    std::optional<double> minimum; // inclusive
    std::optional<double> maximum; // inclusive
    std::optional<int> decimals;
    bool integerOnly = false;
    QString unitText; // the unit to open in
    QString auxText;  // an opaque tag, kept as the keyboard's property "auxText"
};

// A keyboard for this value, placed beside `anchor`, not yet open. It is owned by the anchor's window and
// deletes itself when it has closed. Its receiver() is the Controls::BaseUnitAdapter that holds the value.
[[nodiscard]] Controls::TouchNumKeyboard* prepareNumericKeyBoard(QWidget* anchor,
                                                                 const NumericKeyboardConfig& config);

} // namespace PropertyBindingHelper
