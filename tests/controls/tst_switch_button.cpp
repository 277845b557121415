#include "controls/ElidedLabel.h"
#include "controls/SwitchButton.h"

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QGridLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTranslator>

namespace {

// As a popup styles its switches: nothing but the two active halves.
constexpr char popupSheet[] = "SwitchButton > QLabel { background-color: transparent; color: #ff0000; }"
                              "SwitchButton QWidget { background-color: transparent; border: none; }"
                              "SwitchButton QPushButton#btnOn:checked { background-color: #010203; }"
                              "SwitchButton QPushButton#btnOff:checked { background-color: #040506; }";

// Ink on paper, nothing else.
constexpr char plainSheet[] = "SwitchButton QPushButton { background: white; color: black; border: 0px; }";

QString themeSheet()
{
    QFile file(QStringLiteral(CONFIGURATION_DIR "/theme.css"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

struct Panel
{
    explicit Panel(bool compact = true)
    {
        toggle = new SwitchButton(&window);
        toggle->setObjectName(QStringLiteral("enabled"));
        toggle->setText(QStringLiteral("Enabled"));
        toggle->setCompactMode(compact);
        toggle->setGeometry(10, 10, 260, compact ? 60 : toggle->sizeHint().height());
        window.resize(300, 200);
        window.show();
    }
    [[nodiscard]] QPushButton* half(bool on) const
    {
        return toggle->findChild<QPushButton*>(on ? QStringLiteral("btnOn") : QStringLiteral("btnOff"));
    }
    [[nodiscard]] QPoint position(bool on) const
    {
        return half(on)->mapTo(&window, half(on)->rect().center());
    }
    // Through the window, as the window system delivers it.
    void click(bool on) { QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, position(on)); }
    [[nodiscard]] bool halvesShow(bool on) const
    {
        return half(on)->isChecked() && !half(!on)->isChecked() && toggle->status() == on;
    }

    QWidget window;
    SwitchButton* toggle;
};

// Says "<text>!" for every text of the switch.
class Shouting final : public QTranslator
{
public:
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return qstrcmp(context, "SwitchButton") == 0 ? QLatin1String(text) + QLatin1Char('!') : QString();
    }
    [[nodiscard]] bool isEmpty() const override { return false; }
};

// Says the two words of a switch in another language, as long as it lives.
class Wording final : public QTranslator
{
public:
    Wording(QString on, QString off)
        : m_on(std::move(on))
        , m_off(std::move(off))
    {
        QCoreApplication::installTranslator(this);
    }
    ~Wording() override { QCoreApplication::removeTranslator(this); }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        if (qstrcmp(context, "SwitchButton") != 0)
            return QString();
        return qstrcmp(text, "ON") == 0 ? m_on : m_off;
    }
    [[nodiscard]] bool isEmpty() const override { return false; }

private:
    QString m_on;
    QString m_off;
};

// The smallest rectangle with all that is not paper.
QRect inkIn(const QImage& picture)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y).lightness() < 128)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

} // namespace

class SwitchButtonTest final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void startsOff();
    void clicks_data();
    void clicks();
    void keys_data();
    void keys();
    void codeChanges();
    void snapsBackInItsOwnSignal_data();
    void snapsBackInItsOwnSignal();
    void disabledTakesNothing();
    void compactLayout_data();
    void compactLayout();
    void roomyLayout();
    void longCaptionIsElided();
    void longWordsAreElided();
    void styleSheetReachesTheParts();
    void theActiveHalfIsMarkedWithoutColour();
    void contentsAreCentred_data();
    void contentsAreCentred();
    void pressingShowsAtOnce();
    void disabledStillShowsItsStatus();
    void focusMarkIsSeen();
    void wordsAreTranslated();
    void accessibility();
};

void SwitchButtonTest::cleanup()
{
    qApp->setStyleSheet(QString());
}

void SwitchButtonTest::startsOff()
{
    Panel panel;
    QVERIFY(panel.halvesShow(false));
    QCOMPARE(panel.half(true)->text(), QStringLiteral("ON"));
    QCOMPARE(panel.half(false)->text(), QStringLiteral("OFF"));
    QCOMPARE(panel.toggle->findChild<QLabel*>(QStringLiteral("textLabel"))->text(),
             QStringLiteral("Enabled"));
}

void SwitchButtonTest::clicks_data()
{
    QTest::addColumn<bool>("compact");
    QTest::addColumn<bool>("status");
    QTest::addColumn<bool>("clicked");
    for (const bool compact : {true, false}) {
        for (const bool status : {true, false}) {
            for (const bool clicked : {true, false}) {
                QTest::addRow("%s, is %s, %s clicked", compact ? "compact" : "roomy", status ? "on" : "off",
                              clicked ? "ON" : "OFF")
                    << compact << status << clicked;
            }
        }
    }
}

