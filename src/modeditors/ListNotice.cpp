#include "modeditors/ListNotice.h"

#include "controls/ElidedLabel.h"

#include <QRect>

namespace {

constexpr int mostLines = 2;
constexpr int sideMargin = 20; // pixels, as the next
constexpr int rowMargin = 8;

} // namespace

ListNotice::ListNotice(QWidget* list)
    : m_label(new Controls::ElidedLabel(list, mostLines))
{
    m_label->setObjectName(QStringLiteral("refusal"));
    m_label->setContentsMargins(sideMargin, rowMargin, sideMargin, rowMargin);
    m_label->hide();
}

QString ListNotice::text() const
{
    return m_label->text();
}

void ListNotice::setText(const QString& text)
{
    m_label->setText(text);
}

int ListNotice::place(const QRect& viewport)
{
    m_label->setVisible(!text().isEmpty());
    if (text().isEmpty())
        return 0;
    m_label->ensurePolished();
    m_label->resize(viewport.width(), m_label->height());
    const int covered = m_label->shownLines().size() * m_label->fontMetrics().height() + 2 * rowMargin;
    m_label->setGeometry(viewport.left(), viewport.bottom() + 1 - covered, viewport.width(), covered);
    m_label->setToolTip(m_label->isCut() ? text() : QString());
    return covered;
}
