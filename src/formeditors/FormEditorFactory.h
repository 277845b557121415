#pragma once

#include <QString>

class QWidget;
class RemoteModEditor;

// Makes the form editor of a normalised kind as a child of `parent`; null for a kind that has none.
[[nodiscard]] RemoteModEditor* createFormEditor(const QString& kind, QWidget* parent);
