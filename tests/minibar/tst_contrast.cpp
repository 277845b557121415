// Whether every text of the program can be read, and every mark seen, in the colours that the style sheets
// give them.

#include "controls/SwitchButton.h"
#include "controls/ThemeManager.h"
#include "minibar/Cascade.h"
#include "minibar/StyleSheets.h"
#include "modeditors/ModEditorFactory.h"
#include "modeditors/contract/RemoteModEditor.h"
#include "sweep/SweepWidgets.h"

#include <QDialog>
#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <algorithm>
#include <memory>

using Controls::ThemeManager;

namespace {

constexpr double legible = 4.5; // WCAG 2 level AA
constexpr double visible = 3.0; // of what is no text
constexpr double faint = 3.0;   // of a control that cannot be used, for which no level is asked

struct Subject
{
    const char* path;   // %1 stands for each of the states, %2 for what the labels inside know of them
    const char* states; // separated by blanks, "-" for none
};

constexpr char buttonStates[] =
    "- :hover :pressed :checked :checked:hover :checked:pressed :disabled :checked:disabled";
constexpr char simpleStates[] = "- :hover :pressed";
constexpr char fieldStates[] = "- :focus :disabled";
constexpr char rowStates[] = "- :hover :selected :disabled";

constexpr Subject texts[] = {
    // the bar
    {"QWidget#miniBarWindow QWidget#miniBarCollapsedPage LabelButton#miniBarInfoButton%1 QLabel#textLabel%2",
     buttonStates},
    {"QWidget#miniBarWindow QWidget#miniBarExpandedPage LabelButton#miniBarInfoButton%1 QLabel#textLabel%2",
     buttonStates},
    {"QWidget#miniBarWindow QWidget#miniBarExpandedPage LabelButton#miniBarInfoButton%1 QLabel#infoLabel%2",
     buttonStates},
    {"QWidget#miniBarWindow QWidget#miniBarExpandedPage QPushButton#miniBarToggleButton%1", simpleStates},
    {"QWidget#miniBarWindow QWidget#miniBarExpandedPage QPushButton#miniBarCommandButton%1", simpleStates},
    {"QMenu::item%1", "- :selected :checked :checked:selected :disabled"},
    {"QToolTip", "-"},
    // the numeric keyboard
    {"QDialog#touchNumKeyboard QLabel#titleLabel", "-"},
    {"QDialog#touchNumKeyboard QFrame#valueLine%1 QLabel#valueLabel", "- :focus"},
    {"QDialog#touchNumKeyboard QFrame#valueLine QLabel#unitLabel", "-"},
    {"QDialog#touchNumKeyboard QLabel#limitsLabel%1", "- [refused=\"true\"]"},
    {"QDialog#touchNumKeyboard QPushButton%1", "- :hover :pressed :focus :disabled"},
    {"QDialog#touchNumKeyboard QPushButton[currentUnit=\"true\"]%1", simpleStates},
    {"QDialog#touchNumKeyboard QPushButton#keyCancel%1", "- :hover :pressed :focus"},
    // the sweep popup
    {"QDialog#miniBarHelperSweepPopup QLabel#titleLabel", "-"},
    {"QDialog#miniBarHelperSweepPopup QWidget#remoteSweepPanel LabelButton%1 QLabel#textLabel%2",
     buttonStates},
    {"QDialog#miniBarHelperSweepPopup QWidget#remoteSweepPanel LabelButton%1 QLabel#infoLabel%2",
     buttonStates},
    {"QDialog#miniBarHelperSweepPopup QWidget#remoteSweepPanel SwitchButton%1 QLabel#textLabel%2",
     "- :disabled"},
    {"QDialog#miniBarHelperSweepPopup QWidget#remoteSweepPanel SwitchButton QPushButton#btnOn%1",
     "- :checked"},
    {"QDialog#miniBarHelperSweepPopup QWidget#remoteSweepPanel SwitchButton QPushButton#btnOff%1",
     "- :checked"},
    {"QDialog#miniBarHelperSweepPopup QWidget#remoteSweepPanel QLabel#remoteSweepUnsupportedLabel", "-"},
    // the modulation popup
    {"QDialog#miniBarHelperModPopup QLabel#titleLabel", "-"},
    {"QDialog#miniBarHelperModPopup QWidget#remoteModEditorHost QLabel", "-"},
    {"QDialog#miniBarHelperModPopup LabelButton%1 QLabel#textLabel%2", buttonStates},
    {"QDialog#miniBarHelperModPopup LabelButton%1 QLabel#infoLabel%2", buttonStates},
    {"QDialog#miniBarHelperModPopup SwitchButton%1 QLabel#textLabel%2", "- :disabled"},
    {"QDialog#miniBarHelperModPopup SwitchButton QPushButton#btnOn%1", "- :checked"},
    {"QDialog#miniBarHelperModPopup SwitchButton QPushButton#btnOff%1", "- :checked"},
    {"QDialog#miniBarHelperModPopup QPushButton#remoteModCommandButton%1", "- :hover :pressed :disabled"},
    {"QDialog#miniBarHelperModPopup CommandButton%1", "- :hover :pressed :focus :disabled"},
    {"QDialog#miniBarHelperModPopup QWidget#StreamingPanel QLabel#listTitle", "-"},
    {"QDialog#miniBarHelperModPopup QWidget#StreamingPanel QListWidget::item%1", rowStates},
    {"QDialog#miniBarHelperModPopup QWidget#QuickWaveformPanel QLabel#refusal", "-"},
    {"QDialog#miniBarHelperModPopup QWidget#QuickWaveformPanel QTableWidget#tableWidget::item%1",
     "- :selected :pressed"},
    {"QDialog#miniBarHelperModPopup QWidget#QuickWaveformPanel QTableWidget#tableWidget QHeaderView::section",
     "-"},
    {"QDialog#miniBarHelperModPopup QTableWidget#toneTable::item%1", "- :selected"},
    {"QDialog#miniBarHelperModPopup QTableWidget#toneTable QHeaderView::section", "-"},
    {"QDialog#miniBarHelperModPopup QCheckBox#defaultTrimDownload%1", "-"},
    {"PopupWidget QLabel#popupTitle", "-"},
    // dialogs
    {"QMessageBox QLabel%1", "- :disabled"},
    {"QDialog InfoButton%1 QLabel#textLabel%2", "- :hover :pressed :checked"},
    {"QMainWindow QLabel", "-"},
    {"QDialog QPushButton%1", buttonStates},
    {"QDialog QToolButton%1", buttonStates},
    {"QDialog QCheckBox%1", "- :disabled"},
    {"QDialog QRadioButton%1", "- :disabled"},
    {"QDialog QLineEdit%1", fieldStates},
    {"QDialog QTextEdit%1", fieldStates},
    {"QDialog QPlainTextEdit%1", fieldStates},
    {"QDialog QSpinBox%1", fieldStates},
    {"QDialog QDoubleSpinBox%1", fieldStates},
    {"QFileDialog#fileChooser QLabel#chooserTitle", "-"},
    {"QFileDialog#fileChooser QComboBox%1", fieldStates},
    {"QFileDialog#fileChooser QTreeView::item%1", rowStates},
    {"QFileDialog#fileChooser QListView::item%1", rowStates},
    {"QFileDialog#fileChooser QTreeView QHeaderView::section", "-"},
};

// Painted beside or around a text, and nothing is written on them.
constexpr const char* plainBackgrounds[] = {
    "QWidget#miniBarWindow",
    "QWidget#miniBarCollapsedPage",
    "QWidget#miniBarExpandedPage",
    "QTableWidget#toneTable",
    "QTableWidget#tableWidget",
    "PopupWidget",
    "QTableCornerButton::section",
    "QMenu::separator",
    "QMenu",
    "QScrollBar:vertical",
    "QScrollBar:horizontal",
    "QDialog SwitchButton:disabled",
    "QDialog QRadioButton::indicator",
};

// A mark, and what it stands on.
constexpr const char* marks[] = {"QScrollBar:vertical::handle", "QScrollBar:horizontal::handle:pressed"};

// Controls that look alike wherever they are.
constexpr const char* equalBackgrounds[][2] = {
    {"QDialog#miniBarHelperModPopup SwitchButton:disabled",
     "QDialog#miniBarHelperModPopup LabelButton:disabled"},
    {"QDialog#miniBarHelperModPopup CommandButton:disabled",
     "QDialog#miniBarHelperModPopup LabelButton:disabled"},
    {"QDialog#miniBarHelperSweepPopup SwitchButton QPushButton#btnOff:checked",
     "QDialog#miniBarHelperModPopup SwitchButton QPushButton#btnOff:checked"},
};

// The colours given to bar and popups that fall short, and the least contrast that they keep.
struct GivenPair
{
    bool light;
    const char* owner;
    const char* states;
    const char* label;
    double ratio;
};

constexpr GivenPair givenPairs[] = {
    {false, "miniBarInfoButton", ":checked", "textLabel", 2.1},
    {false, "miniBarInfoButton", ":pressed", "infoLabel", 4.4},
    {false, "miniBarInfoButton", ":checked:disabled", "infoLabel", 1.3},
    {true, "remoteSweepPanel", "", "remoteSweepUnsupportedLabel", 3.3},
    {false, "remoteSweepPanel", "", "remoteSweepUnsupportedLabel", 3.3},
};

StyledPath parsedPath(const QString& text)
{
    StyledPath path;
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& word : words)
        path.append(StyledElement::parse(word));
    return path;
}

