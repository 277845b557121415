#pragma once

#include <QJsonArray>

namespace Simulator {

// Of the offered samples a symbol those that the instrument's sample rate allows at this symbol rate.
[[nodiscard]] QJsonArray fittingOversamples(double symbolRateHz, const QJsonArray& offered);
// The largest of these that is not above the wanted one, or else the smallest. `fitting` is ascending.
[[nodiscard]] int settledOversample(int wanted, const QJsonArray& fitting);

} // namespace Simulator
