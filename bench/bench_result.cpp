// Opening and sorting a result of a million rows, as ratios to what any program would have to do at least:
// the engine's own fetch loop into flat arrays, and a stable sort of an index over bare values.

#include "bench/Measure.h"
#include "bench/ResultData.h"
#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQueryModel>
#include <QTemporaryDir>

#include <cstdint>
#include <cstring>
#include <numeric>
#include <sqlite3.h>
#include <string>

namespace zephrin::bench {
namespace {

constexpr int Rows = 1'000'000;
constexpr double Cells = double{Rows} * ResultColumns;
constexpr int Runs = 5;
constexpr const char* Statement = "SELECT * FROM Sales";

/// One column of the raw loop: a tag, eight bytes, and where they are an offset the text behind it.
struct FlatColumn {
    std::vector<std::uint8_t> Tags;
    std::vector<std::uint64_t> Values;
    std::vector<char> Texts;

    void Append(sqlite3_stmt* row, int column) {
        const int type = sqlite3_column_type(row, column);
        std::uint64_t value = 0;
        if (type == SQLITE_INTEGER) value = static_cast<std::uint64_t>(sqlite3_column_int64(row, column));
        if (type == SQLITE_FLOAT) {
            const double number = sqlite3_column_double(row, column);
            std::memcpy(&value, &number, sizeof value);
        }
        if (type == SQLITE_TEXT) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
            value = Texts.size();
            Texts.insert(Texts.end(), text, text + sqlite3_column_bytes(row, column));
        }
        Tags.push_back(static_cast<std::uint8_t>(type));
        Values.push_back(value);
    }
};

std::vector<FlatColumn> RawLoop(const QString& path) {
    std::vector<FlatColumn> columns(ResultColumns);
    sqlite3* database = nullptr;
    sqlite3_open_v2(path.toUtf8().constData(), &database, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX,
                    nullptr);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, Statement, -1, &statement, nullptr);
    while (sqlite3_step(statement) == SQLITE_ROW)
        for (int column = 0; column < ResultColumns; ++column)
            columns[static_cast<std::size_t>(column)].Append(statement, column);
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return columns;
}

ado::RecordsetPtr OpenResult(const QString& path) {
    ado::Connection connection(ado::providers::AllProviders());
    connection.Open(QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=%1;Mode=Read").arg(path));
    return connection.Execute(QString::fromLatin1(Statement));
}

/// The same with somebody who is asked meanwhile, as the wizard is.
void OpenWatched(const QString& path) {
    ado::Connection connection(ado::providers::AllProviders());
    connection.SetWatcher([](const ado::Progress&) { return true; });
    connection.Open(QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=%1;Mode=Read").arg(path));
    connection.Execute(QString::fromLatin1(Statement));
}

void FillModel(const QString& path) {
    const QString name = QStringLiteral("model");
    {
        auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(path);
        database.open();
        QSqlQueryModel model;
        model.setQuery(QString::fromLatin1(Statement), database);
        while (model.canFetchMore()) model.fetchMore();
        if (model.rowCount() != Rows) std::printf("  the model has %d rows\n", model.rowCount());
    }
    QSqlDatabase::removeDatabase(name);
}

void MeasureOpening(const QString& path) {
    std::vector<double> raw, ours, watched, theirs;
    qint64 bytes = 0;
    // In turns, so that a busy moment of the machine falls on all.
    for (int run = 0; run < Runs; ++run) {
        raw.push_back(Seconds([&] { RawLoop(path); }));
        ours.push_back(Seconds([&] { bytes = OpenResult(path)->MemoryUsage(); }));
        watched.push_back(Seconds([&] { OpenWatched(path); }));
        theirs.push_back(Seconds([&] { FillModel(path); }));
    }
    const double model = Median(theirs);
    const double base = Median(raw);
    std::printf("Opening %d rows by %d columns (ratio to the raw loop)\n", Rows, ResultColumns);
    PrintRow("raw fetch loop into flat arrays", base, base);
    PrintRow("recordset", Median(ours), base, "wanted: at most 1.30");
    PrintRow("recordset, somebody asked whether to go on", Median(watched), Median(ours),
             "of the recordset; wanted: at most 1.02");
    PrintRow("Qt's query model fetched to its end", model, base);
    std::printf("  the model's time over the recordset's: %.2f   wanted: at least 2.50\n",
                model / Median(ours));
    std::printf("  bytes a cell: %.1f   wanted: at most 22\n\n", static_cast<double>(bytes) / Cells);
}

template <class Value>
double SortIndex(const std::vector<Value>& values) {
    std::vector<std::uint32_t> index(values.size());
    std::iota(index.begin(), index.end(), 0U);
    return Seconds([&] {
        std::stable_sort(index.begin(), index.end(),
                         [&](std::uint32_t a, std::uint32_t b) { return values[a] < values[b]; });
    });
}

template <class Value, class Read>
void MeasureSort(const ado::RecordsetPtr& rows, const char* column, Read read) {
    const QString name = QString::fromLatin1(column);
    const int field = rows->FieldIndex(name);
    std::vector<Value> values;
    for (qint64 row = 0; row < rows->RecordCount(); ++row) values.push_back(read(rows->ValueAt(row, field)));
    std::vector<double> bare, ascending, descending;
    for (int run = 0; run < Runs; ++run) {
        bare.push_back(SortIndex(values));
        const ado::RecordsetPtr clone = rows->Clone();
        ascending.push_back(Seconds([&] { clone->SetSort(name); }));
        const ado::RecordsetPtr other = rows->Clone();
        descending.push_back(Seconds([&] { other->SetSort(name + QStringLiteral(" DESC")); }));
    }
    const double base = Median(bare);
    std::printf("Sorting by %s (ratio to a stable sort of an index over bare values)\n", column);
    PrintRow("stable sort of an index", base, base);
    PrintRow("recordset, ascending", Median(ascending), base, "wanted: at most 1.50");
    PrintRow("recordset, descending", Median(descending), base, "wanted: at most 1.50");
}

int Main() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sales.db"));
    MakeSales(path, Rows);
    MeasureOpening(path);
    const ado::RecordsetPtr rows = OpenResult(path);
    MeasureSort<std::int64_t>(rows, "Quantity", [](const QVariant& value) { return value.toLongLong(); });
    MeasureSort<double>(rows, "Price", [](const QVariant& value) { return value.toDouble(); });
    MeasureSort<std::string>(rows, "Customer",
                             [](const QVariant& value) { return value.toString().toStdString(); });
    MeasureSort<std::string>(rows, "City",
                             [](const QVariant& value) { return value.toString().toStdString(); });
    return 0;
}

}  // namespace
}  // namespace zephrin::bench

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return zephrin::bench::Main();
}
