#include "simulator/modulation/ModulationBank.h"

#include "link/Keys.h"
#include "simulator/modulation/Kinds.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>

namespace Simulator {

namespace Errors = MinibarHelperProtocol::Errors;

namespace {

constexpr int longestQuote = 40;

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

} // namespace

ModulationBank::ModulationBank(const QString& waveformFolder, QObject* parent)
    : QObject(parent)
{
    const auto add = [this](std::unique_ptr<ModulationItem> item) {
        m_entries.push_back({std::move(item), 1});
    };
    add(makeDigital());
    add(makeMultitone());
    add(makeQuickWaveform(waveformFolder));
    add(makeAm());
    add(makeFm());
    add(makePm());
    add(makePulse());
    add(makeDigitalRamp());
    add(makeAwgn());
    add(makePlayback());
    add(makeStreaming());
    add(makeDsss());
    add(makeOfdm());
}

ModulationBank::Entry* ModulationBank::find(const QString& id)
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&id](const Entry& row) { return row.item->names().id == id; });
    return entry == m_entries.end() ? nullptr : &*entry;
}

const ModulationItem* ModulationBank::enabledItem() const
{
    for (const Entry& entry : m_entries) {
        if (entry.item->names().id == m_enabledId)
            return entry.item.get();
    }
    return nullptr;
}

Verdict ModulationBank::change(const MinibarHelperProtocol::ModChangeRequest& wanted)
{
    Entry* entry = find(wanted.businessId);
    if (!entry)
        return Refusal{Errors::INVALID_ARG,
                       translated("There is no modulation '%1'.").arg(wanted.businessId.left(longestQuote))};
    const QLatin1String name = entry->item->names().name;
    if (wanted.expectedRevision > 0 && wanted.expectedRevision != entry->revision)
        return Refusal{Errors::CONFLICT, translated("%1 has changed in the meantime.").arg(name)};
    if (wanted.hasProfile)
        return Refusal{Errors::NOT_SUPPORTED, translated("The profile of %1 cannot be set.").arg(name)};
    std::unique_ptr<ModulationItem> item = entry->item->clone();
    if (!wanted.action.isEmpty()) {
        if (Verdict refusal = item->perform(wanted.action, wanted.arguments))
            return refusal;
    }
    const bool isOn = m_enabledId == wanted.businessId;
    const QString reason = item->reasonToStayOff();
    if (wanted.hasEnabled && wanted.enabled && !reason.isEmpty())
        return Refusal{Errors::NOT_SUPPORTED, reason};
    take(*entry, std::move(item), (wanted.hasEnabled ? wanted.enabled : isOn) && reason.isEmpty());
    return {};
}

void ModulationBank::take(Entry& entry, std::unique_ptr<ModulationItem> item, bool enabled)
{
    const QString id = item->names().id;
    const bool wasEnabled = m_enabledId == id;
    const bool differs = item->state() != entry.item->state() || item->profile() != entry.item->profile();
    entry.item = std::move(item);
    if (entry.item->hasWork())
        QTimer::singleShot(0, this, [this, id] { finishWork(id); });
    if (!differs && enabled == wasEnabled)
        return;
    ++entry.revision;
    if (enabled != wasEnabled) {
        if (Entry* other = enabled ? find(m_enabledId) : nullptr)
            ++other->revision;
        m_enabledId = enabled ? id : QString();
    }
    emit changed();
}

void ModulationBank::finishWork(const QString& id)
{
    Entry* entry = find(id);
    if (!entry || !entry->item->hasWork())
        return;
    std::unique_ptr<ModulationItem> item = entry->item->clone();
    item->work();
    const bool canBeOn = item->reasonToStayOff().isEmpty();
    take(*entry, std::move(item), m_enabledId == id && canBeOn);
}

} // namespace Simulator
