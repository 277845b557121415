#pragma once

#include <QObject>

namespace Simulator {

// The simulated instrument: what it is set to, and within which limits. It knows neither link nor window.
class SignalGenerator final : public QObject
{
    Q_OBJECT

public:
    static constexpr double minimumHz = 9e3;
    static constexpr double maximumHz = 6e9;
    static constexpr double minimumDbm = -120;
    static constexpr double maximumDbm = 20;

    enum class Outcome { Done, NotOpen, OutOfRange };

    using QObject::QObject;

    [[nodiscard]] bool isOpen() const { return m_open; }
    [[nodiscard]] bool isRfOn() const { return m_rfOn; }
    [[nodiscard]] double centerHz() const { return m_centerHz; } // hertz, within the limits
    [[nodiscard]] double levelDbm() const { return m_levelDbm; } // dBm, within the limits

    // Closing switches RF off. A closed instrument keeps its settings and takes none.
    void setOpen(bool open);
    Outcome setRfOn(bool on);
    Outcome setCenterHz(double hz);
    Outcome setLevelDbm(double dbm);

signals:
    // Once for every change; setting what is set already is none.
    void changed();

private:
    template <typename Value>
    Outcome take(Value& member, Value value);

    bool m_open = true;
    bool m_rfOn = false;
    double m_centerHz = 1e9;
    double m_levelDbm = -20;
};

} // namespace Simulator
