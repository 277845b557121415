#include "kit/ProcessFacts.h"

#include "kit/Rounds.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QThread>
#include <ctime>

namespace {

QByteArray content(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "the process cannot be read");
    return file.readAll();
}

QString folderOf(qint64 processId)
{
    return QStringLiteral("/proc/%1/").arg(processId);
}

// The number behind "Key:" at the start of a line.
qint64 field(const QByteArray& text, const QByteArray& key)
{
    const int at = QByteArray('\n' + text).indexOf('\n' + key + ':');
    require(at >= 0, "no such field in /proc");
    const int start = at + key.size() + 1;
    const int end = text.indexOf('\n', start);
    return text.mid(start, end - start).simplified().split(' ').first().toLongLong();
}

} // namespace

MemoryFacts memoryOf(qint64 processId)
{
    constexpr double kibPerMib = 1024;
    const QByteArray rollup = content(folderOf(processId) + QStringLiteral("smaps_rollup"));
    const double written = double(field(rollup, "Private_Dirty")) / kibPerMib;
    return {double(field(rollup, "Rss")) / kibPerMib,
            double(field(rollup, "Private_Clean")) / kibPerMib + written, written};
}

double cpuMsOf(qint64 processId)
{
    clockid_t clock = 0;
    timespec used = {};
    require(clock_getcpuclockid(pid_t(processId), &clock) == 0 && clock_gettime(clock, &used) == 0,
            "no clock of the process");
    return double(used.tv_sec) * 1e3 + double(used.tv_nsec) / 1e6;
}

ActivityFacts activityOf(qint64 processId)
{
    ActivityFacts facts;
    const QDir tasks(folderOf(processId) + QStringLiteral("task"));
    const QStringList threads = tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    require(!threads.isEmpty(), "a process without threads");
    for (const QString& thread : threads) {
        const QByteArray status = content(tasks.filePath(thread + QStringLiteral("/status")));
        facts.switches +=
            field(status, "voluntary_ctxt_switches") + field(status, "nonvoluntary_ctxt_switches");
    }
    // The fields behind the name in brackets, which may itself hold brackets and blanks.
    const QByteArray stat = content(folderOf(processId) + QStringLiteral("stat"));
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    constexpr int userTime = 11;
    facts.ticks = fields.value(userTime).toLongLong() + fields.value(userTime + 1).toLongLong();
    return facts;
}

void waitForRest(qint64 processId)
{
    constexpr unsigned long pause = 600; // ms; the bar looks half a second after a show whether it has come
    constexpr int patience = 50;
    ActivityFacts before = activityOf(processId);
    for (int looks = 0; looks < patience; ++looks) {
        QThread::msleep(pause);
        const ActivityFacts now = activityOf(processId);
        if (now.switches == before.switches && now.ticks == before.ticks)
            return;
        before = now;
    }
    require(false, "the program does not come to rest");
}
