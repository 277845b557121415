#include "simulator/InstrumentCommands.h"

#include "link/ChangeRequests.h"
#include "link/Keys.h"
#include "link/SweepSnapshot.h"
#include "simulator/ErrorTexts.h"
#include "simulator/SignalGenerator.h"
#include "utils/NumberText.h"

#include <QCoreApplication>

#include <cmath>
#include <limits>

namespace Simulator {

namespace Commands = MinibarHelperProtocol::Commands;
namespace Errors = MinibarHelperProtocol::Errors;
namespace Keys = MinibarHelperProtocol::Keys;
using Host::Response;
using Outcome = SignalGenerator::Outcome;

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

Response refusal(QLatin1String code)
{
    return Response::failure(code, errorText(code));
}

Response invalid(const QString& sentence)
{
    return Response::failure(Errors::INVALID_ARG, sentence);
}

Response answerTo(Outcome outcome, const QString& limits)
{
    switch (outcome) {
    case Outcome::Done:
        return Response::success();
    case Outcome::NotOpen:
        return refusal(Errors::NOT_OPEN);
    case Outcome::OutOfRange:
        return invalid(limits);
    }
    return refusal(Errors::INTERNAL_ERROR);
}

constexpr int noSuchRevision = std::numeric_limits<int>::max();

Response setOutput(SignalGenerator& instrument, const QJsonObject& arguments)
{
    const QJsonValue enabled = arguments.value(Keys::enabled);
    if (!enabled.isBool())
        return invalid(translated("'%1' must be true or false.").arg(Keys::enabled));
    return answerTo(instrument.setRfOn(enabled.toBool()), QString());
}

Response setFrequency(SignalGenerator& instrument, const QJsonObject& arguments)
{
    const QJsonValue hz = arguments.value(Keys::hz);
    if (!hz.isDouble())
        return invalid(translated("'%1' must be a number.").arg(Keys::hz));
    return answerTo(instrument.setCenterHz(hz.toDouble()),
                    translated("The frequency must lie between %1 and %2.")
                        .arg(Utils::normalizeFrequency(SignalGenerator::minimumHz, true, true),
                             Utils::normalizeFrequency(SignalGenerator::maximumHz, true, true)));
}

Response setLevel(SignalGenerator& instrument, const QJsonObject& arguments)
{
    const QJsonValue dbm = arguments.value(Keys::dbm);
    if (!dbm.isDouble())
        return invalid(translated("'%1' must be a number.").arg(Keys::dbm));
    return answerTo(instrument.setLevelDbm(dbm.toDouble()),
                    translated("The level must lie between %1 and %2 dBm.")
                        .arg(SignalGenerator::minimumDbm)
                        .arg(SignalGenerator::maximumDbm));
}

Response answerTo(const Verdict& verdict)
{
    return verdict ? Response::failure(verdict->code, verdict->sentence) : Response::success();
}

// A number without a fraction. It is not judged further: a revision that never was is another one.
bool readRevision(const QJsonObject& arguments, int* target)
{
    const QJsonValue value = arguments.value(Keys::expectedRevision);
    const double number = value.toDouble();
    if (!value.isDouble() || number != std::floor(number))
        return false;
    *target = value.toInt(noSuchRevision);
    return true;
}

Response changeSweep(SignalGenerator& instrument, const QJsonObject& arguments)
{
    int expectedRevision = 0;
    if (!readRevision(arguments, &expectedRevision))
        return invalid(translated("'%1' must be a whole number.").arg(Keys::expectedRevision));
    SweepSettings wanted;
    QString fault;
    if (!MinibarHelperProtocol::parseSweepSettings(arguments, &wanted, &fault))
        return invalid(fault);
    return answerTo(instrument.changeSweep(wanted, expectedRevision));
}

// A key that may be absent but must not hold anything else.
struct Optional
{
    QLatin1String key;
    QJsonValue::Type type;
    const char* fault;
};

const Optional optionals[] = {
    {Keys::enabled, QJsonValue::Bool, "'%1' must be true or false."},
    {Keys::action, QJsonValue::String, "'%1' must be a text."},
    {Keys::args, QJsonValue::Object, "'%1' must be an object."},
    {Keys::profile, QJsonValue::Object, "'%1' must be an object."},
};

Response changeModulation(SignalGenerator& instrument, const QJsonObject& arguments)
{
    if (!arguments.value(Keys::businessId).isString())
        return invalid(translated("'%1' must be a text.").arg(Keys::businessId));
    MinibarHelperProtocol::ModChangeRequest wanted;
    if (arguments.contains(Keys::expectedRevision) && !readRevision(arguments, &wanted.expectedRevision))
        return invalid(translated("'%1' must be a whole number.").arg(Keys::expectedRevision));
    for (const Optional& row : optionals) {
        if (arguments.contains(row.key) && arguments.value(row.key).type() != row.type)
            return invalid(translated(row.fault).arg(row.key));
    }
    wanted.businessId = arguments.value(Keys::businessId).toString();
    wanted.hasEnabled = arguments.contains(Keys::enabled);
    wanted.enabled = arguments.value(Keys::enabled).toBool();
    wanted.action = arguments.value(Keys::action).toString();
    wanted.arguments = arguments.value(Keys::args).toObject();
    wanted.hasProfile = arguments.contains(Keys::profile);
    wanted.profile = arguments.value(Keys::profile).toObject();
    return answerTo(instrument.changeModulation(wanted));
}

Response readState(SignalGenerator& /*instrument*/, const QJsonObject& /*arguments*/)
{
    return Response::success(); // the state goes with every success
}

struct Command
{
    QLatin1String name;
    Response (*execute)(SignalGenerator& instrument, const QJsonObject& arguments);
    bool needsOpen;   // refused before its arguments are looked at
    bool isAnnounced; // what it changes is pushed as well
};

// Everything the simulated main process understands.
const Command commands[] = {
    {Commands::OUTP_STAT, setOutput, true, false},
    {Commands::SOUR_FREQ_CENT, setFrequency, true, false},
    {Commands::SOUR_POW_LEV, setLevel, true, false},
    {Commands::SOUR_SWEEP_CONF, changeSweep, true, true},
    {Commands::SOUR_MOD_CONF, changeModulation, true, true},
    {Commands::STAT_SNAP_, readState, false, false},
};

const Command* find(const QString& name)
{
    for (const Command& row : commands) {
        if (row.name == name)
            return &row;
    }
    return nullptr;
}

} // namespace

Response execute(SignalGenerator& instrument, const QString& command, const QJsonObject& arguments)
{
    const Command* row = find(command);
    if (!row)
        return Response::failure(Errors::NOT_SUPPORTED,
                                 translated("The command '%1' is not known.").arg(command.left(40)));
    if (row->needsOpen && !instrument.isOpen())
        return refusal(Errors::NOT_OPEN);
    return row->execute(instrument, arguments);
}

bool isAnnounced(const QString& command)
{
    const Command* row = find(command);
    return row && row->isAnnounced;
}

} // namespace Simulator
