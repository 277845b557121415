#include "controls/ThemedIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>

namespace Controls {
namespace {

class ThemedIconEngine final : public QIconEngine
{
public:
    ThemedIconEngine(const QString& path, ThemeManager::Role role)
        : m_path(path)
        , m_role(role)
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const double ratio = painter->device()->devicePixelRatioF();
        QPixmap image = pixmap(rect.size() * ratio, mode, state);
        image.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect, image);
    }

    // `size` in device pixels, as everywhere in this interface.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const QColor color =
            ThemeManager::instance().color(mode == QIcon::Disabled ? ThemeManager::DisabledText : m_role);
        const QString key = QStringLiteral("%1 %2 %3x%4")
                                .arg(m_path, color.name(QColor::HexArgb))
                                .arg(size.width())
                                .arg(size.height());
        QPixmap image;
        if (!QPixmapCache::find(key, &image)) {
            image = colored(QIcon(m_path), size, color);
            QPixmapCache::insert(key, image);
        }
        return image;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new ThemedIconEngine(m_path, m_role); }
    [[nodiscard]] QString iconName() const override { return m_path; }

private:
    static QPixmap colored(const QIcon& icon, const QSize& size, const QColor& color)
    {
        QPixmap image(size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        icon.paint(&painter, QRect(QPoint(0, 0), size));
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
        return image;
    }

    QString m_path;
    ThemeManager::Role m_role;
};

} // namespace

QIcon themedIcon(const QString& path, ThemeManager::Role role)
{
    return QIcon(new ThemedIconEngine(path, role));
}

} // namespace Controls
