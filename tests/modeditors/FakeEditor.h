#pragma once

#include "modeditors/contract/RemoteModEditor.h"

#include <QHash>

// An editor that shows nothing and remembers what it was asked.
class FakeEditor final : public RemoteModEditor
{
public:
    explicit FakeEditor(QWidget* parent = nullptr, const QString& kindOfItem = {})
        : RemoteModEditor(parent)
        , kind(kindOfItem)
    {
        ++alive;
        ++made;
    }
    ~FakeEditor() override { --alive; }

    void applyEditorState(const QJsonObject& newState, const QJsonObject& newProfile, bool isEnabled) override
    {
        ++applications;
        state = newState;
        profile = newProfile;
        enabled = isEnabled;
    }
    [[nodiscard]] bool isModulationEnabled() const override { return enabled; }
    [[nodiscard]] bool describeNumericField(const QString& key, NumericFieldSpec& spec) const override
    {
        if (!fields.contains(key)) {
            return false;
        }
        spec = fields.value(key);
        return true;
    }
    void applyNumericValue(const QString& key, double value) override
    {
        RemoteModEditor::applyNumericValue(key, value);
    }
    void setNumericFieldActive(const QString& key, bool active) override
    {
        activeKey = key;
        isActive = active;
    }
    using RemoteModEditor::editField;

    const QString kind;
    QHash<QString, NumericFieldSpec> fields;
    int applications = 0;
    QJsonObject state;
    QJsonObject profile;
    bool enabled = false;
    QString activeKey;
    bool isActive = false;

    static inline int alive = 0;
    static inline int made = 0;
};