QString filled(const Subject& subject, const QString& state)
{
    const bool isChecked = state.contains(QLatin1String(":checked"));
    const bool isDisabled = state.contains(QLatin1String(":disabled"));
    const QString inside =
        QStringLiteral("[parentChecked=\"%1\"]%2")
            .arg(QLatin1String(isChecked ? "true" : "false"), QLatin1String(isDisabled ? ":disabled" : ""));
    QString path = QLatin1String(subject.path);
    // Parts come before states in the notation.
    return path.replace(QLatin1String("%1"), state == QLatin1String("-") ? QString() : state)
        .replace(QLatin1String("%2"), inside);
}

QString themeFile(bool light)
{
    QFile file(QStringLiteral(CONFIGURATION_DIR "/") +
               QLatin1String(light ? "theme_light.css" : "theme.css"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The sheet that an editor gives one of its widgets, for that widget alone.
QString sheetOf(const char* kind, const char* widget)
{
    const std::unique_ptr<RemoteModEditor> editor(createModEditor(QLatin1String(kind), nullptr));
    const auto* const styled = editor ? editor->findChild<QWidget*>(QLatin1String(widget)) : nullptr;
    QString sheet = styled ? styled->styleSheet() : QString();
    static const QRegularExpression type(QStringLiteral("(QTableWidget|QHeaderView|QCheckBox)"));
    const QString owner = QLatin1Char('#') + QLatin1String(widget);
    sheet.replace(QLatin1String("QTableWidget"), QLatin1String("QTableWidget") + owner);
    sheet.replace(QLatin1String("QHeaderView"),
                  QLatin1String("QTableWidget") + owner + QLatin1String(" QHeaderView"));
    sheet.replace(QLatin1String("QCheckBox"), QLatin1String("QCheckBox") + owner);
    return sheet;
}

Cascade cascadeOf(bool light)
{
    ThemeManager::instance().setTheme(light ? ThemeManager::Light : ThemeManager::Dark);
    Cascade cascade;
    for (const QString& sheet :
         {themeFile(light), miniBarStyleSheet(light), sweepPopupStyleSheet(light), modPopupStyleSheet(light),
          sweepStyleSheet(light), sheetOf("multitone", "toneTable"), sheetOf("quick-waveform", "tableWidget"),
          sheetOf("digital", "defaultTrimDownload")})
        cascade.addSheet(sheet);
    return cascade;
}

// What a text has to have: WCAG 2, or what its given colours come to.
double wantedRatio(bool light, const QString& path)
{
    const auto has = [&path](const char* name) { return path.contains(QLatin1String(name)); };
    double wanted = has(":disabled") ? faint : legible;
    for (const GivenPair& pair : givenPairs) {
        if (pair.light == light && has(pair.owner) && has(pair.states) && has(pair.label))
            wanted = std::min(wanted, pair.ratio);
    }
    return wanted;
}

} // namespace

class ContrastTest final : public QObject
{
    Q_OBJECT

private slots:
    void cleanupTestCase() { ThemeManager::instance().setTheme(ThemeManager::Light); }
    void texts_data();
    void texts();
    void marks_data();
    void marks();
    void lockedSwitch_data();
    void lockedSwitch();
    void equalsLookAlike_data();
    void equalsLookAlike();
    void everyColourIsTried_data();
    void everyColourIsTried();
};

void ContrastTest::texts_data()
{
    QTest::addColumn<bool>("light");
    QTest::addColumn<QString>("path");
    for (const bool light : {true, false}) {
        for (const Subject& subject : ::texts) {
            const QStringList states = QString(QLatin1String(subject.states)).split(QLatin1Char(' '));
            for (const QString& state : states) {
                const QString path = filled(subject, state);
                QTest::addRow("%s: %s", light ? "light" : "dark", qPrintable(path)) << light << path;
            }
        }
    }
}

void ContrastTest::texts()
{
    QFETCH(const bool, light);
    QFETCH(const QString, path);
    static Cascade cascades[] = {cascadeOf(false), cascadeOf(true)};
    const StyledPath widget = parsedPath(path);
    const QColor ink = cascades[light].textColor(widget);
    const QColor paper = cascades[light].background(widget);
    QVERIFY(ink.isValid());
    QVERIFY(paper.isValid());
    const double ratio = contrast(ink, paper);
    QVERIFY2(ratio >= wantedRatio(light, path),
             qPrintable(QStringLiteral("%1: %2 on %3")
                            .arg(ratio, 0, 'f', 2)
                            .arg(ink.name(QColor::HexArgb), paper.name())));
}

void ContrastTest::marks_data()
{
    QTest::addColumn<bool>("light");
    QTest::addColumn<QString>("path");
    for (const bool light : {true, false})
        for (const char* path : ::marks)
            QTest::addRow("%s: %s", light ? "light" : "dark", path) << light << path;
}

void ContrastTest::marks()
{
    QFETCH(const bool, light);
    QFETCH(const QString, path);
    Cascade cascade = cascadeOf(light);
    const StyledPath part = parsedPath(path);
    StyledPath whole = part;
    whole.last().part.clear();
    QVERIFY(contrast(cascade.background(part), cascade.background(whole)) >= visible);
}

void ContrastTest::lockedSwitch_data()
{
    QTest::addColumn<bool>("light");
    QTest::addColumn<bool>("on");
    for (const bool light : {true, false})
        for (const bool on : {true, false})
            QTest::addRow("%s: %s", light ? "light" : "dark", on ? "on" : "off") << light << on;
}

// Its active half is painted faintly, which no style sheet tells.
void ContrastTest::lockedSwitch()
{
    QFETCH(const bool, light);
    QFETCH(const bool, on);
    ThemeManager::instance().setTheme(light ? ThemeManager::Light : ThemeManager::Dark);
    QDialog popup;
    popup.setObjectName(QStringLiteral("miniBarHelperModPopup"));
    popup.setStyleSheet(themeFile(light) + modPopupStyleSheet(light));
    SwitchButton toggle(&popup);
    toggle.setCompactMode(true);
    toggle.resize(260, toggle.sizeHint().height());
    toggle.setStatus(on);
    toggle.setEnabled(false);
    const auto* const half =
        toggle.findChild<QWidget*>(on ? QStringLiteral("btnOn") : QStringLiteral("btnOff"));
    const QImage picture = toggle.grab().toImage().copy(half->geometry());
    const QColor paper = picture.pixelColor(2, 2);
    double best = 0;
    for (int x = 0; x < picture.width(); ++x)
        for (int y = 0; y < picture.height(); ++y)
            best = std::max(best, contrast(picture.pixelColor(x, y), paper));
    QVERIFY2(best >= faint, qPrintable(QStringLiteral("%1 on %2").arg(best, 0, 'f', 2).arg(paper.name())));
}

void ContrastTest::equalsLookAlike_data()
{
    QTest::addColumn<bool>("light");
    QTest::addColumn<QString>("one");
    QTest::addColumn<QString>("other");
    for (const bool light : {true, false}) {
        for (const auto& pair : equalBackgrounds)
            QTest::addRow("%s: %s", light ? "light" : "dark", pair[0])
                << light << QString(QLatin1String(pair[0])) << QString(QLatin1String(pair[1]));
    }
}

void ContrastTest::equalsLookAlike()
{
    QFETCH(const bool, light);
    QFETCH(const QString, one);
    QFETCH(const QString, other);
    Cascade cascade = cascadeOf(light);
    QCOMPARE(cascade.background(parsedPath(one)), cascade.background(parsedPath(other)));
}

void ContrastTest::everyColourIsTried_data()
{
    QTest::addColumn<bool>("light");
    QTest::newRow("light") << true;
    QTest::newRow("dark") << false;
}

void ContrastTest::everyColourIsTried()
{
    QFETCH(const bool, light);
    Cascade cascade = cascadeOf(light);
    for (const Subject& subject : ::texts) {
        const QStringList states = QString(QLatin1String(subject.states)).split(QLatin1Char(' '));
        for (const QString& state : states) {
            (void)cascade.textColor(parsedPath(filled(subject, state)));
            (void)cascade.background(parsedPath(filled(subject, state)));
        }
    }
    for (const char* path : plainBackgrounds)
        (void)cascade.background(parsedPath(QLatin1String(path)));
    for (const char* path : ::marks)
        (void)cascade.background(parsedPath(QLatin1String(path)));
    const QStringList unused = cascade.unusedSelectors();
    QVERIFY2(unused.isEmpty(), qPrintable(unused.join(QLatin1Char('\n'))));
}

QTEST_MAIN(ContrastTest)

#include "tst_contrast.moc"
