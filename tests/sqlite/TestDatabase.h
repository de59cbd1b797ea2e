#pragma once

#include "platform/ado/Connection.h"

#include <QTemporaryDir>

#include <ostream>

/// Shows a text as a text where a comparison fails.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace zephrin::ado::providers::sqlite::test {

/// A real file in a scratch folder, made by a script in SQLite's own language.
class TestDatabase {
 public:
    explicit TestDatabase(const char* script, const QString& fileName = QStringLiteral("test.db"));

    QString Path() const { return path; }
    QString ConnectionString(const QString& dialect) const;
    /// Runs SQLite's own language on the file, past the provider.
    void Run(const char* script) const;

 private:
    QTemporaryDir folder;
    QString path;
};

/// An open connection to the file in a dialect.
std::unique_ptr<Connection> Connect(const TestDatabase& database, const QString& dialect,
                                    int commandTimeout = 0);

/// The result as one text: cells separated by "|", rows by "; ", Null as "~". An error is "! " and its text,
/// with "@" and the position behind where it has one.
QString Answer(Connection& connection, const QString& statement);

/// The names of the result's columns, separated by "|".
QString Names(Connection& connection, const QString& statement);

/// The type codes of the result's columns, separated by "|".
QString Types(Connection& connection, const QString& statement);

}  // namespace zephrin::ado::providers::sqlite::test
