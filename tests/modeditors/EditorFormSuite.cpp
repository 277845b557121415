#include "controls/EnumTextButton.h"
#include "controls/SwitchButton.h"
#include "controls/ThemeManager.h"
#include "modeditors/EditorFixture.h"
#include "modeditors/EditorSuites.h"
#include "modeditors/ModEditorFactory.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QImage>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

using Controls::ThemeManager;

namespace {

const Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;

struct ExpectedItem
{
    const char* kind;
    const char* name;
    const char* inherits;
    const char* text;
    const char* cell; // row, column, rows, columns
    bool hidden;
};

// As the forms are after construction.
// clang-format off
constexpr ExpectedItem expectedItems[] = {
    {"digital", "enabled", "SwitchButton", "Enabled", "0 0 1 1", false},
    {"digital", "symbolRate", "LabelButton", "Symbol Rate", "0 1 1 1", false},
    {"digital", "filterType", "EnumTextButton", "Filter Type", "1 0 1 1", false},
    {"digital", "modulationType", "EnumTextButton", "Modulation Type", "1 1 1 1", false},
    {"digital", "filterAlpha", "LabelButton", "Filter Alpha", "2 0 1 1", false},
    {"digital", "pn", "LabelButton", "PN", "2 1 1 1", false},
    {"digital", "filterLength", "LabelButton", "Filter Length (symbols)", "3 0 1 1", false},
    {"digital", "sequenceSeed", "LabelButton", "Sequence Seed", "3 1 1 1", false},
    {"digital", "oversample", "EnumTextButton", "Oversample", "5 0 1 1", false},
    {"digital", "fskDeviation", "LabelButton", "FSK Deviation", "5 1 1 1", false},
    {"digital", "defaultTrimDownload", "QCheckBox", "Default Trim Download", "6 0 1 1", false},
    {"digital", "btnSave", "QPushButton", "Save IQ Data", "8 0 1 1", true},
    {"digital", "btnShowWaveForm", "QPushButton", "showWaveForm", "8 1 1 1", true},
    {"multitone", "enabled", "SwitchButton", "Enabled", "0 0 1 1", false},
    {"multitone", "btnTonePhase", "EnumTextButton", "Tone Phase", "0 1 1 1", false},
    {"multitone", "btnSeed", "LabelButton", "Phase Random Seed", "1 0 1 1", false},
    {"multitone", "btnFreqSpacing", "LabelButton", "Freq Spacing", "1 1 1 1", false},
    {"multitone", "btnCount", "LabelButton", "Tone Count", "2 0 1 1", false},
    {"multitone", "btnNotchWidth", "LabelButton", "Notch Width", "2 1 1 1", false},
    {"multitone", "btnDiscreteKeepToneMode", "SwitchButton", "Discrete Tone Mode", "3 0 1 1", false},
    {"multitone", "toneTable", "QTableWidget", "", "4 0 1 2", false},
    {"multitone", "btnRecord", "QPushButton", "Save IQ Data", "5 0 1 1", true},
    {"multitone", "btnShowWaveForm", "QPushButton", "Show Waveform", "5 1 1 1", true},
};
// clang-format on

QString cellOf(const QGridLayout& grid, QWidget* widget)
{
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid.getItemPosition(grid.indexOf(widget), &row, &column, &rows, &columns);
    return QStringLiteral("%1 %2 %3 %4").arg(row).arg(column).arg(rows).arg(columns);
}

} // namespace

Q_DECLARE_METATYPE(const ExpectedItem*)

// What the forms of the purpose-built editors are made of and how they look.
class EditorFormSuite final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { ThemeManager::instance().setTheme(ThemeManager::Light); }
    void item_data();
    void item();
    void digitalForm();
    void multitoneForm();
    void alignments_data();
    void alignments();
    void openListsAreTitled();
    void checkBoxFollowsTheTheme_data();
    void checkBoxFollowsTheTheme();
    void toneTable();
    void toneTableFollowsTheTheme();
    void headersFollowTheirTable_data();
    void headersFollowTheirTable();

