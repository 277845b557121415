#include "simulator/modulation/Shapes.h"

#include "simulator/modulation/EditorKeys.h"

namespace Simulator {

namespace {

constexpr double maximumRateHz = 10e6;

} // namespace

Field rateField()
{
    return numberField(EditorKeys::Rate, 1e3, {"rate", Unit::Hertz, 1, maximumRateHz});
}

Field shapeField()
{
    const QString sine = QStringLiteral("Sine");
    return choiceField(EditorKeys::Shape, "shape", sine,
                       {sine, QStringLiteral("Square"), QStringLiteral("Triangle"), QStringLiteral("Ramp")});
}

} // namespace Simulator
