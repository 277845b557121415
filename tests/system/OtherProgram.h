#pragma once

#include "support/ChildProcess.h"
#include "support/Desktop.h"

// The program that the user is typing into while the bar comes and goes.
class OtherProgram final
{
public:
    explicit OtherProgram(const TestSupport::PrivateDisplay& display);

    // It is on the screen and has the keyboard.
    [[nodiscard]] bool begin();
    [[nodiscard]] TestSupport::WindowId window() const { return m_window; }
    [[nodiscard]] QRect geometry() const;
    // Waits until its text field holds this.
    [[nodiscard]] bool waitForText(const QByteArray& text);
    // Its window has been deactivated at least once.
    [[nodiscard]] bool hasLostKeyboard() const { return m_said.contains("inactive\n"); }

private:
    TestSupport::ChildProcess m_process;
    TestSupport::Desktop m_desktop;
    TestSupport::WindowId m_window = 0;
    QByteArray m_said;
};
