#pragma once

#include "link/ModSnapshot.h"
#include "simulator/InstrumentCommands.h"
#include "simulator/JsonTexts.h"
#include "simulator/SignalGenerator.h"
#include "simulator/SnapshotWriter.h"

#include <QJsonArray>
#include <QtTest>

// The item of that id as the mini bar reads it in a snapshot.
inline ModBusinessEntry itemIn(const QJsonObject& snapshot, const QString& id)
{
    const QJsonObject mod = snapshot.value(QStringLiteral("mod")).toObject();
    const auto items = MinibarHelperProtocol::parseModSnapshot(mod).businesses;
    for (const ModBusinessEntry& item : items) {
        if (item.id == id)
            return item;
    }
    return {};
}

inline QString enabledIn(const QJsonObject& snapshot)
{
    return snapshot.value(QStringLiteral("mod"))
        .toObject()
        .value(QStringLiteral("enabledBusinessId"))
        .toString();
}

inline QByteArray setField(const char* key, const QByteArray& value)
{
    return QByteArray(R"("action":"set-field","args":{"key":")") + key + R"(","value":)" + value + '}';
}

// The arguments of a request for that item.
inline QByteArray forItem(const QString& id, const QByteArray& rest)
{
    return R"({"businessId":")" + id.toUtf8() + R"(",)" + rest + '}';
}

// An instrument that takes modulation requests as they come from the link.
struct Instrument
{
    explicit Instrument(const QString& folder = {})
        : generator(folder)
    {}

    Host::Response ask(const QString& id, const QByteArray& rest)
    {
        return Simulator::execute(generator, QStringLiteral("SOUR:MOD:CONF"), object(forItem(id, rest)));
    }
    // True when it was taken; a refusal is shown.
    bool take(const QString& id, const QByteArray& rest)
    {
        const Host::Response response = ask(id, rest);
        if (!response.ok)
            qInfo("Refused: %s", qUtf8Printable(response.errorMessage));
        return response.ok;
    }
    [[nodiscard]] ModBusinessEntry item(const QString& id) const
    {
        return itemIn(Simulator::snapshotOf(generator), id);
    }
    [[nodiscard]] QJsonValue state(const QString& id, const char* key) const
    {
        return item(id).editorState.value(QLatin1String(key));
    }
    [[nodiscard]] QJsonValue profile(const QString& id, const char* key) const
    {
        return item(id).profile.value(QLatin1String(key));
    }
    [[nodiscard]] QString enabled() const { return enabledIn(Simulator::snapshotOf(generator)); }

    Simulator::SignalGenerator generator;
};
