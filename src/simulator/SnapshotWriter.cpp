#include "simulator/SnapshotWriter.h"

#include "link/Keys.h"
#include "link/SweepSnapshot.h"
#include "simulator/SignalGenerator.h"
#include "utils/NumberText.h"

#include <QJsonArray>

namespace Simulator {

namespace Keys = MinibarHelperProtocol::Keys;

namespace {

constexpr int levelDecimals = 3;

QJsonObject transmitterSection(const SignalGenerator& instrument)
{
    QJsonObject section{{Keys::rf, instrument.isRfOn()}};
    if (!instrument.isOpen())
        return section;
    const QString centerText = Utils::normalizeFrequency(instrument.centerHz(), true, true);
    const QString levelUnit = QStringLiteral("dBm");
    section.insert(Keys::centerHz, instrument.centerHz());
    section.insert(Keys::centerText, centerText);
    section.insert(Keys::centerUnit, centerText.section(QLatin1Char(' '), -1));
    section.insert(Keys::levelDbm, instrument.levelDbm());
    section.insert(Keys::levelText, QString(Utils::toString(instrument.levelDbm(), levelDecimals, true) +
                                            QLatin1Char(' ') + levelUnit));
    section.insert(Keys::levelUnit, levelUnit);
    return section;
}

QJsonObject sweepSection(const SignalGenerator& instrument)
{
    if (!instrument.isOpen())
        return {};
    const SweepSnapshot& sweep = instrument.sweep();
    QJsonArray supported;
    for (const SweepPlanId plan : sweep.supportedPlanIds)
        supported.append(MinibarHelperProtocol::planWord(plan));
    QJsonObject section = MinibarHelperProtocol::writeSweepSettings(sweep.settings);
    section.insert(Keys::available, sweep.available);
    section.insert(Keys::revision, sweep.revision);
    section.insert(Keys::supportedPlanIds, supported);
    return section;
}

QJsonObject itemSection(const ModulationBank::Entry& entry)
{
    const ModulationItem& item = *entry.item;
    return {{Keys::id, item.names().id},       {Keys::name, item.names().name},
            {Keys::text, item.names().text},   {Keys::editorKind, item.names().id},
            {Keys::editorState, item.state()}, {Keys::profile, item.profile()},
            {Keys::revision, entry.revision}};
}

QJsonObject modulationSection(const SignalGenerator& instrument)
{
    QJsonArray items;
    if (!instrument.isOpen())
        return {{Keys::enabled, false}, {Keys::businesses, items}};
    const ModulationBank& bank = instrument.modulation();
    for (const ModulationBank::Entry& entry : bank.entries())
        items.append(itemSection(entry));
    return {{Keys::enabled, !bank.enabledId().isEmpty()},
            {Keys::enabledBusinessId, bank.enabledId()},
            {Keys::businesses, items}};
}

struct Section
{
    QLatin1String key;
    QJsonObject (*write)(const SignalGenerator& instrument);
};

// The sections of a snapshot. One that is empty is left out: a closed instrument tells no sweep.
const Section sections[] = {
    {Keys::tx, transmitterSection},
    {Keys::sweep, sweepSection},
    {Keys::mod, modulationSection},
};

} // namespace

QJsonObject snapshotOf(const SignalGenerator& instrument)
{
    QJsonObject snapshot;
    for (const Section& section : sections) {
        const QJsonObject content = section.write(instrument);
        if (!content.isEmpty())
            snapshot.insert(section.key, content);
    }
    return snapshot;
}

QJsonObject merged(QJsonObject target, const QJsonObject& patch)
{
    for (auto it = patch.begin(); it != patch.end(); ++it) {
        const QJsonValue value = it.value();
        if (value.isNull())
            target.remove(it.key());
        else if (value.isObject())
            target.insert(it.key(), merged(target.value(it.key()).toObject(), value.toObject()));
        else
            target.insert(it.key(), value);
    }
    return target;
}

} // namespace Simulator
