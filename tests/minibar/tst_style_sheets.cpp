#include "minibar/StyleSheets.h"
#include "minibar/Theme.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>

namespace {

// Rules are compared as text: what follows the selector up to the closing brace, one declaration an entry.
QStringList declarations(const QString& sheet, const QString& selector)
{
    const QString head = QLatin1Char('\n') + selector + QStringLiteral(" {\n");
    const int start = sheet.indexOf(head);
    if (start < 0 || sheet.indexOf(head, start + 1) >= 0)
        return {QStringLiteral("no single rule for ") + selector};
    const int from = start + head.size();
    const QString body = sheet.mid(from, sheet.indexOf(QStringLiteral("}\n"), from) - from);
    QStringList lines = body.split(QLatin1Char('\n'));
    if (!lines.takeLast().isEmpty())
        return {QStringLiteral("brace is not on a line of its own")};
    for (QString& line : lines) {
        if (!line.startsWith(QStringLiteral("    ")) || !line.endsWith(QLatin1Char(';')))
            return {QStringLiteral("bad line: ") + line};
        line = line.mid(4).chopped(1);
    }
    return lines;
}

constexpr const char* windowColours[2][11] = {
    {"", "#1f2329", "#4a5563", "#252e35", "#364152", "#445169", "#00CE01", "#ffffff", "#aec4d0", "#054604",
     "#20252b"},
    {"", "#e2ddd7", "#bab4af", "#dad1ca", "#e0d5ce", "rgba(99,172,246,100)", "#63ACF6", "#3c2a22", "#3c2a22",
     "#3c2a22", "#cfc7c0"},
};

constexpr const char* modColours[2][6] = {
    {"", "#171a1f", "#2f536c", "#00ce01", "#30373f", "#ffffff"},
    {"", "#dad1ca", "#63ACF6", "rgba(99,172,246,100)", "#c4bdb3", "#3c2a22"},
};

QString filled(QString text, const char* const* colours, int count)
{
    for (int number = count; number >= 1; --number)
        text.replace(QStringLiteral("%%1").arg(number), QLatin1String(colours[number]));
    return text;
}

} // namespace

