#pragma once

#include "host/Response.h"

#include <QJsonObject>
#include <QString>

// The JSON that travels in REQ, RSP and EVT lines, seen from the main process.
namespace Host {

struct Request
{
    int id = 0; // 1 to 2147483647
    QString command;
    QJsonObject arguments;
};

// Reads the payload of a REQ line. Everything is required and checked; on failure `error` names what is wrong
// and `request` stays as it was.
[[nodiscard]] bool parseRequest(const QString& payload, Request& request, QString& error);

// The payload of an RSP line. An empty answer payload is left out.
[[nodiscard]] QString responsePayload(int id, const Response& response);

// The payload of an EVT line that carries a snapshot.
[[nodiscard]] QString snapshotEventPayload(const QJsonObject& snapshot);

} // namespace Host
