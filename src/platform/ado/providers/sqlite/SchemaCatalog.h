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
    std::optional<QStringList> EqualTexts(const QString& table, const QString& column,
                                          const QString& text) const override;
    void CheckTime() const override;
    /// Looking up begins a transaction, so that the statement then sees what was found; whoever has begun to
    /// run it ends the transaction.
    void EndLookUps();
    /// Whose time a translation takes.
    void CountAgainst(const Deadline& by) { deadline = &by; }
    /// Looks whether anybody has changed the schema. Before each statement.
    void Refresh();

 private:
    std::optional<CatalogTable> Read(const QString& name) const;
    QByteArray TextIndex(const QString& table, const QString& column) const;

    sqlite3* database;
    Dialect dialect;
    TableSource* source;
    const Deadline* deadline = nullptr;
    mutable unsigned looks = 0;
    mutable bool holdsSnapshot = false;
    /// The statement that reads the next value of a column from its index; empty where no index serves.
    mutable QHash<QString, QByteArray> textIndexes;
    qint64 version = -1;
    /// By folded name; one that is not there is remembered too.
    mutable QHash<QString, std::optional<CatalogTable>> known;
};

}  // namespace zephrin::ado::providers::sqlite
