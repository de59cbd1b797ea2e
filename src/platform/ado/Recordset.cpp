#include "platform/ado/Connection.h"
#include "platform/ado/RecordsetPrivate.h"
#include "platform/ado/SortCriterion.h"

#include <zephrin/ado/Error.h>
#include <zephrin/ado/Recordset.h>

#include <QPointer>

#include <algorithm>
#include <limits>

namespace zephrin::ado {

Recordset::Recordset(QObject* parent) : QObject(parent), d(std::make_unique<RecordsetPrivate>(*this)) {}
Recordset::~Recordset() = default;

void Recordset::Append(const QString& name, DataType type, int definedSize, int attributes) {
    Field field;
    field.Name = name;
    field.Type = type;
    field.DefinedSize = definedSize;
    field.Attributes = attributes;
    Append(field);
}

void Recordset::Append(const Field& field) {
    d->RequireClosed();
    d->fields.Append(field);
}

int Recordset::FieldCount() const {
    return d->fields.Count();
}

const Field& Recordset::FieldAt(int index) const {
    return d->fields.At(index);
}

int Recordset::FieldIndex(QStringView name) const {
    return d->fields.Find(name);
}

void Recordset::SetMaxRecords(qint64 limit) {
    d->maxRecords = std::max<qint64>(limit, 0);
}

qint64 Recordset::MaxRecords() const {
    return d->maxRecords;
}

bool Recordset::Truncated() const {
    return d->truncated;
}

void Recordset::SetCursorLocation(CursorLocation location) {
    d->location = location;
}

void Recordset::Open() {
    d->RequireClosed();
    d->truncated = false;
    auto rows = std::make_unique<EditedRows>();
    EditedRows* const edited = rows.get();
    d->Show(d->fields, std::move(rows), edited);
}

void Recordset::Open(const QString& source, Connection& connection, CursorType, LockType, int) {
    d->RequireClosed();
    // One row more than wanted tells whether there were more.
    const bool limited = d->maxRecords > 0 && d->maxRecords < std::numeric_limits<qint64>::max();
    const QPointer<Recordset> alive(this);
    const qint64 memoryLimit = connection.MemoryLimit();
    const std::unique_ptr<Cursor> rows = connection.Stream(source, limited ? d->maxRecords + 1 : 0);
    if (!alive) throw Cancelled();
    d->Fetch(*rows, memoryLimit);
}

void Recordset::Close() {
    d->RequireOpen();
    d->Drop();
}

ObjectState Recordset::State() const {
    return d->rows ? ObjectState::Open : ObjectState::Closed;
}

bool Recordset::IsUpdatable() const {
    return d->edited != nullptr;
}

std::shared_ptr<Recordset> Recordset::Clone() const {
    auto clone = std::make_shared<Recordset>();
    clone->d->ShareFrom(*d);
    return clone;
}

qint64 Recordset::RecordCount() const {
    return d->Count();
}

bool Recordset::Bof() const {
    return d->Count() == 0 || d->current < 0;
}

bool Recordset::Eof() const {
    return d->Count() == 0 || d->current >= d->Count();
}

qint64 Recordset::AbsolutePosition() const {
    if (d->Count() == 0) return -1;
    if (d->current < 0) return -2;
    return d->OnRow() ? d->current + 1 : -3;
}

void Recordset::SetAbsolutePosition(qint64 position) {
    // EOF as AbsolutePosition tells it; BOF and what lies before it is below every row.
    constexpr qint64 eof = -3;
    d->MoveTo(position == eof ? d->Count() : std::max<qint64>(position, 0) - 1);
}

void Recordset::MoveFirst() {
    d->MoveTo(0);
}

void Recordset::MoveLast() {
    d->MoveTo(d->Count() - 1);
}

void Recordset::MoveNext() {
    d->MoveTo(d->arrived ? d->current : d->current + 1);
}

void Recordset::MovePrevious() {
    d->MoveTo(d->current - 1);
}

QVariant Recordset::Value(int field) const {
    d->RequireOpen();
    const DataType type = d->fields.At(field).Type;
    return d->rows->Value(d->RequireRow(), field, type);
}

QVariant Recordset::Value(QStringView name) const {
    d->RequireOpen();
    return Value(d->fields.Require(name));
}

QString Recordset::Text(int field) const {
    d->RequireOpen();
    const DataType type = d->fields.At(field).Type;
    return d->rows->Text(d->RequireRow(), field, type, std::numeric_limits<qsizetype>::max());
}

QString Recordset::Text(QStringView name) const {
    d->RequireOpen();
    return Text(d->fields.Require(name));
}

void Recordset::SetValue(int field, const QVariant& value) {
    d->RequireEdited();
    (void)d->fields.At(field);
    d->Write(d->RequireRow(), field, value);
}

void Recordset::SetValue(QStringView name, const QVariant& value) {
    d->RequireEdited();
    SetValue(d->fields.Require(name), value);
}

void Recordset::AddNew() {
    EditedRows& rows = d->RequireEdited();
    d->beforeNew = d->current;
    d->adding = true;
    d->arrived = false;
    rows.Append();
    d->current = rows.Count() - 1;
    Q_EMIT RowsInserted(d->current, 1);
    Q_EMIT CursorMoved(d->current);
}

void Recordset::Update() {
    d->RequireOpen();
    d->adding = false;
}

void Recordset::CancelUpdate() {
    d->RequireOpen();
    if (!d->adding) return;
    const qint64 added = d->Count() - 1;
    d->current = d->beforeNew;
    d->RemoveRow(added);
}

void Recordset::Delete() {
    d->RequireEdited();
    const qint64 row = d->RequireRow();
    d->arrived = true;
    d->RemoveRow(row);
}

void Recordset::DeleteAll() {
    if (d->Count() == 0) return;
    EditedRows& rows = d->RequireEdited();
    const qint64 count = rows.Count();
    rows.Clear();
    d->current = -1;
    d->adding = d->arrived = false;
    Q_EMIT RowsRemoved(0, count);
    Q_EMIT CursorMoved(-1);
}

QVariant Recordset::ValueAt(qint64 row, int field) const {
    if (row < 0 || row >= d->Count() || !d->fields.Contains(field)) return {};
    return d->rows->Value(row, field, d->fields.At(field).Type);
}

bool Recordset::IsNullAt(qint64 row, int field) const {
    return row < 0 || row >= d->Count() || !d->fields.Contains(field) || d->rows->IsNull(row, field);
}

QString Recordset::TextAt(qint64 row, int field, qsizetype maxChars) const {
    if (row < 0 || row >= d->Count() || !d->fields.Contains(field)) return {};
    return d->rows->Text(row, field, d->fields.At(field).Type, maxChars);
}

void Recordset::SetValueAt(qint64 row, int field, const QVariant& value) {
    d->RequireEdited();
    (void)d->fields.At(field);
    if (row < 0 || row >= d->Count())
        throw Error(ErrorNumber::NoCurrentRecord, QStringLiteral("There is no row at that position."));
    d->Write(row, field, value);
}

void Recordset::SetSort(const QString& criterion) {
    d->RequireOpen();
    const auto keys = ReadSortCriterion(criterion, d->fields);
    if (keys.empty())
        d->rows->RestoreOrder();
    else
        d->rows->Order(keys);
    d->sort = keys.empty() ? QString() : criterion;
    d->adding = d->arrived = false;
    d->current = d->Count() > 0 ? 0 : -1;
    Q_EMIT Reset();
    Q_EMIT CursorMoved(d->ReportedRow());
}

QString Recordset::Sort() const {
    return d->sort;
}

qint64 Recordset::MemoryUsage() const {
    return d->rows ? d->rows->MemoryUsage() : 0;
}

}  // namespace zephrin::ado
