#include "controls/EnumTextButton.h"
#include "controls/SwitchButton.h"
#include "controls/TouchNumKeyboard.h"
#include "link/ChangeRequests.h"
#include "minibar/BarParts.h"
#include "minibar/RemoteMiniBarWindow.h"

#include <QDialog>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

using Controls::TouchNumKeyboard;
using MinibarHelperProtocol::ModChangeRequest;

namespace {

enum Item { Am = 0, Pm = 1, Pulse = 2, Ofdm = 3, Unknown = 4 };

QJsonObject snapshot(double rate = 1000)
{
    const QByteArray json = QByteArray(R"({"mod":{"enabled":true,"enabledBusinessId":"b0","businesses":[
        {"id":"b0","text":"AM","editorKind":"am","revision":7,
         "editorState":{"Rate":%1,"Depth":50,"Shape":"Square"}},
        {"id":"b1","text":"PM","editorKind":"simple","name":"PM","revision":3,
         "editorState":{"Rate":1000,"PhaseDeviation":1,"InitPhase":0,"Shape":"Sine"}},
        {"id":"b2","text":"Pulse","editorKind":"pulse","revision":1,"editorState":{"Width":0.00025,"Period":0.001}},
        {"id":"b3","text":"OFDM","editorKind":"OFDM","revision":1,
         "editorState":{"FFTSize":1024,"SampleRate":1e6,"NullDC":false}},
        {"id":"b4","text":"Chirp","editorKind":"chirp"}]}})")
                                .replace("%1", QByteArray::number(rate));
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError)
        qFatal("test data is no JSON");
    return object;
}

} // namespace

// Form editors in the real modulation popup of the real bar.
class TestFormPopup : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void typedValueBecomesOneRequest_data();
    void typedValueBecomesOneRequest();
    void valueIsShownWhenItIsConfirmed();
    void refusedValueSendsNothing();
    void choiceBecomesOneRequest();
    void switchBecomesOneRequest();
    void readOnlyFieldOpensNoKeyboard();
    void popupFitsEachEditor();
    void openPopupFollowsItsEditor();

private:
    QDialog* popup() const { return m_window->findChild<QDialog*>(QStringLiteral("miniBarHelperModPopup")); }
    template <typename Widget>
    Widget* find(const char* name) const
    {
        return popup()->findChild<Widget*>(QLatin1String(name));
    }
    TouchNumKeyboard* keyboard() const { return BarParts::keyboard(*m_window); }
    void openItem(Item item);
    void openField(const char* button);
    void type(const QByteArray& keys) const;
    ModChangeRequest request() const;

    std::unique_ptr<RemoteMiniBarWindow> m_window;
    std::unique_ptr<QSignalSpy> m_requests;
};

