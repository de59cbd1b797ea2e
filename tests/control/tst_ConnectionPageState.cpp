#include "control/ConnectionPageState.h"
#include "platform/ado/providers/AllProviders.h"
#include "support/ScratchDatabase.h"
#include "support/ScriptedPrompts.h"

#include <functional>
#include <gtest/gtest.h>

namespace zephrin {

namespace {

constexpr const char* smallScript =
    "CREATE TABLE A (Id INTEGER); CREATE TABLE B (Id INTEGER PRIMARY KEY AUTOINCREMENT); CREATE VIEW V AS "
    "SELECT "
    "Id FROM A";

struct Page {
    test::ScratchDatabase database{QString::fromLatin1(smallScript)};
    ConnectionPageState state{std::make_unique<ZPGGlobalDeclarations>(
        ado::providers::AllProviders(), std::make_shared<test::ScriptedPrompts>())};

    ConnectionSettings Settings(const char* type, const char* tables = "") const {
        ConnectionSettings settings;
        settings.ZPBConnectionString = database.ConnectionString();
        settings.ZPBCommandType = QString::fromLatin1(type);
        settings.ZPBTableString = QString::fromLatin1(tables);
        return settings;
    }
    bool IsConnected() const {
        auto& run = const_cast<ConnectionPageState&>(state).Run();
        return run.adoConnection && run.adoConnection->State() == ado::ObjectState::Open;
    }
    /// "type|offer|chosen|table string|mark", of which the offer is in brackets while it is disabled.
    std::string Picture() const {
        const QString offer = state.lstZPGSelTables.join(u' ');
        return QStringList{
            state.cmbZPGCommandType + (state.CommandTypeEnabled ? QString() : QStringLiteral("(off)")),
            state.SelTablesEnabled ? offer : u'(' + offer + u')', state.lstZPGSelectedTables.join(u' '),
            state.TableString(), state.Changed ? QStringLiteral("changed") : QString()}
            .join(u'|')
            .toStdString();
    }
};

}  // namespace

TEST(ConnectionPageState, ShowsWhatAControlHasStored) {
    struct Row {
        const char* What;
        bool HasConnection;
        const char* Type;
        const char* Tables;
        const char* Picture;
        bool Connects;
    };
    const Row rows[] = {
        {"a new control", false, "", "", "(off)|()|||", false},
        {"no connection", false, "Tables", ";[A]", "Tables(off)|()|[A]|;[A]|", false},
        {"no type", true, "", "[A];[B]", "|()|[A] [B]|[A];[B]|", false},
        {"both", true, "Views", "", "Views|* [V]|||", true},
        {"a type of no meaning", true, "Procedures", "", "Procedures|()|||", true},
        {"blank pieces", true, "", ";;a;;b;", "|()|a b|;;a;;b;|", false},
        {"one letter behind the last", true, "", "a;b;c", "|()|a b c|a;b;c|", false},
        {"the same twice", true, "", "a;A", "|()|a A|a;A|", false},
    };
    for (const Row& row : rows) {
        Page page;
        ConnectionSettings settings = page.Settings(row.Type, row.Tables);
        if (!row.HasConnection) settings.ZPBConnectionString.clear();
        EXPECT_TRUE(page.state.Fill(settings).IsEmpty()) << row.What;
        EXPECT_EQ(page.Picture(), row.Picture) << row.What;
        EXPECT_EQ(page.IsConnected(), row.Connects) << row.What;
    }
}

TEST(ConnectionPageState, FollowsItsUser) {
    struct Row {
        const char* What;
        std::function<void(ConnectionPageState&)> Act;
        const char* Picture;  ///< from "Tables|* [A] [B]|[x]|;[x]|" on
    };
    const auto text = [](const char* value) { return QString::fromLatin1(value); };
    const Row rows[] = {
        {"another string", [&](auto& page) { page.ConnectionTextChanged(text("x")); },
         "Tables|* [A] [B]|[x]|;[x]|changed"},
        {"no string", [&](auto& page) { page.ConnectionTextChanged({}); }, "(off)||||changed"},
        {"about to build one", [](auto& page) { page.BuildConnection(); }, "||||changed"},
        {"views", [&](auto& page) { page.CommandTypeChanged(text("Views")); },
         "Views|* [V]|[x]|;[x]|changed"},
        {"both",  // system tables, too
         [&](auto& page) { page.CommandTypeChanged(text("Both")); },
         "Both|* [A] [B] [sqlite_sequence] [V]|[x]|;[x]|changed"},
        {"another case", [&](auto& page) { page.CommandTypeChanged(text("tables")); },
         "tables|()|[x]|;[x]|changed"},
        {"no type", [&](auto& page) { page.CommandTypeChanged({}); }, "|* [A] [B]|[x]|;[x]|"},
        {"one table", [](auto& page) { EXPECT_EQ(page.SelTablesClicked({2}), QList<int>{2}); },
         "Tables|* [A] [B]|[B]|;[B]|changed"},
        {"two",
         [](auto& page) {
             EXPECT_EQ(page.SelTablesClicked({1, 2}), (QList<int>{1, 2}));
         },
         "Tables|* [A] [B]|[A] [B]|;[A];[B]|changed"},
        {"none", [](auto& page) { EXPECT_EQ(page.SelTablesClicked({}), QList<int>{}); },
         "Tables|* [A] [B]|||changed"},
        {"all of them",
         [](auto& page) {
             EXPECT_EQ(page.SelTablesClicked({0}), (QList<int>{1, 2}));
         },
         "Tables|* [A] [B]|[A] [B]|;[A];[B]|changed"},
        {"all and one",
         [](auto& page) {
             EXPECT_EQ(page.SelTablesClicked({0, 2}), (QList<int>{1, 2}));
         },
         "Tables|* [A] [B]|[A] [B]|;[A];[B]|changed"},
        {"a time", [&](auto& page) { EXPECT_TRUE(page.CommandTimeoutChanged(text("-5"))); },
         "Tables|* [A] [B]|[x]|;[x]|changed"},
        {"no time", [&](auto& page) { EXPECT_FALSE(page.ConnectionTimeoutChanged(text("5 s"))); },
         "Tables|* [A] [B]|[x]|;[x]|"},
        {"applied",
         [](auto& page) {
             page.SelTablesClicked({1});
             page.Apply();
         },
         "Tables|* [A] [B]|[A]|;[A]|"},
        {"another control", [](auto& page) { page.Fill({}); }, "(off)|()|||"},
    };
    for (const Row& row : rows) {
        Page page;
        ASSERT_TRUE(page.state.Fill(page.Settings("Tables", ";[x]")).IsEmpty());
        ASSERT_EQ(page.Picture(), "Tables|* [A] [B]|[x]|;[x]|");
        row.Act(page.state);
        EXPECT_EQ(page.Picture(), row.Picture) << row.What;
    }
}

TEST(ConnectionPageState, TellsWhyItCannotConnectAndKeepsTheOffer) {
    Page page;
    ASSERT_TRUE(page.state.Fill(page.Settings("Tables")).IsEmpty());
    page.state.ConnectionTextChanged(
        QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=/nowhere/x.db"));
    page.state.Changed = false;
    const ConnectionErrors errors = page.state.CommandTypeChanged(QStringLiteral("Views"));
    EXPECT_EQ(errors.Items.size(), 3);
    EXPECT_EQ(page.Picture(), "Views|* [A] [B]|||");

    Page unknown;
    ConnectionSettings settings = unknown.Settings("Tables", ";[A]");
    settings.ZPBConnectionString = QStringLiteral("Provider=Unheard");
    EXPECT_EQ(unknown.state.Fill(settings).Items,
              (QStringList{QStringLiteral("Database Provider not supported"), QStringLiteral("-2147221491"),
                           QStringLiteral("Provider Property")}));
    EXPECT_EQ(unknown.Picture(), "Tables|()|[A]|;[A]|") << "what was stored is shown all the same";
}

TEST(ConnectionPageState, ConnectsAgainWithTheTimesOnThePage) {
    Page page;
    ConnectionSettings settings = page.Settings("Tables");
    settings.ConnectionTimeout = 7;
    settings.ZPBCommandTimeout = 8;
    page.state.Fill(settings);
    EXPECT_EQ(page.state.Run().gConnectionTimeout, 7);
    EXPECT_EQ(page.state.Run().gCommandTimeout, 8);
    page.state.ConnectionTimeoutChanged(QStringLiteral("no number"));
    page.state.CommandTimeoutChanged(QStringLiteral("9.5"));
    page.database.Run(QStringLiteral("CREATE TABLE C (Id INTEGER)"));
    EXPECT_TRUE(page.state.CommandTypeChanged(QStringLiteral("Tables")).IsEmpty());
    EXPECT_EQ(page.Picture(), "Tables|* [A] [B] [C]|||changed");
    EXPECT_EQ(page.state.Run().gConnectionTimeout, 60);
    EXPECT_EQ(page.state.Run().gCommandTimeout, 10);
    EXPECT_EQ(page.state.Run().gUserId + page.state.Run().gPassword, QString());
}

TEST(ConnectionPageState, GivesFiveValuesAtApply) {
    struct Row {
        const char* ConnectionTimeout;
        const char* CommandTimeout;
        const char* Values;
    };
    const Row rows[] = {
        {"10", "20",
         "ZPBConnectionString=x ZPBCommandTimeout=20 ConnectionTimeout=10 ZPBCommandType= "
         "ZPBTableString=;[A]"},
        {"-1", " 0 ",
         "ZPBConnectionString=x ZPBCommandTimeout=0 ConnectionTimeout=-1 ZPBCommandType= "
         "ZPBTableString=;[A]"},
        {"", "2147483648", "ZPBConnectionString=x ZPBCommandType= ZPBTableString=;[A]"},
        {"2147483647", "soon",
         "ZPBConnectionString=x ConnectionTimeout=2147483647 ZPBCommandType= ZPBTableString=;[A]"},
        {"2.5", "-2147483649",
         "ZPBConnectionString=x ConnectionTimeout=2 ZPBCommandType= ZPBTableString=;[A]"},
    };
    for (const Row& row : rows) {
        Page page;
        ConnectionSettings settings = page.Settings("", ";[A]");
        page.state.Fill(settings);
        page.state.ConnectionTextChanged(QStringLiteral("x"));
        page.state.ConnectionTimeoutChanged(QString::fromLatin1(row.ConnectionTimeout));
        page.state.CommandTimeoutChanged(QString::fromLatin1(row.CommandTimeout));
        QStringList values;
        for (const auto& [name, value] : page.state.Apply())
            values << QString::fromLatin1(name) + u'=' + value.toString();
        EXPECT_EQ(values.join(u' ').toStdString(), row.Values);
    }
}

}  // namespace zephrin
