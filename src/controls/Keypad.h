#pragma once

#include "controls/NumberEntry.h"

#include <QPair>
#include <QVector>
#include <QWidget>
#include <functional>

namespace Controls {

class KeypadKey;

// The keys of the numeric keyboard on their grid: digits at the left, the keys that end the entry as a column
// at the right, the largest unit on top. Each key names what it does to the entry; the keypad itself holds
// none. Object names: "key0" to "key9", "keyPoint", "keySign", "keyBackspace", "keyClear", "keyStepDown",
// "keyStepUp", "keyEnter" and "unitKey_" with the unit's text.
class Keypad final : public QWidget
{
    Q_OBJECT

public:
    using Action = std::function<NumberEntry::Accepted(NumberEntry&)>;

    // An empty `stepText` stands for no step keys.
    Keypad(const QVector<Unit>& units, const QString& stepText, QWidget* parent);

    // Makes the keys lower, as far as that goes, where they would be higher together than this, in pixels.
    void setLargestHeight(int height);
    // Marks the key of the unit that is shown; -1 marks none.
    void setCurrentUnit(int index);

    // Disables the keys that could only lead to a number that is not taken.
    void offer(bool point, bool sign);

signals:
    void pressed(const Controls::Keypad::Action& action);

private:
    struct Key;
    KeypadKey* add(const Key& key);
    void arrange(int rowHeight);
    void addDigits();
    void addEditKeys(int firstRow, bool stacked);
    void addStepKeys(int row, const QString& stepText);
    void addEndKeys(const QVector<Unit>& units, int rows);

    QVector<QPair<KeypadKey*, QRect>> m_keys; // each with its cells: columns and rows of the grid
    int m_rows = 0;
    KeypadKey* m_point = nullptr;
    KeypadKey* m_sign = nullptr;
    QVector<KeypadKey*> m_unitKeys;
    int m_currentUnit = -1;
};

} // namespace Controls
