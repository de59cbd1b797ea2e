#include "SqlState.h"
#include "sqlgen/GroupByClause.h"

namespace zephrin {

using test::SqlState;

TEST(GroupByClause, NamesPlainGroupsOnly) {
    const struct {
        QList<QStringList> Groups;
        const char* Expected;
    } rows[] = {
        {{}, ""},
        {{{QStringLiteral("a"), QStringLiteral("SUM(a)"), QStringLiteral("SUMOFa")}}, ""},
        {{{QStringLiteral("a")}, {QStringLiteral("b")}}, "GROUP BY a, b"},
        {{{QStringLiteral("b")},
          {QStringLiteral("x"), QStringLiteral("MAX(x)"), QStringLiteral("m")},
          {QStringLiteral("a")}},
         "GROUP BY b, a"},
        // An aggregate in capitals is left out, without an alias too; one in small letters is not seen.
        {{{QStringLiteral("COUNT(a)+1")}, {QStringLiteral("count(a)")}}, "GROUP BY count(a)"},
    };
    for (const auto& row : rows) {
        SqlState sql;
        for (const QStringList& group : row.Groups) SqlState::Add(sql.state.rsGroupBy, group);
        BuildGroupByClause(sql.state);
        EXPECT_EQ(sql.state.GroupByClause, QString::fromLatin1(row.Expected));
    }
}

}  // namespace zephrin
