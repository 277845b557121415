#pragma once

#include "minibar/RemoteMiniBarWindow.h"
#include "reliability/TurnClock.h"
#include "simulator/SignalGenerator.h"

#include <QObject>
#include <QPointer>
#include <random>

class QTouchDevice;
class QWindow;

// Throws events at the bar and at everything that opens from it, one in each turn of the event loop, while a
// simulated generator answers and moves. The same seed makes the same choices.
class Monkey final : public QObject
{
    Q_OBJECT

public:
    Monkey(qint64 events, quint32 seed);

    void begin(); // finished() comes from the event loop

    [[nodiscard]] qint64 requests() const { return m_requests; }
    // Requests that came of a mere wheel turn or of the pointer passing by; what happened, for each.
    [[nodiscard]] const QStringList& unasked() const { return m_unasked; }
    [[nodiscard]] double longestTurn() const { return m_longestTurn; } // ms
    [[nodiscard]] QString longestTurnOf() const { return m_longestTurnOf; }
    [[nodiscard]] int kindsOfWindows() const { return m_windowKinds.size(); }

signals:
    void finished();

private:
    // Where an event goes.
    struct Target
    {
        QPointer<QWindow> window;
        QPoint position; // in the window
        QString name;
    };
    struct Action;
    static const Action s_actions[];

    void tick();
    void watchTurn();
    void perform(const Action& action);
    [[nodiscard]] Target findTarget();
    [[nodiscard]] int below(int limit);

    void click(const Target& target);
    void doubleClick(const Target& target);
    void hold(const Target& target);
    void drag(const Target& target);
    void hover(const Target& target);
    void wheel(const Target& target);
    void key(const Target& target);
    void touch(const Target& target);
    void moveState(const Target& target);
    void repeatState(const Target& target);
    void hideOrShow(const Target& target);

    void mouse(const Target& target, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons);
    void releaseHeld();
    void ask(const QString& command, const QJsonObject& arguments);
    void sendState();

    Simulator::SignalGenerator m_instrument;
    RemoteMiniBarWindow m_window;
    QTouchDevice* m_touch;
    std::mt19937 m_random;
    qint64 m_left;
    int m_sequence = 0;
    int m_time = 0; // of the events, ms
    QPointer<QWindow> m_held;
    qint64 m_requests = 0;
    QStringList m_unasked;
    TurnClock m_turn;
    double m_longestTurn = 0;
    QString m_longestTurnOf;
    QString m_lastAction;
    QStringList m_windowKinds;
};
