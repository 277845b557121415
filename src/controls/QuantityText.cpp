#include "controls/QuantityText.h"

#include "controls/UnitText.h"
#include "utils/Decimal.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QStringView>
#include <algorithm>
#include <cmath>
#include <optional>

namespace Controls {
namespace {

constexpr int maximumLength = 1200;     // of a text that is read; every double fits with all its digits
constexpr int maximumPlainLength = 24;  // of a number without exponent
constexpr int maximumMagnitude = 400;   // digits before or after the mark that a double could still hold
constexpr int maximumExponent = 100000; // above every text that is read

constexpr char16_t minusSign = 0x2212;
constexpr char16_t arabicDecimalMark = 0x066b;

ParsedQuantity refused(const QString& sentence)
{
    return {ParsedQuantity::Status::Refused, 0.0, -1, sentence};
}

ParsedQuantity incomplete(const QString& sentence)
{
    return {ParsedQuantity::Status::Incomplete, 0.0, -1, sentence};
}

QString numberWanted()
{
    return QCoreApplication::translate("QuantityText", "Type a number, such as 2.4 or -20.");
}

QString notOneNumber()
{
    return QCoreApplication::translate("QuantityText",
                                       "This is not one plain number. Type it like 1234.5 or 1e9.");
}

bool isDecimalMark(QChar c)
{
    return c == QLatin1Char('.') || c == QLatin1Char(',') || c == QChar(arabicDecimalMark);
}

// Marks that group digits and never start the decimals: blanks (plain, no-break, narrow no-break, thin),
// apostrophes and the Arabic group mark.
bool isGroupMark(QChar c)
{
    static const QString marks = QStringLiteral(" \u00a0\u202f\u2009'\u2019\u066c");
    return marks.contains(c);
}

// Reads a text from left to right. Digits may come from any script, but all from the same one.
class Reader
{
public:
    explicit Reader(QStringView text)
        : m_rest(text)
    {}

    [[nodiscard]] QStringView rest() const { return m_rest; }
    [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }
    void skip(int count) { m_rest = m_rest.mid(count); }

    // A sign, if there is one; true for a minus.
    bool takeSign()
    {
        if (atEnd()) {
            return false;
        }
        const QChar c = m_rest.front();
        const bool minus = c == QLatin1Char('-') || c == QChar(minusSign);
        if (minus || c == QLatin1Char('+')) {
            skip(1);
        }
        return minus;
    }

    // The digits up to the next other character, as '0' to '9'.
    QByteArray takeDigits()
    {
        QByteArray digits;
        while (startsWithDigit(m_rest)) {
            digits.append(char('0' + m_rest.front().digitValue()));
            skip(1);
        }
        return digits;
    }

    // The mark before the next digits. A group mark stands between two digits only: other blanks end the
    // number.
    QChar takeMark(bool afterDigit)
    {
        if (atEnd()) {
            return {};
        }
        const QChar c = m_rest.front();
        if (!isDecimalMark(c) && !(isGroupMark(c) && afterDigit && startsWithDigit(m_rest.mid(1)))) {
            return {};
        }
        skip(1);
        return c;
    }

private:
    bool startsWithDigit(QStringView text)
    {
        if (text.isEmpty() || !text.front().isDigit()) {
            return false;
        }
        const int zero = text.front().unicode() - text.front().digitValue();
        if (m_zero == 0) {
            m_zero = zero;
        }
        return zero == m_zero;
    }

