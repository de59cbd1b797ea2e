#include "control/Host.h"

#include <QAbstractItemView>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace zephrin {

namespace {

using test::Host;

const QString connected = QStringLiteral("ConnectionComplete 0 '' ''");
const QString unsupported =
    QStringLiteral("ConnectionComplete -2147221491 'Database Provider not supported' 'Provider Property'");

/// Shows the wizard and says what came of it: "form", "box" or "nothing".
QString Show(Host& host) {
    const qsizetype boxes = host.prompts->Boxes.size();
    host.control->ZPBShowZephrin();
    if (frmZPG* form = frmZPG::OpenForm()) {
        form->close();
        return QStringLiteral("form");
    }
    return host.prompts->Boxes.size() > boxes ? QStringLiteral("box") : QStringLiteral("nothing");
}

}  // namespace

TEST(MakeConnection, TakesTheRouteThatItsArgumentsCallFor) {
    struct Row {
        const char* What;
        std::function<void(Host&)> Connect;
        QString Event;
        const char* Offer;
        const char* Shows;
    };
    const Row rows[] = {
        {"the argument", [](Host& h) { h.Connect(); }, connected,
         "[BigOrders] [Customers] [Odd'Name] [Order Details] [Orders]", "form"},
        {"the property, with its tables",
         [](Host& h) {
             h.control->SetZPBConnectionString(h.database.ConnectionString());
             h.control->SetZPBTableString(QStringLiteral("[Orders];[Customers]"));
             h.control->ZPBMakeConnection({}, QStringLiteral("nobody"), QStringLiteral("pw"), -5, -5);
         },
         connected, "[Customers] [Orders]", "form"},
        {"the property without tables",
         [](Host& h) {
             h.control->SetZPBConnectionString(h.database.ConnectionString());
             h.control->ZPBMakeConnection();
         },
         connected, "", "box"},
        {"the user's choice",
         [](Host& h) {
             h.prompts->Texts = {h.database.ConnectionString()};
             h.control->ZPBMakeConnection({}, {}, {}, 5, 5, 0, false, {}, true);
         },
         connected, "[BigOrders] [Customers] [Odd'Name] [Order Details] [Orders]", "form"},
        {"a user who cancelled", [](Host& h) { h.control->ZPBMakeConnection(); }, {}, "", "nothing"},
        {"an unknown provider",
         [](Host& h) { h.control->ZPBMakeConnection(QStringLiteral("Provider=MSDAORA")); }, unsupported, "",
         "box"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.What);
        Host host;
        host.prompts->Answers = {BoxAnswer::No};
        row.Connect(host);
        const QStringList events = host.log.filter(QStringLiteral("ConnectionComplete"));
        EXPECT_EQ(events, row.Event.isEmpty() ? QStringList() : QStringList(row.Event));
        QStringList offer = host.Offer().filter(QRegularExpression(QStringLiteral("^\\[(?!sqlite_)")));
        offer.sort();
        EXPECT_EQ(offer.join(u' ').toStdString(), row.Offer);
        EXPECT_EQ(Show(host).toStdString(), row.Shows);
    }
}

TEST(MakeConnection, SystemTablesAreOfferedUnlessTheyAreNotWanted) {
    Host host(QStringLiteral("CREATE TABLE One (Id INTEGER PRIMARY KEY AUTOINCREMENT)"));
    host.Connect();
    EXPECT_GT(host.Offer().size(), 1);
    host.control->ZPBMakeConnection(host.database.ConnectionString(), {}, {}, 5, 5, 0, false, {}, true);
    EXPECT_EQ(host.Offer(), QStringList(QStringLiteral("[One]")));
}

TEST(MakeConnection, OmittedTimeOutsAreTheProperties) {
    struct Row {
        const char* What;
        int ConnectProperty, CommandProperty, Connect, Command;
        bool Fails;
    };
    const Row rows[] = {
        {"both omitted", 5, 5, Zephrin::Omitted, Zephrin::Omitted, false},
        {"a bad connect property counts", -1, 5, Zephrin::Omitted, 5, true},
        {"a bad command property counts", 5, -1, 5, Zephrin::Omitted, true},
        {"unless a time-out is passed", -1, -1, 0, 0, false},
        {"a negative one is refused", 5, 5, -1, 5, true},
    };
    for (const Row& row : rows) {
        Host host;
        host.control->SetConnectionTimeout(row.ConnectProperty);
        host.control->SetZPBCommandTimeout(row.CommandProperty);
        host.log.clear();
        host.control->ZPBMakeConnection(host.database.ConnectionString(), {}, {}, row.Connect, row.Command);
        ASSERT_EQ(host.log.size(), 1) << row.What;
        EXPECT_TRUE(host.log[0].startsWith(row.Fails ? QStringLiteral("ConnectionComplete 3001") : connected))
            << row.What << qPrintable(host.log[0]);
    }
}

