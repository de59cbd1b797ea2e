#include "platform/ado/providers/sqlite/EngineFailures.h"

#include "platform/ado/providers/sqlite/dialect/Wording.h"
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

/// What stands behind `words` in a message of the engine, or a null text.
QString Behind(const QString& message, QLatin1StringView words) {
    return message.startsWith(words) ? message.sliced(words.size()) : QString();
}

/// The engine's own errors of a statement, where the dialect has words for them.
Error StatementFailure(const QString& message, const EngineTask& task) {
    if (task.Kind == StatementKind::CreateView && message.endsWith(QLatin1StringView("already exists")))
        return NameIsTaken(task.Speaks, task.Name);
    if (task.Kind == StatementKind::AlterView && message.startsWith(QLatin1StringView("use DROP TABLE")))
        return NoView(task.Speaks, task.Name);
    constexpr QLatin1StringView circular(" is circularly defined");
    if (const QString name = Behind(message, QLatin1StringView("view ")); name.endsWith(circular))
        return SelfReference(task.Speaks, name.chopped(circular.size()));
    if (const QString name = Behind(message, QLatin1StringView("no such table: ")); !name.isEmpty())
        return NoSuchTable(task.Speaks, name.startsWith(QLatin1StringView("main.")) ? name.sliced(5) : name,
                           task.Position);
    if (const QString name = Behind(message, QLatin1StringView("no such column: ")); !name.isEmpty())
        return NoSuchColumn(task.Speaks, QString(), name, task.Position);
    if (const QString name = Behind(message, QLatin1StringView("no such function: ")); !name.isEmpty())
        return NoSuchFunction(task.Speaks, name, task.Position);
    if (const QString rest = Behind(message, QLatin1StringView("wrong number of arguments to function "));
        !rest.isEmpty())
        return WrongArguments(task.Speaks, rest.left(rest.indexOf(u'(')), task.Position);
    if (message == QLatin1StringView("parser stack overflow") ||
        message.startsWith(QLatin1StringView("Expression tree is too large")))
        return TooDeep(task.Deepest);
    const qsizetype quoted = message.indexOf(QLatin1StringView("\": syntax error"));
    if (message.startsWith(QLatin1StringView("near \"")) && quoted > 0)
        return SyntaxNear(task.Speaks, message.sliced(6, quoted - 6), task.Position);
    return Failure(FailureNumber::Statement, message, task.Position);
}

}  // namespace

Error TimeOver(const Deadline& deadline) {
    return Failure(
        ErrorNumber::TimeoutExpired,
        QStringLiteral("Timeout expired: the statement ran longer than %1 seconds and was stopped.")
            .arg(deadline.Seconds()));
}

Error EngineFailure(sqlite3* database, int resultCode, const Deadline& deadline, const EngineTask& task) {
    const QString words = QString::fromUtf8(sqlite3_errmsg(database));
    switch (resultCode & 0xff) {
        case SQLITE_INTERRUPT:
            if (deadline.WasStopped()) return Cancelled();
            return TimeOver(deadline);
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            if (deadline.WasStopped()) return Cancelled();
            return Failure(
                ErrorNumber::TimeoutExpired,
                QStringLiteral("Timeout expired: the database is locked by another user%1.")
                    .arg(deadline.Seconds() > 0
                             ? QStringLiteral(", and stayed locked for %1 seconds").arg(deadline.Seconds())
                             : QString()));
        case SQLITE_READONLY:
        case SQLITE_AUTH:
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
            return StatementFailure(words, task);
        case SQLITE_MISMATCH:
            return UnpackedFailure(words);
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
