#include "simulator/instrument/InstrumentLimits.h"
#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"

#include <QCoreApplication>

namespace Simulator {

namespace {

using namespace EditorKeys;
using namespace InstrumentLimits;

constexpr double largestFft = 2048;
constexpr double mostSymbols = 1000;

QJsonArray modulationTypes()
{
    QJsonArray types;
    for (const char* type : {"BPSK", "QPSK", "PSK8", "PSK16", "QAM16", "QAM64", "QAM256"})
        types.append(QLatin1String(type));
    return types;
}

const FieldTable& ofdmFields()
{
    static const FieldTable fields = {
        choiceField(ModulationType, "modulation type", QStringLiteral("QAM16"), modulationTypes()),
        choiceField(FFTSize, "FFT size", 64, {16, 32, 64, 128, 256, 512, 1024, 2048}),
        integerField(SymbolCount, 20, {"symbol count", Unit::None, 1, mostSymbols}),
        integerField(GuardBandCarriersLeft, 6, {"left guard band", Unit::None, 0, largestFft}),
        integerField(GuardBandCarriersRight, 5, {"right guard band", Unit::None, 0, largestFft}),
        numberField(GuardInterval, 25, {"guard interval", Unit::Percent, 0, 100}),
        numberField(WindowLength, 50, {"window length", Unit::Percent, 0, 100}),
        numberField(SampleRate, 20e6, {"sample rate", Unit::Hertz, 1, maximumSampleRateHz}),
        switchField(NullDC, "null DC", true),
        switchField(Windowed, "windowed", false),
    };
    return fields;
}

class Ofdm final : public ModulationItemOf<Ofdm>
{
public:
    Ofdm()
        : ModulationItemOf({QLatin1String("ofdm"), QLatin1String("OFDM"),
                            QLatin1String("Orthogonal Frequency Division Multiplex")},
                           ofdmFields())
    {}

protected:
    [[nodiscard]] Verdict settle(QLatin1String /*key*/, const QJsonObject& /*before*/) override
    {
        const double unused =
            number(GuardBandCarriersLeft) + number(GuardBandCarriersRight) + (nullsDc() ? 1 : 0);
        if (unused < number(FFTSize))
            return {};
        return invalid(QCoreApplication::translate(
                           "Simulator", "The guard bands leave none of the %1 carriers of the FFT.")
                           .arg(number(FFTSize)));
    }

private:
    [[nodiscard]] bool nullsDc() const { return state().value(NullDC).toBool(); }
};

} // namespace

std::unique_ptr<ModulationItem> makeOfdm()
{
    return std::make_unique<Ofdm>();
}

} // namespace Simulator