TEST(MakeConnection, AFailureLeavesTheOfferAndTheActiveStringIsTheNewOne) {
    Host host;
    host.Connect();
    const QStringList offer = host.Offer();
    const QString bad = QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=/nowhere/none.db");
    host.control->ZPBMakeConnection(bad);
    EXPECT_FALSE(host.log.last().startsWith(QStringLiteral("ConnectionComplete 0")));
    EXPECT_EQ(host.Offer(), offer);
    EXPECT_EQ(host.control->ZPBActiveConnectionString(), bad);
    host.prompts->Answers = {BoxAnswer::No};
    EXPECT_EQ(Show(host), QStringLiteral("form"));
}

TEST(MakeConnection, AfterAFailureTheFirstUseOfATableLeadsBack) {
    Host host;
    host.Connect();
    host.control->SetZPBAllowSaveDeleteQuery(false);
    host.control->ZPBMakeConnection(
        QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=/nowhere/none.db"));
    host.log.clear();
    host.control->ZPBShowZephrin();
    Host::Click("cmdZPQTableRightAll");
    Host::ChooseTab(1);
    ASSERT_EQ(host.prompts->Boxes.size(), 1);
    EXPECT_EQ(host.prompts->Boxes[0].Title, QStringLiteral("Brimlow Zephrin V1.2"));
    EXPECT_EQ(host.prompts->Boxes[0].Style, BoxStyle::Critical);
    EXPECT_EQ(Host::Find("TabZPG")->property("currentIndex").toInt(), 0);
    const auto count = [](const char* list) {
        return qobject_cast<QAbstractItemView*>(Host::Find(list))->model()->rowCount();
    };
    EXPECT_EQ(count("lstZPQTableTo"), 0);
    EXPECT_EQ(count("lstZPQTableSelection"), host.Offer().size());
    EXPECT_TRUE(host.log.isEmpty());
    frmZPG::OpenForm()->close();
}

TEST(MakeConnection, AnotherGoodOneReplacesTheOffer) {
    Host host;
    host.Connect();
    test::ScratchDatabase other(QStringLiteral("CREATE TABLE Only (Id int)"));
    host.control->ZPBMakeConnection(other.ConnectionString(), {}, {}, 5, 5, 0, false, {}, true);
    EXPECT_EQ(host.Offer(), QStringList(QStringLiteral("[Only]")));
    EXPECT_EQ(host.log, QStringList({connected, connected}));
}

TEST(MakeConnection, ASavedQueryBringsItsOwnConnection) {
    Host host;
    host.control->SetZPBAllowSaveDeleteQuery(false);
    host.log.clear();
    host.control->ZPBMakeConnection(host.database.ConnectionString(), {}, {}, 5, 5, 0, true);
    EXPECT_TRUE(host.log.isEmpty());
    EXPECT_TRUE(host.Offer().isEmpty());
    EXPECT_EQ(Show(host), QStringLiteral("form"));
    EXPECT_EQ(host.log, QStringList(QStringLiteral("ZPBUnloaded")));
}

TEST(MakeConnection, AReportedFailureIsNotReportedTwice) {
    Host host;
    host.control->ZPBMakeConnection();
    EXPECT_EQ(Show(host), QStringLiteral("nothing"));
    EXPECT_EQ(Show(host), QStringLiteral("box"));
    const auto& box = host.prompts->Boxes.last();
    EXPECT_EQ(box.Title, QStringLiteral("Show Method Error"));
    EXPECT_EQ(box.Style, BoxStyle::Critical);
    EXPECT_EQ(box.Text, QStringLiteral("1 of 4 errors has been made.\r\n\r\n"
                                       "1. Invalid or unsupported connection attempted.\r\n"
                                       "2. Connection has not been set.\r\n"
                                       "3. Selected Tables are invalid.\r\n"
                                       "4. No Tables have been selected.\r\n\r\n"
                                       "Any Errors must be resolved before proceeding."));
    host.control->ZPBMakeConnection();
    host.Connect();
    host.prompts->Answers = {BoxAnswer::No};
    EXPECT_EQ(Show(host), QStringLiteral("form"));
    host.control->ZPBTableCollection();
    while (!host.Offer().isEmpty()) host.control->ZPBTableCollection().RemoveTable(1);
    EXPECT_EQ(Show(host), QStringLiteral("box")) << "a showing forgets an earlier failure";
}

TEST(Disconnect, ClosesAndIsHarmlessTwice) {
    Host host;
    host.control->ZPBDisconnectConnection();
    host.Connect();
    host.control->ZPBDisconnectConnection();
    host.control->ZPBDisconnectConnection();
    EXPECT_EQ(host.log, QStringList(connected));
    EXPECT_EQ(host.control->ZPBActiveConnectionString(), host.database.ConnectionString());
}

TEST(About, IsShownThroughThePrompts) {
    Host host;
    host.control->ShowAboutBox();
    EXPECT_EQ(host.prompts->Abouts, 1);
}

}  // namespace zephrin
