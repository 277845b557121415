#include "layout/LayoutCheck.h"

#include "layout/PaintedTexts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSizeGrip>
#include <QSplitter>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QToolTip>

namespace {

constexpr double tolerance = 1.5; // pixels; what an edge may cover that is rounded and anti-aliased
constexpr QChar ellipsis(0x2026);

QString nameOf(const QWidget* widget, const QWidget* root)
{
    QStringList names;
    for (; widget && widget != root; widget = widget->parentWidget()) {
        const QString name = widget->objectName();
        names.prepend(name.isEmpty() ? QString::fromLatin1(widget->metaObject()->className()) : name);
    }
    return names.join(QLatin1Char('/'));
}

bool isShownChild(const QWidget* widget)
{
    return widget->isVisible() && !widget->isWindow();
}

// Lies in the corner, over whatever stands there.
bool isGrip(const QWidget* widget)
{
    return qobject_cast<const QSizeGrip*>(widget);
}

// The part of a scroll area that its content moves in.
bool isViewport(const QWidget* widget)
{
    const auto* area = qobject_cast<const QAbstractScrollArea*>(widget->parentWidget());
    return area && area->viewport() == widget;
}

// Parts that the toolkit lays over each other on purpose.
bool arrangesItself(const QWidget* widget)
{
    return qobject_cast<const QAbstractScrollArea*>(widget) || qobject_cast<const QSplitter*>(widget) ||
           qobject_cast<const QComboBox*>(widget) || qobject_cast<const QLineEdit*>(widget);
}

class Check final
{
public:
    explicit Check(QWidget* root)
        : m_root(root)
    {
        checkOnScreen();
        checkWidget(root);
        const auto widgets = root->findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            // What stands in a window of its own is another screen.
            if (isShownChild(widget) && (widget->window() == root->window()))
                checkWidget(widget);
        }
    }

    [[nodiscard]] const QStringList& faults() const { return m_faults; }

private:
    void checkWidget(QWidget* widget);
    void checkOnScreen();
    void checkChildren(const QWidget* parent);
    void checkTexts(QWidget* widget, const QVector<PaintedText>& texts);
    void checkShown(const QWidget* widget, const QVector<PaintedText>& texts);
    void checkName(QAbstractButton* button);
    void add(const char* sort, const QWidget* widget, const QString& what)
    {
        m_faults.append(QStringLiteral("%1: %2: %3").arg(QLatin1String(sort), nameOf(widget, m_root), what));
    }

    QWidget* m_root;
    QStringList m_faults;
};

QString described(const QRect& rect)
{
    return QStringLiteral("%1x%2 at %3,%4").arg(rect.width()).arg(rect.height()).arg(rect.x()).arg(rect.y());
}

// What a user reads who holds the pointer still at this place.
QString toolTipAt(QWidget* widget, const QPoint& place)
{
    QHelpEvent event(QEvent::ToolTip, place, widget->mapToGlobal(place));
    QApplication::sendEvent(widget, &event);
    const QString text = QToolTip::text();
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->inherits("QTipLabel"))
            delete window; // at once, for it hides slowly
    }
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

QString withoutBlanks(QString text)
{
    return text.simplified().remove(QLatin1Char(' '));
}

// True if the tool tip tells what has been left out of the text.
bool tellsAll(const QString& toolTip, const QString& shown)
{
    const QString whole = withoutBlanks(toolTip);
    QString left = withoutBlanks(shown);
    const int gap = left.indexOf(ellipsis);
    if (gap < 0)
        return whole.contains(left);
    const QString head = left.left(gap);
    const QString tail = left.mid(gap + 1);
    const int begin = whole.indexOf(head);
    return begin >= 0 && whole.indexOf(tail, begin + head.size()) >= 0 && whole.size() > left.size() - 1;
}

bool isCutSilently(QWidget* widget, const PaintedText& text)
{
    const QRectF seen = text.clip.adjusted(-tolerance, -tolerance, tolerance, tolerance);
    const bool scrolledAway =
        isViewport(widget) && (text.ink.top() < 0 || text.ink.bottom() > widget->height());
    const bool cut = text.text.contains(ellipsis) || !seen.contains(text.ink);
    if (!cut || scrolledAway)
        return false;
    const QPoint place = (text.ink & QRectF(widget->rect())).center().toPoint();
    return !tellsAll(toolTipAt(widget, place), text.text);
}

void Check::checkWidget(QWidget* widget)
{
    checkChildren(widget);
    const QVector<PaintedText> texts = paintedTexts(widget);
    checkTexts(widget, texts);
    checkShown(widget, texts);
    if (auto* const button = qobject_cast<QAbstractButton*>(widget))
        checkName(button);
}

void Check::checkOnScreen()
{
    const QRect place(m_root->mapToGlobal(QPoint(0, 0)), m_root->size());
    if (!m_root->screen()->availableGeometry().contains(place))
        add("outside", m_root, described(place));
}

void Check::checkChildren(const QWidget* parent)
{
    if (arrangesItself(parent))
        return;
    QVector<const QWidget*> shown;
    const auto children = parent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* child : children) {
        if (!isShownChild(child) || isGrip(child))
            continue;
        if (!isViewport(parent) && !parent->rect().contains(child->geometry()))
            add("outside", child, described(child->geometry()));
        for (const QWidget* other : qAsConst(shown)) {
            if (other->geometry().intersects(child->geometry()))
                add("overlap", child, nameOf(other, m_root));
        }
        shown.append(child);
    }
}

void Check::checkTexts(QWidget* widget, const QVector<PaintedText>& texts)
{
    if (qobject_cast<QLineEdit*>(widget))
        return; // scrolls by itself
    QStringList cut;
    for (int i = 0; i < texts.size(); ++i) {
        if (isCutSilently(widget, texts.at(i)))
            cut.append(texts.at(i).text);
        for (int j = 0; j < i; ++j) {
            const QRectF both = texts.at(i).ink & texts.at(j).ink;
            if (both.width() > tolerance && both.height() > tolerance)
                add("text over text", widget, texts.at(i).text + QStringLiteral(" | ") + texts.at(j).text);
        }
    }
    if (!cut.isEmpty())
        add("cut", widget, cut.join(QStringLiteral(" | ")));
}

void Check::checkShown(const QWidget* widget, const QVector<PaintedText>& texts)
{
    const auto* label = qobject_cast<const QLabel*>(widget);
    if (label && !label->text().trimmed().isEmpty() && texts.isEmpty())
        add("no text", widget, label->text());
}

void Check::checkName(QAbstractButton* button)
{
    QVector<QWidget*> parts = {button};
    parts += button->findChildren<QWidget*>().toVector();
    QString shown;
    for (QWidget* part : qAsConst(parts)) {
        const QVector<PaintedText> texts = paintedTexts(part);
        for (const PaintedText& text : texts)
            shown += text.text;
    }
    // A single Latin letter stands for an arrow, as a sign does; in other scripts it may be a word.
    const auto isWord = [&shown](QChar character) {
        return character.isDigit() ||
               (character.isLetter() && (character.unicode() > 0xff || shown.size() > 1));
    };
    const bool hasWords = std::any_of(shown.cbegin(), shown.cend(), isWord);
    if (!hasWords && button->accessibleName().isEmpty() && button->toolTip().isEmpty())
        add("nameless", button, shown);
}

} // namespace

QStringList layoutFaults(QWidget* shown)
{
    return Check(shown).faults();
}
