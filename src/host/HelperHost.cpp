#include "host/HelperHost.h"

#include "host/Envelopes.h"
#include "host/HelperListener.h"
#include "host/HostLog.h"
#include "host/LaunchArguments.h"
#include "host/Secrets.h"
#include "link/AnchorPoint.h"
#include "link/Keys.h"

#include <QCoreApplication>
#include <QLocalSocket>

#include <algorithm>
#include <limits>

using namespace Host;
namespace Keys = MinibarHelperProtocol::Keys;

// What the helper may say in which state. Whatever is not here breaks the link.
struct HelperHost::Step
{
    State state;
    MinibarMessageType type;
    bool carriesPayload;
    void (*handle)(HelperHost& host, const QString& payload);
};

const HelperHost::Step HelperHost::s_steps[] = {
    {State::Authenticating, MinibarMessageType::Auth, true,
     [](HelperHost& host, const QString& token) { host.onAuth(token); }},
    {State::AwaitingReady, MinibarMessageType::Ready, false,
     [](HelperHost& host, const QString&) { host.onReady(); }},
    {State::Ready, MinibarMessageType::Visible, false,
     [](HelperHost& host, const QString&) { host.acknowledge(MinibarMessageType::ShowMinibar); }},
    {State::Ready, MinibarMessageType::Hidden, false,
     [](HelperHost& host, const QString&) { host.acknowledge(MinibarMessageType::HideMinibar); }},
    {State::Ready, MinibarMessageType::RestoreRequest, false,
     [](HelperHost& host, const QString&) { emit host.restoreRequested(); }},
    {State::Ready, MinibarMessageType::Req, true,
     [](HelperHost& host, const QString& payload) { host.onRequest(payload); }},
};

namespace {

using State = HelperHost::State;

// The helper waits three seconds for an answer: by then nobody has clicked more often.
constexpr int mostOpenRequests = 1000;

// How long a state may last, and what comes when it lasts longer. States with the same limit share one span.
struct Limit
{
    State state;
    std::chrono::milliseconds HelperTimeouts::*span;
    State next;
    const char* reason;
};

constexpr Limit limits[] = {
    {State::Connecting, &HelperTimeouts::handshake, State::Terminating,
     QT_TRANSLATE_NOOP("HelperHost", "The helper did not connect in time.")},
    {State::Authenticating, &HelperTimeouts::handshake, State::Terminating,
     QT_TRANSLATE_NOOP("HelperHost", "The helper did not authenticate in time.")},
    {State::AwaitingReady, &HelperTimeouts::handshake, State::Terminating,
     QT_TRANSLATE_NOOP("HelperHost", "The helper did not report ready in time.")},
    {State::Leaving, &HelperTimeouts::leave, State::Terminating,
     QT_TRANSLATE_NOOP("HelperHost", "The helper did not end when asked.")},
    {State::Terminating, &HelperTimeouts::terminate, State::Killing,
     QT_TRANSLATE_NOOP("HelperHost", "The helper did not end when told.")},
    {State::Killing, &HelperTimeouts::kill, State::Idle,
     QT_TRANSLATE_NOOP("HelperHost", "The helper's process could not be ended.")},
};

const Limit* limitOf(State state)
{
    for (const Limit& limit : limits) {
        if (limit.state == state)
            return &limit;
    }
    return nullptr;
}

} // namespace

HelperHost::HelperHost(std::unique_ptr<HelperRunner> runner, const HelperTimeouts& timeouts, QObject* parent)
    : QObject(parent)
    , m_runner(std::move(runner))
    , m_timeouts(timeouts)
    , m_acknowledgements(timeouts)
{
    m_deadline.setSingleShot(true);
    m_question.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, &HelperHost::onDeadline);
    connect(&m_question, &QTimer::timeout, this, &HelperHost::askWhetherAlive);
    connect(&m_acknowledgements, &Acknowledgements::overdue, this, [this] {
        qCWarning(hostLog) << "The mini bar does not answer";
        emit acknowledgementOverdue();
    });
    connect(&m_acknowledgements, &Acknowledgements::silent, this,
            [this] { end(State::Terminating, tr("The helper did not answer.")); });
    connect(m_runner.get(), &HelperRunner::failedToStart, this, [this](const QString& reason) {
        end(State::Killing, tr("The helper did not start: %1").arg(reason));
    });
    connect(m_runner.get(), &HelperRunner::finished, this, &HelperHost::onFinished);
    connect(m_runner.get(), &HelperRunner::outputLine, this, [this](QString line) {
        if (!m_token.isEmpty())
            line.replace(m_token, QLatin1String("***"));
        qCWarning(hostLog).noquote() << "Helper:" << line;
    });
}

