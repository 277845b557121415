#pragma once

#include "host/HelperTimeouts.h"
#include "link/MessageType.h"

#include <QObject>
#include <QQueue>
#include <QTimer>

// What the helper has been told and has not acknowledged yet, in order, and for how long. A question is a
// command that changes nothing: its acknowledgement only tells that the helper is still there.
class Acknowledgements final : public QObject
{
    Q_OBJECT

public:
    enum class Answer {
        NotDue,   // nothing of the kind is awaited next
        Older,    // a newer command decides where the bar ends up
        Question, // nothing more is awaited, and nothing has changed
        Newest    // the last command has been obeyed
    };

    explicit Acknowledgements(const HelperTimeouts& timeouts, QObject* parent = nullptr);

    void expect(MinibarMessageType command, bool isQuestion = false);
    [[nodiscard]] Answer take(MinibarMessageType command);
    void clear();

signals:
    // The newest is not there after HelperTimeouts::acknowledge. It may still come.
    void overdue();
    // None has come for HelperTimeouts::silence although one is due.
    void silent();

private:
    struct Awaited
    {
        MinibarMessageType command;
        bool isQuestion;
    };

    HelperTimeouts m_timeouts;
    QQueue<Awaited> m_awaited;
    QTimer m_overdue;
    QTimer m_silence;
};
