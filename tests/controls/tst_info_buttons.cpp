#include "controls/ElidedLabel.h"
#include "controls/LabelButton.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

using Controls::ElidedLabel;

namespace {

constexpr char stateSheet[] =
    "LabelButton#probe { background-color: #010101; border: none; }"
    "LabelButton#probe:hover { background-color: #020202; }"
    "LabelButton#probe:pressed { background-color: #030303; }"
    "LabelButton#probe:checked { background-color: #040404; }"
    "LabelButton#probe:disabled { background-color: #050505; }"
    "LabelButton#probe QLabel { color: #00ff00; background: transparent; }"
    "LabelButton#probe QLabel#infoLabel[parentChecked=\"true\"] { color: #ff0000; }";

const QString longCaption = QStringLiteral("Guard Band Carriers on the left side of the channel");
const QString longValue = QStringLiteral("2.412345678901234567890 GHz and then some");

// Counts what a widget is asked to do.
class EventCounter final : public QObject
{
public:
    EventCounter(QObject* watched, std::initializer_list<QEvent::Type> types)
        : m_types(types)
    {
        watched->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        m_count += m_types.contains(event->type()) ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
    [[nodiscard]] int count() const { return m_count; }

private:
    QVector<QEvent::Type> m_types;
    int m_count = 0;
};

struct Panel
{
    Panel()
    {
        button = new LabelButton(&window);
        button->setObjectName(QStringLiteral("probe"));
        button->setText(QStringLiteral("Frequency"));
        button->setLabelText(QStringLiteral("1GHz"));
        button->setGeometry(0, 0, 160, 60);
        window.resize(400, 200);
    }
    void show()
    {
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }
    [[nodiscard]] ElidedLabel* label(const char* name) const
    {
        return button->findChild<ElidedLabel*>(QLatin1String(name));
    }
    [[nodiscard]] QColor background() const { return button->grab().toImage().pixelColor(3, 30); }

