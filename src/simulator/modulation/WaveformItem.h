#pragma once

#include "simulator/modulation/ModulationItem.h"
#include "simulator/modulation/WaveformFile.h"

namespace Simulator {

// What the players of one file share; only the spelling of their keys differs. Without a file the auto scale
// alone can be set, and the item cannot be switched on.
class WaveformItem : public ModulationItem
{
public:
    [[nodiscard]] QString reasonToStayOff() const override;

protected:
    // The state's keys for the same things.
    struct Spelling
    {
        QLatin1String sampleRate;
        QLatin1String autoScale;
        QLatin1String iqScale;
        QLatin1String period;
        QLatin1String samplesToUse;
        QLatin1String sampleOffset;
    };

    // The fields of such a player; more may be added.
    [[nodiscard]] static FieldTable waveformFields(const Spelling& keys);

    WaveformItem(const Names& names, const FieldTable& fields, const Spelling& keys);
    WaveformItem(const WaveformItem&) = default;

    [[nodiscard]] bool hasFile() const { return !m_path.isEmpty(); }
    [[nodiscard]] const QString& path() const { return m_path; }         // empty without a file
    [[nodiscard]] const WaveformFacts& facts() const { return m_facts; } // zeros without a file

    // Takes the file's sample rate and plays all of it, as far as the memory goes.
    void play(const QString& path, const WaveformFacts& facts);
    // Forgets the file and its settings; the scaling stays.
    void unload();

    [[nodiscard]] Field fieldNow(const Field& field) const override;
    [[nodiscard]] QString lockOf(QLatin1String key) const override;
    [[nodiscard]] Verdict settle(QLatin1String key, const QJsonObject& before) override;

private:
    [[nodiscard]] double mostSamplesToUse() const;

    Spelling m_keys;
    QString m_path;
    WaveformFacts m_facts;
};

} // namespace Simulator
