#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"
#include "simulator/modulation/Shapes.h"

namespace Simulator {

std::unique_ptr<ModulationItem> makeAm()
{
    static const FieldTable fields = {
        rateField(),
        numberField(EditorKeys::Depth, 50, {"depth", Unit::Percent, 0.01, 100}),
        shapeField(),
    };
    return std::make_unique<PlainItem>(ModulationItem::Names{QLatin1String("am"), QLatin1String("AM"),
                                                             QLatin1String("Amplitude Modulation")},
                                       fields);
}

} // namespace Simulator
