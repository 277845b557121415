#include "controls/LabelButton.h"
#include "controls/ThemeManager.h"
#include "minibar/BarParts.h"
#include "minibar/RemoteMiniBarWindow.h"
#include "minibar/StyleSheets.h"
#include "support/LanguageTable.h"
#include "support/Translators.h"

#include <QMetaMethod>
#include <QMetaObject>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedLayout>
#include <QTest>
#include <QVector>

using BarParts::click;
using BarParts::collapsed;
using BarParts::expanded;
using BarParts::infoButtons;
using BarParts::json;
using BarParts::pushButton;

namespace {

QSize pageSize(const QWidget* page)
{
    return page->sizeHint().expandedTo(page->minimumSizeHint()) + QSize(16, 16);
}

} // namespace

class TestBarWindow : public QObject
{
    Q_OBJECT

private slots:
    void signalsStandInOrder();
    void windowItself();
    void buttonsOfBothPages_data();
    void buttonsOfBothPages();
    void pageLayouts();
    void sizesHoldTheStyledButtons();
    void everyTextHasTranslations();
    void closeAsksForTheMainWindow();
    void closeAfterPrepareForExit();
    void restoreButton();
};

void TestBarWindow::signalsStandInOrder()
{
    QList<QByteArray> found;
    const QMetaObject& meta = RemoteMiniBarWindow::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            found.append(meta.method(i).methodSignature());
    }
    QCOMPARE(found, (QList<QByteArray>{"restoreRequested()", "rfChangeRequested(bool)",
                                       "centerChangeRequested(double)", "levelChangeRequested(double)",
                                       "sweepChangeRequested(MinibarHelperProtocol::SweepChangeRequest)",
                                       "modChangeRequested(MinibarHelperProtocol::ModChangeRequest)"}));
}

