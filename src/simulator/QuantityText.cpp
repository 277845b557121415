#include "simulator/QuantityText.h"

#include "utils/NumberText.h"

#include <QRegularExpression>

namespace Simulator {

namespace {

struct Unit
{
    QLatin1Char letter; // of its name; the others of the name may be left away
    double factor;
};

constexpr Unit units[] = {
    {QLatin1Char('g'), 1e9}, {QLatin1Char('m'), 1e6}, {QLatin1Char('k'), 1e3}, {QLatin1Char('h'), 1}};

std::optional<double> factorOf(const QString& unit)
{
    for (const Unit& row : units) {
        if (unit.startsWith(row.letter, Qt::CaseInsensitive))
            return row.factor;
    }
    return std::nullopt;
}

// The number in a text whatever the locale: both "." and "," are decimal marks.
double numberOf(QString text)
{
    return text.replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
}

} // namespace

std::optional<double> parseFrequency(const QString& text, double usualFactor)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"(^\s*(\d+[.,]?\d*|[.,]\d+)\s*((?:[gmk](?:hz)?|hz?)?)\s*$)"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    return numberOf(match.captured(1)) * factorOf(match.captured(2)).value_or(usualFactor);
}

double shownFactor(double hz)
{
    const QString unit = Utils::normalizeFrequency(hz, true, true).section(QLatin1Char(' '), -1);
    return factorOf(unit).value_or(1);
}

std::optional<double> parseLevel(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"(^\s*([+-]?(?:\d+[.,]?\d*|[.,]\d+))\s*(?:dbm?)?\s*$)"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    return numberOf(match.captured(1));
}

} // namespace Simulator
