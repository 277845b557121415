#pragma once

class QTableWidget;

// From now on a caption of the table's horizontal header that is cut is told by its tool tip, above the one
// of the header itself. To be called when the header has its settings.
void tellCutCaptions(QTableWidget* table);
