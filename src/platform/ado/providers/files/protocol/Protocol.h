#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace zephrin::ado::files {

/// What the host and zephrin-file-reader say to each other. The host writes one request to the reader's
/// standard input; the reader answers it on its standard output and ends. Both are records: four bytes of
/// length, one of kind, then the content; all numbers have their low byte first, texts are UTF-8 behind four
/// bytes of length.
///
/// The answer is Hello, then what was asked for, then End or, wherever it stands, Failed. An answer that
/// simply stops is a reader that died.
inline constexpr quint16 ProtocolVersion = 1;

/// The longest record that either side takes. A value of a row is in one record.
inline constexpr quint32 LongestRecord = 80u << 20;
/// The longest value that a row may hold; a reader refuses longer ones with TooLarge.
inline constexpr quint32 LongestValue = 64u << 20;

enum class RecordKind : quint8 {
    Request = 1,
    Hello,   ///< version
    Table,   ///< a table of the catalogue, see TableInfo
    Column,  ///< a column of the table told last, see ColumnInfo
    Rows,    ///< a count, then the values of so many rows
    End,     ///< how many tables or rows there were
    Failed,  ///< see Failure
};

enum class Operation : quint8 {
    Catalog = 1,  ///< all tables, and the columns of those that saved queries read
    Describe,     ///< the columns of the named tables
    Rows,         ///< the columns and the rows of the one named table
};

/// What kind of file is expected; Any looks at the file.
enum class FileKind : quint8 { Any, Database, Workbook };

struct Request {
    Operation Wanted = Operation::Catalog;
    QString Path;
    FileKind Kind = FileKind::Any;
    QString Password;
    bool HasHeads = true;      ///< the first row of a sheet names its columns
    bool MixedAsText = false;  ///< a column of a sheet with values of several kinds is text
    bool MeasureSheets =
        false;  ///< look at every cell for the width of a sheet, whatever the sheet says of itself
    QStringList Names;
};

enum class TableKind : quint8 { Table, System, Query, Linked };

struct TableInfo {
    QString Name;
    TableKind Kind = TableKind::Table;
    /// The statement of a query; where a linked table leads to.
    QString Text;
};

/// What a column holds, as the drivers for these files tell it.
enum class ColumnKind : quint8 {
    Boolean,
    Byte,
    Short,
    Long,
    BigInt,
    Single,
    Double,
    Currency,
    Decimal,
    Date,
    Text,
    FixedText,
    Memo,
    Guid,
    Binary,
    LongBinary,
};
inline constexpr ColumnKind LastColumnKind = ColumnKind::LongBinary;

struct ColumnInfo {
    QString Name;
    ColumnKind Kind = ColumnKind::Text;
    int Size = 0;  ///< characters or bytes, 0 where there is no limit
    int Precision = 0;
    int Scale = 0;
    bool CountsItself = false;  ///< the file numbers its rows

    bool operator==(const ColumnInfo&) const = default;
};

/// What stands in front of each value of a row.
enum class ValueTag : quint8 {
    Null,
    Int,      ///< eight bytes; truth is -1 or 0
    Double,   ///< eight bytes
    Text,     ///< a text; dates are "YYYY-MM-DD[ HH:MM:SS[.fff]]", GUIDs without braces
    Bytes,    ///< bytes behind their length
    Money,    ///< ten-thousandths, eight bytes
    Decimal,  ///< the digits of an exact number as a text
};

enum class FailureKind : quint8 {
    Unreadable,   ///< can't be opened
    WrongKind,    ///< not a file of the kind that was asked for
    Unsupported,  ///< of a kind that isn't read
    Encrypted,    ///< needs a password, or another one
    Damaged,      ///< contradicts itself
    NoTable,      ///< has no table of that name
    LinkedTable,  ///< has such a table, whose rows are somewhere else
    Wider,        ///< has cells beyond what the sheet says of itself: ask again with MeasureSheets
    TooLarge,     ///< goes beyond a limit of the reader
};
inline constexpr FailureKind LastFailureKind = FailureKind::TooLarge;

struct Failure {
    FailureKind Kind = FailureKind::Damaged;
    QString Text;  ///< a sentence without the name of the file
};

}  // namespace zephrin::ado::files
