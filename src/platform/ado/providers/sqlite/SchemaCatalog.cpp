#include "platform/ado/providers/sqlite/SchemaCatalog.h"

#include "platform/ado/EqualTexts.h"
#include "platform/ado/TextOrder.h"
#include "platform/ado/providers/sqlite/EngineFailures.h"
#include "platform/ado/providers/sqlite/values/Naming.h"

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

namespace {

constexpr int MostSteps = 500;

StatementHandle Prepare(sqlite3* database, const QByteArray& sql) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, sql.constData(), int(sql.size()), &statement, nullptr);
    return StatementHandle(statement);
}

/// A view and a table of the kind without numbers have none; a column may take one of the three names for
/// itself.
QString RowNumberOf(sqlite3* database, const CatalogTable& table) {
    if (sqlite3_table_column_metadata(database, "main", table.Name.toUtf8().constData(), "_rowid_", nullptr,
                                      nullptr, nullptr, nullptr, nullptr) != SQLITE_OK)
        return {};
    for (const char* const name : {"_rowid_", "rowid", "oid"}) {
        const auto isTaken = [&](const CatalogColumn& column) {
            return column.Name.compare(QLatin1StringView(name), Qt::CaseInsensitive) == 0;
        };
        if (std::none_of(table.Columns.begin(), table.Columns.end(), isTaken))
            return QString::fromLatin1(name);
    }
    return {};
}

}  // namespace

const CatalogTable* SchemaCatalog::Find(const QString& name) const {
    const QString key = name.toCaseFolded();
    auto found = known.find(key);
    if (found == known.end()) {
        // Making a view asks for the tables that it reads, here.
        if (source) source->Declare(name);
        found = known.insert(key, Read(name));
    }
    return found->has_value() ? &**found : nullptr;
}

void SchemaCatalog::CheckTime() const {
    // The clock is dearer than most of what is done between two looks.
    if (++looks % 64 == 0 && deadline && deadline->HasPassed()) throw TimeOver(*deadline);
}

void SchemaCatalog::Refresh() {
    // The engine notices another program's changes only when it runs something, not when it prepares it.
    if (const StatementHandle any = Prepare(database, "SELECT 1 FROM main.sqlite_master LIMIT 1"); any)
        sqlite3_step(any.get());
    const StatementHandle pragma = Prepare(database, "PRAGMA schema_version");
    const qint64 now =
        pragma && sqlite3_step(pragma.get()) == SQLITE_ROW ? sqlite3_column_int64(pragma.get(), 0) : -1;
    if (now == version && now >= 0) return;
    known.clear();
    textIndexes.clear();
    version = now;
}

/// An index serves that holds every row, begins with the column and has the order of bytes; the column must
/// be one that keeps texts as texts.
QByteArray SchemaCatalog::TextIndex(const QString& table, const QString& column) const {
    const char* declared = nullptr;
    const QByteArray tableName = table.toUtf8();
    const QByteArray columnName = column.toUtf8();
    sqlite3_table_column_metadata(database, "main", tableName.constData(), columnName.constData(), &declared,
                                  nullptr, nullptr, nullptr, nullptr);
    const QByteArray words = QByteArray(declared).toUpper();
    const bool keepsTexts = !words.contains("INT") &&
                            (words.contains("CHAR") || words.contains("CLOB") || words.contains("TEXT"));
    if (!keepsTexts) return {};
    const StatementHandle indexes = Prepare(
        database,
        "SELECT list.name FROM pragma_index_list(?1, 'main') list, pragma_index_xinfo(list.name, 'main') "
        "part WHERE NOT "
        "list.partial AND part.seqno = 0 AND part.coll = 'BINARY' AND part.name = ?2 COLLATE NOCASE LIMIT 1");
    if (!indexes) return {};
    sqlite3_bind_text(indexes.get(), 1, tableName.constData(), int(tableName.size()), SQLITE_STATIC);
    sqlite3_bind_text(indexes.get(), 2, columnName.constData(), int(columnName.size()), SQLITE_STATIC);
    if (sqlite3_step(indexes.get()) != SQLITE_ROW) return {};
    const QString index = QString::fromUtf8(static_cast<const char*>(sqlite3_column_blob(indexes.get(), 0)),
                                            sqlite3_column_bytes(indexes.get(), 0));
    const QByteArray name = QuotedName(column);
    return "SELECT " + name + " FROM main." + QuotedName(table) + " INDEXED BY " + QuotedName(index) +
           " WHERE " + name + " >= ?1 COLLATE BINARY ORDER BY " + name + " COLLATE BINARY LIMIT 1";
}

std::optional<QStringList> SchemaCatalog::EqualTexts(const QString& table, const QString& column,
                                                     const QString& text) const {
    const QString key = table.toCaseFolded() + QChar(1) + column.toCaseFolded();
    auto next = textIndexes.find(key);
    if (next == textIndexes.end()) next = textIndexes.insert(key, TextIndex(table, column));
    const std::string wanted = text.toStdString();
    const ado::EqualTexts search(wanted);
    if (next->isEmpty() || !search.CanSearch()) return std::nullopt;
    if (sqlite3_get_autocommit(database))
        holdsSnapshot = sqlite3_exec(database, "BEGIN", nullptr, nullptr, nullptr) == SQLITE_OK;
    const StatementHandle seek = Prepare(database, *next);
    if (!seek) return std::nullopt;
    QStringList found;
    std::optional<std::string> from = std::string();
    // A column of odd texts might be walked through value by value; then the engine does it faster.
    for (int steps = 0; from; ++steps) {
        if (steps > MostSteps) return std::nullopt;
        sqlite3_reset(seek.get());
        const std::string& start = *from;
        sqlite3_bind_text(seek.get(), 1, start.data(), int(start.size()), SQLITE_STATIC);
        const int code = sqlite3_step(seek.get());
        if (code == SQLITE_DONE) break;
        if (code != SQLITE_ROW) return std::nullopt;
        // Behind all texts come the values that are none.
        if (sqlite3_column_type(seek.get(), 0) != SQLITE_TEXT) break;
        const std::string_view value(static_cast<const char*>(sqlite3_column_blob(seek.get(), 0)),
                                     size_t(sqlite3_column_bytes(seek.get(), 0)));
        // The engine reads a text in a statement up to its first zero only.
        if (value.find('\0') != std::string_view::npos) return std::nullopt;
        if (CompareTexts(value, wanted) == 0)
            found << QString::fromUtf8(value.data(), qsizetype(value.size()));
        from = search.Behind(value);
    }
    return found;
}

void SchemaCatalog::EndLookUps() {
    if (std::exchange(holdsSnapshot, false)) sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
}

/// A prepared SELECT gives the columns of a view as well as those of a table, and through a view the types
/// that its tables declare.
std::optional<CatalogTable> SchemaCatalog::Read(const QString& name) const {
    const StatementHandle all = Prepare(database, "SELECT * FROM main." + QuotedName(name));
    if (!all) return std::nullopt;
    CatalogTable table{name, {}};
    const int count = sqlite3_column_count(all.get());
    for (int column = 0; column < count; ++column) {
        const QString declared = QString::fromUtf8(sqlite3_column_decltype(all.get(), column));
        table.Columns.append({QString::fromUtf8(sqlite3_column_name(all.get(), column)),
                              TypeOfDeclaration(declared, dialect), true, name});
    }
    table.RowNumber = RowNumberOf(database, table);
    return table;
}

}  // namespace zephrin::ado::providers::sqlite
