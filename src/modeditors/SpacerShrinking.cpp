#include "modeditors/SpacerShrinking.h"

#include <QGridLayout>
#include <QWidget>
#include <utility>

namespace {

QSpacerItem* lowestSpacer(const QGridLayout& layout)
{
    QSpacerItem* lowest = nullptr;
    std::pair<int, int> lowestPlace; // last row, column
    for (int i = 0; i < layout.count(); ++i) {
        QSpacerItem* const spacer = layout.itemAt(i)->spacerItem();
        if (!spacer) {
            continue;
        }
        int row = 0;
        int column = 0;
        int rowSpan = 0;
        int columnSpan = 0;
        layout.getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
        const std::pair<int, int> place(row + rowSpan - 1, column);
        if (!lowest || place > lowestPlace) {
            lowest = spacer;
            lowestPlace = place;
        }
    }
    return lowest;
}

} // namespace

void shrinkLowestSpacers(QWidget* editor)
{
    const auto layouts = editor->findChildren<QGridLayout*>();
    for (QGridLayout* layout : layouts) {
        QSpacerItem* const spacer = lowestSpacer(*layout);
        if (!spacer || spacer->sizeHint().height() == 0) {
            continue;
        }
        spacer->changeSize(spacer->sizeHint().width(), 0, spacer->sizePolicy().horizontalPolicy(),
                           QSizePolicy::Fixed);
        layout->invalidate(); // it keeps what it knew of its items
        layout->activate();
    }
    editor->updateGeometry();
}
