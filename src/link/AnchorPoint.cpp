#include "link/AnchorPoint.h"

#include <QStringList>

namespace MinibarHelperProtocol {

QPoint readAnchorPoint(const QString& payload)
{
    const QStringList parts = payload.split(QLatin1Char(','));
    if (parts.size() != 2)
        return noAnchor;
    bool hasX = false;
    bool hasY = false;
    const int x = parts[0].trimmed().toInt(&hasX, 10);
    const int y = parts[1].trimmed().toInt(&hasY, 10);
    return hasX && hasY ? QPoint(x, y) : noAnchor;
}

QString writeAnchorPoint(QPoint topRight)
{
    return QStringLiteral("%1,%2").arg(topRight.x()).arg(topRight.y());
}

} // namespace MinibarHelperProtocol
