#include "reliability/Monkey.h"

#include "link/Keys.h"
#include "reliability/SimulatedMain.h"
#include "simulator/InstrumentCommands.h"
#include "simulator/SnapshotWriter.h"
#include "support/HelperProcess.h"

#include <QApplication>
#include <QTest>
#include <QTouchDevice>
#include <QWheelEvent>
#include <QWindow>

namespace Commands = MinibarHelperProtocol::Commands;
namespace Keys = MinibarHelperProtocol::Keys;
using MinibarHelperProtocol::ModChangeRequest;
using MinibarHelperProtocol::SweepChangeRequest;

struct Monkey::Action
{
    const char* name;
    int weight;
    bool mayAsk; // a request may come of it
    void (Monkey::*perform)(const Target&);
};

const Monkey::Action Monkey::s_actions[] = {
    {"click", 40, true, &Monkey::click},
    {"double click", 4, true, &Monkey::doubleClick},
    {"press or release", 4, true, &Monkey::hold},
    {"drag", 4, true, &Monkey::drag},
    {"pointer passes", 8, true, &Monkey::hover}, // counts by itself: what was held is let go before
    {"wheel", 10, false, &Monkey::wheel},
    {"key", 18, true, &Monkey::key},
    {"touch", 5, true, &Monkey::touch},
    {"state", 5, true, &Monkey::moveState},
    {"same state", 1, true, &Monkey::repeatState},
    {"hide or show", 1, true, &Monkey::hideOrShow},
};

namespace {

constexpr int firstTime = 1000;

struct Key
{
    int code;
    const char* text;
};

constexpr Key keys[] = {
    {Qt::Key_0, "0"},          {Qt::Key_1, "1"},         {Qt::Key_5, "5"},     {Qt::Key_9, "9"},
    {Qt::Key_Period, "."},     {Qt::Key_Minus, "-"},     {Qt::Key_E, "e"},     {Qt::Key_G, "g"},
    {Qt::Key_M, "m"},          {Qt::Key_K, "k"},         {Qt::Key_Space, " "}, {Qt::Key_Return, "\r"},
    {Qt::Key_Enter, "\r"},     {Qt::Key_Escape, "\x1b"}, {Qt::Key_Tab, "\t"},  {Qt::Key_Backtab, ""},
    {Qt::Key_Backspace, "\b"}, {Qt::Key_Delete, ""},     {Qt::Key_Up, ""},     {Qt::Key_Down, ""},
    {Qt::Key_Left, ""},        {Qt::Key_Right, ""},      {Qt::Key_Home, ""},   {Qt::Key_End, ""},
    {Qt::Key_PageUp, ""},      {Qt::Key_PageDown, ""},   {Qt::Key_F2, ""},     {Qt::Key_F4, ""},
    {Qt::Key_Menu, ""},        {Qt::Key_A, "a"},         {Qt::Key_V, "v"},     {Qt::Key_C, "c"},
};

constexpr Qt::KeyboardModifier modifiers[] = {Qt::NoModifier,    Qt::NoModifier,  Qt::NoModifier,
                                              Qt::ShiftModifier, Qt::AltModifier, Qt::ControlModifier};

QString describe(const QWidget& widget)
{
    return QLatin1String(widget.metaObject()->className()) + QLatin1Char(' ') + widget.objectName();
}

} // namespace

