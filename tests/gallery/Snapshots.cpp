#include "gallery/Snapshots.h"

#include "gallery/GalleryItems.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace Snapshots {
namespace {

QJsonObject parsed(const QByteArray& json)
{
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError)
        qFatal("no JSON: %s", json.constData());
    return object;
}

QJsonObject sweep(const QByteArray& changes)
{
    QJsonObject object = parsed(R"({"available":true,"revision":3,"enabled":true,"selectedPlanId":"fscan",
        "frequencyPlan":{"startHz":1e9,"stopHz":2e9,"stepHz":1e7},
        "levelPlan":{"startDbm":-20,"stopDbm":-10,"stepDb":1},
        "dwellSeconds":0.001,"supportedPlanIds":["fscan","lscan"]})");
    const QJsonObject changed = parsed(changes);
    for (auto it = changed.constBegin(); it != changed.constEnd(); ++it)
        object.insert(it.key(), it.value());
    return object;
}

QJsonObject withSweep(const QByteArray& tx, const QByteArray& changes)
{
    return {{QStringLiteral("tx"), parsed(tx)}, {QStringLiteral("sweep"), sweep(changes)}};
}

QJsonObject withBusinesses(const QJsonArray& businesses, const QString& enabledId)
{
    return {{QStringLiteral("mod"), QJsonObject{{QStringLiteral("enabled"), true},
                                                {QStringLiteral("enabledBusinessId"), enabledId},
                                                {QStringLiteral("businesses"), businesses}}}};
}

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

QJsonObject quiet()
{
    return parsed(R"({"tx":{"rf":false,"centerHz":1e9,"levelDbm":-20}})");
}

QJsonObject busy()
{
    QJsonObject snapshot = frequencySweep();
    snapshot.insert(QStringLiteral("mod"), menu().value(QStringLiteral("mod")));
    return snapshot;
}

QJsonObject frequencySweep()
{
    return withSweep(
        R"({"rf":true,"centerHz":5999999999.999,"levelDbm":-123.456,"centerUnit":"GHz"})",
        R"({"frequencyPlan":{"startHz":1234567890.123,"stopHz":5999999999.999,"stepHz":123456.789},
                         "dwellSeconds":1.234567})");
}

QJsonObject levelSweep()
{
    return withSweep(R"({"rf":true,"centerText":"2.4 GHz","levelText":"-20 dBm"})",
                     R"({"selectedPlanId":"lscan","enabled":false,
                         "levelPlan":{"startDbm":-123.456,"stopDbm":-99.999,"stepDb":12.345}})");
}

QJsonObject unknownSweep()
{
    return withSweep(R"({"rf":false,"centerHz":1e9,"levelDbm":-20})",
                     R"({"available":false,"selectedPlanId":"unsupported"})");
}

QJsonObject lockedSweep()
{
    return withSweep(R"({"rf":false,"centerHz":1e9,"levelDbm":-20})", R"({"available":false})");
}

QJsonObject modulation(const QString& files)
{
    QJsonArray businesses;
    QString enabledId;
    for (const GalleryItem& item : galleryItems()) {
        const auto filled = [&files](const char* json) {
            return parsed(QByteArray(json).replace("%FILES%", files.toUtf8()));
        };
        businesses.append(QJsonObject{{QStringLiteral("id"), text(item.screen)},
                                      {QStringLiteral("text"), text(item.title)},
                                      {QStringLiteral("name"), text(item.name)},
                                      {QStringLiteral("editorKind"), text(item.kind)},
                                      {QStringLiteral("editorState"), filled(item.state)},
                                      {QStringLiteral("profile"), filled(item.profile)},
                                      {QStringLiteral("revision"), 1}});
        if (item.enabled)
            enabledId = text(item.screen);
    }
    return withBusinesses(businesses, enabledId);
}

QJsonObject menu()
{
    QJsonArray businesses;
    QStringList kinds;
    for (const GalleryItem& item : galleryItems()) {
        if (kinds.contains(text(item.kind)))
            continue;
        kinds.append(text(item.kind));
        businesses.append(QJsonObject{{QStringLiteral("id"), text(item.kind)},
                                      {QStringLiteral("name"), text(item.name)},
                                      {QStringLiteral("text"), text(item.title)}});
    }
    return withBusinesses(businesses, QStringLiteral("digital"));
}

} // namespace Snapshots
