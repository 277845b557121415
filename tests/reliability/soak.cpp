// soak [--seconds N] [--rate N] [--mood taps|monkey] [--seed N] [--wrap COMMAND]
// Drives the real helper on a screen of its own: so many states a second from a simulated generator, and
// hands at random on everything that it shows. Looked at: what it uses, what it logs, whether it answers.

#include "reliability/Hands.h"
#include "reliability/LogWatch.h"
#include "reliability/Report.h"
#include "reliability/SimulatedMain.h"
#include "support/HelperProcess.h"
#include "support/PrivateDisplay.h"
#include "support/Processes.h"
#include "support/Waiting.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <iterator>

using namespace std::chrono_literals;
using namespace TestSupport;

namespace {

constexpr QPoint anchor(900, 60);
constexpr qint64 longestAbsence = 5000; // ms; a bar that was asked back is shown again

#ifdef __SANITIZE_ADDRESS__
constexpr bool isPlain = false; // the sanitizer holds freed memory back
#else
constexpr bool isPlain = true;
#endif

struct Plan
{
    int seconds = 10;
    int rate = 100; // states a second
    Hands::Mood mood = Hands::Mood::Taps;
    quint32 seed = 1;
    QStringList wrap; // a program that runs the helper, as valgrind does
};

// The most of everything in one span of the run.
struct Peak
{
    ProcessFacts helper;
    qint64 server = 0; // memory of the X server, KiB

    void raise(const ProcessFacts& facts, qint64 serverMemory)
    {
        helper.memory = qMax(helper.memory, facts.memory);
        helper.descriptors = qMax(helper.descriptors, facts.descriptors);
        helper.threads = qMax(helper.threads, facts.threads);
        server = qMax(server, serverMemory);
    }
};

HelperTimeouts timeoutsFor(const Plan& plan)
{
    HelperTimeouts timeouts;
    if (!plan.wrap.isEmpty())
        timeouts.handshake = timeouts.acknowledge = timeouts.silence = 5min;
    return timeouts;
}

qint64 serverOf()
{
    const QVector<qint64> children = childrenOf(QCoreApplication::applicationPid());
    for (const qint64 child : children) {
        if (commandLineOf(child).contains("Xvfb"))
            return child;
    }
    return 0;
}

// One run: half of it warms up, the other half is held against that.
class Soak final
{
public:
    Soak(const Plan& plan, const PrivateDisplay& display, const Accessibility& accessibility)
        : m_plan(plan)
        , m_main(plan.wrap + QStringList{helperPath()}, timeoutsFor(plan), plan.seed)
        , m_hands(display, accessibility, plan.mood, plan.seed)
        , m_server(serverOf())
    {
        HelperHost& host = m_main.host();
        QObject::connect(&host, &HelperHost::ready, &host, [&host] { host.sendShow(anchor); });
        QObject::connect(&host, &HelperHost::restoreRequested, &host, [&host] { host.sendHide(); });
        QObject::connect(&host, &HelperHost::hidden, &host, [&host] { host.sendShow(anchor); });
        QObject::connect(&host, &HelperHost::requestReceived, &host, [this] { ++m_requests; });
        const auto end = [this](const QString& reason) { m_ends += reason; };
        QObject::connect(&host, &HelperHost::failed, &host, end);
        QObject::connect(&host, &HelperHost::closed, &host, end);
    }

