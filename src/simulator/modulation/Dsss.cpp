#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"
#include "simulator/modulation/Oversampling.h"
#include "simulator/modulation/SymbolFields.h"

#include <QCoreApplication>

namespace Simulator {

namespace {

using namespace EditorKeys;

constexpr int smallestOversample = 4;
constexpr int largestOversample = 32;
constexpr int largestCode = 1023;

QJsonArray offeredOversamples()
{
    QJsonArray offered;
    for (int samples = smallestOversample; samples <= largestOversample; samples += 2)
        offered.append(samples);
    return offered;
}

const FieldTable& dsssFields()
{
    static const FieldTable fields = {
        symbolRateField(1e6, smallestOversample),
        filterTypeField(),
        filterAlphaField(),
        filterLengthField(),
        sequenceSeedField(),
        integerField(Code, 11, {"code", Unit::None, 1, largestCode}),
        fixedField(ModulationType, "modulation type", QStringLiteral("BPSK")),
        choiceField(Oversample, "oversampling", smallestOversample, offeredOversamples()),
    };
    return fields;
}

class Dsss final : public ModulationItemOf<Dsss>
{
public:
    Dsss()
        : ModulationItemOf({QLatin1String("dsss"), QLatin1String("DSSS"),
                            QLatin1String("Direct Sequence Spread Spectrum")},
                           dsssFields())
    {}

    [[nodiscard]] QJsonObject profile() const override
    {
        return {{filterAlphaEditable, hasAlpha()}, {oversampleOptions, oversamples()}};
    }

protected:
    [[nodiscard]] Field fieldNow(const Field& field) const override
    {
        Field now = field;
        if (field.key == Oversample)
            now.options = oversamples();
        return now;
    }

    [[nodiscard]] QString lockOf(QLatin1String key) const override
    {
        if (key != FilterAlpha || hasAlpha())
            return {};
        return QCoreApplication::translate(
            "Simulator", "The filter alpha can be set for raised cosine and Gaussian filters only.");
    }

    [[nodiscard]] Verdict settle(QLatin1String /*key*/, const QJsonObject& /*before*/) override
    {
        put(Oversample, settledOversample(static_cast<int>(number(Oversample)), oversamples()));
        return {};
    }

private:
    [[nodiscard]] bool hasAlpha() const
    {
        const QString filter = word(FilterType);
        return filter.endsWith(QLatin1String("RaisedCosine")) || filter == QLatin1String("Gaussian");
    }
    [[nodiscard]] QJsonArray oversamples() const
    {
        return fittingOversamples(number(SymbolRate), offeredOversamples());
    }
};

} // namespace

std::unique_ptr<ModulationItem> makeDsss()
{
    return std::make_unique<Dsss>();
}

} // namespace Simulator
