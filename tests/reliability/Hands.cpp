#include "reliability/Hands.h"

#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

using namespace TestSupport;

namespace {

constexpr const char* keys[] = {
    "0",      "1",         "2",   "5",         "9",     "period", "minus",  "g",        "m",      "k",
    "Return", "BackSpace", "Tab", "shift+Tab", "Up",    "Down",   "Left",   "Right",    "Home",   "End",
    "Delete", "space",     "F2",  "Next",      "Prior", "ctrl+a", "ctrl+v", "alt+Down", "Escape",
};

QString at(const QPoint& position)
{
    return QStringLiteral("mousemove %1 %2 ").arg(position.x()).arg(position.y());
}

} // namespace

Hands::Hands(const PrivateDisplay& display, const Accessibility& accessibility, Mood mood, quint32 seed)
    : m_accessibility(accessibility)
    , m_desktop(display)
    , m_mood(mood)
    , m_random(seed)
{
    m_xdotool.setProcessEnvironment(display.environment());
}

bool Hands::begin()
{
    m_xdotool.start(QStringLiteral("xdotool"), {QStringLiteral("-")});
    return m_xdotool.waitForStarted(defaultDeadline);
}

int Hands::below(int limit)
{
    return std::uniform_int_distribution<int>(0, limit - 1)(m_random);
}

QPoint Hands::somewhere(const QRect& area)
{
    return area.topLeft() + QPoint(below(area.width()), below(area.height()));
}

void Hands::say(const QString& commands)
{
    m_xdotool.write(commands.toLatin1() + '\n');
    ++m_actions;
}

bool Hands::act(qint64 processId)
{
    const QVector<WindowFacts> windows = m_desktop.mappedWindows(processId);
    if (windows.isEmpty())
        return false;
    const QRect window = windows[below(windows.size())].geometry;
    look(processId, windows);
    const QRect area = below(4) == 0 ? window : control(window);
    const QString place = at(somewhere(area));
    const int kind = below(m_mood == Mood::Taps ? 10 : 20);
    if (kind == 0)
        say(QStringLiteral("key Escape"));
    else if (kind < 10)
        say(place + QStringLiteral("click 1"));
    else if (kind < 13)
        say(place + QStringLiteral("click %1").arg(4 + below(4))); // the wheel, in four directions
    else if (kind < 17)
        say(QStringLiteral("key ") + QLatin1String(keys[below(int(std::size(keys)))]));
    else if (kind == 17)
        say(place + QStringLiteral("mousedown 1 ") + at(somewhere(area)) + QStringLiteral("mouseup 1"));
    else if (kind == 18)
        say(place + QStringLiteral("click %1").arg(2 + below(2)));
    else
        say(place + QStringLiteral("click --repeat 2 --delay 5 1"));
    return true;
}

// Reading the tree takes long, so it is kept for the next time that windows of these sizes are shown.
void Hands::look(qint64 processId, const QVector<WindowFacts>& windows)
{
    QString sizes;
    for (const WindowFacts& window : windows)
        sizes += QStringLiteral("%1x%2 ").arg(window.geometry.width()).arg(window.geometry.height());
    m_tree = m_trees.value(sizes);
    if (m_tree && below(50) != 0)
        return;
    m_tree = m_accessibility.application(processId);
    m_trees.insert(sizes, m_tree);
}

QRect Hands::control(const QRect& window)
{
    QVector<const AccessibleNode*> controls;
    const std::function<void(const AccessibleNode&)> collect = [&](const AccessibleNode& node) {
        const bool works = node.has(AccessibleNode::Showing) && node.has(AccessibleNode::Sensitive) &&
                           node.extents.isValid();
        if (works && node.children.isEmpty() && node.role != QLatin1String("label"))
            controls += &node;
        for (const AccessibleNode& child : node.children)
            collect(child);
    };
    if (m_tree) {
        for (const AccessibleNode& top : m_tree->children) {
            if (top.extents.size() == window.size())
                collect(top);
        }
    }
    if (controls.isEmpty())
        return window;
    const AccessibleNode& chosen = *controls[below(controls.size())];
    m_controls += chosen.role + QLatin1Char(' ') + chosen.name;
    const QRect area = chosen.extents.translated(window.topLeft()).intersected(window);
    return area.isEmpty() ? window : area;
}

int Hands::pause()
{
    constexpr int pauses[] = {10, 30, 410};
    return pauses[below(int(std::size(pauses)))];
}

void Hands::letGo()
{
    m_xdotool.end();
    (void)m_desktop.release();
}
