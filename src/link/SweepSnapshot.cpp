#include "link/SweepSnapshot.h"

#include "link/FieldReaders.h"
#include "link/Keys.h"

#include <QJsonArray>

#include <array>

namespace {

using namespace MinibarHelperProtocol;

// Indexed by the value of the plan.
constexpr std::array<QLatin1String, 4> planWords = {QLatin1String(), Plans::fscan, Plans::lscan,
                                                    Plans::unsupported};

struct NumberField
{
    QLatin1String key;
    double SweepSettings::*member;
};

// In the order in which a snapshot is checked.
constexpr NumberField frequencyFields[] = {{Keys::startHz, &SweepSettings::startHz},
                                           {Keys::stopHz, &SweepSettings::stopHz},
                                           {Keys::stepHz, &SweepSettings::stepHz}};
constexpr NumberField levelFields[] = {{Keys::startDbm, &SweepSettings::startDbm},
                                       {Keys::stopDbm, &SweepSettings::stopDbm},
                                       {Keys::stepDb, &SweepSettings::stepDb}};
constexpr NumberField dwellFields[] = {{Keys::dwellSeconds, &SweepSettings::dwellSeconds}};

template <typename Fields>
bool readNumbers(const QJsonObject& object, const Fields& fields, SweepSettings* settings, QString* error)
{
    for (const NumberField& field : fields) {
        if (!readFiniteNumber(object, field.key, &(settings->*field.member), error))
            return false;
    }
    return true;
}

template <typename Fields>
QJsonObject writeNumbers(const Fields& fields, const SweepSettings& settings)
{
    QJsonObject object;
    for (const NumberField& field : fields)
        object.insert(field.key, settings.*field.member);
    return object;
}

bool readSupportedPlans(const QJsonObject& object, QVector<SweepPlanId>* target, QString* error)
{
    QJsonArray words;
    if (!readArray(object, Keys::supportedPlanIds, &words, error))
        return false;
    for (const QJsonValue word : qAsConst(words)) {
        if (!word.isString())
            return fail(error, QStringLiteral("Sweep plan ids must be strings."));
        const SweepPlanId plan = planOfWord(word.toString());
        const bool known = plan == SweepPlanId::FrequencyScan || plan == SweepPlanId::LevelScan;
        if (known && !target->contains(plan))
            target->append(plan);
    }
    return true;
}

// An instrument that cannot sweep now may name a plan the bar does not know, but must still offer one it
// does.
bool supportsSelectedPlan(const SweepSnapshot& sweep)
{
    const SweepPlanId selected = sweep.settings.selectedPlanId;
    return sweep.supportedPlanIds.contains(selected) ||
           (!sweep.supportedPlanIds.isEmpty() && !sweep.available && selected == SweepPlanId::Unsupported);
}

} // namespace

bool operator==(const SweepSettings& left, const SweepSettings& right)
{
    const auto equalNumbers = [&](const auto& fields) {
        for (const NumberField& field : fields) {
            if (!(left.*field.member == right.*field.member))
                return false;
        }
        return true;
    };
    return left.enabled == right.enabled && left.selectedPlanId == right.selectedPlanId &&
           equalNumbers(frequencyFields) && equalNumbers(levelFields) && equalNumbers(dwellFields);
}

bool operator==(const SweepSnapshot& left, const SweepSnapshot& right)
{
    return left.available == right.available && left.revision == right.revision &&
           left.supportedPlanIds == right.supportedPlanIds && left.settings == right.settings;
}

namespace MinibarHelperProtocol {

QString planWord(SweepPlanId plan)
{
    const auto index = static_cast<std::size_t>(plan);
    return index < planWords.size() ? QString(planWords[index]) : QString();
}

SweepPlanId planOfWord(const QString& word)
{
    for (std::size_t index = 1; index < planWords.size(); ++index) {
        if (word == planWords[index])
            return static_cast<SweepPlanId>(index);
    }
    return SweepPlanId::None;
}

QJsonObject writeSweepSettings(const SweepSettings& settings)
{
    QJsonObject object = writeNumbers(dwellFields, settings);
    object.insert(Keys::enabled, settings.enabled);
    object.insert(Keys::selectedPlanId, planWord(settings.selectedPlanId));
    object.insert(Keys::frequencyPlan, writeNumbers(frequencyFields, settings));
    object.insert(Keys::levelPlan, writeNumbers(levelFields, settings));
    return object;
}

bool parseSweepSettings(const QJsonObject& object, SweepSettings* target, QString* error)
{
    SweepSettings settings;
    QString word;
    if (!readBool(object, Keys::enabled, &settings.enabled, error) ||
        !readString(object, Keys::selectedPlanId, &word, error))
        return false;
    settings.selectedPlanId = planOfWord(word);
    if (settings.selectedPlanId == SweepPlanId::None)
        return fail(error, QStringLiteral("Unsupported Sweep plan id."));
    const QJsonValue frequencyPlan = object.value(Keys::frequencyPlan);
    const QJsonValue levelPlan = object.value(Keys::levelPlan);
    if (!frequencyPlan.isObject() || !levelPlan.isObject())
        return fail(error, QStringLiteral("Sweep request requires frequencyPlan and levelPlan objects."));
    if (!readNumbers(frequencyPlan.toObject(), frequencyFields, &settings, error) ||
        !readNumbers(levelPlan.toObject(), levelFields, &settings, error) ||
        !readNumbers(object, dwellFields, &settings, error))
        return false;
    *target = settings;
    return true;
}

bool parseSweepSnapshot(const QJsonObject& object, SweepSnapshot* target, QString* error)
{
    SweepSnapshot sweep;
    if (!readBool(object, Keys::available, &sweep.available, error) ||
        !readPositiveInteger(object, Keys::revision, &sweep.revision, error) ||
        !parseSweepSettings(object, &sweep.settings, error) ||
        !readSupportedPlans(object, &sweep.supportedPlanIds, error))
        return false;
    if (!supportsSelectedPlan(sweep))
        return fail(error, QStringLiteral("Sweep snapshot does not support its selected plan."));
    *target = sweep;
    return true;
}

} // namespace MinibarHelperProtocol
