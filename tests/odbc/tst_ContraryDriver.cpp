#include "PostgresServer.h"
#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"

#include <zephrin/ado/Error.h>

#include <QElapsedTimer>

#include <functional>
#include <gtest/gtest.h>

namespace zephrin {
namespace {

using ado::Connection;
using ado::Error;
namespace ErrorNumber = ado::ErrorNumber;

/// A driver that hangs, lies and lacks functions, and servers that don't answer.
class ContraryDriver : public testing::Test {
 protected:
    void Open(const char* keywords = "") {
        connection.Open(QStringLiteral("Driver=%1;%2")
                            .arg(QStringLiteral(ZEPHRIN_CONTRARY_DRIVER), QLatin1StringView(keywords)));
    }
    Error FailureOf(const std::function<void()>& action) {
        taken.start();
        try {
            action();
        } catch (const Error& error) {
            return error;
        }
        ADD_FAILURE() << "nothing failed";
        return Error(0, {});
    }
    Error FailureOf(const char* statement) {
        return FailureOf([this, statement] { connection.Execute(QLatin1StringView(statement)); });
    }

    Connection connection{ado::providers::AllProviders()};
    QElapsedTimer taken;
};

TEST_F(ContraryDriver, GivesWhatADriverOfFewFunctionsHas) {
    Open();
    const ado::RecordsetPtr rows = connection.Execute(QStringLiteral("types"));
    ASSERT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->FieldAt(1).Type, ado::DataType::VarWChar) << "a type that nobody mapped is text";
    for (qint64 row = 0; row < 3; ++row) {
        EXPECT_EQ(rows->ValueAt(row, 0), QVariant(42));
        EXPECT_EQ(rows->TextAt(row, 1), QStringLiteral("unmapped"));
        EXPECT_EQ(rows->TextAt(row, 2), QStringLiteral("a\uFFFDb")) << "half a character";
        EXPECT_TRUE(rows->IsNullAt(row, 3));
        EXPECT_EQ(rows->ValueAt(row, 4).toString(), QString(100'000, u'x') + QStringLiteral("end"));
        EXPECT_EQ(rows->ValueAt(row, 5), QVariant(43));
        EXPECT_TRUE(rows->IsNullAt(row, 6));
    }
    EXPECT_EQ(connection.Execute(QStringLiteral("no columns"))->FieldCount(), 0);
    EXPECT_NE(FailureOf([this] { connection.OpenSchema(ado::Schema::Tables); }).Description(), QString());
}

TEST_F(ContraryDriver, NumbersErrorsSoThatTheCallerIsNotMisled) {
    Open();
    EXPECT_EQ(FailureOf("3704").Number(), ErrorNumber::ProviderFailed)
        << "a server's 3704 is no closed object";
    EXPECT_EQ(FailureOf("3704").Description(), QStringLiteral("[Contrary]no permission"));
    EXPECT_FALSE(FailureOf("silent").Description().isEmpty());
    EXPECT_EQ(FailureOf("fetch").Number(), 5) << "a failure in the middle of the rows";
    EXPECT_NE(FailureOf("lie").Number(), 0) << "a cell that can't be had whole is no cell";
    EXPECT_EQ(FailureOf("lost").Number(), ErrorNumber::InvalidConnection);
    EXPECT_EQ(FailureOf("types").Number(), ErrorNumber::InvalidConnection) << "and stays lost";
    connection.Close();
    EXPECT_EQ(FailureOf([this] { Open("Do=refuse"); }).Number(), ErrorNumber::ProviderFailed);
    EXPECT_EQ(connection.State(), ado::ObjectState::Closed);
}

TEST_F(ContraryDriver, TellsOfAStatementThatFailsInTheMiddleOfItsRows) {
    Open("Do=blocks");
    EXPECT_EQ(connection.Execute(QStringLiteral("warned"))->RecordCount(), 3) << "warnings are no failure";
    const Error error = FailureOf("middle");
    EXPECT_EQ(error.Number(), 8134);
    EXPECT_EQ(error.Description(), QStringLiteral("[Contrary]divided by zero"));
    EXPECT_EQ(connection.Execute(QStringLiteral("warned"))->RecordCount(), 3) << "the connection lives on";
}

TEST_F(ContraryDriver, IsLeftBehindWhereItHangs) {
    connection.SetConnectionTimeout(1);
    EXPECT_EQ(FailureOf([this] { Open("Do=hang"); }).Number(), ErrorNumber::TimeoutExpired);
    EXPECT_LT(taken.elapsed(), 5'000) << "the driver would have come back after 6 seconds";
    for (const char* statement : {"hang", "hang both"}) {
        Open();
        connection.SetCommandTimeout(1);
        EXPECT_EQ(FailureOf(statement).Number(), ErrorNumber::TimeoutExpired) << statement;
        EXPECT_LT(taken.elapsed(), 5'500) << statement;
        EXPECT_EQ(FailureOf("types").Number(), ErrorNumber::InvalidConnection) << "no further call waits";
        connection.Close();
    }
    Open();
    EXPECT_EQ(connection.Execute(QStringLiteral("types"))->RecordCount(), 3) << "others are not held up";
}

TEST_F(ContraryDriver, CountsTheWholeStatementAgainstTheTimeOut) {
    Open();
    connection.SetCommandTimeout(1);
    EXPECT_EQ(FailureOf("slow").Number(), ErrorNumber::TimeoutExpired) << "each batch of rows is fast enough";
    EXPECT_EQ(connection.Execute(QStringLiteral("types"))->RecordCount(), 3) << "the driver came back";
    const Error error = FailureOf("timeout");
    EXPECT_EQ(error.Number(), ErrorNumber::TimeoutExpired) << "also where it takes the connection along";
    EXPECT_EQ(error.Description(), QStringLiteral("[Contrary]timed out, and then broke down"));
    EXPECT_EQ(FailureOf("types").Number(), ErrorNumber::InvalidConnection);
}

TEST_F(ContraryDriver, IsStoppedOrLeftBehind) {
    connection.SetWatcher([](const ado::Progress& progress) { return progress.Elapsed < 200; });
    EXPECT_EQ(FailureOf([this] { Open("Do=hang"); }).Number(), ErrorNumber::OperationCancelled);
    const struct {
        const char* Statement;
        bool Usable;
    } rows[] = {{"slow", true}, {"hang", false}, {"hang both", false}};
    for (const auto& row : rows) {
        Open();
        const Error error = FailureOf(row.Statement);
        EXPECT_EQ(error.Number(), ErrorNumber::OperationCancelled) << row.Statement;
        EXPECT_EQ(error.Description().contains(QStringLiteral("given up")), !row.Usable) << row.Statement;
        EXPECT_LT(taken.elapsed(), 5'500) << row.Statement;
        if (row.Usable) {
            EXPECT_EQ(connection.Execute(QStringLiteral("types"))->RecordCount(), 3);
        } else {
            EXPECT_EQ(FailureOf("types").Number(), ErrorNumber::InvalidConnection) << row.Statement;
        }
        connection.Close();
    }
}

TEST_F(ContraryDriver, TimesOutOnServersThatNeverAnswer) {
    const test::MuteServer mute;
    connection.SetConnectionTimeout(1);
    for (const char* driver : {"FreeTDS", "PostgreSQL Unicode"}) {
        const Error error = FailureOf([&] {
            connection.Open(QStringLiteral("Driver={%1};Server=127.0.0.1;Port=%2;Database=d;UID=u;PWD=p")
                                .arg(QLatin1StringView(driver))
                                .arg(mute.Port()));
        });
        if (error.Description().contains(QStringLiteral("not installed"))) GTEST_SKIP() << error.what();
        EXPECT_NE(error.Number(), 0) << driver;
        EXPECT_LT(taken.elapsed(), 15'000) << driver;
        EXPECT_EQ(error.Source(), QLatin1StringView(driver));
    }
}

}  // namespace
}  // namespace zephrin
