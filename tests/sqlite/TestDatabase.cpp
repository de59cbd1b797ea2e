#include "TestDatabase.h"

#include "platform/ado/providers/AllProviders.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace zephrin::ado::providers::sqlite::test {

TestDatabase::TestDatabase(const char* script, const QString& fileName) : path(folder.filePath(fileName)) {
    Run(script);
}

QString TestDatabase::ConnectionString(const QString& dialect) const {
    return QStringLiteral("Provider=SQLite;Dialect=%1;Data Source=%2").arg(dialect, path);
}

void TestDatabase::Run(const char* script) const {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, script, nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
}

std::unique_ptr<Connection> Connect(const TestDatabase& database, const QString& dialect,
                                    int commandTimeout) {
    auto connection = std::make_unique<Connection>(AllProviders());
    connection->SetCommandTimeout(commandTimeout);
    connection->Open(database.ConnectionString(dialect));
    return connection;
}

namespace {

QString Shown(const Error& error) {
    const QString at = error.Position() < 0 ? QString() : QStringLiteral("@%1").arg(error.Position());
    return QStringLiteral("! ") + error.Description() + at;
}

template <typename Column>
QString Columns(Connection& connection, const QString& statement, Column column) {
    try {
        const RecordsetPtr rows = connection.Execute(statement);
        QStringList columns;
        for (int index = 0; index < rows->FieldCount(); ++index) columns << column(rows->FieldAt(index));
        return columns.join(u'|');
    } catch (const Error& error) {
        return Shown(error);
    }
}

}  // namespace

QString Answer(Connection& connection, const QString& statement) {
    try {
        const RecordsetPtr rows = connection.Execute(statement);
        QStringList lines;
        for (qint64 row = 0; row < rows->RecordCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < rows->FieldCount(); ++column)
                cells << (rows->IsNullAt(row, column) ? QStringLiteral("~") : rows->TextAt(row, column));
            lines << cells.join(u'|');
        }
        return lines.join(QStringLiteral("; "));
    } catch (const Error& error) {
        return Shown(error);
    }
}

QString Names(Connection& connection, const QString& statement) {
    return Columns(connection, statement, [](const Field& field) { return field.Name; });
}

QString Types(Connection& connection, const QString& statement) {
    return Columns(connection, statement,
                   [](const Field& field) { return QString::number(int(field.Type)); });
}

}  // namespace zephrin::ado::providers::sqlite::test
