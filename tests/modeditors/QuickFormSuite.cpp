#include "controls/ElidedLabel.h"
#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"
#include "controls/ThemeManager.h"
#include "modeditors/QuickFixture.h"
#include "modeditors/QuickSuites.h"
#include "modeditors/RemoteModEditorHost.h"
#include "modeditors/WaveformTable.h"
#include "support/Rendered.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QHelpEvent>
#include <QImage>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>

using Controls::ThemeManager;

namespace {

struct ExpectedItem
{
    const char* name;
    const char* inherits;
    const char* text;
};

// By row; all in column 0.
constexpr ExpectedItem expectedItems[] = {
    {"enabled", "SwitchButton", "Enabled"},
    {"btnLoad", "QPushButton", "Load"},
    {"btnAutoScale", "SwitchButton", "Auto Scale"},
    {"btnIQScale", "LabelButton", "I/Q Scale(%)"},
    {"btnSampleRate", "LabelButton", "Sample Rate"},
    {"btnPeriodLen", "LabelButton", "Period Length / Duration"},
    {"btnPeriod", "LabelButton", "Period_Arb"},
    {"btnSamplesToUse", "LabelButton", "Samples To Use"},
    {"btnSampleOffset", "LabelButton", "Sample Offset"},
};
constexpr int spacerRow = 9;

// What an icon draws in a colour, thin lines' soft edges included.
int drawnPixels(const QImage& image, const QColor& color)
{
    constexpr int visible = 100; // alpha
    constexpr int rounding = 3;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            const bool isColor = qAbs(pixel.red() - color.red()) <= rounding &&
                                 qAbs(pixel.green() - color.green()) <= rounding &&
                                 qAbs(pixel.blue() - color.blue()) <= rounding;
            count += pixel.alpha() >= visible && isColor ? 1 : 0;
        }
    }
    return count;
}

// The smallest rectangle with all that is rather of this colour than of the lighter background.
QRect inkIn(const QPixmap& grabbed, const QColor& color)
{
    const QImage picture = grabbed.toImage();
    const int dark = (color.lightness() + picture.pixelColor(0, 0).lightness()) / 2;
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y).lightness() < dark)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

} // namespace

// What the form is made of and how it looks.
class QuickFormSuite final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { ThemeManager::instance().setTheme(ThemeManager::Light); }
    void form();
    void items();
    void table();
    void header();
    void headerTipIsShown();
    void styleSheets_data();
    void styleSheets();
    void iconsFollowTheTheme_data();
    void iconsFollowTheTheme();
    void rowsAreInTheSheetsSize();
    void selectedRowHasAMark();
    void rowsStandBelowTheirCaptions();
    void frameIsWhole();
    void columnKeepsItsWidth_data();
    void columnKeepsItsWidth();
    void derivedValuesAreReadOnly();
    void rowLinesAreUnbroken();
    void popupHasRoomForTheTable();
    void switchesKeepTheirSizeInTheHost();
};

void QuickFormSuite::form()
{
    const QuickFixture fixture;
    const RemoteModEditor& editor = fixture.editor.editor();
    QVERIFY(editor.inherits("RemoteQuickWaveformPanel"));
    QCOMPARE(editor.objectName(), QStringLiteral("QuickWaveformPanel"));
    QCOMPARE(editor.windowTitle(), QStringLiteral("Quick Waveform"));
    auto* const rows = qobject_cast<QHBoxLayout*>(editor.layout());
    QVERIFY(rows);
    QCOMPARE(rows->objectName(), QStringLiteral("horizontalLayout"));
    QCOMPARE(rows->spacing(), 6);
    QCOMPARE(rows->contentsMargins(), QMargins(10, 0, 6, 0));
    QCOMPARE(rows->count(), 2);
    const auto* const grid = qobject_cast<QGridLayout*>(rows->itemAt(0)->layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QStringLiteral("gridLayout"));
    QCOMPARE(grid->spacing(), 5);
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->columnStretch(0), 1);
    QCOMPARE(rows->itemAt(1)->widget(), &fixture.table());
}

