#include "layout/PaintedTexts.h"

#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

namespace {

// From the first letter's begin to the last one's end, as high as the letters are; with the base line at 0.
QRectF inkOf(const QTextItem& item)
{
    QString text = item.text();
    const QFontMetricsF metrics(item.font());
    const QRectF letters = metrics.tightBoundingRect(text);
    const int blanks = text.size() - int(text.trimmed().size());
    const double trailing =
        text.endsWith(QLatin1Char(' ')) ? blanks * metrics.horizontalAdvance(QLatin1Char(' ')) : 0;
    return {0, letters.top(), item.width() - trailing, letters.height()};
}

// Keeps the texts of what is painted on it and nothing else.
class TextRecorder final : public QPaintEngine
{
public:
    TextRecorder()
        : QPaintEngine(AllFeatures)
    {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override {}
    void drawTiledPixmap(const QRectF&, const QPixmap&, const QPointF&) override {}
    void drawPath(const QPainterPath&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawEllipse(const QRectF&) override {}
    [[nodiscard]] Type type() const override { return User; }

    void drawTextItem(const QPointF& position, const QTextItem& item) override
    {
        if (item.text().trimmed().isEmpty())
            return;
        const QTransform toWidget = painter()->transform();
        const QRectF ink = inkOf(item).translated(position);
        const QRectF device(0, 0, paintDevice()->width(), paintDevice()->height());
        const QRectF clip =
            painter()->hasClipping() ? toWidget.mapRect(painter()->clipBoundingRect()) & device : device;
        append({item.text(), toWidget.mapRect(ink), clip});
    }

    QVector<PaintedText> texts;

private:
    // What is painted in two halves is one text.
    void append(const PaintedText& text)
    {
        for (PaintedText& before : texts) {
            if (before.text == text.text && before.ink == text.ink) {
                before.clip |= text.clip;
                return;
            }
        }
        texts.append(text);
    }
};

// As large as the widget and with its resolution, but without its pixels.
class Nowhere final : public QPaintDevice
{
public:
    explicit Nowhere(const QWidget* widget)
        : m_widget(widget)
    {}
    [[nodiscard]] QPaintEngine* paintEngine() const override { return &m_recorder; }
    [[nodiscard]] const QVector<PaintedText>& texts() const { return m_recorder.texts; }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_widget->width();
        case PdmHeight:
            return m_widget->height();
        case PdmDpiX:
        case PdmPhysicalDpiX:
            return m_widget->logicalDpiX();
        case PdmDpiY:
        case PdmPhysicalDpiY:
            return m_widget->logicalDpiY();
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    const QWidget* m_widget;
    mutable TextRecorder m_recorder;
};

} // namespace

QVector<PaintedText> paintedTexts(QWidget* widget)
{
    Nowhere device(widget);
    widget->render(&device, QPoint(), QRegion(), QWidget::RenderFlags());
    return device.texts();
}
