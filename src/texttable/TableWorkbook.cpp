#include "texttable/TableWorkbook.h"

#include "texttable/TextTable.h"

#include <QFile>
#include <QRegularExpression>

#include <xlsxwriter.h>

namespace {

constexpr time_t created = 1577836800; // 2020-01-01: any, but always the same
constexpr double widths[] = {28, 48};  // of context and source, in characters
constexpr double languageWidth = 36;

// A reader of the workbook takes _xHHHH_ for the character of that code. A text that is spelt so has its
// first underscore written that way.
QByteArray asWritten(QString text)
{
    static const QRegularExpression escape(QStringLiteral("_(?=x[0-9A-Fa-f]{4}_)"));
    return text.replace(escape, QStringLiteral("_x005F_")).toUtf8();
}

lxw_error writeRow(lxw_worksheet* sheet, int row, const QStringList& cells)
{
    lxw_error error = LXW_NO_ERROR;
    for (int column = 0; column < cells.size() && error == LXW_NO_ERROR; ++column)
        if (!cells[column].isEmpty())
            error = worksheet_write_string(sheet, lxw_row_t(row), lxw_col_t(column),
                                           asWritten(cells[column]).constData(), nullptr);
    return error;
}

lxw_error writeTable(lxw_worksheet* sheet, const TextTable& table)
{
    worksheet_set_column(sheet, 0, 0, widths[0], nullptr);
    worksheet_set_column(sheet, 1, 1, widths[1], nullptr);
    worksheet_set_column(sheet, 2, lxw_col_t(table.headings.size() - 1), languageWidth, nullptr);
    worksheet_freeze_panes(sheet, 1, 2); // headings, context and source stay in sight
    lxw_error error = writeRow(sheet, 0, table.headings);
    for (int row = 0; row < table.rows.size() && error == LXW_NO_ERROR; ++row)
        error = writeRow(sheet, row + 1, table.rows[row]);
    return error;
}

} // namespace

QString writeWorkbook(const TextTable& table, const QString& path)
{
    // Under another name until it is whole: what is there counts as made.
    const QString unfinished = path + QLatin1String(".part");
    lxw_workbook* const workbook = workbook_new(QFile::encodeName(unfinished).constData());
    lxw_worksheet* const sheet = workbook != nullptr ? workbook_add_worksheet(workbook, "Language") : nullptr;
    if (sheet == nullptr)
        return QStringLiteral("there is not enough memory");
    lxw_doc_properties properties = {};
    properties.created = created;
    workbook_set_properties(workbook, &properties);
    const lxw_error writing = writeTable(sheet, table);
    const lxw_error closing = workbook_close(workbook);
    const lxw_error error = writing != LXW_NO_ERROR ? writing : closing;
    QFile::remove(path);
    if (error == LXW_NO_ERROR && QFile::rename(unfinished, path))
        return {};
    QFile::remove(unfinished);
    return error == LXW_NO_ERROR ? QStringLiteral("it cannot be replaced")
                                 : QString::fromLatin1(lxw_strerror(error));
}