HelperHost::~HelperHost()
{
    m_runner->disconnect(this);
}

void HelperHost::start()
{
    if (m_state != State::Idle || m_runner->isRunning())
        return;
    m_reason.clear();
    m_endWanted = false;
    m_wasReady = false;
    m_exitCode.reset();
    m_token = randomHex128();
    m_listener = std::make_unique<HelperListener>(
        [] { return QString(QLatin1String("tarvinel-minibar-") + randomHex128()); });
    connect(m_listener.get(), &HelperListener::entered, this, &HelperHost::adopt);
    enter(State::Connecting);
    if (!m_listener->listen()) {
        end(State::Killing, tr("No server could be opened: %1").arg(m_listener->errorString()));
        return;
    }
    m_runner->start(launchArguments(m_listener->serverName(), m_token, QCoreApplication::applicationPid()));
}

void HelperHost::adopt(QLocalSocket* socket)
{
    m_link = new HelperLink(socket, m_token, m_timeouts.silence, this);
    connect(m_link, &HelperLink::lineTraffic, this, &HelperHost::lineTraffic);
    connect(m_link, &HelperLink::messageReceived, this, &HelperHost::dispatch);
    connect(m_link, &HelperLink::violated, this,
            [this](const QString& reason) { end(State::Terminating, reason); });
    connect(m_link, &HelperLink::closedByHelper, this,
            [this] { end(State::Leaving, tr("The helper closed the link.")); });
    enter(State::Authenticating);
}

void HelperHost::dispatch(const MinibarMessage& message, const QString& line)
{
    if (m_state > State::Ready)
        return; // what was under way when the end began
    for (const Step& step : s_steps) {
        if (step.state != m_state || step.type != message.type)
            continue;
        if (!step.carriesPayload && !message.payload.isEmpty())
            break;
        step.handle(*this, message.payload);
        return;
    }
    end(State::Terminating, tr("The helper sent an unexpected line: %1").arg(m_link->forLog(line)));
}

void HelperHost::onAuth(const QString& token)
{
    if (!equalInConstantTime(token, m_token)) {
        end(State::Terminating, tr("The helper sent a wrong token."));
        return;
    }
    m_listener->close();
    enter(State::AwaitingReady);
}

void HelperHost::onReady()
{
    m_wasReady = true;
    enter(State::Ready);
    emit ready();
}

void HelperHost::onRequest(const QString& payload)
{
    Request request;
    QString error;
    if (!parseRequest(payload, request, error)) {
        end(State::Terminating, tr("The helper sent a malformed request: %1").arg(m_link->forLog(error)));
        return;
    }
    if (m_openRequests.contains(request.id)) {
        end(State::Terminating, tr("The helper used the request id %1 twice.").arg(request.id));
        return;
    }
    m_openRequests.insert(request.id);
    if (m_openRequests.size() > mostOpenRequests) // the helper has long given it up
        m_openRequests.erase(std::min_element(m_openRequests.begin(), m_openRequests.end()));
    emit requestReceived(request.id, request.command, request.arguments);
}

void HelperHost::acknowledge(MinibarMessageType type)
{
    using Answer = Acknowledgements::Answer;
    const Answer answer = m_acknowledgements.take(type);
    if (answer == Answer::NotDue) {
        end(State::Terminating,
            tr("The helper acknowledged %1 that was not due.").arg(MinibarHelperProtocol::messageWord(type)));
        return;
    }
    if (answer == Answer::Older)
        return;
    const bool shown = type == MinibarMessageType::ShowMinibar;
    if (shown)
        m_question.start(m_timeouts.question);
    if (answer == Answer::Question)
        return;
    m_bar = shown ? Bar::Visible : Bar::Hidden;
    if (shown)
        emit visible();
    else
        emit hidden();
}

bool HelperHost::command(MinibarMessageType type, const QString& payload, Bar bar)
{
    if (!isReady() || !m_link->send(type, payload))
        return false;
    m_question.stop();
    m_acknowledgements.expect(type);
    m_bar = bar;
    return true;
}

// Showing a visible bar without an anchor changes nothing, but has to be answered.
void HelperHost::askWhetherAlive()
{
    if (isReady() && m_link->send(MinibarMessageType::ShowMinibar))
        m_acknowledgements.expect(MinibarMessageType::ShowMinibar, true);
}

