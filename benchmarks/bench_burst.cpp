// What a burst of lines does to the bar: the real client and the real window take snapshots from a main
// process that sends as fast as the socket takes them, 250,000 short ones and then lines of up to 64 KiB,
// each with another centre frequency. Watched are the turns of the event loop, in which nothing else can be
// done, and the time from one painted frame to the next; the order of what is handed out, and that the link's
// end is told after all lines.
//
// A turn's processor time is what the bar itself takes; by the clock it is longer while other programs run.

#include "kit/Clocks.h"
#include "kit/Report.h"
#include "link/client/MinibarClient.h"
#include "minibar/RemoteMiniBarWindow.h"

#include <QApplication>
#include <QEvent>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <optional>

namespace {

constexpr double longestTurn = 16; // ms, one frame of a common screen
constexpr double alarmFrame = 200; // ms by the clock

struct Burst
{
    const char* name;
    int lines;
    int longestLine; // bytes; line n of four has n quarters of it, 0 the shortest possible
};

// A list of numbers that belongs to a modulation item: as dear to read as other content.
QByteArray contentOf(int bytes)
{
    QByteArray numbers;
    while (numbers.size() < bytes)
        numbers += QByteArray::number(numbers.size()) + ',';
    numbers.chop(1);
    return R"("mod":{"businesses":[{"id":"a","text":"A","profile":{"list":[)" + numbers + "]}}]},";
}

QByteArray snapshot(int sequence, const QByteArray& content)
{
    return "EVT {\"event\":\"STAT:SNAP\",\"payload\":{\"seq\":" + QByteArray::number(sequence) + ',' +
           content +
           "\"tx\":{\"isOpen\":true,\"centerHz\":" + QByteArray::number(1e9 + sequence * 1e3, 'f', 0) +
           "}}}\n";
}

// The main process: a thread that accepts one connection, writes all it has and hangs up.
class Sender final : public QThread
{
public:
    explicit Sender(const Burst& burst)
        : m_burst(burst)
    {
        m_server.setSocketOptions(QLocalServer::UserAccessOption);
        m_server.listen(QStringLiteral("tarvinel-bench-%1").arg(QCoreApplication::applicationPid()));
        m_server.moveToThread(this);
    }
    ~Sender() override { wait(); }
    [[nodiscard]] QString serverName() const { return m_server.serverName(); }

protected:
    void run() override
    {
        constexpr int sizes = 4;
        QByteArray contents[sizes];
        for (int i = 0; i < sizes && m_burst.longestLine > 0; ++i)
            contents[i] = contentOf(m_burst.longestLine / sizes * (i + 1) - 200);
        if (!m_server.waitForNewConnection(5000))
            return;
        QLocalSocket* socket = m_server.nextPendingConnection();
        for (int sequence = 1; sequence <= m_burst.lines; ++sequence) {
            socket->write(snapshot(sequence, contents[sequence % sizes]));
            if (socket->bytesToWrite() > 0x40000)
                socket->waitForBytesWritten(-1);
        }
        while (socket->bytesToWrite() > 0 && socket->waitForBytesWritten(-1)) {
        }
        delete socket; // the end of the link is the end of the burst
        m_server.close();
    }

private:
    Burst m_burst;
    QLocalServer m_server;
};

// Times the turns of the event loop: an event that it posts to itself again comes once in each.
class TurnWatch final : public QObject
{
public:
    void next()
    {
        m_turn.emplace();
        m_cpuBefore = threadCpuMs();
        QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::LowEventPriority);
    }
    void end() { m_ended = true; }

    Samples byClock;
    Samples byProcessor;

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        byClock.add(m_turn->ms());
        byProcessor.add(threadCpuMs() - m_cpuBefore);
        if (!m_ended)
            next();
        return true;
    }

private:
    std::optional<Stopwatch> m_turn;
    double m_cpuBefore = 0;
    bool m_ended = false;
};

// Takes the time from each frame of a watched window to the next.
class FrameWatch final : public QObject
{
public:
    Samples gaps; // ms

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::UpdateRequest) {
            if (m_sinceFrame)
                gaps.add(m_sinceFrame->ms());
            m_sinceFrame.emplace();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::optional<Stopwatch> m_sinceFrame;
};

// Every snapshot comes once, in order, and the end of the link after the last.
class OrderWatch final
{
public:
    OrderWatch(MinibarClient& client, int lines)
    {
        QObject::connect(&client, &MinibarClient::snapshotReceived, &client,
                         [this](const QJsonObject& snapshot) {
                             require(snapshot.value(QLatin1String("seq")).toInt() == ++m_last, "order");
                         });
        QObject::connect(&client, &MinibarClient::disconnected, &client,
                         [this, lines] { require(m_last == lines, "the end before the last line"); });
    }

private:
    int m_last = 0;
};

void run(Report& report, const Burst& burst)
{
    Sender sender(burst);
    MinibarClient client;
    RemoteMiniBarWindow window;
    TurnWatch turns;
    FrameWatch frames;
    const OrderWatch order(client, burst.lines);
    QObject::connect(&client, &MinibarClient::snapshotReceived, &window, &RemoteMiniBarWindow::applySnapshot);
    QObject::connect(&client, &MinibarClient::disconnected, qApp, [&turns] {
        turns.end();
        QCoreApplication::quit();
    });
    window.showMiniBar();
    window.installEventFilter(&frames);
    QCoreApplication::processEvents();

    sender.start();
    require(client.connectToHost(sender.serverName(), 5000), "no connection");
    const Stopwatch clock;
    turns.next();
    QApplication::exec();
    const double total = clock.ms();
    require(!frames.gaps.isEmpty(), "nothing was painted");
    const std::string caption = std::to_string(burst.lines) + ' ' + burst.name + " in " + figure(total) +
                                " ms, " + std::to_string(frames.gaps.count()) + " frames painted meanwhile:";
    report.printTimes(caption.c_str(), {{"from frame to frame", {}, {}, frames.gaps},
                                        {"turn, by the clock", {}, {}, turns.byClock},
                                        {"turn, processor time", {}, {}, turns.byProcessor}});
    const std::string name = burst.name;
    report.limit(name + ", longest turn by the clock, ms", turns.byClock.most(), longestTurn);
    report.limit(name + ", longest turn in processor time, ms", turns.byProcessor.most(), longestTurn,
                 2 * longestTurn);
    report.watch(name + ", from frame to frame, median", frames.gaps.median(), alarmFrame);
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    Report report(argc, argv, "Bursts");
    run(report, {"short lines", report.pick(250'000, 50'000), 0});
    run(report, {"lines of up to 64 KiB", report.pick(8000, 1000), 0x10000});
    return report.finish();
}
