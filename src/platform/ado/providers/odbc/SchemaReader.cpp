#include "platform/ado/providers/odbc/SchemaReader.h"

#include "platform/ado/MemoryCursor.h"
#include "platform/ado/providers/odbc/Diagnostics.h"

#include <algorithm>
#include <array>

namespace zephrin::ado::odbc {

namespace {

using Row = MemoryCursor::Row;

/// Reads the text of the wanted columns of a schema result, row by row. These results are small, and each
/// driver has columns of its own behind the standard's.
std::vector<std::vector<std::optional<QString>>> ReadTexts(const Statement& statement,
                                                           std::initializer_list<SQLUSMALLINT> wanted,
                                                           const QString& driverName) {
    struct Place {
        std::array<SQLWCHAR, 1024> Text{};
        SQLLEN Length = SQL_NULL_DATA;
    };
    std::vector<Place> places(wanted.size());
    SQLSMALLINT columns = 0;
    SQLNumResultCols(statement.Handle(), &columns);
    size_t i = 0;
    for (const SQLUSMALLINT column : wanted) {
        Place& place = places[i++];
        // Drivers of the older standard have fewer columns; those stay Null.
        if (column > columns) continue;
        if (!SQL_SUCCEEDED(SQLBindCol(statement.Handle(), column, SQL_C_WCHAR, place.Text.data(),
                                      SQLLEN(sizeof place.Text), &place.Length)))
            FailStatement(statement, driverName);
    }
    std::vector<std::vector<std::optional<QString>>> rows;
    for (;;) {
        const SQLRETURN outcome = SQLFetch(statement.Handle());
        if (outcome == SQL_NO_DATA) return rows;
        CheckStatement(outcome, statement, driverName);
        auto& row = rows.emplace_back();
        for (const Place& place : places)
            row.push_back(place.Length == SQL_NULL_DATA ? std::nullopt
                                                        : std::optional(FromWide(place.Text.data())));
    }
}

/// Runs `read` on a new statement of the connection.
template <class Read>
auto OnStatement(Channel& channel, int timeout, Read read) {
    Allowance time(timeout);
    auto statement = channel.Run(time, nullptr,
                                 [link = channel.Connection()] { return std::make_shared<Statement>(link); });
    struct Releaser {
        Channel& Owner;
        std::shared_ptr<Statement>& Held;
        ~Releaser() { Owner.Release(std::move(Held)); }
    } const releaser{channel, statement};
    return channel.Run(time, statement, [statement, read = std::move(read)] { return read(*statement); });
}

QVariant TextOrNull(const std::optional<QString>& text) {
    return text ? QVariant(*text) : QVariant();
}

QList<Field> TableFields() {
    return {{QStringLiteral("TABLE_CATALOG"), DataType::VarWChar, 128},
            {QStringLiteral("TABLE_SCHEMA"), DataType::VarWChar, 128},
            {QStringLiteral("TABLE_NAME"), DataType::VarWChar, 255},
            {QStringLiteral("Table_Type"), DataType::VarWChar, 128}};
}

QList<Field> ColumnFields() {
    return {{QStringLiteral("TABLE_NAME"), DataType::VarWChar, 255},
            {QStringLiteral("COLUMN_NAME"), DataType::VarWChar, 255},
            {QStringLiteral("ORDINAL_POSITION"), DataType::Integer},
            {QStringLiteral("DATA_TYPE"), DataType::Integer},
            {QStringLiteral("CHARACTER_MAXIMUM_LENGTH"), DataType::Integer},
            {QStringLiteral("IS_NULLABLE"), DataType::Boolean}};
}

/// A column as SQLColumns tells it, with where its table stands.
struct ColumnRow {
    QString Owner;
    QString Table;
    int Ordinal = 0;
    ColumnInfo Info;
};

std::vector<ColumnRow> ReadColumnRows(const Statement& statement, const QString& table,
                                      const DriverTraits& traits, const QString& schema) {
    const QString pattern = EscapedPattern(table, traits.PatternEscape);
    if (!SQL_SUCCEEDED(SQLColumnsW(statement.Handle(), nullptr, 0,
                                   schema.isEmpty() ? nullptr : ToWide(schema), SQLSMALLINT(schema.size()),
                                   ToWide(pattern), SQLSMALLINT(pattern.size()), nullptr, 0)))
        FailStatement(statement, traits.DriverName);
    std::vector<ColumnRow> rows;
    // Catalog, schema, table, column, type, type name, size, digits, nullable, ordinal.
    for (const auto& cells : ReadTexts(statement, {1, 2, 3, 4, 5, 6, 7, 9, 11, 17}, traits.DriverName)) {
        ColumnRow row;
        row.Owner = cells[0].value_or(QString()) + QChar(0) + cells[1].value_or(QString());
        row.Table = cells[2].value_or(QString());
        row.Info.Name = cells[3].value_or(QString());
        row.Info.SqlType = SQLSMALLINT(cells[4].value_or(QString()).toInt());
        row.Info.TypeName = cells[5].value_or(QString());
        row.Info.Size = SQLULEN(std::max(0LL, cells[6].value_or(QString()).toLongLong()));
        row.Info.Digits = SQLSMALLINT(cells[7].value_or(QString()).toInt());
        row.Info.Nullable = cells[8].value_or(QStringLiteral("1")).toInt() != SQL_NO_NULLS;
        row.Ordinal = cells[9] ? cells[9]->toInt() : int(rows.size()) + 1;
        if (traits.LooseTypes) ApplyDeclaredType(row.Info);
        rows.push_back(std::move(row));
    }
    return rows;
}

/// Without an escape the pattern may have met other tables; a name in another case counts where none is
/// exact.
void KeepTable(std::vector<ColumnRow>& rows, const QString& table) {
    const bool exact =
        std::any_of(rows.begin(), rows.end(), [&](const ColumnRow& row) { return row.Table == table; });
    const Qt::CaseSensitivity as = exact ? Qt::CaseSensitive : Qt::CaseInsensitive;
    std::erase_if(rows, [&](const ColumnRow& row) { return row.Table.compare(table, as) != 0; });
}

/// Each owner's table by itself, in the order in which the owners came.
void SortByOrdinal(std::vector<ColumnRow>& rows) {
    QStringList owners;
    for (const ColumnRow& row : rows)
        if (!owners.contains(row.Owner)) owners << row.Owner;
    std::stable_sort(rows.begin(), rows.end(), [&owners](const ColumnRow& a, const ColumnRow& b) {
        if (a.Owner != b.Owner) return owners.indexOf(a.Owner) < owners.indexOf(b.Owner);
        return a.Ordinal < b.Ordinal;
    });
}

bool IsSystemSchema(const QString& schema) {
    for (const char* name : {"information_schema", "sys", "pg_catalog", "pg_toast"})
        if (schema.compare(QLatin1StringView(name), Qt::CaseInsensitive) == 0) return true;
    return false;
}

}  // namespace

QString NormalTableType(const QString& driversWord, const QString& schema) {
    QString word = driversWord.trimmed().toUpper();
    if (word == QLatin1StringView("BASE TABLE") || word == QLatin1StringView("FOREIGN TABLE") ||
        word == QLatin1StringView("PARTITIONED TABLE"))
        word = QStringLiteral("TABLE");
    if (word == QLatin1StringView("MATVIEW") || word == QLatin1StringView("MATERIALIZED VIEW"))
        word = QStringLiteral("VIEW");
    const bool plain = word == QLatin1StringView("TABLE") || word == QLatin1StringView("VIEW");
    return plain && IsSystemSchema(schema) ? QStringLiteral("SYSTEM ") + word : word;
}

QString EscapedPattern(const QString& name, const QString& escape) {
    if (escape.isEmpty()) return name;
    QString pattern;
    for (const QChar c : name) {
        if (QStringView(escape).startsWith(c)) {
            // Drivers differ on an escaped escape, so it is asked for as any one character; the rows are
            // sifted by name.
            pattern += u'_';
            continue;
        }
        if (c == u'_' || c == u'%') pattern += escape;
        pattern += c;
    }
    return pattern;
}

std::unique_ptr<Cursor> ReadTables(Channel& channel, int timeout) {
    auto rows =
        OnStatement(channel, timeout, [name = channel.Traits().DriverName](const Statement& statement) {
            if (!SQL_SUCCEEDED(
                    SQLTablesW(statement.Handle(), nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0)))
                FailStatement(statement, name);
            std::vector<Row> found;
            for (const auto& cells : ReadTexts(statement, {1, 2, 3, 4}, name))
                found.push_back(
                    {TextOrNull(cells[0]), TextOrNull(cells[1]), TextOrNull(cells[2]),
                     NormalTableType(cells[3].value_or(QString()), cells[1].value_or(QString()))});
            return found;
        });
    return std::make_unique<MemoryCursor>(TableFields(), std::move(rows));
}

std::unique_ptr<Cursor> ReadColumns(Channel& channel, const QString& table, int timeout) {
    std::vector<ColumnRow> columns;
    // Without a schema some drivers look only where a bare name would be found; then all schemas are asked.
    for (const QString& schema : {QString(), QStringLiteral("%")}) {
        columns = OnStatement(channel, timeout,
                              [traits = channel.Traits(), table, schema](const Statement& statement) {
                                  return ReadColumnRows(statement, table, traits, schema);
                              });
        KeepTable(columns, table);
        if (!columns.empty()) break;
    }
    SortByOrdinal(columns);
    std::vector<Row> rows;
    for (const ColumnRow& column : columns) {
        const Field field = ToField(column.Info);
        rows.push_back({column.Table, column.Info.Name, column.Ordinal, int(field.Type),
                        field.DefinedSize > 0 ? QVariant(field.DefinedSize) : QVariant(),
                        column.Info.Nullable});
    }
    return std::make_unique<MemoryCursor>(ColumnFields(), std::move(rows));
}

}  // namespace zephrin::ado::odbc
