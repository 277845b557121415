#include "business/PropertyBindingHelper.h"

#include "business/UnitAdapters.h"
#include "controls/TouchNumKeyboard.h"

#include <QVariant>

namespace PropertyBindingHelper {

Controls::TouchNumKeyboard* prepareNumericKeyBoard(QWidget* anchor, const NumericKeyboardConfig& config)
{
    Controls::NumericEntry entry;
    entry.title = config.title;
    entry.value = config.value;
    entry.step = config.step;
    entry.minimum = config.minimum;
    entry.maximum = config.maximum;
    entry.decimals = config.decimals;
    entry.integerOnly = config.integerOnly;
    entry.unitText = config.unitText;

    auto* const keyboard =
        new Controls::TouchNumKeyboard(Adapters::createAdapter(config.adapterType), entry, anchor);
    keyboard->setAttribute(Qt::WA_DeleteOnClose);
    keyboard->setProperty("auxText", config.auxText);
    return keyboard;
}

} // namespace PropertyBindingHelper
