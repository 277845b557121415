#pragma once

#include <QObject>
#include <functional>

class QWidget;

// Sees when a widget of this process has been painted.
class PaintWatch final : public QObject
{
public:
    // Watches the whole application, which must exist.
    PaintWatch();

    // The time from the action until the widget that `find` names then has been painted, in ms. Ends the
    // program when that never happens.
    [[nodiscard]] double timeOf(const std::function<void()>& action, const std::function<QWidget*()>& find);
    // The processor time of the last one, in ms.
    [[nodiscard]] double lastCpu() const { return m_lastCpu; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const QWidget* m_target = nullptr;
    bool m_painted = false;
    double m_lastCpu = 0;
};
