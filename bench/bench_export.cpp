// A result of a million rows by eight columns written to a workbook: the export against a bare loop over a
// well-known writing library that keeps its memory constant, both over the same values, which cost nothing to
// come by.

#include "bench/Measure.h"
#include "platform/ado/ColumnStore.h"
#include "platform/excel/WorkbookFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <xlsxwriter.h>

namespace zephrin::bench {
namespace {

constexpr qint64 Rows = 1'000'000;
constexpr int Columns = 8;

/// Three numbers and five texts a row, as both writers get them.
struct Row {
    std::int64_t Id;
    int Quantity;
    double Price;
    char Texts[5][24];
};

Row MakeRow(qint64 index) {
    Row row{index, static_cast<int>(index % 97), static_cast<double>(index % 10'000) / 4, {}};
    std::snprintf(row.Texts[0], sizeof row.Texts[0], "Customer %d", static_cast<int>(index % 5000));
    std::snprintf(row.Texts[1], sizeof row.Texts[1], "City %d", static_cast<int>(index % 300));
    std::snprintf(row.Texts[2], sizeof row.Texts[2], "P-%06d", static_cast<int>(index % 100'000));
    std::snprintf(row.Texts[3], sizeof row.Texts[3], "%s", index % 3 ? "open" : "delivered");
    std::snprintf(row.Texts[4], sizeof row.Texts[4], "2024-%02d-%02d", static_cast<int>(index % 12) + 1,
                  static_cast<int>(index % 28) + 1);
    return row;
}

class Source : public excel::RowSource {
 public:
    std::unique_ptr<ado::Cursor> Run(const QString&) override { return std::make_unique<Cursor>(); }
    bool Proceed(qint64) override { return true; }

 private:
    class Cursor : public ado::Cursor {
     public:
        Cursor() {
            for (int column = 0; column < Columns; ++column)
                fields.append(ado::Field{QStringLiteral("Column %1").arg(column + 1)});
        }
        const QList<ado::Field>& Fields() const override { return fields; }
        qint64 Fetch(ado::ColumnStore& into, qint64 maxRows) override {
            const qint64 count = std::min(maxRows, Rows - at);
            for (qint64 each = 0; each < count; ++each) {
                const Row row = MakeRow(at++);
                into.AppendInt(0, row.Id);
                into.AppendInt(1, row.Quantity);
                into.AppendDouble(2, row.Price);
                for (int text = 0; text < 5; ++text)
                    into.AppendText(3 + text, row.Texts[text],
                                    static_cast<qsizetype>(qstrlen(row.Texts[text])));
            }
            into.EndRows(count);
            return count;
        }

     private:
        QList<ado::Field> fields;
        qint64 at = 0;
    };
};

void Ours(const QString& folder) {
    Source source;
    excel::WorkbookFile book(source, folder, {});
    book.AddWorkbook();
    const int table =
        book.AddQueryTable(book.ActiveSheet(), QStringLiteral("OLEDB;Provider=x"), QStringLiteral("A1"));
    book.SetQuerySql(table, QStringLiteral("SELECT"));
    book.Refresh(table);
    book.SetVisible(true);
}

void Theirs(const QString& path) {
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    lxw_workbook* book = workbook_new_opt(QFile::encodeName(path).constData(), &options);
    lxw_worksheet* sheet = workbook_add_worksheet(book, nullptr);
    for (qint64 index = 0; index < Rows; ++index) {
        const Row row = MakeRow(index);
        const auto at = static_cast<lxw_row_t>(index);
        worksheet_write_number(sheet, at, 0, static_cast<double>(row.Id), nullptr);
        worksheet_write_number(sheet, at, 1, row.Quantity, nullptr);
        worksheet_write_number(sheet, at, 2, row.Price, nullptr);
        for (int text = 0; text < 5; ++text)
            worksheet_write_string(sheet, at, static_cast<lxw_col_t>(3 + text), row.Texts[text], nullptr);
    }
    workbook_close(book);
}

/// The most memory that the process has held so far, in KiB.
long PeakMemory() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').first().toLong();
    return 0;
}

void Main() {
    const QTemporaryDir folder;
    std::printf("Export of %lld rows by %d columns\n", Rows, Columns);
    const long before = PeakMemory();
    const double ours = Seconds([&] { Ours(folder.path()); });
    const long used = PeakMemory() - before;
    const double theirs = Seconds([&] { Theirs(folder.filePath(QStringLiteral("bare.xlsx"))); });
    PrintRow("workbook with query table", ours, ours);
    PrintRow("bare loop, constant memory", theirs, ours, "at least 3");
    std::printf("  %-52s %8.1f MiB above the program's own, at most 32\n", "peak memory of the export",
                static_cast<double>(used) / 1024);
}

}  // namespace
}  // namespace zephrin::bench

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    zephrin::bench::Main();
}
