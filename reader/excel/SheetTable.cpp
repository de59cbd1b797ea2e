#include "reader/excel/SheetTable.h"

#include "reader/Dates.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace zephrin::reader::excel {

using ado::files::ColumnKind;
using ado::files::FailureKind;

namespace {

constexpr std::size_t RowsForTypes = 8;
constexpr int LongestText = 255;
constexpr int LongestName = 64;
constexpr int ColumnLimit = 2000;

const SheetCell NoCell;

ShortText NumberText(double number) {
    ShortText text;
    // Fifteen digits, as the program that made the file shows at most.
    const auto end = std::to_chars(text.Bytes.data(), text.Bytes.data() + text.Bytes.size(), number,
                                   std::chars_format::general, 15);
    text.Size = int(end.ptr - text.Bytes.data());
    return text;
}

QString TextOf(const SheetCell& cell) {
    switch (cell.Kind) {
        case CellKind::Number:
        case CellKind::Money: {
            const ShortText text = NumberText(cell.Number);
            return QString::fromLatin1(text.Bytes.data(), text.Size);
        }
        case CellKind::Date: {
            const std::optional<ShortText> date = DateOf(cell.Number);
            return date ? QString::fromLatin1(date->Bytes.data(), date->Size) : QString();
        }
        case CellKind::Text:
            return QString::fromUtf8(cell.Text.data(), qsizetype(cell.Text.size()));
        case CellKind::Truth:
            return cell.Number != 0 ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
        case CellKind::Empty:
            break;
    }
    return {};
}

ColumnKind KindFor(CellKind kind) {
    switch (kind) {
        case CellKind::Number:
            return ColumnKind::Double;
        case CellKind::Money:
            return ColumnKind::Currency;
        case CellKind::Date:
            return ColumnKind::Date;
        case CellKind::Truth:
            return ColumnKind::Boolean;
        default:
            return ColumnKind::Text;
    }
}

bool IsNumber(CellKind kind) {
    return kind == CellKind::Number || kind == CellKind::Money;
}

}  // namespace

QString SafeName(QString name) {
    name = name.trimmed();
    for (QChar& letter : name) {
        if (letter == u'.') letter = u'#';
        if (letter == u'[') letter = u'(';
        if (letter == u']') letter = u')';
        if (letter == u'!' || letter == u'`' || letter < u' ') letter = u'_';
    }
    return name;
}

SheetTable::SheetTable(SheetReader& of, const Area& within, const TableOptions& how)
    : reader(of), area(within), options(how) {
    if (area.LastColumn - area.FirstColumn >= ColumnLimit)
        throw ReadError{FailureKind::TooLarge,
                        QStringLiteral("it has a sheet of more than %1 columns").arg(ColumnLimit)};
    if (options.HasHeads) TakeHeads();
    while (scanned.size() < RowsForTypes && Next()) Keep();
    DecideTypes();
}

const SheetCell& SheetTable::CellOf(const SheetRow& of, int column) const {
    const auto at = std::size_t(area.FirstColumn + column);
    return at < of.Cells.size() ? of.Cells[at] : NoCell;
}

/// The next row of the area that has anything in it.
bool SheetTable::Next() {
    while (reader.Next(row)) {
        if (row.Number < area.FirstRow) continue;
        if (area.LastRow >= 0 && row.Number > area.LastRow) return false;
        const auto isValue = [](const SheetCell& cell) { return cell.Kind != CellKind::Empty; };
        const auto begin = row.Cells.begin();
        const auto first = begin + std::min<std::ptrdiff_t>(area.FirstColumn, std::ssize(row.Cells));
        const auto behind = begin + std::min<std::ptrdiff_t>(area.LastColumn + 1, std::ssize(row.Cells));
        if (!options.IsMeasured &&
            (std::any_of(begin, first, isValue) || std::any_of(behind, row.Cells.end(), isValue)))
            throw ReadError{FailureKind::Wider, QStringLiteral("a sheet is wider than it says")};
        if (std::none_of(first, behind, isValue)) continue;
        if (!anyRow && nextRow < 0) nextRow = options.IsSheet ? row.Number : area.FirstRow;
        anyRow = true;
        return true;
    }
    return false;
}

void SheetTable::TakeHeads() {
    if (!Next()) return;
    // A named area has its heads in its first row, also where nothing stands there.
    if (!options.IsSheet && row.Number != area.FirstRow) {
        nextRow = area.FirstRow + 1;
        Keep();
        return;
    }
    nextRow = row.Number + 1;
    QSet<QString> taken;
    for (int column = 0; column <= area.LastColumn - area.FirstColumn; ++column) {
        QString base = SafeName(TextOf(CellOf(row, column))).left(LongestName);
        if (base.isEmpty()) base = QStringLiteral("F%1").arg(column + 1);
        QString name = base;
        for (int number = 1; taken.contains(name.toCaseFolded()); ++number)
            name = base + QString::number(number);
        taken.insert(name.toCaseFolded());
        ColumnInfo info;
        info.Name = name;
        columns.append(info);
    }
}

