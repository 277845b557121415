#pragma once

#include <QJsonDocument>
#include <QJsonObject>

// The object that this text is.
inline QJsonObject object(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        qFatal("No object: %s", json.constData());
    return document.object();
}

inline QByteArray text(const QJsonObject& json)
{
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}
