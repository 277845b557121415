// What a snapshot costs that changes nothing: the helper's processor time, reading the socket included,
// beside QJsonDocument::fromJson of the same bytes in this process; and whether the user is still answered
// while 3,000 typical snapshots arrive every second.
#include "kit/Clocks.h"
#include "kit/HelperOnScreen.h"
#include "kit/ProcessFacts.h"
#include "kit/Report.h"
#include "kit/TypicalSnapshot.h"

#include <QGuiApplication>
#include <QJsonDocument>
#include <QThread>
#include <QTimer>

namespace {

constexpr double mostTimesParsing = 1.4;
constexpr double alarmTimesParsing = 2.8;
constexpr int perSecond = 3000;
constexpr double mostForPress = 16;  // ms
constexpr double alarmForPress = 60; // ms

// µs of processor time for each.
double costOfBurst(TimedProgram& helper, const QByteArray& lines, int count)
{
    const double before = cpuMsOf(helper.processId());
    helper.main().sendBytes(lines);
    require(helper.main().hide(), "no answer"); // said when all before it has been dealt with
    return (cpuMsOf(helper.processId()) - before) * 1e3 / count;
}

double costOneByOne(TimedProgram& helper, SnapshotSource& source, int count)
{
    constexpr unsigned long gap = 500; // µs, in which the helper goes back to sleep
    const double before = cpuMsOf(helper.processId());
    for (int i = 0; i < count; ++i) {
        helper.main().sendBytes(source.next());
        QThread::usleep(gap);
    }
    require(helper.main().hide(), "no answer");
    return (cpuMsOf(helper.processId()) - before) * 1e3 / count;
}

// Parses what stands behind the word of each line.
double costOfParsing(const QByteArray& lines, int count)
{
    constexpr int word = 4;
    const double before = threadCpuMs();
    for (int start = 0, end = 0; start < lines.size(); start = end + 1) {
        end = lines.indexOf('\n', start);
        const auto json = QByteArray::fromRawData(lines.constData() + start + word, end - start - word);
        require(QJsonDocument::fromJson(json).isObject(), "no JSON");
    }
    return (threadCpuMs() - before) * 1e3 / count;
}

// Sends what is due by the clock, and presses meanwhile.
class Stream final
{
public:
    Stream(TimedDisplay& display, TimedProgram& helper, SnapshotSource& source)
        : m_display(display)
        , m_helper(helper)
        , m_source(source)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { sendWhatIsDue(); });
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.start(1);
    }

    Samples press(int presses)
    {
        Samples times;
        for (int press = 1; press <= presses; ++press) {
            auto& main = m_helper.main();
            const int before = main.count("REQ");
            const Stopwatch clock;
            m_display.hand().click(BarPlaces::rfCorner);
            m_helper.waitForWord("REQ", before);
            times.add(clock.ms());
            main.answer(press, true);
        }
        return times;
    }
    // Ends it; snapshots a second that the helper has taken out of the socket.
    double finish()
    {
        m_timer.stop();
        require(m_helper.main().waitUntilRead(), "not read");
        return m_sent * 1e3 / m_clock.ms();
    }

private:
    void sendWhatIsDue()
    {
        for (const double due = m_clock.ms() * perSecond / 1e3; m_sent < due; ++m_sent)
            m_helper.main().sendBytes(m_source.next());
    }

    TimedDisplay& m_display;
    TimedProgram& m_helper;
    SnapshotSource& m_source;
    QTimer m_timer;
    Stopwatch m_clock;
    int m_sent = 0;
};

void reportCosts(Report& report, TimedProgram& helper, SnapshotSource& source)
{
    std::vector<Work> rows = {
        {"QJsonDocument::fromJson", {}}, {"helper, many at once", {}}, {"helper, one by one", {}}};
    const int rounds = report.pick(40, 9);
    constexpr int count = 200;
    for (int round = 0; round < rounds; ++round) {
        const QByteArray lines = source.next(count);
        rows[0].times.add(costOfParsing(lines, count));
        rows[1].times.add(costOfBurst(helper, lines, count));
        rows[2].times.add(costOneByOne(helper, source, count));
    }
    const std::string size = std::to_string(source.next().size());
    report.printTimes(("Processor time for each snapshot of " + size + " bytes:").c_str(), rows, "µs");
    const double parsing = rows[0].times.median();
    report.limit("helper, many at once / fromJson", rows[1].times.median() / parsing, mostTimesParsing,
                 alarmTimesParsing);
    report.watch("helper, one by one / fromJson", rows[2].times.median() / parsing, 2 * alarmTimesParsing);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Report report(argc, argv, "A snapshot that changes nothing");
    TimedDisplay display;
    TimedProgram helper(display.environment(), TestSupport::helperPath());
    helper.start();
    helper.waitForWord("READY", 0);
    SnapshotSource source;
    helper.main().sendBytes(source.next());
    reportCosts(report, helper, source);

    require(helper.main().show(BarPlaces::anchor) && display.waitForWindow(BarPlaces::rfCorner), "no bar");
    Stream stream(display, helper, source);
    std::vector<Work> rows = {{"press to REQ meanwhile", {}}};
    rows[0].times = stream.press(report.pick(2000, 150));
    const double rate = stream.finish();
    report.printTimes("While typical snapshots arrive, ms:", rows);
    report.limit("press to REQ meanwhile, p99, ms", rows[0].times.percentile(99), mostForPress);
    report.watch("press to REQ meanwhile, median, ms", rows[0].times.median(), alarmForPress);
    report.limit("3,000 / snapshots taken in a second", perSecond / rate, 1.01, 2);
    return report.finish();
}