private:
    static const QGridLayout& grid(const EditorFixture& fixture);
};

const QGridLayout& EditorFormSuite::grid(const EditorFixture& fixture)
{
    return *qobject_cast<QGridLayout*>(fixture.editor().layout());
}

void EditorFormSuite::item_data()
{
    QTest::addColumn<const ExpectedItem*>("expected");
    for (const ExpectedItem& item : expectedItems) {
        QTest::addRow("%s %s", item.kind, item.name) << &item;
    }
}

void EditorFormSuite::item()
{
    QFETCH(const ExpectedItem*, expected);
    const EditorFixture fixture{QLatin1String(expected->kind)};
    auto* const widget = fixture.find<QWidget>(QLatin1String(expected->name));
    QVERIFY(widget);
    QVERIFY(widget->inherits(expected->inherits));
    QCOMPARE(widget->property("text").toString(), QLatin1String(expected->text));
    QCOMPARE(cellOf(grid(fixture), widget), QLatin1String(expected->cell));
    QCOMPARE(widget->isHidden(), expected->hidden);
}

void EditorFormSuite::digitalForm()
{
    const EditorFixture fixture(QStringLiteral("digital"));
    const RemoteModEditor& editor = fixture.editor();
    QVERIFY(editor.inherits("RemoteDigitalPanel"));
    QCOMPARE(editor.objectName(), QStringLiteral("DigitalPanel"));
    QCOMPARE(editor.windowTitle(), QStringLiteral("Form"));
    QCOMPARE(editor.minimumSize(), QSize(300, 0));
    QCOMPARE(editor.styleSheet(), QString());
    QCOMPARE(grid(fixture).objectName(), QStringLiteral("gridLayout"));
    QCOMPARE(grid(fixture).columnStretch(0), grid(fixture).columnStretch(1));
    QCOMPARE(grid(fixture).contentsMargins(), QMargins(10, 0, 6, 0)); // in line with the other editors
    QCOMPARE(grid(fixture).spacing(), 5);
    QCOMPARE(grid(fixture).rowStretch(7), 0);
    QSpacerItem* const spacer = grid(fixture).itemAtPosition(7, 0)->spacerItem();
    QVERIFY(spacer);
    QCOMPARE(spacer->sizeHint(), QSize(0, 0));
    QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    QVERIFY(!grid(fixture).itemAtPosition(4, 0) && !grid(fixture).itemAtPosition(4, 1));
    QCOMPARE(grid(fixture).count(), 14);
}

void EditorFormSuite::multitoneForm()
{
    const EditorFixture fixture(QStringLiteral("multitone"));
    const RemoteModEditor& editor = fixture.editor();
    QVERIFY(editor.inherits("RemoteMultitonePanel"));
    QCOMPARE(editor.objectName(), QStringLiteral("MultitonePanel"));
    QCOMPARE(editor.windowTitle(), QStringLiteral("Form"));
    QCOMPARE(editor.styleSheet(), QString());
    QCOMPARE(grid(fixture).objectName(), QStringLiteral("gridLayout"));
    QCOMPARE(grid(fixture).spacing(), 5);
    const QMargins margins = grid(fixture).contentsMargins();
    QCOMPARE(margins.left(), 10);
    QCOMPARE(margins.top(), 0);
    QCOMPARE(margins.right(), 6);
    QCOMPARE(margins.bottom(), editor.style()->pixelMetric(QStyle::PM_LayoutBottomMargin));
    QCOMPARE(grid(fixture).columnStretch(0), grid(fixture).columnStretch(1));
    QCOMPARE(grid(fixture).count(), 10);
    const auto* const phase = fixture.find<EnumTextButton>(QStringLiteral("btnTonePhase"));
    QCOMPARE(phase->enums().join(QLatin1Char(' ')), QStringLiteral("Fixed Random Parabolic"));
    QCOMPARE(phase->titleText(), phase->text());
}

