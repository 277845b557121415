#pragma once

#include "modeditors/contract/NumericFieldSpec.h"

#include <QJsonValue>
#include <QList>
#include <QStringList>
#include <cstddef>
#include <optional>

class EnumTextButton;
class LabelButton;
class SwitchButton;

// What a form panel is made of, as data. Titles and texts of items are translated in the context of the
// panel's class; QT_TRANSLATE_NOOP shows them to the tool that collects the texts.

// What a number is: its unit, and with it how it is shown.
enum class Quantity {
    Number,
    Integer,
    Frequency, // Hz
    Time       // s
};

// A numeric field, its numbers in the base unit of the quantity.
struct NumericField
{
    const char* key;
    const char* title;
    Quantity quantity;
    double step;
    int decimals;
    std::optional<double> minimum = std::nullopt; // inclusive, as the next
    std::optional<double> maximum = std::nullopt;
    const char* tag = ""; // for the keyboard
    double scale = 1;     // what is shown and edited for a stored value of 1

    [[nodiscard]] NumericFieldSpec spec(const char* context) const;
    // One of RemoteFormEditor's.
    [[nodiscard]] int displayMode() const;
};

// An item of a list: what is stored, and what is shown for it.
struct Choice
{
    const char* value;
    const char* text;
};

// The items of a list: words, or whole numbers that are shown as they are.
class Choices
{
public:
    template <std::size_t count>
    explicit constexpr Choices(const Choice (&words)[count])
        : m_words(words)
        , m_count(count)
    {}
    template <std::size_t count>
    explicit constexpr Choices(const int (&numbers)[count])
        : m_numbers(numbers)
        , m_count(count)
    {}

    [[nodiscard]] QList<QJsonValue> values() const;
    [[nodiscard]] QStringList texts(const char* context) const;

private:
    const Choice* m_words = nullptr;
    const int* m_numbers = nullptr;
    std::size_t m_count;
};

// The fields of a panel, each with the button of its generated form.

template <typename Form>
struct NumericRow
{
    LabelButton* Form::*button;
    NumericField field;
};

template <typename Form>
struct EnumRow
{
    EnumTextButton* Form::*button;
    const char* key;
    Choices choices;
};

template <typename Form>
struct SwitchRow
{
    SwitchButton* Form::*button;
    const char* key;
};
