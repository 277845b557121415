#pragma once

#include "support/Accessibility.h"
#include "support/Desktop.h"
#include "support/PrivateDisplay.h"

// The bar of a real helper on a real display: what the user can point at, and what is seen of it.
class BarView
{
public:
    enum Button { Rf, Frequency, Level, Sweep, Mod };

    static constexpr int width = 134; // of the bar in both modes, pixels

    // Both must have been started and outlive the view.
    BarView(const TestSupport::PrivateDisplay& display, const TestSupport::Accessibility& accessibility);

    // Waits for the one window of the helper, which shows its bar collapsed.
    [[nodiscard]] bool attach(qint64 helperId);

    [[nodiscard]] const TestSupport::Desktop& desktop() const { return m_desktop; }
    [[nodiscard]] qint64 helperId() const { return m_helperId; }
    [[nodiscard]] TestSupport::WindowId barWindow() const { return m_bar; }
    // What the X server says about the bar; an empty record when it is not on the screen.
    [[nodiscard]] TestSupport::WindowFacts bar() const;
    [[nodiscard]] QRect geometry() const { return bar().geometry; }
    [[nodiscard]] bool waitForOpacity(double opacity) const;
    [[nodiscard]] bool isExpanded() const;
    // Clicks the toggle at the foot of the bar and waits until it has the other mode.
    [[nodiscard]] bool expand();
    [[nodiscard]] bool collapse();

    // Where to point, in screen pixels.
    [[nodiscard]] QPoint centre(Button button) const;
    [[nodiscard]] QPoint corner(Button button) const; // inside the button, away from its texts
    [[nodiscard]] QPoint toggle() const;
    [[nodiscard]] QPoint restore() const;
    [[nodiscard]] bool click(const QPoint& position) const { return m_desktop.click(position); }
    // Moves the pointer off the bar.
    [[nodiscard]] bool leave() const;

    // The value that a button shows, through the accessibility bus.
    [[nodiscard]] QString shown(Button button) const;

    // What the helper shows besides the bar, sorted: "drop-down", "menu", or a window's title.
    [[nodiscard]] QStringList shownBeside() const;
    [[nodiscard]] bool waitForBeside(const QStringList& things) const;
    // Where one of them stands on the screen; empty when it is not there.
    [[nodiscard]] QRect placeOf(const QString& thing) const;
    // Chooses a line of the open menu, from 0 on; all are of one height.
    [[nodiscard]] bool chooseInMenu(int line, int lines) const;
    // Where a control of the window with this title stands, by its accessible role and name; empty when there
    // is none.
    [[nodiscard]] QRect control(const QString& title, const QString& role, const QString& name) const;
    // What a button shows besides its caption.
    [[nodiscard]] QString valueOf(const QString& button) const;

    // Clicks a button and waits until its keypad has the keyboard.
    [[nodiscard]] bool openKeypad(Button button);
    // Waits until the keypad with this title, opened by whatever means, has the keyboard.
    [[nodiscard]] bool waitForKeyboard(const QString& title);
    // Whether the helper shows any window besides the bar.
    [[nodiscard]] bool isKeypadOpen() const;
    // Clicks a key of the open keypad, given by its accessible name.
    [[nodiscard]] bool clickKey(const QString& name) const;
    // What the open keypad says under its value: the limits or a refusal.
    [[nodiscard]] QString keypadRemark() const;

private:
    [[nodiscard]] std::optional<TestSupport::WindowFacts> window(const QString& thing) const;

    TestSupport::Desktop m_desktop;
    const TestSupport::Accessibility& m_accessibility;
    qint64 m_helperId = 0;
    TestSupport::WindowId m_bar = 0;
    TestSupport::WindowId m_keypad = 0;
    int m_collapsedHeight = 0;
};
