#include "system/EditorView.h"

#include "support/Waiting.h"

using namespace TestSupport;

namespace {

const QString menuThing = QStringLiteral("menu");
const QString dropDownThing = QStringLiteral("drop-down");
constexpr int itemHeight = 44; // of a drop-down, pixels
constexpr int gridColumns = 3;
constexpr int halfWidth = 72; // of a switch

} // namespace

EditorView::EditorView(BarView& bar, const Accessibility& accessibility)
    : m_bar(bar)
    , m_accessibility(accessibility)
{}

bool EditorView::open(int line, int lines, const QString& title)
{
    if (!m_bar.shownBeside().isEmpty() &&
        (!m_bar.desktop().key(QStringLiteral("Escape")) || !m_bar.waitForBeside({})))
        return false;
    m_title.clear();
    if (!m_bar.click(m_bar.centre(BarView::Mod)) || !m_bar.waitForBeside({menuThing}))
        return false;
    if (!m_bar.chooseInMenu(line, lines) || !m_bar.waitForBeside({title}))
        return false;
    m_title = title;
    return true;
}

std::optional<AccessibleNode> EditorView::find(const std::function<bool(const AccessibleNode&)>& wanted) const
{
    auto node = m_accessibility.waitForNode(m_bar.helperId(), wanted);
    if (node)
        node->extents.translate(m_bar.placeOf(m_title).topLeft());
    return node;
}

std::optional<AccessibleNode> EditorView::find(const QString& name) const
{
    return find([&](const AccessibleNode& candidate) { return candidate.name == name; });
}

QPoint EditorView::cell(const QString& column, const QString& row) const
{
    const auto inColumn = find([&](const AccessibleNode& node) {
        return node.role == QLatin1String("column header") && node.name == column;
    });
    const auto inRow = find(
        [&](const AccessibleNode& node) { return node.role == QLatin1String("cell") && node.name == row; });
    return inColumn && inRow ? QPoint(inColumn->extents.center().x(), inRow->extents.center().y()) : QPoint();
}

QStringList EditorView::tableRows() const
{
    const auto table = find([](const AccessibleNode& node) { return node.role == QLatin1String("table"); });
    QStringList rows;
    int top = -1;
    for (const AccessibleNode& node : table ? table->children : QVector<AccessibleNode>()) {
        if (node.role != QLatin1String("cell"))
            continue;
        if (node.extents.top() == top)
            rows.last() += QStringLiteral(" | ") + node.name;
        else
            rows.append(node.name);
        top = node.extents.top();
    }
    return rows;
}

QRect EditorView::listRow(const QString& beginning) const
{
    const auto row = find([&](const AccessibleNode& node) {
        return node.role == QLatin1String("list item") && node.name.startsWith(beginning);
    });
    return row ? row->extents : QRect();
}

QString EditorView::shown(const QString& name) const
{
    const auto node = find(name);
    if (!node)
        return QStringLiteral("(nothing)");
    const bool isSwitch = node->role == QLatin1String("check box");
    const QString state = node->has(AccessibleNode::Checked) ? QStringLiteral("on") : QStringLiteral("off");
    const QString lock = node->has(AccessibleNode::Enabled) ? QString() : QStringLiteral(" (locked)");
    return (isSwitch ? state : node->description) + lock;
}

bool EditorView::waitForShown(const QString& name, const QString& text) const
{
    return waitUntil([&] { return shown(name) == text; });
}

bool EditorView::click(const QString& name) const
{
    const auto node = find(name);
    return node && m_bar.click(node->extents.center());
}

bool EditorView::dragRow(const QPoint& from, const QPoint& to) const
{
    constexpr QPoint beginning(0, 20); // far enough to be no click
    const Desktop& desktop = m_bar.desktop();
    const auto isUnderWay = [this] {
        return m_bar.shownBeside().size() > 1;
    }; // a picture of it follows the pointer
    return desktop.press(from) && desktop.moveTo(from + beginning) && waitUntil(isUnderWay) &&
           desktop.moveTo(to - QPoint(0, 1)) && desktop.moveTo(to) && desktop.release() &&
           m_bar.waitForBeside({m_title});
}

bool EditorView::perform(Gesture gesture, const QString& name, const QString& text)
{
    switch (gesture) {
    case Type:
        return type(name, text);
    case Choose:
        return choose(name, text);
    case Switch:
        return clickHalf(name, text);
    case Click:
        return click(name);
    }
    return false;
}

// The letter of a unit ends the entry.
bool EditorView::type(const QString& name, const QString& text)
{
    if (!click(name) || !m_bar.waitForKeyboard(name) || !m_bar.desktop().type(text))
        return false;
    const bool hasEnded = text.back().isLetter();
    return (hasEnded || m_bar.desktop().key(QStringLiteral("Return"))) && m_bar.waitForBeside({m_title});
}

// A list of more items than its height has rows stands in columns.
bool EditorView::choose(const QString& name, const QString& ordinal) const
{
    QStringList opened = {m_title, dropDownThing};
    opened.sort();
    if (!click(name) || !m_bar.waitForBeside(opened))
        return false;
    const QRect list = m_bar.placeOf(dropDownThing);
    const int count = ordinal.section(QLatin1Char('/'), 1).toInt();
    const int index = ordinal.section(QLatin1Char('/'), 0, 0).toInt() - 1;
    const int columns = count * itemHeight > list.height() ? gridColumns : 1;
    const int rowsBelow = (count - 1) / columns - index / columns;
    const QPoint place(list.left() + (2 * (index % columns) + 1) * list.width() / (2 * columns),
                       list.bottom() - (2 * rowsBelow + 1) * itemHeight / 2);
    return m_bar.click(place) && m_bar.waitForBeside({m_title});
}

bool EditorView::clickHalf(const QString& name, const QString& half) const
{
    const auto node = find(name);
    if (!node)
        return false;
    const QRect area = node->extents;
    const int halves = half == QLatin1String("On") ? 3 : 1;
    const QPoint place =
        area.height() > halfWidth
            ? QPoint(area.right() - halves * area.width() / 4, area.bottom() - area.height() / 4)
            : QPoint(area.right() - halves * halfWidth / 2, area.center().y());
    return m_bar.click(place);
}