void TestFormPopup::init()
{
    m_window = std::make_unique<RemoteMiniBarWindow>();
    m_requests = std::make_unique<QSignalSpy>(m_window.get(), &RemoteMiniBarWindow::modChangeRequested);
    m_window->applySnapshot(snapshot());
    m_window->setAnchorTopRight(QPoint(900, 40));
    m_window->showMiniBar();
    BarParts::click(BarParts::pushButton(BarParts::collapsed(*m_window), "v"));
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestFormPopup::cleanup()
{
    m_requests.reset();
    m_window.reset();
}

void TestFormPopup::openItem(Item item)
{
    const auto menus = m_window->findChildren<QMenu*>(QStringLiteral("miniBarModMenu"));
    QCOMPARE(menus.size(), 1);
    menus.first()->actions().at(item)->trigger();
    QVERIFY(popup() && popup()->isVisible());
}

void TestFormPopup::openField(const char* button)
{
    auto* const field = find<LabelButton>(button);
    QVERIFY(field);
    QTest::mouseClick(field, Qt::LeftButton);
    QVERIFY(keyboard());
    QVERIFY(field->isChecked());
    QVERIFY(QTest::qWaitForWindowActive(keyboard()));
}

// "\r" is the Enter key, "\b" Backspace.
void TestFormPopup::type(const QByteArray& keys) const
{
    for (char key : keys) {
        QVERIFY(keyboard());
        if (key == '\r')
            QTest::keyClick(keyboard(), Qt::Key_Return);
        else if (key == '\b')
            QTest::keyClick(keyboard(), Qt::Key_Backspace);
        else
            QTest::keyClick(keyboard(), key);
    }
}

ModChangeRequest TestFormPopup::request() const
{
    return m_requests->count() == 1 ? m_requests->first().first().value<ModChangeRequest>()
                                    : ModChangeRequest();
}

void TestFormPopup::typedValueBecomesOneRequest_data()
{
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("key");
    QTest::addColumn<double>("value");
    const auto row = [](const char* name, Item item, const char* button, const char* keys, const char* key,
                        double value) {
        QTest::newRow(name) << int(item) << QString::fromLatin1(button) << QByteArray(keys)
                            << QString::fromLatin1(key) << value;
    };
    row("rate with its unit", Am, "btnRate", "2.5k", "Rate", 2500);
    row("rate in the shown unit", Am, "btnRate", "2.5\r", "Rate", 2500);
    row("as it was", Am, "btnRate", "\r", "Rate", 1000);
    row("fifteen digits", Am, "btnRate", "123.456789012345g", "Rate", 123456789012.345);
    row("depth", Am, "btnDepth", "33.25\r", "Depth", 33.25);
    row("degrees", Pm, "btnInitPhase", "90\r", "InitPhase", 90 / 57.29577951308232);
    row("negative degrees", Pm, "btnInitPhase", "-180\r", "InitPhase", -180 / 57.29577951308232);
    row("width", Pulse, "btnWidth", "1.5u", "Width", 1.5e-6);
    row("duty cycle", Pulse, "btnDutyCycle", "50\r", "Width", 0.0005);
    row("sample rate", Ofdm, "btnSampleRate", "30.72m", "SampleRate", 30.72e6);
    row("symbols", Ofdm, "btnSymbolCount", "14\r", "SymbolCount", 14);
}

void TestFormPopup::typedValueBecomesOneRequest()
{
    QFETCH(const int, item);
    QFETCH(const QString, button);
    QFETCH(const QByteArray, keys);
    QFETCH(const QString, key);
    QFETCH(const double, value);
    openItem(Item(item));
    openField(button.toLatin1().constData());
    type(keys);
    QTRY_VERIFY(!keyboard());
    QCOMPARE(m_requests->count(), 1);
    QCOMPARE(request().businessId, QStringLiteral("b%1").arg(item));
    QVERIFY(!request().hasEnabled);
    QCOMPARE(request().action, QStringLiteral("set-field"));
    QCOMPARE(request().arguments.value(QLatin1String("key")).toString(), key);
    QVERIFY(request().arguments.value(QLatin1String("value")).toDouble() == value);
    QVERIFY(popup()->isVisible());
    QVERIFY(!find<LabelButton>(button.toLatin1().constData())->isChecked());
}

void TestFormPopup::valueIsShownWhenItIsConfirmed()
{
    openItem(Am);
    openField("btnRate");
    type("2.5k");
    QTRY_VERIFY(!keyboard());
    QCOMPARE(find<LabelButton>("btnRate")->labelText(), QStringLiteral("1kHz"));
    QCOMPARE(request().expectedRevision, 7);
    m_window->applySnapshot(snapshot(2500));
    QCOMPARE(find<LabelButton>("btnRate")->labelText(), QStringLiteral("2.5kHz"));
    QCOMPARE(m_requests->count(), 1);
}

void TestFormPopup::refusedValueSendsNothing()
{
    openItem(Am);
    openField("btnDepth");
    type("101\r");
    QVERIFY(keyboard()); // it says why and stays
    type("\b\b\b100\r");
    QTRY_VERIFY(!keyboard());
    QCOMPARE(m_requests->count(), 1);
    QVERIFY(request().arguments.value(QLatin1String("value")).toDouble() == 100);
}

void TestFormPopup::choiceBecomesOneRequest()
{
    openItem(Am);
    auto* const shape = find<EnumTextButton>("btnShape");
    QTest::mouseClick(shape, Qt::LeftButton);
    QTRY_VERIFY(shape->isListOpen() && QApplication::activePopupWidget());
    QWidget* const list = QApplication::activePopupWidget();
    QTest::keyClick(list->focusWidget(), Qt::Key_Down);
    QTest::keyClick(list->focusWidget(), Qt::Key_Return);
    QCOMPARE(m_requests->count(), 1);
    QCOMPARE(request().arguments.value(QLatin1String("value")).toString(), QStringLiteral("Triangle"));
    QCOMPARE(shape->labelText(), QStringLiteral("Square"));
}

void TestFormPopup::switchBecomesOneRequest()
{
    openItem(Am);
    auto* const enabled = find<SwitchButton>("enabled");
    QVERIFY(enabled->status());
    QTest::mouseClick(enabled->findChild<QPushButton*>(QStringLiteral("btnOff")), Qt::LeftButton);
    QCOMPARE(m_requests->count(), 1);
    QVERIFY(request().hasEnabled && !request().enabled);
    QVERIFY(enabled->status());
}

void TestFormPopup::readOnlyFieldOpensNoKeyboard()
{
    openItem(Ofdm);
    QTest::mouseClick(find<LabelButton>("btnCarrierSpacing"), Qt::LeftButton);
    QVERIFY(!keyboard());
    QCOMPARE(m_requests->count(), 0);
}

// The popup is as high as the editor that it shows, whichever it showed before.
void TestFormPopup::popupFitsEachEditor()
{
    QHash<int, int> heights;
    for (Item item : {Am, Pm, Am, Ofdm, Pulse, Pm, Ofdm, Am}) {
        openItem(item);
        QCoreApplication::processEvents();
        const int height = heights.value(item, popup()->height());
        QCOMPARE(popup()->height(), height);
        QCOMPARE(popup()->height(), popup()->sizeHint().height());
        QCOMPARE(find<SwitchButton>("enabled")->height(), 60);
        heights.insert(item, height);
    }
    openItem(Unknown); // a sentence takes the editor's place
    QVERIFY(popup()->height() < heights.value(Am));
    QCOMPARE(heights.value(Pm) - heights.value(Am), 65); // one row more
    QCOMPARE(heights.value(Ofdm) - heights.value(Am), 5 * 65);
    QCOMPARE(heights.value(Pulse), heights.value(Am));
}

// The item may become one of another kind, or show a field more, while its popup is open.
void TestFormPopup::openPopupFollowsItsEditor()
{
    const auto becomes = [this](const QByteArray& item) {
        const QByteArray json = R"({"mod":{"businesses":[{"id":"b0","text":"AM",)" + item + "}]}}";
        m_window->applySnapshot(QJsonDocument::fromJson(json).object());
    };
    const auto fits = [this] {
        const QRect rect(popup()->mapToGlobal(QPoint(0, 0)), popup()->size());
        return popup()->height() == popup()->sizeHint().height() &&
               popup()->screen()->availableGeometry().contains(rect);
    };
    openItem(Am);
    QTRY_COMPARE(m_window->height(), m_window->minimumHeight()); // the window manager has let it have it
    const QRect before = popup()->geometry();
    becomes(R"("editorKind":"ofdm")");
    QTRY_VERIFY(popup()->height() > before.height() + 4 * 60);
    QTRY_VERIFY(fits()); // the window manager has its say too
    QTRY_COMPARE(popup()->geometry().right(), before.right());
    becomes(R"("editorKind":"multitone","profile":{"randomMode":false})");
    QTRY_VERIFY(fits());
    const int height = popup()->height();
    becomes(R"("editorKind":"multitone","profile":{"randomMode":true})");
    QTRY_VERIFY(popup()->height() >= height + 60);
    QTRY_VERIFY(fits());
    becomes(R"("editorKind":"am")");
    QTRY_COMPARE(popup()->geometry(), before);
}

QTEST_MAIN(TestFormPopup)
#include "tst_form_popup.moc"
