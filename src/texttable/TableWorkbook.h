#pragma once

#include <QString>

struct TextTable;

// Writes the table as a workbook with a sheet for each language, which bears its name; the same table gives
// the same bytes anywhere and at any time. An existing file is replaced. What went wrong, empty if nothing
// did; then the file is there, else it is not.
[[nodiscard]] QString writeWorkbook(const TextTable& table, const QString& path);