void TestBarWindow::windowItself()
{
    RemoteMiniBarWindow window;
    QCOMPARE(window.objectName(), QStringLiteral("miniBarWindow"));
    QCOMPARE(window.windowFlags(), Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    QCOMPARE(window.focusPolicy(), Qt::StrongFocus);
    QVERIFY(window.testAttribute(Qt::WA_StyledBackground));
    QVERIFY(!window.testAttribute(Qt::WA_DeleteOnClose));
    QVERIFY(!window.testAttribute(Qt::WA_QuitOnClose));
    QVERIFY(window.testAttribute(Qt::WA_MouseTracking));
    QVERIFY(window.testAttribute(Qt::WA_ShowWithoutActivating));
    QCOMPARE(window.layout()->contentsMargins(), QMargins(8, 8, 8, 8));
    QCOMPARE(window.layout()->spacing(), 0);
    QCOMPARE(window.layout()->count(), 1);
    QVERIFY(qobject_cast<QStackedLayout*>(window.layout()->itemAt(0)->layout()));
    // No settings file lies beside the test: Light.
    QCOMPARE(window.styleSheet(), miniBarStyleSheet(true));
    QCOMPARE(Controls::ThemeManager::instance().theme(), Controls::ThemeManager::Light);
}

void TestBarWindow::buttonsOfBothPages_data()
{
    QTest::addColumn<bool>("onExpanded");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("info");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("enabled");

    for (bool onExpanded : {false, true}) {
        const char* where = onExpanded ? "expanded" : "collapsed";
        QTest::addRow("%s RF", where) << onExpanded << 0 << "RF"
                                      << "OFF" << true << true;
        QTest::addRow("%s frequency", where) << onExpanded << 1 << "Frequency"
                                             << "--" << false << true;
        QTest::addRow("%s level", where) << onExpanded << 2 << "Level"
                                         << "--" << false << true;
    }
    QTest::newRow("sweep") << true << 3 << "Fre/Pwr"
                           << "Sweep" << true << false;
    QTest::newRow("mod") << true << 4 << "MOD"
                         << "OFF" << true << false;
}

void TestBarWindow::buttonsOfBothPages()
{
    QFETCH(bool, onExpanded);
    QFETCH(int, index);
    RemoteMiniBarWindow window;
    const QVector<LabelButton*> buttons = infoButtons(onExpanded ? expanded(window) : collapsed(window));
    QCOMPARE(buttons.size(), onExpanded ? 5 : 3);
    const LabelButton* button = buttons.at(index);
    QTEST(button->text(), "text");
    QTEST(button->labelText(), "info");
    QTEST(button->isCheckable(), "checkable");
    QTEST(button->isEnabled(), "enabled");
    QCOMPARE(button->isChecked(), false);
    QCOMPARE(button->objectName(), QStringLiteral("miniBarInfoButton"));
    QCOMPARE(button->minimumSize(), QSize(118, 60));
    QCOMPARE(button->maximumSize(), QSize(118, 60));
    QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(button->textAlignment(), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(button->labelAlignment(), Qt::Alignment(Qt::AlignCenter));
}

void TestBarWindow::pageLayouts()
{
    RemoteMiniBarWindow window;
    for (QWidget* onePage : {collapsed(window), expanded(window)}) {
        QVERIFY(onePage);
        QCOMPARE(onePage->layout()->contentsMargins(), QMargins(0, 0, 0, 0));
        QCOMPARE(onePage->layout()->spacing(), 0);
        const bool isExpanded = onePage == expanded(window);
        QCOMPARE(onePage->layout()->count(), isExpanded ? 7 : 4);
        auto* toggle = qobject_cast<QPushButton*>(onePage->layout()->itemAt(isExpanded ? 6 : 3)->widget());
        QVERIFY(toggle);
        QCOMPARE(toggle->text(), isExpanded ? QStringLiteral("^") : QStringLiteral("v"));
        QCOMPARE(toggle->objectName(), QStringLiteral("miniBarToggleButton"));
        QCOMPARE(toggle->focusPolicy(), Qt::NoFocus);
        QVERIFY(toggle->isFlat());
        QCOMPARE(toggle->cursor().shape(), Qt::PointingHandCursor);
    }
    auto* restore = qobject_cast<QPushButton*>(expanded(window)->layout()->itemAt(5)->widget());
    QVERIFY(restore);
    QCOMPARE(restore->text(), QStringLiteral("Restore"));
    QCOMPARE(restore->objectName(), QStringLiteral("miniBarCommandButton"));
    QCOMPARE(restore->focusPolicy(), Qt::NoFocus);
    QVERIFY(restore->isFlat());
}

void TestBarWindow::sizesHoldTheStyledButtons()
{
    RemoteMiniBarWindow window;
    for (bool isExpanded : {false, true}) {
        window.showMiniBar();
        if (isExpanded)
            click(pushButton(collapsed(window), "v"));
        const QWidget* onePage = isExpanded ? expanded(window) : collapsed(window);
        QCOMPARE(window.size(), pageSize(onePage));
        int bottom = 0;
        for (int i = 0; i < onePage->layout()->count(); ++i) {
            const QWidget* button = onePage->layout()->itemAt(i)->widget();
            QCOMPARE(button->y(), bottom); // nothing overlaps, nothing gapes
            QCOMPARE(button->width(), 118);
            QVERIFY(button->height() >= button->minimumHeight());
            bottom += button->height();
        }
        QCOMPARE(onePage->height(), bottom);
        QCOMPARE(onePage->geometry().topLeft(), QPoint(8, 8));
    }
}

void TestBarWindow::everyTextHasTranslations()
{
    TestSupport::RecordingTranslator recorder;
    QVERIFY(QCoreApplication::installTranslator(&recorder));
    recorder.asked.clear(); // what the installation itself has made others ask
    RemoteMiniBarWindow window;
    window.applySnapshot(json(R"({"mod":{"businesses":[
        {"id":"1","name":"AM","text":"-"}, {"id":"2","name":"FM","text":"-"}, {"id":"3","name":"PM","text":"-"},
        {"id":"4","name":"Pulse","text":"-"}, {"id":"5","name":"Digital Ramp","text":"-"},
        {"id":"6","name":"Digital","text":"-"}, {"id":"7","name":"Multitone","text":"-"},
        {"id":"8","name":"AWGN","text":"-"}, {"id":"9","name":"DSSS","text":"-"}, {"id":"10","name":"OFDM","text":"-"},
        {"id":"11","name":"Quick Waveform","text":"-"}, {"id":"12","name":"Playback","text":"-"},
        {"id":"13","name":"Streaming","text":"-"}]}})"));
    QCoreApplication::removeTranslator(&recorder);
    QVERIFY(recorder.asked.contains(QStringLiteral("RemoteMiniBarWindow|Streaming")));
    QCOMPARE(recorder.asked - TestSupport::translatableTexts(QStringLiteral(CONFIGURATION_DIR)),
             QSet<QString>());
}

void TestBarWindow::closeAsksForTheMainWindow()
{
    RemoteMiniBarWindow window;
    QSignalSpy restore(&window, &RemoteMiniBarWindow::restoreRequested);
    window.showMiniBar();
    QVERIFY(!window.close());
    QVERIFY(window.isVisible());
    QCOMPARE(restore.count(), 1);
}

void TestBarWindow::closeAfterPrepareForExit()
{
    RemoteMiniBarWindow window;
    QSignalSpy restore(&window, &RemoteMiniBarWindow::restoreRequested);
    window.showMiniBar();
    window.prepareForExit();
    QVERIFY(window.close());
    QVERIFY(!window.isVisible());
    QCOMPARE(restore.count(), 0);
}

void TestBarWindow::restoreButton()
{
    RemoteMiniBarWindow window;
    QSignalSpy restore(&window, &RemoteMiniBarWindow::restoreRequested);
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    click(pushButton(expanded(window), "Restore"));
    QCOMPARE(restore.count(), 1);
    QVERIFY(window.isVisible()); // the main process hides it
}

QTEST_MAIN(TestBarWindow)
#include "tst_bar_window.moc"
