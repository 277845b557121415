#pragma once

#include <QJsonObject>
#include <QString>

namespace Host {

// The answer to one request of the helper.
struct Response
{
    bool ok = true;
    QString errorCode;    // one of the error words of the protocol; empty when ok
    QString errorMessage; // a sentence for the log of the helper; empty when ok
    QJsonObject payload;  // a snapshot, or empty for none

    [[nodiscard]] static Response success(const QJsonObject& payload = {}) { return {true, {}, {}, payload}; }
    [[nodiscard]] static Response failure(const QString& code, const QString& message)
    {
        return {false, code, message, {}};
    }
};

} // namespace Host
