// How long each sort of control takes to ask for what it is pressed for: from the mouse button's press and
// release, handed to the control at once, to the window's request, on the real window in this process. What
// the way from the hand and the way to the main process add is measured by bench_press. Beside a bare push
// button of the toolkit that is painted by the same style.

#include "controls/EnumTextButton.h"
#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"
#include "kit/Clocks.h"
#include "kit/ExpandedBar.h"
#include "kit/Report.h"
#include "kit/TypicalSnapshot.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <algorithm>

namespace {

constexpr double mostMs = 1;
constexpr double alarm = 30;       // times the floor
constexpr double leastFloor = 0.2; // ms: below that, what a busy machine does to both counts for more

void turn()
{
    for (int i = 0; i < 3; ++i) // what the turns before have posted
        QCoreApplication::processEvents();
}

void send(QWidget* widget, QEvent::Type type, const QPoint& place, Qt::MouseButtons held)
{
    QMouseEvent event(type, place, widget->mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

void click(QWidget* widget, const QPoint& place)
{
    send(widget, QEvent::MouseButtonPress, place, Qt::LeftButton);
    send(widget, QEvent::MouseButtonRelease, place, Qt::NoButton);
}

template <typename Widget>
Widget* shownChild(const QWidget* parent, const QString& text)
{
    const auto children = parent->findChildren<Widget*>();
    const auto found = std::find_if(children.cbegin(), children.cend(), [&text](const Widget* child) {
        return child->isVisible() && child->isEnabled() &&
               (child->text() == text || child->objectName() == text);
    });
    require(found != children.cend(), qPrintable(text));
    return *found;
}

// Presses controls of the bar and of what opens from it.
class Session final : public QObject
{
public:
    Session()
    {
        const auto note = [this] { m_asked = m_clock.ms(); };
        using Window = RemoteMiniBarWindow;
        connect(&m_bar.window(), &Window::rfChangeRequested, this, note);
        connect(&m_bar.window(), &Window::centerChangeRequested, this, note);
        connect(&m_bar.window(), &Window::sweepChangeRequested, this, note);
        connect(&m_bar.window(), &Window::modChangeRequested, this, note);
    }

    // The time from the click to the request, in ms. The state stays what it was.
    double timeOf(QWidget* widget, const QPoint& place)
    {
        m_asked = -1;
        m_clock = Stopwatch();
        click(widget, place);
        require(m_asked >= 0, widget->metaObject()->className());
        turn();
        m_bar.window().applySnapshot(m_snapshot);
        turn();
        return m_asked;
    }
    double timeOf(QWidget* widget) { return timeOf(widget, widget->rect().center()); }

    // With nothing open: a press beside a popup only closes it.
    [[nodiscard]] LabelButton* button(QLatin1String name)
    {
        for (QDialog* popup : {m_bar.sweepPopup(), m_bar.modPopup()}) {
            if (popup != nullptr)
                popup->close();
        }
        m_bar.expand();
        turn();
        return m_bar.button(name);
    }
    [[nodiscard]] QDialog* sweepPopup()
    {
        if (m_bar.sweepPopup() == nullptr || !m_bar.sweepPopup()->isVisible())
            button(QLatin1String("Sweep"))->click();
        turn();
        return m_bar.sweepPopup();
    }
    [[nodiscard]] QDialog* modPopup(const QString& item)
    {
        m_bar.expand();
        const auto lines = m_bar.menu()->actions();
        const auto line = std::find_if(lines.cbegin(), lines.cend(),
                                       [&item](const QAction* one) { return one->text() == item; });
        require(line != lines.cend(), qPrintable(item));
        (*line)->trigger();
        turn();
        return m_bar.modPopup();
    }

private:
    QJsonObject m_snapshot = typicalSnapshot();
    ExpandedBar m_bar{m_snapshot};
    Stopwatch m_clock;
    double m_asked = -1;
};

// The half of the popup's first switch that is not active.
QPushButton* idleHalf(const QWidget* popup)
{
    const auto halves = popup->findChildren<QPushButton*>();
    const auto found = std::find_if(halves.cbegin(), halves.cend(), [](const QPushButton* half) {
        return half->isVisible() && qobject_cast<SwitchButton*>(half->parent()) != nullptr &&
               !half->isChecked();
    });
    require(found != halves.cend(), "switch");
    return *found;
}

// The unit key of the numeric keyboard, after a digit has been typed.
double timeOfUnit(Session& session)
{
    session.button(QLatin1String("Frequency"))->click();
    turn();
    QWidget* const keyboard = QApplication::activeModalWidget();
    require(keyboard != nullptr, "keyboard");
    QPushButton* const digit = shownChild<QPushButton>(keyboard, QStringLiteral("1"));
    click(digit, digit->rect().center());
    turn();
    return session.timeOf(shownChild<QPushButton>(keyboard, QStringLiteral("GHz")));
}

// Another row of the sweep plan's list.
double timeOfRow(Session& session)
{
    QWidget* const plan = session.sweepPopup()->findChild<EnumTextButton*>();
    require(plan != nullptr, "plan");
    click(plan, plan->rect().center());
    turn();
    const auto widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets) {
        auto* const list = qobject_cast<QAbstractItemView*>(widget);
        if (list == nullptr || !list->isVisible() || list->objectName() != QLatin1String("enumList"))
            continue;
        const int row = list->currentIndex().row() == 0 ? 1 : 0;
        return session.timeOf(list->viewport(), list->visualRect(list->model()->index(row, 0)).center());
    }
    require(false, "list");
    return 0;
}

struct Control
{
    std::string name;
    std::function<double()> time;
};

void timeInTurns(const std::vector<Control>& controls, int rounds, std::vector<Work>& rows)
{
    const std::size_t first = rows.size();
    for (const Control& control : controls)
        rows.push_back({control.name, {}});
    for (int round = -2; round < rounds; ++round) {
        for (std::size_t i = 0; i < controls.size(); ++i) {
            const double time = controls[i].time();
            if (round >= 0) // the first ones build what is opened
                rows[first + i].times.add(time);
        }
    }
}

// On its own, since a press beside the bar collapses it.
void timeFloor(int rounds, std::vector<Work>& rows)
{
    QWidget window(nullptr, Qt::Tool | Qt::FramelessWindowHint);
    window.resize(134, 60);
    QPushButton button(QStringLiteral("RF"), &window);
    button.resize(window.size());
    Stopwatch clock;
    double time = 0;
    QObject::connect(&button, &QPushButton::clicked, [&] { time = clock.ms(); });
    window.show();
    turn();
    const auto press = [&] {
        clock = Stopwatch();
        click(&button, button.rect().center());
        turn();
        return time;
    };
    timeInTurns({{"push button of the toolkit", press}}, rounds, rows);
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    Report report(argc, argv, "Controls");
    const int rounds = report.pick(300, 20);
    std::vector<Work> rows;
    timeFloor(rounds, rows);
    Session session;
    const auto editor = [&session](const char* item) { return session.modPopup(QString::fromLatin1(item)); };
    timeInTurns(
        {{"RF on the bar", [&] { return session.timeOf(session.button(QLatin1String("RF"))); }},
         {"switch of the sweep popup", [&] { return session.timeOf(idleHalf(session.sweepPopup())); }},
         {"row of a list", [&] { return timeOfRow(session); }},
         {"unit key of the numeric keyboard", [&] { return timeOfUnit(session); }},
         {"switch of an editor", [&] { return session.timeOf(idleHalf(editor("AM"))); }},
         {"check box of an editor",
          [&] { return session.timeOf(editor("Digital")->findChild<QCheckBox*>()); }}},
        rounds, rows);
    report.printTimes("From the click to the request, ms:", rows);
    const double floor = std::max(rows[0].times.median(), leastFloor);
    for (std::size_t i = 1; i < rows.size(); ++i) {
        report.limit(rows[i].name + ", p99, ms", rows[i].times.percentile(99), mostMs);
        report.watch(rows[i].name + " / push button, medians", rows[i].times.median() / floor, alarm);
    }
    return report.finish();
}
