#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"
#include "simulator/modulation/Shapes.h"

namespace Simulator {

namespace {

// A little more than half a turn: 180 degrees turned into radians may come out a trifle above pi.
constexpr double halfTurn = 3.14159265358979324 * (1 + 1e-12);

} // namespace

std::unique_ptr<ModulationItem> makePm()
{
    static const FieldTable fields = {
        rateField(),
        numberField(EditorKeys::PhaseDeviation, 1, {"phase deviation", Unit::Radians, 0, 2 * halfTurn}),
        numberField(EditorKeys::InitPhase, 0, {"initial phase", Unit::Radians, -halfTurn, halfTurn}),
        shapeField(),
    };
    return std::make_unique<PlainItem>(
        ModulationItem::Names{QLatin1String("pm"), QLatin1String("PM"), QLatin1String("Phase Modulation")},
        fields);
}

} // namespace Simulator
