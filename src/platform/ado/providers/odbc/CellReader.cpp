#include "platform/ado/providers/odbc/CellReader.h"

#include "platform/ado/providers/odbc/CellText.h"

#include <charconv>
#include <cstring>

namespace zephrin::ado::odbc {

namespace {

template <class T>
T As(const char* data) {
    T value;
    std::memcpy(&value, data, sizeof value);
    return value;
}

void AppendText(std::string_view text, ColumnStore& into, int column) {
    into.AppendText(column, text.data(), qsizetype(text.size()));
}

void AppendDate(const SQL_DATE_STRUCT& date, ColumnStore& into, int column) {
    if (date.month == 0 || date.day == 0) {
        // Some servers keep dates that are none.
        AppendText("0000-00-00", into, column);
    } else {
        into.AppendDate(column, DaysOf(date.year, date.month, date.day));
    }
}

void AppendTimestamp(const SQL_TIMESTAMP_STRUCT& at, ColumnStore& into, int column) {
    if (at.month == 0 || at.day == 0) {
        AppendText("0000-00-00", into, column);
        return;
    }
    const std::int64_t seconds = (at.hour * 60LL + at.minute) * 60 + at.second;
    into.AppendDateTime(column, DaysOf(at.year, at.month, at.day) * TicksPerDay + seconds * TicksPerSecond +
                                    at.fraction / 100);
}

void AppendDecimal(std::string_view text, ColumnStore& into, int column) {
    const std::string digits = NormaliseDecimal(text);
    if (!digits.empty()) {
        into.AppendDecimal(column, digits.data(), qsizetype(digits.size()));
        return;
    }
    double value = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (failure == std::errc() && end == text.data() + text.size()) {
        into.AppendDouble(column, value);
    } else {
        AppendText(text, into, column);
    }
}

void AppendCurrency(std::string_view text, ColumnStore& into, int column) {
    if (const auto amount = ParseCurrency(text)) {
        into.AppendCurrency(column, *amount);
    } else {
        AppendDecimal(text, into, column);
    }
}

void AppendTime(std::string_view text, ColumnStore& into, int column) {
    if (const auto ticks = ParseTime(text)) {
        into.AppendTime(column, *ticks);
    } else {
        AppendText(text, into, column);
    }
}

void AppendDateText(std::string_view text, ColumnStore& into, int column) {
    const auto moment = ParseMoment(text);
    if (!moment) {
        AppendText(text, into, column);
    } else if (moment->HasTime) {
        into.AppendDateTime(column, moment->Days * TicksPerDay + moment->Ticks);
    } else {
        into.AppendDate(column, moment->Days);
    }
}

void AppendGuid(std::string_view text, ColumnStore& into, int column) {
    if (text.size() == 38 && text.front() == '{') text = text.substr(1, 36);
    if (text.size() == 36 && text[8] == '-') {
        into.AppendGuid(column, text.data(), qsizetype(text.size()));
    } else {
        AppendText(text, into, column);
    }
}

}  // namespace

void CellReader::Append(const RowBatch& batch, qint64 first, qint64 count, ColumnStore& into) {
    for (int column = 0; column < batch.ColumnCount(); ++column) {
        const CellKind kind = batch.KindAt(column);
        for (qint64 row = first; row < first + count; ++row) {
            const SQLLEN length = batch.LengthAt(row, column);
            if (length == SQL_NULL_DATA) {
                into.AppendNull(column);
            } else {
                AppendCell(kind, batch.DataAt(row, column), length, into, column);
            }
        }
    }
    into.EndRows(count);
}

void CellReader::AppendCell(CellKind kind, const char* data, SQLLEN length, ColumnStore& into, int column) {
    const std::string_view text(data, size_t(length < 0 ? 0 : length));
    switch (kind) {
        case CellKind::Integer:
            return into.AppendInt(column, As<SQLBIGINT>(data));
        case CellKind::Double:
            return into.AppendDouble(column, As<SQLDOUBLE>(data));
        case CellKind::Bit:
            return into.AppendInt(column, *data ? -1 : 0);
        case CellKind::BitText:
            return into.AppendInt(column, ReadsAsTrue(text) ? -1 : 0);
        case CellKind::Text:
            return AppendWide(data, length, into, column);
        case CellKind::Bytes:
            return into.AppendBytes(column, data, qsizetype(text.size()));
        case CellKind::Decimal:
            return AppendDecimal(text, into, column);
        case CellKind::Currency:
            return AppendCurrency(text, into, column);
        case CellKind::Date:
            return AppendDate(As<SQL_DATE_STRUCT>(data), into, column);
        case CellKind::DateTime:
            return AppendTimestamp(As<SQL_TIMESTAMP_STRUCT>(data), into, column);
        case CellKind::Time:
            return AppendTime(text, into, column);
        case CellKind::DateText:
            return AppendDateText(text, into, column);
        case CellKind::Guid:
            return AppendGuid(text, into, column);
    }
}

void CellReader::AppendWide(const char* data, SQLLEN bytes, ColumnStore& into, int column) {
    // A driver that counts an odd byte has cut a unit.
    const size_t units = bytes < 0 ? 0 : size_t(bytes) / sizeof(char16_t);
    ToUtf8(reinterpret_cast<const char16_t*>(data), units, utf8);
    into.AppendText(column, utf8.data(), qsizetype(utf8.size()));
}

}  // namespace zephrin::ado::odbc
