// The floor of the benchmarks: the least that a Qt program can do which shows one window of the bar's size,
// speaks over a local socket and answers clicks. It takes the helper's command line and, after "--only", what
// to do:
//
//   core      no window, no socket: it starts and stays
//   window    shows its window at once
//   text      the same, with a word in it: the first text loads the fonts
//   wire      connects, says READY, and obeys lines: SHOW, HIDE, and TURN to another colour; says CLICK for a
//   click
#include <QApplication>
#include <QLocalSocket>
#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

namespace {

constexpr QRect place(767, 100, 134, 228); // as the collapsed bar

class FloorWindow final : public QWidget
{
public:
    explicit FloorWindow(const QString& text)
        : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
        , m_text(text)
    {
        setAttribute(Qt::WA_QuitOnClose, false);
        setFixedSize(place.size());
        move(place.topLeft());
    }

    bool connectTo(const QString& server)
    {
        connect(&m_socket, &QLocalSocket::readyRead, this, &FloorWindow::obey);
        connect(&m_socket, &QLocalSocket::disconnected, qApp, &QCoreApplication::quit);
        m_socket.connectToServer(server);
        return m_socket.waitForConnected() && say("READY\n");
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), m_turned ? Qt::blue : Qt::gray);
        painter.drawText(rect(), Qt::AlignCenter, m_text);
    }
    void mouseReleaseEvent(QMouseEvent*) override { say("CLICK\n"); }

private:
    bool say(const char* line) { return m_socket.write(line) > 0 && m_socket.flush(); }

    void obey()
    {
        while (m_socket.canReadLine()) {
            const QByteArray line = m_socket.readLine();
            m_turned = m_turned != line.startsWith("TURN");
            if (line.startsWith("TURN"))
                update();
            else
                setVisible(line.startsWith("SHOW"));
        }
    }

    QLocalSocket m_socket;
    QString m_text;
    bool m_turned = false;
};

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto after = [&arguments](const QString& name) {
        return arguments.value(arguments.indexOf(name) + 1);
    };
    QApplication::setQuitOnLastWindowClosed(false);
    const QString only = after(QStringLiteral("--only"));
    if (only == QLatin1String("core"))
        return QApplication::exec();
    const bool hasText = only == QLatin1String("text");
    FloorWindow window(hasText ? QStringLiteral("Frequency") : QString());
    if (hasText || only == QLatin1String("window"))
        window.show();
    else if (!window.connectTo(after(QStringLiteral("--server"))))
        return 1;
    return QApplication::exec();
}
