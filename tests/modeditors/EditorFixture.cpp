#include "modeditors/EditorFixture.h"

#include "controls/EnumTextButton.h"
#include "controls/PopupWidget.h"
#include "controls/SwitchButton.h"
#include "modeditors/ModEditorFactory.h"

#include <QCheckBox>
#include <QListView>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

namespace {

QString flags(const QWidget& widget)
{
    return QLatin1String(widget.isHidden() ? " hidden" : "") +
           QLatin1String(widget.isEnabled() ? "" : " disabled") + QLatin1Char(' ') + widget.toolTip();
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

QJsonObject parsed(const char* json)
{
    QJsonParseError error = {};
    const QJsonObject object = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError) {
        qFatal("not JSON: %s", json);
    }
    return object;
}

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

EditorFixture::EditorFixture(const QString& kind)
    : m_editor(createModEditor(kind, m_window.get()))
    , enables(m_editor, &RemoteModEditor::enabledEdited)
    , actions(m_editor, &RemoteModEditor::actionEdited)
    , numerics(m_editor, &RemoteModEditor::numericEditRequested)
{
    constexpr int popupWidth = 560;
    auto* const layout = new QVBoxLayout(m_window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_editor);
    const auto switches = m_editor->findChildren<SwitchButton*>();
    for (SwitchButton* button : switches) {
        button->setCompactMode(kind != QLatin1String("quick-waveform"));
    }
    m_window->setWindowFlag(Qt::FramelessWindowHint);
    m_window->resize(popupWidth, m_window->sizeHint().height());
    m_window->show();
    if (!QTest::qWaitForWindowExposed(m_window.get())) {
        qFatal("the editor does not show");
    }
}

QString EditorFixture::label(const QString& objectName) const
{
    return find<LabelButton>(objectName)->labelText();
}

void EditorFixture::apply(const QJsonObject& state, const QJsonObject& profile, bool enabled)
{
    m_editor->applyEditorState(state, profile, enabled);
}

void EditorFixture::click(const QString& objectName) const
{
    QTest::mouseClick(find<QWidget>(objectName), Qt::LeftButton);
}

void EditorFixture::clickHalf(const QString& objectName, bool on) const
{
    const QString half = on ? QStringLiteral("btnOn") : QStringLiteral("btnOff");
    QTest::mouseClick(find<SwitchButton>(objectName)->findChild<QPushButton*>(half), Qt::LeftButton);
}

void EditorFixture::pick(const QString& objectName, int index) const
{
    auto* const picker = find<EnumTextButton>(objectName);
    QTest::mouseClick(picker, Qt::LeftButton);
    QTRY_VERIFY(picker->isListOpen());
    const auto* const list = m_window->findChild<PopupWidget*>()->findChild<QListView*>();
    QVERIFY(list);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualRect(list->model()->index(index, 0)).center());
    QVERIFY(!picker->isListOpen());
}

Edit EditorFixture::edit(int index) const
{
    if (index < 0 || index >= actions.count()) {
        return {};
    }
    return {actions.at(index).at(0).toString(), actions.at(index).at(1).toJsonObject()};
}
