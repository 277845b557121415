#include "controls/Keypad.h"

#include "controls/KeypadKey.h"

#include <QRect>
#include <QStyle>
#include <QVariant>
#include <algorithm>

namespace Controls {
namespace {

constexpr int gap = 6;
constexpr int usualRowHeight = 48;
constexpr int lowestRowHeight = 32; // less than a finger wants, but all keys are on the screen
// The left block is six narrow columns: three keys of two, two keys of three, one key of all six.
constexpr int narrowColumns = 6;
constexpr int narrowWidth = 33;
constexpr int endColumn = narrowColumns;
constexpr int endWidth = 88;
constexpr int digitRows = 4;

constexpr int digitFont = 20; // pixels, as the next two
constexpr int unitFont = 17;
constexpr int wordFont = 15;

constexpr int repeatDelay = 400;   // milliseconds
constexpr int repeatInterval = 80; // milliseconds

constexpr char currentUnitProperty[] = "currentUnit";

// Where a key stands that begins in this row and narrow column; the last column is the wide one.
QRect cell(int row, int column, int rows, int columns, int rowHeight)
{
    const int rowPitch = rowHeight + gap;
    constexpr int columnPitch = narrowWidth + gap;
    const bool reachesEnd = column + columns > endColumn;
    const int left = column * columnPitch;
    const int right =
        reachesEnd ? endColumn * columnPitch + endWidth : (column + columns) * columnPitch - gap;
    return {left, row * rowPitch, right - left, rows * rowPitch - gap};
}

// The action of a key that cannot end the entry.
Keypad::Action edit(void (NumberEntry::*change)())
{
    return [change](NumberEntry& entry) {
        (entry.*change)();
        return std::nullopt;
    };
}

Keypad::Action typing(char character)
{
    return [character](NumberEntry& entry) { return entry.type(QLatin1Char(character)); };
}

} // namespace

struct Keypad::Key
{
    QString name;   // object name
    QString label;  // on the key
    QString spoken; // for assistive programs; empty: the label
    int fontSize;
    int row;
    int column;
    int rows;
    int columns;
    Action action;
    bool repeats = false;
};

Keypad::Keypad(const QVector<Unit>& units, const QString& stepText, QWidget* parent)
    : QWidget(parent)
{
    const bool hasSteps = !stepText.isEmpty();
    const int leftRows = digitRows + 1 + (hasSteps ? 1 : 0);
    const int endKeys = units.size() > 1 ? int(units.size()) + 1 : 1;
    const int rows = std::max(leftRows, endKeys);
    const int editRow = digitRows;
    m_rows = rows;
    addDigits();
    addEditKeys(editRow, rows > leftRows);
    if (hasSteps) {
        addStepKeys(editRow + 1, stepText);
    }
    addEndKeys(units, rows);
    arrange(usualRowHeight);
}

void Keypad::setLargestHeight(int height)
{
    arrange(std::clamp((height + gap) / m_rows - gap, lowestRowHeight, usualRowHeight));
}

void Keypad::setCurrentUnit(int index)
{
    if (index == m_currentUnit || m_unitKeys.size() < 2) {
        return; // one unit alone needs no mark
    }
    m_currentUnit = index;
    for (int i = 0; i < m_unitKeys.size(); ++i) {
        KeypadKey* const key = m_unitKeys.at(i);
        const bool current = i == index;
        if (key->property(currentUnitProperty).toBool() != current) {
            key->setProperty(currentUnitProperty, current);
            key->style()->unpolish(key);
            key->style()->polish(key);
        }
    }
}

void Keypad::offer(bool point, bool sign)
{
    m_point->setEnabled(point);
    m_sign->setEnabled(sign);
}

KeypadKey* Keypad::add(const Key& key)
{
    auto* const button = new KeypadKey(key.label, key.fontSize, this);
    button->setObjectName(key.name);
    button->setAccessibleName(key.spoken.isEmpty() ? key.label : key.spoken);
    if (key.repeats) {
        button->setAutoRepeat(true);
        button->setAutoRepeatDelay(repeatDelay);
        button->setAutoRepeatInterval(repeatInterval);
    }
    m_keys.append({button, QRect(key.column, key.row, key.columns, key.rows)});
    connect(button, &KeypadKey::clicked, this, [this, action = key.action] { emit pressed(action); });
    return button;
}

void Keypad::arrange(int rowHeight)
{
    setFixedSize(cell(0, 0, m_rows, narrowColumns + 1, rowHeight).size());
    for (const auto& [key, place] : qAsConst(m_keys)) {
        key->setGeometry(cell(place.y(), place.x(), place.height(), place.width(), rowHeight));
    }
}

void Keypad::addDigits()
{
    static constexpr char order[] = "789456123";
    for (int i = 0; i < 9; ++i) {
        const QString digit{QLatin1Char{order[i]}};
        add({QStringLiteral("key") + digit, digit, QString(), digitFont, i / 3, i % 3 * 2, 1, 2,
             typing(order[i])});
    }
    const int row = digitRows - 1;
    add({QStringLiteral("key0"), QStringLiteral("0"), QString(), digitFont, row, 0, 1, 2, typing('0')});
    m_point = add({QStringLiteral("keyPoint"), QStringLiteral("."), tr("Decimal point"), digitFont, row, 2, 1,
                   2, typing('.')});
    m_sign = add({QStringLiteral("keySign"), QStringLiteral("+/\u2212"), tr("Change sign"), digitFont, row, 4,
                  1, 2, edit(&NumberEntry::toggleSign)});
}

void Keypad::addEditKeys(int firstRow, bool stacked)
{
    const int columns = stacked ? narrowColumns : narrowColumns / 2;
    const int clearRow = stacked ? firstRow + 1 : firstRow;
    const int clearColumn = stacked ? 0 : columns;
    add({QStringLiteral("keyBackspace"), tr("Del"), tr("Backspace"), wordFont, firstRow, 0, 1, columns,
         edit(&NumberEntry::backspace), true});
    add({QStringLiteral("keyClear"), tr("Clear"), QString(), wordFont, clearRow, clearColumn, 1, columns,
         edit(&NumberEntry::clear)});
}

void Keypad::addStepKeys(int row, const QString& stepText)
{
    const int columns = narrowColumns / 2;
    add({QStringLiteral("keyStepDown"), QStringLiteral("\u2212 ") + stepText,
         tr("Step down %1").arg(stepText), wordFont, row, 0, 1, columns, edit(&NumberEntry::stepDown), true});
    add({QStringLiteral("keyStepUp"), QStringLiteral("+ ") + stepText, tr("Step up %1").arg(stepText),
         wordFont, row, columns, 1, columns, edit(&NumberEntry::stepUp), true});
}

// With several units Enter stands under them, as tall as what is left; a single end key is as tall as all.
void Keypad::addEndKeys(const QVector<Unit>& units, int rows)
{
    for (int i = 0; i < units.size(); ++i) {
        const QString unit = units.at(i).text;
        m_unitKeys.append(
            add({QStringLiteral("unitKey_") + unit, unit, QString(), unitFont, i, endColumn,
                 units.size() == 1 ? rows : 1, 1, [i](NumberEntry& entry) { return entry.pressUnit(i); }}));
    }
    if (units.size() != 1) {
        const int row = int(units.size());
        add({QStringLiteral("keyEnter"), tr("Enter"), QString(), unitFont, row, endColumn, rows - row, 1,
             [](NumberEntry& entry) { return entry.pressEnter(); }});
    }
}

} // namespace Controls
