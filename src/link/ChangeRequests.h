#pragma once

#include "link/SweepSnapshot.h"

#include <QJsonObject>
#include <QMetaType>
#include <QString>

namespace MinibarHelperProtocol {

// The sweep as the user wants it, complete.
struct SweepChangeRequest
{
    int expectedRevision = 0; // of the snapshot that the change was made from
    SweepSettings settings;

    // The arguments of the command; all keys always.
    [[nodiscard]] QJsonObject toJson() const;
};

// A change of one modulation function: its switch, an action of its editor, its profile, or several of them.
struct ModChangeRequest
{
    QString businessId;
    int expectedRevision = 0; // of that function; 0 or below: unchecked
    bool hasEnabled = false;
    bool enabled = false; // only with hasEnabled
    QString action;       // empty: none
    QJsonObject arguments;
    bool hasProfile = false;
    QJsonObject profile; // only with hasProfile

    // The arguments of the command; a key only for what the request asks.
    [[nodiscard]] QJsonObject toJson() const;
};

// Makes both records known to the meta-type system under their full names.
void registerChangeRequests();

} // namespace MinibarHelperProtocol

Q_DECLARE_METATYPE(MinibarHelperProtocol::SweepChangeRequest)
Q_DECLARE_METATYPE(MinibarHelperProtocol::ModChangeRequest)