class TestStyleSheets : public QObject
{
    Q_OBJECT

private slots:
    void windowRules_data();
    void windowRules();
    void windowRulesStandInOrder();
    void popups_data();
    void popups();
    void themeSetting_data();
    void themeSetting();
    void applicationStyleSheet();
    void officialBrandingHasNoPath();

private:
    static QDir configuration()
    {
        QDir dir(QCoreApplication::applicationDirPath());
        dir.mkpath(QStringLiteral("../configuration"));
        dir.cd(QStringLiteral("../configuration"));
        return dir;
    }
    static void write(const QString& name, const QByteArray& content)
    {
        QFile file(configuration().filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
};

namespace {

struct RuleRow
{
    const char* selector;
    const char* declarations; // separated by "; "
};

// In the style sheet's order. %11 to %14 are the disabled rules' colours.
constexpr RuleRow windowRuleRows[] = {
    {"QWidget#miniBarWindow", "background-color: %1; border: 1px solid %2; border-radius: 0px"},
    {"QWidget#miniBarCollapsedPage, QWidget#miniBarExpandedPage", "background-color: %1"},
    {"LabelButton#miniBarInfoButton",
     "background-color: %3; border: none; border-top: 2px solid %1; border-bottom: 2px solid %1; "
     "border-radius: 0px; padding: 0px; margin: 0px"},
    {"LabelButton#miniBarInfoButton:hover", "background-color: %4"},
    {"LabelButton#miniBarInfoButton:pressed", "background-color: %5"},
    {"LabelButton#miniBarInfoButton:checked", "background-color: %6"},
    {"LabelButton#miniBarInfoButton QLabel#textLabel",
     "color: %7; background: transparent; font-size: 15px; font-weight: 600"},
    {"LabelButton#miniBarInfoButton QLabel#infoLabel",
     "color: %8; background: transparent; font-size: 14px; font-weight: 600"},
    {"LabelButton#miniBarInfoButton QLabel#infoLabel[parentChecked=\"false\"]", "color: %8"},
    {"LabelButton#miniBarInfoButton:checked QLabel#textLabel", "color: %7"},
    {"LabelButton#miniBarInfoButton:checked QLabel#infoLabel[parentChecked=\"true\"]", "color: %9"},
    {"QPushButton#miniBarToggleButton",
     "color: %7; background-color: %3; border: none; border-top: 2px solid %1; border-bottom: 2px solid %1; "
     "border-radius: 0px; font-family: \"Segoe UI Symbol\"; font-size: 12px; font-weight: 700; padding: 0px; "
     "padding-left: 0px; padding-right: 0px; padding-top: 0px; padding-bottom: 0px; margin: 0px; "
     "min-height: 28px; max-height: 28px"},
    {"QPushButton#miniBarToggleButton:hover", "background-color: %4"},
    {"QPushButton#miniBarToggleButton:pressed", "background-color: %5"},
    {"QPushButton#miniBarCommandButton",
     "color: %7; background-color: %3; border: none; border-top: 2px solid %1; border-bottom: 2px solid %1; "
     "border-radius: 0px; font-size: 15px; font-weight: 600; padding: 0px; margin: 0px; min-height: 60px; "
     "max-height: 60px"},
    {"QPushButton#miniBarCommandButton:hover", "background-color: %4"},
    {"QPushButton#miniBarCommandButton:pressed", "background-color: %5"},
    {"LabelButton#miniBarInfoButton:disabled", "background-color: %10"},
    {"LabelButton#miniBarInfoButton:disabled QLabel#textLabel", "color: %7"},
    {"LabelButton#miniBarInfoButton:disabled QLabel#infoLabel", "color: %8"},
    {"LabelButton#miniBarInfoButton:disabled:checked QLabel#infoLabel[parentChecked=\"true\"]", "color: %9"},
};

} // namespace

void TestStyleSheets::windowRules_data()
{
    QTest::addColumn<bool>("light");
    QTest::addColumn<QString>("selector");
    QTest::addColumn<QString>("expected");
    for (bool light : {false, true}) {
        for (const RuleRow& row : windowRuleRows) {
            QTest::addRow("%s %s", light ? "light" : "dark", row.selector)
                << light << QString::fromLatin1(row.selector)
                << filled(QString::fromLatin1(row.declarations), windowColours[light], 10);
        }
    }
}

void TestStyleSheets::windowRules()
{
    QFETCH(bool, light);
    QFETCH(QString, selector);
    QFETCH(QString, expected);
    QCOMPARE(declarations(miniBarStyleSheet(light), selector), expected.split(QStringLiteral("; ")));
}

void TestStyleSheets::windowRulesStandInOrder()
{
    const QString sheet = miniBarStyleSheet(true);
    QVERIFY(sheet.startsWith(QLatin1Char('\n')));
    QVERIFY(!sheet.contains(QLatin1Char('%')));
    QStringList selectors;
    const QStringList lines = sheet.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        if (line.endsWith(QStringLiteral(" {")))
            selectors.append(line.chopped(2));
    }
    QStringList expected;
    for (const RuleRow& row : windowRuleRows)
        expected.append(QString::fromLatin1(row.selector));
    QCOMPARE(selectors, expected);
}

void TestStyleSheets::popups_data()
{
    QTest::addColumn<bool>("light");
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<QString>("expected");

    const QString rules[2] = {
        QStringLiteral(
            "QDialog#NAME { background-color: #000000; border: 1px solid #3E4349; border-radius: 0px;}"
            "QDialog#NAME QLabel#titleLabel { font-weight: bold; font-size: 16pt; color: #ffffff; "
            "background-color: #0001cf; padding-left: 5px; min-height: 33px; max-height: 33px; "
            "margin-left: 8px; margin-top: 5px; margin-right: 8px; margin-bottom: 5px;}"),
        QStringLiteral(
            "QDialog#NAME { background-color: #ffffff; border: 1px solid #bab4af; border-radius: 0px;}"
            "QDialog#NAME QLabel#titleLabel { font-weight: bold; font-size: 16pt; color: #3c2a22; "
            "background-color: #faf6f3; padding-left: 5px; min-height: 33px; max-height: 33px; "
            "margin-left: 8px; margin-top: 5px; margin-right: 8px; margin-bottom: 5px;}")};
    const QString modRules =
        QStringLiteral("P InfoButton, P LabelButton { background-color: %1; border: none; outline: 0px;}"
                       "P InfoButton:checked, P LabelButton:checked { background-color: %2;}"
                       "P InfoButton > QLabel, P LabelButton > QLabel, P SwitchButton > QLabel { "
                       "background-color: transparent;}"
                       "P SwitchButton QWidget { background-color: transparent; border: none;}"
                       "P SwitchButton QPushButton#btnOn:checked { background-color: %3;}"
                       "P SwitchButton QPushButton#btnOff:checked { background-color: %4;}"
                       "P QPushButton#remoteModCommandButton { color: %5; background-color: %1; border: "
                       "none; font-size: 14px; "
                       "font-weight: 600;}"
                       "P QPushButton#remoteModCommandButton:pressed { background-color: %2;}");
    const QString sweepName = QStringLiteral("miniBarHelperSweepPopup");
    const QString modName = QStringLiteral("miniBarHelperModPopup");
    for (bool light : {false, true}) {
        const char* theme = light ? "light" : "dark";
        QTest::addRow("%s sweep", theme) << light << sweepPopupStyleSheet(light)
                                         << QString(rules[light]).replace(QStringLiteral("NAME"), sweepName);
        QString mod =
            QString(modRules).replace(QStringLiteral("P "), QStringLiteral("QDialog#%1 ").arg(modName));
        QTest::addRow("%s mod", theme) << light << modPopupStyleSheet(light)
                                       << QString(rules[light]).replace(QStringLiteral("NAME"), modName) +
                                              filled(mod, modColours[light], 5);
    }
}

void TestStyleSheets::popups()
{
    QFETCH(QString, sheet);
    QTEST(sheet, "expected");
}

void TestStyleSheets::themeSetting_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<bool>("light");

