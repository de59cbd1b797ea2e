#include "reader/excel/XlsxSheet.h"

#include "reader/Dates.h"

#include <QDateTime>

#include <charconv>

namespace zephrin::reader::excel {

using Token = XmlScanner::Token;

namespace {

constexpr double DaysTo1904 = 1462;

template <typename Number>
bool ReadNumber(std::string_view text, Number& number) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    return end.ec == std::errc() && end.ptr == text.data() + text.size();
}

[[noreturn]] void ThrowBadCell() {
    ThrowDamaged(QStringLiteral("a cell of a sheet"));
}

/// A letter that XML has no way to write stands as _x000D_.
void Unescape(std::string& text) {
    std::size_t at = text.find("_x");
    for (; at != std::string::npos; at = text.find("_x", at + 1)) {
        unsigned letter = 0;
        if (at + 7 > text.size() || text[at + 6] != '_') continue;
        const auto end = std::from_chars(text.data() + at + 2, text.data() + at + 6, letter, 16);
        if (end.ec != std::errc() || end.ptr != text.data() + at + 6) continue;
        text.replace(at, 7, QString(QChar(char16_t(letter))).toStdString());
    }
}

/// A date that is written out, in days.
bool ReadWrittenDate(std::string_view text, double& days) {
    const QDateTime moment =
        QDateTime::fromString(QString::fromLatin1(text.data(), qsizetype(text.size())), Qt::ISODate);
    if (!moment.isValid()) return false;
    days = double(QDate(1899, 12, 30).daysTo(moment.date())) +
           moment.time().msecsSinceStartOfDay() / 86'400'000.0;
    return true;
}

}  // namespace

void AppendRichText(XmlScanner& scanner, std::string_view of, std::string& into) {
    int silent = 0;
    bool isText = false;
    for (;;) {
        switch (scanner.Next()) {
            case Token::Start:
                if (scanner.Name() == "rPh") ++silent;
                isText = scanner.Name() == "t" && silent == 0;
                break;
            case Token::End:
                if (scanner.Name() == of) return Unescape(into);
                if (scanner.Name() == "rPh") --silent;
                isText = false;
                break;
            case Token::Text:
                if (isText) scanner.AppendText(into);
                break;
            case Token::Finish:
                ThrowBadCell();
        }
    }
}

bool XlsxSheet::ReadExtent(Area& area) {
    for (;;) {
        const Token token = scanner.Next();
        if (token == Token::Finish) return false;
        if (token != Token::Start) continue;
        if (scanner.Name() == "sheetData") {
            inRows = true;
            return false;
        }
        if (scanner.Name() == "dimension") {
            const std::string_view extent = scanner.Attribute("ref");
            return ReadArea(QString::fromLatin1(extent.data(), qsizetype(extent.size())), area);
        }
    }
}

/// Goes to the begin of the next row.
bool XlsxSheet::FindRow() {
    for (;;) {
        const Token token = scanner.Next();
        if (token == Token::Finish) {
            if (!inRows) return false;
            ThrowDamaged(QStringLiteral("a sheet without an end"));
        }
        if (token == Token::Start && scanner.Name() == "sheetData") inRows = true;
        if (token == Token::End && scanner.Name() == "sheetData") {
            // To its end: only there is it known that all its bytes were right.
            while (scanner.Next() != Token::Finish) {
            }
            inRows = false;
            return false;
        }
        if (token == Token::Start && inRows && scanner.Name() == "row") return true;
    }
}

bool XlsxSheet::Next(SheetRow& row) {
    if (!FindRow()) return false;
    row.Cells.clear();
    row.Number = next;
    if (const std::string_view number = scanner.Attribute("r"); !number.empty()) {
        qint64 written = 0;
        if (!ReadNumber(number, written) || written <= next || written > MostRows) ThrowBadCell();
        row.Number = written - 1;
    }
    next = row.Number + 1;
    if (next > MostRows) ThrowBadCell();
    ReadCells(row);
    return true;
}

void XlsxSheet::ReadCells(SheetRow& row) {
    int column = 0;
    for (;;) {
        switch (scanner.Next()) {
            case Token::Start:
                if (scanner.Name() != "c") break;
                if (const std::string_view place = scanner.Attribute("r"); !place.empty()) {
                    std::size_t length = 0;
                    const int written = ColumnOf(place, length);
                    if (written < column || length == place.size()) ThrowBadCell();
                    column = written;
                }
                if (column >= MostColumns) ThrowBadCell();
                ReadCell(row, column++);
                break;
            case Token::End:
                if (scanner.Name() == "row") return;
                break;
            case Token::Text:
                break;
            case Token::Finish:
                ThrowBadCell();
        }
    }
}

void XlsxSheet::ReadCell(SheetRow& row, int column) {
    const std::string type(scanner.Attribute("t"));
    CellKind style = CellKind::Number;
    std::size_t number = 0;
    if (ReadNumber(scanner.Attribute("s"), number) && number < context.Styles.size())
        style = context.Styles[number];
    value.clear();
    bool isValue = false;
    bool hasInline = false;
    if (texts.size() <= std::size_t(column)) texts.resize(std::size_t(column) + 1);
    std::string& text = texts[std::size_t(column)];
    text.clear();
    for (bool inside = true; inside;) {
        switch (scanner.Next()) {
            case Token::Start:
                isValue = scanner.Name() == "v";
                if (scanner.Name() == "is") {
                    AppendRichText(scanner, "is", text);
                    hasInline = true;
                }
                break;
            case Token::End:
                inside = scanner.Name() != "c";
                isValue = false;
                break;
            case Token::Text:
                if (isValue) scanner.AppendText(value);
                break;
            case Token::Finish:
                ThrowBadCell();
        }
    }
    if (value.empty() && !hasInline) return;
    row.Cells.resize(std::size_t(column) + 1);
    SetValue(row.Cells.back(), type, style, value, text);
}

void XlsxSheet::SetValue(SheetCell& cell, std::string_view type, CellKind style, std::string_view written,
                         std::string& kept) const {
    if (type == "s") {
        std::size_t index = 0;
        if (!ReadNumber(written, index) || index + 1 >= context.TextStarts.size()) ThrowBadCell();
        cell.Kind = CellKind::Text;
        cell.Text =
            std::string_view(context.Texts)
                .substr(context.TextStarts[index], context.TextStarts[index + 1] - context.TextStarts[index]);
    } else if (type == "str" || type == "inlineStr") {
        if (type == "str") {
            kept = written;
            Unescape(kept);
        }
        cell.Kind = CellKind::Text;
        cell.Text = kept;
    } else if (type == "b") {
        cell.Kind = CellKind::Truth;
        cell.Number = written == "1" || written == "true" ? 1 : 0;
    } else if (type == "d") {
        cell.Kind = CellKind::Date;
        if (!ReadWrittenDate(written, cell.Number)) ThrowBadCell();
    } else if (type != "e") {
        if (!ReadNumber(written, cell.Number)) ThrowBadCell();
        cell.Kind = style;
        if (style == CellKind::Date && context.CountsFrom1904) cell.Number += DaysTo1904;
        // A number in the format of a date that no date can have.
        if (style == CellKind::Date && !DateOf(cell.Number)) cell.Kind = CellKind::Number;
    }
    // An empty text is nothing, as the drivers have it.
    if (cell.Kind == CellKind::Text && cell.Text.empty()) cell.Kind = CellKind::Empty;
}

}  // namespace zephrin::reader::excel
