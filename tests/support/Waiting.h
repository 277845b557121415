#pragma once

#include <functional>

namespace TestSupport {

constexpr int defaultDeadline = 8000; // ms; long enough for a loaded machine, never slept through

// Handles events until `condition` holds or `deadline` ms have passed; the last answer of the condition.
[[nodiscard]] bool waitUntil(const std::function<bool()>& condition, int deadline = defaultDeadline);

} // namespace TestSupport
