#include "utils/workbook/Sheet.h"

#include "utils/workbook/CellText.h"
#include "utils/workbook/Limits.h"
#include "utils/workbook/SharedStrings.h"

#include <cstring>

namespace Workbook {
namespace {

enum Place { Document, Worksheet, SheetData, RowPlace, Cell, Value, InlineString, InlineText, Run, RunText };

const XmlStep steps[] = {
    {Document, "worksheet", Worksheet},
    {Worksheet, "sheetData", SheetData},
    {SheetData, "row", RowPlace},
    {RowPlace, "c", Cell},
    {Cell, "v", Value},
    {Cell, "is", InlineString},
    {InlineString, "t", InlineText},
    {InlineString, "r", Run},
    {Run, "t", RunText},
};

// A number from 1 to `most` in decimal digits alone; 0 if the text is something else.
int boundedNumber(const char* text, int most)
{
    int number = 0;
    for (; *text >= '0' && *text <= '9' && number <= most; ++text)
        number = number * 10 + (*text - '0');
    return *text == '\0' && number <= most ? number : 0;
}

// The column, from 0, of a reference such as "BC23"; -1 if it is none or lies beyond the format's last cell.
int columnOf(const char* reference)
{
    int column = 0;
    for (; *reference >= 'A' && *reference <= 'Z' && column <= Limits::columnNumber; ++reference)
        column = column * 26 + (*reference - 'A' + 1);
    const bool isReference =
        column >= 1 && column <= Limits::columnNumber && boundedNumber(reference, Limits::rowNumber) > 0;
    return isReference ? column - 1 : -1;
}

} // namespace

Sheet::Sheet(const SharedStrings& strings, RowTaker& taker)
    : XmlReader(steps)
    , m_strings(strings)
    , m_taker(taker)
{}

void Sheet::begin(int place, const XmlAttributes& attributes)
{
    if (place == RowPlace)
        beginRow(attributes.value("r"));
    else if (place == Cell)
        beginCell(attributes.value("r"), attributes.value("t"));
}

void Sheet::text(int place, const char* bytes, int size)
{
    const bool counts = m_kind == Kind::Inline ? place == InlineText || place == RunText : place == Value;
    if (!counts || !m_wanted)
        return;
    if (m_value.size() + size > Limits::textSize)
        return refuse(QStringLiteral("one of its texts is too long"));
    m_value.append(bytes, size);
}

void Sheet::end(int place)
{
    if (place == Cell)
        endCell();
    else if (place == RowPlace)
        endRow();
}

void Sheet::beginRow(const char* number)
{
    if (number != nullptr && boundedNumber(number, Limits::rowNumber) == 0)
        return refuse(QStringLiteral("it has a row where none can be"));
    m_row.clear();
    m_rowHasText = false;
    m_column = -1;
}

// A cell that does not say where it is follows the one before.
void Sheet::beginCell(const char* reference, const char* type)
{
    constexpr struct
    {
        const char* word;
        Kind kind;
    } kinds[] = {{"s", Kind::Shared}, {"inlineStr", Kind::Inline}, {"b", Kind::Truth}, {"e", Kind::Error}};

    m_column = reference != nullptr ? columnOf(reference) : m_column + 1;
    if (m_column < 0 || m_column >= Limits::columnNumber)
        return refuse(QStringLiteral("it has a cell where none can be"));
    m_wanted = m_column < Limits::columns && m_taker.wantsColumn(m_column);
    m_kind = Kind::Plain;
    for (const auto& known : kinds)
        if (type != nullptr && std::strcmp(type, known.word) == 0)
            m_kind = known.kind;
    m_value.clear();
}

void Sheet::endCell()
{
    if (!m_wanted || m_value.isEmpty())
        return;
    QString text;
    if (m_kind == Kind::Shared)
        text = sharedText();
    else if (m_kind == Kind::Truth) // as the program that made the table shows it
        text = m_value == "1" ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    else if (m_kind != Kind::Error) // numbers are texts as they are spelt
        text = cellText(m_value);
    if (text.isEmpty())
        return;
    if (m_row.size() <= m_column)
        m_row.resize(m_column + 1);
    m_row[m_column] = text;
    m_rowHasText = true;
}

void Sheet::endRow()
{
    const QString problem = m_rowHasText ? m_taker.takeRow(m_row) : QString();
    if (!problem.isEmpty())
        refuse(problem);
}

QString Sheet::sharedText()
{
    bool isNumber = false;
    const int index = m_value.trimmed().toInt(&isNumber);
    if (isNumber && index >= 0 && index < m_strings.count())
        return cellText(m_strings.at(index));
    refuse(QStringLiteral("a cell refers to a text that is not there"));
    return {};
}

} // namespace Workbook
