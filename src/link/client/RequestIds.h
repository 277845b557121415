#pragma once

#include <limits>

// Numbers for requests: positive, ascending, and from the start again after the largest int.
class RequestIds final
{
public:
    explicit RequestIds(int first = 1)
        : m_next(first)
    {}

    [[nodiscard]] int take()
    {
        const int id = m_next;
        m_next = id == std::numeric_limits<int>::max() ? 1 : id + 1;
        return id;
    }

private:
    int m_next;
};
