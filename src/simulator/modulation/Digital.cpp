#include "link/Keys.h"
#include "simulator/instrument/InstrumentLimits.h"
#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"
#include "simulator/modulation/Oversampling.h"
#include "simulator/modulation/SymbolFields.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace Simulator {

namespace {

using namespace EditorKeys;
using namespace InstrumentLimits;
namespace Actions = MinibarHelperProtocol::Actions;
namespace Keys = MinibarHelperProtocol::Keys;

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

QJsonArray modulationTypes()
{
    QJsonArray types;
    for (const char* type : {"BPSK", "QPSK", "Pi4DQPSK", "PSK8", "PSK16", "QAM16", "QAM64", "QAM256",
                             "QAM1024", "APSK16", "ASK2", "ASK4", "ASK8", "FSK2", "FSK4", "FSK8", "FSK16"})
        types.append(QLatin1String(type));
    return types;
}

QJsonArray offeredOversamples()
{
    return {2, 4, 8, 16, 32};
}

const FieldTable& digitalFields()
{
    static const FieldTable fields = {
        symbolRateField(1e6, offeredOversamples().first().toInt()),
        choiceField(ModulationType, "modulation type", QStringLiteral("QPSK"), modulationTypes()),
        filterTypeField(),
        filterAlphaField(),
        filterLengthField(),
        integerField(PN, 9, {"PN order", Unit::None, 4, 24}),
        sequenceSeedField(),
        choiceField(Oversample, "oversampling", 4, offeredOversamples()),
        numberField(FSKDeviation, 250e3, {"FSK deviation", Unit::Hertz, 0, bandwidthHz / 2}),
    };
    return fields;
}

class Digital final : public ModulationItemOf<Digital>
{
public:
    Digital()
        : ModulationItemOf(
              {QLatin1String("digital"), QLatin1String("Digital"), QLatin1String("Digital Modulation")},
              digitalFields())
    {}

    [[nodiscard]] QJsonObject profile() const override
    {
        const double bytes = waveformSamples() * bytesOfSample;
        return {{defaultTrimDownload, m_defaultTrim},
                {trimmedDownloadRequired, waveformSamples() > maximumSamples},
                {fullWaveformEstimatedBytes, bytes},
                {filterAlphaEditable, hasAlpha()},
                {fskDeviationEditable, isFsk()},
                {modulationTypeOptions, modulationTypes()},
                {filterTypeOptions, filterTypeField().options},
                {oversampleOptions, oversamples()}};
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
        if (key == FilterAlpha && !hasAlpha())
            return translated("The filter alpha can be set for the raised cosine filters only.");
        if (key == FSKDeviation && !isFsk())
            return translated("The FSK deviation can be set for FSK modulations only.");
        return {};
    }

    [[nodiscard]] Verdict settle(QLatin1String /*key*/, const QJsonObject& /*before*/) override
    {
        put(Oversample, settledOversample(static_cast<int>(number(Oversample)), oversamples()));
        return {};
    }

    [[nodiscard]] Verdict act(const QString& action, const QJsonObject& arguments) override
    {
        if (action != Actions::set_default_trim)
            return ModulationItem::act(action, arguments);
        const QJsonValue value = arguments.value(Keys::value);
        if (!value.isBool())
            return invalid(translated("The default trim must be true or false."));
        m_defaultTrim = value.toBool();
        return {};
    }

private:
    [[nodiscard]] bool hasAlpha() const { return word(FilterType).endsWith(QLatin1String("RaisedCosine")); }
    [[nodiscard]] bool isFsk() const { return word(ModulationType).startsWith(QLatin1String("FSK")); }
    [[nodiscard]] QJsonArray oversamples() const
    {
        return fittingOversamples(number(SymbolRate), offeredOversamples());
    }
    // One whole sequence; a slow one is stored at a multiple of its sample rate.
    [[nodiscard]] double waveformSamples() const
    {
        const double symbols = std::exp2(number(PN)) - 1;
        const double sampleRate = number(SymbolRate) * number(Oversample);
        const double multiple = std::ceil(std::max(1.0, minimumSampleRateHz / sampleRate));
        return symbols * number(Oversample) * multiple;
    }

    bool m_defaultTrim = true;
};

} // namespace

std::unique_ptr<ModulationItem> makeDigital()
{
    return std::make_unique<Digital>();
}

} // namespace Simulator
