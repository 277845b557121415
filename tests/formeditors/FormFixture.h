#pragma once

#include "controls/EnumList.h"
#include "controls/EnumTextButton.h"
#include "controls/SwitchButton.h"
#include "formeditors/ExpectedForms.h"
#include "formeditors/FormEditorFactory.h"
#include "modeditors/contract/RemoteModEditor.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLayout>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <memory>

inline QJsonObject json(const char* text)
{
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(text, &error).object();
    if (error.error != QJsonParseError::NoError)
        qFatal("test data is no JSON");
    return object;
}

// One row for each form.
inline void addKinds()
{
    QTest::addColumn<QString>("kind");
    for (const ExpectedForm& form : expectedForms())
        QTest::newRow(form.kind) << QString::fromLatin1(form.kind);
}

// An editor in a window, with what leaves it.
struct FormFixture
{
    explicit FormFixture(const QString& kind)
    {
        editor = createFormEditor(kind, &window);
        if (!editor)
            qFatal("there is no such editor");
        actions = std::make_unique<QSignalSpy>(editor, &RemoteModEditor::actionEdited);
        enabledEdits = std::make_unique<QSignalSpy>(editor, &RemoteModEditor::enabledEdited);
        requests = std::make_unique<QSignalSpy>(editor, &RemoteModEditor::numericEditRequested);
    }
    explicit FormFixture(const char* kind)
        : FormFixture(QString::fromLatin1(kind))
    {}
    [[nodiscard]] bool show()
    {
        editor->adjustSize();
        window.resize(editor->size());
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }

    template <typename Widget>
    [[nodiscard]] Widget* find(const char* name) const
    {
        auto* const widget = editor->findChild<Widget*>(QLatin1String(name));
        if (!widget)
            qFatal("the form has no such widget");
        return widget;
    }
    [[nodiscard]] LabelButton* value(const char* name) const { return find<LabelButton>(name); }
    [[nodiscard]] EnumTextButton* choice(const char* name) const { return find<EnumTextButton>(name); }
    [[nodiscard]] SwitchButton* onOff(const char* name) const { return find<SwitchButton>(name); }
    [[nodiscard]] QString shown(const char* name) const { return value(name)->labelText(); }

    void apply(const char* state, const char* profile = "{}", bool enabled = false) const
    {
        editor->applyEditorState(json(state), json(profile), enabled);
    }
    void apply(const QJsonObject& state, const char* profile = "{}", bool enabled = false) const
    {
        editor->applyEditorState(state, json(profile), enabled);
    }
    // The one edit that has left; an empty object if there was none or more than one.
    [[nodiscard]] QJsonObject setField() const
    {
        const bool one = actions->count() == 1 && enabledEdits->isEmpty() &&
                         actions->first().first().toString() == QLatin1String("set-field");
        return one ? actions->first().at(1).toJsonObject() : QJsonObject();
    }
    [[nodiscard]] int emitted() const { return actions->count() + enabledEdits->count(); }
    void forget() const
    {
        actions->clear();
        enabledEdits->clear();
        requests->clear();
    }
    // A click on the half of the switch that is not active.
    static void toggle(SwitchButton* button)
    {
        const QString half = button->status() ? QStringLiteral("btnOff") : QStringLiteral("btnOn");
        QTest::mouseClick(button->findChild<QPushButton*>(half), Qt::LeftButton);
    }
    // Opens the list and picks an item with the keyboard; false if that is not possible.
    [[nodiscard]] static bool pick(EnumTextButton* button, int index)
    {
        QTest::mouseClick(button, Qt::LeftButton);
        QPointer<Controls::EnumList> list;
        const auto lists = button->window()->findChildren<Controls::EnumList*>();
        for (Controls::EnumList* candidate : lists) {
            if (candidate->isVisible())
                list = candidate;
        }
        if (!list || !button->isListOpen())
            return false;
        list->setCurrentIndex(list->model()->index(index, 0));
        QTest::keyClick(list, Qt::Key_Return);
        return QTest::qWaitFor([button] { return !button->isListOpen(); });
    }
    // All that the form shows, in words.
    [[nodiscard]] QStringList everything() const
    {
        QStringList words;
        const auto buttons = editor->findChildren<LabelButton*>();
        for (const LabelButton* button : buttons) {
            words << button->labelText() << QString::number(button->isEnabled())
                  << QString::number(button->isChecked());
            if (const auto* const list = qobject_cast<const EnumTextButton*>(button)) {
                words << QString::number(list->currentEnum());
                for (int item = 0; item < list->enums().size(); ++item)
                    words << QString::number(list->isItemEnabled(item));
            }
        }
        const auto switches = editor->findChildren<SwitchButton*>();
        for (const SwitchButton* button : switches)
            words << QString::number(button->status()) << QString::number(button->isEnabled());
        return words;
    }

    QWidget window;
    QPointer<RemoteModEditor> editor;
    std::unique_ptr<QSignalSpy> actions;
    std::unique_ptr<QSignalSpy> enabledEdits;
    std::unique_ptr<QSignalSpy> requests;
};

std::unique_ptr<QObject> makeFormShapeSuite();
std::unique_ptr<QObject> makeFormFieldsSuite();
std::unique_ptr<QObject> makeFormStateSuite();
std::unique_ptr<QObject> makeFormEditsSuite();
std::unique_ptr<QObject> makePanelRulesSuite();
std::unique_ptr<QObject> makeFormLookSuite();
std::unique_ptr<QObject> makeArbPanelSuite();
std::unique_ptr<QObject> makeStreamingPanelSuite();
std::unique_ptr<QObject> makeFileChoiceSuite();
