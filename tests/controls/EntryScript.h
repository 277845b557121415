#pragma once

#include "controls/NumberEntry.h"
#include "controls/Quantities.h"

#include <QHash>
#include <QLocale>

// Plays keys on a NumberEntry from a line of text.
namespace EntryScript {

using Controls::NumberEntry;
using Controls::Unit;

inline QVector<Unit> unitsOf(const QString& quantity)
{
    static const QHash<QString, QVector<Unit> (*)()> table = {
        {QString(), Quantities::plain},
        {QStringLiteral("frequency"), Quantities::frequency},
        {QStringLiteral("power"), Quantities::level},
        {QStringLiteral("time"), Quantities::time},
    };
    return table.value(quantity)();
}

// Plays "2 . 4 [GHz] <Enter>": characters as typed, [unit] keys, <named> keys, {pasted text}. Returns what
// the last ending key accepted; keys after an acceptance are a fault of the row.
inline NumberEntry::Accepted play(NumberEntry& entry, const QVector<Unit>& units, const QString& keys)
{
    using Move = NumberEntry::Move;
    static const QHash<QString, void (*)(NumberEntry&)> named = {
        {QStringLiteral("<Sign>"), [](NumberEntry& e) { e.toggleSign(); }},
        {QStringLiteral("<Back>"), [](NumberEntry& e) { e.backspace(); }},
        {QStringLiteral("<Del>"), [](NumberEntry& e) { e.deleteForward(); }},
        {QStringLiteral("<Clear>"), [](NumberEntry& e) { e.clear(); }},
        {QStringLiteral("<Up>"), [](NumberEntry& e) { e.stepUp(); }},
        {QStringLiteral("<Down>"), [](NumberEntry& e) { e.stepDown(); }},
        {QStringLiteral("<Left>"), [](NumberEntry& e) { e.moveCursor(Move::Left); }},
        {QStringLiteral("<Right>"), [](NumberEntry& e) { e.moveCursor(Move::Right); }},
        {QStringLiteral("<Home>"), [](NumberEntry& e) { e.moveCursor(Move::Home); }},
        {QStringLiteral("<End>"), [](NumberEntry& e) { e.moveCursor(Move::End); }},
        {QStringLiteral("<All>"), [](NumberEntry& e) { e.selectAll(); }},
    };
    NumberEntry::Accepted accepted;
    int at = 0;
    while (at < keys.size()) {
        const QChar first = keys.at(at);
        const QString closing = QStringLiteral("]>}");
        const int kind = QStringLiteral("[<{").indexOf(first);
        const int end = kind < 0 ? at : keys.indexOf(closing.at(kind), at);
        const QString token = keys.mid(at, end - at + 1);
        at = end + 1;
        if (accepted) {
            qFatal("a key follows the acceptance");
        }
        if (kind == 0) {
            int unit = 0;
            while (QString(QLatin1Char('[') + units.at(unit).text + QLatin1Char(']')) != token) {
                ++unit;
            }
            accepted = entry.pressUnit(unit);
        } else if (token == QLatin1String("<Enter>")) {
            accepted = entry.pressEnter();
        } else if (kind == 1) {
            named.value(token)(entry);
        } else if (kind == 2) {
            entry.paste(token.mid(1, token.size() - 2));
        } else {
            accepted = entry.type(first);
        }
    }
    return accepted;
}

inline constexpr char nothing[] = "nothing accepted";

inline QString textOf(const NumberEntry::Accepted& accepted)
{
    return accepted ? QString::number(*accepted, 'f', QLocale::FloatingPointShortest)
                    : QString::fromLatin1(nothing);
}

} // namespace EntryScript
