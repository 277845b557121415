#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

// Reads the facts of one WAV file after the other, a file in a turn of the event loop. Nothing ticks while
// the queue is empty or the reading is paused.
class WaveformProbe final : public QObject
{
    Q_OBJECT

public:
    explicit WaveformProbe(QObject* parent = nullptr);
    ~WaveformProbe() override;

    // In place of what is still queued.
    void start(const QStringList& paths);
    void stop();
    void setPaused(bool paused);

signals:
    void probed(const QString& path, const QString& facts);

private:
    void proceed();

    QTimer m_timer;
    QStringList m_queue;
    bool m_paused = false;
};
