#pragma once

#include "platform/ado/EditedRows.h"
#include "platform/ado/FieldList.h"
#include "platform/ado/RowSet.h"

#include <zephrin/ado/Recordset.h>

namespace zephrin::ado {

class Cursor;

/// What a recordset holds. Rows are counted from 0; the cursor stands on one, at -1 (BOF) or at Count()
/// (EOF).
class RecordsetPrivate {
 public:
    explicit RecordsetPrivate(Recordset& owner) : q(owner) {}

    /// Shows these rows with these columns, the cursor on the first. `asEdited` is `newRows` where values may
    /// be written.
    void Show(FieldList newFields, std::unique_ptr<RowSet> newRows, EditedRows* asEdited);
    void Drop();
    /// Opens with the rows of `cursor`, at most MaxRecords, in at most `memoryLimit` bytes. When it throws,
    /// the recordset is as it was; where it has gone meanwhile, too.
    void Fetch(Cursor& cursor, qint64 memoryLimit);
    static RecordsetPtr RecordsetOf(Cursor& cursor, qint64 memoryLimit);
    /// Takes over columns, rows and order of another recordset.
    void ShareFrom(const RecordsetPrivate& other);

    qint64 Count() const { return rows ? rows->Count() : 0; }
    bool OnRow() const { return current >= 0 && current < Count(); }
    qint64 ReportedRow() const { return OnRow() ? current : -1; }
    /// Commits a begun row and stands on `row`, or behind the end that it lies beyond.
    void MoveTo(qint64 row);

    void RequireOpen() const;
    void RequireClosed() const;
    EditedRows& RequireEdited() const;
    qint64 RequireRow() const;
    void Write(qint64 row, int field, const QVariant& value);
    void RemoveRow(qint64 row);

    Recordset& q;
    FieldList fields;
    std::unique_ptr<RowSet> rows;
    /// The same rows where values may be written, else null.
    EditedRows* edited = nullptr;

    qint64 current = -1;
    /// The current row took the place of one that was deleted: the next MoveNext arrives there instead of
    /// passing it.
    bool arrived = false;
    /// A row begun with AddNew stands last; `beforeNew` is where the cursor was.
    bool adding = false;
    qint64 beforeNew = -1;

    QString sort;
    qint64 maxRecords = 0;
    bool truncated = false;
    CursorLocation location = CursorLocation::Client;
};

}  // namespace zephrin::ado
