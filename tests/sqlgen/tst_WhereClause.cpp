#include "SqlState.h"
#include "sqlgen/WhereClause.h"

namespace zephrin {

namespace {

using test::SqlState;

struct WhereCase {
    const char* Name;
    QList<QStringList> Rows;
    const char* Where;
    const char* Having;
};

// The sheet has the columns [T].[A] and [T].[B], the group [T].[G], the aggregate SUMOFQty and the calculated
// Calc.
const WhereCase cases[] = {
    {"no rows", {}, "", ""},
    {"rows without cells", {{}, {}}, "", ""},
    {"two cells of two rows",
     {{QStringLiteral("[T].[A]: = 1"), QStringLiteral("[T].[B]: > 2")},
      {QStringLiteral("[T].[A]: = 3"), QStringLiteral("[T].[B]: > 2")}},
     "WHERE ([T].[A] = 1) AND ([T].[B] > 2) OR ([T].[A] = 3) AND ([T].[B] > 2)",
     ""},
    {"two conditions in one cell",
     {{QStringLiteral("[T].[A]: > 1 AND < 9")}},
     "WHERE ([T].[A] > 1 AND [T].[A] < 9)",
     ""},
    {"empty rows between",
     {{QStringLiteral("[T].[A]: = 1")}, {}, {QStringLiteral("[T].[A]: = 2")}},
     "WHERE ([T].[A] = 1) OR ([T].[A] = 2)",
     ""},
    {"the same twice",
     {{QStringLiteral("[T].[A]: = 1")}, {QStringLiteral("[T].[A]: = 1")}},
     "WHERE ([T].[A] = 1)",
     ""},
    {"the same text in another column is another alternative",
     {{QStringLiteral("[T].[A]: = 1")}, {QStringLiteral("[T].[B]: = 1")}},
     "WHERE ([T].[A] = 1) OR ([T].[B] = 1)",
     ""},
    {"an aggregate by its alias", {{QStringLiteral("SUMOFQty: > 5")}}, "", "HAVING (SUM([T].[Qty]) > 5)"},
    {"a plain group", {{QStringLiteral("[T].[G]: = 'x'")}}, "", "HAVING ([T].[G] = 'x')"},
    {"both kinds in one row",
     {{QStringLiteral("[T].[A]: = 1"), QStringLiteral("SUMOFQty: > 5")},
      {QStringLiteral("[T].[A]: = 2"), QStringLiteral("SUMOFQty: > 5")}},
     "WHERE ([T].[A] = 1) OR ([T].[A] = 2)",
     "HAVING (SUM([T].[Qty]) > 5)"},
    {"a calculated field by its expression",
     {{QStringLiteral("Calc: = 4")}},
     "WHERE ([T].[A]>[T].[B] = 4)",
     ""},
    {"a calculated aggregate", {{QStringLiteral("Most: = 4")}}, "", "HAVING (max([T].[A]) = 4)"},
    {"blanks in front go", {{QStringLiteral("[T].[A]:   5")}}, "WHERE (5)", ""},
};

}  // namespace

TEST(WhereClause, CellsAreJoinedByAndRowsByOr) {
    for (const WhereCase& row : cases) {
        SqlState sql;
        SqlState::Add(sql.state.rsGroupBy, {QStringLiteral("[T].[G]"), QStringLiteral("[T].[G]")});
        SqlState::Add(sql.state.rsGroupBy, {QStringLiteral("[T].[Qty]"), QStringLiteral("SUM([T].[Qty])"),
                                            QStringLiteral("SUMOFQty")});
        SqlState::Add(sql.state.rsAlias, {QStringLiteral("SUM([T].[Qty])"), QStringLiteral("SUMOFQty")});
        for (const auto& [expression, alias] :
             {std::pair{"[T].[A]>[T].[B]", "Calc"}, {"max([T].[A])", "Most"}}) {
            SqlState::Add(sql.state.rsCalcFields,
                          {QString::fromLatin1(expression), QString::fromLatin1(alias)});
            SqlState::Add(sql.state.rsAlias, {QString::fromLatin1(expression), QString::fromLatin1(alias)});
        }
        sql.Choose({QStringLiteral("[T]")}, {QStringLiteral("[T].[A]"), QStringLiteral("[T].[B]"),
                                             QStringLiteral("[T].[G]"), QStringLiteral("[T].[Qty]")});
        for (const QStringList& cells : row.Rows) sql.AddCriteria(cells);
        sql.state.WhereClause = sql.state.HavingClause = QStringLiteral("stale");
        BuildWhereClause(sql.state);
        BuildHavingClause(sql.state);
        EXPECT_EQ(sql.state.WhereClause, QString::fromLatin1(row.Where)) << row.Name;
        EXPECT_EQ(sql.state.HavingClause, QString::fromLatin1(row.Having)) << row.Name;
    }
}

TEST(WhereClause, OfTwoFieldsOfOneAliasTheFirstIsWritten) {
    SqlState sql;
    SqlState::Add(sql.state.rsGroupBy, {QStringLiteral("a"), QStringLiteral("SUM(a)"), QStringLiteral("S")});
    SqlState::Add(sql.state.rsAlias, {QStringLiteral("SUM(b)"), QStringLiteral("S")});
    SqlState::Add(sql.state.rsAlias, {QStringLiteral("SUM(a)"), QStringLiteral("S")});
    sql.Choose({QStringLiteral("[T]")}, {});
    sql.AddCriteria({QStringLiteral("S: = 1")});
    BuildHavingClause(sql.state);
    EXPECT_EQ(sql.state.HavingClause, QStringLiteral("HAVING (SUM(b) = 1)"));
}

TEST(CriteriaColumns, FollowFieldsGroupsAndCalculatedFields) {
    SqlState sql;
    SqlState::Add(sql.state.rsGroupBy,
                  {QStringLiteral("x"), QStringLiteral("SUM(x)"), QStringLiteral("SUMOFx")});
    SqlState::Add(sql.state.rsGroupBy, {QStringLiteral("y"), QStringLiteral("y")});
    SqlState::Add(sql.state.rsCalcFields, {QStringLiteral("1"), QStringLiteral("One")});
    SqlState::Add(sql.state.rsCalcFields, {QStringLiteral("2"), QStringLiteral("[t].[A]")});
    sql.Choose({QStringLiteral("[T]")}, {QStringLiteral("[T].[A]"), QStringLiteral("-[T].[B]")});
    QStringList names;
    for (int i = 0; i < sql.state.rsWhere->FieldCount(); ++i) names << sql.state.rsWhere->FieldAt(i).Name;
    EXPECT_EQ(names.join(u' '), QStringLiteral("[T].[A] [T].[B] SUMOFx One"))
        << "an alias that is a field's name adds none";
    const ado::Field& field = sql.state.rsWhere->FieldAt(0);
    EXPECT_EQ(field.Type, ado::DataType::VarChar);
    EXPECT_EQ(field.DefinedSize, 550);
    EXPECT_EQ(field.Attributes, 68);
}

TEST(CriteriaColumns, RowsAreCarriedOverByName) {
    SqlState sql;
    sql.Choose({QStringLiteral("[T]")}, {QStringLiteral("A"), QStringLiteral("B")});
    sql.AddCriteria({QStringLiteral("A: = 1"), QStringLiteral("B: ")});
    sql.AddCriteria({QStringLiteral("A: = 2")});
    const ado::RecordsetPtr old = sql.state.rsWhere;
    sql.Form().dgrSQL.DataSource = old;
    sql.state.colFields = Collection({QStringLiteral("C"), QStringLiteral("b"), QStringLiteral("A")});
    SyncCriteriaColumns(sql.state);
    EXPECT_FALSE(old->IsOpen());
    EXPECT_EQ(sql.Form().dgrSQL.DataSource, sql.state.rsWhere);
    EXPECT_EQ(sql.state.rsWhere->TextAt(0, 2), QStringLiteral("= 1"));
    EXPECT_TRUE(sql.state.rsWhere->IsNullAt(0, 1)) << "an emptied cell is not carried over";
    // A column that goes takes its criteria along, but its rows stay until they are purged.
    sql.state.colFields = Collection(QStringList{QStringLiteral("B")});
    SyncCriteriaColumns(sql.state);
    EXPECT_EQ(sql.state.rsWhere->RecordCount(), 2);
    sql.state.rsWhere->SetValueAt(1, 0, QStringLiteral(" "));
    PurgeEmptyCriteria(sql.state);
    EXPECT_EQ(sql.state.rsWhere->RecordCount(), 1) << "a blank is a text";
    EXPECT_EQ(sql.state.rsWhere->AbsolutePosition(), 1);
}

TEST(CriteriaColumns, ATextThatIsTooLongIsLeftOut) {
    SqlState sql;
    const QString a = QStringLiteral("A"), b = QStringLiteral("B");
    sql.Choose({QStringLiteral("[T]")}, {a, b});
    const auto wide = std::make_shared<ado::Recordset>();
    for (const QString& name : {a, b}) wide->Append(name, ado::DataType::VarChar, 8000);
    wide->Open();
    SqlState::Add(wide, {QString(551, u'x'), QStringLiteral("= 1")});
    sql.state.rsWhere = wide;
    SyncCriteriaColumns(sql.state);
    EXPECT_EQ(sql.state.rsWhere->TextAt(0, 0), QString());
    EXPECT_EQ(sql.state.rsWhere->TextAt(0, 1), QStringLiteral("= 1"));
}

}  // namespace zephrin
