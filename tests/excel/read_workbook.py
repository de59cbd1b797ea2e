"""Prints what a reader that is not ours finds in a workbook, a line a fact."""

import sys
import zipfile
from xml.dom import minidom

import openpyxl


def check_package(path):
    """Every part is well-formed, and every relationship leads to a part that is there and has a content type."""
    with zipfile.ZipFile(path) as package:
        assert package.testzip() is None
        names = set(package.namelist())
        types = minidom.parseString(package.read("[Content_Types].xml"))
        declared = {node.getAttribute("PartName") for node in types.getElementsByTagName("Override")}
        for name in sorted(names):
            document = minidom.parseString(package.read(name))
            if name.endswith(".rels"):
                folder = name.replace("_rels/", "").rsplit("/", 1)[0] if "/" in name.replace("_rels/", "") else ""
                for node in document.getElementsByTagName("Relationship"):
                    parts = folder.split("/") if folder else []
                    for step in node.getAttribute("Target").split("/"):
                        parts = parts[:-1] if step == ".." else parts + [step]
                    target = "/".join(parts)
                    assert target in names, (name, target)
            elif name != "[Content_Types].xml":
                assert "/" + name in declared, name


def main(path):
    check_package(path)
    book = openpyxl.load_workbook(path)
    print("sheets", book.sheetnames, "active", book.active.title)
    for sheet in book:
        for row in sheet.iter_rows():
            for cell in row:
                if cell.value is not None:
                    print(f"{sheet.title}!{cell.coordinate} {cell.data_type} {cell.number_format} {cell.value!a}")
        for name, defined in sheet.defined_names.items() if hasattr(sheet, "defined_names") else []:
            print("name", name, defined.attr_text)
        for pivot in sheet._pivots:
            source = pivot.cache.cacheSource
            where = source.worksheetSource
            fields = [field.name for field in pivot.cache.cacheFields]
            print("pivot", pivot.name, where.sheet if where else None, where.ref if where else None, fields)
    with zipfile.ZipFile(path) as package:
        for part in ("xl/connections.xml", "xl/queryTables/queryTable1.xml"):
            if part in package.namelist():
                for node in minidom.parseString(package.read(part)).getElementsByTagName("*"):
                    shown = {key: value for key, value in node.attributes.items() if key in
                             ("connection", "command", "type", "connectionId", "name")}
                    if shown:
                        print("part", part.rsplit("/", 1)[1], node.tagName, sorted(shown.items()))


main(sys.argv[1])
