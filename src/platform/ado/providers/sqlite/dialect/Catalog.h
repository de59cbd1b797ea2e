#pragma once

#include "platform/ado/providers/sqlite/values/TypeMap.h"

#include <QList>
#include <QString>

namespace zephrin::ado::providers::sqlite {

struct CatalogColumn {
    QString Name;
    ColumnType Type;
    /// False for a column that a query makes, whose values are of its type for certain.
    bool IsStored = true;
};

struct CatalogTable {
    QString Name;
    QList<CatalogColumn> Columns;
};

/// What the translation of a statement has to know of the database.
class Catalog {
 public:
    virtual ~Catalog() = default;
    /// A table or a view, by name without regard to case; null where there is none.
    virtual const CatalogTable* Find(const QString& name) const = 0;
    /// Called again and again while a statement is translated; throws once it has taken too long.
    virtual void CheckTime() const {}
};

}  // namespace zephrin::ado::providers::sqlite
