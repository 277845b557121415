#include "controls/EntryLineAccessible.h"

#include "controls/EntryLine.h"

namespace Controls {
namespace {

QAccessibleInterface* create(const QString&, QObject* object)
{
    auto* const line = qobject_cast<EntryLine*>(object);
    return line ? new EntryLineAccessible(line) : nullptr;
}

} // namespace

EntryLineAccessible::EntryLineAccessible(QWidget* line)
    : QAccessibleWidget(line, QAccessible::EditableText)
{}

void EntryLineAccessible::install()
{
    static const bool installed = (QAccessible::installFactory(create), true);
    Q_UNUSED(installed);
}

QString EntryLineAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? line().quantityText() : QAccessibleWidget::text(kind);
}

QAccessible::State EntryLineAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = true;
    state.selectableText = true;
    return state;
}

void* EntryLineAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface) {
        return static_cast<QAccessibleTextInterface*>(this);
    }
    return QAccessibleWidget::interface_cast(type);
}

void EntryLineAccessible::selection(int index, int* start, int* end) const
{
    const bool exists = index == 0 && selectionCount() > 0;
    *start = 0;
    *end = exists ? int(line().number().text().size()) : 0;
}

int EntryLineAccessible::selectionCount() const
{
    return line().number().isSelected() ? 1 : 0;
}

int EntryLineAccessible::cursorPosition() const
{
    return line().number().cursor();
}

QString EntryLineAccessible::text(int start, int end) const
{
    return line().quantityText().mid(start, end < 0 ? -1 : end - start);
}

int EntryLineAccessible::characterCount() const
{
    return int(line().quantityText().size());
}

QRect EntryLineAccessible::characterRect(int) const
{
    const EntryLabel& number = line().number();
    return {number.mapToGlobal(QPoint(0, 0)), number.size()};
}

int EntryLineAccessible::offsetAtPoint(const QPoint& point) const
{
    const EntryLabel& number = line().number();
    return number.positionAt(number.mapFromGlobal(point).x());
}

QString EntryLineAccessible::attributes(int, int* start, int* end) const
{
    *start = 0;
    *end = characterCount();
    return QString();
}

const EntryLine& EntryLineAccessible::line() const
{
    return *static_cast<const EntryLine*>(widget());
}

} // namespace Controls
