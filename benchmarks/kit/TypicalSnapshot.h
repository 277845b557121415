#pragma once

#include <QByteArray>
#include <QJsonObject>

// What a main process tells in daily work: transmitter, sweep and all thirteen sorts of modulation items, as
// the simulated generator writes it.
[[nodiscard]] QJsonObject typicalSnapshot();

// The same as the line on the wire, with a sequence number and the line feed.
[[nodiscard]] QByteArray snapshotLine(QJsonObject snapshot, int sequence);

// Typical snapshots that differ in their number alone, made at next to no cost.
class SnapshotSource final
{
public:
    SnapshotSource();

    [[nodiscard]] QByteArray next();
    [[nodiscard]] QByteArray next(int count);

private:
    QByteArray m_beforeNumber;
    QByteArray m_afterNumber;
    int m_sequence = 0;
};
