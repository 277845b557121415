#include "app/InterfaceFont.h"

#include "controls/Emphasis.h"

#include <QApplication>
#include <QFont>
#include <QLocale>

namespace {

constexpr int usualSize = 14; // pixels, where neither a widget nor a style sheet says more

constexpr QLatin1String latin("Roboto");
constexpr QLatin1String chinese("Droid Sans Fallback");
constexpr QLatin1String japanese("MotoyaLCedar");
// After the two others: it has fewer Han characters.
constexpr QLatin1String korean("NanumBarunGothic");

// What the bar's style sheet names for its arrows; where it is missing, they are of the usual family.
constexpr QLatin1String arrows("Segoe UI Symbol");

// Their own scripts' faces are half bold in no family, and the digits beside them lose that weight too.
bool knowsNoDemiBold(const QString& locale)
{
    switch (QLocale(locale).language()) {
    case QLocale::Chinese:
    case QLocale::Japanese:
    case QLocale::Korean:
        return true;
    default:
        return false;
    }
}

} // namespace

QString interfaceFamily()
{
    return latin;
}

QStringList fallbackFamilies(const QString& locale)
{
    if (QLocale(locale).language() == QLocale::Japanese) {
        return {japanese, chinese, korean};
    }
    return {chinese, japanese, korean};
}

void useInterfaceFont(const QString& locale)
{
    const QStringList fallbacks = fallbackFamilies(locale);
    // By substitution, so that it holds for every font of the family, wherever its name comes from.
    QFont::removeSubstitutions(latin);
    QFont::insertSubstitutions(latin, fallbacks);
    QFont::removeSubstitutions(arrows);
    QFont::insertSubstitutions(arrows, QStringList(latin) + fallbacks);
    QFont font(latin);
    font.setPixelSize(usualSize);
    QApplication::setFont(font);
    Controls::setEmphasis(knowsNoDemiBold(locale) ? QFont::Bold : QFont::DemiBold);
}
