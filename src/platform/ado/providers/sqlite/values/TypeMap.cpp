#include "platform/ado/providers/sqlite/values/TypeMap.h"

#include <QHash>
#include <QString>

#include <limits>

namespace zephrin::ado::providers::sqlite {

namespace {

constexpr int UnlimitedText = std::numeric_limits<int>::max() / 2;

const QHash<QString, DataType>& NamedTypes() {
    static const QHash<QString, DataType> types{
        {u"bit"_qs, DataType::Boolean},
        {u"bool"_qs, DataType::Boolean},
        {u"boolean"_qs, DataType::Boolean},
        {u"yesno"_qs, DataType::Boolean},
        {u"logical"_qs, DataType::Boolean},
        {u"tinyint"_qs, DataType::UnsignedTinyInt},
        {u"byte"_qs, DataType::UnsignedTinyInt},
        {u"smallint"_qs, DataType::SmallInt},
        {u"short"_qs, DataType::SmallInt},
        {u"int"_qs, DataType::Integer},
        {u"integer"_qs, DataType::Integer},
        {u"mediumint"_qs, DataType::Integer},
        {u"long"_qs, DataType::Integer},
        {u"counter"_qs, DataType::Integer},
        {u"autoincrement"_qs, DataType::Integer},
        {u"bigint"_qs, DataType::BigInt},
        {u"money"_qs, DataType::Currency},
        {u"smallmoney"_qs, DataType::Currency},
        {u"currency"_qs, DataType::Currency},
        {u"real"_qs, DataType::Single},
        {u"single"_qs, DataType::Single},
        {u"float"_qs, DataType::Double},
        {u"double"_qs, DataType::Double},
        {u"double precision"_qs, DataType::Double},
        {u"decimal"_qs, DataType::Numeric},
        {u"dec"_qs, DataType::Numeric},
        {u"numeric"_qs, DataType::Numeric},
        {u"datetime"_qs, DataType::DBTimeStamp},
        {u"datetime2"_qs, DataType::DBTimeStamp},
        {u"smalldatetime"_qs, DataType::DBTimeStamp},
        {u"timestamp"_qs, DataType::DBTimeStamp},
        {u"date"_qs, DataType::DBDate},
        {u"time"_qs, DataType::DBTime},
        {u"char"_qs, DataType::Char},
        {u"character"_qs, DataType::Char},
        {u"nchar"_qs, DataType::WChar},
        {u"varchar"_qs, DataType::VarChar},
        {u"nvarchar"_qs, DataType::VarWChar},
        {u"sysname"_qs, DataType::VarWChar},
        {u"text"_qs, DataType::LongVarChar},
        {u"ntext"_qs, DataType::LongVarWChar},
        {u"memo"_qs, DataType::LongVarWChar},
        {u"longtext"_qs, DataType::LongVarWChar},
        {u"clob"_qs, DataType::LongVarWChar},
        {u"binary"_qs, DataType::Binary},
        {u"varbinary"_qs, DataType::VarBinary},
        {u"image"_qs, DataType::LongVarBinary},
        {u"longbinary"_qs, DataType::LongVarBinary},
        {u"oleobject"_qs, DataType::LongVarBinary},
        {u"blob"_qs, DataType::LongVarBinary},
        {u"uniqueidentifier"_qs, DataType::Guid},
        {u"guid"_qs, DataType::Guid},
    };
    return types;
}

/// SQLite's own rules, for a name that no server has ("UNSIGNED BIG INT", "STRING").
DataType TypeOfAffinity(const QString& name) {
    const auto has = [&](QLatin1StringView part) { return name.contains(part); };
    if (has(QLatin1StringView("int"))) return DataType::BigInt;
    if (has(QLatin1StringView("char"))) return DataType::VarWChar;
    if (has(QLatin1StringView("clob")) || has(QLatin1StringView("text"))) return DataType::LongVarWChar;
    if (has(QLatin1StringView("blob"))) return DataType::LongVarBinary;
    if (has(QLatin1StringView("real")) || has(QLatin1StringView("floa")) || has(QLatin1StringView("doub")))
        return DataType::Double;
    return DataType::Empty;
}

/// A database file of the Access kind knows one type of text, one of dates.
DataType AsFileType(DataType type) {
    switch (type) {
        case DataType::DBTimeStamp:
        case DataType::DBDate:
            return DataType::Date;
        case DataType::LongVarChar:
            return DataType::LongVarWChar;
        case DataType::VarChar:
            return DataType::VarWChar;
        case DataType::Char:
            return DataType::WChar;
        default:
            return type;
    }
}

}  // namespace

ColumnType TypeOfDeclaration(QStringView declaration, Dialect dialect) {
    ColumnType result;
    const qsizetype open = declaration.indexOf(u'(');
    const QString name = (open < 0 ? declaration : declaration.first(open)).toString().simplified().toLower();
    if (name.isEmpty()) return result;
    const auto found = NamedTypes().constFind(name);
    result.Type = found == NamedTypes().cend() ? TypeOfAffinity(name) : *found;
    if (IsFileDialect(dialect)) result.Type = AsFileType(result.Type);

    QStringView sizes = open < 0 ? QStringView() : declaration.sliced(open + 1);
    if (const qsizetype close = sizes.indexOf(u')'); close >= 0) sizes = sizes.first(close);
    const qsizetype comma = sizes.indexOf(u',');
    const int first = (comma < 0 ? sizes : sizes.first(comma)).trimmed().toInt();
    if (result.Type == DataType::Numeric) {
        result.Precision = first > 0 ? first : 18;
        result.NumericScale = comma < 0 ? 0 : sizes.sliced(comma + 1).trimmed().toInt();
    } else if (IsTextType(result.Type) || IsBinaryType(result.Type)) {
        result.DefinedSize = first > 0 ? first : UnlimitedText;
    }
    return result;
}

bool IsTextType(DataType type) {
    switch (type) {
        case DataType::Char:
        case DataType::WChar:
        case DataType::VarChar:
        case DataType::VarWChar:
        case DataType::LongVarChar:
        case DataType::LongVarWChar:
            return true;
        default:
            return false;
    }
}

bool IsIntegerType(DataType type) {
    switch (type) {
        case DataType::SmallInt:
        case DataType::Integer:
        case DataType::TinyInt:
        case DataType::UnsignedTinyInt:
        case DataType::BigInt:
            return true;
        default:
            return false;
    }
}

bool IsNumberType(DataType type) {
    switch (type) {
        case DataType::Single:
        case DataType::Double:
        case DataType::Currency:
        case DataType::Decimal:
        case DataType::Numeric:
            return true;
        default:
            return IsIntegerType(type);
    }
}

bool IsDateType(DataType type) {
    return type == DataType::Date || type == DataType::DBDate || type == DataType::DBTimeStamp;
}

bool IsBinaryType(DataType type) {
    return type == DataType::Binary || type == DataType::VarBinary || type == DataType::LongVarBinary;
}

}  // namespace zephrin::ado::providers::sqlite
