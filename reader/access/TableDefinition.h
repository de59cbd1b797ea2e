#pragma once

#include "reader/access/PageFile.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace zephrin::reader::access {

/// The types of columns as the file has them.
enum class StoredType : quint8 {
    None = 0x00,  ///< can't be told
    Boolean = 0x01,
    Byte = 0x02,
    Short = 0x03,
    Long = 0x04,
    Currency = 0x05,
    Single = 0x06,
    Double = 0x07,
    Date = 0x08,
    Binary = 0x09,
    Text = 0x0a,
    Ole = 0x0b,
    Memo = 0x0c,
    Guid = 0x0f,
    Decimal = 0x10,
    Unnamed = 0x11,  ///< bytes, in system tables
    Complex = 0x12,  ///< attachments, or several values: their number in a table of their own
    BigInt = 0x13,
    LongDate = 0x14,  ///< a date with seven places of seconds, as a text
};

struct StoredColumn {
    QString Name;
    StoredType Type = StoredType::Text;
    int Number = 0;  ///< its bit among those that tell Null
    bool IsFixed = false;
    int Offset = 0;  ///< of a fixed column, behind the count of columns
    int Index = 0;   ///< of the others, in the list of offsets
    int Length = 0;
    int Precision = 0;
    int Scale = 0;
    int CodePage = 0;
    quint32 ComplexId = 0;
    /// Its value is that of an expression, which the file keeps in a wrapping of its own. Type is then what
    /// the properties of the table say, or None where they say nothing.
    bool IsCalculated = false;
    bool CountsItself = false;
};

/// What a table's own pages say of it.
struct TableDefinition {
    quint32 Page = 0;
    quint32 RowCount = 0;
    /// Whether its rows have columns of no fixed place, or once had.
    bool HasVariable = false;
    QList<StoredColumn> Columns;
    /// The data pages that belong to it, in their order.
    std::vector<quint32> DataPages;
};

/// Reads the definition that begins on `page`; throws ReadError.
TableDefinition ReadDefinition(PageFile& file, quint32 page);

}  // namespace zephrin::reader::access
