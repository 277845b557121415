#pragma once

#include <QImage>
#include <QVector>

// Many pictures on one, each with its name below, in rows from left to right.
class ContactSheet final
{
public:
    // `zoom`: how large each picture is shown, in sheet pixels for one of the layout.
    explicit ContactSheet(double zoom);

    void add(const QString& name, const QImage& picture);
    [[nodiscard]] bool isEmpty() const { return m_cells.isEmpty(); }
    // Begins a new row.
    void endRow();
    [[nodiscard]] QImage paint(int width) const;

private:
    struct Cell
    {
        QString name;
        QImage picture; // as it goes on the sheet
        bool endsRow = false;
    };
    struct Place
    {
        QRect rect;
        const Cell* cell;
    };
    [[nodiscard]] QVector<Place> arrange(int width) const;

    double m_zoom;
    QVector<Cell> m_cells;
};

// Writes a picture with few colours, as user interfaces have, in little room; false if it cannot be written.
[[nodiscard]] bool saveSmall(const QImage& picture, const QString& path);
