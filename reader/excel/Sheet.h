#pragma once

#include "reader/ReadError.h"

#include <QByteArray>
#include <QString>

#include <string_view>
#include <vector>

namespace zephrin::reader::excel {

/// What a cell holds; the order is the one in which kinds win where a column has as many of each.
enum class CellKind : quint8 { Number, Money, Date, Text, Truth, Empty };
inline constexpr int ValueKinds = 5;

struct SheetCell {
    CellKind Kind = CellKind::Empty;
    double Number = 0;      ///< a date: days since 1899-12-30
    std::string_view Text;  ///< UTF-8; until the next row
};

struct SheetRow {
    qint64 Number = 0;  ///< from 0
    std::vector<SheetCell> Cells;
};

/// A rectangle of a sheet, both ends included, from 0. -1 where the sheet's own end is meant.
struct Area {
    qint64 FirstRow = 0;
    qint64 LastRow = -1;
    int FirstColumn = 0;
    int LastColumn = -1;
};

/// The most that a sheet of any version has.
inline constexpr qint64 MostRows = 1'048'576;
inline constexpr int MostColumns = 16'384;

/// The rows of one sheet, from its first. Rows of nothing may be left out.
class SheetReader {
 public:
    virtual ~SheetReader() = default;
    /// Fills in the next row; false behind the last.
    virtual bool Next(SheetRow& row) = 0;
};

/// The column that letters stand for ("A" is 0), and how many letters that were; -1 for none.
int ColumnOf(std::string_view letters, std::size_t& length);

/// "A1:C9", "$A$1:$C$9", "A:C", "2:5" or "A1" as an area; false for anything else.
bool ReadArea(QStringView text, Area& area);

}  // namespace zephrin::reader::excel
