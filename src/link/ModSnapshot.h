#pragma once

#include <QJsonObject>
#include <QString>
#include <QVector>

// One modulation function that the user can pick.
struct ModBusinessEntry
{
    QString id;
    QString name; // may be empty
    QString text; // shown
    QJsonObject profile;
    QString editorKind;
    QJsonObject editorState;
    int revision = 0;
};

// The "mod" object of a snapshot.
struct ModSnapshot
{
    bool enabled = false;
    QString enabledBusinessId;
    QVector<ModBusinessEntry> businesses; // in display order
};

[[nodiscard]] bool operator==(const ModBusinessEntry& left, const ModBusinessEntry& right);
[[nodiscard]] inline bool operator!=(const ModBusinessEntry& left, const ModBusinessEntry& right)
{
    return !(left == right);
}

namespace MinibarHelperProtocol {

// Never fails: what is missing or of the wrong type reads as empty. A business without id or text is left
// out.
[[nodiscard]] ModSnapshot parseModSnapshot(const QJsonObject& object);

} // namespace MinibarHelperProtocol
