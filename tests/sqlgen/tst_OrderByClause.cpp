#include "SqlState.h"
#include "sqlgen/OrderByClause.h"

namespace zephrin {

namespace {

using test::SqlState;

/// "a ASC; b DESC" become the order rows of the fields a and b.
void Order(SqlState& sql, const char* rows) {
    for (const QString& text : test::Split(rows, QLatin1String("; ")))
        SqlState::Add(sql.state.rsOrderBy, {text.left(text.lastIndexOf(u' ')), text});
}

constexpr char sumOfB[] = "b|SUM(b)|SUMOFb";

const struct OrderCase {
    const char* Name;
    const char* Orders;
    const char* Groups;  ///< FieldName|GroupBy|FieldAlias
    const char* Calcs;
    const char* Expected;
} cases[] = {
    {"nothing", "", "", "", ""},
    {"B: both directions", "a ASC; a DESC", "", "", "ORDER BY a ASC, a DESC"},
    {"B: the same once", "a ASC; a ASC", "", "", "ORDER BY a ASC"},
    {"B: a part of what stands there", "xa.b ASC; a.b ASC", "", "", "ORDER BY xa.b ASC"},
    {"C: the same twice", "a ASC; a ASC; c+1 DESC", "", "c+1|X", "ORDER BY a ASC, a ASC, c+1 DESC"},
    {"D: neither grouped nor aggregated", "a ASC", sumOfB, "", ""},
    {"D: the field of an aggregate is not enough", "b ASC; SUM(b) DESC", sumOfB, "", "ORDER BY SUM(b) DESC"},
    {"D: a group, also one without expression", "a ASC; c ASC; a ASC", "a|a; c", "", "ORDER BY a ASC, c ASC"},
    {"A: the field of an aggregate is enough", "b ASC; z ASC", sumOfB, "c+1|X", "ORDER BY b ASC"},
    {"A: a calculated aggregate goes, a plain one does not", "c+1 ASC; MAX(c) ASC; min(c) ASC", sumOfB,
     "c+1|X; MAX(c)|Y; min(c)|Z", "ORDER BY MAX(c) ASC"},
};

}  // namespace

TEST(OrderByClause, KeepsWhatGroupsAndCalculatedFieldsAccountFor) {
    for (const OrderCase& row : cases) {
        SqlState sql;
        Order(sql, row.Orders);
        SqlState::Add(sql.state.rsGroupBy, row.Groups);
        SqlState::Add(sql.state.rsCalcFields, row.Calcs);
        sql.state.OrderByClause = QStringLiteral("stale");
        BuildOrderByClause(sql.state);
        EXPECT_EQ(sql.state.OrderByClause, QString::fromLatin1(row.Expected)) << row.Name;
        // What was read stands on its first row afterwards, wherever it stood.
        if (!*row.Orders) continue;
        for (const ado::RecordsetPtr& rows : {sql.state.rsGroupBy, sql.state.rsCalcFields})
            EXPECT_TRUE(!HasRows(rows) || rows->AbsolutePosition() == 1) << row.Name;
    }
}

TEST(OrderByClause, ADroppedRowComesBackWhenItsFieldIsGrouped) {
    SqlState sql;
    Order(sql, "a ASC");
    SqlState::Add(sql.state.rsGroupBy, sumOfB);
    BuildOrderByClause(sql.state);
    EXPECT_EQ(sql.state.OrderByClause, QString());
    SqlState::Add(sql.state.rsGroupBy, "a|a");
    BuildOrderByClause(sql.state);
    EXPECT_EQ(sql.state.OrderByClause, QStringLiteral("ORDER BY a ASC"));
}

}  // namespace zephrin
