#include "controls/ElidedLabel.h"
#include "controls/LabelButton.h"
#include "controls/TouchNumKeyboard.h"
#include "minibar/RemoteMiniBarWindow.h"

#include <QDialog>
#include <QEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

using Controls::TouchNumKeyboard;

namespace {

const QString sweepPopup = QStringLiteral("miniBarHelperSweepPopup");
constexpr int barRight = 700;

QJsonObject snapshot(const char* sweepAvailable = "true", const char* name = "AM")
{
    const QByteArray json = QByteArray(R"({"sweep":{"available":%1,"revision":3,"enabled":true,
        "selectedPlanId":"fscan","frequencyPlan":{"startHz":1e9,"stopHz":2e9,"stepHz":1e7},
        "levelPlan":{"startDbm":-20,"stopDbm":-10,"stepDb":1},"dwellSeconds":0.0025,
        "supportedPlanIds":["fscan"]},"mod":{"businesses":[{"id":"am","name":"%2","text":"AM"}]}})")
                                .replace("%1", sweepAvailable)
                                .replace("%2", name);
    return QJsonDocument::fromJson(json).object();
}

} // namespace

// What a click must not do besides what it is for, and what a snapshot changes in what a click has opened.
class TestPopupClicks final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_window.reset(); }
    void doubleClickOpens_data();
    void doubleClickOpens();
    void clickAfterOpeningClickIsItsOwn();
    void secondOfTwoPressesClosesToo();
    void pressThatFollowsTheKeyboardDoesNothing();
    void deactivationSparesThePopupOfAKeyboard();
    void keyboardGoesWithTheSweep_data();
    void keyboardGoesWithTheSweep();
    void openMenuKeepsItsEdge();
    void pressOnTheMenuKeepsTheBarExpanded();
    void longTitleAndSentenceHaveRoom();
    void lateDeactivationDoesNotCollapse();

private:
    // A visible button of the bar by its text or its info line.
    [[nodiscard]] LabelButton* button(const char* text) const;
    [[nodiscard]] bool isPopupShown() const
    {
        const auto* popup = m_window->findChild<QDialog*>(sweepPopup);
        return popup && popup->isVisible();
    }
    [[nodiscard]] QMenu* menu() const
    {
        return m_window->findChild<QMenu*>(QStringLiteral("miniBarModMenu"));
    }
    void doubleClick(const QWidget* target) const
    {
        QTest::mouseDClick(m_window->windowHandle(), Qt::LeftButton, {},
                           target->mapTo(m_window.get(), target->rect().center()));
    }

    std::unique_ptr<RemoteMiniBarWindow> m_window;
};

