#include "SqlState.h"
#include "sqlgen/OrderByClause.h"

namespace zephrin {

namespace {

using test::SqlState;

/// "a ASC" becomes the order row of the field a.
void Order(SqlState& sql, const QString& text) {
    SqlState::Add(sql.state.rsOrderBy, {text.left(text.lastIndexOf(u' ')), text});
}

struct OrderCase {
    const char* Name;
    QStringList Orders;
    QList<QStringList> Groups;  ///< FieldName, GroupBy, FieldAlias
    QStringList Calcs;
    const char* Expected;
};

const QStringList sumOfB{QStringLiteral("b"), QStringLiteral("SUM(b)"), QStringLiteral("SUMOFb")};

const OrderCase cases[] = {
    {"nothing", {}, {}, {}, ""},
    {"B: both directions",
     {QStringLiteral("a ASC"), QStringLiteral("a DESC")},
     {},
     {},
     "ORDER BY a ASC, a DESC"},
    {"B: the same once", {QStringLiteral("a ASC"), QStringLiteral("a ASC")}, {}, {}, "ORDER BY a ASC"},
    {"B: a part of what stands there",
     {QStringLiteral("xa.b ASC"), QStringLiteral("a.b ASC")},
     {},
     {},
     "ORDER BY xa.b ASC"},
    {"C: the same twice",
     {QStringLiteral("a ASC"), QStringLiteral("a ASC"), QStringLiteral("c+1 DESC")},
     {},
     {QStringLiteral("c+1")},
     "ORDER BY a ASC, a ASC, c+1 DESC"},
    {"D: neither grouped nor aggregated", {QStringLiteral("a ASC")}, {sumOfB}, {}, ""},
    {"D: the field of an aggregate is not enough",
     {QStringLiteral("b ASC"), QStringLiteral("SUM(b) DESC")},
     {sumOfB},
     {},
     "ORDER BY SUM(b) DESC"},
    {"D: a group, also one without expression",
     {QStringLiteral("a ASC"), QStringLiteral("c ASC"), QStringLiteral("a ASC")},
     {{QStringLiteral("a"), QStringLiteral("a")}, {QStringLiteral("c")}},
     {},
     "ORDER BY a ASC, c ASC"},
    {"A: the field of an aggregate is enough",
     {QStringLiteral("b ASC"), QStringLiteral("z ASC")},
     {sumOfB},
     {QStringLiteral("c+1")},
     "ORDER BY b ASC"},
    {"A: a calculated aggregate goes, a plain one does not",
     {QStringLiteral("c+1 ASC"), QStringLiteral("MAX(c) ASC"), QStringLiteral("min(c) ASC")},
     {sumOfB},
     {QStringLiteral("c+1"), QStringLiteral("MAX(c)"), QStringLiteral("min(c)")},
     "ORDER BY MAX(c) ASC"},
};

}  // namespace

TEST(OrderByClause, KeepsWhatGroupsAndCalculatedFieldsAccountFor) {
    for (const OrderCase& row : cases) {
        SqlState sql;
        for (const QString& order : row.Orders) Order(sql, order);
        for (const QStringList& group : row.Groups) SqlState::Add(sql.state.rsGroupBy, group);
        for (const QString& calc : row.Calcs)
            SqlState::Add(sql.state.rsCalcFields, {calc, QStringLiteral("X")});
        sql.state.OrderByClause = QStringLiteral("stale");
        BuildOrderByClause(sql.state);
        EXPECT_EQ(sql.state.OrderByClause, QString::fromLatin1(row.Expected)) << row.Name;
        // What was read stands on its first row afterwards, wherever it stood.
        if (row.Orders.isEmpty()) continue;
        for (const ado::RecordsetPtr& rows : {sql.state.rsGroupBy, sql.state.rsCalcFields})
            EXPECT_TRUE(!HasRows(rows) || rows->AbsolutePosition() == 1) << row.Name;
    }
}

TEST(OrderByClause, ADroppedRowComesBackWhenItsFieldIsGrouped) {
    SqlState sql;
    Order(sql, QStringLiteral("a ASC"));
    SqlState::Add(sql.state.rsGroupBy, sumOfB);
    BuildOrderByClause(sql.state);
    EXPECT_EQ(sql.state.OrderByClause, QString());
    SqlState::Add(sql.state.rsGroupBy, {QStringLiteral("a"), QStringLiteral("a")});
    BuildOrderByClause(sql.state);
    EXPECT_EQ(sql.state.OrderByClause, QStringLiteral("ORDER BY a ASC"));
}

}  // namespace zephrin
