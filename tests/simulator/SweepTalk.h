#pragma once

#include "link/ChangeRequests.h"
#include "simulator/Bench.h"
#include "simulator/SnapshotWriter.h"

// The arguments of a request that lays `changes` over the settings an instrument starts with.
inline QByteArray requestWith(const QByteArray& changes, int revision = 1)
{
    return text(
        Simulator::merged(MinibarHelperProtocol::SweepChangeRequest{revision, {}}.toJson(), object(changes)));
}

inline QJsonObject sweepOf(const QJsonObject& snapshot)
{
    return snapshot.value(QStringLiteral("sweep")).toObject();
}

inline QJsonValue sweepValue(const QJsonObject& snapshot, const char* key)
{
    return sweepOf(snapshot).value(QLatin1String(key));
}

inline int revision(const QJsonObject& snapshot)
{
    return sweepValue(snapshot, "revision").toInt();
}

inline SweepSnapshot parsed(const QJsonObject& snapshot)
{
    SweepSnapshot sweep;
    QString error;
    if (!MinibarHelperProtocol::parseSweepSnapshot(sweepOf(snapshot), &sweep, &error))
        qFatal("%s", qPrintable(error));
    return sweep;
}
