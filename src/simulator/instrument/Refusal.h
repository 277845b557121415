#pragma once

#include <QString>

#include <optional>

namespace Simulator {

// Why the instrument did not do what it was asked for.
struct Refusal
{
    QString code;     // one of the error words of the protocol
    QString sentence; // for people: names what is wrong, and the bound if there is one
};

// Nothing: it was done.
using Verdict = std::optional<Refusal>;

} // namespace Simulator
