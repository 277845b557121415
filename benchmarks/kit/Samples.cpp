#include "kit/Samples.h"

#include <algorithm>
#include <cmath>

double Samples::percentile(double percent) const
{
    if (m_values.empty())
        return 0;
    std::vector<double> sorted = m_values;
    std::sort(sorted.begin(), sorted.end());
    const double rank = std::ceil(percent / 100 * static_cast<double>(sorted.size()));
    return sorted[static_cast<std::size_t>(std::max(rank, 1.0)) - 1];
}
