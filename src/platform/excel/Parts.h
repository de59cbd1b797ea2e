#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace zephrin::excel {

/// A connection of the workbook and the statement that goes through it.
struct ConnectionPart {
    /// With its "OLEDB;" or "ODBC;" in front.
    QString Text;
    QString Command;
};

struct QueryTablePart {
    int Connection = 0;  ///< number of its connection, from 1
    QStringList Heads;
    QString Range;  ///< "$A$1:$C$9"
};

struct PivotPart {
    QString TableName;
    /// Rows of another sheet, or (empty) the connection's own.
    QString SourceSheet;
    QString SourceRange;  ///< "A1:C9"
    int Connection = 0;
    QStringList Heads;
    bool SaveData = false;
};

/// One sheet and what hangs on it.
struct SheetPart {
    QString Name;
    /// Names the sheet's part in the package, whatever its place among the sheets.
    int File = 1;
    std::optional<QueryTablePart> Query;
    std::optional<PivotPart> Pivot;
};

/// A workbook without its rows.
struct WorkbookParts {
    std::vector<SheetPart> Sheets;
    std::vector<ConnectionPart> Connections;
    int ActiveSheet = 0;
};

/// A part of the package by its path in it.
struct Part {
    QByteArray Path;
    QByteArray Content;
};

/// Every part of the package but the rows of sheets with a query, whose path RowsPath gives.
std::vector<Part> WriteParts(const WorkbookParts& workbook);

/// Path of the part that holds the rows of the sheet of that file number.
QByteArray RowsPath(int file);

}  // namespace zephrin::excel
