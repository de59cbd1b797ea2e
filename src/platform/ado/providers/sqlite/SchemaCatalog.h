#pragma once

#include "platform/ado/providers/sqlite/Deadline.h"
#include "platform/ado/providers/sqlite/Handles.h"
#include "platform/ado/providers/sqlite/TableSource.h"
#include "platform/ado/providers/sqlite/dialect/Catalog.h"

#include <QHash>

#include <optional>

namespace zephrin::ado::providers::sqlite {

/// The tables and views of an open file, read when a statement asks for them and kept until the schema
/// changes.
class SchemaCatalog final : public Catalog {
 public:
    /// `tables` makes what is not there yet; null where all is.
    SchemaCatalog(sqlite3* of, Dialect speaks, TableSource* tables)
        : database(of), dialect(speaks), source(tables) {}

    const CatalogTable* Find(const QString& name) const override;
    void CheckTime() const override;
    /// Whose time a translation takes.
    void CountAgainst(const Deadline& by) { deadline = &by; }
    /// Looks whether anybody has changed the schema. Before each statement.
    void Refresh();

 private:
    std::optional<CatalogTable> Read(const QString& name) const;

    sqlite3* database;
    Dialect dialect;
    TableSource* source;
    const Deadline* deadline = nullptr;
    mutable unsigned looks = 0;
    qint64 version = -1;
    /// By folded name; one that is not there is remembered too.
    mutable QHash<QString, std::optional<CatalogTable>> known;
};

}  // namespace zephrin::ado::providers::sqlite
