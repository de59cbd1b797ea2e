#pragma once

#include <QStringList>

#include <optional>

namespace zephrin::test {

/// What LibreOffice makes of a workbook, a line a fact, sheet after sheet: "sheet Query Results", then
/// "row string:Paris|float:12.5|void" and the like, and "pivot NAME of RANGE" where a pivot table stands. A row that is
/// repeated is written once. Nothing where the program is not installed.
std::optional<QStringList> ReadBySpreadsheetProgram(const QString& path);

}  // namespace zephrin::test
