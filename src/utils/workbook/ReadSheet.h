#pragma once

#include <QString>
#include <QVector>

class QIODevice;

namespace Workbook {

// The texts of a row by column, from 0; empty where there is no cell or it was not wanted. As long as the
// last cell needs, at most 256.
using Row = QVector<QString>;

// Takes the rows of a sheet, one after the other.
class RowTaker
{
public:
    virtual ~RowTaker() = default;
    // Whether the row that is being read needs the text in this column (0 to 255).
    [[nodiscard]] virtual bool wantsColumn(int column) const = 0;
    // A row in which something is written. Whatever it returns that is not empty is a problem that ends the
    // reading.
    [[nodiscard]] virtual QString takeRow(const Row& row) = 0;
};

// Reads one sheet of an XLSX workbook (ISO/IEC 29500): the one of this name, without regard to letter case
// and to blanks around it, or else the first in the workbook's own order; hidden or not. What is wrong with
// it, in words that follow its name: "it is no ZIP archive"; empty if nothing is. Rows may have been taken
// before something wrong is found. The device is open for reading and can be positioned. Whatever it holds,
// the cost is bounded: Limits.h.
[[nodiscard]] QString readSheet(QIODevice& device, const QString& name, RowTaker& taker);

} // namespace Workbook
