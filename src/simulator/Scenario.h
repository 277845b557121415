#pragma once

#include "simulator/InstrumentSettings.h"

#include <QJsonObject>
#include <QPoint>
#include <QString>
#include <QVector>

#include <optional>

namespace Simulator {

// How one kind of request is answered.
struct ScenarioRule
{
    enum class Action {
        Answer,  // as ever
        Error,   // not carried out; errorCode and errorMessage
        Silence, // not carried out, not answered
        Stale,   // carried out and pushed; answered with the snapshot of before under its old number
        Payload, // carried out; `payload` is laid over the snapshot of the answer
        Close,   // not carried out; the link is closed
        Raw      // not carried out; `raw` is sent as a line, "{id}" standing for the request's id
    };

    QString command;    // "*" for every one
    int occurrence = 0; // 1 for the first request of that command, and so on; 0 for all of them
    int delayMs = 0;
    Action action = Action::Answer;
    QString errorCode;
    QString errorMessage;
    QJsonObject payload;
    QString raw;
};

// Something that happens by itself.
struct ScenarioStep
{
    enum class Moment { Ready, Visible };
    enum class Action {
        Push,    // a snapshot with `object` laid over it
        Raw,     // `raw` as a line
        Set,     // `settings`, as if turned at the instrument
        Show,    // the bar, at `anchor`
        Hide,    // the bar
        Shutdown // the helper
    };

    Moment moment = Moment::Ready;
    int delayMs = 0; // after the moment
    Action action = Action::Push;
    QJsonObject object;
    QString raw;
    InstrumentSettings settings;
    std::optional<QPoint> anchor;
};

// A script for the simulator: where it starts, how it answers, what happens by itself. docs/scenarios.md
// tells how it is written.
struct Scenario
{
    InstrumentSettings initial;
    QJsonObject overlay;         // laid over every snapshot
    QVector<ScenarioRule> rules; // the first that fits counts
    QVector<ScenarioStep> timeline;
};

// On failure `error` names the key, and `target` stays as it was.
[[nodiscard]] bool parseScenario(const QByteArray& json, Scenario& target, QString& error);
// The same for a file; `error` names the file as well.
[[nodiscard]] bool loadScenario(const QString& path, Scenario& target, QString& error);

} // namespace Simulator
