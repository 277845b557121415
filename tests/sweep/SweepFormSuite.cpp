#include "support/LanguageTable.h"
#include "support/Translators.h"
#include "sweep/SweepPanelFixture.h"
#include "sweep/SweepSuites.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace {

const Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;

// "row column rowSpan columnSpan" of a widget in the grid it stands in.
QString cellOf(QWidget* widget)
{
    const auto* const grid = qobject_cast<QGridLayout*>(widget->parentWidget()->layout());
    const int index = grid ? grid->indexOf(widget) : -1;
    if (index < 0) {
        return QStringLiteral("none");
    }
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid->getItemPosition(index, &row, &column, &rows, &columns);
    return QStringLiteral("%1 %2 %3 %4").arg(row).arg(column).arg(rows).arg(columns);
}

bool shows(QWidget* widget, const QColor& color)
{
    const QImage image = widget->grab().toImage();
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

// What the panel is made of and how it looks.
class SweepFormSuite final : public QObject
{
    Q_OBJECT

private slots:
    void panel();
    void enabledSwitch();
    void planSelector();
    void valueButton_data();
    void valueButton();
    void pages();
    void unsupportedPage();
    void styleSheet_data();
    void styleSheet();
    void columnsAreEqual_data();
    void columnsAreEqual();
    void everyTextHasTranslations();
};

void SweepFormSuite::panel()
{
    QWidget parent;
    const SweepPanelFixture fixture(&parent);
    QCOMPARE(fixture.panel.parentWidget(), &parent);
    QCOMPARE(fixture.panel.objectName(), QStringLiteral("remoteSweepPanel"));
    QVERIFY(fixture.panel.testAttribute(Qt::WA_StyledBackground));
    const auto* const grid = qobject_cast<QGridLayout*>(fixture.panel.layout());
    QVERIFY(grid);
    QCOMPARE(grid->contentsMargins(), QMargins(10, 0, 6, 0));
    QCOMPARE(grid->horizontalSpacing(), 5);
    QCOMPARE(grid->verticalSpacing(), 5);
    QCOMPARE(grid->columnStretch(0), 1);
    QCOMPARE(grid->columnStretch(1), 1);
    QCOMPARE(grid->count(), 3);
    QCOMPARE(cellOf(fixture.enabledSwitch()), QStringLiteral("0 0 1 1"));
    QCOMPARE(cellOf(fixture.plan()), QStringLiteral("0 1 1 1"));
    QCOMPARE(cellOf(fixture.pages()), QStringLiteral("1 0 1 2"));
}

void SweepFormSuite::enabledSwitch()
{
    const SweepPanelFixture fixture;
    SwitchButton* const button = fixture.enabledSwitch();
    QCOMPARE(button->text(), QStringLiteral("Enabled"));
    QVERIFY(button->isCompactMode());
    QCOMPARE(button->minimumHeight(), 60);
    QCOMPARE(button->maximumHeight(), 60);
}

void SweepFormSuite::planSelector()
{
    const SweepPanelFixture fixture;
    const EnumTextButton* const button = fixture.plan();
    QCOMPARE(button->text(), QStringLiteral("Sweep Type"));
    QCOMPARE(button->titleText(), button->text());
    QCOMPARE(button->labelText(), QStringLiteral("--"));
    QCOMPARE(button->textAlignment(), left);
    QCOMPARE(button->labelAlignment(), right);
    QCOMPARE(button->focusPolicy(), Qt::NoFocus);
    QCOMPARE(button->minimumHeight(), 60);
    QCOMPARE(button->maximumHeight(), 60);
    QCOMPARE(button->enums(), QStringList({QStringLiteral("Freq"), QStringLiteral("Power")}));
}

void SweepFormSuite::valueButton_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("cell");
    const auto row = [](const char* name, const char* title, int page, const char* cell) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(title) << page
                            << QString::fromLatin1(cell);
    };
    row("btnStartFreq", "Start Frequency", 0, "0 0 1 1");
    row("btnStopFreq", "Stop Frequency", 0, "0 1 1 1");
    row("btnStepFreq", "Frequency Step", 0, "1 0 1 1");
    row("btnDwellTime_Analog", "Dwell Time", 0, "1 1 1 1");
    row("btnStartLevel", "Start Level", 1, "0 0 1 1");
    row("btnStopLevel", "Stop Level", 1, "0 1 1 1");
    row("btnStepLevel", "Level Step", 1, "1 0 1 1");
    row("btnDwellTime_Analog_Level", "Dwell Time", 1, "1 1 1 1");
}

void SweepFormSuite::valueButton()
{
    QFETCH(const QString, name);
    QFETCH(const int, page);
    const SweepPanelFixture fixture;
    LabelButton* const button = fixture.button(qPrintable(name));
    QVERIFY(button);
    QCOMPARE(button->parentWidget(), fixture.pages()->widget(page));
    QTEST(cellOf(button), "cell");
    QTEST(button->text(), "title");
    QCOMPARE(button->labelText(), QStringLiteral("--"));
    QCOMPARE(button->textAlignment(), left);
    QCOMPARE(button->labelAlignment(), right);
    QVERIFY(button->isCheckable());
    QVERIFY(!button->isChecked());
    QCOMPARE(button->focusPolicy(), Qt::NoFocus);
    QCOMPARE(button->minimumHeight(), 60);
    QCOMPARE(button->maximumHeight(), 60);
}

