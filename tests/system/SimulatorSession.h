#pragma once

#include "support/ChildProcess.h"
#include "system/BarView.h"

#include <QJsonObject>

// The real simulator on a real display, the mini bar that it has started, and what the two say to each other.
class SimulatorSession final
{
public:
    // Both must have been started and outlive the session.
    SimulatorSession(const TestSupport::PrivateDisplay& display,
                     const TestSupport::Accessibility& accessibility);

    // Returns when the program runs; `stage` is the installed tree that it runs from. Its conversation is
    // printed in any case.
    [[nodiscard]] bool start(const QString& stage, const QStringList& arguments = {});
    [[nodiscard]] TestSupport::ChildProcess& simulator() { return m_simulator; }
    [[nodiscard]] const TestSupport::ChildProcess& simulator() const { return m_simulator; }
    // The helper that the simulator has started; 0 if there is none.
    [[nodiscard]] qint64 helperId() const;
    [[nodiscard]] BarView& bar() { return m_bar; }
    [[nodiscard]] const BarView& bar() const { return m_bar; }

    // From now on waitForLine looks at later lines only.
    void markTraffic();
    // Waits for a line of the conversation that holds the text.
    [[nodiscard]] bool waitForLine(const QByteArray& text);
    // Whether such a line has come since the mark.
    [[nodiscard]] bool hasLine(const QByteArray& text);
    [[nodiscard]] const QByteArray& traffic() const { return m_traffic; }
    // The payloads of the lines that begin so ("helper REQ", "main   EVT"), since the mark.
    [[nodiscard]] QVector<QJsonObject> payloads(const QByteArray& beginning);

private:
    void readTraffic();

    TestSupport::ChildProcess m_simulator;
    BarView m_bar;
    QByteArray m_traffic;
    int m_mark = 0;
};
