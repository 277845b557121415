#pragma once

#include "simulator/Scenario.h"

#include <QObject>

#include <memory>

class HelperHost;

namespace Simulator {

class RequestDesk;
class SignalGenerator;

// Plays the timeline of a scenario: in every run of the helper the steps after READY, and after the first
// VISIBLE those after that.
class ScenarioTimeline final : public QObject
{
    Q_OBJECT

public:
    // Uses all of them; they must live longer.
    ScenarioTimeline(HelperHost& host, RequestDesk& desk, SignalGenerator& instrument,
                     const QVector<ScenarioStep>& steps, QObject* parent = nullptr);
    ~ScenarioTimeline() override;

private:
    void begin(ScenarioStep::Moment moment);
    void play(const ScenarioStep& step);

    HelperHost& m_host;
    RequestDesk& m_desk;
    SignalGenerator& m_instrument;
    QVector<ScenarioStep> m_steps;
    std::unique_ptr<QObject> m_run; // context of the steps still to come in this run of the helper
    bool m_wasVisible = false;
};

} // namespace Simulator
