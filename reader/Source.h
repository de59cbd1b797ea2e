#pragma once

#include "platform/ado/providers/files/protocol/Protocol.h"
#include "reader/RowSink.h"

#include <memory>
#include <vector>

namespace zephrin::reader {

using ado::files::ColumnInfo;
using ado::files::TableInfo;

/// A table of the catalogue; its columns where somebody will ask for them anyway.
struct CatalogEntry {
    TableInfo Table;
    QList<ColumnInfo> Columns;
};

/// An open file of any kind. Every operation may throw ReadError.
class Source {
 public:
    virtual ~Source() = default;
    virtual std::vector<CatalogEntry> Catalog() = 0;
    virtual QList<ColumnInfo> Columns(const QString& table) = 0;
    /// All rows, each with a value for each of Columns().
    virtual void Rows(const QString& table, RowSink& into) = 0;
};

/// Opens the file of the request by what it is, not by its name; throws ReadError.
std::unique_ptr<Source> OpenSource(const ado::files::Request& request);

}  // namespace zephrin::reader
