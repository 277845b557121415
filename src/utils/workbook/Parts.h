#pragma once

#include <QString>

namespace Workbook {

class ZipAccess;

// Where the files lie in the archive that make up the first sheet.
struct Parts
{
    QString firstSheet;
    QString sharedStrings; // empty if the workbook has none
};

// Follows the archive's relationships to the workbook, and the workbook's to the first of its sheets that has
// cells. What is wrong with them; empty if nothing is.
[[nodiscard]] QString findParts(const ZipAccess& archive, Parts& parts);

} // namespace Workbook
