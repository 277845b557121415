#pragma once

#include "system/EditorView.h"

#include <QVector>

// One thing that a user does in an editor, and what must come of it.
struct EditorRow
{
    const char* editor;
    const char* control;
    EditorView::Gesture gesture;
    const char* text;   // typed, or the name of what is picked
    const char* action; // of the request; empty for the switch of the modulation itself
    const char* key;    // in the arguments; for set-field the field
    const char* value;  // JSON: what the request carries
    const char* before; // what the control shows
    const char* after;  // and when that is confirmed
    // JSON that is merged into the item then, where it is not just the field of the editor state.
    const char* confirmed = nullptr;
};

// Controls that say nothing in a state of their item.
struct LockedRow
{
    const char* editor;
    const char* difference; // JSON that is merged into the item
    QVector<const char*> controls;
};

// A row for each control of each editor.
[[nodiscard]] const QVector<EditorRow>& numericRows();
[[nodiscard]] const QVector<EditorRow>& controlRows();
[[nodiscard]] const QVector<LockedRow>& lockedRows();