Monkey::Monkey(qint64 events, quint32 seed)
    : m_instrument(TestSupport::stagePath() + QStringLiteral("/data"))
    , m_touch(QTest::createTouchDevice())
    , m_random(seed)
    , m_left(events)
    , m_time(firstTime)
{
    using Window = RemoteMiniBarWindow;
    connect(&m_window, &Window::rfChangeRequested, this, [this](bool on) {
        ask(Commands::OUTP_STAT, {{Keys::enabled, on}});
    });
    connect(&m_window, &Window::centerChangeRequested, this, [this](double hz) {
        ask(Commands::SOUR_FREQ_CENT, {{Keys::hz, hz}});
    });
    connect(&m_window, &Window::levelChangeRequested, this, [this](double dbm) {
        ask(Commands::SOUR_POW_LEV, {{Keys::dbm, dbm}});
    });
    connect(&m_window, &Window::sweepChangeRequested, this,
            [this](const SweepChangeRequest& request) { ask(Commands::SOUR_SWEEP_CONF, request.toJson()); });
    connect(&m_window, &Window::modChangeRequested, this,
            [this](const ModChangeRequest& request) { ask(Commands::SOUR_MOD_CONF, request.toJson()); });
    connect(&m_window, &Window::restoreRequested, this, [this] { ++m_requests; });
    connect(&m_instrument, &Simulator::SignalGenerator::changed, this, &Monkey::sendState,
            Qt::QueuedConnection);
}

void Monkey::begin()
{
    m_window.setAnchorTopRight(QPoint(500, 60));
    m_window.showMiniBar();
    sendState();
    m_turn.start();
    QMetaObject::invokeMethod(this, &Monkey::tick, Qt::QueuedConnection);
}

// The next turn is asked for before anything happens in this one, which may run an event loop of its own.
void Monkey::tick()
{
    watchTurn();
    if (m_left-- <= 0) {
        if (m_left == -1) {
            releaseHeld();
            m_window.prepareForExit();
            QMetaObject::invokeMethod(this, &Monkey::finished, Qt::QueuedConnection);
        }
        return;
    }
    QMetaObject::invokeMethod(this, &Monkey::tick, Qt::QueuedConnection);
    int total = 0;
    for (const Action& action : s_actions)
        total += action.weight;
    int chosen = below(total);
    for (const Action& action : s_actions) {
        chosen -= action.weight;
        if (chosen < 0) {
            perform(action);
            return;
        }
    }
}

void Monkey::watchTurn()
{
    const double turn = m_turn.milliseconds();
    if (turn > m_longestTurn) {
        m_longestTurn = turn;
        m_longestTurnOf = m_lastAction;
    }
    m_turn.start();
}

void Monkey::perform(const Action& action)
{
    const Target target = findTarget();
    if (!target.window)
        return;
    m_lastAction = QLatin1String(action.name) + QLatin1String(" on ") + target.name;
    const qint64 before = m_requests;
    (this->*action.perform)(target);
    if (!action.mayAsk && m_requests != before)
        m_unasked += m_lastAction;
}

Monkey::Target Monkey::findTarget()
{
    QVector<QWidget*> shown;
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* widget : all) {
        if (widget->isVisible() && widget->windowHandle())
            shown += widget;
    }
    if (shown.isEmpty()) {
        m_window.showMiniBar();
        return {};
    }
    std::sort(shown.begin(), shown.end(), [](const QWidget* left, const QWidget* right) {
        return describe(*left) < describe(*right); // the order must not hang on addresses
    });
    QWidget* top = shown.at(below(shown.size()));
    if (QApplication::activePopupWidget() && below(3) != 0)
        top = QApplication::activePopupWidget();
    else if (QApplication::activeModalWidget() && below(3) != 0)
        top = QApplication::activeModalWidget();
    const QString kind = describe(*top);
    if (!m_windowKinds.contains(kind))
        m_windowKinds += kind;
    QWidget* widget = top;
    while (QWidget* child =
               widget->childAt(QPoint(below(qMax(1, widget->width())), below(qMax(1, widget->height())))))
        widget = child;
    const QPoint inside(below(qMax(1, widget->width())), below(qMax(1, widget->height())));
    return {top->windowHandle(), widget->mapTo(top, inside), describe(*widget)};
}

int Monkey::below(int limit)
{
    return std::uniform_int_distribution<int>(0, limit - 1)(m_random);
}

void Monkey::mouse(const Target& target, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    if (!target.window)
        return; // what it did before has closed it
    m_time += 1 + below(40);
    qt_handleMouseEvent(target.window, target.position, target.window->mapToGlobal(target.position), buttons,
                        button, type, Qt::NoModifier, m_time);
}

