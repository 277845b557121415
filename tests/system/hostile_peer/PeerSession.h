#pragma once

#include "support/Desktop.h"
#include "support/FakeMain.h"
#include "support/HelperProcess.h"
#include "support/PrivateDisplay.h"

#include <QJsonArray>
#include <memory>

// One meeting of the hostile peer with the real helper: what a behaviour acts on and what is reported of it.
class PeerSession final
{
public:
    // With a display the helper's bar can be clicked; without one it runs on the offscreen platform.
    explicit PeerSession(bool withDisplay);

    // The helper runs and has said AUTH and READY.
    [[nodiscard]] bool begin();
    // Looks whether the helper still answers and ends it; the report of the whole meeting.
    [[nodiscard]] QJsonObject finish();

    [[nodiscard]] TestSupport::FakeMain& main() { return m_main; }
    // Sends piece by piece, each only when the helper has read the one before.
    void sendPieces(const QVector<QByteArray>& pieces);

    // With a display only: shows the bar; clicks its RF button and waits for the request; the request's id.
    void showBar();
    int clickRf();
    // Waits for a text in the helper's log.
    void waitForLog(const QByteArray& text);
    // Until the helper has hung up.
    void waitForDisconnect();

private:
    void fail(const QString& reason);

    TestSupport::FakeMain m_main;
    std::unique_ptr<TestSupport::PrivateDisplay> m_display;
    std::unique_ptr<TestSupport::Desktop> m_desktop;
    std::unique_ptr<TestSupport::HelperProcess> m_helper;
    QJsonArray m_failures; // steps of the behaviour itself that went wrong
};