void SwitchButtonTest::clicks()
{
    QFETCH(const bool, compact);
    QFETCH(const bool, status);
    QFETCH(const bool, clicked);
    Panel panel(compact);
    panel.toggle->setStatus(status);
    QSignalSpy changes(panel.toggle, &SwitchButton::statusChanged);
    panel.click(clicked);
    QVERIFY(panel.halvesShow(clicked));
    QCOMPARE(changes.count(), clicked == status ? 0 : 1);
    if (!changes.isEmpty()) {
        QCOMPARE(changes.first().first().toBool(), clicked);
    }
    panel.click(clicked);
    QCOMPARE(changes.count(), clicked == status ? 0 : 1);
}

void SwitchButtonTest::keys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");
    QTest::newRow("space switches on") << int(Qt::Key_Space) << false << true;
    QTest::newRow("space switches off") << int(Qt::Key_Space) << true << false;
    QTest::newRow("left is on") << int(Qt::Key_Left) << false << true;
    QTest::newRow("left when on") << int(Qt::Key_Left) << true << true;
    QTest::newRow("right is off") << int(Qt::Key_Right) << true << false;
    QTest::newRow("right when off") << int(Qt::Key_Right) << false << false;
    QTest::newRow("another key") << int(Qt::Key_A) << false << false;
}

void SwitchButtonTest::keys()
{
    QFETCH(const int, key);
    QFETCH(const bool, before);
    QFETCH(const bool, after);
    Panel panel;
    panel.toggle->setStatus(before);
    panel.toggle->setFocus();
    QSignalSpy changes(panel.toggle, &SwitchButton::statusChanged);
    QTest::keyClick(panel.window.windowHandle(), Qt::Key(key));
    QVERIFY(panel.halvesShow(after));
    QCOMPARE(changes.count(), before == after ? 0 : 1);
}

void SwitchButtonTest::codeChanges()
{
    Panel panel;
    QSignalSpy changes(panel.toggle, &SwitchButton::statusChanged);
    panel.toggle->setStatus(false);
    QCOMPARE(changes.count(), 0);
    panel.toggle->setStatus(true);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().first().toBool(), true);
    QVERIFY(panel.halvesShow(true));
    panel.toggle->setStatus(true);
    QCOMPARE(changes.count(), 1);
    panel.toggle->setProperty("status", false);
    QCOMPARE(changes.count(), 2);
    QVERIFY(panel.halvesShow(false));
}

void SwitchButtonTest::snapsBackInItsOwnSignal_data()
{
    QTest::addColumn<bool>("confirmed");
    QTest::newRow("on") << true;
    QTest::newRow("off") << false;
}

// Edit, then confirm: the editor puts the switch back and asks for the change.
void SwitchButtonTest::snapsBackInItsOwnSignal()
{
    QFETCH(const bool, confirmed);
    Panel panel;
    panel.toggle->setStatus(confirmed);
    QVector<bool> told;
    QVector<bool> requested;
    connect(panel.toggle, &SwitchButton::statusChanged, panel.toggle, [&](bool on) {
        told.append(on);
        panel.toggle->setStatus(confirmed);
        if (on != confirmed) {
            requested.append(on);
        }
    });
    for (int i = 1; i <= 3; ++i) {
        panel.click(!confirmed);
        QVERIFY(panel.halvesShow(confirmed));
        QCOMPARE(requested.size(), i);
        QCOMPARE(told.size(), 2 * i);
    }
    panel.toggle->setFocus();
    QTest::keyClick(panel.window.windowHandle(), Qt::Key_Space);
    QVERIFY(panel.halvesShow(confirmed));
    QCOMPARE(requested, QVector<bool>(4, !confirmed));
    QTest::mouseDClick(panel.window.windowHandle(), Qt::LeftButton, {}, panel.position(!confirmed));
    QCOMPARE(requested, QVector<bool>(5, !confirmed)); // a double click asks once
}

void SwitchButtonTest::disabledTakesNothing()
{
    Panel panel;
    panel.toggle->setEnabled(false);
    QSignalSpy changes(panel.toggle, &SwitchButton::statusChanged);
    panel.click(true);
    QAccessible::queryAccessibleInterface(panel.toggle)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(changes.count(), 0);
    QVERIFY(panel.halvesShow(false));
    panel.toggle->setStatus(true);
    QVERIFY(panel.halvesShow(true));
}

void SwitchButtonTest::compactLayout_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::newRow("no style sheet") << QString();
    QTest::newRow("theme") << themeSheet();
    // Switched on and off again: the widths that the code gives must not fight those of the sheet.
    QTest::newRow("panel") << QString(themeSheet() + QStringLiteral("SwitchButton#enabled QPushButton#btnOn, "
                                                                    "SwitchButton#enabled QPushButton#btnOff "
                                                                    "{ min-width: 72px; max-width: 72px; }"));
}

