// A snapshot from its text to what the bar shows of it.

#include "fuzz/Fuzzing.h"
#include "link/Envelopes.h"
#include "minibar/BarStatus.h"

#include <QJsonObject>

using Fuzzing::require;
using namespace MinibarHelperProtocol;

namespace {

void checkSweep(const QJsonObject& object)
{
    SweepSnapshot sweep;
    QString error;
    const SweepSnapshot untouched = sweep;
    if (!parseSweepSnapshot(object, &sweep, &error)) {
        require(!error.isEmpty(), "a refusal says why");
        require(sweep == untouched, "a refusal leaves the target as it was");
        return;
    }
    require(sweep.supportedPlanIds.size() <= 2, "each plan is listed once");
    SweepSettings again;
    require(parseSweepSettings(writeSweepSettings(sweep.settings), &again), "written settings can be read");
    require(again == sweep.settings, "settings survive being written and read");
}

void checkModulation(const QJsonObject& object)
{
    const ModSnapshot mod = parseModSnapshot(object);
    for (const ModBusinessEntry& item : mod.businesses) {
        require(!item.id.isEmpty() && !item.text.isEmpty(), "every item has an id and a text");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QJsonObject snapshot;
    if (!readObject(QString::fromUtf8(Fuzzing::bytes(data, size)), &snapshot, nullptr)) {
        return 0;
    }
    checkSweep(snapshot.value(QStringLiteral("sweep")).toObject());
    checkModulation(snapshot.value(QStringLiteral("mod")).toObject());

    BarStatus status;
    require(status.apply(snapshot), "the first snapshot is never an old one");
    require(status.lastSequence >= 0, "only a positive sequence is remembered");
    require(status.apply(snapshot), "an equal snapshot is no older one");
    return 0;
}
