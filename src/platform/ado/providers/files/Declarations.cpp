#include "platform/ado/providers/files/Declarations.h"

#include "platform/ado/providers/sqlite/values/Naming.h"

namespace zephrin::ado::files {

using providers::sqlite::QuotedName;

namespace {

/// Names whose affinity leaves texts alone: the engine makes numbers of what looks like them in a column
/// called "memo".
QByteArray TypeOf(const ColumnInfo& column) {
    const auto sized = [&](const char* name, const char* unlimited) {
        return column.Size > 0 ? QByteArray(name) + '(' + QByteArray::number(column.Size) + ')'
                               : QByteArray(unlimited);
    };
    switch (column.Kind) {
        case ColumnKind::Boolean:
            return "bit";
        case ColumnKind::Byte:
            return "tinyint";
        case ColumnKind::Short:
            return "smallint";
        case ColumnKind::Long:
            return column.CountsItself ? "counter" : "int";
        case ColumnKind::BigInt:
            return "bigint";
        case ColumnKind::Single:
            return "real";
        case ColumnKind::Double:
            return "float";
        case ColumnKind::Currency:
            return "money";
        case ColumnKind::Decimal:
            return "decimal(" + QByteArray::number(column.Precision) + ',' +
                   QByteArray::number(column.Scale) + ')';
        case ColumnKind::Date:
            return "datetime";
        case ColumnKind::Text:
            return sized("nvarchar", "longtext");
        case ColumnKind::FixedText:
            return sized("nchar", "longtext");
        case ColumnKind::Memo:
            return "longtext";
        case ColumnKind::Guid:
            return "guid";
        case ColumnKind::Binary:
            return sized("varbinary", "longbinary");
        case ColumnKind::LongBinary:
            return "longbinary";
    }
    return "longtext";
}

}  // namespace

QByteArray TableDeclaration(const QString& name, const QList<ColumnInfo>& columns) {
    QByteArrayList parts;
    for (const ColumnInfo& column : columns) parts << QuotedName(column.Name) + ' ' + TypeOf(column);
    return "CREATE TABLE main." + QuotedName(name) + " (" + parts.join(", ") + ')';
}

QByteArray RowInsertion(const QString& name, qsizetype columns) {
    return "INSERT INTO main." + QuotedName(name) + " VALUES (" + QByteArrayList(columns, "?").join(',') +
           ')';
}

}  // namespace zephrin::ado::files
