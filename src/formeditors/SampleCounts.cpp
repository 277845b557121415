#include "formeditors/SampleCounts.h"

#include "utils/NumberText.h"

#include <limits>

namespace {

constexpr int decimals = 3;

} // namespace

quint64 wholeCount(const QJsonValue& value)
{
    constexpr double beyond = 18446744073709551616.0; // 2^64
    const double count = value.toDouble();
    if (!(count > 0))
        return 0;
    return count < beyond ? static_cast<quint64>(count) : std::numeric_limits<quint64>::max();
}

QString durationText(quint64 samples, double rate)
{
    if (samples == 0 || !(rate > 0))
        return QStringLiteral("0s");
    return Utils::normalizeTimeSpan(static_cast<double>(samples) / rate, decimals);
}
