#include "modeditors/EditorView.h"

#include "controls/EnumTextButton.h"
#include "controls/SwitchButton.h"

#include <QCheckBox>
#include <QTableWidget>

namespace {

// The tool tip of a button stands for texts that are cut, which the width decides.
QString flags(const QWidget& widget)
{
    const QString toolTip = qobject_cast<const InfoButton*>(&widget) ? QString() : widget.toolTip();
    return QLatin1String(widget.isHidden() ? " hidden" : "") +
           QLatin1String(widget.isEnabled() ? "" : " disabled") + QLatin1Char(' ') + toolTip;
}

QString describe(const QTableWidget& table)
{
    QStringList cells = {QStringLiteral("rows %1").arg(table.rowCount())};
    for (int row = 0; row < table.rowCount(); ++row) {
        for (int column = 0; column < table.columnCount(); ++column) {
            const QTableWidgetItem* const item = table.item(row, column);
            cells.append(item->text() + QString::number(item->checkState()) +
                         item->data(Qt::UserRole).toString());
        }
    }
    return cells.join(QLatin1Char('|'));
}

QString describe(const QWidget& widget)
{
    if (const auto* const picker = qobject_cast<const EnumTextButton*>(&widget)) {
        return QStringLiteral("%1 %2 of %3")
            .arg(picker->labelText())
            .arg(picker->currentEnum())
            .arg(picker->enums().join(QLatin1Char(',')));
    }
    if (const auto* const button = qobject_cast<const LabelButton*>(&widget)) {
        return button->labelText() + QLatin1String(button->isChecked() ? " marked" : "");
    }
    if (const auto* const box = qobject_cast<const QCheckBox*>(&widget)) {
        return QLatin1String(box->isChecked() ? "checked" : "unchecked");
    }
    if (const auto* const button = qobject_cast<const SwitchButton*>(&widget)) {
        return QLatin1String(button->status() ? "on" : "off");
    }
    const auto* const table = qobject_cast<const QTableWidget*>(&widget);
    return table ? describe(*table) : QString();
}

} // namespace

QStringList shownBy(const QWidget& editor)
{
    QStringList lines;
    const auto widgets = editor.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* widget : widgets) {
        if (!widget->isWindow()) {
            lines.append(widget->objectName() + QLatin1String(": ") + describe(*widget) + flags(*widget));
        }
    }
    return lines;
}
