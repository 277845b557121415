#include "controls/PopupWidget.h"

#include "controls/ElidedLabel.h"
#include "controls/Emphasis.h"
#include "controls/Marks.h"
#include "controls/Placement.h"
#include "controls/ThemeManager.h"

#include <QGuiApplication>
#include <QHideEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

using Controls::ThemeManager;

namespace {

constexpr int border = 1; // pixels, as the next four
constexpr int titleHeight = 36;
constexpr int titleInset = 10;
constexpr int titleSize = 14;

QRect screenAround(const QWidget* anchor, const QPoint& center)
{
    const QScreen* const here = QGuiApplication::screenAt(center);
    return (here ? here : anchor->screen())->availableGeometry();
}

} // namespace

PopupWidget::PopupWidget(QWidget* owner)
    : QWidget(owner->window(), Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint)
    , m_rows(new QVBoxLayout(this))
    , m_title(new Controls::ElidedLabel(this))
{
    setObjectName(QStringLiteral("enumPopup"));
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_NoMouseReplay);
    setAttribute(Qt::WA_X11NetWmWindowTypeCombo);
    m_rows->setContentsMargins(border, border, border, border);
    m_rows->setSpacing(0);
    m_title->setObjectName(QStringLiteral("popupTitle"));
    m_title->setFixedHeight(titleHeight);
    m_title->setContentsMargins(titleInset, 0, titleInset, 0);
    QFont font = m_title->font();
    font.setPixelSize(titleSize);
    font.setWeight(Controls::emphasis());
    m_title->setFont(font);
    m_title->hide();
    m_rows->addWidget(m_title);
    connect(&ThemeManager::instance(), &ThemeManager::themeChanged, this, qOverload<>(&QWidget::update));
}

PopupWidget::~PopupWidget()
{
    hide(); // while it still is one: who watches for it shall see it go
}

void PopupWidget::setTitle(const QString& title)
{
    m_title->setText(title);
    m_title->setVisible(!title.isEmpty());
    setWindowTitle(title);
}

void PopupWidget::setContent(QWidget* content)
{
    m_rows->addWidget(content, 1);
    setFocusProxy(content);
}

void PopupWidget::openBeside(const QWidget* anchor)
{
    m_anchor = QRect(anchor->mapToGlobal(QPoint(0, 0)), anchor->size());
    ensurePolished();
    const QSize wanted = sizeHint().expandedTo({m_anchor.width(), 0});
    setGeometry(Controls::placeDropDown(m_anchor, wanted, minimumSizeHint().height(),
                                        screenAround(anchor, m_anchor.center())));
    m_title->setToolTip(m_title->isCut() ? m_title->text() : QString());
    show();
    raise();
    setFocus(Qt::PopupFocusReason);
}

// Roles first, so that it looks right without a style sheet; what a style sheet says goes over them.
void PopupWidget::paintEvent(QPaintEvent*)
{
    const ThemeManager& theme = ThemeManager::instance();
    QPainter painter(this);
    painter.fillRect(rect(), theme.color(ThemeManager::Raised));
    Controls::paintFrame(painter, rect(), theme.color(ThemeManager::Border));
    Controls::paintStyledBackground(painter, *this);
}

void PopupWidget::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous()) {
        deleteLater();
        emit closed();
    }
}

void PopupWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The second press of a double click on the anchor is no wish to close what the first has opened.
    if (!m_anchor.contains(event->globalPos())) {
        QWidget::mouseDoubleClickEvent(event);
    }
}
