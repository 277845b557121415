#pragma once

#include <cstddef>
#include <vector>

// The values that one measurement gave, in the order in which they came.
class Samples final
{
public:
    void add(double value) { m_values.push_back(value); }
    [[nodiscard]] bool isEmpty() const { return m_values.empty(); }
    [[nodiscard]] std::size_t count() const { return m_values.size(); }

    // The value that `percent` of them do not exceed; of no values: 0.
    [[nodiscard]] double percentile(double percent) const;
    [[nodiscard]] double median() const { return percentile(50); }
    [[nodiscard]] double least() const { return percentile(0); }
    [[nodiscard]] double most() const { return percentile(100); }
    [[nodiscard]] double first() const { return m_values.empty() ? 0 : m_values.front(); }

private:
    std::vector<double> m_values;
};