    [[nodiscard]] bool begin()
    {
        m_main.host().start();
        return m_hands.begin() &&
               waitUntil([this] { return m_main.host().bar() == HelperHost::Bar::Visible; },
                         m_plan.wrap.isEmpty() ? defaultDeadline : 300'000);
    }
    void run()
    {
        constexpr int second = 1000;
        QElapsedTimer clock;
        QElapsedTimer absence;
        QTimer states;
        QTimer hands;
        QTimer samples;
        qint64 moved = 0;
        QObject::connect(&states, &QTimer::timeout, [&] {
            for (const qint64 due = clock.elapsed() * m_plan.rate / second; moved < due; ++moved)
                m_main.moveState();
        });
        QObject::connect(&hands, &QTimer::timeout, [&] {
            m_longestAbsence = qMax(m_longestAbsence, absence.elapsed());
            if (m_hands.act(m_main.helperId()))
                absence.start();
            hands.setInterval(m_hands.pause());
        });
        QObject::connect(&samples, &QTimer::timeout,
                         [&] { sample(clock.elapsed() * 2 < m_plan.seconds * qint64(second)); });
        states.start(qMax(1, second / m_plan.rate));
        hands.start(m_hands.pause());
        samples.start(250ms);
        clock.start();
        absence.start();
        (void)waitUntil(
            [&] { return !m_ends.isEmpty() || clock.hasExpired(m_plan.seconds * qint64(second)); },
            m_plan.seconds * second + defaultDeadline);
    }
    // The hands leave, and it must still answer and end as it is told.
    void finish(Report& report)
    {
        const bool alive = m_ends.isEmpty();
        const qint64 helper = m_main.helperId();
        m_hands.letGo();
        const bool answers = alive && answersAgain();
        m_main.host().sendShutdown();
        const bool ended =
            waitUntil([this] { return !m_ends.isEmpty(); }, defaultDeadline) && !isRunning(helper);
        report.check(QStringLiteral("helper alive to the end"), alive && answers && ended,
                     QStringLiteral("%1 actions on %2 controls, %3 requests, %4 states; %5")
                         .arg(m_hands.actions())
                         .arg(m_hands.controls().size())
                         .arg(m_requests)
                         .arg(m_main.host().lastSequence())
                         .arg(m_ends.join(QStringLiteral(", "))));
        report.check(QStringLiteral("something to take hold of"), m_longestAbsence < longestAbsence,
                     QStringLiteral("no window for %1 ms at most").arg(m_longestAbsence));
        judgeUse(report);
        judgeLog(report);
    }

private:
    [[nodiscard]] bool answersAgain()
    {
        bool answered = false;
        QObject::connect(&m_main.host(), &HelperHost::visible, &m_main.host(), [&] { answered = true; });
        m_main.host().sendShow();
        return waitUntil([&] { return answered; }, m_plan.wrap.isEmpty() ? defaultDeadline : 300'000);
    }
    void sample(bool warm)
    {
        const auto helper = factsOf(m_main.helperId());
        const auto server = factsOf(m_server);
        if (helper && server)
            (warm ? m_warm : m_later).raise(*helper, server->memory);
    }
    void judgeUse(Report& report) const
    {
        // What is opened for the first time late in a short run still costs its memory once.
        const bool isLong = m_plan.seconds >= 600;
        const qint64 helperRoom = isLong ? 1024 : 12 * 1024;
        const qint64 serverRoom = isLong ? 4096 : 16 * 1024;
        const auto judge = [&report](const char* name, qint64 warm, qint64 later, qint64 room) {
            report.check(QLatin1String(name), later > 0 && later <= warm + room,
                         QStringLiteral("%1, later %2").arg(warm).arg(later));
        };
        const char* const memory = "helper's memory, KiB";
        if (isPlain && m_plan.wrap.isEmpty())
            judge(memory, m_warm.helper.memory, m_later.helper.memory, helperRoom);
        else
            Report::leaveOut(QLatin1String(memory), QStringLiteral("most of it is the checking tool's"));
        judge("helper's descriptors", m_warm.helper.descriptors, m_later.helper.descriptors, 3);
        judge("helper's threads", m_warm.helper.threads, m_later.helper.threads, 2);
        judge("X server's memory, KiB", m_warm.server, m_later.server, serverRoom);
    }
    static void judgeLog(Report& report)
    {
        // An edit of a state that has moved on is refused, as it must be. The toolkit asks after frames that
        // the window manager has just taken away, and its tree for screen readers has children in a chooser's
        // list of an empty folder.
        const QString expected[] = {QStringLiteral("Minibar helper request failed"),
                                    QStringLiteral("XCB error: 3 (BadWindow)"),
                                    QStringLiteral("QAccessibleTable::child: Invalid index")};
        QStringList others;
        for (const QString& line : LogWatch::lines()) {
            if (std::none_of(std::begin(expected), std::end(expected),
                             [&line](const QString& text) { return line.contains(text); }))
                others += line;
        }
        report.check(
            QStringLiteral("no warning in the log"), others.isEmpty(),
            QStringLiteral("besides %1 refused requests, %2 frames that were gone, %3 empty folders; %4")
                .arg(LogWatch::count(expected[0]))
                .arg(LogWatch::count(expected[1]))
                .arg(LogWatch::count(expected[2]))
                .arg(QStringList(others.mid(0, 5)).join(QStringLiteral(" | "))));
    }

    Plan m_plan;
    SimulatedMain m_main;
    Hands m_hands;
    qint64 m_server;
    Peak m_warm;
    Peak m_later;
    qint64 m_requests = 0;
    qint64 m_longestAbsence = 0; // ms
    QStringList m_ends;
};

Plan planOf(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.addHelpOption();
    const auto option = [&parser](const char* name, const char* text, const char* value) {
        const QCommandLineOption one(QString::fromLatin1(name), QString::fromLatin1(text),
                                     QStringLiteral("value"), QString::fromLatin1(value));
        parser.addOption(one);
        return one;
    };
    const auto seconds = option("seconds", "How long.", "10");
    const auto rate = option("rate", "States a second.", "100");
    const auto mood = option("mood", "taps, or monkey for everything.", "taps");
    const auto seed = option("seed", "Of what is random.", "1");
    const auto wrap = option("wrap", "A command that runs the helper.", "");
    parser.process(application);
    Plan plan;
    plan.seconds = parser.value(seconds).toInt();
    plan.rate = qBound(1, parser.value(rate).toInt(), 1000);
    plan.mood = parser.value(mood) == QLatin1String("monkey") ? Hands::Mood::Monkey : Hands::Mood::Taps;
    plan.seed = parser.value(seed).toUInt();
    plan.wrap = parser.value(wrap).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return plan;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const Plan plan = planOf(application);
    PrivateDisplay display;
    Accessibility accessibility(display);
    if (!display.start() || !accessibility.start()) {
        qCritical("No desktop: %s%s", qPrintable(display.errorString()),
                  qPrintable(accessibility.errorString()));
        return 2;
    }
    // The helper is started with this program's own environment.
    const QProcessEnvironment environment = accessibility.environment();
    const QStringList names = environment.keys();
    for (const QString& name : names)
        qputenv(name.toLatin1().constData(), environment.value(name).toLocal8Bit());

    const LogWatch log;
    Report report;
    Soak soak(plan, display, accessibility);
    if (!soak.begin()) {
        report.check(QStringLiteral("the bar is shown"), false, LogWatch::lines().join(QLatin1Char(' ')));
        return report.exitCode();
    }
    soak.run();
    soak.finish(report);
    return report.exitCode();
}
