#pragma once

#include <QtGlobal>

// What the kernel counts of another process. Ends the program when the process cannot be read.

struct MemoryFacts
{
    double residentMiB = 0;
    double privateMiB = 0; // pages that no other process shares at the moment: what is free once it ends
    double writtenMiB = 0; // those of them that it has written to: does not depend on who else runs
};
[[nodiscard]] MemoryFacts memoryOf(qint64 processId);

// Processor time of all its threads, in ms, exact to the nanosecond.
[[nodiscard]] double cpuMsOf(qint64 processId);

struct ActivityFacts
{
    qint64 switches = 0; // of all threads, voluntary and not: a sleeper that wakes makes at least one
    qint64 ticks = 0;    // of user and system time
};
[[nodiscard]] ActivityFacts activityOf(qint64 processId);
// Waits until it has not done anything for a while.
void waitForRest(qint64 processId);
