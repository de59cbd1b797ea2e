#include "platform/ado/RecordsetPrivate.h"

#include "platform/ado/ColumnStore.h"
#include "platform/ado/Conversion.h"
#include "platform/ado/FetchedRows.h"
#include "platform/ado/Provider.h"

#include <zephrin/ado/Error.h>

#include <QPointer>

#include <algorithm>
#include <limits>
#include <new>

namespace zephrin::ado {

namespace {

/// Fetches up to `limit` rows, all where it is 0.
std::shared_ptr<const ColumnStore> FetchAll(Cursor& cursor, qint64 limit, qint64 memoryLimit) {
    auto store = std::make_shared<ColumnStore>(static_cast<int>(cursor.Fields().size()), memoryLimit);
    if (cursor.Fields().isEmpty()) return store;
    qint64 left = limit > 0 ? limit : std::numeric_limits<qint64>::max();
    while (left > 0) {
        const qint64 taken = cursor.Fetch(*store, std::min<qint64>(left, ColumnStore::ChunkRows));
        if (taken <= 0) break;
        left -= taken;
    }
    store->Squeeze();
    return store;
}

bool HasMore(Cursor& cursor) {
    if (cursor.Fields().isEmpty()) return false;
    ColumnStore rest(static_cast<int>(cursor.Fields().size()));
    return cursor.Fetch(rest, 1) > 0;
}

}  // namespace

void RecordsetPrivate::Show(FieldList newFields, std::unique_ptr<RowSet> newRows, EditedRows* asEdited) {
    fields = std::move(newFields);
    rows = std::move(newRows);
    edited = asEdited;
    current = Count() > 0 ? 0 : -1;
    arrived = adding = false;
    sort.clear();
    Q_EMIT q.Reset();
    Q_EMIT q.CursorMoved(ReportedRow());
}

void RecordsetPrivate::Drop() {
    edited = nullptr;
    Show(std::move(fields), nullptr, nullptr);
}

void RecordsetPrivate::Fetch(Cursor& cursor, qint64 memoryLimit) {
    const QPointer<Recordset> alive(&q);
    const qint64 wanted = maxRecords;
    std::shared_ptr<const ColumnStore> store;
    bool more = false;
    try {
        store = FetchAll(cursor, wanted, memoryLimit);
        more = wanted > 0 && store->RowCount() == wanted && HasMore(cursor);
    } catch (const std::bad_alloc&) {
        // What was fetched is free again; the caller can say so and go on.
        throw Error(ErrorNumber::OutOfMemory, QStringLiteral("The rows do not fit into memory."));
    }
    if (!alive) throw Cancelled();
    truncated = more;
    Show(FieldList(cursor.Fields()), std::make_unique<FetchedRows>(std::move(store)), nullptr);
}

RecordsetPtr RecordsetPrivate::RecordsetOf(Cursor& cursor, qint64 memoryLimit) {
    auto recordset = std::make_shared<Recordset>();
    recordset->d->Fetch(cursor, memoryLimit);
    return recordset;
}

void RecordsetPrivate::ShareFrom(const RecordsetPrivate& other) {
    fields = other.fields;
    rows = other.rows ? other.rows->Share() : nullptr;
    edited = other.edited ? static_cast<EditedRows*>(rows.get()) : nullptr;
    current = Count() > 0 ? 0 : -1;
    sort = other.sort;
    maxRecords = other.maxRecords;
    truncated = other.truncated;
    location = other.location;
}

void RecordsetPrivate::MoveTo(qint64 row) {
    if (Count() == 0) return;
    adding = arrived = false;
    const qint64 target = std::clamp<qint64>(row, -1, Count());
    if (target == current) return;
    current = target;
    Q_EMIT q.CursorMoved(ReportedRow());
}

void RecordsetPrivate::RequireOpen() const {
    if (!rows)
        throw Error(ErrorNumber::ObjectClosed,
                    QStringLiteral("Operation is not allowed when the object is closed."));
}

void RecordsetPrivate::RequireClosed() const {
    if (rows)
        throw Error(ErrorNumber::ObjectOpen,
                    QStringLiteral("Operation is not allowed when the object is open."));
}

EditedRows& RecordsetPrivate::RequireEdited() const {
    RequireOpen();
    if (!edited)
        throw Error(ErrorNumber::FeatureNotAvailable,
                    QStringLiteral("The rows of a query are read-only and cannot be changed here."));
    return *edited;
}

qint64 RecordsetPrivate::RequireRow() const {
    if (!OnRow())
        throw Error(
            ErrorNumber::NoCurrentRecord,
            QStringLiteral("Either BOF or EOF is True, or the current record has been deleted. Requested "
                           "operation requires a current record."));
    return current;
}

void RecordsetPrivate::Write(qint64 row, int field, const QVariant& value) {
    EditedRows& target = RequireEdited();
    target.Set(row, field, Converted(value, fields.At(field)));
    Q_EMIT q.CellsChanged(row, field, field);
}

void RecordsetPrivate::RemoveRow(qint64 row) {
    edited->Remove(row);
    adding = false;
    Q_EMIT q.RowsRemoved(row, 1);
    Q_EMIT q.CursorMoved(ReportedRow());
}

}  // namespace zephrin::ado
