#include "host/FakeHelper.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

void FakeRunner::start(const QStringList& arguments)
{
    calls.append(QStringLiteral("start"));
    m_arguments = arguments;
    m_running = true;
}

void FakeRunner::terminate()
{
    calls.append(QStringLiteral("terminate"));
    if (obeysTerminate)
        end(15, true);
}

void FakeRunner::kill()
{
    calls.append(QStringLiteral("kill"));
    if (obeysKill)
        end(9, true);
}

void FakeRunner::end(int exitCode, bool crashed)
{
    m_running = false;
    emit finished(exitCode, crashed);
}

void FakeRunner::fail(const QString& reason)
{
    m_running = false;
    emit failedToStart(reason);
}

QString FakeRunner::option(const QString& name) const
{
    return m_arguments.value(m_arguments.indexOf(name) + 1);
}

FakeHelper::FakeHelper(QObject* parent)
    : QObject(parent)
    , m_socket(this)
{}

void FakeHelper::enter(const QString& server)
{
    m_socket.connectToServer(server);
    QVERIFY(m_socket.waitForConnected());
}

void FakeHelper::say(const QString& line)
{
    sayBytes(line.toUtf8() + '\n');
}

void FakeHelper::sayBytes(const QByteArray& bytes)
{
    QCOMPARE(m_socket.write(bytes), bytes.size());
    m_socket.flush();
}

void FakeHelper::setReading(bool reading)
{
    m_socket.setReadBufferSize(reading ? 0 : 1);
}

void FakeHelper::leave()
{
    m_socket.abort();
}

QString FakeHelper::hear()
{
    if (!QTest::qWaitFor([this] { return m_socket.canReadLine(); }))
        return {};
    return QString::fromUtf8(m_socket.readLine().chopped(1));
}

QJsonObject FakeHelper::hearObject(const QString& word)
{
    const QString line = hear();
    if (!line.startsWith(word + QLatin1Char(' ')))
        return {};
    return QJsonDocument::fromJson(line.mid(word.size() + 1).toUtf8()).object();
}

HostFixture::HostFixture(const HelperTimeouts& timeouts)
    : runner(new FakeRunner)
    , host(std::unique_ptr<HelperRunner>(runner), timeouts)
{}

void HostFixture::reachReady()
{
    host.start();
    helper.enter(runner->server());
    helper.say(QLatin1String("AUTH ") + runner->token());
    helper.say(QStringLiteral("READY"));
    QTRY_COMPARE(host.state(), HelperHost::State::Ready);
}

void expectEnd(const QString& sentence)
{
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QLatin1String("The link to the mini bar ended: .*") + sentence));
}
