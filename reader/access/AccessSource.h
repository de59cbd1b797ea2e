#pragma once

#include "reader/Source.h"
#include "reader/access/QueryText.h"
#include "reader/access/ValueWriter.h"

#include <QHash>

#include <functional>

namespace zephrin::reader::access {

/// A database file.
class AccessSource final : public Source {
 public:
    AccessSource(const QString& path, const QString& password);

    std::vector<CatalogEntry> Catalog() override;
    QList<ColumnInfo> Columns(const QString& table) override;
    void Rows(const QString& table, RowSink& into) override;

 private:
    struct Object {
        TableInfo Table;
        qint32 Id = 0;
        bool IsQuery = false;
    };

    void ReadObjects();
    const Object& Find(const QString& table) const;
    TableDefinition DefinitionOf(const Object& object);
    void SetCalculatedTypes(const Object& object, TableDefinition& definition);
    QByteArray PropertiesOf(const Object& object);
    QList<ColumnInfo> ColumnsOf(const Object& object);
    QHash<qint32, QList<QueryRow>> ReadQueries();
    ComplexTexts ReadComplex(const Object& object, const StoredColumn& column);
    ComplexTexts ReadFlatTable(quint32 page, quint32 typePage);
    void AddQueries(std::vector<CatalogEntry>& catalog);

    PageFile file;
    ValueWriter values;
    std::vector<Object> objects;
};

}  // namespace zephrin::reader::access
