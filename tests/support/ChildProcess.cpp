#include "support/ChildProcess.h"

#include <csignal>
#include <sys/prctl.h>

namespace TestSupport {

ChildProcess::ChildProcess(QObject* parent)
    : QProcess(parent)
{}

ChildProcess::~ChildProcess()
{
    end();
}

void ChildProcess::end()
{
    constexpr int patience = 2000;
    if (state() == NotRunning)
        return;
    terminate();
    if (!waitForFinished(patience))
        killNow();
}

void ChildProcess::killNow()
{
    if (state() == NotRunning)
        return;
    kill();
    waitForFinished(-1);
}

void ChildProcess::setupChildProcess()
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
}

} // namespace TestSupport
