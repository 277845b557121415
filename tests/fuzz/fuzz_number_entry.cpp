// The grammar of numbers, and the entry that it is typed into. The first byte picks quantity and limits; the
// rest is read as a text, and as keys.

#include "business/UnitAdapters.h"
#include "controls/NumberEntry.h"
#include "fuzz/Fuzzing.h"

#include <cmath>

using Controls::NumberEntry;
using Controls::ParsedQuantity;
using Fuzzing::require;

namespace {

const Controls::BaseUnitAdapter& adapter(int index)
{
    static const Adapters::FrequencyUnitAdapter frequency;
    static const Adapters::PowerUnitAdapter power;
    static const Adapters::TimeUnitAdapter time;
    static const Controls::BaseUnitAdapter plain({});
    const Controls::BaseUnitAdapter* const adapters[] = {&frequency, &power, &time, &plain};
    return *adapters[index % 4];
}

void checkText(const QString& text, const Controls::BaseUnitAdapter& scale)
{
    const QVector<Controls::Unit>& units = scale.units();
    for (int unit = -1; unit < units.size(); ++unit) {
        const ParsedQuantity parsed = Controls::parseQuantity(text, units, unit);
        if (parsed.status != ParsedQuantity::Status::Value) {
            require(!parsed.refusal.isEmpty(), "what is not taken has a sentence");
            continue;
        }
        require(parsed.refusal.isEmpty(), "a value has no refusal");
        require(std::isfinite(parsed.value), "a value is a number");
        require(parsed.value != 0.0 || !std::signbit(parsed.value), "zero has no sign");
        for (int target = 0; target < units.size(); ++target) {
            const QString shown = Controls::formatQuantity(parsed.value, units.at(target));
            const ParsedQuantity again = Controls::parseQuantity(shown, units, target);
            require(again.status == ParsedQuantity::Status::Value && again.value == parsed.value,
                    "a value survives being written in any unit");
        }
    }
}

NumberEntry::Accepted press(NumberEntry& entry, unsigned char key, int units)
{
    using Move = NumberEntry::Move;
    switch (key) {
    case 0x01:
        return entry.pressEnter();
    case 0x02:
        entry.toggleSign();
        return {};
    case 0x03:
        entry.backspace();
        return {};
    case 0x04:
        entry.deleteForward();
        return {};
    case 0x05:
        entry.clear();
        return {};
    case 0x06:
        entry.stepUp();
        return {};
    case 0x07:
        entry.stepDown();
        return {};
    case 0x08:
    case 0x0B:
    case 0x0C:
    case 0x0E:
        entry.moveCursor(key == 0x08   ? Move::Left
                         : key == 0x0B ? Move::Right
                         : key == 0x0C ? Move::Home
                                       : Move::End);
        return {};
    case 0x0F:
        entry.selectAll();
        return {};
    case 0x10:
        return units > 0 ? entry.pressUnit(0) : NumberEntry::Accepted();
    case 0x11:
        return units > 0 ? entry.pressUnit(units - 1) : NumberEntry::Accepted();
    case 0x12:
        entry.paste(QStringLiteral("2.4 GHz"));
        return {};
    default:
        return entry.type(QLatin1Char(char(key)));
    }
}

void checkKeys(const QByteArray& keys, const Controls::BaseUnitAdapter& scale,
               const Controls::NumericEntry& limits)
{
    NumberEntry entry(scale, limits);
    for (const char key : keys) {
        const NumberEntry::Accepted accepted =
            press(entry, static_cast<unsigned char>(key), scale.units().size());
        require(entry.cursor() >= 0 && entry.cursor() <= entry.text().size(),
                "the cursor stands in the text");
        require(entry.unitIndex() < scale.units().size(), "the unit is one of the quantity");
        if (!accepted) {
            continue;
        }
        require(std::isfinite(*accepted), "a number is accepted");
        require(!limits.minimum || *accepted >= *limits.minimum, "the minimum holds");
        require(!limits.maximum || *accepted <= *limits.maximum, "the maximum holds");
        require(!limits.integerOnly || *accepted == std::trunc(*accepted), "a whole number was asked for");
        return;
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t longest = 256;
    if (size == 0 || size > longest) {
        return 0;
    }
    const unsigned choice = data[0];
    const QByteArray input = Fuzzing::bytes(data + 1, size - 1);
    const Controls::BaseUnitAdapter& scale = adapter(int(choice));
    checkText(QString::fromUtf8(input), scale);

    // What an entry is opened with is within its limits.
    Controls::NumericEntry limits;
    limits.integerOnly = (choice & 64U) != 0;
    limits.value = limits.integerOnly ? 12 : 12.5;
    limits.step = (choice & 4U) != 0 ? std::optional(limits.integerOnly ? 1 : 0.1) : std::nullopt;
    limits.minimum = (choice & 8U) != 0 ? std::optional(limits.integerOnly ? -3 : -3.25) : std::nullopt;
    limits.maximum = (choice & 16U) != 0 ? std::optional(6e9) : std::nullopt;
    limits.decimals = (choice & 32U) != 0 ? std::optional(3) : std::nullopt;
    checkKeys(input, scale, limits);
    return 0;
}
