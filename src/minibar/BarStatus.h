#pragma once

#include "link/ModSnapshot.h"
#include "link/SweepSnapshot.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QString>
#include <QVector>

// What the main process last confirmed, as far as the bar shows or edits it.
struct BarStatus
{
    Q_DECLARE_TR_FUNCTIONS(RemoteMiniBarWindow)

public:
    int lastSequence = 0; // the highest positive "seq" seen
    bool rfOn = false;
    QString rfText;
    double centerHz = 1e9;
    double levelDbm = -20.0;
    QString frequencyText;
    QString levelText;
    QString centerUnit;
    QString levelUnit;
    bool sweepPresent = false;
    SweepSnapshot sweep;
    bool modulationOn = false;
    QString enabledBusinessId;
    QVector<ModBusinessEntry> businesses;

    [[nodiscard]] bool sweepActive() const { return sweepPresent && sweep.settings.enabled; }

    // Takes a snapshot over. False, and nothing changed, when it is older than one taken before. A malformed
    // sweep is logged and counts as no sweep.
    [[nodiscard]] bool apply(const QJsonObject& snapshot);

private:
    [[nodiscard]] bool acceptSequence(int sequence);
    void applyTransmitter(const QJsonObject& tx);
    void applySweep(const QJsonObject& snapshot);
    void applyModulation(const QJsonObject& mod);

    // What sweep and modulation have been read from.
    QJsonValue m_sweepSource;
    QJsonObject m_modulationSource;
};
