#include "simulator/modulation/SymbolFields.h"

#include "simulator/instrument/InstrumentLimits.h"
#include "simulator/modulation/EditorKeys.h"

#include <limits>

namespace Simulator {

namespace {

constexpr int longestFilter = 128; // symbols

} // namespace

Field symbolRateField(double initialHz, int smallestOversample)
{
    return numberField(
        EditorKeys::SymbolRate, initialHz,
        {"symbol rate", Unit::Hertz, 1, InstrumentLimits::maximumSampleRateHz / smallestOversample});
}

Field filterTypeField()
{
    const QString usual = QStringLiteral("RootRaisedCosine");
    return choiceField(EditorKeys::FilterType, "filter type", usual,
                       {QStringLiteral("Rectangular"), QStringLiteral("RaisedCosine"), usual,
                        QStringLiteral("Gaussian"), QStringLiteral("HalfSine")});
}

Field filterAlphaField()
{
    return numberField(EditorKeys::FilterAlpha, 0.35, {"filter alpha", Unit::None, 0, 1});
}

Field filterLengthField()
{
    return integerField(EditorKeys::FilterLength, 32, {"filter length", Unit::None, 1, longestFilter});
}

Field sequenceSeedField()
{
    return integerField(EditorKeys::SequenceSeed, 1,
                        {"sequence seed", Unit::None, 0, std::numeric_limits<int>::max()});
}

} // namespace Simulator