void EditorFormSuite::alignments_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("digital") << QStringLiteral("digital");
    QTest::newRow("multitone") << QStringLiteral("multitone");
}

void EditorFormSuite::alignments()
{
    QFETCH(const QString, kind);
    const EditorFixture fixture(kind);
    const auto buttons = fixture.editor().findChildren<LabelButton*>();
    QVERIFY(buttons.size() > 4);
    for (const LabelButton* button : buttons) {
        QCOMPARE(button->textAlignment(), left);
        QCOMPARE(button->labelAlignment(), right);
        constexpr int valueButtonHeight = 60;
        QVERIFY(button->isHidden() || button->height() == valueButtonHeight);
    }
}

void EditorFormSuite::openListsAreTitled()
{
    const EditorFixture fixture(QStringLiteral("digital"));
    const auto picker = [&](const char* name) { return fixture.find<EnumTextButton>(QLatin1String(name)); };
    QCOMPARE(picker("oversample")->viewMode(), 1);
    QCOMPARE(picker("oversample")->titleText(), QStringLiteral("Oversample"));
    QCOMPARE(picker("modulationType")->viewMode(), 1);
    QCOMPARE(picker("modulationType")->titleText(), QStringLiteral("Modulation Type"));
    QCOMPARE(picker("filterType")->viewMode(), EnumTextButton().viewMode());
    QCOMPARE(picker("filterType")->titleText(), QString());
}

void EditorFormSuite::checkBoxFollowsTheTheme_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QString>("color");
    QTest::addColumn<QString>("ending");
    QTest::newRow("light") << 1 << QStringLiteral("#3c2a22") << QStringLiteral("_light");
    QTest::newRow("dark") << 0 << QStringLiteral("#ffffff") << QString();
}

void EditorFormSuite::checkBoxFollowsTheTheme()
{
    QFETCH(const int, theme);
    QFETCH(const QString, color);
    QFETCH(const QString, ending);
    const QString checked = QLatin1String(":/Controls/Image/checkbox_checked") + ending;
    const QString unchecked = QLatin1String(":/Controls/Image/checkbox_unchecked") + ending;
    const QString expected =
        QLatin1String("QCheckBox{min-height:60px;max-height:60px;background:transparent;color:") + color +
        QLatin1String(";spacing:12px;}QCheckBox::indicator{width:24px;height:24px;border:none;}"
                      "QCheckBox::indicator:checked{border-image:url(") +
        checked + QLatin1String(");}QCheckBox::indicator:unchecked{border-image:url(") + unchecked +
        QLatin1String(");}");
    // The theme that is in force at construction, and one that comes later.
    for (const bool late : {false, true}) {
        ThemeManager::instance().setTheme(ThemeManager::Theme(late ? 1 - theme : theme));
        const EditorFixture fixture(QStringLiteral("digital"));
        ThemeManager::instance().setTheme(ThemeManager::Theme(theme));
        auto* const box = fixture.find<QCheckBox>(QStringLiteral("defaultTrimDownload"));
        QCOMPARE(box->styleSheet(), expected);
        QCOMPARE(box->height(), 60);
        for (const bool isChecked : {true, false}) {
            box->blockSignals(true);
            box->setChecked(isChecked);
            box->blockSignals(false);
            const QImage image(isChecked ? checked : unchecked);
            QCOMPARE(image.size(), QSize(24, 24));
            const QPoint middle = QPoint(12, box->height() / 2);
            QCOMPARE(box->grab().toImage().pixelColor(middle - QPoint(6, 6)), image.pixelColor(6, 6));
        }
    }
}

