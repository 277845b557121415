#pragma once

#include "kit/QuickHand.h"
#include "support/FakeMain.h"
#include "support/HelperProcess.h"
#include "support/PrivateDisplay.h"

#include <QByteArray>
#include <memory>

// A display without window manager on which programs are timed; starting it may end the program.
class TimedDisplay final
{
public:
    TimedDisplay();

    [[nodiscard]] QuickHand& hand() { return *m_hand; }
    // With Qt's OpenGL integration off, as the helper switches it off for itself, or as Qt has it.
    [[nodiscard]] QProcessEnvironment environment(bool openGl = false) const;

    // No window stands there: the screen's own colour.
    [[nodiscard]] bool waitForScreen(const QPoint& position);
    // Something has been drawn over the screen there.
    [[nodiscard]] bool waitForWindow(const QPoint& position);

private:
    TestSupport::PrivateDisplay m_display;
    std::unique_ptr<QuickHand> m_hand;
};

// A program at the other end of a socket: the helper, or the floor program, which speaks no protocol but
// takes the same command line.
class TimedProgram
{
public:
    TimedProgram(const QProcessEnvironment& environment, const QString& program);

    // Returns when the program runs.
    void start(const QStringList& moreArguments = {});
    void stop() { m_process.killNow(); }

    [[nodiscard]] TestSupport::FakeMain& main() { return m_main; }
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    // Waits until the program has sent a line of this word once more than `before` times.
    void waitForWord(const QByteArray& word, int before);

private:
    TestSupport::FakeMain m_main;
    TestSupport::HelperProcess m_process;
};

// The floor program of these benchmarks (floor_window.cpp).
[[nodiscard]] QString floorPath();

// Where the bar and the floor's window stand, and what can be pressed on the collapsed bar.
namespace BarPlaces {
constexpr QPoint anchor = {900, 100}; // top right corner
constexpr QPoint rfCorner = {780, 114};
constexpr QPoint frequencyCorner = {780, 174};
constexpr QPoint farAway = {5, 795};
} // namespace BarPlaces
