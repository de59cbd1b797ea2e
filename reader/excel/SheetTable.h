#pragma once

#include "reader/Source.h"
#include "reader/excel/Sheet.h"

#include <memory>

namespace zephrin::reader::excel {

struct TableOptions {
    bool HasHeads = true;
    bool MixedAsText = false;
    /// Whether the area is a whole sheet, whose first row is the first that has anything in it.
    bool IsSheet = true;
    /// Whether the width of the area is certain; where it isn't, a cell beyond it ends the reading with
    /// Wider.
    bool IsMeasured = false;
};

/// An area of a sheet as a table: the first row names the columns, the majority of the next eight decides
/// their types.
class SheetTable {
 public:
    /// Reads as far as the columns need. `area` has a last column.
    SheetTable(SheetReader& of, const Area& within, const TableOptions& how);

    const QList<ColumnInfo>& Columns() const { return columns; }
    void WriteRows(RowSink& into);

 private:
    bool Next();
    void TakeHeads();
    void Keep();
    void DecideTypes();
    ColumnInfo DecideType(int column) const;
    const SheetCell& CellOf(const SheetRow& of, int column) const;
    void WriteRow(const SheetRow& from, RowSink& into);
    void WriteCell(const SheetCell& cell, ado::files::ColumnKind kind, bool takesAll, RowSink& into);

    SheetReader& reader;
    Area area;
    TableOptions options;
    SheetRow row;
    /// Read for the types and not written yet, with copies of their texts.
    std::vector<SheetRow> scanned;
    std::vector<std::unique_ptr<QByteArray>> texts;
    QList<ColumnInfo> columns;
    std::vector<bool> takesAll;
    qint64 nextRow = -1;
    bool anyRow = false;
};

/// A name as the drivers make it of what a cell or a sheet says: no character that a statement would stumble
/// over.
QString SafeName(QString name);

}  // namespace zephrin::reader::excel
