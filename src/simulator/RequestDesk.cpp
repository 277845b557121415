#include "simulator/RequestDesk.h"

#include "host/HelperHost.h"
#include "link/Keys.h"
#include "simulator/InstrumentCommands.h"
#include "simulator/SignalGenerator.h"
#include "simulator/SimulatorLog.h"
#include "simulator/SnapshotWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QScopedValueRollback>
#include <QTimer>

namespace Simulator {

namespace {

constexpr int longestSummary = 48;

const QString everyCommand = QStringLiteral("*");

// A request on one line, for people: "SOUR:FREQ:CENT hz 2400000000".
QString summaryOf(const QString& command, const QJsonObject& arguments)
{
    QStringList parts;
    for (auto it = arguments.begin(); it != arguments.end(); ++it) {
        const QByteArray value = QJsonDocument(QJsonArray{it.value()}).toJson(QJsonDocument::Compact);
        parts += it.key() + QLatin1Char(' ') + QString::fromUtf8(value.mid(1, value.size() - 2));
    }
    const QString text = command + QLatin1Char(' ') + parts.join(QLatin1String(", "));
    return text.size() > longestSummary ? QString(text.left(longestSummary) + QChar(0x2026)) : text.trimmed();
}

} // namespace

RequestDesk::RequestDesk(HelperHost& host, SignalGenerator& instrument, const Scenario& scenario,
                         QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_instrument(instrument)
    , m_scenario(scenario)
    , m_run(std::make_unique<QObject>())
{
    connect(&m_host, &HelperHost::ready, this, &RequestDesk::beginRun);
    connect(&m_host, &HelperHost::requestReceived, this, &RequestDesk::receive);
    connect(this, &RequestDesk::handled, this, [](const QString& request, const QString& outcome) {
        qCDebug(simulatorLog).noquote() << request << QLatin1String("->") << outcome;
    });
    connect(&m_instrument, &SignalGenerator::changed, this, [this] {
        if (m_executing)
            m_changed = true;
        else
            m_host.pushSnapshot(snapshot());
    });
}

RequestDesk::~RequestDesk() = default;

QJsonObject RequestDesk::snapshot() const
{
    return merged(snapshotOf(m_instrument), m_scenario.overlay);
}

void RequestDesk::beginRun()
{
    m_run = std::make_unique<QObject>();
    m_received.clear();
    m_host.pushSnapshot(snapshot());
}

ScenarioRule RequestDesk::ruleFor(const QString& command)
{
    const int ofCommand = ++m_received[command];
    const int ofAll = ++m_received[everyCommand];
    for (const ScenarioRule& rule : qAsConst(m_scenario.rules)) {
        const bool every = rule.command == everyCommand;
        if (!every && rule.command != command)
            continue;
        if (rule.occurrence == 0 || rule.occurrence == (every ? ofAll : ofCommand))
            return rule;
    }
    return {};
}

void RequestDesk::receive(int id, const QString& command, const QJsonObject& arguments)
{
    const ScenarioRule rule = ruleFor(command);
    if (rule.delayMs == 0) {
        answer(id, command, arguments, rule);
        return;
    }
    QTimer::singleShot(rule.delayMs, m_run.get(),
                       [this, id, command, arguments, rule] { answer(id, command, arguments, rule); });
}

void RequestDesk::answer(int id, const QString& command, const QJsonObject& arguments,
                         const ScenarioRule& rule)
{
    const QString summary = summaryOf(command, arguments);
    switch (rule.action) {
    case ScenarioRule::Action::Answer:
    case ScenarioRule::Action::Payload:
    case ScenarioRule::Action::Stale:
        answerFromInstrument(id, command, arguments, rule, summary);
        return;
    case ScenarioRule::Action::Error:
        m_host.respond(id, Host::Response::failure(rule.errorCode, rule.errorMessage));
        emit handled(summary, rule.errorCode);
        return;
    case ScenarioRule::Action::Silence:
        emit handled(summary, tr("not answered"));
        return;
    case ScenarioRule::Action::Close:
        emit handled(summary, tr("link closed"));
        m_host.dropLink();
        return;
    case ScenarioRule::Action::Raw: {
        QString line = rule.raw;
        line.replace(QLatin1String("{id}"), QString::number(id));
        m_host.sendRaw(line.toUtf8() + '\n');
        emit handled(summary, tr("raw line"));
        return;
    }
    }
}

void RequestDesk::answerFromInstrument(int id, const QString& command, const QJsonObject& arguments,
                                       const ScenarioRule& rule, const QString& summary)
{
    namespace Keys = MinibarHelperProtocol::Keys;
    QJsonObject before = snapshot();
    before.insert(Keys::seq, m_host.lastSequence());

    const QScopedValueRollback<bool> executing(m_executing, true);
    m_changed = false;
    Host::Response response = execute(m_instrument, command, arguments);
    if (response.ok) {
        response.payload = snapshot();
        if (rule.action == ScenarioRule::Action::Payload)
            response.payload = merged(response.payload, rule.payload);
        if (rule.action == ScenarioRule::Action::Stale) {
            m_host.pushSnapshot(snapshot());
            response.payload = before;
        }
    }
    m_host.respond(id, response);
    // Only the plain answer: under the other rules the scenario says what is seen.
    if (m_changed && rule.action == ScenarioRule::Action::Answer && isAnnounced(command))
        m_host.pushSnapshot(snapshot());
    emit handled(summary, response.ok ? tr("ok") : response.errorCode);
}

} // namespace Simulator
