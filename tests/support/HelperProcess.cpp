#include "support/HelperProcess.h"

#include "support/PrivateDisplay.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace TestSupport {
namespace {

bool copyEntry(const QFileInfo& source, const QString& target)
{
    if (source.isSymLink()) // fonts and translations are links to the system's
        return QFile::link(source.symLinkTarget(), target);
    if (source.isDir())
        return QDir().mkpath(target);
    return QDir().mkpath(QFileInfo(target).path()) && QFile::copy(source.filePath(), target);
}

bool copyTree(const QString& from, const QString& to)
{
    const QDir root(from);
    QDirIterator entries(from, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        if (!copyEntry(entries.fileInfo(), QDir(to).filePath(root.relativeFilePath(path))))
            return false;
    }
    return true;
}

} // namespace

QString stagePath()
{
    return QStringLiteral(TARVINEL_STAGE);
}

QString helperPath(const QString& stage)
{
    return stage + QStringLiteral("/bin/TarvinelMiniBar");
}

StageCopy::StageCopy()
    : m_valid(m_folder.isValid() && copyTree(stagePath(), m_folder.path()))
{}

bool StageCopy::write(const QString& file, const QByteArray& content) const
{
    QFile target(m_folder.filePath(file));
    return QDir().mkpath(QFileInfo(target).path()) && target.open(QIODevice::WriteOnly) &&
           target.write(content) == content.size();
}

bool StageCopy::remove(const QString& entry) const
{
    const QFileInfo there(m_folder.filePath(entry));
    if (there.isDir() && !there.isSymLink())
        return QDir(there.filePath()).removeRecursively();
    return (!there.exists() && !there.isSymLink()) || QFile::remove(there.filePath());
}

bool StageCopy::replaceByLink(const QString& entry, const QString& target) const
{
    return remove(entry) && QFile::link(target, m_folder.filePath(entry));
}

bool StageCopy::replaceByFolder(const QString& entry) const
{
    return remove(entry) && QDir().mkpath(m_folder.filePath(entry));
}

bool StageCopy::replaceByFile(const QString& entry, const QByteArray& content) const
{
    return remove(entry) && write(entry, content);
}

HelperProcess::HelperProcess(const QProcessEnvironment& environment, const QString& program)
    : m_program(program)
{
    QProcessEnvironment own = environment;
    if (!own.contains(QStringLiteral("DISPLAY"))) {
        for (const QString& name : {QStringLiteral("HOME"), QStringLiteral("XDG_RUNTIME_DIR")})
            own.insert(name, m_home.path());
    }
    m_process.setProcessEnvironment(own);
    QObject::connect(&m_process, &QProcess::readyReadStandardError, &m_process,
                     [this] { m_errorOutput += m_process.readAllStandardError(); });
}

bool HelperProcess::start(const QStringList& arguments)
{
    m_process.start(m_program, arguments);
    return m_process.waitForStarted(defaultDeadline);
}

std::optional<int> HelperProcess::waitForExitCode(int deadline) const
{
    const bool ended = waitUntil([this] { return m_process.state() == QProcess::NotRunning; }, deadline);
    if (!ended || m_process.exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return m_process.exitCode();
}

QByteArray HelperProcess::errorOutput() const
{
    QByteArray own;
    const QList<QByteArray> lines = m_errorOutput.split('\n');
    for (const QByteArray& line : lines)
        if (!line.isEmpty() && !line.startsWith("This plugin does not support "))
            own += line + '\n';
    return own;
}

QProcessEnvironment HelperProcess::offscreenEnvironment()
{
    QProcessEnvironment environment = cleanEnvironment(QString());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return environment;
}

} // namespace TestSupport
