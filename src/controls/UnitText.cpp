#include "controls/UnitText.h"

#include <QCoreApplication>
#include <algorithm>

namespace Controls {
namespace {

// Letters that stand for different powers of ten in capitals and in small.
struct CapitalPrefix
{
    char16_t capital;
    char16_t small;
    const char* capitalMeaning;
    const char* smallFactor;
};

constexpr CapitalPrefix capitalPrefixes[] = {
    {u'M', u'm', QT_TRANSLATE_NOOP("QuantityText", "mega"), "0.001"},
    {u'P', u'p', QT_TRANSLATE_NOOP("QuantityText", "peta"), "1e-12"},
};

// Only ASCII letters: full case folding would take the Greek capital mu, which looks like an M, for a micro.
QString lowered(QStringView text)
{
    QString result = text.toString();
    for (QChar& c : result) {
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) {
            c = QChar(c.unicode() + (u'a' - u'A'));
        }
    }
    return result;
}

// The micro sign in the place of its two stand-ins, the Greek letter mu and the letter u.
QString withMicroSign(QString text)
{
    const QChar first = text.at(0);
    if (first == QChar(0x03bc) || first == QLatin1Char('u') || first == QLatin1Char('U')) {
        text[0] = QChar(0x00b5);
    }
    return text;
}

template <typename Predicate>
int findUnit(const QVector<Unit>& units, Predicate predicate)
{
    const auto found = std::find_if(units.cbegin(), units.cend(), predicate);
    return found == units.cend() ? -1 : int(found - units.cbegin());
}

int findText(const QVector<Unit>& units, const QString& text)
{
    return findUnit(units, [&](const Unit& unit) { return unit.text == text; });
}

// A unit whose text starts with exactly this letter.
int findFirstLetter(const QVector<Unit>& units, QChar letter)
{
    return findUnit(units, [&](const Unit& unit) { return unit.text.startsWith(letter); });
}

// The one unit that `matches` finds, -1 when there are none or several.
template <typename Predicate>
int findOnly(const QVector<Unit>& units, Predicate matches)
{
    return std::count_if(units.cbegin(), units.cend(), matches) == 1 ? findUnit(units, matches) : -1;
}

// "GHz, MHz, kHz or Hz".
QString unitList(const QVector<Unit>& units)
{
    QString list = units.first().text;
    for (int i = 1; i < units.size(); ++i) {
        const bool isLast = i == units.size() - 1;
        list = (isLast ? QCoreApplication::translate("QuantityText", "%1 or %2")
                       : QCoreApplication::translate("QuantityText", "%1, %2"))
                   .arg(list, units.at(i).text);
    }
    return list;
}

int findAnyCase(const QVector<Unit>& units, const QString& text)
{
    const QString wanted = lowered(text);
    return findOnly(units, [&](const Unit& unit) { return lowered(unit.text) == wanted; });
}

// "m" for "MHz": only where there is more than one unit to choose from.
int findLetter(const QVector<Unit>& units, const QString& text)
{
    if (units.size() < 2 || text.size() != 1) {
        return -1;
    }
    const int exact = findFirstLetter(units, text.at(0));
    const QString wanted = lowered(text);
    return exact >= 0
               ? exact
               : findOnly(units, [&](const Unit& unit) { return lowered(unit.text.left(1)) == wanted; });
}

// Why `text` must not be taken for this unit, which it only means if letter case is ignored; empty: it may.
QString prefixRefusal(const QString& text, const Unit& meant, const QVector<Unit>& units)
{
    for (const CapitalPrefix& prefix : capitalPrefixes) {
        const bool capitalForSmall =
            text.at(0) == prefix.capital && meant.text.startsWith(QChar(prefix.small));
        const bool smallForCapital =
            text.at(0) == prefix.small && meant.text.startsWith(QChar(prefix.capital));
        if (capitalForSmall) {
            return QCoreApplication::translate("QuantityText", "A capital %1 stands for %2. Use %3.")
                .arg(QChar(prefix.capital))
                .arg(QCoreApplication::translate("QuantityText", prefix.capitalMeaning), unitList(units));
        }
        // "mHz" is well-formed with the small letter; a bare "m" or a careless "mhz" is not.
        if (smallForCapital && text.midRef(1) == meant.text.midRef(1)) {
            return QCoreApplication::translate("QuantityText", "%1 could mean %2 or %3 %4. Use %2 or %4.")
                .arg(text, meant.text, QLatin1String(prefix.smallFactor), meant.text.mid(1));
        }
    }
    return {};
}

// "GH" on the way to "GHz": only where there is more than one unit to choose from.
bool isBegun(const QVector<Unit>& units, const QString& text)
{
    const QString start = lowered(text);
    const auto continues = [&](const Unit& unit) {
        return unit.text.size() > start.size() && lowered(unit.text).startsWith(start);
    };
    return units.size() > 1 && std::any_of(units.cbegin(), units.cend(), continues);
}

} // namespace

ParsedUnit parseUnit(QStringView typed, const QVector<Unit>& units)
{
    if (units.isEmpty()) {
        return {
            -1, false,
            QCoreApplication::translate("QuantityText", "This value has no unit. Type the number alone.")};
    }
    const QString raw = typed.toString();
    const QString text = findText(units, raw) >= 0 ? raw : withMicroSign(raw);
    const int exact = findText(units, text);
    if (exact >= 0) {
        return {exact, false, {}};
    }
    const int sameLetters = findAnyCase(units, text);
    const int meant = sameLetters >= 0 ? sameLetters : findLetter(units, text);
    if (meant >= 0) {
        const QString refusal = prefixRefusal(text, units.at(meant), units);
        return {refusal.isEmpty() ? meant : -1, false, refusal};
    }
    return {-1, isBegun(units, text),
            QCoreApplication::translate("QuantityText", "This is not a unit of the value. Use %1.")
                .arg(unitList(units))};
}

} // namespace Controls
