#pragma once

#include "link/ChangeRequests.h"
#include "simulator/instrument/Refusal.h"
#include "simulator/modulation/ModulationItem.h"

#include <QObject>

#include <vector>

namespace Simulator {

// All modulation functions of the instrument. At most one is on. Each has a revision from 1 up, which every
// change of it raises: of its state, of its profile, of its being on.
class ModulationBank final : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        std::unique_ptr<ModulationItem> item;
        int revision = 1;
    };

    // waveformFolder: of the quick waveforms; empty for none.
    explicit ModulationBank(const QString& waveformFolder, QObject* parent = nullptr);

    // In the order in which they are shown.
    [[nodiscard]] const std::vector<Entry>& entries() const { return m_entries; }
    // Null when none is on.
    [[nodiscard]] const ModulationItem* enabledItem() const;
    [[nodiscard]] QString enabledId() const { return m_enabledId; }

    // All of the request or nothing of it. Switching one on switches the other off; one that can be on no
    // longer, such as a player whose file is taken away, goes off by itself. Refused: INVALID_ARG for an
    // unknown item, CONFLICT for another revision than the expected one if that is above 0, and what the item
    // says.
    [[nodiscard]] Verdict change(const MinibarHelperProtocol::ModChangeRequest& wanted);

signals:
    // Once for every change, also when a file has been read.
    void changed();

private:
    [[nodiscard]] Entry* find(const QString& id);
    void take(Entry& entry, std::unique_ptr<ModulationItem> item, bool enabled);
    void finishWork(const QString& id);

    std::vector<Entry> m_entries;
    QString m_enabledId;
};

} // namespace Simulator
