#include "platform/ado/providers/sqlite/EngineFailures.h"

#include "platform/ado/providers/sqlite/values/TypeMap.h"

namespace zephrin::ado::providers::sqlite {

namespace {

/// Columns out of a right-nested join group come as "Name:1"; where a column's own name fits, it is that.
QString ColumnName(sqlite3_stmt* statement, int column) {
    const QString name = QString::fromUtf8(sqlite3_column_name(statement, column));
    const QString origin = QString::fromUtf8(sqlite3_column_origin_name(statement, column));
    const bool numbered =
        !origin.isEmpty() && name.startsWith(origin) && name.mid(origin.size()).startsWith(u':');
    return numbered ? origin : name;
}

}  // namespace

Error EngineFailure(sqlite3* database, int resultCode, const Deadline& deadline) {
    const QString words = QString::fromUtf8(sqlite3_errmsg(database));
    switch (resultCode & 0xff) {
        case SQLITE_INTERRUPT:
            return Failure(
                ErrorNumber::TimeoutExpired,
                QStringLiteral("Timeout expired: the statement ran longer than %1 seconds and was stopped.")
                    .arg(deadline.Seconds()));
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return Failure(
                ErrorNumber::TimeoutExpired,
                QStringLiteral("Timeout expired: the database is locked by another user, and stayed locked "
                               "for %1 seconds.")
                    .arg(deadline.Seconds()));
        case SQLITE_READONLY:
            return Failure(FailureNumber::ReadOnly,
                           QStringLiteral("The database is open for reading only; nothing was changed."));
        case SQLITE_CONSTRAINT:
            return Failure(FailureNumber::Constraint, words);
        case SQLITE_NOMEM:
            return Failure(ErrorNumber::ProviderFailed, QStringLiteral("Out of memory."));
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            return Failure(ErrorNumber::ProviderFailed,
                           QStringLiteral("The database file is damaged (%1).").arg(words));
        case SQLITE_ERROR:
            return Failure(FailureNumber::Statement, words);
        default:
            return Failure(ErrorNumber::ProviderFailed, words);
    }
}

QList<Field> EngineFields(sqlite3_stmt* statement, Dialect dialect) {
    QList<Field> fields;
    const int count = sqlite3_column_count(statement);
    for (int column = 0; column < count; ++column) {
        const QString declared = QString::fromUtf8(sqlite3_column_decltype(statement, column));
        const ColumnType type = TypeOfDeclaration(declared, dialect);
        fields.append({ColumnName(statement, column), type.Type, type.DefinedSize, FieldAttributesUnspecified,
                       type.Precision, type.NumericScale});
    }
    return fields;
}

}  // namespace zephrin::ado::providers::sqlite
