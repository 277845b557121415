#pragma once

#include "controls/EntryLimits.h"
#include "controls/QuantityText.h"

#include <QCoreApplication>

namespace Controls {

// A number being typed, apart from any widget: keys in, what is to be shown out. On-screen and physical keys
// feed the same object.
//
// A value that stands whole in the entry (as opened, stepped or pasted with its unit) carries its unit: the
// key of another unit only re-expresses it, 2.4 GHz becomes 2400 MHz. A number that is being typed gets its
// unit from the unit key that ends it. Functions that can end the entry return the accepted value in the base
// unit; the entry has then done its work. Everything that is not taken leaves a sentence in refusal(), which
// stands until the next key.
class NumberEntry final
{
    Q_DECLARE_TR_FUNCTIONS(Controls::NumberEntry)

public:
    using Accepted = std::optional<double>;
    enum class Move { Left, Right, Home, End };

    static constexpr int maximumLength = 24; // characters that can be typed

    // `scale` must outlive the object.
    NumberEntry(const BaseUnitAdapter& scale, const NumericEntry& entry);

    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] int unitIndex() const { return m_unitIndex; } // -1 for a plain number
    [[nodiscard]] QString unitText() const;
    [[nodiscard]] QString quantityText() const; // "2.4 GHz", as it is copied
    [[nodiscard]] int cursor() const { return m_cursor; }
    [[nodiscard]] bool isSelected() const { return m_selected; } // the whole text; the next digit replaces it
    [[nodiscard]] const QString& refusal() const { return m_refusal; }
    [[nodiscard]] const EntryLimits& limits() const { return m_limits; }
    [[nodiscard]] QString stepText() const; // "1 MHz"; empty without a step

    // A typed character: digit, point or comma, sign, "e", or a letter that names a unit.
    Accepted type(QChar character);
    Accepted pressUnit(int unitIndex);
    Accepted pressEnter();

    void toggleSign();
    void backspace();
    void deleteForward();
    void clear();
    void stepUp() { stepBy(1); }
    void stepDown() { stepBy(-1); }
    void moveCursor(Move move);
    void setCursor(int position);
    void selectAll();
    // A text with a unit fills in value and unit, one without only the number; neither ends the entry.
    void paste(const QString& text);

private:
    void put(double value, int unitIndex);
    void insert(QChar character);
    void removeAt(int position);
    void typePoint();
    void typeMinus();
    void typeExponent();
    Accepted typeLetter(QChar letter);
    void stepBy(int direction);
    Accepted finish(int unitIndex);
    void beginKey();
    bool refuse(const QString& sentence);
    [[nodiscard]] ParsedQuantity parsed(int unitIndex) const;
    [[nodiscard]] int exponentMark() const { return m_text.indexOf(QLatin1Char('e')); }

    const BaseUnitAdapter& m_scale;
    EntryLimits m_limits;
    std::optional<double> m_step;
    QString m_text;
    QString m_refusal;
    QString m_unitLetters; // how much of the shown unit's name has just been typed
    QString m_openLetters; // just typed and no unit so far
    double m_whole = 0.0;  // the value that stands in the entry as long as nothing is typed
    int m_unitIndex = -1;
    int m_cursor = 0;
    bool m_selected = false;
    bool m_given = false; // as opened, or stepped from that: may be finer than what is entered
    bool m_typed = true;  // the text is the user's own and has no unit yet
};

} // namespace Controls
