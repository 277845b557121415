#pragma once

#include <QString>
#include <functional>

class QWidget;
class RemoteModEditor;

// Makes the editor of a normalised kind as a child of `parent`; null for a kind that has no editor.
using ModEditorFactory = std::function<RemoteModEditor*(const QString& kind, QWidget* parent)>;

// The factory with all editors of the program.
[[nodiscard]] RemoteModEditor* createModEditor(const QString& kind, QWidget* parent);

// The kind as it is compared: white space simplified, lower case, "-" for each space.
[[nodiscard]] QString normalizeEditorKind(const QString& text);
