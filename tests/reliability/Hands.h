#pragma once

#include "support/Accessibility.h"
#include "support/ChildProcess.h"
#include "support/Desktop.h"

#include <QHash>
#include <QSet>
#include <random>

// Hands that work a helper's windows at random through the X server, mostly on what can be worked there,
// which they know from the accessibility bus; the same seed makes the same choices.
class Hands final
{
public:
    enum class Mood {
        Taps,  // presses, and Esc now and then
        Monkey // everything that a mouse and a keyboard can do
    };

    // Display and bus must have been started and outlive the hands.
    Hands(const TestSupport::PrivateDisplay& display, const TestSupport::Accessibility& accessibility,
          Mood mood, quint32 seed);

    [[nodiscard]] bool begin();
    // Does one thing to what the process shows now; false while it shows nothing.
    bool act(qint64 processId);
    // Until the next action, ms: flurries, and gaps in which a click is no longer half of a double click.
    [[nodiscard]] int pause();
    // Takes the fingers off everything.
    void letGo();
    [[nodiscard]] qint64 actions() const { return m_actions; }
    // What has been pointed at, by role and name.
    [[nodiscard]] const QSet<QString>& controls() const { return m_controls; }

private:
    [[nodiscard]] int below(int limit);
    [[nodiscard]] QPoint somewhere(const QRect& area);
    void look(qint64 processId, const QVector<TestSupport::WindowFacts>& windows);
    // A control of the window, in screen pixels; the window itself when it has none.
    [[nodiscard]] QRect control(const QRect& window);
    void say(const QString& commands);

    const TestSupport::Accessibility& m_accessibility;
    TestSupport::Desktop m_desktop;
    TestSupport::ChildProcess m_xdotool; // takes commands from its standard input
    Mood m_mood;
    std::mt19937 m_random;
    qint64 m_actions = 0;
    QSet<QString> m_controls;
    using Tree = std::optional<TestSupport::AccessibleNode>;
    Tree m_tree;                  // the program's widgets
    QHash<QString, Tree> m_trees; // by the sizes of the windows that were shown
};
