#include "simulator/instrument/InstrumentLimits.h"
#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"
#include "simulator/modulation/Shapes.h"

namespace Simulator {

std::unique_ptr<ModulationItem> makeFm()
{
    static const FieldTable fields = {
        rateField(),
        numberField(EditorKeys::Deviation, 10e3,
                    {"deviation", Unit::Hertz, 1, InstrumentLimits::bandwidthHz / 2}),
        shapeField(),
    };
    return std::make_unique<PlainItem>(ModulationItem::Names{QLatin1String("fm"), QLatin1String("FM"),
                                                             QLatin1String("Frequency Modulation")},
                                       fields);
}

} // namespace Simulator
