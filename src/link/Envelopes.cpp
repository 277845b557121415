#include "link/Envelopes.h"

#include "link/FieldReaders.h"
#include "link/Keys.h"

#include <QJsonDocument>

namespace {

constexpr int envelopeVersion = 1;

} // namespace

namespace MinibarHelperProtocol {

QString writeRequest(int id, const QString& command, const QJsonObject& arguments)
{
    QJsonObject envelope;
    envelope.insert(Keys::v, envelopeVersion);
    envelope.insert(Keys::id, id);
    envelope.insert(Keys::cmd, command);
    envelope.insert(Keys::args, arguments);
    return QString::fromUtf8(QJsonDocument(envelope).toJson(QJsonDocument::Compact));
}

bool readObject(const QString& text, QJsonObject* target, QString* error)
{
    return readObject(text.toUtf8(), target, error);
}

bool readObject(const QByteArray& utf8, QJsonObject* target, QString* error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(utf8, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return fail(error, parseError.errorString());
    if (!document.isObject())
        return fail(error, QStringLiteral("Expected a JSON object."));
    *target = document.object();
    return true;
}

Response readResponse(const QJsonObject& envelope)
{
    Response response;
    response.id = envelope.value(Keys::id).toInt();
    response.ok = envelope.value(Keys::ok).toBool();
    if (!response.ok) {
        const QJsonObject error = envelope.value(Keys::error).toObject();
        response.errorCode = error.value(Keys::code).toString();
        response.errorMessage = error.value(Keys::message).toString();
    }
    response.payload = envelope.value(Keys::payload).toObject();
    return response;
}

QJsonObject readSnapshotEvent(const QJsonObject& envelope)
{
    if (envelope.value(Keys::event) != QJsonValue(Events::STAT_SNAP))
        return {};
    return envelope.value(Keys::payload).toObject();
}

} // namespace MinibarHelperProtocol
