#pragma once

#include <QIcon>

class QTableWidget;

// The mark in a waveform table's header that the loaded file is not in view.
class LocateMarker final
{
public:
    explicit LocateMarker(QTableWidget* table);

    // On the second section, or on the first while the second is hidden.
    void show(bool needed);
    [[nodiscard]] bool isOn(int section) const { return section == m_section; }

private:
    void setIcon(int section, const QIcon& icon) const;

    QTableWidget* m_table;
    const QIcon m_icon;
    int m_section = -1; // that carries the mark; -1 for none
};
