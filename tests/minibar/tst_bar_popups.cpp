#include "controls/LabelButton.h"
#include "minibar/BarPopupsTest.h"
#include "minibar/StyleSheets.h"

#include <QLabel>
#include <QTest>

using Mode = RemoteMiniBarWindow::MiniBarMode;

// The modulation menu and popup, and one popup at a time.
class TestBarPopups : public BarPopupsTest
{
    Q_OBJECT

private slots:
    void menuActions();
    void menuMarksFollowTheSnapshot();
    void menuIsRebuiltOnlyWhenTheListDiffers();
    void menuOpensBelowTheButton();
    void menuChoiceOpensThePopup();
    void unknownMenuChoiceOpensNothing();
    void emptyListClosesMenuAndDisablesButton();
    void onePopupAtATime();
    void droppedBusinessClosesThePopup();
    void keptBusinessReloadsThePopup();
};

void TestBarPopups::menuActions()
{
    QVERIFY(menu());
    QStringList texts;
    QStringList ids;
    const auto actions = menu()->actions();
    for (const QAction* action : actions) {
        texts.append(action->text());
        ids.append(action->data().toString());
        QVERIFY(action->isCheckable());
        QCOMPARE(action->isChecked(), action->data().toString() == QLatin1String("am"));
    }
    // On one line; a nameless one by its text; no letter is taken for a mnemonic.
    QCOMPARE(texts, (QStringList{QStringLiteral("Amplitude Modulation"), QStringLiteral("FM && more")}));
    QCOMPARE(ids, (QStringList{QStringLiteral("am"), QStringLiteral("fm")}));
}

void TestBarPopups::menuMarksFollowTheSnapshot()
{
    const char* const mod = R"({"enabled":false,"enabledBusinessId":"%1","businesses":[
                        {"id":"am","name":"Amplitude\nModulation","text":"AM","revision":2},
                        {"id":"fm","name":"","text":"FM & more","revision":1}]})";
    for (const char* enabled : {"fm", "", "gone", "am"}) {
        window().applySnapshot(snapshot(QByteArray(mod).replace("%1", enabled).constData()));
        const auto actions = menu()->actions();
        for (const QAction* action : actions)
            QCOMPARE(action->isChecked(), action->data().toString() == QLatin1String(enabled));
    }
}

void TestBarPopups::menuIsRebuiltOnlyWhenTheListDiffers()
{
    const QAction* first = menu()->actions().constFirst();
    window().applySnapshot(snapshot());
    QCOMPARE(menu()->actions().constFirst(), first);
    window().applySnapshot(
        snapshot(R"({"businesses":[{"id":"am","text":"AM","revision":9},{"id":"x","text":"X"}]})"));
    QCOMPARE(menu()->actions().size(), 2);
    QCOMPARE(menu()->actions().constLast()->text(), QStringLiteral("X"));
}

void TestBarPopups::menuOpensBelowTheButton()
{
    const LabelButton* mod = button("MOD");
    QTest::mouseClick(button("MOD"), Qt::LeftButton);
    QVERIFY(menu()->isVisible());
    QVERIFY(mod->isChecked()); // modulation is on
    QCOMPARE(menu()->geometry().right(), 900);
    QCOMPARE(menu()->y(), 40 + mod->mapTo(&window(), QPoint(0, 0)).y() + mod->height() + 6);
    button("MOD")->click();
    QVERIFY(!menu()->isVisible());
}

void TestBarPopups::menuChoiceOpensThePopup()
{
    QSignalSpy requests(&window(), &RemoteMiniBarWindow::modChangeRequested);
    openMod(1);
    QDialog* dialog = popup(modName);
    QCOMPARE(dialog->findChild<QLabel*>(QStringLiteral("titleLabel"))->text(), QStringLiteral("FM & more"));
    QVERIFY(dialog->findChild<QWidget*>(QStringLiteral("remoteModEditorHost")));
    QCOMPARE(dialog->styleSheet(), modPopupStyleSheet(true));
    QVERIFY(!menu()->isVisible());
    for (int i : {0, 1}) // the choice marks nothing: AM is still the one that is on
        QCOMPARE(menu()->actions().at(i)->isChecked(), i == 0);
    QCOMPARE(requests.count(), 0); // the menu itself asks for nothing
    const QRect rect(dialog->mapToGlobal(QPoint(0, 0)), dialog->size());
    QCOMPARE(rect.width(), 560);
    QCOMPARE(rect.right(), 900);
}

void TestBarPopups::unknownMenuChoiceOpensNothing()
{
    QAction* action = menu()->actions().constFirst();
    for (const char* id : {"gone", ""}) {
        action->setData(QString::fromLatin1(id));
        action->trigger();
        QVERIFY(!isShown(modName));
    }
}

void TestBarPopups::emptyListClosesMenuAndDisablesButton()
{
    QTest::mouseClick(button("MOD"), Qt::LeftButton);
    window().applySnapshot(snapshot("{}"));
    QVERIFY(!menu()->isVisible());
    QVERIFY(!button("MOD")->isEnabled());
}

void TestBarPopups::onePopupAtATime()
{
    openSweep();
    menu()->actions().constFirst()->trigger();
    QVERIFY(isShown(modName) && !isShown(sweepName));
    button("Sweep")->click();
    QVERIFY(isShown(sweepName) && !isShown(modName));
    button("MOD")->click();
    QVERIFY(!isShown(sweepName) && menu()->isVisible());
}

void TestBarPopups::droppedBusinessClosesThePopup()
{
    openMod(0);
    window().applySnapshot(snapshot(R"({"businesses":[{"id":"fm","text":"FM"}]})"));
    QVERIFY(!isShown(modName));
    QCOMPARE(window().mode(), Mode::Expanded);
}

void TestBarPopups::keptBusinessReloadsThePopup()
{
    openMod(0);
    window().applySnapshot(snapshot(R"({"businesses":[{"id":"am","text":"AM, newly named"}]})"));
    QVERIFY(isShown(modName));
    QCOMPARE(popup(modName)->findChild<QLabel*>(QStringLiteral("titleLabel"))->text(),
             QStringLiteral("AM, newly named"));
}

QTEST_MAIN(TestBarPopups)
#include "tst_bar_popups.moc"
