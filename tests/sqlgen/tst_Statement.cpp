#include "SqlState.h"
#include "sqlgen/Statement.h"

#include <QHash>

namespace zephrin {

namespace {

using test::SqlState;

/// The statement as it looks when all is painted: a letter for each character's colour, "." for black.
QString Painted(const QString& text) {
    const QHash<quint32, QChar> letters{{0xff000000, u'.'}, {0xff0000ff, u'b'}, {0xff808080, u'g'},
                                        {0xff800080, u'p'}, {0xffc04000, u'o'}, {0xffc00000, u'r'}};
    QString map(text.size(), u'?');
    for (const ColourSpan& span : ColourStatement(text))
        for (int i = span.Start; i < span.Start + span.Length; ++i) map[i] = letters.value(span.Colour, u'!');
    return map;
}

}  // namespace

TEST(Statement, JoinsTheClausesThatAreThere) {
    const struct {
        const char* Where;
        const char* GroupBy;
        const char* Having;
        const char* OrderBy;
        const char* Expected;
    } rows[] = {
        {"", "", "", "", "S\r\nF\r\n"},
        {" ", "", "", "", "S\r\nF\r\n"},
        {"W", "G", "H", "O", "S\r\nF\r\nW\r\nG\r\nH\r\nO"},
        {"", "", "H", "", "S\r\nF\r\nH\r\n"},
        {"", "", "", "O", "S\r\nF\r\nO"},
    };
    for (const auto& row : rows) {
        SqlState sql;
        sql.state.SelectClause = QStringLiteral("S");
        sql.state.FromClause = QStringLiteral("F");
        sql.state.WhereClause = QString::fromLatin1(row.Where);
        sql.state.GroupByClause = QString::fromLatin1(row.GroupBy);
        sql.state.HavingClause = QString::fromLatin1(row.Having);
        sql.state.OrderByClause = QString::fromLatin1(row.OrderBy);
        AssembleStatement(sql.state);
        EXPECT_EQ(sql.Form().txtSQL.Text, QString::fromLatin1(row.Expected));
        EXPECT_NE(sql.state.WhereClause, QStringLiteral(" "));
    }
}

TEST(Statement, RunsOnlyWhatIsTextAndIsShown) {
    SqlState sql;
    AssembleStatement(sql.state);
    EXPECT_FALSE(sql.Form().cmdRunQuery.Enabled) << "line breaks alone are no statement";
    sql.state.SelectClause = QStringLiteral("SELECT *");
    AssembleStatement(sql.state);
    EXPECT_TRUE(sql.Form().cmdRunQuery.Enabled);
    sql.Form().dgrSQL.Visible = true;
    AssembleStatement(sql.state);
    EXPECT_FALSE(sql.Form().cmdRunQuery.Enabled) << "the grid of criteria hides the statement";
}

TEST(Statement, IsPaintedKeywordByKeyword) {
    const struct {
        const char* Text;
        const char* Map;
    } rows[] = {
        {"", ""},
        {"SELECT a AS b", "bbbbbb..bbbb."},
        // The first place counts, also inside a name: the keyword proper then stays black.
        {"[SELECTION] SELECT", ".bbbbbb..........."},
        {"SELECT [FROM]\r\nFROM [T]", "bbbbbb..bbbb..........."},
        {"select from", "..........."},
        {"x and y Or z", ".bbbbb.bbbb."},
        {"x as y", "......"},
        {"a NOT LIKE b", "..gggggggg.."},
        {"a like b between c", "..gggg...ggggggg.."},
        {"A INNER JOIN B ON C", "..pppppppppp..bbbb."},
        {"A FULL OUTER JOIN B", "..................."},
        {"A LEFT OUTER JOIN B RIGHT OUTER JOIN C", "..ppppppppppppppp...pppppppppppppppp.."},
        {"SUM(a), SUM(b) COUNT(c)", ".......oooo...oooooo..."},
        {"ORDER BY a ASC, b DESC", "bbbbbbbb..rrrr...rrrrr"},
        {"GROUP BY a HAVING b WHERE", "bbbbbbbb...bbbbbb...bbbbb"},
        // Neighbours share their blank.
        {"a AND OR b", ".bbbbbbbb."},
        {" AND AND ", "bbbbbbbbb"},
        {" ASCENT", "rrrr..."},
        {"a DESC", ".rrrrr"},
        {"TOP DISTINCT IS NULL", "...................."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Painted(QString::fromLatin1(row.Text)), QString::fromLatin1(row.Map)) << row.Text;
}

TEST(Statement, CapitalsKeepTheirPlaces) {
    // The capital of the sharp s is two letters: a search in capitals must not shift what follows.
    EXPECT_EQ(Painted(QStringLiteral("ßß and x")), QStringLiteral("..bbbbb."));
}

TEST(Statement, HavingNeedsGroupsAndNotCriteria) {
    SqlState sql;
    sql.Choose("[T]", "[T].[A]");
    sql.AddCriteria("[T].[A]: = 1");
    sql.state.HavingClause = sql.state.GroupByClause = sql.state.OrderByClause = QStringLiteral("stale");
    RegenerateStatement(sql.state);
    EXPECT_EQ(sql.Form().txtSQL.Text, QStringLiteral("SELECT *\r\nFROM [T]\r\nWHERE ([T].[A] = 1)\r\n"));
    SqlState::Add(sql.state.rsGroupBy, "[T].[A]|[T].[A]|-|YES");
    SqlState::Add(sql.state.rsOrderBy, "[T].[A]|[T].[A] DESC");
    RegenerateStatement(sql.state);
    EXPECT_EQ(sql.Form().txtSQL.Text,
              QStringLiteral("SELECT [T].[A]\r\nFROM [T]\r\nGROUP BY [T].[A]\r\nHAVING ([T].[A] = 1)\r\n"
                             "ORDER BY [T].[A] DESC"));
}

}  // namespace zephrin
