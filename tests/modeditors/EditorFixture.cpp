#include "modeditors/EditorFixture.h"

#include "controls/EnumTextButton.h"
#include "controls/PopupWidget.h"
#include "controls/SwitchButton.h"
#include "modeditors/ModEditorFactory.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QListView>
#include <QPushButton>
#include <QTest>

QJsonObject parsed(const char* json)
{
    QJsonParseError error = {};
    const QJsonObject object = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError) {
        qFatal("not JSON: %s", json);
    }
    return object;
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
    QTRY_VERIFY(!picker->isListOpen());
}

Edit EditorFixture::edit(int index) const
{
    if (index < 0 || index >= actions.count()) {
        return {};
    }
    return {actions.at(index).at(0).toString(), actions.at(index).at(1).toJsonObject()};
}
