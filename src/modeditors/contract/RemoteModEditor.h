#pragma once

#include "modeditors/contract/NumericFieldSpec.h"

#include <QAbstractButton>
#include <QJsonObject>
#include <QJsonValue>
#include <QWidget>

// An editor for one kind of modulation item. It shows what was last applied; an edit leaves as a signal and
// shows only when the next state brings it back.
class RemoteModEditor : public QWidget
{
    Q_OBJECT

public:
    explicit RemoteModEditor(QWidget* parent = nullptr);
    ~RemoteModEditor() override;

    // Shows the item's editor state and profile; `enabled`: the item is the modulation that is switched on.
    // Emits neither enabledEdited nor actionEdited.
    virtual void applyEditorState(const QJsonObject& state, const QJsonObject& profile, bool enabled) = 0;
    // What the editor's enable switch shows.
    [[nodiscard]] virtual bool isModulationEnabled() const = 0;
    // Describes a numeric field as it was last applied. False, with `spec` of no meaning, when the editor has
    // no such field, when the field cannot be edited now, or when `spec` is null.
    [[nodiscard]] virtual bool describeNumericField(const QString& key, NumericFieldSpec& spec) const = 0;
    // Takes what the user has entered for a field. The definition given here is what every editor does: it
    // emits the value, rounded if the field wants integers (halves away from zero), as the edit of a field,
    // and does nothing for a field that cannot be described or a value that is not finite.
    virtual void applyNumericValue(const QString& key, double value) = 0;
    // Marks the button of this field as the one that is being edited, and no other; none if not `active`.
    virtual void setNumericFieldActive(const QString& key, bool active) = 0;

signals:
    // The user has turned the enable switch: see isModulationEnabled().
    void enabledEdited();
    void actionEdited(const QString& action, const QJsonObject& arguments);
    // The user wants to enter a number for a field; `anchor` is the field's button.
    void numericEditRequested(const QString& key, QAbstractButton* anchor);

protected:
    // Emits the edit of one field: action "set-field".
    void editField(const QString& key, const QJsonValue& value);
};
