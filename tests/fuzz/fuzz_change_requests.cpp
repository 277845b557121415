// What the helper asks arrives at the main process as it was asked, and the main process survives whatever
// else stands in a REQ line.

#include "fuzz/Fuzzing.h"
#include "host/Envelopes.h"
#include "link/ChangeRequests.h"
#include "link/Envelopes.h"
#include "link/FieldReaders.h"

#include <QDataStream>
#include <QJsonDocument>

#include <cmath>

using Fuzzing::require;
using namespace MinibarHelperProtocol;

namespace {

// As they are written: large whole numbers come back as integers, which compare unlike the same number.
QByteArray written(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

void checkArrival(const QJsonObject& arguments, int id)
{
    const QString command = QStringLiteral("command");
    Host::Request request;
    QString error;
    require(Host::parseRequest(writeRequest(id, command, arguments), request, error),
            "a request is understood");
    require(request.id == id && request.command == command, "number and command arrive");
    require(written(request.arguments) == written(arguments), "the arguments arrive");
}

// A number that JSON can carry.
double readNumber(QDataStream& stream)
{
    double number = 0.0;
    stream >> number;
    return std::isfinite(number) ? number : 0.0;
}

QString readText(QDataStream& stream)
{
    quint8 length = 0;
    stream >> length;
    QByteArray text(length, ' ');
    stream.readRawData(text.data(), length);
    return QString::fromUtf8(text);
}

void checkSweepChange(QDataStream& stream, int id)
{
    SweepChangeRequest change;
    stream >> change.expectedRevision >> change.settings.enabled;
    quint8 plan = 0;
    stream >> plan;
    change.settings.selectedPlanId = plan % 2 == 0 ? SweepPlanId::FrequencyScan : SweepPlanId::LevelScan;
    SweepSettings& settings = change.settings;
    for (double* number : {&settings.startHz, &settings.stopHz, &settings.stepHz, &settings.startDbm,
                           &settings.stopDbm, &settings.stepDb, &settings.dwellSeconds}) {
        *number = readNumber(stream);
    }
    checkArrival(change.toJson(), id);
    SweepSettings arrived;
    QString error;
    const bool read = parseSweepSettings(change.toJson(), &arrived, &error);
    require(read ? arrived == settings : !error.isEmpty(), "the settings arrive, or a reason is given");
}

void checkModulationChange(QDataStream& stream, int id)
{
    ModChangeRequest change;
    change.businessId = readText(stream);
    stream >> change.expectedRevision >> change.hasEnabled >> change.enabled >> change.hasProfile;
    change.action = readText(stream);
    change.arguments.insert(readText(stream), readNumber(stream));
    change.profile.insert(readText(stream), readText(stream));
    checkArrival(change.toJson(), id);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input = Fuzzing::bytes(data, size);
    Host::Request request;
    QString error;
    if (!Host::parseRequest(QString::fromUtf8(input), request, error)) {
        require(!error.isEmpty(), "a refusal says why");
    } else {
        require(request.id > 0, "a request has a number");
        checkArrival(request.arguments, request.id);
    }

    QDataStream stream(input);
    quint32 number = 0;
    stream >> number;
    const int id = 1 + int(number % 2147483647U);
    if (number % 2 == 0) {
        checkSweepChange(stream, id);
    } else {
        checkModulationChange(stream, id);
    }
    return 0;
}
