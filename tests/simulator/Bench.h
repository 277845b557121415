#pragma once

#include "host/FakeHelper.h"
#include "simulator/JsonTexts.h"
#include "simulator/RequestDesk.h"
#include "simulator/Scenario.h"
#include "simulator/ScenarioTimeline.h"
#include "simulator/SignalGenerator.h"

#include <QtTest>

inline Simulator::Scenario scenarioOf(const QByteArray& json)
{
    Simulator::Scenario scenario;
    QString error;
    if (!Simulator::parseScenario(json, scenario, error))
        qFatal("%s", qPrintable(error));
    return scenario;
}

// A ready mini bar in front of a simulated instrument; the first snapshot has been heard.
struct Bench
{
    explicit Bench(const QByteArray& json = "{}", const QString& waveformFolder = {})
        : Bench(scenarioOf(json), waveformFolder)
    {}
    explicit Bench(const Simulator::Scenario& scenario, const QString& waveformFolder = {})
        : instrument(waveformFolder)
        , desk(f.host, instrument, scenario)
        , timeline(f.host, desk, instrument, scenario.timeline)
    {
        scenario.initial.applyTo(instrument);
        f.reachReady();
        first = payload(QStringLiteral("EVT"));
    }

    // Sends a request; the arguments are a JSON object.
    void ask(int id, const char* command, const QByteArray& arguments)
    {
        f.helper.say(QStringLiteral(R"(REQ {"v":1,"id":%1,"cmd":"%2","args":%3})")
                         .arg(id)
                         .arg(QLatin1String(command), QString::fromUtf8(arguments)));
    }
    QJsonObject hear(const QString& word) { return f.helper.hearObject(word); }
    QJsonObject payload(const QString& word)
    {
        return hear(word).value(QStringLiteral("payload")).toObject();
    }
    QJsonObject error() { return hear(QStringLiteral("RSP")).value(QStringLiteral("error")).toObject(); }
    QString errorCode() { return error().value(QStringLiteral("code")).toString(); }

    HostFixture f;
    Simulator::SignalGenerator instrument;
    Simulator::RequestDesk desk;
    Simulator::ScenarioTimeline timeline;
    QJsonObject first;
};

inline int seq(const QJsonObject& snapshot)
{
    return snapshot.value(QStringLiteral("seq")).toInt();
}
