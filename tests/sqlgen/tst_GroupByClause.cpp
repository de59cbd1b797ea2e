#include "SqlState.h"
#include "sqlgen/GroupByClause.h"

namespace zephrin {

TEST(GroupByClause, NamesPlainGroupsOnly) {
    const struct {
        const char* Groups;
        const char* Expected;
    } rows[] = {
        {"", ""},
        {"a|SUM(a)|SUMOFa", ""},
        {"a; b", "GROUP BY a, b"},
        {"b; x|MAX(x)|m; a", "GROUP BY b, a"},
        // An aggregate in capitals is left out, without an alias too; one in small letters is not seen.
        {"COUNT(a)+1; count(a)", "GROUP BY count(a)"},
    };
    for (const auto& row : rows) {
        test::SqlState sql;
        test::SqlState::Add(sql.state.rsGroupBy, row.Groups);
        BuildGroupByClause(sql.state);
        EXPECT_EQ(sql.state.GroupByClause, QString::fromLatin1(row.Expected));
    }
}

}  // namespace zephrin
