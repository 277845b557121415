#include "system/BarView.h"

#include "support/Waiting.h"

#include <algorithm>

using namespace TestSupport;

namespace {

constexpr int margin = 8;
constexpr int buttonWidth = 118;
constexpr int buttonHeight = 60;
constexpr int toggleHeight = 32; // with the borders that the style sheet draws
constexpr int commandHeight = 64;

// As the bar calls its buttons to assistive programs.
constexpr const char* buttonNames[] = {"RF", "Frequency", "Level", "Fre/Pwr", "MOD"};

QString nameOf(const WindowFacts& window)
{
    const auto is = [&window](const char* type) { return window.types.contains(QLatin1String(type)); };
    if (is("_NET_WM_WINDOW_TYPE_COMBO"))
        return QStringLiteral("drop-down");
    if (is("_NET_WM_WINDOW_TYPE_POPUP_MENU") || is("_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"))
        return QStringLiteral("menu");
    return window.title;
}

} // namespace

BarView::BarView(const PrivateDisplay& display, const Accessibility& accessibility)
    : m_desktop(display)
    , m_accessibility(accessibility)
{}

bool BarView::attach(qint64 helperId)
{
    m_helperId = helperId;
    const auto windows = m_desktop.waitForWindows(helperId, 1);
    if (windows.isEmpty())
        return false;
    m_bar = windows.first().id;
    m_collapsedHeight = windows.first().geometry.height();
    return true;
}

bool BarView::waitForOpacity(double opacity) const
{
    constexpr double step = 0.01; // coarser than the rounding of the window's property
    return waitUntil([&] { return qAbs(bar().opacity - opacity) < step; });
}

WindowFacts BarView::bar() const
{
    const auto facts = m_desktop.x().facts(m_bar);
    return facts && facts->mapped ? *facts : WindowFacts();
}

bool BarView::isExpanded() const
{
    return geometry().height() > m_collapsedHeight;
}

bool BarView::expand()
{
    return click(toggle()) && waitUntil([this] { return isExpanded(); });
}

bool BarView::collapse()
{
    return click(toggle()) && waitUntil([this] { return geometry().height() == m_collapsedHeight; });
}

QPoint BarView::centre(Button button) const
{
    return geometry().topLeft() +
           QPoint(margin + buttonWidth / 2, margin + int(button) * buttonHeight + buttonHeight / 2);
}

QPoint BarView::corner(Button button) const
{
    constexpr QPoint inset(3, 6);
    return geometry().topLeft() + QPoint(margin, margin + int(button) * buttonHeight) + inset;
}

QPoint BarView::toggle() const
{
    return QPoint(geometry().center().x(), geometry().bottom() - margin - toggleHeight / 2);
}

QPoint BarView::restore() const
{
    return toggle() - QPoint(0, toggleHeight / 2 + commandHeight / 2);
}

bool BarView::leave() const
{
    return m_desktop.moveTo(QPoint(5, m_desktop.x().screenSize().height() - 5));
}

QString BarView::shown(Button button) const
{
    return valueOf(QString::fromLatin1(buttonNames[button]));
}

QString BarView::valueOf(const QString& button) const
{
    const auto node = m_accessibility.waitForNode(m_helperId, QStringLiteral("push button"), button);
    return node ? node->description : QString();
}

QStringList BarView::shownBeside() const
{
    QStringList names;
    const auto windows = m_desktop.mappedWindows(m_helperId);
    for (const WindowFacts& window : windows) {
        if (window.id != m_bar)
            names.append(nameOf(window));
    }
    names.sort();
    return names;
}

bool BarView::waitForBeside(const QStringList& things) const
{
    return waitUntil([&] { return shownBeside() == things; });
}

std::optional<WindowFacts> BarView::window(const QString& thing) const
{
    const auto windows = m_desktop.mappedWindows(m_helperId);
    for (const WindowFacts& window : windows)
        if (window.id != m_bar && nameOf(window) == thing)
            return window;
    return std::nullopt;
}

QRect BarView::placeOf(const QString& thing) const
{
    const auto found = window(thing);
    return found ? found->geometry : QRect();
}

bool BarView::chooseInMenu(int line, int lines) const
{
    const QRect menu = placeOf(QStringLiteral("menu"));
    return click(QPoint(menu.center().x(), menu.top() + (2 * line + 1) * menu.height() / (2 * lines)));
}

QRect BarView::control(const QString& title, const QString& role, const QString& name) const
{
    const auto node = m_accessibility.waitForNode(m_helperId, role, name);
    const auto owner = window(title);
    return node && owner ? node->extents.translated(owner->geometry.topLeft()) : QRect();
}

bool BarView::openKeypad(Button button)
{
    const QString title = QString::fromLatin1(buttonNames[button]);
    return click(centre(button)) && waitForKeyboard(title);
}

bool BarView::waitForKeyboard(const QString& title)
{
    return waitUntil([&] {
        const auto found = window(title);
        m_keypad = found ? found->id : 0;
        return found && m_desktop.x().activeWindow() == m_keypad;
    });
}

bool BarView::isKeypadOpen() const
{
    const auto windows = m_desktop.mappedWindows(m_helperId);
    return std::any_of(windows.cbegin(), windows.cend(),
                       [this](const WindowFacts& window) { return window.id != m_bar; });
}

bool BarView::clickKey(const QString& name) const
{
    const auto key = m_accessibility.waitForNode(m_helperId, QStringLiteral("push button"), name);
    const auto keypad = m_desktop.x().facts(m_keypad);
    return key && keypad && m_desktop.click(keypad->geometry.topLeft() + key->extents.center());
}

QString BarView::keypadRemark() const
{
    const auto line = m_accessibility.waitForNode(
        m_helperId, [](const AccessibleNode& node) { return node.role == QLatin1String("text"); });
    return line ? line->description : QString();
}
