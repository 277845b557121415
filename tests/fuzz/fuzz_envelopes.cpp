// The JSON of RSP and EVT lines as the helper reads it.

#include "fuzz/Fuzzing.h"
#include "link/Envelopes.h"

#include <QJsonDocument>

using Fuzzing::require;
using namespace MinibarHelperProtocol;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(Fuzzing::bytes(data, size)).trimmed();
    const QJsonObject untouched{{QStringLiteral("untouched"), true}};
    QJsonObject object = untouched;
    QString error;
    if (!readObject(text, &object, &error)) {
        require(!error.isEmpty(), "a refusal says why");
        require(object == untouched, "a refusal leaves the target as it was");
        return 0;
    }
    const Response response = readResponse(object);
    require(response.ok || response.payload.isEmpty() || object.contains(QStringLiteral("payload")),
            "a payload comes from the envelope");
    require(!response.ok || (response.errorCode.isEmpty() && response.errorMessage.isEmpty()),
            "a success has no error");
    const QJsonObject snapshot = readSnapshotEvent(object);
    require(snapshot.isEmpty() || snapshot == object.value(QStringLiteral("payload")).toObject(),
            "a snapshot is the event's payload");

    QJsonObject again;
    const QString written = QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
    require(readObject(written, &again, nullptr), "what was read can be written and read again");
    return 0;
}
