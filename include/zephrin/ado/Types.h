#pragma once

namespace zephrin::ado {

/// Type codes of fields, with the numbers that ADO gives them. They are stored in files and shown to hosts, so the
/// numbers are part of the interface.
enum class DataType : int {
    Empty = 0,
    SmallInt = 2,
    Integer = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    Boolean = 11,
    Variant = 12,
    Decimal = 14,
    TinyInt = 16,
    UnsignedTinyInt = 17,
    BigInt = 20,
    Guid = 72,
    Binary = 128,
    Char = 129,
    WChar = 130,
    Numeric = 131,
    DBDate = 133,
    DBTime = 134,
    DBTimeStamp = 135,
    VarChar = 200,
    LongVarChar = 201,
    VarWChar = 202,
    LongVarWChar = 203,
    VarBinary = 204,
    LongVarBinary = 205,
};

/// Attribute bits of a field. -1, "unspecified", is what a field appended without attributes keeps.
enum FieldAttribute : int {
    FieldAttributesUnspecified = -1,
    FieldUpdatable = 4,
    FieldIsNullable = 32,
    FieldMayBeNull = 64,
};

enum class CursorLocation : int { Server = 2, Client = 3 };
enum class CursorType : int { Unspecified = -1, ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class LockType : int { Unspecified = -1, ReadOnly = 1, Pessimistic = 2, Optimistic = 3, BatchOptimistic = 4 };
enum class ObjectState : int { Closed = 0, Open = 1 };

/// The schema reads that a connection answers.
enum class Schema : int { Columns = 4, Tables = 20 };

}  // namespace zephrin::ado
