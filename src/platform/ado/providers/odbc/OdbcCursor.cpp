#include "platform/ado/providers/odbc/OdbcCursor.h"

#include "platform/ado/providers/odbc/Diagnostics.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace zephrin::ado::odbc {

struct OdbcCursor::Running {
    std::shared_ptr<Statement> Handle;
    std::vector<ColumnInfo> Columns;
    // Behind the handle, and so destroyed before it: nothing is fetched any more by then.
    std::optional<RowBatch> Batch;
};

namespace {

std::shared_ptr<Statement> NewStatement(std::shared_ptr<Link> link, const QString& driverName) {
    const SQLHDBC connection = link->Handle();
    auto statement = std::make_shared<Statement>(std::move(link));
    if (!statement->Handle()) throw DriverFailure(ReadDiagnostics(SQL_HANDLE_DBC, connection), driverName);
    return statement;
}

/// Only asked for: a driver may refuse, or agree and do nothing.
void PutLimits(SQLHSTMT statement, const ExecuteOptions& options) {
    if (options.CommandTimeout > 0)
        SQLSetStmtAttr(statement, SQL_ATTR_QUERY_TIMEOUT, AsPointer(SQLULEN(options.CommandTimeout)), 0);
    // Drivers hold this number in 32 bits; a limit beyond them is held by the batch alone.
    if (options.MaxRecords > 0 && options.MaxRecords <= std::numeric_limits<SQLINTEGER>::max())
        SQLSetStmtAttr(statement, SQL_ATTR_MAX_ROWS, AsPointer(SQLULEN(options.MaxRecords)), 0);
}

SQLLEN NumericAttribute(SQLHSTMT statement, SQLUSMALLINT column, SQLUSMALLINT attribute) {
    SQLLEN value = 0;
    SQLColAttributeW(statement, column, attribute, nullptr, 0, nullptr, &value);
    return value;
}

/// A column's text attribute; nothing where the driver doesn't have it.
std::optional<QString> TextAttribute(SQLHSTMT statement, SQLUSMALLINT column, SQLUSMALLINT attribute) {
    std::array<SQLWCHAR, 1024> text{};
    SQLSMALLINT bytes = 0;
    if (!SQL_SUCCEEDED(SQLColAttributeW(statement, column, attribute, text.data(), SQLSMALLINT(sizeof text),
                                        &bytes, nullptr)))
        return std::nullopt;
    return FromWide(text.data());
}

ColumnInfo Describe(const Statement& statement, SQLUSMALLINT number, const DriverTraits& traits) {
    const SQLHSTMT handle = statement.Handle();
    ColumnInfo column;
    std::array<SQLWCHAR, 1024> name{};
    SQLSMALLINT length = 0;
    SQLSMALLINT nullable = SQL_NULLABLE_UNKNOWN;
    if (!SQL_SUCCEEDED(SQLDescribeColW(handle, number, name.data(), SQLSMALLINT(name.size()), &length,
                                       &column.SqlType, &column.Size, &column.Digits, &nullable)))
        FailStatement(statement, traits.DriverName);
    // The name of an expression is cut at a dot by some drivers, its label is whole.
    column.Name = TextAttribute(handle, number, SQL_DESC_LABEL).value_or(FromWide(name.data()));
    column.TypeName = TextAttribute(handle, number, SQL_DESC_TYPE_NAME).value_or(QString());
    column.Nullable = nullable != SQL_NO_NULLS;
    column.Unsigned = NumericAttribute(handle, number, SQL_DESC_UNSIGNED) == SQL_TRUE;
    column.Money = column.TypeName.endsWith(QLatin1StringView("money"), Qt::CaseInsensitive) &&
                   (column.SqlType == SQL_DECIMAL || column.SqlType == SQL_NUMERIC);
    // "Size unknown" is -1 in some drivers.
    if (SQLLEN(column.Size) < 0) column.Size = 0;
    if (traits.LooseTypes) ApplyDeclaredType(column);
    return column;
}

/// The number of columns of the first result set that has any; 0 where none has. What the others say is
/// passed over.
SQLSMALLINT FirstColumns(const Statement& statement, const QString& driverName) {
    for (;;) {
        SQLSMALLINT columns = 0;
        CheckStatement(SQLNumResultCols(statement.Handle(), &columns), statement, driverName);
        if (columns > 0) return columns;
        const SQLRETURN outcome = SQLMoreResults(statement.Handle());
        if (outcome == SQL_NO_DATA) return 0;
        if (!SQL_SUCCEEDED(outcome) && LacksFunction(statement)) return 0;
        CheckStatement(outcome, statement, driverName);
    }
}

std::vector<ColumnInfo> ExecuteAndDescribe(const Statement& statement, const QString& text,
                                           const ExecuteOptions& options, const DriverTraits& traits) {
    PutLimits(statement.Handle(), options);
    const SQLRETURN outcome = SQLExecDirectW(statement.Handle(), ToWide(text), SQLINTEGER(text.size()));
    // An update that met no row is "no data", and a success.
    if (outcome != SQL_NO_DATA) CheckStatement(outcome, statement, traits.DriverName);
    std::vector<ColumnInfo> columns;
    const SQLSMALLINT count = FirstColumns(statement, traits.DriverName);
    for (SQLSMALLINT i = 1; i <= count; ++i) columns.push_back(Describe(statement, SQLUSMALLINT(i), traits));
    return columns;
}

}  // namespace

OdbcCursor::OdbcCursor(std::shared_ptr<Channel> itsChannel)
    : channel(std::move(itsChannel)), running(std::make_shared<Running>()) {}

void OdbcCursor::Execute(const QString& statement, const ExecuteOptions& options) {
    time = Allowance(options.CommandTimeout);
    const DriverTraits& traits = channel->Traits();
    running->Handle = channel->Run(time, nullptr, [link = channel->Connection(), name = traits.DriverName] {
        return NewStatement(link, name);
    });
    channel->Run(time, running->Handle, [running = running, statement, options, traits] {
        running->Columns = ExecuteAndDescribe(*running->Handle, statement, options, traits);
        if (running->Columns.empty()) return;
        running->Batch.emplace(running->Columns, traits, options.MaxRecords);
        running->Batch->Bind(*running->Handle);
    });
    for (const ColumnInfo& column : running->Columns) fields.append(ToField(column));
}

OdbcCursor::~OdbcCursor() {
    channel->Release(std::move(running));
}

qint64 OdbcCursor::RowsLeft() const {
    return running->Batch->RowCount() - taken;
}

qint64 OdbcCursor::Fetch(ColumnStore& into, qint64 maxRows) {
    if (!running->Batch) return 0;
    qint64 fetched = 0;
    while (fetched < maxRows) {
        if (RowsLeft() == 0) {
            if (running->Batch->AtEnd()) break;
            taken = 0;
            channel->Run(time, running->Handle,
                         [running = running] { running->Batch->Fill(*running->Handle); });
            continue;
        }
        const qint64 count = std::min(RowsLeft(), maxRows - fetched);
        reader.Append(*running->Batch, taken, count, into);
        taken += count;
        fetched += count;
    }
    return fetched;
}

}  // namespace zephrin::ado::odbc
