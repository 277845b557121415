#pragma once

#include "host/HelperKeeper.h"

#include <QObject>
#include <QPoint>
#include <QString>

#include <optional>

class HelperHost;

namespace Simulator {

// Main window and mini bar take turns: hides the one, shows the other, and brings the main window back
// whenever the mini bar asks for it, does not answer or fails. A helper that failed is started again.
class MiniBarSession final : public QObject
{
    Q_OBJECT

public:
    // Uses the host, which must live longer.
    explicit MiniBarSession(HelperHost& host, const RestartSchedule& schedule = {},
                            QObject* parent = nullptr);

    // Starts the helper without showing the bar.
    void start();
    // Hides the main window and shows the bar with its top right corner there; starts the helper if need be.
    void minimise(const std::optional<QPoint>& anchor);
    // Hides the bar and shows the main window.
    void restore();
    // What is known about the mini bar, in a sentence.
    [[nodiscard]] QString status() const { return m_status; }

signals:
    void mainWindowWanted(bool visible);
    void statusChanged(const QString& status);

private:
    void showBar();
    void onOverdue();
    void onEnded(const QString& reason);
    void setStatus(const QString& status);

    HelperHost& m_host;
    HelperKeeper m_keeper;
    std::optional<QPoint> m_anchor;
    bool m_barWanted = false;
    QString m_status;
};

} // namespace Simulator
