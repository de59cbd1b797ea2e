#include "platform/ado/providers/odbc/TypeMap.h"

#include <algorithm>
#include <array>
#include <limits>

namespace zephrin::ado::odbc {

namespace {

// Types that one vendor numbers beyond the standard.
constexpr SQLSMALLINT ServerVariant = -150;
constexpr SQLSMALLINT ServerUserType = -151;
constexpr SQLSMALLINT ServerXml = -152;
constexpr SQLSMALLINT ServerTime = -154;

/// Beyond this many characters or bytes a cell is read in pieces.
constexpr SQLULEN LongestBound = 4000;

struct TypeRow {
    SQLSMALLINT Sql;
    DataType Ado;
    CellKind Kind;
};

constexpr TypeRow Types[] = {
    {SQL_BIT, DataType::Boolean, CellKind::Bit},
    {SQL_TINYINT, DataType::TinyInt, CellKind::Integer},
    {SQL_SMALLINT, DataType::SmallInt, CellKind::Integer},
    {SQL_INTEGER, DataType::Integer, CellKind::Integer},
    {SQL_BIGINT, DataType::BigInt, CellKind::Integer},
    {SQL_REAL, DataType::Single, CellKind::Double},
    {SQL_FLOAT, DataType::Double, CellKind::Double},
    {SQL_DOUBLE, DataType::Double, CellKind::Double},
    {SQL_NUMERIC, DataType::Numeric, CellKind::Decimal},
    {SQL_DECIMAL, DataType::Numeric, CellKind::Decimal},
    {SQL_CHAR, DataType::Char, CellKind::Text},
    {SQL_VARCHAR, DataType::VarChar, CellKind::Text},
    {SQL_LONGVARCHAR, DataType::LongVarChar, CellKind::Text},
    {SQL_WCHAR, DataType::WChar, CellKind::Text},
    {SQL_WVARCHAR, DataType::VarWChar, CellKind::Text},
    {SQL_WLONGVARCHAR, DataType::LongVarWChar, CellKind::Text},
    {ServerXml, DataType::LongVarWChar, CellKind::Text},
    {ServerVariant, DataType::VarWChar, CellKind::Text},
    {SQL_BINARY, DataType::Binary, CellKind::Bytes},
    {SQL_VARBINARY, DataType::VarBinary, CellKind::Bytes},
    {SQL_LONGVARBINARY, DataType::LongVarBinary, CellKind::Bytes},
    {ServerUserType, DataType::LongVarBinary, CellKind::Bytes},
    {SQL_TYPE_DATE, DataType::DBDate, CellKind::Date},
    {SQL_TYPE_TIME, DataType::DBTime, CellKind::Time},
    {ServerTime, DataType::DBTime, CellKind::Time},
    {SQL_TYPE_TIMESTAMP, DataType::DBTimeStamp, CellKind::DateTime},
    {SQL_GUID, DataType::Guid, CellKind::Guid},
};

const TypeRow* RowOf(SQLSMALLINT sqlType) {
    const auto row = std::find_if(std::begin(Types), std::end(Types),
                                  [sqlType](const TypeRow& type) { return type.Sql == sqlType; });
    return row == std::end(Types) ? nullptr : row;
}

/// An unsigned 64-bit integer fits no signed one, so it goes as an exact decimal.
bool IsUnsignedBigInt(const ColumnInfo& column) {
    return column.SqlType == SQL_BIGINT && column.Unsigned;
}

DataType AdoTypeOf(const ColumnInfo& column) {
    if (column.Money) return DataType::Currency;
    if (column.SqlType == SQL_TINYINT && column.Unsigned) return DataType::UnsignedTinyInt;
    if (IsUnsignedBigInt(column)) return DataType::Numeric;
    const TypeRow* row = RowOf(column.SqlType);
    return row ? row->Ado : DataType::VarWChar;
}

struct DeclaredRow {
    const char* Word;
    SQLSMALLINT Sql;
    bool Money = false;
};

constexpr DeclaredRow Declared[] = {
    {"money", SQL_DECIMAL, true},
    {"smallmoney", SQL_DECIMAL, true},
    {"currency", SQL_DECIMAL, true},
    {"decimal", SQL_DECIMAL},
    {"numeric", SQL_NUMERIC},
    {"dec", SQL_DECIMAL},
    {"nchar", SQL_WCHAR},
    {"nvarchar", SQL_WVARCHAR},
    {"ntext", SQL_WLONGVARCHAR},
    {"memo", SQL_WLONGVARCHAR},
    {"text", SQL_LONGVARCHAR},
    {"clob", SQL_LONGVARCHAR},
    {"binary", SQL_BINARY},
    {"varbinary", SQL_VARBINARY},
    {"image", SQL_LONGVARBINARY},
    {"blob", SQL_LONGVARBINARY},
    {"longbinary", SQL_LONGVARBINARY},
    {"uniqueidentifier", SQL_GUID},
    {"guid", SQL_GUID},
    {"bit", SQL_BIT},
    {"yesno", SQL_BIT},
    {"boolean", SQL_BIT},
    {"tinyint", SQL_TINYINT},
    {"byte", SQL_TINYINT},
};

}  // namespace

Field ToField(const ColumnInfo& column) {
    Field field;
    field.Name = column.Name;
    field.Type = AdoTypeOf(column);
    field.Attributes = column.Nullable ? FieldIsNullable | FieldMayBeNull : 0;
    const int size = int(std::min<SQLULEN>(column.Size, std::numeric_limits<int>::max()));
    switch (KindOf(column, false)) {
        case CellKind::Text:
        case CellKind::Bytes:
            field.DefinedSize = size;
            break;
        case CellKind::Decimal:
            field.Precision = size;
            field.NumericScale = column.Digits;
            break;
        default:
            break;
    }
    return field;
}

CellKind KindOf(const ColumnInfo& column, bool looseTypes) {
    if (column.Money) return CellKind::Currency;
    if (IsUnsignedBigInt(column)) return CellKind::Decimal;
    const TypeRow* row = RowOf(column.SqlType);
    const CellKind kind = row ? row->Kind : CellKind::Text;
    if (!looseTypes) return kind;
    if (kind == CellKind::Bit) return CellKind::BitText;
    if (kind == CellKind::Date || kind == CellKind::DateTime) return CellKind::DateText;
    return kind;
}

bool IsLong(const ColumnInfo& column) {
    switch (column.SqlType) {
        case SQL_LONGVARCHAR:
        case SQL_WLONGVARCHAR:
        case SQL_LONGVARBINARY:
        case ServerXml:
        case ServerUserType:
        case ServerVariant:
            return true;
        default:
            break;
    }
    const CellKind kind = KindOf(column, false);
    const bool sized = kind == CellKind::Text || kind == CellKind::Bytes;
    return sized && (column.Size == 0 || column.Size > LongestBound);
}

void ApplyDeclaredType(ColumnInfo& column) {
    const QString word = column.TypeName.section(u'(', 0, 0).trimmed();
    for (const DeclaredRow& row : Declared) {
        if (word.compare(QLatin1StringView(row.Word), Qt::CaseInsensitive) != 0) continue;
        column.SqlType = row.Sql;
        column.Money = row.Money;
        column.Unsigned = row.Sql == SQL_TINYINT;
        return;
    }
}

}  // namespace zephrin::ado::odbc