    QTest::newRow("Dark") << QByteArray("[APP]\nTheme=Dark\n") << false;
    QTest::newRow("dark") << QByteArray("[APP]\nTheme=dark\n") << false;
    QTest::newRow("DARK") << QByteArray("[APP]\nTheme=DARK\n") << false;
    QTest::newRow("trailing blank") << QByteArray("[APP]\nTheme=\"Dark \"\n") << true;
    QTest::newRow("Light") << QByteArray("[APP]\nTheme=Light\n") << true;
    QTest::newRow("other word") << QByteArray("[APP]\nTheme=Blue\n") << true;
    QTest::newRow("list") << QByteArray("[APP]\nTheme=Dark, Dark\n") << true;
    QTest::newRow("other group") << QByteArray("[UI]\nTheme=Dark\n") << true;
    QTest::newRow("no key") << QByteArray("[APP]\nLanguage=English\n") << true;
    QTest::newRow("no text at all") << QByteArray() << true;
    QTest::newRow("no INI file") << QByteArray("\0\1\2[[[", 6) << true;
}

void TestStyleSheets::themeSetting()
{
    QFETCH(QByteArray, settings);
    write(QStringLiteral("Settings.ini"), settings);
    QTEST(readThemeSetting(), "light");
    QVERIFY(configuration().remove(QStringLiteral("Settings.ini")));
    QVERIFY(readThemeSetting());
    QVERIFY(!configuration().exists(QStringLiteral("Settings.ini"))); // reading writes nothing
}

void TestStyleSheets::applicationStyleSheet()
{
    QCOMPARE(loadApplicationStyleSheet(true), QString());
    write(QStringLiteral("theme_light.css"), "/* \xC2\xB5 light */");
    write(QStringLiteral("theme.css"), "/* dark */");
    // The official build looks for no branding, even where one lies.
    QVERIFY(configuration().mkpath(QStringLiteral("branding/official")));
    write(QStringLiteral("branding/official/theme.css"), "/* branding */");
    QCOMPARE(loadApplicationStyleSheet(true), QString::fromUtf8("/* \xC2\xB5 light */"));
    QCOMPARE(loadApplicationStyleSheet(false), QStringLiteral("/* dark */"));
    QVERIFY(configuration().removeRecursively());
    QVERIFY(configuration().mkpath(QStringLiteral("theme.css"))); // a folder in the file's place
    QCOMPARE(loadApplicationStyleSheet(false), QString());
    QVERIFY(configuration().removeRecursively());
}

void TestStyleSheets::officialBrandingHasNoPath()
{
    QCOMPARE(brandingStyleSheetPath(true), QString());
    QCOMPARE(brandingStyleSheetPath(false), QString());
}

QTEST_GUILESS_MAIN(TestStyleSheets)
#include "tst_style_sheets.moc"
