#include "reliability/MainSession.h"

#include "support/HelperProcess.h"
#include "support/Processes.h"
#include "support/Waiting.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <sys/prctl.h>
#include <sys/wait.h>

using namespace TestSupport;

void MainSession::adoptOrphans()
{
    ::prctl(PR_SET_CHILD_SUBREAPER, 1L);
}

MainSession::MainSession(const PrivateDisplay& display, const Accessibility& accessibility)
    : m_bar(display, accessibility)
{
    QProcessEnvironment environment = accessibility.environment();
    environment.insert(QStringLiteral("TMPDIR"), m_folder.path()); // where its server's socket is left behind
    m_main.setProcessEnvironment(environment);
    m_main.setWorkingDirectory(m_folder.path());
}

bool MainSession::begin(const QByteArray& scenario)
{
    QFile file(m_folder.filePath(QStringLiteral("scenario.json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(scenario) != scenario.size())
        return false;
    file.close();
    m_main.start(stagePath() + QStringLiteral("/bin/TarvinelSimulator"),
                 {QStringLiteral("--print-traffic"), QStringLiteral("--no-window"),
                  QStringLiteral("--minimised"), QStringLiteral("--anchor"), QStringLiteral("900,100"),
                  QStringLiteral("--scenario"), file.fileName()});
    return m_main.waitForStarted(defaultDeadline) && waitUntil([this] {
               m_helperId = childrenOf(m_main.processId()).value(0);
               return m_helperId != 0;
           });
}

bool MainSession::waitForLine(const QByteArray& text)
{
    return waitUntil([&] {
        m_output += m_main.readAllStandardOutput();
        return m_output.contains(text);
    });
}

std::optional<MainSession::HelperEnd> MainSession::helperEnd() const
{
    QElapsedTimer clock;
    clock.start();
    const double waitedBefore = waitedForProcessor(m_helperId);
    double waited = waitedBefore;
    int status = 0;
    const bool ended = waitUntil([&] {
        waited = qMax(waited, waitedForProcessor(m_helperId));
        return ::waitpid(pid_t(m_helperId), &status, WNOHANG) == m_helperId;
    });
    if (!ended)
        return std::nullopt;
    return HelperEnd{status, double(clock.elapsed()) - (waited - waitedBefore)};
}

QStringList MainSession::cores() const
{
    return QDir(m_folder.path()).entryList({QStringLiteral("*core*")}, QDir::Files);
}
