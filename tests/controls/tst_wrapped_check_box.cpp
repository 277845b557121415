#include "controls/ElidedText.h"
#include "controls/ThemeManager.h"
#include "controls/WrappedCheckBox.h"

#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

using Controls::ThemeManager;
using Controls::WrappedCheckBox;

namespace {

const QString caption = QStringLiteral("Keep the recorded samples after the download");

struct Panel
{
    explicit Panel(int width, int height = 60)
    {
        box = new WrappedCheckBox(&window);
        box->setText(caption);
        box->setGeometry(10, 10, width, height);
        window.resize(800, 100);
        window.show();
    }
    // Asks for the tool tip as a resting pointer does.
    [[nodiscard]] QString tip() const
    {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), box->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(box, &help);
        return QToolTip::text();
    }

    QWidget window;
    WrappedCheckBox* box;
};

} // namespace

class WrappedCheckBoxTest final : public QObject
{
    Q_OBJECT

private slots:
    void aWideBoxHasOneLine();
    void aNarrowBoxHasSeveral();
    void whatDoesNotFitIsElidedAndTold();
    void anOwnToolTipGoesFirst();
    void mayBecomeNarrow();
    void aTapAnywhereToggles_data();
    void aTapAnywhereToggles();
    void keyboardFocusIsMarked();
    void images_data();
    void images();
};

void WrappedCheckBoxTest::aWideBoxHasOneLine()
{
    const Panel panel(700);
    QCOMPARE(panel.box->shownLines(), QStringList(caption));
    QCOMPARE(panel.tip(), QString());
}

void WrappedCheckBoxTest::aNarrowBoxHasSeveral()
{
    const Panel panel(240);
    const QStringList lines = panel.box->shownLines();
    QVERIFY(lines.size() >= 2);
    QCOMPARE(lines.join(QLatin1Char(' ')), caption);
    QCOMPARE(panel.tip(), QString());
}

void WrappedCheckBoxTest::whatDoesNotFitIsElidedAndTold()
{
    const Panel panel(120, 20);
    QCOMPARE(panel.box->shownLines().size(), 1);
    QVERIFY(Controls::isCut(panel.box->shownLines(), caption));
    QCOMPARE(panel.tip(), caption);
    QCOMPARE(panel.box->toolTip(), QString());
    QCOMPARE(panel.box->text(), caption);
}

void WrappedCheckBoxTest::anOwnToolTipGoesFirst()
{
    const Panel panel(120, 20);
    panel.box->setToolTip(QStringLiteral("Own"));
    QCOMPARE(panel.tip(), QStringLiteral("Own"));
    panel.box->setToolTip(QString());
    QCOMPARE(panel.tip(), caption);
}

void WrappedCheckBoxTest::mayBecomeNarrow()
{
    const Panel panel(240);
    QVERIFY(panel.box->minimumSizeHint().width() < 60);
    QVERIFY(panel.box->sizeHint().width() > 240);
    QVERIFY(!(panel.box->sizePolicy().horizontalPolicy() & QSizePolicy::ExpandFlag));
    QVERIFY(panel.box->sizePolicy().horizontalPolicy() & QSizePolicy::ShrinkFlag);
}

void WrappedCheckBoxTest::aTapAnywhereToggles_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::newRow("indicator") << QPoint(8, 30);
    QTest::newRow("beside the caption") << QPoint(690, 30);
    QTest::newRow("corner") << QPoint(699, 59);
}

void WrappedCheckBoxTest::aTapAnywhereToggles()
{
    QFETCH(const QPoint, position);
    const Panel panel(700);
    QSignalSpy toggles(panel.box, &QCheckBox::toggled);
    QTest::mouseClick(panel.box, Qt::LeftButton, {}, position);
    QCOMPARE(toggles.count(), 1);
    QVERIFY(panel.box->isChecked());
}

void WrappedCheckBoxTest::keyboardFocusIsMarked()
{
    const Panel panel(240);
    panel.box->window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(panel.box->window()));
    const QColor ring = ThemeManager::instance().color(ThemeManager::FocusRing);
    panel.box->setFocus(Qt::MouseFocusReason);
    QVERIFY(panel.box->grab().toImage().pixelColor(100, 0) != ring);
    panel.box->clearFocus();
    panel.box->setFocus(Qt::TabFocusReason);
    QCOMPARE(panel.box->grab().toImage().pixelColor(100, 0), ring);
    QTest::keyClick(panel.box, Qt::Key_Space);
    QVERIFY(panel.box->isChecked());
}

void WrappedCheckBoxTest::images_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name :
         {"checkbox_checked", "checkbox_unchecked", "checkbox_checked_light", "checkbox_unchecked_light"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

// Both sizes are there, and neither is empty.
void WrappedCheckBoxTest::images()
{
    QFETCH(const QString, name);
    (void)ThemeManager::instance();
    const QString path = QLatin1String(":/Controls/Image/") + name;
    const QImage plain(path);
    const QImage twice(path + QLatin1String("@2x"));
    QCOMPARE(plain.size(), QSize(24, 24));
    QCOMPARE(twice.size(), QSize(48, 48));
    QCOMPARE(plain.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(plain.pixelColor(5, 5).alpha(), 255);
    QCOMPARE(twice.pixelColor(10, 10), plain.pixelColor(5, 5));
}

QTEST_MAIN(WrappedCheckBoxTest)

#include "tst_wrapped_check_box.moc"
