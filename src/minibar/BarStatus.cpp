#include "minibar/BarStatus.h"

#include "link/Keys.h"
#include "minibar/Logging.h"
#include "utils/NumberText.h"

namespace Keys = MinibarHelperProtocol::Keys;

bool BarStatus::apply(const QJsonObject& snapshot)
{
    if (!acceptSequence(snapshot.value(Keys::seq).toInt()))
        return false;
    applyTransmitter(snapshot.value(Keys::tx).toObject());
    applySweep(snapshot);
    applyModulation(snapshot.value(Keys::mod).toObject());
    return true;
}

bool BarStatus::acceptSequence(int sequence)
{
    if (sequence <= 0)
        return true; // a main process that does not number its snapshots is followed all the same
    if (sequence < lastSequence)
        return false;
    lastSequence = sequence;
    return true;
}

void BarStatus::applyTransmitter(const QJsonObject& tx)
{
    rfOn = tx.value(Keys::rf).toBool();
    rfText = rfOn ? tr("ON") : tr("OFF");

    const QString nothing = QStringLiteral("--");
    const QJsonValue hz = tx.value(Keys::centerHz);
    if (hz.isDouble())
        centerHz = hz.toDouble();
    frequencyText = tx.value(Keys::centerText).toString().trimmed();
    if (frequencyText.isEmpty())
        frequencyText = hz.isDouble() ? Utils::normalizeFrequency(centerHz, true, false) : nothing;
    centerUnit = tx.value(Keys::centerUnit).toString();

    const QJsonValue dbm = tx.value(Keys::levelDbm);
    if (dbm.isDouble())
        levelDbm = dbm.toDouble();
    levelText = tx.value(Keys::levelText).toString().trimmed();
    if (levelText.isEmpty()) {
        levelText =
            dbm.isDouble() ? QStringLiteral("%1 dBm").arg(Utils::toString(levelDbm, 3, true)) : nothing;
    }
    levelUnit = tx.value(Keys::levelUnit).toString();
}

// Comparing costs a third of reading anew, and most snapshots change neither sweep nor modulation. What is
// malformed is read each time, and told each time.
void BarStatus::applySweep(const QJsonObject& snapshot)
{
    const QJsonValue value = snapshot.value(Keys::sweep);
    if (sweepPresent && value == m_sweepSource)
        return;
    m_sweepSource = value;
    sweepPresent = false;
    if (value.isObject()) {
        QString error;
        sweepPresent = MinibarHelperProtocol::parseSweepSnapshot(value.toObject(), &sweep, &error);
        if (!sweepPresent)
            qCWarning(lcWindow).noquote() << "Ignoring malformed minibar Sweep snapshot:" << error;
    }
    if (!sweepPresent)
        sweep = SweepSnapshot();
}

void BarStatus::applyModulation(const QJsonObject& mod)
{
    if (mod == m_modulationSource)
        return;
    m_modulationSource = mod;
    ModSnapshot parsed = MinibarHelperProtocol::parseModSnapshot(mod);
    modulationOn = parsed.enabled;
    enabledBusinessId = std::move(parsed.enabledBusinessId);
    businesses = std::move(parsed.businesses);
}