void SwitchButtonTest::compactLayout()
{
    QFETCH(const QString, sheet);
    qApp->setStyleSheet(sheet);
    Panel panel;
    QVERIFY(panel.toggle->isCompactMode());
    QCOMPARE(panel.toggle->sizeHint().height(), 60);
    QVERIFY(panel.toggle->minimumSizeHint().height() <= 60);
    const QRect caption = panel.toggle->findChild<QLabel*>(QStringLiteral("textLabel"))->geometry();
    QCOMPARE(panel.half(true)->size(), QSize(72, 44));
    QCOMPARE(panel.half(false)->size(), QSize(72, 44));
    QCOMPARE(panel.half(true)->x() + 72, panel.half(false)->x());
    QCOMPARE(panel.half(true)->y(), 8);
    QVERIFY(caption.right() < panel.half(true)->x());
    QVERIFY(qAbs(caption.center().y() - panel.half(true)->geometry().center().y()) <= 1);
    QVERIFY(panel.toggle->rect().contains(panel.half(false)->geometry()));
}

void SwitchButtonTest::roomyLayout()
{
    qApp->setStyleSheet(themeSheet());
    Panel panel(false);
    const QRect caption = panel.toggle->findChild<QLabel*>(QStringLiteral("textLabel"))->geometry();
    const QRect on = panel.half(true)->geometry();
    const QRect off = panel.half(false)->geometry();
    QVERIFY(caption.bottom() < on.top());
    QCOMPARE(on.height(), 44);
    QCOMPARE(on.y(), off.y());
    QCOMPARE(on.width(), off.width());
    QCOMPARE(on.left(), panel.toggle->width() - 1 - off.right());
    QCOMPARE(on.right() + 1, off.left());
    panel.toggle->setCompactMode(true);
    panel.toggle->setCompactMode(false);
    QCOMPARE(panel.half(true)->geometry(), on);
}

void SwitchButtonTest::longCaptionIsElided()
{
    Panel panel;
    QCOMPARE(panel.toggle->toolTip(), QString());
    const QString caption = QStringLiteral("Discrete Tone Mode of the second channel");
    panel.toggle->setText(caption);
    QCOMPARE(panel.toggle->text(), caption);
    QCOMPARE(panel.toggle->toolTip(), caption);
    panel.toggle->resize(700, 60);
    QCOMPARE(panel.toggle->toolTip(), QString());
    panel.toggle->setToolTip(QStringLiteral("Own"));
    panel.toggle->resize(260, 60);
    QCOMPARE(panel.toggle->toolTip(), QStringLiteral("Own"));
}

void SwitchButtonTest::longWordsAreElided()
{
    Panel panel;
    panel.half(true)->setText(QStringLiteral("INGESCHAKELD"));
    panel.toggle->setCompactMode(false);
    QCOMPARE(panel.half(true)->toolTip(), QString());
    panel.toggle->setCompactMode(true);
    QCOMPARE(panel.half(true)->toolTip(), QStringLiteral("INGESCHAKELD"));
}

void SwitchButtonTest::styleSheetReachesTheParts()
{
    qApp->setStyleSheet(themeSheet());
    Panel panel;
    panel.window.setStyleSheet(QLatin1String(popupSheet));
    const auto corner = [&](bool on) { return panel.half(on)->grab().toImage().pixelColor(2, 2); };
    QCOMPARE(corner(false), QColor(4, 5, 6));
    panel.toggle->setStatus(true);
    QCOMPARE(corner(true), QColor(1, 2, 3));
    QVERIFY(corner(false) != QColor(4, 5, 6));
    const auto* const caption = panel.toggle->findChild<QLabel*>(QStringLiteral("textLabel"));
    QCOMPARE(caption->palette().color(QPalette::WindowText), QColor(255, 0, 0));
}

void SwitchButtonTest::theActiveHalfIsMarkedWithoutColour()
{
    qApp->setStyleSheet(QLatin1String(plainSheet));
    Panel panel;
    const QImage off = panel.half(true)->grab().toImage();
    panel.toggle->setStatus(true);
    const QImage on = panel.half(true)->grab().toImage();
    // In front of the word there is a mark now, and nothing else is new.
    const QRect word = inkIn(off);
    const QRect marked = inkIn(on);
    QVERIFY(marked.width() > word.width() + 10);
    QCOMPARE(on.copy(marked.right() + 1 - word.width(), 0, word.width(), on.height()),
             off.copy(word.left(), 0, word.width(), off.height()));
}

