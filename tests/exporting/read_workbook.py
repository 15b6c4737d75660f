#!/usr/bin/python3
"""Prints the cells of a workbook as another program reads them.

The output is JSON: name, frozen, filter, titles, and rows of [type, value].
"""
import datetime
import json
import sys

import openpyxl
import xlrd
from openpyxl.utils.escape import unescape


def day(value, number_format):
    return ["d", value.strftime("%d/%m/%Y %H:%M:%S") + "|" + number_format]


def shown_in_xlsx(cell):
    value = unescape(cell.value) if cell.data_type in "sf" else cell.value
    return day(value, cell.number_format) if isinstance(value, datetime.datetime) else [cell.data_type, value]


def read_xlsx(path):
    sheet = openpyxl.load_workbook(path).active
    return {"name": sheet.title, "frozen": sheet.freeze_panes, "filter": sheet.auto_filter.ref, "titles": sheet.print_title_rows,
            "rows": [[shown_in_xlsx(cell) for cell in row] for row in sheet.iter_rows()]}


def read_xls(path):
    book = xlrd.open_workbook(path, formatting_info=True)
    sheet = book.sheet_by_index(0)
    areas = {name.name: name.area2d()[1:] for name in book.name_obj_list}

    def shown(cell):
        if cell.ctype == xlrd.XL_CELL_DATE:
            return day(xlrd.xldate_as_datetime(cell.value, book.datemode), book.format_map[book.xf_list[cell.xf_index].format_key].format_str)
        kind = {xlrd.XL_CELL_TEXT: "s", xlrd.XL_CELL_BOOLEAN: "b"}.get(cell.ctype, "n")
        if cell.ctype == xlrd.XL_CELL_EMPTY:
            return [kind, None]
        return [kind, bool(cell.value) if kind == "b" else int(cell.value) if kind == "n" and cell.value.is_integer() else cell.value]

    first, last, left, right = areas["_FilterDatabase"]
    return {"name": sheet.name, "frozen": "A%d" % (sheet.horz_split_pos + 1), "filter": "%s:%s" % (xlrd.cellname(first, left), xlrd.cellname(last - 1, right - 1)),
            "titles": "$%d:$%d" % (areas["Print_Titles"][0] + 1, areas["Print_Titles"][1]), "rows": [[shown(cell) for cell in row] for row in sheet.get_rows()]}


print(json.dumps(read_xls(sys.argv[1]) if sys.argv[1].endswith(".xls") else read_xlsx(sys.argv[1])))
