#pragma once

#include <QRectF>
#include <QString>
#include <QVector>

class QWidget;

// A piece of text as a widget has painted it, in the widget's coordinates.
struct PaintedText
{
    QString text;
    QRectF ink;  // what the letters cover
    QRectF clip; // what of it can be seen
};

// Every text that the widget itself paints, its children left out: paints it once, to nowhere.
[[nodiscard]] QVector<PaintedText> paintedTexts(QWidget* widget);
