#pragma once

#include "platform/ado/EditedRows.h"
#include "platform/ado/FieldList.h"

#include <memory>

namespace zephrin::ado {

/// Columns and rows in ADO's XML form: a schema with the types, sizes and true names of the columns, then the
/// rows in their present order. A Null is an attribute that isn't there, an empty text one that is.
///
/// Of a field's attributes, updatable, nullable and "may be null" are kept, or that they were unspecified.
/// Throws ErrorNumber::ValueRefused for a value that does not suit its column and so could not be read back.
QByteArray WritePersisted(const FieldList& fields, const RowSet& rows);

/// A table that is kept by hand is far smaller; a hostile file must not take the machine's memory.
inline constexpr qsizetype MostPersistedBytes = qsizetype{256} << 20;

struct PersistedTable {
    FieldList Fields;
    std::unique_ptr<EditedRows> Rows;
};

/// Reads that form, also as other software writes it. Whatever is not exactly of that form, or larger than
/// any table that is kept by hand, throws ErrorNumber::InvalidConnection, the number that ADO gives for a
/// file it cannot read; the description names `source` and the line.
PersistedTable ReadPersisted(const QByteArray& xml, const QString& source);

}  // namespace zephrin::ado
