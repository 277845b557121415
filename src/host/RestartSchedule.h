#pragma once

#include <chrono>
#include <vector>

// When a helper that ended unasked is started again: after a pause that grows with every run that was not
// stable, up to the last one of the list.
struct RestartSchedule
{
    using Milliseconds = std::chrono::milliseconds;

    // Above 0 and not falling; empty: a helper that has ended stays away.
    std::vector<Milliseconds> pauses = {
        Milliseconds(500),  Milliseconds(1000),  Milliseconds(2000),  Milliseconds(4000),
        Milliseconds(8000), Milliseconds(16000), Milliseconds(30000),
    };
    // After a run that was ready for so long the next pause is the first one again.
    Milliseconds stable{60000};

    [[nodiscard]] static RestartSchedule never() { return {{}, Milliseconds(60000)}; }
};
