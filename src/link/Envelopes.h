#pragma once

#include <QJsonObject>
#include <QString>

// The JSON around requests, responses and events, as the helper writes and reads it.
namespace MinibarHelperProtocol {

struct Response
{
    int id = 0; // 0: absent or no integer
    bool ok = false;
    QString errorCode;    // only without ok
    QString errorMessage; // only without ok
    QJsonObject payload;  // empty: nothing to apply
};

// The payload of a REQ line, compact.
[[nodiscard]] QString writeRequest(int id, const QString& command, const QJsonObject& arguments);

// Gives false, with the parser's sentence in `error`, when the text is no JSON object.
[[nodiscard]] bool readObject(const QString& text, QJsonObject* target, QString* error);
[[nodiscard]] bool readObject(const QByteArray& utf8, QJsonObject* target, QString* error);

[[nodiscard]] Response readResponse(const QJsonObject& envelope);

// The snapshot that an event carries; empty for any other event.
[[nodiscard]] QJsonObject readSnapshotEvent(const QJsonObject& envelope);

} // namespace MinibarHelperProtocol
