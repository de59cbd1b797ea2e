#include "fuzz/targets/Engine.h"

#include "fuzz/Targets.h"
#include "platform/ado/ColumnStore.h"
#include "platform/ado/providers/sqlite/SqliteProvider.h"

#include <zephrin/ado/Error.h>

#include <QTemporaryDir>

#include <optional>
#include <sqlite3.h>

namespace zephrin::fuzz {

namespace {

constexpr const char* schema =
    "CREATE TABLE Parts(Id int, A int, B int, C int, Name varchar(20), Price decimal(8,2), Ratio float, "
    "Since datetime, "
    "Ok bit, Data blob);"
    "CREATE TABLE Uses(Id int, Part int, V int, [Long Name] nvarchar(40));"
    "CREATE VIEW Dear AS SELECT Id, A, Name FROM Parts WHERE A > 1;"
    "INSERT INTO Parts VALUES (1,1,NULL,3,'screw',1.5,0.25,'2024-02-29 10:00:00',1,x'00ff'),"
    "(2,2,5,-3,'Nut',12.25,1e10,'1999-12-31',0,NULL),(3,3,5,0,'sörew ',NULL,NULL,NULL,NULL,NULL),"
    "(4,-4,7,3,'',0,-1,'1899-12-30',1,x''),(5,NULL,NULL,NULL,NULL,99.99,3,'2024-03-01',0,NULL),(6,2,1,9,'nut'"
    ",2,2,NULL,1,NULL);"
    "INSERT INTO Uses VALUES (1,1,10,'a'),(2,1,NULL,'B'),(3,2,-3,NULL),(4,6,0,'it''s'),(5,9,4,'x%_[y]');";

/// The file, which goes with the process.
QString DatabasePath() {
    static const QTemporaryDir folder;
    static const QString path = [] {
        const QString file = folder.filePath(QStringLiteral("parts.db"));
        sqlite3* database = nullptr;
        Require(sqlite3_open(file.toUtf8().constData(), &database) == SQLITE_OK, "the database is made");
        Require(sqlite3_exec(database, schema, nullptr, nullptr, nullptr) == SQLITE_OK,
                "the tables are made");
        sqlite3_close(database);
        return file;
    }();
    return path;
}

sqlite3* OpenPlain() {
    sqlite3* database = nullptr;
    Require(sqlite3_open_v2(DatabasePath().toUtf8().constData(), &database, SQLITE_OPEN_READONLY, nullptr) ==
                SQLITE_OK,
            "the database opens");
    return database;
}

}  // namespace

Engine& Engine::For(int dialect) {
    static Engine engines[] = {Engine(0), Engine(1), Engine(2)};
    return engines[dialect];
}

Engine::Engine(int dialect) : plain(OpenPlain(), sqlite3_close) {
    static constexpr const char* names[] = {"SQL Server", "MS Access", "Microsoft Excel Driver"};
    ado::OpenRequest request;
    request.ConnectionString = QStringLiteral("Provider=SQLite;Mode=Read;Dialect=%1;Data Source=%2")
                                   .arg(QLatin1StringView(names[dialect]), DatabasePath());
    session = ado::providers::SqliteProvider().Open(request);
}

QStringList Engine::Rows(const QString& statement) {
    constexpr qint64 most = 400;
    ado::ExecuteOptions options;
    options.CommandTimeout = 5;
    options.MaxRecords = most;
    const std::unique_ptr<ado::Cursor> cursor = session->Execute(statement, options);
    QStringList rows;
    const QList<ado::Field>& fields = cursor->Fields();
    if (fields.isEmpty()) return rows;
    ado::ColumnStore store(static_cast<int>(fields.size()));
    while (store.RowCount() < most && cursor->Fetch(store, most - store.RowCount()) > 0) {
    }
    for (qint64 row = 0; row < store.RowCount(); ++row) {
        QStringList cells;
        for (int field = 0; field < fields.size(); ++field)
            cells << (store.TagAt(row, field) == ado::CellTag::Null
                          ? QStringLiteral("-")
                          : store.TextAt(row, field, fields[field].Type, 200));
        rows << cells.join(u'|');
    }
    return rows;
}

std::optional<QStringList> Engine::PlainRows(const QString& statement) {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(plain.get(), statement.toUtf8().constData(), -1, &prepared, nullptr) != SQLITE_OK)
        return {};
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(prepared, sqlite3_finalize);
    QStringList rows;
    int outcome = SQLITE_ROW;
    while ((outcome = sqlite3_step(prepared)) == SQLITE_ROW) {
        QStringList cells;
        for (int column = 0; column < sqlite3_column_count(prepared); ++column) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, column));
            cells << (text ? QString::fromUtf8(text) : QStringLiteral("-"));
        }
        rows << cells.join(u'|');
    }
    if (outcome != SQLITE_DONE) return {};
    return rows;
}

}  // namespace zephrin::fuzz
