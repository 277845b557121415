#pragma once

#include <QImage>
#include <QWidget>

namespace TestSupport {

// What a screen of this scale shows of the widget, pixel by pixel of the screen.
[[nodiscard]] inline QImage rendered(QWidget* widget, double scale)
{
    QImage picture(widget->size() * scale, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    widget->render(&picture);
    picture.setDevicePixelRatio(1);
    return picture;
}

} // namespace TestSupport
