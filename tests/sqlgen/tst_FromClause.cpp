#include "SqlState.h"
#include "sqlgen/FromClause.h"

namespace zephrin {

namespace {

using test::SqlState;

/// A pair of fields: "A JOIN B ON x = y" as rsJoins has it. `from` null on all rows but the first.
void Join(SqlState& sql, const char* from, const char* join, const char* to, const char* fieldFrom,
          const char* compare, const char* fieldTo) {
    SqlState::Add(sql.state.rsJoins, {QString::fromLatin1(from), QString::fromLatin1(join),
                                      QString::fromLatin1(to), QString::fromLatin1(fieldFrom),
                                      QString::fromLatin1(compare), QString::fromLatin1(fieldTo)});
}

void Use(SqlState& sql, const QStringList& tables) {
    for (const QString& table : tables) SqlState::Add(sql.state.rsJoinTablesUsed, {table});
}

struct FromCase {
    const char* Name;
    QStringList Tables;
    void (*Arrange)(SqlState&);
    const char* Expected;
};

const FromCase cases[] = {
    {"one table", {QStringLiteral("[Orders]")}, [](SqlState&) {}, "FROM [Orders]"},
    {"two tables, no joins",
     {QStringLiteral("[Orders]"), QStringLiteral("[Order Details]")},
     [](SqlState&) {},
     "FROM [Orders], [Order Details]"},
    {"one join",
     {QStringLiteral("[Orders]"), QStringLiteral("[Customers]")},
     [](SqlState& s) {
         Join(s, "[Orders]", "INNER JOIN", "[Customers] ON", "[Orders].[CustId]", "=", "[Customers].[Id]");
         Use(s, {QStringLiteral("[Orders]"), QStringLiteral("[Customers]")});
     },
     "FROM ([Orders] INNER JOIN [Customers] ON [Orders].[CustId] = [Customers].[Id])"},
    {"two field pairs on one join",
     {QStringLiteral("[A]"), QStringLiteral("[B]")},
     [](SqlState& s) {
         Join(s, "[A]", "INNER JOIN", "[B] ON", "[A].[X]", "=", "[B].[X]");
         Join(s, nullptr, nullptr, "AND", "[A].[Y]", "=", "[B].[Y]");
         Use(s, {QStringLiteral("[A]"), QStringLiteral("[B]")});
     },
     "FROM ([A] INNER JOIN [B] ON [A].[X] = [B].[X] AND [A].[Y] = [B].[Y])"},
    {"two joins",
     {QStringLiteral("[A]"), QStringLiteral("[B]"), QStringLiteral("[C]")},
     [](SqlState& s) {
         Join(s, "[A]", "LEFT OUTER JOIN", "[B] ON", "[A].[X]", "=", "[B].[X]");
         Join(s, nullptr, "INNER JOIN", "[C] ON", "[B].[Z]", "=", "[C].[Z]");
         Use(s, {QStringLiteral("[A]"), QStringLiteral("[B]"), QStringLiteral("[C]")});
     },
     "FROM (([A] LEFT OUTER JOIN [B] ON [A].[X] = [B].[X])  INNER JOIN [C] ON [B].[Z] = [C].[Z])"},
    {"two joins, three pairs and more of them in the middle",
     {QStringLiteral("[A]"), QStringLiteral("[B]"), QStringLiteral("[C]")},
     [](SqlState& s) {
         Join(s, "[A]", "FULL OUTER JOIN", "[B] ON", "[A].[X]", "<>", "[B].[X]");
         Join(s, nullptr, nullptr, "AND", "[A].[Y]", "=", "[B].[Y]");
         Join(s, nullptr, nullptr, "AND", "[A].[Z]", "=", "[B].[Z]");
         Join(s, nullptr, "INNER JOIN", "[C] ON", "[A].[Q]", "=", "[C].[Q]");
         Use(s, {QStringLiteral("[A]"), QStringLiteral("[B]"), QStringLiteral("[C]")});
     },
     "FROM (([A] FULL OUTER JOIN [B] ON [A].[X] <> [B].[X] AND [A].[Y] = [B].[Y] AND [A].[Z] = [B].[Z])"
     "  INNER JOIN [C] ON [A].[Q] = [C].[Q])"},
    {"one join and a free table",
     {QStringLiteral("[A]"), QStringLiteral("[B]"), QStringLiteral("[D]")},
     [](SqlState& s) {
         Join(s, "[A]", "INNER JOIN", "[B] ON", "[A].[X]", "=", "[B].[X]");
         Use(s, {QStringLiteral("[A]"), QStringLiteral("[B]")});
     },
     "FROM ([A] INNER JOIN [B] ON [A].[X] = [B].[X]), [D]"},
};

}  // namespace

TEST(FromClause, JoinsNestAndFreeTablesFollow) {
    for (const FromCase& row : cases) {
        SqlState sql;
        sql.Choose(row.Tables, {});
        row.Arrange(sql);
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
    for (const char* table : {"[A]", "[B]", "[C]"})
        SqlState::Add(sql.state.rsJoinTable, {QString::fromLatin1(table)});
    const auto enabled = [&] {
        RebuildJoinText(sql.state);
        return std::vector<bool>(sql.Form().TabZPG.TabEnabled.begin() + 1,
                                 sql.Form().TabZPG.TabEnabled.end());
    };
    sql.Form().TabZPG.TabEnabled[1] = true;
    Use(sql, {QStringLiteral("[A]"), QStringLiteral("[B]")});
    EXPECT_EQ(enabled(), (std::vector<bool>{true, false, false, false}));
    Use(sql, {QStringLiteral("[C]")});
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, true, true}));
    EXPECT_EQ(sql.Form().JoinText, QString()) << "no joins, no text";
}

}  // namespace zephrin
