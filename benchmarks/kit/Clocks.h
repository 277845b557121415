#pragma once

#include <chrono>

// Time that has passed since it was made.
class Stopwatch final
{
public:
    [[nodiscard]] double ms() const
    {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

// The processor time that the calling thread has used, in ms. Other load on the machine does not lengthen it.
[[nodiscard]] double threadCpuMs();
