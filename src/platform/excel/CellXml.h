#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <string_view>

namespace zephrin::excel {

/// The most that one cell holds, in UTF-16 units; the rest of a longer text is cut.
inline constexpr qsizetype CellTextLimit = 32'767;
/// Rows and columns of a sheet.
inline constexpr qint64 SheetRowLimit = 1'048'576;
inline constexpr int SheetColumnLimit = 16'384;

/// Indexes into the cell formats of the style part.
enum class CellStyle : int { General = 0, Head = 1, Date = 2, DateTime = 3, Time = 4, Money = 5 };

/// `text` as character data: markup escaped, characters that XML can't hold left out, and a stretch that a
/// spreadsheet would read as an escape ("_x0041_") kept as it stands.
void AppendEscaped(QByteArray& out, std::string_view utf8);
QByteArray Escaped(const QString& text);

/// One cell each, behind what stands in `out`. Text is text, whatever it looks like. Returns false where it
/// was cut.
bool AppendTextCell(QByteArray& out, std::string_view utf8, CellStyle style = CellStyle::General);
void AppendEmptyCell(QByteArray& out);
void AppendBoolCell(QByteArray& out, bool value);
void AppendNumberCell(QByteArray& out, double value, CellStyle style = CellStyle::General);
/// A whole number; beyond the fifteen digits that a sheet's numbers keep, it is written as text.
void AppendIntegerCell(QByteArray& out, std::int64_t value);
/// An exact decimal as its digits, as text beyond fifteen of them.
void AppendDecimalCell(QByteArray& out, std::string_view digits, CellStyle style = CellStyle::General);

/// The day number of a sheet for a day counted from 1970-01-01, or a negative number for days before 1900,
/// which a sheet can't hold. The calendar of sheets has a 29 February 1900.
double DaySerial(std::int64_t daysSinceEpoch);

/// "A", "B", ... "AA" for a column from 0.
QString ColumnLetters(int column);

}  // namespace zephrin::excel
