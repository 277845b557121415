#pragma once

#include "link/client/MinibarClient.h"
#include "support/FakeMain.h"
#include "support/Waiting.h"

#include <QJsonDocument>
#include <QStringList>

#include <memory>

// A client on a living link, and everything it signals, in order, as one text a signal.
struct ClientFixture
{
    ClientFixture()
    {
        connected = client.connectToHost(main.serverName(), 3000) &&
                    TestSupport::waitUntil([this] { return main.isConnected(); });
        record();
    }

    // Waits until a signal of this text has come.
    [[nodiscard]] bool waitFor(const QString& text, int deadline = TestSupport::defaultDeadline) const
    {
        return TestSupport::waitUntil([&] { return log.contains(text); }, deadline);
    }

    // What the client signals for these lines, up to a HIDE_MINIBAR that is sent after them.
    [[nodiscard]] QStringList signalsFor(const QByteArray& lines)
    {
        log.clear();
        main.sendBytes(lines);
        if (!main.hide())
            return {QStringLiteral("the client does not answer")};
        return log.mid(0, log.indexOf(QStringLiteral("hide")));
    }

    static QString text(const QJsonObject& object)
    {
        return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
    }

    TestSupport::FakeMain main;
    MinibarClient client;
    QStringList log;
    bool connected = false;

private:
    void record()
    {
        const auto note = [this](const QString& entry) { log.append(entry); };
        using C = MinibarClient;
        QObject::connect(&client, &C::showMiniBarRequested, &client, [=](QPoint point) {
            note(QStringLiteral("show %1,%2").arg(point.x()).arg(point.y()));
        });
        QObject::connect(&client, &C::hideMiniBarRequested, &client, [=] { note(QStringLiteral("hide")); });
        QObject::connect(&client, &C::shutdownRequested, &client, [=] { note(QStringLiteral("shutdown")); });
        QObject::connect(&client, &C::snapshotReceived, &client, [=](const QJsonObject& object) {
            note(QStringLiteral("snapshot ") + text(object));
        });
        QObject::connect(&client, &C::requestStarted, &client,
                         [=](int id) { note(QStringLiteral("started %1").arg(id)); });
        QObject::connect(&client, &C::requestFinished, &client,
                         [=](int id) { note(QStringLiteral("finished %1").arg(id)); });
        QObject::connect(&client, &C::requestError, &client,
                         [=](int id, const QString& code, const QString& message) {
                             note(QStringLiteral("error %1 %2 %3").arg(QString::number(id), code, message));
                         });
        QObject::connect(&client, &C::protocolError, &client,
                         [=](const QString& message) { note(QStringLiteral("protocol ") + message); });
        QObject::connect(&client, &C::disconnected, &client, [=] { note(QStringLiteral("disconnected")); });
    }
};

// The suites of tst_minibar_client; each is defined in the file of its name.
std::unique_ptr<QObject> makeClientHandshakeSuite();
std::unique_ptr<QObject> makeClientRequestsSuite();
std::unique_ptr<QObject> makeClientReadingSuite();
std::unique_ptr<QObject> makeClientEndingSuite();