void EditorFormSuite::toneTable()
{
    const EditorFixture fixture(QStringLiteral("multitone"));
    const auto* const table = fixture.find<QTableWidget>(QStringLiteral("toneTable"));
    QCOMPARE(table->columnCount(), 3);
    QCOMPARE(table->rowCount(), 0);
    QStringList captions;
    for (int column = 0; column < table->columnCount(); ++column) {
        captions.append(table->horizontalHeaderItem(column)->text());
    }
    QCOMPARE(captions.join(QLatin1Char('|')), QStringLiteral("Tone Num|FrequencyOffset|Enabled"));
    const QHeaderView* const header = table->horizontalHeader();
    QCOMPARE(header->defaultAlignment(), left);
    QCOMPARE(header->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QCOMPARE(header->sectionResizeMode(1), QHeaderView::Stretch);
    QCOMPARE(header->sectionResizeMode(2), QHeaderView::ResizeToContents);
    QVERIFY(table->verticalHeader()->isHidden());
    QCOMPARE(table->verticalHeader()->minimumSectionSize(), 45);
    QCOMPARE(table->verticalHeader()->defaultSectionSize(), 45);
}

void EditorFormSuite::toneTableFollowsTheTheme()
{
    const EditorFixture fixture(QStringLiteral("multitone"));
    const auto* const table = fixture.find<QTableWidget>(QStringLiteral("toneTable"));
    for (const auto theme : {ThemeManager::Dark, ThemeManager::Light}) {
        ThemeManager& manager = ThemeManager::instance();
        manager.setTheme(theme);
        const QString expected =
            QString(
                QLatin1String(
                    "QTableWidget{background:%1;color:%2;border:none;gridline-color:transparent;outline:none;"
                    "}"
                    "QTableWidget::item{padding:12px 20px;border:none;border-bottom:1px solid "
                    "%3;background:%1;color:%2;}QTableWidget::item:selected{background:%4;color:%2;}"
                    "QHeaderView::section{background:%5;color:%2;padding:12px 20px;border:none;border-bottom:"
                    "1px solid %3;font-size:18px;}QTableWidget::indicator{width:18px;height:18px;}"))
                .arg(manager.listItemDefaultColor().name(), manager.textColor().name(),
                     manager.borderColor().name(), manager.listItemSelectedColor().name(),
                     manager.listItemDisabledColor().name());
        QCOMPARE(table->styleSheet(), expected);
        // Captions are read on what they stand on.
        QVERIFY(manager.listItemDisabledColor() != manager.textColor());
        QCOMPARE(manager.listItemDisabledColor().alpha(), 255);
    }
}

void EditorFormSuite::headersFollowTheirTable_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("multitone") << QStringLiteral("multitone");
    QTest::newRow("quick waveform") << QStringLiteral("quick-waveform");
}

// Also where the windows around it have style sheets, as in the popup, and the program has one for headers.
void EditorFormSuite::headersFollowTheirTable()
{
    QFETCH(const QString, kind);
    qApp->setStyleSheet(QStringLiteral("QHeaderView::section { padding: 4px 8px; font-size: 11px; }"));
    QWidget window;
    window.setStyleSheet(QStringLiteral("QWidget#window { background: #ffffff; }"));
    const std::unique_ptr<RemoteModEditor> editor(createModEditor(kind, &window));
    const auto* const header = editor->findChild<QTableWidget*>()->horizontalHeader();
    const int hint = header->sectionSizeHint(0);
    qApp->setStyleSheet(QString());
    const int text =
        header->fontMetrics().horizontalAdvance(header->model()->headerData(0, Qt::Horizontal).toString());
    QCOMPARE(header->font().pixelSize(), 18); // captions are shortened by the font in which they are drawn
    QVERIFY2(hint >= text + 2 * 20, qPrintable(QString::number(hint - text)));
}

std::unique_ptr<QObject> makeEditorFormSuite()
{
    return std::make_unique<EditorFormSuite>();
}

#include "EditorFormSuite.moc"