void SwitchButtonTest::contentsAreCentred_data()
{
    QTest::addColumn<QString>("on");
    QTest::addColumn<QString>("off");
    QTest::addColumn<int>("width");
    const struct
    {
        const char* on;
        const char* off;
    } languages[] = {
        {"ON", "OFF"}, {"EIN", "AUS"}, {"LIG.", "DESL."}, {"\u0412\u041a\u041b", "\u0412\u042b\u041a\u041b"}};
    for (const auto& words : languages) {
        for (const int width : {64, 65, 72, 120})
            QTest::addRow("%s, %d", words.off, width)
                << QString::fromUtf8(words.on) << QString::fromUtf8(words.off) << width;
    }
}

// The word alone, or the mark and the word together.
void SwitchButtonTest::contentsAreCentred()
{
    QFETCH(const QString, on);
    QFETCH(const QString, off);
    QFETCH(const int, width);
    const Wording translator(on, off);
    qApp->setStyleSheet(QLatin1String(plainSheet));
    const Panel panel(false);
    panel.toggle->resize(2 * width + 20, panel.toggle->height());
    for (const bool status : {true, false}) {
        panel.toggle->setStatus(status);
        for (const bool half : {true, false}) {
            const QImage picture = panel.half(half)->grab().toImage();
            QCOMPARE(picture.width(), width);
            QCOMPARE(panel.half(half)->toolTip(), QString());
            const QRect ink = inkIn(picture);
            const int left = ink.left();
            const int right = picture.width() - 1 - ink.right();
            QVERIFY2(qAbs(left - right) <= 2, qPrintable(QStringLiteral("%1, %2").arg(left).arg(right)));
            QVERIFY2(left >= 4, qPrintable(QString::number(left)));
        }
    }
}

void SwitchButtonTest::pressingShowsAtOnce()
{
    qApp->setStyleSheet(themeSheet());
    Panel panel;
    panel.window.setStyleSheet(QLatin1String(popupSheet));
    const auto picture = [&] { return panel.toggle->grab().toImage(); };
    const QImage before = picture();
    QTest::mousePress(panel.window.windowHandle(), Qt::LeftButton, {},
                      panel.half(true)->mapTo(&panel.window, QPoint(5, 5)));
    QVERIFY(picture() != before);
    QVERIFY(panel.halvesShow(false));
    // Let go elsewhere: nothing has happened.
    QTest::mouseRelease(panel.window.windowHandle(), Qt::LeftButton, {}, QPoint(200, 180));
    QCOMPARE(picture(), before);
}

void SwitchButtonTest::disabledStillShowsItsStatus()
{
    qApp->setStyleSheet(themeSheet());
    Panel panel;
    const auto picture = [&](bool on, bool enabled) {
        panel.toggle->setStatus(on);
        panel.toggle->setEnabled(enabled);
        return panel.half(true)->grab().toImage();
    };
    QVERIFY(picture(true, false) != picture(false, false));
    QVERIFY(picture(true, false) != picture(true, true));
    QVERIFY(picture(false, false) != picture(false, true));
}

void SwitchButtonTest::focusMarkIsSeen()
{
    Panel panel;
    auto* const other = new QPushButton(&panel.window);
    other->show();
    panel.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel.window));
    const QImage without = panel.toggle->grab().toImage();
    panel.toggle->setFocus(Qt::MouseFocusReason);
    QCOMPARE(panel.toggle->grab().toImage(), without);
    other->setFocus();
    panel.toggle->setFocus(Qt::TabFocusReason);
    QVERIFY(panel.toggle->grab().toImage() != without);
    QCOMPARE(panel.half(true)->focusPolicy(), Qt::NoFocus);
}

void SwitchButtonTest::wordsAreTranslated()
{
    Panel panel;
    Shouting translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QTRY_COMPARE(panel.half(true)->text(), QStringLiteral("ON!"));
    QCOMPARE(panel.half(false)->text(), QStringLiteral("OFF!"));
    QVERIFY(QCoreApplication::removeTranslator(&translator));
}

void SwitchButtonTest::accessibility()
{
    Panel panel;
    QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(panel.toggle);
    QVERIFY(seen);
    QCOMPARE(seen->role(), QAccessible::CheckBox);
    QCOMPARE(seen->text(QAccessible::Name), QStringLiteral("Enabled"));
    QCOMPARE(seen->childCount(), 0);
    QVERIFY(seen->state().checkable && !seen->state().checked && seen->state().focusable);
    QSignalSpy changes(panel.toggle, &SwitchButton::statusChanged);
    QVERIFY(seen->actionInterface()->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    seen->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(seen->state().checked);
    QCOMPARE(changes.count(), 1);
    panel.toggle->setEnabled(false);
    QVERIFY(seen->state().disabled);
}

QTEST_MAIN(SwitchButtonTest)

#include "tst_switch_button.moc"
