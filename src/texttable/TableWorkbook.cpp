#include "texttable/TableWorkbook.h"

#include "texttable/TextTable.h"

#include <QFile>
#include <QRegularExpression>

#include <xlsxwriter.h>

namespace {

constexpr time_t created = 1577836800;    // 2020-01-01: any, but always the same
constexpr double widths[] = {28, 48, 48}; // of context, source and translation, in characters

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

// Who reads one language need not read the others.
lxw_error writeLanguage(lxw_workbook* workbook, const TextTable& table, int column)
{
    lxw_worksheet* const sheet =
        workbook_add_worksheet(workbook, table.headings[column].toUtf8().constData());
    if (sheet == nullptr)
        return LXW_ERROR_MEMORY_MALLOC_FAILED;
    for (int i = 0; i < int(std::size(widths)); ++i)
        worksheet_set_column(sheet, lxw_col_t(i), lxw_col_t(i), widths[i], nullptr);
    worksheet_freeze_panes(sheet, 1, 2); // headings, context and source stay in sight
    const auto cells = [column](const QStringList& row) { return QStringList{row[0], row[1], row[column]}; };
    lxw_error error = writeRow(sheet, 0, cells(table.headings));
    for (int row = 0; row < table.rows.size() && error == LXW_NO_ERROR; ++row)
        error = writeRow(sheet, row + 1, cells(table.rows[row]));
    return error;
}

} // namespace

QString writeWorkbook(const TextTable& table, const QString& path)
{
    // Under another name until it is whole: what is there counts as made.
    const QString unfinished = path + QLatin1String(".part");
    lxw_workbook_options options = {};
    options.constant_memory =
        LXW_TRUE; // texts stand in their cells: there is no part with those of all sheets
    lxw_workbook* const workbook = workbook_new_opt(QFile::encodeName(unfinished).constData(), &options);
    if (workbook == nullptr)
        return QStringLiteral("there is not enough memory");
    lxw_doc_properties properties = {};
    properties.created = created;
    workbook_set_properties(workbook, &properties);
    lxw_error writing = LXW_NO_ERROR;
    for (int column = 2; column < table.headings.size() && writing == LXW_NO_ERROR; ++column)
        writing = writeLanguage(workbook, table, column);
    const lxw_error closing = workbook_close(workbook);
    const lxw_error error = writing != LXW_NO_ERROR ? writing : closing;
    QFile::remove(path);
    if (error == LXW_NO_ERROR && QFile::rename(unfinished, path))
        return {};
    QFile::remove(unfinished);
    return error == LXW_NO_ERROR ? QStringLiteral("it cannot be replaced")
                                 : QString::fromLatin1(lxw_strerror(error));
}
