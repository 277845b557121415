#include "simulator/TerminationSignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace Simulator {

namespace {

constexpr int caughtSignals[] = {SIGTERM, SIGINT};

// The only thing a signal handler may touch.
volatile std::sig_atomic_t writeEnd = -1;

void onSignal(int /*number*/)
{
    const int errorBefore = errno;
    const char byte = 0;
    // A full pipe means that enough has been said.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = errorBefore;
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent)
{
    if (::pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals keep ending the program the hard way
    writeEnd = m_pipe[1];
    auto* notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (::read(m_pipe[0], &byte, 1) == 1)
            emit received();
    });
    for (const int number : caughtSignals)
        std::signal(number, onSignal);
}

TerminationSignals::~TerminationSignals()
{
    if (m_pipe[1] < 0)
        return;
    for (const int number : caughtSignals)
        std::signal(number, SIG_DFL);
    writeEnd = -1;
    ::close(m_pipe[0]);
    ::close(m_pipe[1]);
}

} // namespace Simulator
