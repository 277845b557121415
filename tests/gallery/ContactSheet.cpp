#include "gallery/ContactSheet.h"

#include <QHash>
#include <QPainter>
#include <algorithm>
#include <functional>

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

// A colour in 15 bits; colours that share one look alike.
int coarse(QRgb colour)
{
    return qRed(colour) >> 3 << 10 | qGreen(colour) >> 3 << 5 | qBlue(colour) >> 3;
}

int distance(QRgb left, QRgb right)
{
    return std::abs(qRed(left) - qRed(right)) + std::abs(qGreen(left) - qGreen(right)) +
           std::abs(qBlue(left) - qBlue(right));
}

// The 256 colours that are most frequent, each other one as the nearest of them.
QImage inFewColours(const QImage& picture)
{
    QHash<int, QPair<int, QRgb>> counts; // by coarse colour: how often, and one of them
    for (int y = 0; y < picture.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            auto& count = counts[coarse(line[x])];
            count = {count.first + 1, count.first == 0 ? line[x] : count.second};
        }
    }
    QVector<QPair<int, QRgb>> frequent = counts.values().toVector();
    std::sort(frequent.begin(), frequent.end(), std::greater<>());
    QVector<QRgb> palette;
    for (int i = 0; i < std::min(256, frequent.size()); ++i)
        palette.append(frequent.at(i).second);
    QHash<int, int> nearest; // place in the palette by coarse colour
    for (auto it = counts.constBegin(); it != counts.constEnd(); ++it) {
        const QRgb colour = it->second;
        const auto place =
            std::min_element(palette.cbegin(), palette.cend(), [colour](QRgb left, QRgb right) {
                return distance(left, colour) < distance(right, colour);
            });
        nearest.insert(it.key(), int(place - palette.cbegin()));
    }
    QImage indexed(picture.size(), QImage::Format_Indexed8);
    indexed.setColorTable(palette);
    for (int y = 0; y < picture.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            indexed.scanLine(y)[x] = uchar(nearest.value(coarse(line[x])));
    }
    return indexed;
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
    return inFewColours(picture.convertToFormat(QImage::Format_RGB32)).save(path, "PNG", smallest);
}
