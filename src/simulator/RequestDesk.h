#pragma once

#include "simulator/Scenario.h"

#include <QHash>
#include <QJsonObject>
#include <QObject>

#include <memory>

class HelperHost;

namespace Simulator {

class SignalGenerator;

// Answers the mini bar's requests from the instrument, bent by the rules of a scenario, and tells the mini
// bar of every change that it did not ask for itself.
class RequestDesk final : public QObject
{
    Q_OBJECT

public:
    // Uses the host and the instrument, which must live longer.
    RequestDesk(HelperHost& host, SignalGenerator& instrument, const Scenario& scenario,
                QObject* parent = nullptr);
    ~RequestDesk() override;

    // The state as it is sent: the instrument's with the scenario's overlay.
    [[nodiscard]] QJsonObject snapshot() const;

signals:
    // One request and what became of it, to be shown to people.
    void handled(const QString& request, const QString& outcome);

private:
    void beginRun();
    void receive(int id, const QString& command, const QJsonObject& arguments);
    [[nodiscard]] ScenarioRule ruleFor(const QString& command);
    void answer(int id, const QString& command, const QJsonObject& arguments, const ScenarioRule& rule);
    void answerFromInstrument(int id, const QString& command, const QJsonObject& arguments,
                              const ScenarioRule& rule, const QString& summary);

    HelperHost& m_host;
    SignalGenerator& m_instrument;
    Scenario m_scenario;
    QHash<QString, int> m_received; // requests so far, by command and in all under "*"
    std::unique_ptr<QObject> m_run; // context of what is still to be answered in this run of the helper
    bool m_executing = false;       // a request of the mini bar, whose answer tells what it changed
    bool m_changed = false;         // by the last request
};

} // namespace Simulator
