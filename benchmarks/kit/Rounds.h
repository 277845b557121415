#pragma once

#include "kit/Samples.h"

#include <functional>
#include <string>
#include <vector>

// One of the works that are compared: what is timed, and what has to be done before it.
struct Work
{
    std::string name;
    std::function<void()> run;
    std::function<void()> prepare = {};
    Samples times = {}; // ms
};

// Does the works in turns, so that other load on the machine meets them alike.
void measure(std::vector<Work>& works, int rounds);

// Ends the program when what is measured does not do what it should.
void require(bool condition, const char* what);
