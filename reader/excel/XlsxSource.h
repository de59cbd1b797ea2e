#pragma once

#include "reader/Source.h"
#include "reader/excel/Package.h"
#include "reader/excel/SheetTable.h"

namespace zephrin::reader::excel {

/// What the cells of all sheets refer to.
struct XlsxContext {
    /// By the number of a style.
    std::vector<CellKind> Styles;
    /// All shared texts behind one another, and where each begins.
    std::string Texts;
    std::vector<std::size_t> TextStarts;
    bool CountsFrom1904 = false;
};

/// A workbook in parts (.xlsx, .xlsm).
class XlsxSource final : public Source {
 public:
    explicit XlsxSource(const ado::files::Request& request);

    std::vector<CatalogEntry> Catalog() override;
    QList<ColumnInfo> Columns(const QString& table) override;
    void Rows(const QString& table, RowSink& into) override;

 private:
    struct Sheet {
        QString Name;   ///< of its table, with the $
        QString Title;  ///< as the workbook has it
        QString Part;
    };
    struct NamedArea {
        QString Name;
        int Sheet = 0;
        Area Within;
    };
    /// A table that was found: a sheet, or a part of one.
    struct Place {
        const Sheet* On = nullptr;
        Area Within;
        bool IsSheet = true;
    };

    void ReadWorkbook(const QString& part);
    void AddName(const QString& name, const QString& refersTo, int local);
    void ReadStyles();
    void ReadTexts();
    Place Find(const QString& table) const;
    /// Runs `work` on the table with its columns settled.
    template <typename Work>
    void With(const QString& table, Work work);
    void Measure(const Place& place, Area& area) const;

    bool hasHeads;
    bool mixedAsText;
    bool measures;
    Package package;
    QString stylesPart;
    QString textsPart;
    std::vector<Sheet> sheets;
    std::vector<NamedArea> names;
    XlsxContext context;
    bool hasTexts = false;
};

}  // namespace zephrin::reader::excel
