"""Writes the translation table of tst_translator as openpyxl does, in one of its manners.

usage: make_workbook.py MANNER WORKBOOK.xlsx
"""

import sys

import openpyxl
from openpyxl.styles import Font

ROWS = [
    ["Context", "Source", "English", "German", "Simplified Chinese"],
    [None, "Localization", "en", "de", "zh_CN"],
    ["Panel", "Start", "Start", "Anfang", "起始"],
    ["Other", "Start", "Start", "Beginn", None],
    [None, "Start", "Start", "Los", "开始"],
    ["Panel", "Two\nlines", "Two\nlines", "Zwei\nZeilen", "两\n行"],
    ["Panel", " blanks ", " blanks ", " Leerzeichen ", None],
    ["Panel", "a < b & \"c\"", "a < b & \"c\"", "ä < ö & „ü“", "甲 < 乙"],
    ["Panel", "No German", "No German", None, "没有"],
    ["Panel", "Satellite", "Satellite", "Satellit \U0001f6f0", None],
    ["Panel", "100", "100", "hundert", None],
    ["Panel", "_x0041_", "_x0041_", "nicht A", None],
]


def plain():
    book = openpyxl.Workbook()
    for row in ROWS:
        book.active.append(row)
    return book


def write_only():
    book = openpyxl.Workbook(write_only=True)
    sheet = book.create_sheet()
    for row in ROWS:
        sheet.append(row)
    return book


def other_sheets():
    """The table's sheet is made last and stands first."""
    book = openpyxl.Workbook()
    book.active.append(["Context", "Source", "German"])
    book.active.append(["Panel", "Start", "from the wrong sheet"])
    sheet = book.create_sheet("Texts", 0)
    for row in ROWS:
        sheet.append(row)
    book.create_chartsheet("Picture", 0)
    return book


def columns_moved():
    """Two empty rows and columns before the table, German before Source, a remark between the languages."""
    order = [3, 1, None, 0, 4, 2]
    book = openpyxl.Workbook()
    for line, row in enumerate(ROWS, 3):
        for column, source in enumerate(order, 3):
            value = "remark" if source is None else row[source]
            book.active.cell(line, column, value)
    return book


def formatted():
    """As people leave it: bold headings, merged cells, a far cell with a colour, numbers where texts are meant."""
    book = plain()
    sheet = book.active
    for cell in sheet[1]:
        cell.font = Font(bold=True)
    for row in sheet.iter_rows(min_row=2):
        for cell in row:
            if cell.value == "100":
                cell.value = 100
    sheet.merge_cells("A20:E21")
    sheet["XFD1048576"].font = Font(bold=True)
    sheet.freeze_panes = "C2"
    sheet.auto_filter.ref = "A1:E12"
    return book


def hidden():
    book = plain()
    book.create_sheet("Shown")
    book.active.sheet_state = "hidden"
    return book


def sheet_each():
    """A sheet for each language; the one that stands first has nothing for the others."""
    book = openpyxl.Workbook()
    book.remove(book.active)
    for column, language in enumerate(ROWS[0][2:], 2):
        sheet = book.create_sheet(language.upper())
        for row in ROWS:
            sheet.append([row[0], row[1], row[column]])
    return book


MANNERS = [plain, write_only, other_sheets, columns_moved, formatted, hidden, sheet_each]

if __name__ == "__main__":
    manner = {function.__name__: function for function in MANNERS}[sys.argv[1]]
    manner().save(sys.argv[2])
