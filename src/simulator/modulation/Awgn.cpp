#include "simulator/instrument/InstrumentLimits.h"
#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"

namespace Simulator {

std::unique_ptr<ModulationItem> makeAwgn()
{
    using namespace InstrumentLimits;
    static const FieldTable fields = {
        numberField(EditorKeys::Bandwith, 10e6, {"bandwidth", Unit::Hertz, 1, bandwidthHz}),
        numberField(EditorKeys::Length, 0.01, {"length", Unit::Seconds, 1e-6, maximumSeconds}),
    };
    return std::make_unique<PlainItem>(ModulationItem::Names{QLatin1String("awgn"), QLatin1String("AWGN"),
                                                             QLatin1String("White Gaussian Noise")},
                                       fields);
}

} // namespace Simulator
