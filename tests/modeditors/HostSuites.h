#pragma once

#include "modeditors/FakeEditor.h"
#include "modeditors/RemoteModEditorHost.h"

#include <QJsonDocument>
#include <memory>

// One item as the window passes it to the host.
struct Item
{
    QString key = QStringLiteral("b1");
    QString type = QStringLiteral("Type");
    QString title = QStringLiteral("Title");
    QJsonObject state;
    QString rawKind = QStringLiteral("fake");
    QJsonObject profile;
    int revision = 1;
    bool enabled = false;

    void applyTo(RemoteModEditorHost& host) const
    {
        host.setModulationItem(key, type, title, state, rawKind, profile, revision, enabled);
    }
};

inline QJsonObject json(const char* text)
{
    return QJsonDocument::fromJson(text).object();
}

// Knows the kinds that begin with "fake".
inline RemoteModEditor* createFakeEditor(const QString& kind, QWidget* parent)
{
    return kind.startsWith(QLatin1String("fake")) ? new FakeEditor(parent, kind) : nullptr;
}

// Null if there is none. RemoteModEditor has a meta-object, FakeEditor none of its own.
inline FakeEditor* editorOf(const RemoteModEditorHost& host)
{
    return dynamic_cast<FakeEditor*>(host.findChild<RemoteModEditor*>(QString(), Qt::FindDirectChildrenOnly));
}

std::unique_ptr<QObject> makeHostSuite();
std::unique_ptr<QObject> makeHostRequestsSuite();
std::unique_ptr<QObject> makeHostModelSuite();
std::unique_ptr<QObject> makeHostLayoutSuite();
