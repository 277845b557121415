#pragma once

#include "simulator/modulation/ModulationItem.h"

namespace Simulator {

// A kind with one duration that must fit into another: the pulse into its period, the sweep into its own.
class WithinItem final : public ModulationItemOf<WithinItem>
{
public:
    struct Pair
    {
        QLatin1String innerKey;
        const char* innerName;
        QLatin1String outerKey;
        const char* outerName;
    };

    WithinItem(const Names& names, const FieldTable& fields, const Pair& pair)
        : ModulationItemOf(names, fields)
        , m_pair(pair)
    {}

protected:
    [[nodiscard]] Verdict settle(QLatin1String key, const QJsonObject& before) override;

private:
    Pair m_pair;
};

} // namespace Simulator
