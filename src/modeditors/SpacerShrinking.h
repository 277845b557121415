#pragma once

class QWidget;

// In every grid layout inside `editor`, takes the height from the spacer that stands lowest (of two in the
// same row the one further right), so that the editor ends where its content ends. Width and horizontal
// policy stay; a spacer without height stays as it is.
void shrinkLowestSpacers(QWidget* editor);
