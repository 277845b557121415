#include "kit/Rounds.h"

#include "kit/Clocks.h"

#include <cstdio>
#include <cstdlib>

void measure(std::vector<Work>& works, int rounds)
{
    for (int round = 0; round < rounds; ++round) {
        for (Work& work : works) {
            if (work.prepare)
                work.prepare();
            const Stopwatch clock;
            work.run();
            work.times.add(clock.ms());
        }
    }
}

void require(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "wrong result: %s\n", what);
    std::exit(2);
}