void QuickFormSuite::items()
{
    const QuickFixture fixture;
    const auto* const grid = fixture.editor.editor().findChild<QGridLayout*>(QStringLiteral("gridLayout"));
    int row = 0;
    for (const ExpectedItem& expected : expectedItems) {
        const QWidget* const widget = grid->itemAtPosition(row++, 0)->widget();
        QVERIFY(widget);
        QCOMPARE(widget->objectName(), QLatin1String(expected.name));
        QVERIFY2(widget->inherits(expected.inherits), expected.name);
        QCOMPARE(widget->property("text").toString(), QLatin1String(expected.text));
        QVERIFY(!widget->isHidden());
    }
    QCOMPARE(row, spacerRow);
    QSpacerItem* const spacer = grid->itemAtPosition(spacerRow, 0)->spacerItem();
    QVERIFY(spacer);
    QCOMPARE(spacer->sizeHint(), QSize(20, 40));
    QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(grid->count(), spacerRow + 1);
    QVERIFY(!fixture.editor.find<QPushButton>(QStringLiteral("btnLoad"))->isCheckable());
}

void QuickFormSuite::table()
{
    const QuickFixture fixture;
    const QTableWidget& table = fixture.table();
    QCOMPARE(table.objectName(), QStringLiteral("tableWidget"));
    QCOMPARE(table.columnCount(), 2);
    QCOMPARE(table.verticalHeader()->isHidden(), true);
    QCOMPARE(table.verticalHeader()->defaultSectionSize(), 44);
    QCOMPARE(table.showGrid(), false);
    QCOMPARE(table.editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(table.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table.selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(table.verticalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QCOMPARE(table.horizontalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QCOMPARE(table.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(table.focusPolicy(), Qt::NoFocus);
}

void QuickFormSuite::header()
{
    const QuickFixture fixture;
    const QTableWidget& table = fixture.table();
    QCOMPARE(table.horizontalHeaderItem(0)->text(), QStringLiteral("File Name"));
    QCOMPARE(table.horizontalHeaderItem(1)->text(), QStringLiteral("Samples / Duration"));
    const QHeaderView* const header = table.horizontalHeader();
    QCOMPARE(header->height(), 60);
    QCOMPARE(header->toolTip(), QStringLiteral("Double-click to locate the loaded waveform."));
    QCOMPARE(header->sectionResizeMode(0), QHeaderView::Stretch);
    QCOMPARE(header->sectionResizeMode(1), QHeaderView::Fixed);
    QCOMPARE(header->sectionSize(1), 250);
}

void QuickFormSuite::headerTipIsShown()
{
    QuickFixture fixture;
    const QWidget* const header = fixture.table().horizontalHeader()->viewport();
    const QPoint position(20, 20);
    QHelpEvent pointerRests(QEvent::ToolTip, position, header->mapToGlobal(position));
    QCoreApplication::sendEvent(const_cast<QWidget*>(header), &pointerRests);
    QCOMPARE(QToolTip::text(), QStringLiteral("Double-click to locate the loaded waveform."));
    QToolTip::hideText();
}

void QuickFormSuite::styleSheets_data()
{
    QTest::addColumn<int>("theme");
    QTest::newRow("light") << int(ThemeManager::Light);
    QTest::newRow("dark") << int(ThemeManager::Dark);
}

void QuickFormSuite::styleSheets()
{
    QFETCH(const int, theme);
    // The theme that is in force at construction, and one that comes later.
    for (const bool late : {false, true}) {
        ThemeManager& manager = ThemeManager::instance();
        manager.setTheme(ThemeManager::Theme(late ? 1 - theme : theme));
        const QuickFixture fixture;
        manager.setTheme(ThemeManager::Theme(theme));
        const QString text = manager.textColor().name();
        const QString border = manager.borderColor().name();
        const QString selected = manager.listItemSelectedColor().name();
        const QString surface = manager.listItemDisabledColor().name();
        QCOMPARE(fixture.editor.editor().styleSheet(),
                 QStringLiteral("QWidget#QuickWaveformPanel{background:%1;border:1px solid "
                                "%2;border-radius:4px;}")
                     .arg(surface, border));
        QCOMPARE(fixture.table().styleSheet(),
                 QStringLiteral(
                     "QTableWidget{background:%1;color:%2;border:none;gridline-color:transparent;outline:"
                     "none;}QTableWidget::item{padding:12px 20px;border:none;border-bottom:1px solid "
                     "%3;background:%1;color:%2;font-size:13px;}QTableWidget::item:selected{background:%4;"
                     "color:%2;}QTableWidget::item:pressed{background:%5;color:%2;}QHeaderView::section{"
                     "background:%6;color:%2;padding:12px 20px;border:none;border-bottom:1px solid "
                     "%3;font-size:18px;font-weight:500;}")
                     .arg(manager.listItemDefaultColor().name(), text, border, selected, selected, surface));
        const QImage image = fixture.editor.editor().grab().toImage();
        QCOMPARE(image.pixelColor(5, image.height() / 2).name(), surface);
    }
}

void QuickFormSuite::iconsFollowTheTheme_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"back", "folder", "checked", "audio", "position"}) {
        QTest::newRow(name) << QStringLiteral(":/QuickWaveform/Image/%1.svg").arg(QLatin1String(name));
    }
}

void QuickFormSuite::iconsFollowTheTheme()
{
    QFETCH(const QString, name);
    QuickFixture fixture;
    fixture.addFolder(QStringLiteral("b"));
    fixture.addFolder(QStringLiteral("b/c"));
    fixture.addWaveform(QStringLiteral("b/1.wav"));
    fixture.addWaveform(QStringLiteral("b/2.wav"));
    fixture.addWaveform(QStringLiteral("z.wav"));
    fixture.applyLoaded(QStringLiteral("b/1.wav"),
                        {{QStringLiteral("currentPath"), fixture.path(QStringLiteral("b"))}});
    QIcon icon;
    for (int row = 0; row < fixture.table().rowCount(); ++row) {
        if (fixture.icon(row) == name) {
            icon = fixture.table().item(row, 0)->icon();
        }
    }
    if (icon.isNull()) {
        fixture.click(QStringLiteral(".."));
        QCOMPARE(fixture.markedSection(), 1);
        icon = fixture.table().horizontalHeaderItem(1)->icon();
    }
    QCOMPARE(icon.name(), name);
    const bool isLoaded = name.contains(QLatin1String("checked"));
    for (const auto theme : {ThemeManager::Dark, ThemeManager::Light}) {
        ThemeManager::instance().setTheme(theme);
        const QColor color =
            ThemeManager::instance().color(isLoaded ? ThemeManager::FocusRing : ThemeManager::Text);
        for (const int side : {16, 20, 40}) {
            const QImage image = icon.pixmap(side, side).toImage();
            QCOMPARE(image.size(), QSize(side, side));
            QVERIFY2(drawnPixels(image, color) >= side, qPrintable(QString::number(side)));
        }
    }
}

// A sheet's font size does not reach items by itself.
void QuickFormSuite::rowsAreInTheSheetsSize()
{
    const QuickFixture fixture;
    QCOMPARE(fixture.table().font().pixelSize(), 13);
}

void QuickFormSuite::selectedRowHasAMark()
{
    QuickFixture fixture;
    fixture.addWaveform(QStringLiteral("a.wav"));
    fixture.addWaveform(QStringLiteral("b.wav"));
    fixture.apply();
    fixture.click(QStringLiteral("b"));
    const auto edge = [&fixture](const QString& name) {
        QTableWidget& table = fixture.table();
        const QRect cell = table.visualItemRect(table.item(fixture.rowOf(name), WaveformTable::Name));
        return table.viewport()->grab().toImage().pixelColor(cell.left() + 1, cell.center().y());
    };
    const ThemeManager& theme = ThemeManager::instance();
    QCOMPARE(edge(QStringLiteral("b")), theme.color(ThemeManager::FocusRing));
    QCOMPARE(edge(QStringLiteral("a")), theme.color(ThemeManager::ListItemDefault));
}

// Icons begin where the left caption does, facts end where the right one does.
void QuickFormSuite::rowsStandBelowTheirCaptions()
{
    constexpr int bearing = 2; // pixels that a letter or an icon leaves free
    QuickFixture fixture;
    fixture.addWaveform(QStringLiteral("a.wav"));
    fixture.apply();
    QTableWidget& table = fixture.table();
    QTRY_VERIFY(fixture.facts(QStringLiteral("a")).size() > 1);
    const QRect row =
        table.visualItemRect(table.item(fixture.rowOf(QStringLiteral("a")), WaveformTable::Name));
    const QColor ink = ThemeManager::instance().color(ThemeManager::Text);
    const QRect written =
        inkIn(table.viewport()->grab({0, row.top() + 4, table.viewport()->width(), row.height() - 8}), ink);
    const QRect captions = inkIn(table.horizontalHeader()->viewport()->grab(), ink);
    QVERIFY2(qAbs(written.left() - captions.left()) <= bearing,
             qPrintable(QStringLiteral("%1, %2").arg(written.left()).arg(captions.left())));
    QVERIFY2(qAbs(written.right() - captions.right()) <= bearing,
             qPrintable(QStringLiteral("%1, %2").arg(written.right()).arg(captions.right())));
    const int whole = table.fontMetrics().horizontalAdvance(fixture.facts(QStringLiteral("a")));
    const QRect half(table.viewport()->width() / 2, row.top() + 4, table.viewport()->width() / 2,
                     row.height() - 8);
    const QRect facts = inkIn(table.viewport()->grab(half), ink);
    QVERIFY2(facts.width() >= whole - 2 * bearing,
             qPrintable(QStringLiteral("%1, %2").arg(facts.width()).arg(whole)));
}

void QuickFormSuite::frameIsWhole()
{
    const QuickFixture fixture;
    const QImage image = fixture.editor.editor().grab().toImage();
    const QColor border = ThemeManager::instance().borderColor();
    constexpr int corner = 5; // is round
    for (int x = corner; x < image.width() - corner; ++x) {
        QCOMPARE(image.pixelColor(x, 0), border);
        QCOMPARE(image.pixelColor(x, image.height() - 1), border);
    }
    for (int y = corner; y < image.height() - corner; ++y) {
        QCOMPARE(image.pixelColor(0, y), border);
        QCOMPARE(image.pixelColor(image.width() - 1, y), border);
    }
}

void QuickFormSuite::columnKeepsItsWidth_data()
{
    QTest::addColumn<QString>("caption");
    QTest::newRow("short") << QStringLiteral("x");
    QTest::newRow("long") << QStringLiteral("Could not be loaded, unfortunately");
}

void QuickFormSuite::columnKeepsItsWidth()
{
    QFETCH(const QString, caption);
    const QuickFixture fixture;
    auto* const load = fixture.editor.find<QPushButton>(QStringLiteral("btnLoad"));
    QCOMPARE(load->width(), 146);
    load->setText(caption);
    fixture.editor.editor().layout()->activate();
    QCOMPARE(load->width(), 146);
    QCOMPARE(fixture.editor.find<QWidget>(QStringLiteral("btnPeriod"))->width(), 146);
}

void QuickFormSuite::derivedValuesAreReadOnly()
{
    const QuickFixture fixture;
    const auto* const spans = fixture.editor.find<LabelButton>(QStringLiteral("btnPeriodLen"));
    QVERIFY(spans->isReadOnly());
    QVERIFY(!fixture.editor.find<LabelButton>(QStringLiteral("btnPeriod"))->isReadOnly());
    const auto* const caption = spans->findChild<Controls::ElidedLabel*>(QStringLiteral("textLabel"));
    QCOMPARE(caption->shownLines().size(), 2);
    QVERIFY(!caption->isCut());
}

// Where a scale ends the room of a name within a pixel of the screen, too.
void QuickFormSuite::rowLinesAreUnbroken()
{
    constexpr double scale = 1.5;
    QuickFixture fixture;
    fixture.addWaveform(QStringLiteral("a.wav"));
    fixture.apply();
    QTRY_VERIFY(fixture.facts(QStringLiteral("a")).size() > 1);
    QTableWidget& table = fixture.table();
    const int row = fixture.rowOf(QStringLiteral("a"));
    const int bottom = int(table.visualItemRect(table.item(row, WaveformTable::Name)).bottom() * scale);
    for (const int wider : {0, 1}) {
        table.resize(table.width() + wider, table.height());
        const QImage picture = TestSupport::rendered(table.viewport(), scale);
        for (int x = 0; x < picture.width() - 1; ++x)
            QCOMPARE(picture.pixelColor(x, bottom), picture.pixelColor(0, bottom));
    }
}

void QuickFormSuite::popupHasRoomForTheTable()
{
    const QuickFixture fixture;
    constexpr int popupWidth = 560;
    QCOMPARE(fixture.editor.editor().width(), popupWidth);
    QVERIFY(fixture.editor.editor().minimumSizeHint().width() <= popupWidth);
    const int caption = fixture.table().horizontalHeader()->sectionSizeHint(0);
    QVERIFY(fixture.table().columnWidth(0) >= caption);
    const QWidget* const button = fixture.editor.find<QWidget>(QStringLiteral("btnPeriod"));
    QVERIFY(button->width() >= 120);
    QCOMPARE(button->height(), 60);
}

void QuickFormSuite::switchesKeepTheirSizeInTheHost()
{
    RemoteModEditorHost host;
    host.setModulationItem(QStringLiteral("q"), QStringLiteral("Quick Waveform"), QString(), {},
                           QStringLiteral("simple"), {}, 1, false);
    const auto* const editor = host.findChild<RemoteModEditor*>(QStringLiteral("QuickWaveformPanel"));
    QVERIFY(editor);
    const auto switches = editor->findChildren<SwitchButton*>();
    QCOMPARE(switches.size(), 2);
    for (const SwitchButton* button : switches) {
        QVERIFY(!button->isCompactMode());
    }
}

std::unique_ptr<QObject> makeQuickFormSuite()
{
    return std::make_unique<QuickFormSuite>();
}

#include "QuickFormSuite.moc"
