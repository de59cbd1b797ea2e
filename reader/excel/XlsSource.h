#pragma once

#include "reader/Source.h"
#include "reader/excel/SheetTable.h"
#include "reader/excel/TruthCells.h"

#include <memory>

namespace zephrin::reader::excel {

/// A workbook of the years 97 to 2003 and before (.xls). The library reads it whole when it is opened.
class XlsSource final : public Source {
 public:
    explicit XlsSource(const ado::files::Request& request);

    std::vector<CatalogEntry> Catalog() override;
    QList<ColumnInfo> Columns(const QString& table) override;
    void Rows(const QString& table, RowSink& into) override;

 private:
    struct Close {
        void operator()(const void* handle) const;
    };
    /// Runs `work` on the table with its columns settled.
    template <typename Work>
    void With(const QString& table, Work work);

    bool hasHeads;
    bool mixedAsText;
    std::unique_ptr<const void, Close> workbook;
    QStringList names;
    /// Of each sheet, in the same order.
    std::vector<TruthCells> truths;
};

}  // namespace zephrin::reader::excel
