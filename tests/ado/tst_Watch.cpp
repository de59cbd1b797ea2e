#include "Failing.h"
#include "FakeProvider.h"

#include <gtest/gtest.h>

namespace zephrin::ado {
namespace {

using test::FakeServer;
using test::NumberOf;

class WatchTest : public testing::Test {
 protected:
    WatchTest() {
        server.Rows.Fields = {Field{u"N"_qs, DataType::BigInt}};
        server.Rows.Count = 20'000;
    }
    void Slow() {
        server.Rows.Cell = [](qint64 row, int) {
            if (row % 2000 == 1000) QThread::msleep(30);
            return QVariant(row);
        };
    }
    FakeServer server;
    std::unique_ptr<Connection> connection = std::make_unique<Connection>(test::FakeProviders(server));
};

TEST_F(WatchTest, HearsHowFarTheRowsHaveCome) {
    Slow();
    QList<Progress> heard;
    connection->SetWatcher([&](const Progress& progress) {
        heard << progress;
        return true;
    });
    connection->Open(u"Provider=Fake"_qs);
    EXPECT_EQ(connection->Execute(u"good"_qs)->RecordCount(), 20'000);
    ASSERT_GE(heard.size(), 2);
    for (qsizetype i = 1; i < heard.size(); ++i) {
        EXPECT_GE(heard[i].Elapsed - heard[i - 1].Elapsed, Watch::Interval);
        EXPECT_GE(heard[i].Rows, heard[i - 1].Rows);
    }
    EXPECT_GT(heard.last().Rows, 0);
    EXPECT_LE(heard.last().Rows, 20'000);
}

TEST_F(WatchTest, WhoeverIsLetInMayDoAnything) {
    const struct {
        const char* What;
        std::function<bool(std::unique_ptr<Connection>&, RecordsetPtr&)> Act;
        int Number;
        bool Usable;
    } rows[] = {
        {"stops", [](auto&, auto&) { return false; }, 3712, true},
        {"closes",
         [](auto& c, auto&) {
             c->Close();
             return true;
         },
         3712, false},
        {"destroys",
         [](auto& c, auto&) {
             c.reset();
             return true;
         },
         3712, false},
        {"drops the recordset",
         [](auto&, auto& result) {
             result.reset();
             return false;
         },
         3712, true},
        {"runs another",
         [](auto& c, auto&) {
             EXPECT_EQ(NumberOf([&] { c->Execute(u"good"_qs); }), 3711);
             EXPECT_EQ(NumberOf([&] { c->OpenSchema(Schema::Tables); }), 3711);
             EXPECT_EQ(NumberOf([&] { c->Open(); }), 3711);
             return false;
         },
         3712, true},
        {"takes the watcher away",
         [](auto& c, auto&) {
             c->SetWatcher({});
             return false;
         },
         3712, true},
    };
    for (const char* what : {"wait", "good", ""}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(testing::Message() << row.What << " during " << (*what ? what : "connecting"));
            Slow();
            connection = std::make_unique<Connection>(test::FakeProviders(server));
            RecordsetPtr result = std::make_shared<Recordset>();
            if (*what) connection->Open(u"Provider=Fake"_qs);
            connection->SetWatcher([&](const Progress&) { return row.Act(connection, result); });
            Recordset& running = *result;
            const QString statement = QString::fromUtf8(what);
            EXPECT_EQ(NumberOf([&] {
                          if (*what)
                              running.Open(statement, *connection);
                          else
                              connection->Open(u"Provider=Fake;Mute"_qs);
                      }),
                      row.Number);
            EXPECT_EQ(server.Sessions, row.Usable && *what ? 1 : 0);
            if (!row.Usable) continue;
            connection->SetWatcher({});
            if (!*what) connection->Open(u"Provider=Fake"_qs);
            EXPECT_EQ(connection->Execute(u"good"_qs)->RecordCount(), 20'000) << "at once";
        }
    }
    EXPECT_EQ(server.Statements.count(u"wait"_qs), 6) << "no statement ran twice";
}

TEST_F(WatchTest, AStoppedCursorStaysStopped) {
    Slow();
    connection->Open(u"Provider=Fake"_qs);
    bool goOn = true;
    connection->SetWatcher([&](const Progress&) { return goOn; });
    const auto rows = connection->Stream(u"good"_qs);
    ColumnStore portion(1);
    EXPECT_EQ(rows->Fetch(portion, 10), 10);
    goOn = false;
    EXPECT_EQ(NumberOf([&] { rows->Fetch(portion, 10'000); }), 3712);
    goOn = true;
    EXPECT_EQ(NumberOf([&] { rows->Fetch(portion, 1); }), 3712);
}

}  // namespace
}  // namespace zephrin::ado