bool HelperHost::sendShow(const std::optional<QPoint>& topRight)
{
    const QString anchor = topRight ? MinibarHelperProtocol::writeAnchorPoint(*topRight) : QString();
    return command(MinibarMessageType::ShowMinibar, anchor, Bar::Showing);
}

bool HelperHost::sendHide()
{
    return command(MinibarMessageType::HideMinibar, QString(), Bar::Hiding);
}

void HelperHost::sendShutdown()
{
    const bool asked = isReady() && m_link->send(MinibarMessageType::Shutdown);
    if (m_state <= State::Ready)
        end(asked ? State::Leaving : State::Terminating, tr("The mini bar was shut down."), true);
}

bool HelperHost::pushSnapshot(const QJsonObject& snapshot)
{
    return isReady() && m_link->sendNewest(MinibarMessageType::Evt, snapshotEventPayload(numbered(snapshot)));
}

bool HelperHost::respond(int id, const Response& response)
{
    if (!isReady())
        return false;
    if (!m_openRequests.remove(id)) {
        qCWarning(hostLog) << "No request is open under the id" << id;
        return false;
    }
    Response answer = response;
    if (!answer.payload.isEmpty())
        answer.payload = numbered(answer.payload);
    return m_link->send(MinibarMessageType::Rsp, responsePayload(id, answer));
}

bool HelperHost::sendRaw(const QByteArray& bytes)
{
    return isReady() && m_link->sendRaw(bytes);
}

void HelperHost::dropLink()
{
    if (m_link)
        m_link->abort();
    end(State::Leaving, tr("The link was dropped."), true);
}

QJsonObject HelperHost::numbered(QJsonObject snapshot)
{
    if (snapshot.contains(Keys::seq))
        return snapshot;
    if (m_sequence < std::numeric_limits<int>::max())
        ++m_sequence;
    snapshot.insert(Keys::seq, m_sequence);
    return snapshot;
}

void HelperHost::enter(State state)
{
    const Limit* before = limitOf(m_state);
    const Limit* limit = limitOf(state);
    m_state = state;
    if (!limit)
        m_deadline.stop();
    else if (!before || before->span != limit->span)
        m_deadline.start(m_timeouts.*(limit->span));
    qCDebug(hostLog) << "Host state" << state;
}

void HelperHost::onDeadline()
{
    const Limit* limit = limitOf(m_state);
    if (!limit)
        return;
    qCDebug(hostLog) << limit->reason;
    if (limit->next == State::Idle) {
        m_reason = tr(limit->reason);
        m_endWanted = false;
        conclude();
        return;
    }
    end(limit->next, tr(limit->reason));
}

void HelperHost::end(State how, const QString& reason, bool wanted)
{
    if (m_state == State::Idle || how <= m_state)
        return;
    if (m_reason.isEmpty()) {
        m_reason = reason;
        m_endWanted = wanted;
    }
    m_acknowledgements.clear();
    m_question.stop();
    if (m_listener)
        m_listener->close();
    if (m_link && how > State::Leaving)
        m_link->abort();
    enter(how);
    if (!m_runner->isRunning())
        conclude();
    else if (how == State::Terminating)
        m_runner->terminate();
    else if (how == State::Killing)
        m_runner->kill();
}

void HelperHost::onFinished(int exitCode, bool crashed)
{
    if (m_state == State::Idle)
        return;
    const bool byItself = m_state < State::Terminating;
    if (byItself && !crashed)
        m_exitCode = exitCode;
    if (m_reason.isEmpty())
        m_reason = tr("The helper ended.");
    if (byItself && (crashed || exitCode != 0))
        m_reason += QLatin1Char(' ') + (crashed ? tr("It crashed.") : exitCodeText(exitCode));
    conclude();
}

void HelperHost::conclude()
{
    m_listener.reset();
    if (m_link) {
        m_link->abort();
        m_link->deleteLater();
        m_link = nullptr;
    }
    m_acknowledgements.clear();
    m_question.stop();
    m_openRequests.clear();
    m_bar = Bar::Hidden;
    enter(State::Idle);
    const QString reason = m_reason;
    if (!m_endWanted)
        qCWarning(hostLog).noquote() << "The link to the mini bar ended:" << reason;
    if (m_wasReady)
        emit closed(reason);
    else
        emit failed(reason);
}
