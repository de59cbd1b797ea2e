#include "platform/ado/providers/sqlite/SqliteSession.h"

#include "platform/ado/providers/sqlite/EngineFailures.h"
#include "platform/ado/providers/sqlite/SqliteCursor.h"
#include "platform/ado/providers/sqlite/dialect/Limits.h"
#include "platform/ado/providers/sqlite/functions/Functions.h"
#include "platform/ado/providers/sqlite/values/Naming.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QScopeGuard>

namespace zephrin::ado::providers::sqlite {

namespace {

// One question for all tables, whatever their number. Tables that the engine keeps for itself are system
// tables.
constexpr const char* TablesQuery =
    "SELECT NULL, NULL, name, CASE WHEN name LIKE 'sqlite!_%' ESCAPE '!' THEN 'SYSTEM TABLE'"
    " WHEN type = 'view' THEN 'VIEW' ELSE 'TABLE' END"
    " FROM sqlite_master WHERE type IN ('table', 'view') ORDER BY name COLLATE NOCASE";

constexpr const char* ColumnsQuery =
    "SELECT ?1, name, cid + 1, zx_type_code(type), zx_type_size(type), CASE WHEN \"notnull\" THEN 0 ELSE -1 "
    "END"
    " FROM pragma_table_xinfo(?1, 'main') WHERE hidden <> 1 ORDER BY cid";

/// Whoever made the file may mean ill. Its views and triggers call nothing but what is harmless, nobody
/// writes the engine's own tables, and what grows with a statement has an end that a small stack and memory
/// can take.
void Distrust(sqlite3* database) {
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    static constexpr std::pair<int, int> limits[] = {
        {SQLITE_LIMIT_LENGTH, 500'000'000},
        {SQLITE_LIMIT_SQL_LENGTH, Limits::WrittenBytes},
        {SQLITE_LIMIT_COLUMN, Limits::Columns},
        {SQLITE_LIMIT_EXPR_DEPTH, 3 * Limits::TreeHeight},
        {SQLITE_LIMIT_COMPOUND_SELECT, Limits::QueriesInUnion},
        {SQLITE_LIMIT_VDBE_OP, 10'000'000},
        {SQLITE_LIMIT_TRIGGER_DEPTH, 50},
        {SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 10'000},
        {SQLITE_LIMIT_WORKER_THREADS, 0},
    };
    for (const auto& [which, most] : limits) sqlite3_limit(database, which, most);
    // A page that is not what it should be is found when it is read.
    sqlite3_exec(database, "PRAGMA cell_size_check = ON", nullptr, nullptr, nullptr);
}

DatabaseHandle OpenFile(const OpenOptions& options) {
    const QFileInfo file(options.Path);
    if (!file.exists()) throw ConnectFailure(QStringLiteral("Could not find file '%1'.").arg(options.Path));
    if (file.isDir())
        throw ConnectFailure(QStringLiteral("'%1' is a folder, not a database.").arg(options.Path));
    // An absolute path: nothing in it is read as a URI or as a name of the engine's own.
    const QByteArray path = file.absoluteFilePath().toUtf8();
    const int mode = options.ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.constData(), &opened, mode | SQLITE_OPEN_NOMUTEX, nullptr);
    DatabaseHandle database(opened);
    if (code != SQLITE_OK)
        throw ConnectFailure(QStringLiteral("Could not open file '%1'.").arg(options.Path));
    // A text in double quotes is a name or an error, never silently a text.
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    // References that a table declares hold, as they do on a server.
    sqlite3_db_config(opened, SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
    sqlite3_extended_result_codes(opened, 1);
    Distrust(opened);
    return database;
}

/// The columns of a saved query, where two of them share a name: both are then called by their tables, too.
QString ColumnHeads(const QList<OutputColumn>& columns) {
    QMap<QString, int> counts;
    for (const OutputColumn& column : columns) ++counts[column.Name.toCaseFolded()];
    if (counts.size() == columns.size()) return {};
    QStringList heads;
    for (const OutputColumn& column : columns) {
        const bool isShared = counts[column.Name.toCaseFolded()] > 1 && !column.Source.isEmpty();
        heads << u'[' + (isShared ? column.Source + u'.' : QString()) + column.Name + u']';
    }
    return QStringLiteral(" (%1)").arg(heads.join(QStringLiteral(", ")));
}

/// What a statement reads, and that it does nothing else.
struct TablesRead {
    QList<QString> Names;

    static int Note(void* self, int action, const char* table, const char*, const char*, const char*) {
        if (action == SQLITE_READ) {
            const QString name = QString::fromUtf8(table);
            QList<QString>& names = static_cast<TablesRead*>(self)->Names;
            if (!names.contains(name)) names.append(name);
            return SQLITE_OK;
        }
        const bool reads = action == SQLITE_SELECT || action == SQLITE_FUNCTION || action == SQLITE_RECURSIVE;
        return reads ? SQLITE_OK : SQLITE_DENY;
    }
};

}  // namespace

SqliteSession::SqliteSession(const OpenOptions& options, int timeout, std::shared_ptr<Watch> watch,
                             TableSource* tables)
    : dialect(options.Speaks),
      source(tables),
      waiting(std::move(watch)),
      database(OpenFile(options)),
      catalog(database.get(), dialect, tables) {
    CheckDatabase(options.Path, timeout);
    RegisterFunctions(database.get(), dialect);
}

/// The engine opens any file and looks into it only when asked; asking now makes a wrong file an error of the
/// connect.
void SqliteSession::CheckDatabase(const QString& path, int timeout) {
    Deadline deadline(timeout, waiting);
    const Deadline::Scope scope(database.get(), deadline);
    const int code =
        sqlite3_exec(database.get(), "SELECT 1 FROM main.sqlite_master LIMIT 1", nullptr, nullptr, nullptr);
    if (code == SQLITE_OK) return;
    if ((code & 0xff) == SQLITE_NOTADB)
        throw ConnectFailure(QStringLiteral("The file '%1' is not a database.").arg(path));
    throw EngineFailure(database.get(), code, deadline, {dialect});
}

std::unique_ptr<Cursor> SqliteSession::Execute(const QString& statement, const ExecuteOptions& options) {
    // The first row is fetched by then, and the cursor goes on seeing what it saw.
    const auto endLookUps = qScopeGuard([this] { catalog.EndLookUps(); });
    Deadline deadline(options.CommandTimeout, waiting);
    Translation translation;
    {
        const Deadline::Scope scope(database.get(), deadline);
        catalog.Refresh();
        catalog.CountAgainst(deadline);
        translation = Translate(statement, dialect, catalog);
    }
    const bool isView =
        translation.Kind == StatementKind::CreateView || translation.Kind == StatementKind::AlterView;
    // All steps but the last are made at once; should a later one fail, none has happened.
    const bool several = translation.Steps.size() > 1 || isView;
    if (several) Run("SAVEPOINT zx_steps");
    try {
        for (size_t step = 0; step + 1 < translation.Steps.size(); ++step)
            RunStep(translation, step, deadline);
        std::unique_ptr<Cursor> cursor = RunStep(translation, translation.Steps.size() - 1, deadline);
        if (isView) {
            catalog.Refresh();
            TryView(translation, deadline);
        }
        if (several) Run("RELEASE zx_steps");
        return cursor;
    } catch (const Error&) {
        if (several) {
            Run("ROLLBACK TO zx_steps");
            Run("RELEASE zx_steps");
        }
        throw;
    }
}

void SqliteSession::DefineView(const QString& name, const QString& statement) {
    const QString heads = ColumnHeads(Translate(statement, dialect, catalog).Output);
    const Translation view =
        Translate(QStringLiteral("CREATE VIEW [%1]%2 AS %3").arg(name, heads, statement), dialect, catalog);
    for (const MappedText& step : view.Steps) {
        const int code = sqlite3_exec(database.get(), step.Text().constData(), nullptr, nullptr, nullptr);
        if (code != SQLITE_OK) throw EngineFailure(database.get(), code, Deadline(0, waiting), {dialect});
    }
}

/// Of a session whose tables come from elsewhere, the engine tells which ones a statement reads, through
/// views, too.
StatementHandle SqliteSession::Prepare(const QByteArray& sql, const char** tail, int& code,
                                       Deadline& deadline) {
    sqlite3_stmt* raw = nullptr;
    if (!source) {
        code = sqlite3_prepare_v2(database.get(), sql.constData(), int(sql.size()), &raw, tail);
        return StatementHandle(raw);
    }
    TablesRead read;
    sqlite3_set_authorizer(database.get(), TablesRead::Note, &read);
    code = sqlite3_prepare_v2(database.get(), sql.constData(), int(sql.size()), &raw, tail);
    sqlite3_set_authorizer(database.get(), nullptr, nullptr);
    StatementHandle prepared(raw);
    if (code == SQLITE_OK && raw) source->Fill(read.Names, deadline);
    return prepared;
}

/// The engine takes any view, and refuses one that leads back to itself only when it is used.
void SqliteSession::TryView(const Translation& translation, Deadline& deadline) {
    Translation use{translation.Kind, {}, {}, translation.Name};
    use.Steps.emplace_back() << "SELECT * FROM main." << QuotedName(translation.Name) << " LIMIT 0";
    RunStep(use, 0, deadline);
}

void SqliteSession::Run(const char* sql) {
    sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr);
}

std::unique_ptr<Cursor> SqliteSession::RunStep(const Translation& translation, size_t step,
                                               Deadline& deadline) {
    sqlite3* const connection = database.get();
    const MappedText& text = translation.Steps[step];
    const auto failure = [connection, text, kind = translation.Kind, name = translation.Name,
                          speaks = dialect](int code, const Deadline& by) {
        // An error of the engine knows its place in the text that the engine got.
        const int offset = sqlite3_error_offset(connection);
        return EngineFailure(connection, code, by,
                             {speaks, kind, name, offset < 0 ? -1 : text.Origin(offset), text.Deepest()});
    };
    StatementHandle prepared;
    QList<Field> fields;
    {
        const Deadline::Scope scope(connection, deadline);
        const QByteArray& sql = text.Text();
        const char* tail = nullptr;
        int code = SQLITE_OK;
        prepared = Prepare(sql, &tail, code, deadline);
        if (code != SQLITE_OK) throw failure(code, deadline);
        if (!prepared) throw Failure(FailureNumber::Statement, QStringLiteral("The statement is empty."));
        if (!QByteArray(tail).trimmed().isEmpty())
            throw Failure(FailureNumber::Statement,
                          QStringLiteral("Only one statement can be run at a time."),
                          text.Origin(tail - sql.constData()));
        fields = FieldsOf(prepared.get(), translation);
    }
    auto cursor =
        std::make_unique<SqliteCursor>(connection, std::move(prepared), std::move(fields), deadline, failure);
    QList<bool> made;
    for (const OutputColumn& column : translation.Output)
        made.append(!column.IsStored && column.Type.Type != DataType::Empty);
    if (made.size() == cursor->Fields().size()) cursor->ExpectTypes(std::move(made));
    return cursor;
}

/// Names and types come from the statement as it was read; the engine only sees what became of it.
QList<Field> SqliteSession::FieldsOf(sqlite3_stmt* statement, const Translation& translation) const {
    QList<Field> fields = EngineFields(statement, dialect);
    if (fields.size() != translation.Output.size()) return fields;
    for (qsizetype column = 0; column < fields.size(); ++column) {
        const OutputColumn& output = translation.Output[column];
        fields[column] = {output.Name,
                          output.Type.Type,
                          output.Type.DefinedSize,
                          FieldIsNullable | FieldMayBeNull,
                          output.Type.Precision,
                          output.Type.NumericScale};
    }
    return fields;
}

std::unique_ptr<Cursor> SqliteSession::Tables() {
    return RunSchemaQuery(TablesQuery, QString(),
                          {{u"TABLE_CATALOG"_qs, DataType::VarWChar, 128},
                           {u"TABLE_SCHEMA"_qs, DataType::VarWChar, 128},
                           {u"TABLE_NAME"_qs, DataType::VarWChar, 255},
                           {u"Table_Type"_qs, DataType::VarWChar, 128}});
}

std::unique_ptr<Cursor> SqliteSession::Columns(const QString& table) {
    return RunSchemaQuery(ColumnsQuery, table,
                          {{u"TABLE_NAME"_qs, DataType::VarWChar, 255},
                           {u"COLUMN_NAME"_qs, DataType::VarWChar, 255},
                           {u"ORDINAL_POSITION"_qs, DataType::Integer},
                           {u"DATA_TYPE"_qs, DataType::Integer},
                           {u"CHARACTER_MAXIMUM_LENGTH"_qs, DataType::Integer},
                           {u"IS_NULLABLE"_qs, DataType::Boolean}});
}

std::unique_ptr<Cursor> SqliteSession::RunSchemaQuery(const char* sql, const QString& argument,
                                                      QList<Field> fields) {
    sqlite3* const connection = database.get();
    const auto failure = [connection, speaks = dialect](int code, const Deadline& by) {
        return EngineFailure(connection, code, by, {speaks});
    };
    // Whoever changes the schema holds the lock for a moment only.
    Deadline deadline(30, waiting);
    StatementHandle prepared;
    {
        const Deadline::Scope scope(connection, deadline);
        sqlite3_stmt* raw = nullptr;
        const int code = sqlite3_prepare_v2(connection, sql, -1, &raw, nullptr);
        prepared.reset(raw);
        if (code != SQLITE_OK) throw failure(code, deadline);
    }
    if (sqlite3_bind_parameter_count(prepared.get()) > 0) {
        const QByteArray name = argument.toUtf8();
        sqlite3_bind_text(prepared.get(), 1, name.constData(), int(name.size()), SQLITE_TRANSIENT);
    }
    return std::make_unique<SqliteCursor>(connection, std::move(prepared), std::move(fields), deadline,
                                          failure);
}

}  // namespace zephrin::ado::providers::sqlite
