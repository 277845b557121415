#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

// What the form editors shall be, said once more and independently of them.

struct ExpectedButton
{
    const char* name;
    const char* className;
    const char* text;
    bool hidden = false;
};

struct ExpectedNumber
{
    const char* button;
    const char* key;
    const char* title;
    const char* unitType; // empty: a plain number
    const char* auxText;
    double step;
    int decimals;
    bool integerOnly;
    std::optional<double> minimum;
    std::optional<double> maximum;
    double scale = 1; // what is shown for a stored 1
};

struct ExpectedChoice
{
    const char* button;
    const char* key;
    const char* values; // a JSON array
    QStringList texts;
    int viewMode;
    bool translated = true;
};

struct ExpectedSwitch
{
    const char* button;
    const char* key;
};

struct ExpectedForm
{
    const char* kind;
    const char* formName;  // also the context of the form's texts
    const char* className; // the context of titles and items
    QVector<ExpectedButton> buttons;
    QVector<ExpectedNumber> numbers;
    QVector<ExpectedChoice> choices;
    QVector<ExpectedSwitch> switches;
    QStringList furtherTexts; // in the context of the class
    // A state in which every field can be edited.
    const char* editableState = "{}";
    QStringList wide = {}; // what stands across both columns
};

[[nodiscard]] const QVector<ExpectedForm>& expectedForms();
[[nodiscard]] const ExpectedForm& expectedForm(const QString& kind);
