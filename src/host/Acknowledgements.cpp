#include "host/Acknowledgements.h"

Acknowledgements::Acknowledgements(const HelperTimeouts& timeouts, QObject* parent)
    : QObject(parent)
    , m_timeouts(timeouts)
{
    m_overdue.setSingleShot(true);
    m_silence.setSingleShot(true);
    connect(&m_overdue, &QTimer::timeout, this, &Acknowledgements::overdue);
    connect(&m_silence, &QTimer::timeout, this, &Acknowledgements::silent);
}

void Acknowledgements::expect(MinibarMessageType command, bool isQuestion)
{
    if (m_awaited.isEmpty())
        m_silence.start(m_timeouts.silence);
    m_awaited.enqueue({command, isQuestion});
    m_overdue.start(m_timeouts.acknowledge);
}

Acknowledgements::Answer Acknowledgements::take(MinibarMessageType command)
{
    if (m_awaited.isEmpty() || m_awaited.head().command != command)
        return Answer::NotDue;
    const Awaited taken = m_awaited.dequeue();
    if (!m_awaited.isEmpty()) {
        m_silence.start(m_timeouts.silence);
        return Answer::Older;
    }
    m_overdue.stop();
    m_silence.stop();
    return taken.isQuestion ? Answer::Question : Answer::Newest;
}

void Acknowledgements::clear()
{
    m_awaited.clear();
    m_overdue.stop();
    m_silence.stop();
}