/// Keeps the row for later, with its texts, which would go with the next one.
void SheetTable::Keep() {
    for (SheetCell& cell : row.Cells) {
        if (cell.Text.empty()) continue;
        texts.push_back(std::make_unique<QByteArray>(cell.Text.data(), qsizetype(cell.Text.size())));
        cell.Text = {texts.back()->constData(), std::size_t(texts.back()->size())};
    }
    scanned.push_back(row);
}

void SheetTable::DecideTypes() {
    const int count = area.LastColumn - area.FirstColumn + 1;
    takesAll.resize(std::size_t(count));
    for (int column = 0; column < count; ++column) {
        ColumnInfo decided = DecideType(column);
        decided.Name = column < columns.size() ? columns[column].Name : QStringLiteral("F%1").arg(column + 1);
        if (column < columns.size())
            columns[column] = decided;
        else
            columns.append(decided);
        std::array<bool, ValueKinds> kinds{};
        for (const SheetRow& one : scanned)
            if (const SheetCell& cell = CellOf(one, column); cell.Kind != CellKind::Empty)
                kinds[std::size_t(cell.Kind)] = true;
        takesAll[std::size_t(column)] =
            options.MixedAsText && std::count(kinds.begin(), kinds.end(), true) > 1;
        if (takesAll[std::size_t(column)]) {
            columns[column].Kind = ColumnKind::Text;
            columns[column].Size = LongestText;
        }
    }
}

ColumnInfo SheetTable::DecideType(int column) const {
    std::array<int, ValueKinds> counts{};
    std::size_t longest = 0;
    for (const SheetRow& one : scanned) {
        const SheetCell& cell = CellOf(one, column);
        if (cell.Kind == CellKind::Empty) continue;
        ++counts[std::size_t(cell.Kind)];
        longest = std::max(longest, cell.Text.size());
    }
    const auto most = std::max_element(counts.begin(), counts.end());
    ColumnInfo info;
    info.Kind = *most == 0 ? ColumnKind::Text : KindFor(CellKind(most - counts.begin()));
    if (info.Kind == ColumnKind::Text) {
        if (longest > LongestText)
            info.Kind = ColumnKind::Memo;
        else
            info.Size = LongestText;
    }
    return info;
}

void SheetTable::WriteCell(const SheetCell& cell, ColumnKind kind, bool takes, RowSink& into) {
    if (cell.Kind == CellKind::Empty) return into.Null();
    if (takes && cell.Kind != CellKind::Text) return into.Text(TextOf(cell).toUtf8());
    switch (kind) {
        case ColumnKind::Double:
            if (IsNumber(cell.Kind)) return into.Double(cell.Number);
            break;
        case ColumnKind::Currency:
            if (IsNumber(cell.Kind) && std::fabs(cell.Number) < 9e14)
                return into.Money(std::llround(cell.Number * 10'000.0));
            break;
        case ColumnKind::Date:
            if (cell.Kind == CellKind::Date)
                if (const std::optional<ShortText> date = DateOf(cell.Number))
                    return into.Text(date->Bytes.data(), date->Size);
            break;
        case ColumnKind::Boolean:
            if (cell.Kind == CellKind::Truth) return into.Int(cell.Number != 0 ? -1 : 0);
            break;
        default:
            if (cell.Kind == CellKind::Text) return into.Text(cell.Text.data(), qsizetype(cell.Text.size()));
            break;
    }
    into.Null();
}

/// Rows of nothing between others are rows; those behind the last one aren't.
void SheetTable::WriteRow(const SheetRow& from, RowSink& into) {
    for (; nextRow >= 0 && nextRow < from.Number; ++nextRow) {
        into.BeginRow();
        for (qsizetype column = 0; column < columns.size(); ++column) into.Null();
        into.EndRow();
    }
    nextRow = from.Number + 1;
    into.BeginRow();
    for (int column = 0; column < int(columns.size()); ++column)
        WriteCell(CellOf(from, column), columns[column].Kind, takesAll[std::size_t(column)], into);
    into.EndRow();
}

void SheetTable::WriteRows(RowSink& into) {
    for (const SheetRow& one : scanned) WriteRow(one, into);
    scanned.clear();
    while (Next()) WriteRow(row, into);
}

}  // namespace zephrin::reader::excel
