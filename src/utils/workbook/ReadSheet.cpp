#include "utils/workbook/ReadSheet.h"

#include "utils/workbook/Parts.h"
#include "utils/workbook/SharedStrings.h"
#include "utils/workbook/Sheet.h"
#include "utils/workbook/ZipAccess.h"

namespace Workbook {

QString readSheet(QIODevice& device, const QString& name, RowTaker& taker)
{
    const ZipAccess archive(device);
    QString problem = archive.problem();
    Parts parts;
    if (problem.isEmpty())
        problem = findParts(archive, name, parts);
    SharedStrings strings;
    if (problem.isEmpty() && !parts.sharedStrings.isEmpty())
        problem = readPart(archive, parts.sharedStrings, strings);
    if (!problem.isEmpty())
        return problem;
    Sheet sheet(strings, taker);
    return readPart(archive, parts.sheet, sheet);
}

} // namespace Workbook
