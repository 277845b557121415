#include "simulator/instrument/InstrumentLimits.h"
#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"
#include "simulator/modulation/Within.h"

namespace Simulator {

std::unique_ptr<ModulationItem> makePulse()
{
    using namespace InstrumentLimits;

    static const FieldTable fields = {
        numberField(EditorKeys::Width, 250e-6, {"width", Unit::Seconds, oneSampleSeconds, maximumSeconds}),
        numberField(EditorKeys::Period, 1e-3,
                    {"period", Unit::Seconds, 2 * oneSampleSeconds, maximumSeconds}),
    };
    return std::make_unique<WithinItem>(
        ModulationItem::Names{QLatin1String("pulse"), QLatin1String("Pulse"),
                              QLatin1String("Pulse Modulation")},
        fields, WithinItem::Pair{EditorKeys::Width, "width", EditorKeys::Period, "period"});
}

} // namespace Simulator
