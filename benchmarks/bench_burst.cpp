// How long a burst of lines keeps the bar from painting: the real client and the real window take 250,000
// snapshots from a main process that sends as fast as the socket takes them, each with another centre
// frequency. What counts is the time from one painted frame to the next, and that the last value sent is the
// one shown.
//
// `--check` fails when a frame keeps the user waiting far beyond what noise explains: a client that hands out
// everything it finds before it returns to the event loop paints once, after seconds.

#include "link/client/MinibarClient.h"
#include "minibar/RemoteMiniBarWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

constexpr int snapshots = 250'000;
constexpr double longestMedian = 16; // ms, one frame of a common screen
constexpr double longestFrame = 250; // ms

QByteArray snapshot(int sequence)
{
    return "EVT {\"event\":\"STAT:SNAP\",\"payload\":{\"seq\":" + QByteArray::number(sequence) +
           ",\"tx\":{\"isOpen\":true,\"centerHz\":" + QByteArray::number(1e9 + sequence * 1e3, 'f', 0) +
           "}}}\n";
}

// The main process: a thread that accepts one connection and writes all it has.
class Sender final : public QThread
{
public:
    Sender()
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
        if (!m_server.waitForNewConnection(5000))
            return;
        QLocalSocket* socket = m_server.nextPendingConnection();
        for (int sequence = 1; sequence <= snapshots; ++sequence) {
            socket->write(snapshot(sequence));
            if (socket->bytesToWrite() > 0x10000)
                socket->waitForBytesWritten(-1);
        }
        while (socket->bytesToWrite() > 0 && socket->waitForBytesWritten(-1)) {
        }
        delete socket; // the end of the link is the end of the burst
        m_server.close();
    }

private:
    QLocalServer m_server;
};

// Takes the time from each frame of a watched window to the next.
class FrameWatch final : public QObject
{
public:
    [[nodiscard]] std::vector<double> sorted() const
    {
        std::vector<double> result = m_gaps;
        std::sort(result.begin(), result.end());
        return result;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::UpdateRequest) {
            if (m_sinceFrame.isValid())
                m_gaps.push_back(static_cast<double>(m_sinceFrame.nsecsElapsed()) / 1e6);
            m_sinceFrame.start();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QElapsedTimer m_sinceFrame;
    std::vector<double> m_gaps; // ms
};

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const bool check = argc > 1 && std::strcmp(argv[1], "--check") == 0;

    Sender sender;
    MinibarClient client;
    RemoteMiniBarWindow window;
    QObject::connect(&client, &MinibarClient::snapshotReceived, &window, &RemoteMiniBarWindow::applySnapshot);
    QObject::connect(&client, &MinibarClient::disconnected, &application, &QCoreApplication::quit);
    window.showMiniBar();
    FrameWatch watch;
    window.installEventFilter(&watch);

    sender.start();
    if (!client.connectToHost(sender.serverName(), 5000))
        return 2;
    QElapsedTimer burst;
    burst.start();
    QApplication::exec();
    const qint64 total = burst.elapsed();

    const std::vector<double> gaps = watch.sorted();
    if (gaps.empty()) {
        std::printf("nothing was painted during the burst of %lld ms\n", static_cast<long long>(total));
        return 1;
    }
    const double median = gaps[gaps.size() / 2];
    const double p99 = gaps[gaps.size() * 99 / 100];
    std::printf("%d snapshots in %lld ms, %zu frames painted meanwhile\n", snapshots,
                static_cast<long long>(total), gaps.size());
    std::printf("  from frame to frame   median %.1f ms   p99 %.1f ms   longest %.1f ms\n", median, p99,
                gaps.back());
    return check && (median > longestMedian || gaps.back() > longestFrame) ? 1 : 0;
}