void SweepFormSuite::pages()
{
    const SweepPanelFixture fixture;
    QCOMPARE(fixture.pages()->count(), 3);
    for (int page : {0, 1}) {
        const auto* const grid = qobject_cast<QGridLayout*>(fixture.pages()->widget(page)->layout());
        QVERIFY(grid);
        QCOMPARE(grid->contentsMargins(), QMargins());
        QCOMPARE(grid->horizontalSpacing(), 5);
        QCOMPARE(grid->verticalSpacing(), 5);
        QCOMPARE(grid->count(), 4);
    }
}

void SweepFormSuite::unsupportedPage()
{
    const SweepPanelFixture fixture;
    const QWidget* const page = fixture.pages()->widget(2);
    const auto* const layout = qobject_cast<QVBoxLayout*>(page->layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(8, 8, 8, 8));
    const auto* const label = page->findChild<QLabel*>();
    QVERIFY(label);
    QCOMPARE(label->objectName(), QStringLiteral("remoteSweepUnsupportedLabel"));
    QCOMPARE(label->text(), QStringLiteral("The configured Sweep plan is not available in the helper."));
    QCOMPARE(label->alignment(), Qt::Alignment(Qt::AlignCenter));
    QVERIFY(label->wordWrap());
}

void SweepFormSuite::styleSheet_data()
{
    QTest::addColumn<bool>("light");
    QTest::addColumn<QColor>("color");
    QTest::newRow("light") << true << QColor(0x93, 0x8b, 0x84);
    QTest::newRow("dark") << false << QColor(0x69, 0x72, 0x7c);
}

void SweepFormSuite::styleSheet()
{
    QFETCH(const bool, light);
    QFETCH(const QColor, color);
    QWidget window;
    window.setStyleSheet(QStringLiteral("QWidget { background-color: #123456; }"));
    SweepPanelFixture fixture(&window, light);
    fixture.panel.applySweep(editableSweep(SweepPlanId::Unsupported));
    fixture.panel.resize(560, 190);
    window.resize(560, 190);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* const label = fixture.panel.findChild<QLabel*>(QStringLiteral("remoteSweepUnsupportedLabel"));
    QCOMPARE(label->font().pointSize(), 13);
    QCOMPARE(label->palette().color(QPalette::WindowText), color);
    QVERIFY(shows(label, color));
    for (const char* half : {"btnOn", "btnOff"}) {
        const auto* const button = fixture.enabledSwitch()->findChild<QPushButton*>(QLatin1String(half));
        QVERIFY(button);
        QCOMPARE(button->width(), 72);
    }
    QVERIFY(fixture.panel.styleSheet().startsWith(
        QLatin1String("QWidget#remoteSweepPanel { background: transparent; }\n")));
    QVERIFY(!fixture.panel.styleSheet().contains(QLatin1Char('%')));
}

void SweepFormSuite::columnsAreEqual_data()
{
    QTest::addColumn<int>("plan");
    QTest::addColumn<int>("width");
    QTest::newRow("frequency, in the popup") << 1 << 560;
    QTest::newRow("level, in the popup") << 2 << 560;
    QTest::newRow("frequency, on a narrow screen") << 1 << 500;
}

// The columns of the pages stand under those of the first row, and nothing is cut.
void SweepFormSuite::columnsAreEqual()
{
    QFETCH(const int, plan);
    QFETCH(const int, width);
    SweepPanelFixture fixture;
    fixture.panel.applySweep(editableSweep(SweepPlanId(plan)));
    fixture.panel.resize(width, 185);
    fixture.panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.panel));
    const int column = (width - 10 - 6 - 5) / 2;
    const auto spanOf = [&](const QWidget* widget) {
        const QPoint corner = widget->mapTo(&fixture.panel, QPoint(0, 0));
        return QPair<int, int>(corner.x(), corner.x() + widget->width());
    };
    const auto first = spanOf(fixture.enabledSwitch());
    const auto second = spanOf(fixture.plan());
    QVERIFY(qAbs(fixture.enabledSwitch()->width() - column) <= 1);
    QCOMPARE(first.first, 10);
    QCOMPARE(second.first, first.second + 5);
    QCOMPARE(second.second, width - 6);
    for (const ButtonOfField& entry : valueButtons) {
        if (entry.page == fixture.pages()->currentIndex()) {
            const LabelButton* const button = fixture.button(entry.objectName);
            const auto span = spanOf(button);
            QVERIFY2(span == first || span == second, entry.objectName);
            QCOMPARE(button->height(), 60);
            QCOMPARE(button->toolTip(), QString()); // would say what is cut
        }
    }
    QCOMPARE(fixture.enabledSwitch()->toolTip(), QString());
    QCOMPARE(fixture.panel.sizeHint().height(), 3 * 60 + 2 * 5);
}

void SweepFormSuite::everyTextHasTranslations()
{
    TestSupport::RecordingTranslator recorder;
    QVERIFY(QCoreApplication::installTranslator(&recorder));
    recorder.asked.clear(); // what the installation itself has made others ask
    SweepPanelFixture fixture;
    fixture.panel.applySweep(editableSweep(SweepPlanId::Unsupported));
    for (const Field field : allFields)
        QVERIFY(!fixture.panel.fieldTitle(field).isEmpty());
    QCoreApplication::removeTranslator(&recorder);
    QVERIFY(recorder.asked.contains(QStringLiteral("RemoteSweepPanel|Unsupported")));
    QCOMPARE(recorder.asked - TestSupport::translatableTexts(QStringLiteral(CONFIGURATION_DIR)),
             QSet<QString>());
}

std::unique_ptr<QObject> makeSweepFormSuite()
{
    return std::make_unique<SweepFormSuite>();
}

#include "SweepFormSuite.moc"
