#include "controls/ListHint.h"

#include "controls/ThemeManager.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QString>

namespace Controls {
namespace {

constexpr int margin = 20; // pixels

} // namespace

void paintListHint(QAbstractItemView& list, const QString& hint, int listed)
{
    if (hint.isEmpty()) {
        return;
    }
    QPainter painter(list.viewport());
    painter.setPen(ThemeManager::instance().color(ThemeManager::SecondaryText));
    painter.drawText(list.viewport()->rect().adjusted(margin, listed, -margin, 0),
                     Qt::AlignCenter | Qt::TextWordWrap, hint);
}

} // namespace Controls
