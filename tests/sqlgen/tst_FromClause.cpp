#include "SqlState.h"
#include "sqlgen/FromClause.h"

namespace zephrin {

namespace {

using test::SqlState;

struct FromCase {
    const char* Name;
    const char* Tables;
    const char* Used;   ///< what takes part in joins
    const char* Joins;  ///< as rsJoins has them: a "-" is Null
    const char* Expected;
};

const FromCase cases[] = {
    {"one table", "[Orders]", "", "", "FROM [Orders]"},
    {"two tables, no joins", "[Orders],[Order Details]", "", "", "FROM [Orders], [Order Details]"},
    {"one join", "[Orders],[Customers]", "[Orders]; [Customers]",
     "[Orders]|INNER JOIN|[Customers] ON|[Orders].[CustId]|=|[Customers].[Id]",
     "FROM ([Orders] INNER JOIN [Customers] ON [Orders].[CustId] = [Customers].[Id])"},
    {"two field pairs on one join", "[A],[B]", "[A]; [B]",
     "[A]|INNER JOIN|[B] ON|[A].[X]|=|[B].[X]; -|-|AND|[A].[Y]|=|[B].[Y]",
     "FROM ([A] INNER JOIN [B] ON [A].[X] = [B].[X] AND [A].[Y] = [B].[Y])"},
    {"two joins", "[A],[B],[C]", "[A]; [B]; [C]",
     "[A]|LEFT OUTER JOIN|[B] ON|[A].[X]|=|[B].[X]; -|INNER JOIN|[C] ON|[B].[Z]|=|[C].[Z]",
     "FROM (([A] LEFT OUTER JOIN [B] ON [A].[X] = [B].[X])  INNER JOIN [C] ON [B].[Z] = [C].[Z])"},
    {"two joins, three pairs and more of them in the middle", "[A],[B],[C]", "[A]; [B]; [C]",
     "[A]|FULL OUTER JOIN|[B] ON|[A].[X]|<>|[B].[X]; -|-|AND|[A].[Y]|=|[B].[Y]; -|-|AND|[A].[Z]|=|[B].[Z]; "
     "-|INNER JOIN|[C] ON|[A].[Q]|=|[C].[Q]",
     "FROM (([A] FULL OUTER JOIN [B] ON [A].[X] <> [B].[X] AND [A].[Y] = [B].[Y] AND [A].[Z] = [B].[Z])"
     "  INNER JOIN [C] ON [A].[Q] = [C].[Q])"},
    {"one join and a free table", "[A],[B],[D]", "[A]; [B]", "[A]|INNER JOIN|[B] ON|[A].[X]|=|[B].[X]",
     "FROM ([A] INNER JOIN [B] ON [A].[X] = [B].[X]), [D]"},
};

}  // namespace

TEST(FromClause, JoinsNestAndFreeTablesFollow) {
    for (const FromCase& row : cases) {
        SqlState sql;
        sql.Choose(row.Tables, "");
        SqlState::Add(sql.state.rsJoins, row.Joins);
        SqlState::Add(sql.state.rsJoinTablesUsed, row.Used);
        RebuildJoinText(sql.state);
        BuildFromClause(sql.state);
        EXPECT_EQ(sql.state.FromClause, QString::fromLatin1(row.Expected)) << row.Name;
    }
}

TEST(FromClause, StaysWithoutTablesUnlessTheHostFixedThem) {
    SqlState sql;
    sql.state.FromClause = QStringLiteral("FROM [Old]");
    BuildFromClause(sql.state);
    EXPECT_EQ(sql.state.FromClause, QStringLiteral("FROM [Old]"));
    sql.state.Options.gAllowTableSelection = false;
    sql.state.colTables = Collection(QStringList{QStringLiteral("[Fixed]")});
    BuildFromClause(sql.state);
    EXPECT_EQ(sql.state.FromClause, QStringLiteral("FROM [Fixed]"));
}

TEST(FromClause, TabsOpenWhenEveryTableIsJoined) {
    SqlState sql;
    SqlState::Add(sql.state.rsJoinTable, "[A]; [B]; [C]");
    const auto enabled = [&] {
        RebuildJoinText(sql.state);
        return std::vector<bool>(sql.Form().TabZPG.TabEnabled.begin() + 1,
                                 sql.Form().TabZPG.TabEnabled.end());
    };
    sql.Form().TabZPG.TabEnabled[1] = true;
    SqlState::Add(sql.state.rsJoinTablesUsed, "[A]; [B]");
    EXPECT_EQ(enabled(), (std::vector<bool>{true, false, false, false}));
    SqlState::Add(sql.state.rsJoinTablesUsed, "[C]");
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, true, true}));
    EXPECT_EQ(sql.Form().JoinText, QString()) << "no joins, no text";
}

}  // namespace zephrin
