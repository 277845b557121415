#include "controls/EntryLine.h"

#include "controls/ElidedText.h"
#include "controls/EntryLineAccessible.h"
#include "controls/NumberEntry.h"

#include <QMouseEvent>
#include <QPainter>
#include <utility>

namespace Controls {
namespace {

constexpr int numberSize = 28;         // pixels
constexpr int smallestNumberSize = 12; // pixels
constexpr int unitSize = 18;           // pixels
constexpr int lineHeight = 56;
constexpr int inset = 12;
constexpr int unitGap = 8;
constexpr int cursorWidth = 2;

void setPixelSize(QWidget* widget, int size)
{
    QFont font = widget->font();
    font.setPixelSize(size);
    widget->setFont(font);
}

} // namespace

EntryLabel::EntryLabel(QWidget* parent)
    : QLabel(parent)
{
    setObjectName(QStringLiteral("valueLabel"));
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setPixelSize(this, numberSize);
}

void EntryLabel::display(const QString& text, int cursor, bool selected)
{
    if (text == this->text() && cursor == m_cursor && selected == m_selected) {
        return;
    }
    m_cursor = cursor;
    m_selected = selected;
    setText(text);
    update();
}

int EntryLabel::positionAt(int x) const
{
    const QFontMetrics metrics(fittingFont());
    const int left = textLeft(metrics);
    const QString number = text();
    int position = 0;
    while (position < number.size()) {
        const int begin = metrics.horizontalAdvance(number.left(position));
        const int end = metrics.horizontalAdvance(number.left(position + 1));
        if (x < left + (begin + end) / 2) {
            break;
        }
        ++position;
    }
    return position;
}

QFont EntryLabel::fittingFont() const
{
    return Controls::fittingFont(font(), text(), width() - cursorWidth, smallestNumberSize);
}

int EntryLabel::textLeft(const QFontMetrics& metrics) const
{
    return width() - cursorWidth - metrics.horizontalAdvance(text());
}

void EntryLabel::paintEvent(QPaintEvent*)
{
    const QFont used = fittingFont();
    const QFontMetrics metrics(used);
    const int left = textLeft(metrics);
    // The base line is that of the full size, whatever size the number has.
    const int baseLine = fontMetrics().ascent();
    const QRect line(left, baseLine - metrics.ascent(), metrics.horizontalAdvance(text()), metrics.height());

    QPainter painter(this);
    painter.setFont(used);
    if (m_selected) {
        painter.fillRect(line.adjusted(-cursorWidth, 0, cursorWidth, 0),
                         palette().brush(QPalette::Highlight));
    }
    painter.setPen(palette().color(m_selected ? QPalette::HighlightedText : foregroundRole()));
    painter.drawText(left, baseLine, text());
    if (!m_selected) {
        const int x = left + metrics.horizontalAdvance(text().left(m_cursor));
        painter.fillRect(QRect(x, line.top(), cursorWidth, line.height()), palette().color(foregroundRole()));
    }
}

EntryLine::EntryLine(const QString& title, QWidget* parent)
    : QFrame(parent)
    , m_number(new EntryLabel(this))
    , m_unit(new QLabel(this))
{
    EntryLineAccessible::install();
    setObjectName(QStringLiteral("valueLine"));
    setAccessibleName(title);
    setFrameShape(QFrame::Box);
    setFixedHeight(lineHeight);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::IBeamCursor);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    m_unit->setObjectName(QStringLiteral("unitLabel"));
    m_unit->setAttribute(Qt::WA_TransparentForMouseEvents);
    setPixelSize(m_unit, unitSize);
}

void EntryLine::display(const NumberEntry& entry)
{
    const QString unit = entry.unitText();
    const bool otherUnit = unit != m_unit->text();
    m_number->display(entry.text(), entry.cursor(), entry.isSelected());
    if (otherUnit) {
        m_unit->setText(unit);
        arrange();
    }
    const QString before = std::exchange(m_quantityText, entry.quantityText());
    if (before != m_quantityText) {
        QAccessibleTextUpdateEvent event(this, 0, before, m_quantityText);
        QAccessible::updateAccessibility(&event);
    }
}

void EntryLine::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    arrange();
}

void EntryLine::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton) {
        emit selectionPasteWanted();
    } else if (event->button() == Qt::LeftButton) {
        emit cursorWanted(m_number->positionAt(event->pos().x() - m_number->x()));
    }
}

void EntryLine::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        emit selectAllWanted();
    }
}

void EntryLine::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        arrange();
    }
}

void EntryLine::arrange()
{
    m_number->ensurePolished();
    m_unit->ensurePolished();
    const QFontMetrics number = m_number->fontMetrics();
    const QFontMetrics unit = m_unit->fontMetrics();
    const int top = (height() - number.height()) / 2;
    const int unitWidth = m_unit->text().isEmpty() ? 0 : unit.horizontalAdvance(m_unit->text());
    const int unitLeft = width() - inset - unitWidth;
    const int numberRight = unitWidth > 0 ? unitLeft - unitGap : unitLeft;
    m_unit->setGeometry(unitLeft, top + number.ascent() - unit.ascent(), unitWidth, unit.height());
    m_number->setGeometry(inset, top, numberRight - inset, number.height());
}

} // namespace Controls
