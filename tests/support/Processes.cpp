#include "support/Processes.h"

#include <QDir>
#include <QFile>

namespace TestSupport {
namespace {

QString pathOf(qint64 processId, const char* file)
{
    return QStringLiteral("/proc/%1/%2").arg(processId).arg(QLatin1String(file));
}

QByteArray contentOf(qint64 processId, const char* file)
{
    QFile source(pathOf(processId, file));
    return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
}

// The number behind "Key:" in /proc/<id>/status.
qint64 statusNumber(const QByteArray& status, const QByteArray& key)
{
    const int found = status.indexOf('\n' + key + ':');
    if (found < 0)
        return 0;
    const QByteArray rest = status.mid(found + key.size() + 2);
    return rest.left(rest.indexOf('\n')).simplified().split(' ').first().toLongLong();
}

// "id (name) state parent ..."; the name may hold anything.
QList<QByteArray> statFields(qint64 processId)
{
    const QByteArray text = contentOf(processId, "stat");
    return text.mid(text.lastIndexOf(')') + 2).split(' ');
}

} // namespace

std::optional<ProcessFacts> factsOf(qint64 processId)
{
    const QByteArray status = contentOf(processId, "status");
    if (status.isEmpty())
        return std::nullopt;
    ProcessFacts facts;
    facts.memory = statusNumber(status, "RssAnon");
    facts.threads = int(statusNumber(status, "Threads"));
    facts.descriptors = int(QDir(pathOf(processId, "fd"))
                                .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                                .size());
    return facts;
}

QVector<qint64> childrenOf(qint64 processId)
{
    QVector<qint64> children;
    const QStringList processes =
        QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs);
    for (const QString& process : processes) {
        if (statFields(process.toLongLong()).value(1).toLongLong() == processId)
            children += process.toLongLong();
    }
    return children;
}

bool isRunning(qint64 processId)
{
    const QByteArray state = statFields(processId).value(0);
    return !state.isEmpty() && state != "Z" && state != "X";
}

double waitedForProcessor(qint64 processId)
{
    constexpr double nanosecondsPerMillisecond = 1e6;
    return contentOf(processId, "schedstat").split(' ').value(1).toDouble() / nanosecondsPerMillisecond;
}

QByteArray commandLineOf(qint64 processId)
{
    return contentOf(processId, "cmdline");
}

std::optional<int> countInMemory(qint64 processId, const QByteArray& bytes)
{
    QFile memory(pathOf(processId, "mem"));
    if (!memory.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    int count = 0;
    const QList<QByteArray> areas = contentOf(processId, "maps").split('\n');
    for (const QByteArray& area : areas) { // "begin-end rights ..."
        const int dash = area.indexOf('-');
        const int blank = area.indexOf(' ');
        if (dash < 0 || area.mid(blank + 1, 1) != "r")
            continue;
        const qint64 begin = area.left(dash).toLongLong(nullptr, 16);
        const qint64 end = area.mid(dash + 1, blank - dash - 1).toLongLong(nullptr, 16);
        if (begin >= 0 && end > begin && memory.seek(begin))
            count += memory.read(end - begin).count(bytes);
    }
    return count;
}

} // namespace TestSupport
