#include "simulator/instrument/InstrumentLimits.h"
#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"
#include "simulator/modulation/Within.h"

namespace Simulator {

std::unique_ptr<ModulationItem> makeDigitalRamp()
{
    using namespace InstrumentLimits;
    static const FieldTable fields = {
        numberField(EditorKeys::Span, 10e6, {"span", Unit::Hertz, 1, bandwidthHz}),
        numberField(EditorKeys::SweepTime, 1e-3, {"sweep time", Unit::Seconds, 1e-6, maximumSeconds}),
        numberField(EditorKeys::Period, 2e-3, {"period", Unit::Seconds, 1e-6, maximumSeconds}),
    };
    return std::make_unique<WithinItem>(
        ModulationItem::Names{QLatin1String("digital-ramp"), QLatin1String("Digital Ramp"),
                              QLatin1String("Digital Ramp")},
        fields, WithinItem::Pair{EditorKeys::SweepTime, "sweep time", EditorKeys::Period, "period"});
}

} // namespace Simulator
