#include "SqlState.h"
#include "sqlgen/WhereClause.h"

namespace zephrin {

namespace {

using test::SqlState;

// The sheet has the columns [T].[A] and [T].[B], the group [T].[G], the aggregate SUMOFQty and the calculated
// Calc and Most.
const struct WhereCase {
    const char* Name;
    const char* Rows;
    const char* Where;
    const char* Having;
} cases[] = {
    {"no rows", "", "", ""},
    {"rows without cells", ".; .", "", ""},
    {"two cells of two rows", "[T].[A]: = 1|[T].[B]: > 2; [T].[A]: = 3|[T].[B]: > 2",
     "WHERE ([T].[A] = 1) AND ([T].[B] > 2) OR ([T].[A] = 3) AND ([T].[B] > 2)", ""},
    {"two conditions in one cell", "[T].[A]: > 1 AND < 9", "WHERE ([T].[A] > 1 AND [T].[A] < 9)", ""},
    {"empty rows between", "[T].[A]: = 1; .; [T].[A]: = 2", "WHERE ([T].[A] = 1) OR ([T].[A] = 2)", ""},
    {"the same twice", "[T].[A]: = 1; [T].[A]: = 1", "WHERE ([T].[A] = 1)", ""},
    {"the same text in another column is another alternative", "[T].[A]: = 1; [T].[B]: = 1",
     "WHERE ([T].[A] = 1) OR ([T].[B] = 1)", ""},
    {"an aggregate by its alias", "SUMOFQty: > 5", "", "HAVING (SUM([T].[Qty]) > 5)"},
    {"a plain group", "[T].[G]: = 'x'", "", "HAVING ([T].[G] = 'x')"},
    {"both kinds in one row", "[T].[A]: = 1|SUMOFQty: > 5; [T].[A]: = 2|SUMOFQty: > 5",
     "WHERE ([T].[A] = 1) OR ([T].[A] = 2)", "HAVING (SUM([T].[Qty]) > 5)"},
    {"a calculated field by its expression", "Calc: = 4", "WHERE ([T].[A]>[T].[B] = 4)", ""},
    {"a calculated aggregate", "Most: = 4", "", "HAVING (max([T].[A]) = 4)"},
    {"blanks in front go", "[T].[A]:   5", "WHERE (5)", ""},
};

}  // namespace

TEST(WhereClause, CellsAreJoinedByAndRowsByOr) {
    for (const WhereCase& row : cases) {
        SqlState sql;
        SqlState::Add(sql.state.rsGroupBy, "[T].[G]|[T].[G]; [T].[Qty]|SUM([T].[Qty])|SUMOFQty");
        SqlState::Add(sql.state.rsCalcFields, "[T].[A]>[T].[B]|Calc; max([T].[A])|Most");
        SqlState::Add(sql.state.rsAlias, "SUM([T].[Qty])|SUMOFQty; [T].[A]>[T].[B]|Calc; max([T].[A])|Most");
        sql.Choose("[T]", "[T].[A],[T].[B],[T].[G],[T].[Qty]");
        sql.AddCriteria(row.Rows);
        sql.state.WhereClause = sql.state.HavingClause = QStringLiteral("stale");
        BuildWhereClause(sql.state);
        BuildHavingClause(sql.state);
        EXPECT_EQ(sql.state.WhereClause, QString::fromLatin1(row.Where)) << row.Name;
        EXPECT_EQ(sql.state.HavingClause, QString::fromLatin1(row.Having)) << row.Name;
    }
}

TEST(WhereClause, OfTwoFieldsOfOneAliasTheFirstIsWritten) {
    SqlState sql;
    SqlState::Add(sql.state.rsGroupBy, "a|SUM(a)|S");
    SqlState::Add(sql.state.rsAlias, "SUM(b)|S; SUM(a)|S");
    sql.Choose("[T]", "");
    sql.AddCriteria("S: = 1");
    BuildHavingClause(sql.state);
    EXPECT_EQ(sql.state.HavingClause, QStringLiteral("HAVING (SUM(b) = 1)"));
}

TEST(CriteriaColumns, FollowFieldsGroupsAndCalculatedFields) {
    SqlState sql;
    SqlState::Add(sql.state.rsGroupBy, "x|SUM(x)|SUMOFx; y|y");
    SqlState::Add(sql.state.rsCalcFields, "1|One; 2|[t].[A]");
    sql.Choose("[T]", "[T].[A],-[T].[B]");
    QStringList names;
    for (int i = 0; i < sql.state.rsWhere->FieldCount(); ++i) names << sql.state.rsWhere->FieldAt(i).Name;
    EXPECT_EQ(names.join(u' '), QStringLiteral("[T].[A] [T].[B] SUMOFx One"))
        << "an alias that is a field's name adds none";
    const ado::Field& field = sql.state.rsWhere->FieldAt(0);
    EXPECT_EQ(field, (ado::Field{QStringLiteral("[T].[A]"), ado::DataType::VarChar, 550, 68}));
}

TEST(CriteriaColumns, RowsAreCarriedOverByName) {
    SqlState sql;
    sql.Choose("[T]", "A,B");
    sql.AddCriteria("A: = 1|B: ; A: = 2");
    const ado::RecordsetPtr old = sql.state.rsWhere;
    sql.Form().dgrSQL.DataSource = old;
    const auto sync = [&sql](const QStringList& fields) {
        sql.state.colFields = Collection(fields);
        SyncCriteriaColumns(sql.state);
        return sql.state.rsWhere->RecordCount();
    };
    EXPECT_EQ(sync({QStringLiteral("C"), QStringLiteral("b"), QStringLiteral("A")}), 2);
    EXPECT_FALSE(old->IsOpen());
    EXPECT_EQ(sql.Form().dgrSQL.DataSource, sql.state.rsWhere);
    EXPECT_EQ(sql.state.rsWhere->TextAt(0, 2), QStringLiteral("= 1"));
    EXPECT_TRUE(sql.state.rsWhere->IsNullAt(0, 1)) << "an emptied cell is not carried over";
    EXPECT_EQ(sync({}), 2) << "while no fields are known the conditions wait";
    // A column that goes takes its criteria along, and the rows that have no others. A row that is being
    // begun stays until it is purged.
    sql.AddCriteria("B: = 3; .; A:  ");
    EXPECT_EQ(sync({QStringLiteral("B")}), 2);
    EXPECT_EQ(sql.state.rsWhere->TextAt(0, 0), QStringLiteral("= 3"));
    sql.AddCriteria("B:  ");
    PurgeEmptyCriteria(sql.state);
    EXPECT_EQ(sql.state.rsWhere->RecordCount(), 2) << "a blank is a text";
    EXPECT_EQ(sql.state.rsWhere->AbsolutePosition(), 1);
}

TEST(CriteriaColumns, ATextThatIsTooLongIsLeftOut) {
    SqlState sql;
    sql.Choose("[T]", "A,B");
    const auto wide = std::make_shared<ado::Recordset>();
    for (const char16_t* name : {u"A", u"B"})
        wide->Append(QString::fromUtf16(name), ado::DataType::VarChar, 8000);
    wide->Open();
    SqlState::Add(wide, {QString(551, u'x'), QStringLiteral("= 1")});
    sql.state.rsWhere = wide;
    SyncCriteriaColumns(sql.state);
    EXPECT_EQ(sql.state.rsWhere->TextAt(0, 0), QString());
    EXPECT_EQ(sql.state.rsWhere->TextAt(0, 1), QStringLiteral("= 1"));
}

}  // namespace zephrin
