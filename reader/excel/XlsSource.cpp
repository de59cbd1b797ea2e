#include "reader/excel/XlsSource.h"

#include <QDate>
#include <QFile>
#include <QTime>

#include <algorithm>
#include <cstring>
#include <freexl.h>

namespace zephrin::reader::excel {

using ado::files::FailureKind;
using ado::files::TableKind;

namespace {

/// "YYYY-MM-DD", "YYYY-MM-DD HH:MM:SS" or "HH:MM:SS", as the library writes what a cell counts in days.
bool ReadDays(const char* text, double& days) {
    const QString written = QString::fromLatin1(text);
    const QDate date = QDate::fromString(written.left(10), Qt::ISODate);
    const QTime time = QTime::fromString(written.mid(date.isValid() ? 11 : 0), Qt::ISODate);
    if (!date.isValid() && !time.isValid()) return false;
    days = date.isValid() ? double(QDate(1899, 12, 30).daysTo(date)) : 0;
    if (time.isValid()) days += time.msecsSinceStartOfDay() / 86'400'000.0;
    return true;
}

/// The rows of the sheet that was selected.
class XlsSheet final : public SheetReader {
 public:
    XlsSheet(const void* of, const TruthCells& itsTruths) : workbook(of), truths(itsTruths) {
        freexl_worksheet_dimensions(workbook, &rows, &columns);
    }

    bool Next(SheetRow& row) override {
        if (next >= rows) return false;
        row.Number = next;
        row.Cells.assign(columns, SheetCell());
        for (unsigned short column = 0; column < columns; ++column) ReadCell(column, row.Cells[column]);
        ++next;
        return true;
    }

 private:
    void ReadCell(unsigned short column, SheetCell& cell) const {
        FreeXL_CellValue value{};
        if (freexl_get_cell_value(workbook, next, column, &value) != FREEXL_OK)
            ThrowDamaged(QStringLiteral("a cell of a sheet"));
        switch (value.type) {
            case FREEXL_CELL_INT:
                cell.Kind = CellKind::Number;
                cell.Number = value.value.int_value;
                break;
            case FREEXL_CELL_DOUBLE:
                cell.Kind = CellKind::Number;
                cell.Number = value.value.double_value;
                break;
            case FREEXL_CELL_TEXT:
            case FREEXL_CELL_SST_TEXT:
                if (!value.value.text_value || *value.value.text_value == 0) break;
                cell.Kind = CellKind::Text;
                cell.Text = value.value.text_value;
                break;
            case FREEXL_CELL_DATE:
            case FREEXL_CELL_DATETIME:
            case FREEXL_CELL_TIME:
                if (value.value.text_value && ReadDays(value.value.text_value, cell.Number))
                    cell.Kind = CellKind::Date;
                break;
            default:
                break;
        }
        if (truths.isEmpty()) return;
        if (const auto truth = truths.constFind(next << 16 | column); truth != truths.cend()) {
            cell.Kind = CellKind::Truth;
            cell.Number = *truth ? 1 : 0;
        }
    }

