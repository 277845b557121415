// How long a click on the bar takes until what it opens is painted: the sweep popup at its first use, when it
// is built, and later, beside an empty dialog of the same size that is made and shown in the same way.
//
// `--check` fails when a popup takes far longer than the empty dialog, whatever the machine.

#include "controls/LabelButton.h"
#include "minibar/RemoteMiniBarWindow.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPushButton>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int firstUses = 10;
constexpr int laterUses = 100;
constexpr double patience = 5000; // ms
// Times what the empty dialog takes; and what no machine takes for nothing, so that noise does not count.
constexpr double mostForFirst = 40;
constexpr double mostForLater = 12;
constexpr double leastToCount = 1.0; // ms

const QString popupName = QStringLiteral("miniBarHelperSweepPopup");

QJsonObject snapshot()
{
    return QJsonDocument::fromJson(R"({"sweep":{"available":true,"revision":3,"enabled":true,
        "selectedPlanId":"fscan","frequencyPlan":{"startHz":1e9,"stopHz":2e9,"stepHz":1e7},
        "levelPlan":{"startDbm":-20,"stopDbm":-10,"stepDb":1},"dwellSeconds":0.0025,
        "supportedPlanIds":["fscan","lscan"]}})")
        .object();
}

// Sees whether a widget has been painted since it was told to look.
class PaintWatch final : public QObject
{
public:
    // The time from the action until the widget that `find` names has been painted; ms, negative for never.
    [[nodiscard]] double timeOf(const std::function<void()>& action, const std::function<QWidget*()>& find)
    {
        m_painted = false;
        QElapsedTimer clock;
        clock.start();
        action();
        m_target = find();
        while (!m_painted && static_cast<double>(clock.elapsed()) < patience)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        return m_painted ? static_cast<double>(clock.nsecsElapsed()) / 1e6 : -1;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        m_painted = m_painted || (event->type() == QEvent::Paint && m_target && watched == m_target);
        return false;
    }

private:
    const QWidget* m_target = nullptr;
    bool m_painted = false;
};

LabelButton* sweepButton(const RemoteMiniBarWindow& window)
{
    const auto buttons = window.findChildren<LabelButton*>(QStringLiteral("miniBarInfoButton"));
    const auto found = std::find_if(buttons.cbegin(), buttons.cend(), [](const LabelButton* button) {
        return button->labelText() == QLatin1String("Sweep");
    });
    return found == buttons.cend() ? nullptr : *found;
}

// An expanded bar with a sweep to show.
std::unique_ptr<RemoteMiniBarWindow> makeBar()
{
    auto window = std::make_unique<RemoteMiniBarWindow>();
    window->applySnapshot(snapshot());
    window->showMiniBar();
    const auto toggles = window->findChildren<QPushButton*>(QStringLiteral("miniBarToggleButton"));
    for (QPushButton* toggle : toggles) {
        if (toggle->isVisible())
            toggle->click();
    }
    QCoreApplication::processEvents();
    return window;
}

std::unique_ptr<QDialog> makeEmptyDialog(const QSize& size)
{
    auto dialog = std::make_unique<QDialog>(nullptr, Qt::Tool | Qt::FramelessWindowHint);
    dialog->resize(size);
    return dialog;
}

struct Times
{
    std::vector<double> popupFirst, popupLater, emptyFirst, emptyLater;
};

double percentile(std::vector<double> times, int percent)
{
    std::sort(times.begin(), times.end());
    return times[(times.size() - 1) * static_cast<size_t>(percent) / 100];
}

void measure(PaintWatch& watch, Times& times, int later)
{
    const auto bar = makeBar();
    LabelButton* const button = sweepButton(*bar);
    const auto click = [button] { button->click(); };
    const auto popup = [&bar] { return bar->findChild<QDialog*>(popupName); };
    times.popupFirst.push_back(watch.timeOf(click, popup));

    std::unique_ptr<QDialog> empty;
    const QSize size = popup()->size();
    const auto theEmptyOne = [&empty] { return empty.get(); };
    times.emptyFirst.push_back(watch.timeOf(
        [&] {
            empty = makeEmptyDialog(size);
            empty->show();
        },
        theEmptyOne));

    for (int use = 0; use < later; ++use) {
        click();
        empty->hide();
        QCoreApplication::processEvents();
        times.popupLater.push_back(watch.timeOf(click, popup));
        times.emptyLater.push_back(watch.timeOf([&empty] { empty->show(); }, theEmptyOne));
    }
}

// Prints one row; whether the popup keeps to `most` times the empty dialog.
bool report(const char* use, const std::vector<double>& popup, const std::vector<double>& empty, double most)
{
    const double popupTime = percentile(popup, 95);
    const double emptyTime = percentile(empty, 95);
    std::printf(
        "  %-6s popup  median %6.2f ms   p95 %6.2f ms     empty dialog  median %6.2f ms   p95 %6.2f ms\n",
        use, percentile(popup, 50), popupTime, percentile(empty, 50), emptyTime);
    const bool allPainted = percentile(popup, 0) >= 0 && percentile(empty, 0) >= 0;
    return allPainted && popupTime <= most * std::max(emptyTime, leastToCount);
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const bool check = argc > 1 && std::strcmp(argv[1], "--check") == 0;

    PaintWatch watch;
    QCoreApplication::instance()->installEventFilter(&watch);
    Times times;
    for (int i = 0; i < firstUses; ++i)
        measure(watch, times, laterUses / firstUses);

    std::printf("from the click to the painted popup (%d first uses, %d later ones)\n", firstUses, laterUses);
    const bool firstIsFast = report("first", times.popupFirst, times.emptyFirst, mostForFirst);
    const bool laterIsFast = report("later", times.popupLater, times.emptyLater, mostForLater);
    return check && !(firstIsFast && laterIsFast) ? 1 : 0;
}