    QWidget window;
    LabelButton* button;
};

bool shows(ElidedLabel& label, const QColor& color)
{
    const QImage image = label.grab().toImage();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

class InfoButtonsTest final : public QObject
{
    Q_OBJECT

private slots:
    void styleSheetStates();
    void paletteStatesWithoutStyleSheet();
    void checkedReachesTheLabels();
    void layout_data();
    void layout();
    void longTextsAreElided();
    void aValueShrinksBeforeItIsElided();
    void elisionFollowsSize();
    void elisionFollowsStyleSheetFont();
    void styleSheetReachesNamesGivenLate();
    void ownToolTipStays();
    void unchangedTextIsNoWork();
    void keysPress_data();
    void keysPress();
    void clickOnLabelPresses();
    void focusMarkIsSeen();
    void accessibility();
    void ampersandIsText();
};

void InfoButtonsTest::styleSheetStates()
{
    Panel panel;
    panel.window.setStyleSheet(QLatin1String(stateSheet));
    panel.button->setCheckable(true);
    panel.show();
    QCOMPARE(panel.background(), QColor(1, 1, 1));
    QTest::mouseMove(panel.button, QPoint(80, 30));
    QTRY_COMPARE(panel.background(), QColor(2, 2, 2));
    QTest::mousePress(panel.button, Qt::LeftButton, {}, QPoint(80, 30));
    QCOMPARE(panel.background(), QColor(3, 3, 3));
    QTest::mouseRelease(panel.button, Qt::LeftButton, {}, QPoint(80, 30));
    QVERIFY(panel.button->isChecked());
    QCOMPARE(panel.background(), QColor(4, 4, 4));
    panel.button->setEnabled(false);
    QCOMPARE(panel.background(), QColor(5, 5, 5));
}

void InfoButtonsTest::paletteStatesWithoutStyleSheet()
{
    Panel panel;
    panel.button->setCheckable(true);
    panel.show();
    const QColor normal = panel.background();
    panel.button->setDown(true);
    const QColor pressed = panel.background();
    panel.button->setDown(false);
    panel.button->setChecked(true);
    const QColor checked = panel.background();
    QVERIFY(normal != pressed);
    QVERIFY(normal != checked);
    QVERIFY(pressed != checked);
}

void InfoButtonsTest::checkedReachesTheLabels()
{
    Panel panel;
    panel.window.setStyleSheet(QLatin1String(stateSheet));
    panel.button->setCheckable(true);
    panel.show();
    ElidedLabel& value = *panel.label("infoLabel");
    QVERIFY(shows(value, QColor(0, 255, 0)));
    panel.button->setChecked(true);
    QVERIFY(shows(value, QColor(255, 0, 0)));
    panel.button->setChecked(false);
    QVERIFY(!shows(value, QColor(255, 0, 0)));
}

void InfoButtonsTest::layout_data()
{
    QTest::addColumn<int>("captionAlignment");
    QTest::addColumn<int>("valueAlignment");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("oneLine");
    const int left = Qt::AlignLeft | Qt::AlignVCenter;
    const int right = Qt::AlignRight | Qt::AlignVCenter;
    QTest::newRow("popup") << left << right << QSize(250, 60) << false;
    QTest::newRow("bar") << int(Qt::AlignCenter) << int(Qt::AlignCenter) << QSize(118, 60) << false;
    QTest::newRow("low") << left << right << QSize(250, 30) << true;
}

void InfoButtonsTest::layout()
{
    QFETCH(const int, captionAlignment);
    QFETCH(const int, valueAlignment);
    QFETCH(const QSize, size);
    QFETCH(const bool, oneLine);
    Panel panel;
    panel.button->setTextAlignment(Qt::Alignment(captionAlignment));
    panel.button->setLabelAlignment(Qt::Alignment(valueAlignment));
    panel.button->resize(size);
    panel.show();
    const QRect caption = panel.label("textLabel")->geometry();
    const QRect value = panel.label("infoLabel")->geometry();
    QVERIFY(panel.button->rect().contains(caption));
    QVERIFY(panel.button->rect().contains(value));
    QVERIFY(!caption.intersects(value));
    const int inset = captionAlignment == Qt::AlignCenter ? 3 : 10;
    QCOMPARE(caption.left(), inset);
    QCOMPARE(size.width() - 1 - value.right(), inset);
    if (oneLine) {
        QCOMPARE(caption.center().y(), value.center().y());
        QVERIFY(!panel.label("infoLabel")->isCut());
    } else {
        // As much above as below, and both in full height.
        QVERIFY(qAbs(caption.top() - (size.height() - 1 - value.bottom())) <= 1);
        QVERIFY(caption.bottom() < value.top());
        QCOMPARE(caption.height(), panel.label("textLabel")->sizeHint().height());
        QCOMPARE(value.height(), panel.label("infoLabel")->sizeHint().height());
    }
}

void InfoButtonsTest::longTextsAreElided()
{
    Panel panel;
    panel.show();
    QCOMPARE(panel.button->toolTip(), QString());
    panel.button->setText(longCaption);
    QCOMPARE(panel.button->text(), longCaption);
    QCOMPARE(panel.button->toolTip(), longCaption);
    const QStringList shown = panel.label("textLabel")->shownLines();
    QCOMPARE(shown.size(), 1);
    QVERIFY(shown.first().endsWith(QChar(0x2026)));
    QVERIFY(longCaption.startsWith(shown.first().chopped(1)));
    panel.button->setLabelText(longValue);
    QCOMPARE(panel.button->labelText(), longValue);
    QCOMPARE(panel.button->toolTip(), QString(longCaption + QLatin1Char('\n') + longValue));
    panel.button->setText(QStringLiteral("Short"));
    panel.button->setLabelText(QStringLiteral("1"));
    QCOMPARE(panel.button->toolTip(), QString());
}

void InfoButtonsTest::aValueShrinksBeforeItIsElided()
{
    Panel panel;
    panel.show();
    ElidedLabel* const value = panel.label("infoLabel");
    panel.button->setLabelText(QStringLiteral("12.412345678GHz"));
    QFont font = value->font();
    QVERIFY(QFontMetrics(font).horizontalAdvance(value->text()) > 100);
    panel.button->resize(QFontMetrics(font).horizontalAdvance(value->text()) + 2 * 10 - 10, 60);
    QVERIFY(!value->isCut());
    panel.button->resize(90, 60);
    QVERIFY(value->isCut());
    QCOMPARE(panel.button->toolTip().section(QLatin1Char('\n'), -1), QStringLiteral("12.412345678GHz"));
}

void InfoButtonsTest::elisionFollowsSize()
{
    Panel panel;
    panel.show();
    panel.button->setText(longCaption);
    panel.button->resize(panel.button->sizeHint());
    QVERIFY(!panel.label("textLabel")->isCut());
    QCOMPARE(panel.button->toolTip(), QString());
    panel.button->resize(panel.button->width() - 3, 60);
    QVERIFY(panel.label("textLabel")->isCut());
    QCOMPARE(panel.button->toolTip(), longCaption);
}

void InfoButtonsTest::elisionFollowsStyleSheetFont()
{
    Panel panel;
    panel.button->resize(160, 120);
    panel.show();
    QVERIFY(!panel.label("textLabel")->isCut());
    panel.window.setStyleSheet(QStringLiteral("LabelButton QLabel#textLabel { font-size: 70px; }"));
    QVERIFY(panel.label("textLabel")->isCut());
    QCOMPARE(panel.button->toolTip(), QStringLiteral("Frequency"));
    panel.window.setStyleSheet(QStringLiteral("LabelButton QLabel#textLabel { font-size: 14px; }"));
    QVERIFY(!panel.label("textLabel")->isCut());
    QCOMPARE(panel.button->toolTip(), QString());
}

// As a form builder does it: texts first, names and style sheets whenever.
void InfoButtonsTest::styleSheetReachesNamesGivenLate()
{
    QWidget window;
    window.setStyleSheet(QStringLiteral("LabelButton#late QLabel#infoLabel { font-size: 31px; }"));
    LabelButton button(&window);
    button.setText(QStringLiteral("Frequency"));
    button.setLabelText(QStringLiteral("1GHz"));
    button.setObjectName(QStringLiteral("late"));
    window.show();
    QCOMPARE(button.findChild<ElidedLabel*>(QStringLiteral("infoLabel"))->font().pixelSize(), 31);
}

void InfoButtonsTest::ownToolTipStays()
{
    Panel panel;
    panel.button->setToolTip(QStringLiteral("Start of the sweep"));
    panel.button->setText(longCaption);
    QCOMPARE(panel.button->toolTip(), QStringLiteral("Start of the sweep"));
}

void InfoButtonsTest::unchangedTextIsNoWork()
{
    Panel panel;
    panel.show();
    QCoreApplication::sendPostedEvents();
    QTRY_VERIFY(panel.button->isVisible());
    QCoreApplication::processEvents();
    const auto work = {QEvent::Paint, QEvent::UpdateRequest, QEvent::LayoutRequest, QEvent::UpdateLater};
    const EventCounter onButton(panel.button, work);
    const EventCounter onValue(panel.label("infoLabel"), work);
    const EventCounter onWindow(&panel.window, work);
    panel.button->setText(QStringLiteral("Frequency"));
    panel.button->setLabelText(QStringLiteral("1GHz"));
    panel.button->setTextAlignment(panel.button->textAlignment());
    panel.button->setLabelAlignment(panel.button->labelAlignment());
    QCoreApplication::processEvents();
    QCOMPARE(onButton.count() + onValue.count() + onWindow.count(), 0);
    panel.button->setLabelText(QStringLiteral("2GHz"));
    QCoreApplication::processEvents();
    QVERIFY(onValue.count() > 0); // the counters do count
}

void InfoButtonsTest::keysPress_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("space") << int(Qt::Key_Space);
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter on the number block") << int(Qt::Key_Enter);
}

void InfoButtonsTest::keysPress()
{
    QFETCH(const int, key);
    Panel panel;
    panel.show();
    panel.button->setFocus();
    QSignalSpy clicks(panel.button, &QAbstractButton::clicked);
    QTest::keyClick(panel.button, Qt::Key(key));
    QCOMPARE(clicks.count(), 1);
}

void InfoButtonsTest::clickOnLabelPresses()
{
    Panel panel;
    panel.show();
    QSignalSpy clicks(panel.button, &QAbstractButton::clicked);
    const QPoint onValue = panel.label("infoLabel")->geometry().center();
    QCOMPARE(panel.window.childAt(panel.button->mapToParent(onValue)), panel.button);
    QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {},
                      panel.button->mapTo(&panel.window, onValue));
    QCOMPARE(clicks.count(), 1);
}

void InfoButtonsTest::focusMarkIsSeen()
{
    Panel panel;
    auto* const other = new LabelButton(&panel.window);
    other->setGeometry(0, 80, 160, 60);
    panel.show();
    panel.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel.window));
    const QImage without = panel.button->grab().toImage();
    panel.button->setFocus(Qt::MouseFocusReason);
    QCOMPARE(panel.button->grab().toImage(), without);
    other->setFocus(Qt::OtherFocusReason);
    panel.button->setFocus(Qt::TabFocusReason);
    QVERIFY(panel.button->grab().toImage() != without);
}

