#include "controls/NumberEntry.h"

#include "controls/DecimalSum.h"

#include <cmath>
#include <utility>

namespace Controls {
namespace {

constexpr QChar minus = QLatin1Char('-');
constexpr QChar point = QLatin1Char('.');
constexpr QChar exponent = QLatin1Char('e');
constexpr ushort typographicMinus = 0x2212;

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

} // namespace

NumberEntry::NumberEntry(const BaseUnitAdapter& scale, const NumericEntry& entry)
    : m_scale(scale)
    , m_limits(scale, entry)
{
    if (entry.step && std::isfinite(*entry.step) && *entry.step > 0.0) {
        m_step = entry.step;
    }
    const bool hasValue = std::isfinite(entry.value);
    const int named = scale.indexOfUnit(entry.unitText);
    m_unitIndex = named >= 0 ? named : scale.indexOfBestUnit(hasValue ? entry.value : 0.0);
    if (hasValue) {
        put(entry.value, m_unitIndex);
        m_given = true;
    }
}

QString NumberEntry::unitText() const
{
    return m_unitIndex >= 0 ? m_scale.units().at(m_unitIndex).text : QString();
}

QString NumberEntry::quantityText() const
{
    const QString unit = unitText();
    return unit.isEmpty() || m_text.isEmpty() ? m_text : m_text + QLatin1Char(' ') + unit;
}

QString NumberEntry::stepText() const
{
    return m_step ? m_limits.quantityText(*m_step) : QString();
}

NumberEntry::Accepted NumberEntry::type(QChar character)
{
    if (character.isLetter() && character.toLower() != exponent) {
        return typeLetter(character);
    }
    beginKey();
    if (isDigit(character)) {
        insert(character);
    } else if (character == point || character == QLatin1Char(',')) {
        typePoint();
    } else if (character == minus || character == QChar(typographicMinus)) {
        typeMinus();
    } else if (character.toLower() == exponent) {
        typeExponent();
    } else if (character != QLatin1Char(' ') && character != QLatin1Char('+')) {
        refuse(tr("\"%1\" is not part of a number.").arg(character));
    }
    return std::nullopt;
}

NumberEntry::Accepted NumberEntry::pressUnit(int unitIndex)
{
    beginKey();
    if (!m_typed && unitIndex != m_unitIndex) {
        put(m_whole, unitIndex);
        return std::nullopt;
    }
    return finish(unitIndex);
}

NumberEntry::Accepted NumberEntry::pressEnter()
{
    beginKey();
    return finish(m_unitIndex);
}

// Of the part in which the cursor stands: the number or its exponent.
void NumberEntry::toggleSign()
{
    beginKey();
    if (!m_typed && m_selected && m_whole != 0.0) {
        put(-m_whole, m_unitIndex);
        return;
    }
    if (m_selected && !m_typed) {
        clear();
    }
    const bool keepSelected = std::exchange(m_selected, false);
    const int mark = exponentMark();
    const int part = mark >= 0 && m_cursor > mark ? mark + 1 : 0;
    if (m_text.mid(part).startsWith(minus)) {
        const int cursor = std::max(part, m_cursor - 1);
        removeAt(part);
        m_cursor = cursor;
    } else {
        const int cursor = m_cursor;
        m_cursor = part;
        insert(minus);
        m_cursor = m_refusal.isEmpty() ? cursor + 1 : cursor;
    }
    m_selected = keepSelected && !m_text.isEmpty();
}

void NumberEntry::backspace()
{
    const bool dropsLetters = !m_openLetters.isEmpty();
    beginKey();
    if (dropsLetters) {
        return; // they were the last thing typed, though not shown
    }
    if (m_selected) {
        clear();
    } else if (m_cursor > 0) {
        removeAt(m_cursor - 1);
    }
}

void NumberEntry::deleteForward()
{
    beginKey();
    if (m_selected) {
        clear();
    } else if (m_cursor < m_text.size()) {
        removeAt(m_cursor);
    }
}

void NumberEntry::clear()
{
    beginKey();
    m_text.clear();
    m_cursor = 0;
    m_selected = false;
    m_typed = true;
    m_given = false;
}

void NumberEntry::moveCursor(Move move)
{
    beginKey();
    const int end = int(m_text.size());
    switch (move) {
    case Move::Left:
        m_cursor = m_selected ? 0 : std::max(0, m_cursor - 1);
        break;
    case Move::Right:
        m_cursor = m_selected ? end : std::min(end, m_cursor + 1);
        break;
    case Move::Home:
        m_cursor = 0;
        break;
    case Move::End:
        m_cursor = end;
        break;
    }
    m_selected = false;
}

void NumberEntry::setCursor(int position)
{
    beginKey();
    m_cursor = qBound(0, position, int(m_text.size()));
    m_selected = false;
}

void NumberEntry::selectAll()
{
    beginKey();
    m_cursor = int(m_text.size());
    m_selected = !m_text.isEmpty();
}

void NumberEntry::paste(const QString& text)
{
    beginKey();
    const ParsedQuantity quantity = parseQuantity(text, m_scale.units(), m_unitIndex);
    switch (quantity.status) {
    case ParsedQuantity::Status::Value:
        put(quantity.value, quantity.unitIndex >= 0 ? quantity.unitIndex : m_unitIndex);
        // Without a unit of its own the number is as good as typed: a unit key may still name it.
        m_typed = quantity.unitIndex < 0;
        m_given = false;
        break;
    case ParsedQuantity::Status::Incomplete:
        refuse(tr("The clipboard holds no number."));
        break;
    case ParsedQuantity::Status::Refused:
        refuse(quantity.refusal);
        break;
    }
}

void NumberEntry::put(double value, int unitIndex)
{
    m_whole = value == 0.0 ? 0.0 : value; // never "-0"
    m_unitIndex = unitIndex;
    m_text = m_limits.shownNumber(m_whole, unitIndex);
    m_cursor = int(m_text.size());
    m_selected = true;
    m_typed = false;
}

void NumberEntry::insert(QChar character)
{
    if (m_selected) {
        clear();
    }
    if (m_text.size() >= maximumLength) {
        refuse(tr("No more than %1 characters.").arg(maximumLength));
        return;
    }
    const bool loneZero = m_text == QLatin1String("0") || m_text == QLatin1String("-0");
    if (loneZero && isDigit(character) && m_cursor == m_text.size()) {
        m_text.chop(1);
        --m_cursor;
    }
    if (m_cursor == 0 && m_text.startsWith(minus)) {
        m_cursor = 1; // the sign stays in front
    }
    m_text.insert(m_cursor++, character);
    m_typed = true;
    m_given = false;
}

void NumberEntry::removeAt(int position)
{
    m_text.remove(position, 1);
    m_cursor = position;
    m_typed = true;
    m_given = false;
}

void NumberEntry::typePoint()
{
    if (m_selected) {
        clear();
    }
    const int mark = exponentMark();
    if (mark >= 0 && m_cursor > mark) {
        refuse(tr("An exponent has no decimal point."));
    } else if (m_text.contains(point)) {
        refuse(tr("The number has a decimal point already."));
    } else {
        if (m_cursor == 0 || !isDigit(m_text.at(m_cursor - 1))) {
            insert(QLatin1Char('0'));
        }
        insert(point);
    }
}

void NumberEntry::typeMinus()
{
    if (m_selected) {
        clear();
    }
    toggleSign();
}

void NumberEntry::typeExponent()
{
    if (m_selected) {
        clear();
    }
    if (exponentMark() >= 0) {
        refuse(tr("The number has an exponent already."));
    } else if (m_cursor == 0 || m_text.at(m_cursor - 1) == minus) {
        refuse(tr("Digits come before the e."));
    } else {
        insert(exponent);
    }
}

// The letter of a unit ends the entry; the rest of the unit's name may follow and means nothing more. Letters
// that are no unit yet are read as one word, so that the end of a refused "Ms" is not taken for seconds.
NumberEntry::Accepted NumberEntry::typeLetter(QChar letter)
{
    const QVector<Unit>& units = m_scale.units();
    if (!m_unitLetters.isEmpty() && unitText().startsWith(m_unitLetters + letter, Qt::CaseInsensitive)) {
        m_unitLetters += letter;
        return std::nullopt;
    }
    const QString word = m_openLetters + letter;
    beginKey();
    const ParsedQuantity number = parsed(m_unitIndex);
    if (number.status != ParsedQuantity::Status::Value) {
        refuse(number.refusal);
        return std::nullopt;
    }
    const ParsedQuantity quantity = parseQuantity(m_text + word, units, m_unitIndex);
    if (quantity.unitIndex >= 0) {
        const Accepted accepted = pressUnit(quantity.unitIndex);
        m_unitLetters = unitText().left(1);
        return accepted;
    }
    m_openLetters = word;
    // The only unit is not abbreviated: the rest of its name is waited for.
    const bool begun = units.size() == 1 && unitText().startsWith(word, Qt::CaseInsensitive);
    refuse(begun ? QString() : quantity.refusal);
    return std::nullopt;
}

void NumberEntry::stepBy(int direction)
{
    beginKey();
    if (!m_step) {
        refuse(tr("This value has no step."));
        return;
    }
    const ParsedQuantity current = parsed(m_unitIndex);
    if (current.status != ParsedQuantity::Status::Value) {
        refuse(current.refusal);
        return;
    }
    if (!m_given && refuse(m_limits.finenessRefusal(current.value))) {
        return;
    }
    const double start = m_given ? current.value : m_limits.taken(current.value);
    const double next = decimalSum(start, direction * *m_step);
    if (!std::isfinite(next)) {
        refuse(tr("The next step is too large a number."));
        return;
    }
    put(m_limits.clamped(next), m_unitIndex);
    refuse(m_limits.boundRefusal(next));
}

NumberEntry::Accepted NumberEntry::finish(int unitIndex)
{
    double value = m_whole;
    if (m_typed) {
        const ParsedQuantity quantity = parsed(unitIndex);
        if (quantity.status == ParsedQuantity::Status::Incomplete) {
            refuse(quantity.refusal);
            return std::nullopt;
        }
        m_unitIndex = unitIndex;
        if (quantity.status == ParsedQuantity::Status::Refused) {
            refuse(quantity.refusal);
            return std::nullopt;
        }
        value = quantity.value;
    }
    if (!m_given) { // what was given goes back as it came
        if (refuse(m_limits.finenessRefusal(value)) || refuse(m_limits.boundRefusal(value))) {
            return std::nullopt;
        }
        value = m_limits.taken(value);
    }
    if (refuse(m_limits.boundRefusal(value))) {
        return std::nullopt;
    }
    return value == 0.0 ? 0.0 : value;
}

// Forgets what stands until the next key only.
void NumberEntry::beginKey()
{
    m_refusal.clear();
    m_unitLetters.clear();
    m_openLetters.clear();
}

// Keeps the sentence, if there is one.
bool NumberEntry::refuse(const QString& sentence)
{
    if (sentence.isEmpty()) {
        return false;
    }
    m_refusal = sentence;
    return true;
}

ParsedQuantity NumberEntry::parsed(int unitIndex) const
{
    return parseQuantity(m_text, m_scale.units(), unitIndex);
}

} // namespace Controls
