"""Writes the workbook that the tests read: make_workbook.py FILE"""
import datetime
import sys

import openpyxl
from openpyxl.workbook.defined_name import DefinedName

book = openpyxl.Workbook()

orders = book.active
orders.title = "Orders"
orders.append(["Order ID", "Customer", "Date", "Total", "Paid", "A.B [x]", "Customer", "Mixed", None, "Price"])
for n in range(1, 21):
    day = datetime.datetime(1996, 7, n, 8, 30) if n % 2 else datetime.date(1996, 7, n)
    orders.append([n, "K%d \u2013 \u00df\U0001f600 <&>" % n, day, n * 1.25, bool(n % 2), "x_x000D_", "c",
                   n if n % 3 else "text", None, n * 1.1])
    orders.cell(row=n + 1, column=10).number_format = '"$"#,##0.00'
orders["B6"] = "l\u00e4nger" * 100

# Rows that begin somewhere, with one of nothing between them, and values whose kind changes behind the eighth row.
parts = book.create_sheet("Order Details")
for row, cells in enumerate([["Name", "Qty", "Name"], ["a", 3, 1], [None] * 3, ["b", 4, "one"], ["c", "many", True]], 5):
    for column, value in enumerate(cells, 3):
        parts.cell(row=row, column=column, value=value)
for row in range(10, 20):
    parts.cell(row=row, column=3, value="d%d" % row)
parts.cell(row=20, column=3, value=20)
parts.cell(row=20, column=4, value="=1/0")

formats = book.create_sheet("Formats")
formats.append(["General", "Time", "Hours", "Old", "Euro", "Percent", "Code"])
formats.append([40000, 0.75, 1.5, -1, 5, 0.5, 12])
for column, form in enumerate(["General", "h:mm", "[h]:mm", "yyyy-mm-dd", "#,##0.00 [$\u20ac-407]", "0%", '"day "00'], 1):
    formats.cell(row=2, column=column).number_format = form
book.create_sheet("Empty")

book.defined_names.append(DefinedName("Details", attr_text="'Order Details'!$C$5:$D$8"))
book.defined_names.append(DefinedName("Nothing", attr_text="1+1"))
book.defined_names.append(DefinedName("Unseen", attr_text="Orders!$A$1:$B$2", hidden=True))
book.save(sys.argv[1])
