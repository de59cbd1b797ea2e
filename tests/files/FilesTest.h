#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"
#include "sqlite/TestDatabase.h"
#include "support/SharedData.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zephrin::ado::files::test {

using providers::sqlite::test::Answer;
using providers::sqlite::test::Types;

/// The tests run the reader of this build.
class FilesTest : public testing::Test {
 protected:
    FilesTest() { qputenv("ZEPHRIN_FILE_READER", ZEPHRIN_READER); }

    static std::unique_ptr<Connection> Open(const QString& connectionString, int seconds = 30) {
        auto connection = std::make_unique<Connection>(providers::AllProviders());
        connection->SetConnectionTimeout(seconds);
        connection->SetCommandTimeout(seconds);
        connection->Open(connectionString);
        return connection;
    }
    static std::unique_ptr<Connection> OpenDatabase(const QString& path) {
        return Open(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=%1").arg(path));
    }
    /// What opening says, or what the statement answers.
    static QString Outcome(const QString& connectionString, const QString& statement = {}) {
        try {
            const auto connection = Open(connectionString);
            return statement.isEmpty() ? QStringLiteral("open") : Answer(*connection, statement);
        } catch (const Error& error) {
            return QStringLiteral("! ") + error.Description();
        }
    }
    /// The folder of real files; empty where there is none.
    static QString SharedFolder() { return zephrin::test::SharedFolder(QStringLiteral("access")); }
    /// The workbook of make_workbook.py.
    static bool MakeWorkbook(const QString& path) {
        QProcess python;
        python.start(QStringLiteral(ZEPHRIN_PYTHON), {QStringLiteral(ZEPHRIN_MAKE_WORKBOOK), path});
        return python.waitForFinished() && python.exitCode() == 0;
    }
    void Write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
};

}  // namespace zephrin::ado::files::test
