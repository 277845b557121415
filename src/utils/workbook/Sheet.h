#pragma once

#include "utils/workbook/ReadSheet.h"
#include "utils/workbook/XmlReader.h"

#include <QByteArray>

namespace Workbook {

class SharedStrings;

// The cells of one sheet, row by row. Read as the XML that it is.
class Sheet final : public XmlReader
{
public:
    // Both outlive the sheet.
    Sheet(const SharedStrings& strings, RowTaker& taker);

private:
    enum class Kind { Plain, Shared, Inline, Truth, Error };

    void begin(int place, const XmlAttributes& attributes) override;
    void text(int place, const char* bytes, int size) override;
    void end(int place) override;
    void beginRow(const char* number);
    void beginCell(const char* reference, const char* type);
    void endCell();
    void endRow();
    [[nodiscard]] QString sharedText();

    const SharedStrings& m_strings;
    RowTaker& m_taker;
    Row m_row;
    bool m_rowHasText = false;
    int m_column = -1; // of the current cell, the last one before it
    bool m_wanted = false;
    Kind m_kind = Kind::Plain;
    QByteArray m_value; // of the current cell
};

} // namespace Workbook
