#include "reader/access/ValueWriter.h"

#include "reader/access/Values.h"

namespace zephrin::reader::access {

using ado::files::ColumnKind;

namespace {

[[noreturn]] void ThrowNoDate(const StoredColumn& column) {
    ThrowDamaged(QStringLiteral("a value of column %1 is not a date").arg(column.Name));
}

ColumnKind KindOf(const StoredColumn& column) {
    switch (column.Type) {
        case StoredType::Boolean:
            return ColumnKind::Boolean;
        case StoredType::Byte:
            return ColumnKind::Byte;
        case StoredType::Short:
            return ColumnKind::Short;
        case StoredType::Long:
            return ColumnKind::Long;
        case StoredType::BigInt:
            return ColumnKind::BigInt;
        case StoredType::Currency:
            return ColumnKind::Currency;
        case StoredType::Single:
            return ColumnKind::Single;
        case StoredType::Double:
            return ColumnKind::Double;
        case StoredType::Date:
        case StoredType::LongDate:
            return ColumnKind::Date;
        case StoredType::Text:
            return column.IsFixed ? ColumnKind::FixedText : ColumnKind::Text;
        case StoredType::Memo:
        case StoredType::Complex:
            return ColumnKind::Memo;
        case StoredType::Guid:
            return ColumnKind::Guid;
        case StoredType::Decimal:
            return ColumnKind::Decimal;
        case StoredType::Binary:
        case StoredType::Unnamed:
            return ColumnKind::Binary;
        case StoredType::None:
            return ColumnKind::Text;
        case StoredType::Ole:
            return ColumnKind::LongBinary;
    }
    throw ReadError{ado::files::FailureKind::Unsupported,
                    QStringLiteral("its column %1 is of a type that isn't known (%2)")
                        .arg(column.Name)
                        .arg(int(column.Type))};
}

template <typename Bytes>
const char* Chars(const Bytes* bytes) {
    return reinterpret_cast<const char*>(bytes);
}

}  // namespace

ColumnInfo InfoOf(const StoredColumn& column) {
    ColumnInfo info;
    info.Name = column.Name;
    info.Kind = KindOf(column);
    if (column.IsCalculated) {
        // Each value has places of its own, which no exact type could promise.
        if (info.Kind == ColumnKind::Decimal) info.Kind = ColumnKind::Double;
        if (info.Kind == ColumnKind::Text || info.Kind == ColumnKind::FixedText) {
            info.Kind = ColumnKind::Text;
            info.Size = 255;
        }
        return info;
    }
    info.CountsItself = column.CountsItself && info.Kind == ColumnKind::Long;
    if (info.Kind == ColumnKind::Text || info.Kind == ColumnKind::FixedText)
        // Letters of sixteen bits, except in the oldest format.
        info.Size = column.CodePage != 0 ? column.Length : column.Length / 2;
    else if (info.Kind == ColumnKind::Binary)
        info.Size = column.Length;
    else if (info.Kind == ColumnKind::Decimal) {
        info.Precision = column.Precision;
        info.Scale = column.Scale;
    }
    return info;
}

TextDecoder& ValueWriter::DecoderOf(const StoredColumn& column) {
    return decoders.try_emplace(column.CodePage, column.CodePage).first->second;
}

void ValueWriter::WriteText(const Span& text, const StoredColumn& column, RowSink& into) {
    const qsizetype most = TextDecoder::Most(text);
    char* const room = into.BeginText(most);
    into.EndText(most, DecoderOf(column).Decode(text, room));
}

void ValueWriter::WriteDecimal(const Span& bytes, const StoredColumn& column, RowSink& into) {
    if (!column.IsCalculated) {
        into.Decimal(DecimalOf(bytes.Byte(0) != 0, bytes.Part(1, 16), column.Scale));
        return;
    }
    // A calculated one says itself how many places it has, and its lower half is one number of eight bytes.
    const std::array<quint32, 4> words{0, bytes.Long(4), bytes.Long(12), bytes.Long(8)};
    const QByteArray digits = DecimalOf(
        bytes.Byte(3) != 0, {reinterpret_cast<const uchar*>(words.data()), int(sizeof words)}, bytes.Byte(2));
    into.Double(digits.toDouble());
}

void ValueWriter::Write(const Cell& cell, const StoredColumn& column, const ComplexTexts* complex,
                        RowSink& into) {
    if (column.Type == StoredType::Boolean && !column.IsCalculated) return into.Int(cell.IsNull ? 0 : -1);
    if (cell.IsNull || column.Type == StoredType::None) return into.Null();
    Span bytes = cell.Bytes;
    if (column.Type == StoredType::Memo || column.Type == StoredType::Ole) {
        if (bytes.Size == 0) return into.Null();
        bytes = longValues.Read(bytes);
    }
    if (column.IsCalculated) bytes = Calculated(bytes);
    switch (column.Type) {
        case StoredType::Text:
        case StoredType::Memo:
            return WriteText(bytes, column, into);
        case StoredType::Binary:
        case StoredType::Unnamed:
        case StoredType::Ole:
            return into.Bytes(Chars(bytes.Data), bytes.Size);
        default:
            break;
    }
    // Nothing to read a number from: the column was calculated without a result.
    if (bytes.Size == 0) return into.Null();
    switch (column.Type) {
        case StoredType::Boolean:
            return into.Int(bytes.Byte(0) != 0 ? -1 : 0);
        case StoredType::Byte:
            return into.Int(bytes.Byte(0));
        case StoredType::Short:
            return into.Int(NumberOf<qint16>(bytes));
        case StoredType::Long:
            return into.Int(NumberOf<qint32>(bytes));
        case StoredType::BigInt:
            return into.Int(NumberOf<qint64>(bytes));
        case StoredType::Currency:
            return into.Money(NumberOf<qint64>(bytes));
        case StoredType::Single:
            return into.Double(double(NumberOf<float>(bytes)));
        case StoredType::Double:
            return into.Double(NumberOf<double>(bytes));
        case StoredType::Date:
        case StoredType::LongDate: {
            const auto date =
                column.Type == StoredType::Date ? DateOf(NumberOf<double>(bytes)) : LongDateOf(bytes);
            if (!date) ThrowNoDate(column);
            return into.Text(date->Bytes.data(), date->Size);
        }
        case StoredType::Guid: {
            const ShortText guid = GuidOf(bytes);
            return into.Text(guid.Bytes.data(), guid.Size);
        }
        case StoredType::Decimal:
            return WriteDecimal(bytes, column, into);
        case StoredType::Complex: {
            const auto found = complex ? complex->constFind(bytes.Long(0)) : ComplexTexts::const_iterator();
            if (!complex || found == complex->cend()) return into.Null();
            return into.Text(*found);
        }
        default:
            return into.Null();
    }
}

qint64 ValueWriter::WholeNumber(const Cell& cell) {
    if (cell.IsNull) return 0;
    switch (cell.Bytes.Size) {
        case 1:
            return cell.Bytes.Byte(0);
        case 2:
            return NumberOf<qint16>(cell.Bytes);
        case 4:
            return NumberOf<qint32>(cell.Bytes);
        default:
            return 0;
    }
}

QByteArray ValueWriter::Readable(const Cell& cell, const StoredColumn& column) {
    if (column.Type == StoredType::Boolean) return cell.IsNull ? "No" : "Yes";
    if (cell.IsNull || cell.Bytes.Size == 0) return {};
    switch (column.Type) {
        case StoredType::Text:
        case StoredType::Memo:
            return Text(cell, column);
        case StoredType::Byte:
        case StoredType::Short:
        case StoredType::Long:
            return QByteArray::number(WholeNumber(cell));
        case StoredType::Single:
            return QByteArray::number(double(NumberOf<float>(cell.Bytes)), 'g', 7);
        case StoredType::Double:
            return QByteArray::number(NumberOf<double>(cell.Bytes), 'g', 15);
        case StoredType::Date:
            if (const auto date = DateOf(NumberOf<double>(cell.Bytes)))
                return {date->Bytes.data(), date->Size};
            ThrowNoDate(column);
        case StoredType::Guid: {
            const ShortText guid = GuidOf(cell.Bytes);
            return {guid.Bytes.data(), guid.Size};
        }
        case StoredType::Decimal:
            return DecimalOf(cell.Bytes.Byte(0) != 0, cell.Bytes.Part(1, 16), column.Scale);
        default:
            return {};
    }
}

QByteArray ValueWriter::LongBytes(const Cell& cell) {
    if (cell.IsNull || cell.Bytes.Size == 0) return {};
    const Span bytes = longValues.Read(cell.Bytes);
    return {Chars(bytes.Data), bytes.Size};
}

QByteArray ValueWriter::Text(const Cell& cell, const StoredColumn& column) {
    if (cell.IsNull || cell.Bytes.Size == 0) return {};
    const bool isLong = column.Type == StoredType::Memo || column.Type == StoredType::Ole;
    return DecoderOf(column).Decoded(isLong ? longValues.Read(cell.Bytes) : cell.Bytes);
}

}  // namespace zephrin::reader::access
