#include "business/UnitAdapters.h"

namespace Adapters {
namespace {

using Controls::BaseUnitAdapter;
using Controls::Unit;

// From the largest to the smallest, as Controls::BaseUnitAdapter wants them.
QVector<Unit> frequencyUnits()
{
    return {{QStringLiteral("GHz"), 9},
            {QStringLiteral("MHz"), 6},
            {QStringLiteral("kHz"), 3},
            {QStringLiteral("Hz"), 0}};
}

QVector<Unit> timeUnits()
{
    return {{QStringLiteral("s"), 0},
            {QStringLiteral("ms"), -3},
            {QStringLiteral("\u00b5s"), -6},
            {QStringLiteral("ns"), -9},
            {QStringLiteral("ps"), -12}};
}

template <typename Adapter>
std::unique_ptr<BaseUnitAdapter> make()
{
    return std::make_unique<Adapter>();
}

struct Entry
{
    QString (*type)();
    std::unique_ptr<BaseUnitAdapter> (*create)();
};

// Every adapter that createAdapter knows.
constexpr Entry entries[] = {
    {FrequencyUnitAdapter::adapterType, make<FrequencyUnitAdapter>},
    {OutputFrequencyUnitAdapter::adapterType, make<OutputFrequencyUnitAdapter>},
    {PowerUnitAdapter::adapterType, make<PowerUnitAdapter>},
    {PowerStepUnitAdapter::adapterType, make<PowerStepUnitAdapter>},
    {TimeUnitAdapter::adapterType, make<TimeUnitAdapter>},
};

} // namespace

FrequencyUnitAdapter::FrequencyUnitAdapter(QObject* parent)
    : BaseUnitAdapter(frequencyUnits(), OnAcceptance, parent)
{}

QString FrequencyUnitAdapter::adapterType()
{
    return QStringLiteral("FrequencyUnitAdapter");
}

OutputFrequencyUnitAdapter::OutputFrequencyUnitAdapter(QObject* parent)
    : BaseUnitAdapter(frequencyUnits(), OnEditingFinished, parent)
{}

QString OutputFrequencyUnitAdapter::adapterType()
{
    return QStringLiteral("OutputFrequencyUnitAdapter");
}

PowerUnitAdapter::PowerUnitAdapter(QObject* parent)
    : BaseUnitAdapter({{QStringLiteral("dBm"), 0}}, OnAcceptance, parent)
{}

QString PowerUnitAdapter::adapterType()
{
    return QStringLiteral("PowerUnitAdapter");
}

PowerStepUnitAdapter::PowerStepUnitAdapter(QObject* parent)
    : BaseUnitAdapter({{QStringLiteral("dB"), 0}}, OnAcceptance, parent)
{}

QString PowerStepUnitAdapter::adapterType()
{
    return QStringLiteral("PowerStepUnitAdapter");
}

TimeUnitAdapter::TimeUnitAdapter(QObject* parent)
    : BaseUnitAdapter(timeUnits(), OnAcceptance, parent)
{}

QString TimeUnitAdapter::adapterType()
{
    return QStringLiteral("TimeUnitAdapter");
}

std::unique_ptr<BaseUnitAdapter> createAdapter(const QString& adapterType)
{
    for (const Entry& entry : entries) {
        if (entry.type() == adapterType) {
            return entry.create();
        }
    }
    return std::make_unique<BaseUnitAdapter>(QVector<Unit>());
}

} // namespace Adapters
