#pragma once

#include <QImage>
#include <QWidget>

namespace TestSupport {

// Whether something is drawn on the widget, rather than one colour all over.
inline bool hasInk(QWidget* widget)
{
    const QImage picture = widget->grab().toImage();
    const QRgb paper = picture.pixel(picture.rect().center().x(), 0);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != paper)
                return true;
        }
    }
    return false;
}

} // namespace TestSupport
