#include "utils/workbook/FirstSheet.h"

#include "utils/workbook/Parts.h"
#include "utils/workbook/SharedStrings.h"
#include "utils/workbook/Sheet.h"
#include "utils/workbook/ZipAccess.h"

namespace Workbook {

QString readFirstSheet(QIODevice& device, RowTaker& taker)
{
    const ZipAccess archive(device);
    QString problem = archive.problem();
    Parts parts;
    if (problem.isEmpty())
        problem = findParts(archive, parts);
    SharedStrings strings;
    if (problem.isEmpty() && !parts.sharedStrings.isEmpty())
        problem = readPart(archive, parts.sharedStrings, strings);
    if (!problem.isEmpty())
        return problem;
    Sheet sheet(strings, taker);
    return readPart(archive, parts.firstSheet, sheet);
}

} // namespace Workbook
