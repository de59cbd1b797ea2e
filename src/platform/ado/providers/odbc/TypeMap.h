#pragma once

#include "platform/ado/providers/odbc/Handles.h"

#include <zephrin/ado/Recordset.h>

namespace zephrin::ado::odbc {

/// What a driver says of a result column.
struct ColumnInfo {
    QString Name;
    SQLSMALLINT SqlType = SQL_VARCHAR;
    /// Characters of texts, bytes of binaries, digits of numbers; 0 where the driver knows no end.
    SQLULEN Size = 0;
    SQLSMALLINT Digits = 0;
    bool Nullable = true;
    bool Unsigned = false;
    /// An exact number that the server keeps as money.
    bool Money = false;
    /// The server's word for the type.
    QString TypeName;
};

/// How a column's cells are asked for and stored.
enum class CellKind {
    Integer,
    Double,
    Bit,
    BitText,  ///< a truth value in text, since the driver reads -1 as False
    Text,
    Bytes,
    Decimal,
    Currency,
    Date,
    DateTime,
    Time,      ///< in text: the struct has no fractions
    DateText,  ///< a date or timestamp in text, since it may hold anything
    Guid,
};

/// The column as ADO's own ODBC bridge would describe it. A type that nobody mapped is text.
Field ToField(const ColumnInfo& column);

/// How to fetch the column. `looseTypes`: the cells of this database hold any kind of value in any column.
CellKind KindOf(const ColumnInfo& column, bool looseTypes);

/// Whether cells may be longer than any buffer for all rows should be.
bool IsLong(const ColumnInfo& column);

/// Where a database has words for types that its driver calls plain text, the words decide.
void ApplyDeclaredType(ColumnInfo& column);

}  // namespace zephrin::ado::odbc
