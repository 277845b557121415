#include "simulator/modulation/Oversampling.h"

#include "simulator/instrument/InstrumentLimits.h"

namespace Simulator {

QJsonArray fittingOversamples(double symbolRateHz, const QJsonArray& offered)
{
    QJsonArray fitting;
    for (const QJsonValue samples : offered) {
        if (symbolRateHz * samples.toInt() <= InstrumentLimits::maximumSampleRateHz)
            fitting.append(samples);
    }
    return fitting;
}

int settledOversample(int wanted, const QJsonArray& fitting)
{
    int settled = fitting.first().toInt();
    for (const QJsonValue samples : fitting) {
        if (samples.toInt() <= wanted)
            settled = samples.toInt();
    }
    return settled;
}

} // namespace Simulator
