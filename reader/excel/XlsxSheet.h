#pragma once

#include "reader/excel/XlsxSource.h"

#include <deque>

namespace zephrin::reader::excel {

/// Reads one sheet of such a workbook from its first row to its last.
class XlsxSheet final : public SheetReader {
 public:
    XlsxSheet(XmlScanner part, const XlsxContext& of) : scanner(std::move(part)), context(of) {}

    /// What the sheet says of itself before its rows: the area that is in use. False where it says nothing.
    bool ReadExtent(Area& area);
    bool Next(SheetRow& row) override;

 private:
    bool FindRow();
    void ReadCells(SheetRow& row);
    void ReadCell(SheetRow& row, int column);
    void SetValue(SheetCell& cell, std::string_view type, CellKind style, std::string_view value,
                  std::string& kept) const;

    XmlScanner scanner;
    const XlsxContext& context;
    bool inRows = false;
    qint64 next = 0;
    /// The texts of the row, one a cell: they stay where they are while others grow.
    std::deque<std::string> texts;
    std::string value;
};

/// Adds what stands in the elements `t` of a text with parts, up to the end of the element `of`; how it is
/// pronounced doesn't belong to it.
void AppendRichText(XmlScanner& scanner, std::string_view of, std::string& into);

}  // namespace zephrin::reader::excel
