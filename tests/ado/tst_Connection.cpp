#include "Failing.h"
#include "FakeProvider.h"

#include <gtest/gtest.h>

namespace zephrin::ado {
namespace {

using test::DescriptionOf;
using test::FakeServer;
using test::NumberOf;

class ConnectionTest : public testing::Test {
 protected:
    ConnectionTest() {
        server.Rows.Fields = {Field{u"N"_qs, DataType::BigInt}, Field{u"n"_qs, DataType::Double}};
        server.Rows.Count = 10'000;
        server.Rows.Cell = [](qint64 row, int column) {
            return column == 0 ? QVariant(row) : QVariant(double(row) / 2);
        };
    }
    FakeServer server;
    Connection connection{test::FakeProviders(server)};
};

TEST_F(ConnectionTest, StateAndNumbers) {
    Recordset rs;
    const struct {
        const char* What;
        int Number;
        std::function<void()> Do;
    } steps[] = {
        {"close unopened", 3704, [&] { connection.Close(); }},
        {"statement while closed", 3709, [&] { connection.Execute(u"x"_qs); }},
        {"recordset while closed", 3709, [&] { rs.Open(u"x"_qs, connection); }},
        {"schema while closed", 3709, [&] { connection.OpenSchema(Schema::Tables); }},
        {"time-out below nothing", 3001, [&] { connection.SetConnectionTimeout(-1); }},
        {"command time-out below nothing", 3001, [&] { connection.SetCommandTimeout(-1); }},
        {"no string", 3706, [&] { connection.Open(); }},
        {"unknown provider", 3706, [&] { connection.Open(u"Provider=Nobody;Data Source=x"_qs); }},
        {"open", 0, [&] { connection.Open(u"Provider=Fake;PWD=hush1"_qs); }},
        {"open twice", 3705, [&] { connection.Open(); }},
        {"string while open", 3705, [&] { connection.SetConnectionString(u"x"_qs); }},
        {"time-out while open", 3705, [&] { connection.SetConnectionTimeout(1); }},
        {"command time-out while open", 0, [&] { connection.SetCommandTimeout(7); }},
        {"provider's own number", 170, [&] { rs.Open(u"nonsense"_qs, connection); }},
        {"statement", 0, [&] { rs.Open(u"good"_qs, connection); }},
        {"open recordset", 3705, [&] { rs.Open(u"good"_qs, connection); }},
        {"lost", 3709, [&] { server.Alive = false, connection.Execute(u"good"_qs); }},
        {"close", 0, [&] { connection.Close(); }},
    };
    for (const auto& step : steps) EXPECT_EQ(NumberOf(step.Do), step.Number) << step.What;
    EXPECT_EQ(connection.ConnectionString(), u"Provider=Fake;PWD=hush1"_qs);
    EXPECT_EQ(server.LastOptions.CommandTimeout, 7);
    EXPECT_EQ(server.Statements, (QStringList{u"nonsense"_qs, u"good"_qs}));
    EXPECT_EQ(rs.RecordCount(), 10'000) << "rows outlive their connection";
}

TEST_F(ConnectionTest, ErrorsNameTheProviderAndKeepPasswords) {
    EXPECT_EQ(DescriptionOf([&] { connection.Open(u"provider = 'My;Db' ; Password=hush1"_qs); }),
              u"Provider 'My;Db' cannot be found. It may not be properly installed."_qs);
    EXPECT_FALSE(DescriptionOf([&] { connection.Open(u"Password=hush1"_qs); }).contains(u"hush1"_qs));

    server.OpenFailure = u"Login failed for 'Provider=Fake;UID=me;PWD={hush;1}' with hush;1 or hush2"_qs;
    EXPECT_EQ(DescriptionOf(
                  [&] { connection.Open(u"Provider=Fake;UID=me;PWD={hush;1}"_qs, u"me"_qs, u"hush2"_qs); }),
              u"Login failed for 'Provider=Fake;UID=me;PWD=***' with *** or ***"_qs);
    EXPECT_EQ(server.LastOpening.Password, u"hush2"_qs);
    EXPECT_EQ(connection.State(), ObjectState::Closed);
}

TEST_F(ConnectionTest, RowsAreFetchedInOrderAndReadOnly) {
    connection.Open(u"Provider=Fake"_qs);
    const RecordsetPtr rs = connection.Execute(u"good"_qs);
    ASSERT_EQ(rs->RecordCount(), 10'000);
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_EQ(rs->FieldIndex(u"N"), 0) << "of two columns of one name the first is meant";
    for (const qint64 row : {0, 4095, 4096, 8191, 8192, 9999}) {
        EXPECT_EQ(rs->ValueAt(row, 0).toLongLong(), row);
        EXPECT_EQ(rs->ValueAt(row, 1).toDouble(), double(row) / 2);
    }
    EXPECT_FALSE(rs->IsUpdatable());
    EXPECT_EQ(NumberOf([&] { rs->AddNew(); }), ErrorNumber::FeatureNotAvailable);
    EXPECT_EQ(NumberOf([&] { rs->SetValue(0, 1); }), ErrorNumber::FeatureNotAvailable);
    EXPECT_EQ(NumberOf([&] { rs->DeleteAll(); }), ErrorNumber::FeatureNotAvailable);
    EXPECT_EQ(rs->RecordCount(), 10'000);
}

TEST_F(ConnectionTest, LimitStopsAndTellsWhetherItCut) {
    connection.Open(u"Provider=Fake"_qs);
    const struct {
        qint64 Limit, Rows, Expected;
        bool Truncated;
    } cases[] = {
        {0, 10'000, 10'000, false},
        {-1, 5, 5, false},
        {1, 10'000, 1, true},
        {5, 5, 5, false},
        {5, 6, 5, true},
        {6, 5, 5, false},
        {4096, 4097, 4096, true},
        {4097, 10'000, 4097, true},
        {std::numeric_limits<qint64>::max(), 5, 5, false},
    };
    for (const auto& row : cases) {
        server.Rows.Count = row.Rows;
        Recordset rs;
        rs.SetMaxRecords(row.Limit);
        rs.Open(u"good"_qs, connection);
        EXPECT_EQ(rs.RecordCount(), row.Expected) << row.Limit << " of " << row.Rows;
        EXPECT_EQ(rs.Truncated(), row.Truncated) << row.Limit << " of " << row.Rows;
    }
    server.Rows.Count = 10'000;
    const auto cursor = connection.Stream(u"good"_qs, 5000);
    ColumnStore portion(2);
    qint64 streamed = 0;
    while (const qint64 taken = cursor->Fetch(portion, 1000)) {
        streamed += taken;
        portion.Clear();
    }
    EXPECT_EQ(streamed, 5000) << "also where the provider does not stop by itself";
}

TEST_F(ConnectionTest, FailureWhileFetchingLeavesTheRecordsetClosed) {
    connection.Open(u"Provider=Fake"_qs);
    server.Rows.FailsAt = 9000;
    Recordset rs;
    rs.Append(u"Mine"_qs, DataType::Integer);
    EXPECT_EQ(NumberOf([&] { rs.Open(u"good"_qs, connection); }), 42);
    EXPECT_FALSE(rs.IsOpen());
    EXPECT_EQ(rs.FieldIndex(u"Mine"), 0);
    rs.Open();
    EXPECT_TRUE(rs.IsUpdatable());
}

TEST_F(ConnectionTest, RowsThatDoNotFitIntoMemoryAreAnErrorLikeAny) {
    EXPECT_GT(connection.MemoryLimit(), 0) << "a machine has no memory to waste";
    connection.Open(u"Provider=Fake"_qs);
    connection.SetMemoryLimit(2 << 20);
    server.Rows.Fields.removeLast();
    const struct {
        const char* What;
        qint64 Count;
        std::function<QVariant(qint64)> Cell;
        int Number;
    } rows[] = {
        {"numbers that fit", 100'000, [](qint64 row) { return QVariant(row); }, 0},
        {"too many numbers", 300'000, [](qint64 row) { return QVariant(row); }, ErrorNumber::OutOfMemory},
        {"one text that is too long", 1, [](qint64) { return QString(3 << 20, u'x'); },
         ErrorNumber::OutOfMemory},
        {"long texts", 4000, [](qint64) { return QString(1000, u'x'); }, ErrorNumber::OutOfMemory},
        {"a machine without more", 5000, [](qint64) -> QVariant { throw std::bad_alloc(); },
         ErrorNumber::OutOfMemory},
    };
    for (const auto& row : rows) {
        server.Rows.Count = row.Count;
        server.Rows.Cell = [&row](qint64 at, int) { return row.Cell(at); };
        Recordset rs;
        EXPECT_EQ(NumberOf([&] { rs.Open(u"good"_qs, connection); }), row.Number) << row.What;
        EXPECT_EQ(rs.IsOpen(), row.Number == 0) << row.What;
    }
}

TEST_F(ConnectionTest, StatementWithoutRowsOpensNoColumns) {
    connection.Open(u"Provider=Fake"_qs);
    server.Rows.Fields.clear();
    const RecordsetPtr rs = connection.Execute(u"update"_qs);
    EXPECT_TRUE(rs->IsOpen());
    EXPECT_EQ(rs->FieldCount(), 0);
    EXPECT_EQ(rs->RecordCount(), 0);
}

TEST_F(ConnectionTest, SchemaAndSessionsThatAreStillRead) {
    connection.Open(u"Provider=Fake"_qs);
    EXPECT_EQ(connection.OpenSchema(Schema::Tables)->Text(u"TABLE_NAME"), u"Shops"_qs);
    EXPECT_EQ(connection.OpenSchema(Schema::Columns, u"Orders"_qs)->Text(u"COLUMN_NAME"), u"Orders"_qs);
    auto cursor = connection.Stream(u"good"_qs);
    connection.Close();
    EXPECT_EQ(server.Sessions, 1);
    ColumnStore portion(2);
    EXPECT_EQ(cursor->Fetch(portion, 10), 10);
    cursor.reset();
    EXPECT_EQ(server.Sessions, 0);
}

TEST_F(ConnectionTest, CloneOfFetchedRowsSharesThemAndHasItsOwnOrder) {
    connection.Open(u"Provider=Fake"_qs);
    const RecordsetPtr rs = connection.Execute(u"good"_qs);
    rs->MoveLast();
    const RecordsetPtr clone = rs->Clone();
    EXPECT_EQ(clone->AbsolutePosition(), 1);
    clone->SetSort(u"N DESC"_qs);
    EXPECT_EQ(clone->Text(0), u"9999"_qs);
    EXPECT_EQ(rs->Text(0), u"9999"_qs);
    EXPECT_EQ(rs->AbsolutePosition(), 10'000);
    const RecordsetPtr second = clone->Clone();
    clone->SetSort({});
    EXPECT_EQ(clone->Text(0), u"0"_qs);
    EXPECT_EQ(second->Text(0), u"9999"_qs);
    EXPECT_EQ(second->Sort(), u"N DESC"_qs);
}

}  // namespace
}  // namespace zephrin::ado
