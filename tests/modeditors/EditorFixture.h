#pragma once

#include "modeditors/EditorView.h"
#include "modeditors/contract/NumericFieldSpec.h"
#include "modeditors/contract/RemoteModEditor.h"

#include <QJsonDocument>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <memory>

class EnumTextButton;
class LabelButton;
class SwitchButton;

// One edit as it leaves an editor.
struct Edit
{
    QString action;
    QJsonObject arguments;
};

[[nodiscard]] QJsonObject parsed(const char* json);

// A shown editor of a kind, what leaves it, and hands that press its widgets.
class EditorFixture final
{
public:
    explicit EditorFixture(const QString& kind);

    [[nodiscard]] RemoteModEditor& editor() const { return *m_editor; }
    template <typename Widget>
    [[nodiscard]] Widget* find(const QString& objectName) const
    {
        return m_editor->findChild<Widget*>(objectName);
    }
    [[nodiscard]] QString label(const QString& objectName) const;
    [[nodiscard]] QStringList shown() const { return shownBy(*m_editor); }

    void apply(const QJsonObject& state, const QJsonObject& profile = {}, bool enabled = false);

    void click(const QString& objectName) const;
    // The half of a switch.
    void clickHalf(const QString& objectName, bool on) const;
    // Opens the list of a picker and clicks an item.
    void pick(const QString& objectName, int index) const;

    // Everything that has left the editor, numeric requests included.
    [[nodiscard]] int emitted() const { return enables.count() + actions.count() + numerics.count(); }
    [[nodiscard]] Edit edit(int index) const;
    [[nodiscard]] QJsonObject lastArguments() const { return edit(actions.count() - 1).arguments; }

private:
    std::unique_ptr<QWidget> m_window = std::make_unique<QWidget>();
    RemoteModEditor* m_editor;

public:
    QSignalSpy enables;
    QSignalSpy actions;
    QSignalSpy numerics;
};
