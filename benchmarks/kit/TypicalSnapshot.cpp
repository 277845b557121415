#include "kit/TypicalSnapshot.h"

#include "simulator/SignalGenerator.h"
#include "simulator/SnapshotWriter.h"

#include <QJsonDocument>

QJsonObject typicalSnapshot()
{
    const Simulator::SignalGenerator instrument;
    return Simulator::snapshotOf(instrument);
}

QByteArray snapshotLine(QJsonObject snapshot, int sequence)
{
    snapshot.insert(QStringLiteral("seq"), sequence);
    const QJsonObject event{{QStringLiteral("event"), QStringLiteral("STAT:SNAP")},
                            {QStringLiteral("payload"), snapshot}};
    return "EVT " + QJsonDocument(event).toJson(QJsonDocument::Compact) + '\n';
}

SnapshotSource::SnapshotSource()
{
    constexpr int marker = 987654321;
    const QByteArray line = snapshotLine(typicalSnapshot(), marker);
    const QByteArray number = QByteArray::number(marker);
    m_beforeNumber = line.left(line.indexOf(number));
    m_afterNumber = line.mid(line.indexOf(number) + number.size());
}

QByteArray SnapshotSource::next()
{
    return m_beforeNumber + QByteArray::number(++m_sequence) + m_afterNumber;
}

QByteArray SnapshotSource::next(int count)
{
    QByteArray lines;
    for (int i = 0; i < count; ++i)
        lines += next();
    return lines;
}
