#pragma once

#include "platform/ado/providers/sqlite/values/TypeMap.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace zephrin::ado::providers::sqlite {

struct CatalogColumn {
    QString Name;
    ColumnType Type;
    /// False for a column that a query makes, whose values are of its type for certain.
    bool IsStored = true;
    /// Where it lies, for a column of a table or view; empty for what a query reckons.
    QString Table = {};
};

struct CatalogTable {
    QString Name;
    QList<CatalogColumn> Columns;
    /// By which name the engine tells the number of a row; empty where a row has none.
    QString RowNumber = {};
};

/// What the translation of a statement has to know of the database.
class Catalog {
 public:
    virtual ~Catalog() = default;
    /// A table or a view, by name without regard to case; null where there is none.
    virtual const CatalogTable* Find(const QString& name) const = 0;
    /// The values of a column that are equal to `text` in the order of texts, whatever their bytes, where an
    /// index finds them quickly; nothing where none does.
    virtual std::optional<QStringList> EqualTexts(const QString& /*table*/, const QString& /*column*/,
                                                  const QString& /*text*/) const {
        return std::nullopt;
    }
    /// Called again and again while a statement is translated; throws once it has taken too long.
    virtual void CheckTime() const {}
};

}  // namespace zephrin::ado::providers::sqlite