void InfoButtonsTest::accessibility()
{
    Panel panel;
    panel.button->setCheckable(true);
    panel.show();
    QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(panel.button);
    QVERIFY(seen);
    QCOMPARE(seen->role(), QAccessible::Button);
    QCOMPARE(seen->text(QAccessible::Name), QStringLiteral("Frequency"));
    QCOMPARE(seen->text(QAccessible::Description), QStringLiteral("1GHz"));
    QCOMPARE(seen->childCount(), 0);
    QVERIFY(seen->state().checkable && !seen->state().checked);
    panel.button->setLabelText(longValue);
    QCOMPARE(seen->text(QAccessible::Description), longValue);
    QVERIFY(seen->actionInterface());
    seen->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(seen->state().checked);
    panel.button->setAccessibleName(QStringLiteral("Start"));
    QCOMPARE(seen->text(QAccessible::Name), QStringLiteral("Start"));
}

void InfoButtonsTest::ampersandIsText()
{
    Panel panel;
    panel.button->setText(QStringLiteral("R&D"));
    QCOMPARE(panel.button->text(), QStringLiteral("R&D"));
    QVERIFY(panel.button->shortcut().isEmpty());
    QCOMPARE(QAccessible::queryAccessibleInterface(panel.button)->text(QAccessible::Name),
             QStringLiteral("R&D"));
}

QTEST_MAIN(InfoButtonsTest)

#include "tst_info_buttons.moc"
