#pragma once

#include <QJsonObject>
#include <QStringList>

// What the main process says of thirteen modulation items, one for each editor, in a state in which every
// control can be used. `%1` stands for the folder of the waveforms.
class EditorItems final
{
public:
    explicit EditorItems(const QString& folder = QString());

    // A snapshot with all items, each as it is at first; the sequence number and the items' revision follow
    // from how many there have been.
    [[nodiscard]] QJsonObject firstState();
    // Another one, in which an item differs: objects are merged, anything else takes the place of what was.
    [[nodiscard]] QJsonObject changed(const QString& id, const QJsonObject& difference);

    [[nodiscard]] int revision() const { return m_sequence; }
    // The ids in the order of the menu.
    [[nodiscard]] QStringList ids() const;
    // The title of the item's popup.
    [[nodiscard]] static QString title(const QString& id) { return QStringLiteral("Title of ") + id; }

private:
    QJsonObject m_snapshot; // as it is at first
    int m_sequence = 0;
};
