#include "platform/excel/SheetRows.h"

#include "platform/excel/CellXml.h"

#include <zephrin/ado/Error.h>

#include <QDate>
#include <QSet>
#include <QTime>

#include <algorithm>

namespace zephrin::excel {

namespace {

constexpr qint64 BlockRows = 4096;

[[noreturn]] void Refuse(const QString& text) {
    throw ado::Error(ado::ErrorNumber::FeatureNotAvailable, text, QStringLiteral("Excel export"));
}

/// Width of a column in characters, by what its type needs.
int WidthFor(const ado::Field& field, const QString& head) {
    using ado::DataType;
    int width = 12;
    if (field.Type == DataType::DBTimeStamp || field.Type == DataType::Date) width = 19;
    if (field.Type == DataType::Guid) width = 38;
    if (field.DefinedSize > 0 && field.Type >= DataType::VarChar)
        width = std::clamp(field.DefinedSize, 8, 40);
    return std::clamp(std::max(width, static_cast<int>(head.size()) + 2), 6, 60);
}

QByteArray Hex(std::string_view bytes) {
    const auto shown = bytes.substr(0, CellTextLimit / 2 - 1);
    return "0x" + QByteArray::fromRawData(shown.data(), static_cast<qsizetype>(shown.size())).toHex();
}

std::string_view View(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<size_t>(bytes.size())};
}

QByteArray CurrencyDigits(std::int64_t tenThousandths) {
    const bool negative = tenThousandths < 0;
    const auto magnitude = negative ? 0 - static_cast<std::uint64_t>(tenThousandths)
                                    : static_cast<std::uint64_t>(tenThousandths);
    return (negative ? "-" : "") + QByteArray::number(magnitude / 10'000) + '.' +
           QByteArray::number(magnitude % 10'000).rightJustified(4, '0');
}

/// A moment as the day number that a sheet counts in, or as text before the first day that it knows.
void AppendMoment(QByteArray& out, std::int64_t days, std::int64_t ticks, CellStyle style) {
    const double serial = DaySerial(days);
    // A sheet rounds to milliseconds. The last half of one would become the next day, which after the year
    // 9999 there isn't.
    if (ado::TicksPerDay - ticks <= ado::TicksPerSecond / 2000) ticks -= ticks % ado::TicksPerSecond;
    if (serial >= 0) {
        AppendNumberCell(out, serial + static_cast<double>(ticks) / static_cast<double>(ado::TicksPerDay),
                         style);
        return;
    }
    QString text = QDate(1970, 1, 1).addDays(days).toString(Qt::ISODate);
    if (style == CellStyle::DateTime)
        text += u' ' + QTime::fromMSecsSinceStartOfDay(static_cast<int>(ticks / 10'000)).toString();
    AppendTextCell(out, View(text.toUtf8()));
}

}  // namespace

QStringList UniqueHeads(const QList<ado::Field>& fields) {
    QStringList heads;
    QSet<QString> taken;
    for (const ado::Field& field : fields) {
        const QString base =
            field.Name.trimmed().isEmpty() ? QStringLiteral("Column%1").arg(heads.size() + 1) : field.Name;
        QString head = base;
        for (int number = 2; taken.contains(head.toCaseFolded()); ++number)
            head = base + QString::number(number);
        taken.insert(head.toCaseFolded());
        heads.append(head);
    }
    return heads;
}

SheetRows::SheetRows(RowSource& rowSource, const QString& sql)
    : source(rowSource), cursor(source.Run(sql)), fields(cursor->Fields()), heads(UniqueHeads(fields)) {
    if (fields.size() > SheetColumnLimit)
        Refuse(QStringLiteral("The query has %1 columns, a sheet holds %2.")
                   .arg(fields.size())
                   .arg(SheetColumnLimit));
    if (fields.isEmpty()) Refuse(QStringLiteral("The statement returns no rows that could be exported."));
}

SheetRows::~SheetRows() = default;

QByteArray SheetRows::NextPiece() {
    switch (stage) {
        case Stage::Opening:
            stage = Stage::Rows;
            return Opening();
        case Stage::Rows:
            if (QByteArray block = Block(); !block.isEmpty()) return block;
            stage = Stage::Done;
            return QByteArrayLiteral("</sheetData></worksheet>");
        case Stage::Done:
            break;
    }
    return {};
}

QByteArray SheetRows::Opening() const {
    QByteArray out =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
        "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><sheetViews>"
        "<sheetView workbookViewId=\"0\"><pane ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" "
        "state=\"frozen\"/></sheetView></sheetViews><cols>";
    for (int column = 0; column < fields.size(); ++column) {
        const QByteArray number = QByteArray::number(column + 1);
        out += "<col min=\"" + number + "\" max=\"" + number + "\" width=\"" +
               QByteArray::number(WidthFor(fields.at(column), heads.at(column))) + "\" customWidth=\"1\"/>";
    }
    out += "</cols><sheetData><row>";
    for (const QString& head : heads) {
        const QByteArray utf8 = head.toUtf8();
        AppendTextCell(out, {utf8.constData(), static_cast<size_t>(utf8.size())}, CellStyle::Head);
    }
    return out + "</row>";
}

QByteArray SheetRows::Block() {
    ado::ColumnStore block(static_cast<int>(fields.size()));
    const qint64 fetched = cursor->Fetch(block, BlockRows);
    if (fetched == 0) return {};
    if (rows + fetched > SheetRowLimit - 1)
        Refuse(QStringLiteral(
                   "The query returns more rows than the %1 that a sheet holds. Narrow it down with criteria "
                   "or TOP.")
                   .arg(SheetRowLimit - 1));
    QByteArray out;
    out.reserve(fetched * fields.size() * 32);
    for (qint64 row = 0; row < fetched; ++row) AppendRow(out, block, row);
    rows += fetched;
    if (!source.Proceed(rows)) throw ado::Cancelled();
    return out;
}

void SheetRows::AppendRow(QByteArray& out, const ado::ColumnStore& block, qint64 row) {
    out.append("<row>");
    for (int column = 0; column < fields.size(); ++column) AppendCell(out, block, row, column);
    out.append("</row>");
}

void SheetRows::AppendCell(QByteArray& out, const ado::ColumnStore& block, qint64 row, int column) {
    using ado::CellTag;
    switch (block.TagAt(row, column)) {
        case CellTag::Null:
            AppendEmptyCell(out);
            break;
        case CellTag::Int:
            if (fields.at(column).Type == ado::DataType::Boolean)
                AppendBoolCell(out, block.IntAt(row, column) != 0);
            else
                AppendIntegerCell(out, block.IntAt(row, column));
            break;
        case CellTag::Double:
            AppendNumberCell(out, block.DoubleAt(row, column));
            break;
        default:
            AppendLongCell(out, block, row, column);
    }
}

void SheetRows::AppendLongCell(QByteArray& out, const ado::ColumnStore& block, qint64 row, int column) {
    using ado::CellTag;
    const CellTag tag = block.TagAt(row, column);
    const auto number = [&] { return block.IntAt(row, column); };
    if (tag == CellTag::Decimal) {
        AppendDecimalCell(out, block.RunAt(row, column));
    } else if (tag == CellTag::Currency) {
        AppendDecimalCell(out, View(CurrencyDigits(number())), CellStyle::Money);
    } else if (tag == CellTag::Date) {
        AppendMoment(out, number(), 0, CellStyle::Date);
    } else if (tag == CellTag::Time) {
        AppendNumberCell(out, static_cast<double>(number()) / static_cast<double>(ado::TicksPerDay),
                         CellStyle::Time);
    } else if (tag == CellTag::DateTime) {
        const std::int64_t ticks = ((number() % ado::TicksPerDay) + ado::TicksPerDay) % ado::TicksPerDay;
        AppendMoment(out, (number() - ticks) / ado::TicksPerDay, ticks, CellStyle::DateTime);
    } else {
        const std::string_view bytes = block.RunAt(row, column);
        const bool whole = tag == CellTag::Bytes ? AppendTextCell(out, View(Hex(bytes))) &&
                                                       2 * bytes.size() + 2 <= CellTextLimit
                                                 : AppendTextCell(out, bytes);
        if (!whole) ++cut;
    }
}

}  // namespace zephrin::excel
