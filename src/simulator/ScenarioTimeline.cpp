#include "simulator/ScenarioTimeline.h"

#include "host/HelperHost.h"
#include "simulator/RequestDesk.h"
#include "simulator/SignalGenerator.h"
#include "simulator/SnapshotWriter.h"

#include <QTimer>

#include <utility>

namespace Simulator {

ScenarioTimeline::ScenarioTimeline(HelperHost& host, RequestDesk& desk, SignalGenerator& instrument,
                                   const QVector<ScenarioStep>& steps, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_desk(desk)
    , m_instrument(instrument)
    , m_steps(steps)
{
    connect(&m_host, &HelperHost::ready, this, [this] {
        m_run = std::make_unique<QObject>();
        m_wasVisible = false;
        begin(ScenarioStep::Moment::Ready);
    });
    connect(&m_host, &HelperHost::visible, this, [this] {
        if (!std::exchange(m_wasVisible, true))
            begin(ScenarioStep::Moment::Visible);
    });
}

ScenarioTimeline::~ScenarioTimeline() = default;

void ScenarioTimeline::begin(ScenarioStep::Moment moment)
{
    for (const ScenarioStep& step : qAsConst(m_steps)) {
        if (step.moment == moment)
            QTimer::singleShot(step.delayMs, m_run.get(), [this, step] { play(step); });
    }
}

void ScenarioTimeline::play(const ScenarioStep& step)
{
    switch (step.action) {
    case ScenarioStep::Action::Push:
        m_host.pushSnapshot(merged(m_desk.snapshot(), step.object));
        return;
    case ScenarioStep::Action::Raw:
        m_host.sendRaw(step.raw.toUtf8() + '\n');
        return;
    case ScenarioStep::Action::Set:
        step.settings.applyTo(m_instrument);
        return;
    case ScenarioStep::Action::Show:
        m_host.sendShow(step.anchor);
        return;
    case ScenarioStep::Action::Hide:
        m_host.sendHide();
        return;
    case ScenarioStep::Action::Shutdown:
        m_host.sendShutdown();
        return;
    }
}

} // namespace Simulator