    const void* workbook;
    const TruthCells& truths;
    unsigned next = 0;
    unsigned rows = 0;
    unsigned short columns = 0;
};

/// A newer workbook that is encrypted comes in the wrapping of an old one.
bool HoldsEncryptedPackage(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    const auto* name = u"EncryptedPackage";
    return file.read(4 << 20).contains(QByteArrayView(reinterpret_cast<const char*>(name), 32)) ||
           (file.seek(std::max<qint64>(file.size() - (1 << 20), 0)) &&
            file.readAll().contains(QByteArrayView(reinterpret_cast<const char*>(name), 32)));
}

[[noreturn]] void ThrowEncrypted() {
    throw ReadError{FailureKind::Encrypted,
                    QStringLiteral("it is encrypted with a password, and encrypted workbooks can't be read")};
}

unsigned Info(const void* workbook, unsigned short what) {
    unsigned value = 0;
    freexl_get_info(workbook, what, &value);
    return value;
}

/// The columns that hold anything.
void Measure(const void* workbook, const TruthCells& truths, Area& area) {
    XlsSheet sheet(workbook, truths);
    SheetRow row;
    int first = MostColumns;
    int last = -1;
    while (sheet.Next(row)) {
        for (int column = 0; column < int(row.Cells.size()); ++column) {
            if (row.Cells[std::size_t(column)].Kind == CellKind::Empty) continue;
            first = std::min(first, column);
            last = std::max(last, column);
        }
    }
    area.FirstColumn = last < 0 ? 0 : first;
    area.LastColumn = std::max(last, 0);
}

}  // namespace

void XlsSource::Close::operator()(const void* handle) const {
    freexl_close(handle);
}

XlsSource::XlsSource(const ado::files::Request& request)
    : hasHeads(request.HasHeads), mixedAsText(request.MixedAsText) {
    const void* handle = nullptr;
    const int outcome = freexl_open(QFile::encodeName(request.Path).constData(), &handle);
    workbook.reset(handle);
    if (outcome != FREEXL_OK && HoldsEncryptedPackage(request.Path)) ThrowEncrypted();
    if (outcome == FREEXL_INSUFFICIENT_MEMORY)
        throw ReadError{FailureKind::TooLarge,
                        QStringLiteral("reading it takes more memory than is allowed")};
    if (handle && Info(handle, FREEXL_BIFF_PASSWORD) == FREEXL_BIFF_OBFUSCATED) ThrowEncrypted();
    if (outcome != FREEXL_OK)
        throw ReadError{FailureKind::Damaged,
                        QStringLiteral("it is damaged, or no workbook of Excel (%1)").arg(outcome)};
    const QHash<QString, TruthCells> cells = FindTruthCells(request.Path);
    const unsigned sheets = Info(handle, FREEXL_BIFF_SHEET_COUNT);
    for (unsigned sheet = 0; sheet < std::min(sheets, 65'535u); ++sheet) {
        const char* name = nullptr;
        if (freexl_get_worksheet_name(handle, static_cast<unsigned short>(sheet), &name) != FREEXL_OK ||
            !name)
            ThrowDamaged(QStringLiteral("its list of sheets"));
        names << SafeName(QString::fromUtf8(name)) + u'$';
        truths.push_back(cells.value(QString::fromUtf8(name)));
    }
}

std::vector<CatalogEntry> XlsSource::Catalog() {
    std::vector<CatalogEntry> catalog;
    for (const QString& name : std::as_const(names)) catalog.push_back({{name, TableKind::Table, {}}, {}});
    return catalog;
}

template <typename Work>
void XlsSource::With(const QString& table, Work work) {
    const auto found = std::find_if(names.cbegin(), names.cend(), [&](const QString& name) {
        return table.startsWith(name, Qt::CaseInsensitive);
    });
    Area area;
    const bool isSheet = found != names.cend() && found->size() == table.size();
    if (found == names.cend() || (!isSheet && !ReadArea(QStringView(table).mid(found->size()), area)))
        throw ReadError{FailureKind::NoTable, QStringLiteral("it has no table %1").arg(table)};
    if (freexl_select_active_worksheet(workbook.get(), static_cast<unsigned short>(found - names.cbegin())) !=
        FREEXL_OK)
        ThrowDamaged(QStringLiteral("a sheet"));
    const TruthCells& truth = truths[std::size_t(found - names.cbegin())];
    if (area.LastColumn < 0) Measure(workbook.get(), truth, area);
    XlsSheet sheet(workbook.get(), truth);
    SheetTable rows(sheet, area, {hasHeads, mixedAsText, isSheet, true});
    work(rows);
}

QList<ColumnInfo> XlsSource::Columns(const QString& table) {
    QList<ColumnInfo> columns;
    With(table, [&](SheetTable& rows) { columns = rows.Columns(); });
    return columns;
}

void XlsSource::Rows(const QString& table, RowSink& into) {
    With(table, [&](SheetTable& rows) { rows.WriteRows(into); });
}

}  // namespace zephrin::reader::excel
