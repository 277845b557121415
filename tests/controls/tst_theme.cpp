#include "controls/CommandButton.h"
#include "controls/LabelButton.h"
#include "controls/ThemeManager.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QMetaEnum>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <cmath>

using Controls::ThemeManager;

namespace {

QString styleSheet(ThemeManager::Theme theme)
{
    const QString name =
        theme == ThemeManager::Light ? QStringLiteral("theme_light.css") : QStringLiteral("theme.css");
    QFile file(QStringLiteral(CONFIGURATION_DIR "/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString withoutComments(QString css)
{
    static const QRegularExpression comment(QStringLiteral("/\\*.*?\\*/"),
                                            QRegularExpression::DotMatchesEverythingOption);
    return css.remove(comment);
}

// Every colour that a declaration names: "#rrggbb" or "rgba(r, g, b, a)". Other spellings are found as
// invalid.
QVector<QColor> colorsIn(const QString& css)
{
    static const QRegularExpression declaration(QStringLiteral("[:\\s](#[0-9a-fA-F]+|rgba?\\([^)]*\\))"));
    static const QRegularExpression rgba(QStringLiteral("rgba\\((\\d+), (\\d+), (\\d+), (\\d+)\\)"));
    static const QRegularExpression body(QStringLiteral("\\{([^}]*)\\}"));
    QVector<QColor> colors;
    for (auto block = body.globalMatch(css); block.hasNext();) {
        for (auto match = declaration.globalMatch(block.next().captured(1)); match.hasNext();) {
            const QString text = match.next().captured(1);
            const QRegularExpressionMatch parts = rgba.match(text);
            const auto part = [&](int i) { return parts.captured(i).toInt(); };
            colors.append(parts.hasMatch() ? QColor(part(1), part(2), part(3), part(4)) : QColor(text));
        }
    }
    return colors;
}

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor over(const QColor& top, const QColor& below)
{
    const double a = top.alphaF();
    return QColor::fromRgbF(top.redF() * a + below.redF() * (1 - a),
                            top.greenF() * a + below.greenF() * (1 - a),
                            top.blueF() * a + below.blueF() * (1 - a));
}

// WCAG contrast ratio, 1 to 21.
double contrast(const QColor& text, const QColor& background)
{
    const double one = luminance(over(text, background));
    const double other = luminance(background);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

struct Pair
{
    ThemeManager::Role top;
    ThemeManager::Role below;
    double minimum;
};

constexpr double normalText = 4.5; // WCAG AA
constexpr double mark = 3.0;       // WCAG AA for what is no text

// What stands on what.
constexpr Pair pairs[] = {
    {ThemeManager::Text, ThemeManager::Surface, normalText},
    {ThemeManager::Text, ThemeManager::Raised, normalText},
    {ThemeManager::Text, ThemeManager::Sunken, normalText},
    {ThemeManager::Text, ThemeManager::Hovered, normalText},
    {ThemeManager::Text, ThemeManager::Pressed, normalText},
    {ThemeManager::Text, ThemeManager::Accent, normalText},
    {ThemeManager::Text, ThemeManager::ListItemDefault, normalText},
    {ThemeManager::Text, ThemeManager::ListItemSelected, normalText},
    {ThemeManager::SecondaryText, ThemeManager::Surface, normalText},
    {ThemeManager::SecondaryText, ThemeManager::Raised, normalText},
    {ThemeManager::SecondaryText, ThemeManager::Sunken, normalText},
    {ThemeManager::SecondaryText, ThemeManager::Hovered, normalText},
    {ThemeManager::SecondaryText, ThemeManager::Pressed, normalText},
    {ThemeManager::Refused, ThemeManager::Surface, normalText},
    {ThemeManager::Refused, ThemeManager::Raised, normalText},
    {ThemeManager::OnText, ThemeManager::On, normalText},
    {ThemeManager::Text, ThemeManager::Off, normalText},
    {ThemeManager::DisabledText, ThemeManager::Surface, mark},
    {ThemeManager::DisabledText, ThemeManager::Raised, mark},
    {ThemeManager::DisabledText, ThemeManager::Sunken, mark},
    {ThemeManager::Outline, ThemeManager::Surface, mark},
    {ThemeManager::Outline, ThemeManager::Raised, mark},
    {ThemeManager::Outline, ThemeManager::Sunken, mark},
    {ThemeManager::FocusRing, ThemeManager::Surface, mark},
    {ThemeManager::FocusRing, ThemeManager::Raised, mark},
    {ThemeManager::FocusRing, ThemeManager::Sunken, mark},
    {ThemeManager::FocusRing, ThemeManager::Accent, mark},
    {ThemeManager::FocusRing, ThemeManager::Pressed, mark},
};

QByteArray roleName(ThemeManager::Role role)
{
    return QMetaEnum::fromType<ThemeManager::Role>().valueToKey(role);
}

} // namespace

class ThemeTest final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void knownColors_data();
    void knownColors();
    void everyRoleHasAColorInBothThemes();
    void tellsChangesOnly();
    void styleSheetsUseRolesOnly_data();
    void styleSheetsUseRolesOnly();
    void styleSheetsHaveTheSameRules();
    void textsAreLegible_data();
    void textsAreLegible();
    void switchingIsSeen();
    void popupTilesHaveNoEdge_data();
    void popupTilesHaveNoEdge();
};

void ThemeTest::cleanup()
{
    qApp->setStyleSheet(QString());
    ThemeManager::instance().setTheme(ThemeManager::Light);
}

void ThemeTest::knownColors_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<QString>("light");
    QTest::addColumn<QString>("dark");
    QTest::newRow("surface") << int(ThemeManager::Surface) << "#ffe2ddd7"
                             << "#ff1f2329";
    QTest::newRow("raised") << int(ThemeManager::Raised) << "#fffaf6f3"
                            << "#ff252e35";
    QTest::newRow("sunken") << int(ThemeManager::Sunken) << "#ffdad1ca"
                            << "#ff171a1f";
    QTest::newRow("border") << int(ThemeManager::Border) << "#ffbab4af"
                            << "#ff3e4349";
    QTest::newRow("text") << int(ThemeManager::Text) << "#ff3c2a22"
                          << "#ffffffff";
    QTest::newRow("secondary") << int(ThemeManager::SecondaryText) << "#bf3c2a22"
                               << "#ffaec4d0";
    QTest::newRow("accent") << int(ThemeManager::Accent) << "#ff63acf6"
                            << "#ff2f536c";
    QTest::newRow("on") << int(ThemeManager::On) << "#ff63acf6"
                        << "#ff00ce01";
    QTest::newRow("refused") << int(ThemeManager::Refused) << "#ffb3261e"
                             << "#ffff8a80";
}

void ThemeTest::knownColors()
{
    QFETCH(const int, role);
    const auto named = [role](ThemeManager::Theme theme) {
        return ThemeManager::color(ThemeManager::Role(role), theme).name(QColor::HexArgb);
    };
    QTEST(named(ThemeManager::Light), "light");
    QTEST(named(ThemeManager::Dark), "dark");
}

void ThemeTest::everyRoleHasAColorInBothThemes()
{
    const QMetaEnum roles = QMetaEnum::fromType<ThemeManager::Role>();
    QVERIFY(roles.keyCount() > 0);
    for (int i = 0; i < roles.keyCount(); ++i) {
        for (const auto theme : {ThemeManager::Light, ThemeManager::Dark}) {
            const QColor color = ThemeManager::color(ThemeManager::Role(roles.value(i)), theme);
            QVERIFY2(color.isValid() && color.alpha() > 0, roles.key(i));
        }
    }
}

void ThemeTest::tellsChangesOnly()
{
    qRegisterMetaType<ThemeManager::Theme>("Controls::ThemeManager::Theme");
    ThemeManager& manager = ThemeManager::instance();
    QSignalSpy changes(&manager, &ThemeManager::themeChanged);
    manager.setTheme(ThemeManager::Light);
    QCOMPARE(changes.count(), 0);
    manager.setTheme(ThemeManager::Dark);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(manager.color(ThemeManager::Text), QColor(Qt::white));
}

void ThemeTest::styleSheetsUseRolesOnly_data()
{
    QTest::addColumn<int>("theme");
    QTest::newRow("light") << int(ThemeManager::Light);
    QTest::newRow("dark") << int(ThemeManager::Dark);
}

void ThemeTest::styleSheetsUseRolesOnly()
{
    QFETCH(const int, theme);
    const QString css = withoutComments(styleSheet(ThemeManager::Theme(theme)));
    QVERIFY(!css.isEmpty());
    QSet<QRgb> roles;
    const QMetaEnum roleEnum = QMetaEnum::fromType<ThemeManager::Role>();
    for (int i = 0; i < roleEnum.keyCount(); ++i) {
        roles.insert(
            ThemeManager::color(ThemeManager::Role(roleEnum.value(i)), ThemeManager::Theme(theme)).rgba());
    }
    const QVector<QColor> colors = colorsIn(css);
    QVERIFY(colors.size() > 50);
    for (const QColor& color : colors) {
        QVERIFY2(color.isValid() && roles.contains(color.rgba()), qPrintable(color.name(QColor::HexArgb)));
    }
    // A colour by name would slip through the search above.
    static const QRegularExpression named(QStringLiteral(
        "(color|background|border[a-z-]*):[^;]*\\b(white|black|gr[ae]y|red|green|blue|palette)\\b"));
    QVERIFY2(!css.contains(named), qPrintable(named.match(css).captured()));
}

void ThemeTest::styleSheetsHaveTheSameRules()
{
    static const QRegularExpression color(QStringLiteral("#[0-9a-f]{6}\\b|rgba\\([^)]*\\)"));
    const auto rules = [](ThemeManager::Theme theme) {
        QString rest = withoutComments(styleSheet(theme)).replace(color, QStringLiteral("?"));
        return rest.remove(QStringLiteral("_light")); // images are there for both
    };
    QCOMPARE(rules(ThemeManager::Dark), rules(ThemeManager::Light));
}

void ThemeTest::textsAreLegible_data()
{
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("below");
    QTest::addColumn<double>("minimum");
    for (const Pair& pair : pairs) {
        const QByteArray name = roleName(pair.top) + " on " + roleName(pair.below);
        QTest::newRow(name.constData()) << int(pair.top) << int(pair.below) << pair.minimum;
    }
}

void ThemeTest::textsAreLegible()
{
    QFETCH(const int, top);
    QFETCH(const int, below);
    QFETCH(const double, minimum);
    for (const auto theme : {ThemeManager::Light, ThemeManager::Dark}) {
        const double ratio = contrast(ThemeManager::color(ThemeManager::Role(top), theme),
                                      ThemeManager::color(ThemeManager::Role(below), theme));
        QVERIFY2(ratio >= minimum, qPrintable(QStringLiteral("%1 in theme %2").arg(ratio).arg(theme)));
    }
}

void ThemeTest::popupTilesHaveNoEdge_data()
{
    QTest::addColumn<QString>("popup");
    QTest::addColumn<int>("theme");
    for (const auto theme : {ThemeManager::Light, ThemeManager::Dark}) {
        const char* const name = theme == ThemeManager::Light ? "light" : "dark";
        QTest::addRow("sweep, %s", name) << QStringLiteral("miniBarHelperSweepPopup") << int(theme);
        QTest::addRow("command, %s", name) << QString() << int(theme);
    }
}

void ThemeTest::popupTilesHaveNoEdge()
{
    QFETCH(const QString, popup);
    QFETCH(const int, theme);
    qApp->setStyleSheet(styleSheet(ThemeManager::Theme(theme)));
    QDialog dialog;
    dialog.setObjectName(popup);
    QAbstractButton* const tile = popup.isEmpty() ? static_cast<QAbstractButton*>(new CommandButton(&dialog))
                                                  : static_cast<QAbstractButton*>(new LabelButton(&dialog));
    tile->resize(146, 60);
    QCOMPARE(tile->grab().toImage().pixelColor(0, 0),
             ThemeManager::color(ThemeManager::Sunken, ThemeManager::Theme(theme)));
}

void ThemeTest::switchingIsSeen()
{
    QPushButton button;
    button.resize(80, 44);
    for (const auto theme : {ThemeManager::Light, ThemeManager::Dark}) {
        qApp->setStyleSheet(styleSheet(theme));
        QCOMPARE(button.grab().toImage().pixelColor(5, 5), ThemeManager::color(ThemeManager::Sunken, theme));
    }
}

QTEST_MAIN(ThemeTest)

#include "tst_theme.moc"
