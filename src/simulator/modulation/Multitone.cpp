#include "link/Keys.h"
#include "simulator/instrument/InstrumentLimits.h"
#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"

#include <QCoreApplication>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Simulator {

namespace {

using namespace EditorKeys;
using namespace InstrumentLimits;
namespace Actions = MinibarHelperProtocol::Actions;
namespace Keys = MinibarHelperProtocol::Keys;

constexpr double mostTones = 1001;
constexpr int fixedPhase = 0;
constexpr int randomPhase = 1;
constexpr int parabolicPhase = 2;

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

const FieldTable& multitoneFields()
{
    static const FieldTable fields = {
        choiceField(PhaseMode, "phase mode", fixedPhase, {fixedPhase, randomPhase, parabolicPhase}),
        integerField(Seed, 1, {"phase seed", Unit::None, 0, std::numeric_limits<int>::max()}),
        integerField(Count, 11, {"tone count", Unit::None, 1, mostTones}),
        numberField(FreqSpacing, 1e6, {"frequency spacing", Unit::Hertz, 1, bandwidthHz}),
        numberField(NotchWidth, 0, {"notch width", Unit::Hertz, 0, bandwidthHz}),
    };
    return fields;
}

// The tones lie on a lattice around the carrier, numbered from 0 at the lowest frequency.
class Multitone final : public ModulationItemOf<Multitone>
{
public:
    Multitone()
        : ModulationItemOf(
              {QLatin1String("multitone"), QLatin1String("Multitone"), QLatin1String("Multitone")},
              multitoneFields())
    {}

    [[nodiscard]] QJsonObject profile() const override
    {
        return {{randomMode, isRandom()},
                {discreteKeepToneMode, m_discrete},
                {countMaximum, largestCount()},
                {freqSpacingMaximum, largestSpacing()},
                {candidateTones, tones()}};
    }

protected:
    [[nodiscard]] Field fieldNow(const Field& field) const override
    {
        Field now = field;
        if (field.key == Count)
            now.limits.maximum = largestCount();
        if (field.key == FreqSpacing)
            now.limits.maximum = largestSpacing();
        return now;
    }

    [[nodiscard]] QString lockOf(QLatin1String key) const override
    {
        if (key == Seed && !isRandom())
            return translated("The phase seed can be set for random phases only.");
        if (key == NotchWidth && m_discrete)
            return translated("The notch width cannot be set in the discrete tone mode.");
        return {};
    }

    [[nodiscard]] Verdict act(const QString& action, const QJsonObject& arguments) override
    {
        const QJsonValue value = arguments.value(Keys::value);
        if (action == Actions::set_enabled_tones)
            return keepTones(value);
        if (action != Actions::set_discrete_mode)
            return ModulationItem::act(action, arguments);
        if (!value.isBool())
            return invalid(translated("The discrete tone mode must be true or false."));
        m_discrete = value.toBool();
        return {};
    }

private:
    [[nodiscard]] bool isRandom() const { return number(PhaseMode) == randomPhase; }
    [[nodiscard]] int toneCount() const { return static_cast<int>(number(Count)); }
    // The outermost tones lie at the edges of the bandwidth at most.
    [[nodiscard]] double largestCount() const
    {
        return std::min(mostTones, std::floor(bandwidthHz / number(FreqSpacing)) + 1);
    }
    [[nodiscard]] double largestSpacing() const { return bandwidthHz / std::max(1, toneCount() - 1); }

    // In the discrete mode every tone of the lattice, else those that the notch around the carrier leaves.
    [[nodiscard]] QJsonArray tones() const
    {
        QJsonArray tones;
        for (int index = 0; index < toneCount(); ++index) {
            const double frequency = (index - (toneCount() - 1) / 2.0) * number(FreqSpacing);
            if (!m_discrete && std::abs(frequency) < number(NotchWidth) / 2)
                continue;
            const bool enabled = !m_discrete || !m_dropped.contains(index);
            tones.append(QJsonObject{
                {requestedFrequency, frequency}, {Keys::enabled, enabled}, {latticeIndex, index}});
        }
        return tones;
    }

    [[nodiscard]] Verdict keepTones(const QJsonValue& value)
    {
        if (!m_discrete)
            return notSupported(translated("Single tones can be chosen in the discrete tone mode only."));
        QSet<int> dropped;
        for (int index = 0; index < toneCount(); ++index)
            dropped.insert(index);
        const QJsonArray kept = value.toArray();
        const auto isTone = [this](const QJsonValue& index) {
            const double number = index.toDouble(-1);
            return number == std::floor(number) && number >= 0 && number < toneCount();
        };
        if (!value.isArray() || !std::all_of(kept.begin(), kept.end(), isTone))
            return invalid(translated("The enabled tones must be an array of whole numbers from 0 to %1.")
                               .arg(toneCount() - 1));
        for (const QJsonValue index : kept)
            dropped.remove(index.toInt());
        // A tone that is beyond the count now is remembered as it was.
        for (const int index : qAsConst(m_dropped)) {
            if (index >= toneCount())
                dropped.insert(index);
        }
        m_dropped = dropped;
        return {};
    }

    bool m_discrete = false;
    QSet<int> m_dropped; // lattice indices that are switched off in the discrete mode
};

} // namespace

std::unique_ptr<ModulationItem> makeMultitone()
{
    return std::make_unique<Multitone>();
}

} // namespace Simulator