void Monkey::releaseHeld()
{
    if (m_held)
        mouse({m_held, QPoint(1, 1), {}}, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    m_held.clear();
}

void Monkey::click(const Target& target)
{
    constexpr Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::LeftButton,  Qt::LeftButton,  Qt::LeftButton,
                                           Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};
    releaseHeld();
    m_time += 1000; // no double click
    const Qt::MouseButton button = buttons[below(int(std::size(buttons)))];
    mouse(target, QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
    mouse(target, QEvent::MouseButtonPress, button, button);
    mouse(target, QEvent::MouseButtonRelease, button, Qt::NoButton);
}

void Monkey::doubleClick(const Target& target)
{
    releaseHeld();
    for (int i = 0; i < 2; ++i) {
        mouse(target, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
        mouse(target, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    }
}

void Monkey::hold(const Target& target)
{
    if (m_held) {
        releaseHeld();
        return;
    }
    m_held = target.window;
    mouse(target, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
}

void Monkey::drag(const Target& target)
{
    constexpr int reach = 120;
    constexpr int steps = 4;
    releaseHeld();
    const QPoint far(below(2 * reach) - reach, below(2 * reach) - reach);
    mouse(target, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    Target there = target;
    for (int step = 1; step <= steps; ++step) {
        there.position = target.position + far * step / steps;
        mouse(there, QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
    }
    mouse(there, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
}

void Monkey::hover(const Target& target)
{
    releaseHeld();
    const qint64 before = m_requests; // what the release asked for
    mouse(target, QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
    if (m_requests != before)
        m_unasked += m_lastAction;
}

void Monkey::wheel(const Target& target)
{
    constexpr int notch = 120;
    const QPoint turns[] = {{0, notch}, {0, -notch}, {notch, 0}, {0, 3}, {0, -10 * notch}};
    const QPoint turn = turns[below(int(std::size(turns)))];
    QWheelEvent event(target.position, target.window->mapToGlobal(target.position), QPoint(), turn,
                      Qt::NoButton, modifiers[below(int(std::size(modifiers)))], Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(target.window, &event);
}

void Monkey::key(const Target& target)
{
    const Key& chosen = keys[below(int(std::size(keys)))];
    const Qt::KeyboardModifiers with = modifiers[below(int(std::size(modifiers)))];
    const QString text =
        with & (Qt::AltModifier | Qt::ControlModifier) ? QString() : QString::fromLatin1(chosen.text);
    QPointer<QWindow> window =
        QGuiApplication::focusWindow() ? QGuiApplication::focusWindow() : target.window.data();
    const bool repeats = below(8) == 0;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (window)
            qt_handleKeyEvent(window, type, chosen.code, with, text, repeats);
    }
}

void Monkey::touch(const Target& target)
{
    releaseHeld();
    QPoint position = target.position;
    if (target.window)
        QTest::touchEvent(target.window, m_touch).press(0, position, target.window).commit(false);
    if (target.window && below(3) == 0) {
        position += QPoint(below(60) - 30, below(60) - 30);
        QTest::touchEvent(target.window, m_touch).move(0, position, target.window).commit(false);
    }
    if (target.window)
        QTest::touchEvent(target.window, m_touch).release(0, position, target.window).commit(false);
}

void Monkey::moveState(const Target&)
{
    turnSomething(m_instrument, m_random);
}

void Monkey::repeatState(const Target&)
{
    sendState();
}

void Monkey::hideOrShow(const Target&)
{
    if (below(2) == 0)
        m_window.hideMiniBar();
    if (below(4) == 0)
        m_window.setAnchorTopRight(QPoint(below(900), below(700)));
    m_window.showMiniBar();
}

void Monkey::ask(const QString& command, const QJsonObject& arguments)
{
    ++m_requests;
    (void)Simulator::execute(m_instrument, command, arguments);
}

void Monkey::sendState()
{
    QJsonObject state = Simulator::snapshotOf(m_instrument);
    state.insert(Keys::seq, ++m_sequence);
    m_window.applySnapshot(state);
}
