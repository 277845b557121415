#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// What a fuzzing engine calls with every input: libFuzzer in the preset "fuzz", replay.cpp anywhere else.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace Fuzzing {

// A promise of the code under test; a broken one ends the process as a crash does.
inline void require(bool promise, const char* sentence)
{
    if (!promise) {
        std::fprintf(stderr, "broken promise: %s\n", sentence);
        std::abort();
    }
}

inline QByteArray bytes(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), int(size)};
}

} // namespace Fuzzing
