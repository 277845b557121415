#include "modeditors/LocateMarker.h"

#include "controls/ThemedIcon.h"
#include "modeditors/WaveformTable.h"

LocateMarker::LocateMarker(QTableWidget* table)
    : m_table(table)
    , m_icon(Controls::themedIcon(QStringLiteral(":/QuickWaveform/Image/position.svg")))
{}

void LocateMarker::show(bool needed)
{
    const int carrier =
        m_table->isColumnHidden(WaveformTable::Facts) ? WaveformTable::Name : WaveformTable::Facts;
    const int section = needed ? carrier : -1;
    if (section != m_section) {
        setIcon(m_section, {});
        setIcon(section, m_icon);
        m_section = section;
    }
}

void LocateMarker::setIcon(int section, const QIcon& icon) const
{
    QTableWidgetItem* const caption = section < 0 ? nullptr : m_table->horizontalHeaderItem(section);
    if (caption) {
        caption->setIcon(icon);
    }
}
