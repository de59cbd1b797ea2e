#include "platform/ado/providers/sqlite/SchemaCatalog.h"

#include "platform/ado/providers/sqlite/EngineFailures.h"
#include "platform/ado/providers/sqlite/values/Naming.h"

namespace zephrin::ado::providers::sqlite {

namespace {

StatementHandle Prepare(sqlite3* database, const QByteArray& sql) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, sql.constData(), int(sql.size()), &statement, nullptr);
    return StatementHandle(statement);
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
    version = now;
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
                              TypeOfDeclaration(declared, dialect)});
    }
    return table;
}

}  // namespace zephrin::ado::providers::sqlite