void TestPopupClicks::init()
{
    m_window = std::make_unique<RemoteMiniBarWindow>();
    m_window->applySnapshot(snapshot());
    m_window->setAnchorTopRight(QPoint(barRight, 40));
    m_window->showMiniBar();
    const auto toggles = m_window->findChildren<QPushButton*>(QStringLiteral("miniBarToggleButton"));
    for (QPushButton* toggle : toggles) {
        if (toggle->isVisible())
            toggle->click();
    }
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

LabelButton* TestPopupClicks::button(const char* text) const
{
    const auto buttons = m_window->findChildren<LabelButton*>(QStringLiteral("miniBarInfoButton"));
    for (LabelButton* candidate : buttons) {
        if (candidate->isVisible() &&
            (candidate->text() == QLatin1String(text) || candidate->labelText() == QLatin1String(text)))
            return candidate;
    }
    return nullptr;
}

void TestPopupClicks::doubleClickOpens_data()
{
    QTest::addColumn<bool>("sweep");
    QTest::newRow("Sweep") << true;
    QTest::newRow("MOD") << false;
}

void TestPopupClicks::doubleClickOpens()
{
    QFETCH(bool, sweep);
    doubleClick(sweep ? button("Sweep") : button("MOD"));
    QCOMPARE(isPopupShown(), sweep);
    QCOMPARE(menu()->isVisible(), !sweep);
}

void TestPopupClicks::clickAfterOpeningClickIsItsOwn()
{
    doubleClick(button("Sweep"));
    QVERIFY(isPopupShown());
    QTest::mouseClick(button("Sweep"), Qt::LeftButton);
    QVERIFY(!isPopupShown());
}

// A press that follows another one quickly is a press.
void TestPopupClicks::secondOfTwoPressesClosesToo()
{
    QSignalSpy rf(m_window.get(), &RemoteMiniBarWindow::rfChangeRequested);
    button("Sweep")->click();
    auto* const title =
        m_window->findChild<QDialog*>(sweepPopup)->findChild<QLabel*>(QStringLiteral("titleLabel"));
    QTest::mouseClick(title, Qt::LeftButton);
    QVERIFY(isPopupShown());
    LabelButton* const target = button("RF");
    const QPoint place = target->rect().center();
    QMouseEvent second(QEvent::MouseButtonDblClick, place, target->mapToGlobal(place), Qt::LeftButton,
                       Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &second);
    QVERIFY(!isPopupShown());
    QTest::mouseRelease(target, Qt::LeftButton);
    QCOMPARE(rf.count(), 0);
}

// The press that has closed the keyboard closes neither the popup below it nor the bar.
void TestPopupClicks::pressThatFollowsTheKeyboardDoesNothing()
{
    using Mode = RemoteMiniBarWindow::MiniBarMode;
    QWidget elsewhere;
    elsewhere.setGeometry(10, 500, 50, 50);
    elsewhere.setAttribute(Qt::WA_ShowWithoutActivating);
    elsewhere.show();
    QVERIFY(QTest::qWaitForWindowExposed(&elsewhere));
    button("Sweep")->click();
    m_window->findChild<LabelButton*>(QStringLiteral("btnStopFreq"))->click();
    auto* const keyboard = m_window->findChild<TouchNumKeyboard*>();
    QVERIFY(keyboard && QTest::qWaitForWindowExposed(keyboard));
    keyboard->reject();
    QTest::mouseClick(&elsewhere, Qt::LeftButton);
    QVERIFY(isPopupShown());
    QCOMPARE(m_window->mode(), Mode::Expanded);

    QCoreApplication::processEvents();
    QTest::mouseClick(&elsewhere, Qt::LeftButton);
    QVERIFY(!isPopupShown());
    QCOMPARE(m_window->mode(), Mode::Expanded);
    QTest::mouseClick(&elsewhere, Qt::LeftButton);
    QCOMPARE(m_window->mode(), Mode::Collapsed);
}

void TestPopupClicks::deactivationSparesThePopupOfAKeyboard()
{
    QEvent deactivate(QEvent::ApplicationDeactivate);
    button("Sweep")->click();
    m_window->findChild<LabelButton*>(QStringLiteral("btnStopFreq"))->click();
    auto* const keyboard = m_window->findChild<TouchNumKeyboard*>();
    QVERIFY(keyboard && QTest::qWaitForWindowExposed(keyboard));
    QCoreApplication::sendEvent(qApp, &deactivate);
    QVERIFY(isPopupShown() && keyboard->isVisible());
    keyboard->reject();
    QCoreApplication::sendEvent(qApp, &deactivate); // still within the turn that closed it
    QVERIFY(isPopupShown());
    QCoreApplication::processEvents();
    QCoreApplication::sendEvent(qApp, &deactivate);
    QVERIFY(!isPopupShown());
    QCOMPARE(m_window->mode(), RemoteMiniBarWindow::MiniBarMode::Expanded);
}

void TestPopupClicks::keyboardGoesWithTheSweep_data()
{
    QTest::addColumn<QJsonObject>("next");
    QTest::addColumn<bool>("stays");
    QTest::addColumn<QByteArray>("warning");
    QTest::newRow("the same") << snapshot() << true << QByteArray();
    QTest::newRow("not available") << snapshot("false") << false << QByteArray();
    QTest::newRow("malformed")
        << snapshot("0") << false
        << QByteArray("Ignoring malformed minibar Sweep snapshot: Expected boolean field 'available'.");
    QTest::newRow("none") << QJsonObject() << false << QByteArray();
}

void TestPopupClicks::keyboardGoesWithTheSweep()
{
    QFETCH(QJsonObject, next);
    QFETCH(bool, stays);
    QFETCH(QByteArray, warning);
    button("Sweep")->click();
    auto* field = m_window->findChild<LabelButton*>(QStringLiteral("btnStopFreq"));
    QVERIFY(field);
    QTest::mouseClick(field, Qt::LeftButton);
    const QPointer<TouchNumKeyboard> keyboard = m_window->findChild<TouchNumKeyboard*>();
    QVERIFY(keyboard && keyboard->isVisible());
    if (!warning.isEmpty())
        QTest::ignoreMessage(QtWarningMsg, warning.constData());
    m_window->applySnapshot(next);
    QCOMPARE(keyboard && keyboard->isVisible(), stays);
    QCOMPARE(field->isChecked(), stays);
    QVERIFY(isPopupShown());
}

void TestPopupClicks::openMenuKeepsItsEdge()
{
    button("MOD")->click();
    QVERIFY(menu()->isVisible());
    const QRect before = menu()->geometry();
    QCOMPARE(before.right(), barRight);
    m_window->applySnapshot(snapshot("true", "A modulation with a name that makes the menu wider"));
    QVERIFY(menu()->isVisible());
    QVERIFY(menu()->width() > before.width());
    QCOMPARE(menu()->geometry().right(), barRight);
    QCOMPARE(menu()->y(), before.y());
}

void TestPopupClicks::pressOnTheMenuKeepsTheBarExpanded()
{
    using Mode = RemoteMiniBarWindow::MiniBarMode;
    m_window->applySnapshot(snapshot("true", "A modulation with a name that makes the menu wide"));
    button("MOD")->click();
    QVERIFY(menu()->isVisible());
    const QPoint corner(1, 1); // of the menu's frame, which chooses nothing
    QVERIFY(!m_window->geometry().contains(menu()->mapToGlobal(corner)));
    QTest::mousePress(menu(), Qt::LeftButton, Qt::NoModifier, corner);
    QCOMPARE(m_window->mode(), Mode::Expanded);
    QVERIFY(menu()->isVisible());
    // Another program's turn: the toolkit closes the menu before the bar hears of it.
    QEvent deactivate(QEvent::ApplicationDeactivate);
    QCoreApplication::sendEvent(qApp, &deactivate);
    QVERIFY(!menu()->isVisible());
    QCOMPARE(m_window->mode(), Mode::Collapsed);
}

// The title is cut to its one line, the sentence below it gets all the lines it needs.
void TestPopupClicks::longTitleAndSentenceHaveRoom()
{
    QJsonObject next = snapshot();
    const QString text =
        QStringLiteral("A <b>modulation</b> with a text that is longer than its room").repeated(3);
    next.insert(QStringLiteral("mod"),
                QJsonObject{{QStringLiteral("businesses"),
                             QJsonArray{QJsonObject{{QStringLiteral("id"), QStringLiteral("am")},
                                                    {QStringLiteral("text"), text}}}}});
    m_window->applySnapshot(next);
    menu()->actions().constFirst()->trigger();
    const auto* popup = m_window->findChild<QDialog*>(QStringLiteral("miniBarHelperModPopup"));
    QVERIFY(popup && popup->isVisible());
    const auto* title = popup->findChild<Controls::ElidedLabel*>(QStringLiteral("titleLabel"));
    QVERIFY(title);
    QCOMPARE(title->text(), text);
    QVERIFY(title->isCut());
    QCOMPARE(title->shownLines().size(), 1);
    const auto labels = popup->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (label != title)
            QVERIFY(label->height() >= label->heightForWidth(label->width()));
    }
}

// What the bar's windows lose when it is hidden may be told when it is back.
void TestPopupClicks::lateDeactivationDoesNotCollapse()
{
    const auto send = [](QObject* receiver, QEvent::Type type) {
        QEvent event(type);
        QCoreApplication::sendEvent(receiver, &event);
    };
    m_window->hideMiniBar();
    m_window->showMiniBar();
    send(qApp, QEvent::ApplicationDeactivate);
    QCOMPARE(m_window->mode(), RemoteMiniBarWindow::MiniBarMode::Expanded);
    send(m_window.get(), QEvent::WindowActivate);
    send(qApp, QEvent::ApplicationDeactivate);
    QCOMPARE(m_window->mode(), RemoteMiniBarWindow::MiniBarMode::Collapsed);
}

QTEST_MAIN(TestPopupClicks)
#include "tst_popup_clicks.moc"
