#pragma once

#include <QJsonObject>
#include <QLatin1String>
#include <optional>

class QMetaObject;
struct NumericFieldSpec;

// One numeric field of an editor: a line of the editor's table.
struct NumericField
{
    enum class Kind {
        Frequency,     // Hz
        Number,        // shown with `decimals` decimals, zeros trimmed
        Integer,       // a JSON integer; anything else counts as 0
        NearestInteger // any JSON number, as the nearest integer, halves upward
    };

    QLatin1String key;    // in the editor state
    QLatin1String button; // object name of its LabelButton
    const char* title;    // to be translated in the editor's context
    Kind kind;
    // Of the keyboard, as the bounds.
    double step;
    int decimals;
    double minimum;
    std::optional<double> maximum = std::nullopt;
    QLatin1String maximumKey = {};   // in the profile: a further maximum if it is above 0
    QLatin1String conditionKey = {}; // in the profile: the field can be edited only while this flag ...
    bool conditionValue = true;      // ... has this value
    double fallback = 0;             // the value while the editor state has none; 0 for Kind::Integer
    QLatin1String suffix = {};       // follows the number

    // The fallback when it is missing or no number.
    [[nodiscard]] double value(const QJsonObject& state) const;
    // What the button shows.
    [[nodiscard]] QString text(const QJsonObject& state) const;
    [[nodiscard]] bool isEditable(const QJsonObject& profile) const;
    // What the keyboard needs to know; `editor` gives the context of the title.
    [[nodiscard]] NumericFieldSpec spec(const QJsonObject& state, const QJsonObject& profile,
                                        const QMetaObject& editor) const;
};
