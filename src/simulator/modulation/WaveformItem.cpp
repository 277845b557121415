#include "simulator/modulation/WaveformItem.h"

#include "simulator/instrument/InstrumentLimits.h"

#include <QCoreApplication>

#include <algorithm>

namespace Simulator {

using namespace InstrumentLimits;

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

} // namespace

FieldTable WaveformItem::waveformFields(const Spelling& keys)
{
    return {
        numberField(keys.sampleRate, 1e6, {"sample rate", Unit::Hertz, 1, maximumSampleRateHz}),
        switchField(keys.autoScale, "auto scale", true),
        numberField(keys.iqScale, 100, {"I/Q scale", Unit::Percent, 0.01, 100}),
        integerField(keys.period, 1, {"period", Unit::None, 1, maximumSamples}),
        integerField(keys.samplesToUse, 0, {"number of samples to use", Unit::None, 0, 0}),
        integerField(keys.sampleOffset, 0, {"sample offset", Unit::None, 0, 0}),
    };
}

WaveformItem::WaveformItem(const Names& names, const FieldTable& fields, const Spelling& keys)
    : ModulationItem(names, fields)
    , m_keys(keys)
{}

QString WaveformItem::reasonToStayOff() const
{
    return hasFile() ? QString() : translated("%1 has no file to play.").arg(names().name);
}

void WaveformItem::play(const QString& path, const WaveformFacts& facts)
{
    m_path = path;
    m_facts = facts;
    const double playable = std::min(facts.samples, maximumSamples);
    put(m_keys.sampleRate, std::min(facts.sampleRateHz, maximumSampleRateHz));
    put(m_keys.sampleOffset, 0);
    put(m_keys.period, playable);
    put(m_keys.samplesToUse, playable);
}

void WaveformItem::unload()
{
    m_path.clear();
    m_facts = {};
    put(m_keys.sampleOffset, 0);
    put(m_keys.period, 1);
    put(m_keys.samplesToUse, 0);
}

double WaveformItem::mostSamplesToUse() const
{
    return std::max(0.0, std::min(number(m_keys.period), m_facts.samples - number(m_keys.sampleOffset)));
}

Field WaveformItem::fieldNow(const Field& field) const
{
    Field now = field;
    if (field.key == m_keys.samplesToUse)
        now.limits.maximum = mostSamplesToUse();
    if (field.key == m_keys.sampleOffset)
        now.limits.maximum = m_facts.samples;
    return now;
}

QString WaveformItem::lockOf(QLatin1String key) const
{
    if (key == m_keys.autoScale)
        return {};
    if (!hasFile())
        return reasonToStayOff();
    if (key == m_keys.iqScale && state().value(m_keys.autoScale).toBool())
        return translated("The I/Q scale follows the auto scale.");
    if (key == m_keys.iqScale && m_facts.isIqRecording)
        return translated("The I/Q scale of an I/Q recording is fixed.");
    return {};
}

Verdict WaveformItem::settle(QLatin1String /*key*/, const QJsonObject& /*before*/)
{
    put(m_keys.samplesToUse, std::min(number(m_keys.samplesToUse), mostSamplesToUse()));
    return {};
}

} // namespace Simulator
