#include "host/HelperProcess.h"

namespace {

// A longer line of output is passed on in pieces, so that a child that never ends its line costs no memory.
constexpr int longestOutputLine = 4096;
// A killed child is gone within milliseconds; this only bounds the wait for a broken system.
constexpr int reapMilliseconds = 1000;

} // namespace

HelperProcess::HelperProcess(const QString& program, const QStringList& leadingArguments, QObject* parent)
    : HelperRunner(parent)
    , m_program(program)
    , m_leadingArguments(leadingArguments)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardInputFile(QProcess::nullDevice());
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &HelperProcess::readOutput);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            emit failedToStart(m_process.errorString());
    });
    connect(&m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [this](int exitCode, QProcess::ExitStatus status) {
                readOutput();
                flushOutput();
                emit finished(exitCode, status == QProcess::CrashExit);
            });
}

HelperProcess::~HelperProcess()
{
    m_process.disconnect(this);
    if (!isRunning())
        return;
    m_process.kill();
    m_process.waitForFinished(reapMilliseconds);
}

void HelperProcess::start(const QStringList& arguments)
{
    m_output.clear();
    m_process.start(m_program, m_leadingArguments + arguments, QIODevice::ReadOnly);
}

void HelperProcess::terminate()
{
    m_process.terminate();
}

void HelperProcess::kill()
{
    m_process.kill();
}

bool HelperProcess::isRunning() const
{
    return m_process.state() != QProcess::NotRunning;
}

void HelperProcess::readOutput()
{
    m_output += m_process.readAllStandardOutput();
    int begin = 0;
    for (int end = m_output.indexOf('\n'); end >= 0; end = m_output.indexOf('\n', begin)) {
        emit outputLine(QString::fromUtf8(m_output.mid(begin, end - begin)));
        begin = end + 1;
    }
    m_output.remove(0, begin);
    if (m_output.size() >= longestOutputLine)
        flushOutput();
}

void HelperProcess::flushOutput()
{
    if (m_output.isEmpty())
        return;
    emit outputLine(QString::fromUtf8(m_output));
    m_output.clear();
}
