#pragma once

#include "host/RestartSchedule.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class HelperHost;

// Keeps a helper running: starts it again when it has ended unasked, later each time until a run was stable.
class HelperKeeper final : public QObject
{
    Q_OBJECT

public:
    // Uses the host, which must live longer.
    explicit HelperKeeper(HelperHost& host, const RestartSchedule& schedule = {}, QObject* parent = nullptr);

    // Starts the helper now; a pause that is under way ends.
    void start();
    // The helper is to be started again and is not yet.
    [[nodiscard]] bool isWaiting() const { return m_pause.isActive(); }
    // From the end of the helper to its next start.
    [[nodiscard]] std::chrono::milliseconds pause() const { return m_pause.intervalAsDuration(); }

private:
    void onReady();
    void onEnded();
    void plan();

    HelperHost& m_host;
    RestartSchedule m_schedule;
    std::size_t m_next = 0;   // index of the next pause
    QElapsedTimer m_readyFor; // valid while the helper is ready
    QTimer m_pause;
};
