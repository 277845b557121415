#include "gallery/ContactSheet.h"

#include <QPainter>
#include <algorithm>

namespace {

constexpr int gap = 16; // pixels, as the next
constexpr int nameHeight = 16;
constexpr int nameSize = 11;
constexpr QRgb background = 0xff8a8a8a;

QFont nameFont()
{
    QFont font;
    font.setPixelSize(nameSize);
    return font;
}

} // namespace

ContactSheet::ContactSheet(double zoom)
    : m_zoom(zoom)
{}

void ContactSheet::add(const QString& name, const QImage& picture)
{
    const QSize size = (QSizeF(picture.size()) / picture.devicePixelRatioF() * m_zoom).toSize();
    QImage scaled = picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(1);
    m_cells.append({name, scaled});
}

void ContactSheet::endRow()
{
    if (!m_cells.isEmpty())
        m_cells.last().endsRow = true;
}

QVector<ContactSheet::Place> ContactSheet::arrange(int width) const
{
    QVector<Place> places;
    const QFontMetrics names(nameFont());
    QPoint at(gap, gap);
    int rowHeight = 0;
    for (const Cell& cell : m_cells) {
        const int cellWidth = std::max(cell.picture.width(), names.horizontalAdvance(cell.name));
        if (at.x() > gap && at.x() + cellWidth + gap > width) {
            at = QPoint(gap, at.y() + rowHeight + nameHeight + gap);
            rowHeight = 0;
        }
        places.append({QRect(at, cell.picture.size()), &cell});
        rowHeight = std::max(rowHeight, cell.picture.height());
        at.rx() += cellWidth + gap;
        if (cell.endsRow)
            at.rx() = width;
    }
    return places;
}

QImage ContactSheet::paint(int width) const
{
    const QVector<Place> places = arrange(width);
    int bottom = 0;
    int right = 0;
    for (const Place& place : places) {
        bottom = std::max(bottom, place.rect.bottom() + nameHeight + gap);
        right = std::max(right, place.rect.right() + gap);
    }
    QImage sheet(right, bottom, QImage::Format_RGB32);
    sheet.fill(background);
    QPainter painter(&sheet);
    painter.setFont(nameFont());
    for (const Place& place : places) {
        painter.drawImage(place.rect.topLeft(), place.cell->picture);
        painter.drawText(QPoint(place.rect.left(), place.rect.bottom() + nameHeight), place.cell->name);
    }
    return sheet;
}

bool saveSmall(const QImage& picture, const QString& path)
{
    constexpr int smallest = 0; // of PNG's qualities
    return picture.convertToFormat(QImage::Format_Indexed8, Qt::AvoidDither).save(path, "PNG", smallest);
}
