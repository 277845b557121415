#include "simulator/Scenario.h"

#include "link/Keys.h"
#include "simulator/CheckedObject.h"
#include "simulator/ErrorTexts.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <limits>

namespace Simulator {

namespace Keys = MinibarHelperProtocol::Keys;

namespace {

// The vocabulary of the file. Where a key says what a key of the link says, it is that one.
namespace Words {

const QLatin1String description("description");
const QLatin1String initial("initial");
const QLatin1String overlay("overlay");
const QLatin1String rules("rules");
const QLatin1String timeline("timeline");
const QLatin1String nth("nth");
const QLatin1String delayMs("delayMs");
const QLatin1String silence("silence");
const QLatin1String stale("stale");
const QLatin1String close("close");
const QLatin1String raw("raw");
const QLatin1String afterReady("afterReady");
const QLatin1String afterVisible("afterVisible");
const QLatin1String push("push");
const QLatin1String set("set");
const QLatin1String show("show");
const QLatin1String hide("hide");
const QLatin1String shutdown("shutdown");

} // namespace Words

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

// Notes that an action was named; a second one is a fault.
template <typename Action>
void choose(CheckedObject& reader, QLatin1String key, Action& target, Action action, bool& chosen)
{
    if (chosen)
        reader.fault(key, translated("is a second action, one is allowed"));
    chosen = true;
    target = action;
}

QString readLine(CheckedObject& reader, QLatin1String key)
{
    const QString line = reader.text(key).value_or(QString());
    if (line.contains(QLatin1Char('\n')))
        reader.fault(key, translated("must not hold a line feed"));
    return line;
}

void readError(CheckedObject& outer, ScenarioRule& rule, QString& error)
{
    CheckedObject reader(outer.object(Keys::error).value_or(QJsonObject()), outer.pathOf(Keys::error), error);
    rule.errorCode = reader.text(Keys::code).value_or(QString());
    const QString usual = errorText(rule.errorCode);
    if (usual.isEmpty())
        reader.fault(Keys::code, translated("must be an error code of the main process"));
    rule.errorMessage = reader.text(Keys::message).value_or(usual);
    (void)reader.finish();
}

ScenarioRule readRule(const QJsonObject& object, const QString& path, QString& error)
{
    using Action = ScenarioRule::Action;
    CheckedObject reader(object, path, error);
    ScenarioRule rule;
    if (!reader.contains(Keys::cmd))
        reader.fault(Keys::cmd, translated("is missing"));
    rule.command = reader.text(Keys::cmd).value_or(QString());
    rule.occurrence = reader.integer(Words::nth, 1).value_or(0);
    rule.delayMs = reader.integer(Words::delayMs, 0).value_or(0);
    bool chosen = false;
    if (reader.contains(Keys::error)) {
        choose(reader, Keys::error, rule.action, Action::Error, chosen);
        readError(reader, rule, error);
    }
    if (reader.flag(Words::silence))
        choose(reader, Words::silence, rule.action, Action::Silence, chosen);
    if (reader.flag(Words::stale))
        choose(reader, Words::stale, rule.action, Action::Stale, chosen);
    if (reader.contains(Keys::payload)) {
        choose(reader, Keys::payload, rule.action, Action::Payload, chosen);
        rule.payload = reader.object(Keys::payload).value_or(QJsonObject());
    }
    if (reader.flag(Words::close))
        choose(reader, Words::close, rule.action, Action::Close, chosen);
    if (reader.contains(Words::raw)) {
        choose(reader, Words::raw, rule.action, Action::Raw, chosen);
        rule.raw = readLine(reader, Words::raw);
    }
    (void)reader.finish();
    return rule;
}

// The anchor of "show": true for none, or [x, y] in pixels.
std::optional<QPoint> readAnchor(CheckedObject& reader)
{
    const QJsonValue value = reader.any(Words::show);
    if (value == QJsonValue(true))
        return std::nullopt;
    const QJsonArray pair = value.toArray();
    const auto isPixel = [](const QJsonValue& number) {
        return number.isDouble() && std::abs(number.toDouble()) <= std::numeric_limits<int>::max() &&
               number.toDouble() == std::floor(number.toDouble());
    };
    if (pair.size() == 2 && isPixel(pair.at(0)) && isPixel(pair.at(1)))
        return QPoint(pair.at(0).toInt(), pair.at(1).toInt());
    reader.fault(Words::show, translated("must be true or two whole numbers [x, y]"));
    return std::nullopt;
}

void readMoment(CheckedObject& reader, ScenarioStep& step)
{
    const std::optional<int> afterReady = reader.integer(Words::afterReady, 0);
    const std::optional<int> afterVisible = reader.integer(Words::afterVisible, 0);
    if (reader.contains(Words::afterReady) == reader.contains(Words::afterVisible))
        reader.fault(QString(),
                     translated("needs either '%1' or '%2'").arg(Words::afterReady, Words::afterVisible));
    step.moment = afterVisible ? ScenarioStep::Moment::Visible : ScenarioStep::Moment::Ready;
    step.delayMs = afterVisible ? *afterVisible : afterReady.value_or(0);
}

ScenarioStep readStep(const QJsonObject& object, const QString& path, QString& error)
{
    using Action = ScenarioStep::Action;
    CheckedObject reader(object, path, error);
    ScenarioStep step;
    readMoment(reader, step);
    bool chosen = false;
    if (reader.contains(Words::push)) {
        choose(reader, Words::push, step.action, Action::Push, chosen);
        step.object = reader.object(Words::push).value_or(QJsonObject());
    }
    if (reader.contains(Words::raw)) {
        choose(reader, Words::raw, step.action, Action::Raw, chosen);
        step.raw = readLine(reader, Words::raw);
    }
    if (reader.contains(Words::set)) {
        choose(reader, Words::set, step.action, Action::Set, chosen);
        step.settings = readInstrumentSettings(reader.object(Words::set).value_or(QJsonObject()),
                                               reader.pathOf(Words::set), error);
    }
    if (reader.contains(Words::show)) {
        choose(reader, Words::show, step.action, Action::Show, chosen);
        step.anchor = readAnchor(reader);
    }
    if (reader.flag(Words::hide))
        choose(reader, Words::hide, step.action, Action::Hide, chosen);
    if (reader.flag(Words::shutdown))
        choose(reader, Words::shutdown, step.action, Action::Shutdown, chosen);
    if (!chosen)
        reader.fault(QString(), translated("has no action"));
    (void)reader.finish();
    return step;
}

// Every element of an array of objects through `read`.
template <typename Element>
QVector<Element> readList(CheckedObject& reader, QLatin1String key, QString& error,
                          Element (*read)(const QJsonObject&, const QString&, QString&))
{
    const QJsonValue value = reader.any(key);
    if (!value.isUndefined() && !value.isArray())
        reader.fault(key, translated("must be an array"));
    QVector<Element> elements;
    const QJsonArray array = value.toArray();
    for (int i = 0; i < array.size(); ++i) {
        const QString path = QStringLiteral("%1[%2]").arg(key).arg(i);
        if (!array.at(i).isObject())
            reader.fault(path, translated("must be an object"));
        elements.append(read(array.at(i).toObject(), path, error));
    }
    return elements;
}

} // namespace

bool parseScenario(const QByteArray& json, Scenario& target, QString& error)
{
    error.clear();
    QJsonParseError parseError{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        error = translated("At byte %1: %2.").arg(parseError.offset).arg(parseError.errorString());
        return false;
    }
    if (!document.isObject()) {
        error = translated("The file must hold one object.");
        return false;
    }
    CheckedObject reader(document.object(), QString(), error);
    (void)reader.text(Words::description);
    Scenario scenario;
    scenario.initial =
        readInstrumentSettings(reader.object(Words::initial).value_or(QJsonObject()), Words::initial, error);
    scenario.overlay = reader.object(Words::overlay).value_or(QJsonObject());
    scenario.rules = readList<ScenarioRule>(reader, Words::rules, error, readRule);
    scenario.timeline = readList<ScenarioStep>(reader, Words::timeline, error, readStep);
    if (!reader.finish())
        return false;
    target = scenario;
    return true;
}

bool loadScenario(const QString& path, Scenario& target, QString& error)
{
    QFile file(path);
    QString reason;
    if (!file.open(QIODevice::ReadOnly))
        reason = file.errorString();
    else if (parseScenario(file.readAll(), target, reason))
        return true;
    error = translated("%1: %2").arg(path, reason);
    return false;
}

} // namespace Simulator
