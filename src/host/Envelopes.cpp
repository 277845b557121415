#include "host/Envelopes.h"

#include "link/Envelopes.h"
#include "link/Keys.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <limits>

namespace Host {

namespace Keys = MinibarHelperProtocol::Keys;

namespace {

constexpr int envelopeVersion = 1;

QString translated(const char* text)
{
    return QCoreApplication::translate("HelperHost", text);
}

QString compact(const QJsonObject& object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

// Whether the value is a whole number from 1 to the largest int.
bool isRequestId(const QJsonValue& value)
{
    const double number = value.toDouble();
    return value.isDouble() && number >= 1 && number <= std::numeric_limits<int>::max() &&
           number == static_cast<double>(static_cast<int>(number));
}

} // namespace

bool parseRequest(const QString& payload, Request& request, QString& error)
{
    const auto fail = [&error](const QString& reason) {
        error = reason;
        return false;
    };
    QJsonObject object;
    if (!MinibarHelperProtocol::readObject(payload, &object, &error))
        return false;
    if (object.value(Keys::v) != QJsonValue(envelopeVersion))
        return fail(translated("'%1' must be %2.").arg(Keys::v).arg(envelopeVersion));
    if (!isRequestId(object.value(Keys::id)))
        return fail(translated("'%1' must be a positive integer.").arg(Keys::id));
    if (object.value(Keys::cmd).toString().isEmpty())
        return fail(translated("'%1' must be a command.").arg(Keys::cmd));
    if (!object.value(Keys::args).isObject())
        return fail(translated("'%1' must be an object.").arg(Keys::args));
    request = {object.value(Keys::id).toInt(), object.value(Keys::cmd).toString(),
               object.value(Keys::args).toObject()};
    return true;
}

QString responsePayload(int id, const Response& response)
{
    QJsonObject object{{Keys::id, id}, {Keys::ok, response.ok}};
    if (!response.ok) {
        object.insert(Keys::error,
                      QJsonObject{{Keys::code, response.errorCode}, {Keys::message, response.errorMessage}});
    }
    if (!response.payload.isEmpty())
        object.insert(Keys::payload, response.payload);
    return compact(object);
}

QString snapshotEventPayload(const QJsonObject& snapshot)
{
    return compact(
        {{Keys::event, QString(MinibarHelperProtocol::Events::STAT_SNAP)}, {Keys::payload, snapshot}});
}

} // namespace Host
