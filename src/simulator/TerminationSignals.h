#pragma once

#include <QObject>

#include <array>

namespace Simulator {

// Turns SIGTERM and SIGINT into a signal of the event loop. One object at a time.
class TerminationSignals final : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

signals:
    void received();

private:
    std::array<int, 2> m_pipe{-1, -1}; // read, write
};

} // namespace Simulator