    QStringView m_rest;
    int m_zero = 0; // the digit zero of the script, 0 before the first digit
};

// The digits of a number and the marks between them: marks[i] stands before runs[i + 1].
struct Digits
{
    QByteArrayList runs;
    QVector<QChar> marks;
};

Digits takeDigitsAndMarks(Reader& reader)
{
    Digits digits;
    digits.runs.append(reader.takeDigits());
    for (;;) {
        const QChar mark = reader.takeMark(!digits.runs.last().isEmpty());
        if (mark.isNull()) {
            return digits;
        }
        digits.marks.append(mark);
        digits.runs.append(reader.takeDigits());
    }
}

// The last mark is the decimal mark if it can be one and does not also stand before it.
bool hasDecimals(const Digits& digits)
{
    const QVector<QChar>& marks = digits.marks;
    return !marks.isEmpty() && isDecimalMark(marks.last()) && marks.count(marks.last()) == 1;
}

// Every mark but the decimal one must be the same and part the digits into threes. With nothing after the
// decimal mark, "2.412," would be more likely a value at the end of a clause than 2412.
bool isGroupedInThrees(const Digits& digits, bool decimals)
{
    const int groups = digits.runs.size() - (decimals ? 1 : 0);
    if (groups == 1) {
        return true;
    }
    const QByteArray& first = digits.runs.first();
    bool valid = first.size() >= 1 && first.size() <= 3 && first.at(0) != '0';
    valid = valid && !digits.runs.last().isEmpty() && digits.marks.first() != QChar(arabicDecimalMark);
    for (int i = 1; i < groups; ++i) {
        valid = valid && digits.runs.at(i).size() == 3 && digits.marks.at(i - 1) == digits.marks.first();
    }
    return valid;
}

// "1,234" is 1.234 in one country and 1234 in another. "0,412", "1,23" and "1234,567" are not: no group
// starts with 0, and a group has three digits.
bool isAmbiguous(const Digits& digits)
{
    if (digits.marks.size() != 1 || digits.marks.first() != QLatin1Char(',')) {
        return false;
    }
    const QByteArray& before = digits.runs.first();
    return before.size() >= 1 && before.size() <= 3 && before.at(0) != '0' && digits.runs.last().size() == 3;
}

QString ambiguous(const Digits& digits, bool negative)
{
    const QString sign = QLatin1String(negative ? "-" : "");
    return QCoreApplication::translate("QuantityText", "This could mean %1 or %2. Type it without the comma.")
        .arg(sign + QString::fromLatin1(digits.runs.join('.')),
             sign + QString::fromLatin1(digits.runs.join()));
}

// The power of ten after "e"; 0 if there is none. `complete` turns false when the digits are still missing.
int takeExponent(Reader& reader, bool& complete)
{
    Reader ahead = reader;
    if (ahead.atEnd() ||
        (ahead.rest().front() != QLatin1Char('e') && ahead.rest().front() != QLatin1Char('E'))) {
        return 0;
    }
    ahead.skip(1);
    const bool negative = ahead.takeSign();
    const QByteArray digits = ahead.takeDigits();
    complete = !digits.isEmpty() || !ahead.atEnd();
    if (digits.isEmpty()) {
        return 0;
    }
    reader = ahead;
    int exponent = 0;
    for (const char digit : digits) {
        exponent = qMin(exponent * 10 + (digit - '0'), maximumExponent);
    }
    return negative ? -exponent : exponent;
}

// digits * 10^exponent.
struct Number
{
    QByteArray digits;
    int exponent = 0;
    bool negative = false;
};

// The number at the start of the text; when there is none, `problem` says why.
std::optional<Number> takeNumber(Reader& reader, ParsedQuantity& problem)
{
    const bool negative = reader.takeSign();
    const Digits digits = takeDigitsAndMarks(reader);
    const QByteArray all = digits.runs.join();
    const bool decimals = hasDecimals(digits);
    if (all.isEmpty()) {
        const bool begun = reader.atEnd() && digits.marks.size() <= 1;
        problem = begun ? incomplete(numberWanted()) : refused(numberWanted());
        return {};
    }
    if (isAmbiguous(digits)) {
        problem = refused(ambiguous(digits, negative));
        return {};
    }
    if (!isGroupedInThrees(digits, decimals)) {
        problem = refused(notOneNumber());
        return {};
    }
    bool complete = true;
    const int exponent = takeExponent(reader, complete);
    if (!complete) {
        problem = incomplete(QCoreApplication::translate(
            "QuantityText", "The digits after the e are missing. Type it like 1e9."));
        return {};
    }
    return Number{all, exponent - (decimals ? digits.runs.last().size() : 0), negative};
}

// The double nearest to the number. Its text is shifted, not its value: nothing is rounded twice.
ParsedQuantity valueOf(const Number& number, int unitIndex)
{
    const auto firstDigit =
        std::find_if(number.digits.cbegin(), number.digits.cend(), [](char c) { return c != '0'; });
    const int significant = int(number.digits.cend() - firstDigit);
    if (significant == 0) {
        return {ParsedQuantity::Status::Value, 0.0, unitIndex, {}};
    }
    const int magnitude = qBound(-maximumMagnitude, significant + number.exponent, maximumMagnitude);
    const QByteArray text =
        number.digits.right(significant) + 'e' + QByteArray::number(magnitude - significant);
    const double value = text.toDouble();
    if (std::isinf(value)) {
        return refused(
            QCoreApplication::translate("QuantityText", "This number is too large. Type a smaller one."));
    }
    if (value == 0.0) {
        return refused(
            QCoreApplication::translate("QuantityText", "This number is too close to zero. Type 0 instead."));
    }
    return {ParsedQuantity::Status::Value, number.negative ? -value : value, unitIndex, {}};
}

} // namespace

ParsedQuantity parseQuantity(const QString& text, const QVector<Unit>& units, int unitIndex)
{
    const QStringView trimmed = QStringView(text).trimmed();
    if (trimmed.size() > maximumLength) {
        return refused(QCoreApplication::translate("QuantityText",
                                                   "This text is too long for a number. Type fewer digits."));
    }
    Reader reader(trimmed);
    ParsedQuantity problem;
    std::optional<Number> number = takeNumber(reader, problem);
    if (!number) {
        return problem;
    }
    const QStringView unitText = reader.rest().trimmed();
    if (unitText.isEmpty()) {
        const bool known = unitIndex >= 0 && unitIndex < units.size();
        number->exponent += known ? units.at(unitIndex).exponent : 0;
        return valueOf(*number, -1);
    }
    if (std::any_of(unitText.cbegin(), unitText.cend(), [](QChar c) { return c.isDigit(); })) {
        return refused(notOneNumber());
    }
    const ParsedUnit unit = parseUnit(unitText, units);
    if (unit.index < 0) {
        return unit.begun ? incomplete(unit.refusal) : refused(unit.refusal);
    }
    number->exponent += units.at(unit.index).exponent;
    return valueOf(*number, unit.index);
}

QString formatQuantity(double value, const Unit& unit)
{
    if (!std::isfinite(value)) {
        return {};
    }
    const Utils::Decimal number = Utils::shifted(Utils::shortestDecimal(value), -unit.exponent);
    QString plain = Utils::plainText(number);
    if (plain.size() <= maximumPlainLength) {
        return plain;
    }
    const Utils::Decimal mantissa = Utils::shifted(number, 1 - number.pointPosition);
    return Utils::plainText(mantissa) + QLatin1Char('e') + QString::number(number.pointPosition - 1);
}

} // namespace Controls
