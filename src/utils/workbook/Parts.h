#pragma once

#include <QString>

namespace Workbook {

class ZipAccess;

// Where the files lie in the archive that make up one sheet.
struct Parts
{
    QString sheet;
    QString sharedStrings; // empty if the workbook has none
};

// Follows the archive's relationships to the workbook, and the workbook's to the sheet of this name, or else
// to the first that has cells. What is wrong with them; empty if nothing is.
[[nodiscard]] QString findParts(const ZipAccess& archive, const QString& sheetName, Parts& parts);

} // namespace Workbook
