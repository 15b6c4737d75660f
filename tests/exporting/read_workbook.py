#!/usr/bin/python3
"""Prints the cells of a workbook as another program reads them: JSON of name, frozen, filter, wide and rows of [type, value]."""
import datetime
import json
import sys

import openpyxl
from openpyxl.utils.escape import unescape


def shown(cell):
    value = unescape(cell.value) if cell.data_type in "sf" else cell.value
    if isinstance(value, datetime.datetime):
        return ["d", value.strftime("%d/%m/%Y %H:%M:%S") + "|" + cell.number_format]
    return [cell.data_type, value]


sheet = openpyxl.load_workbook(sys.argv[1]).active
print(json.dumps({"name": sheet.title, "frozen": sheet.freeze_panes, "filter": sheet.auto_filter.ref, "wide": sheet.page_setup.fitToHeight,
                  "titles": sheet.print_title_rows, "rows": [[shown(cell) for cell in row] for row in sheet.iter_rows()]}))
