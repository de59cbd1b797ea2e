#include "SqlState.h"
#include "sqlgen/SelectClause.h"

#include <functional>

namespace zephrin {

namespace {

using test::SqlState;

const QStringList table{QStringLiteral("[T]")};
const QStringList all{QStringLiteral("[T].[A]"), QStringLiteral("[T].[B]")};
const QStringList two{QStringLiteral("[T].[A]"), QStringLiteral("[T].[B]"), QStringLiteral("-[T].[C]"),
                      QStringLiteral("-[T].[D]"), QStringLiteral("-[T].[E]")};
const QStringList none{QStringLiteral("-[T].[A]"), QStringLiteral("-[T].[B]")};

struct SelectCase {
    const char* Name;
    std::function<void(SqlState&)> Arrange;
    const char* Expected;
};

void Top(SqlState& sql, const char* text, bool percent = false) {
    sql.Form().txtTopX.Text = QString::fromLatin1(text);
    sql.Form().chkPercent.Value = percent ? 1 : 0;
    RebuildTopClause(sql.state);
}

void Calc(SqlState& sql, const char* expression, const char* alias, const char* output = "YES") {
    SqlState::Add(sql.state.rsCalcFields,
                  {QString::fromLatin1(expression), QString::fromLatin1(alias), QString::fromLatin1(output)});
}

void Group(SqlState& sql, const char* field, const char* expression, const char* alias,
           const char* output = "YES") {
    SqlState::Add(sql.state.rsGroupBy, {QString::fromLatin1(field), QString::fromLatin1(expression),
                                        QString::fromLatin1(alias), QString::fromLatin1(output)});
}

const SelectCase cases[] = {
    {"no table", [](SqlState&) {}, ""},
    {"no table, tables fixed, fields fixed",
     [](SqlState& s) { s.state.Options.gAllowTableSelection = s.state.Options.gAllowFieldSelection = false; },
     "SELECT *"},
    {"all fields", [](SqlState& s) { s.Choose(table, all); }, "SELECT *"},
    {"all fields, distinct, top",
     [](SqlState& s) {
         s.Choose(table, all);
         s.Form().chkDistinct.Value = 1;
         Top(s, "10");
     },
     "SELECT DISTINCT TOP 10 *"},
    {"all fields, distinct, percent",
     [](SqlState& s) {
         s.Choose(table, all);
         s.Form().chkDistinct.Value = 1;
         Top(s, "10", true);
     },
     "SELECT DISTINCT TOP 10 PERCENT *"},
    {"percent above 100",
     [](SqlState& s) {
         s.Choose(table, all);
         Top(s, "150", true);
     },
     "SELECT TOP 150 *"},
    {"a grey percent box is no tick",
     [](SqlState& s) {
         s.Choose(table, all);
         s.Form().txtTopX.Text = QStringLiteral("5");
         s.Form().chkPercent.Value = 2;
         RebuildTopClause(s.state);
     },
     "SELECT TOP 5 *"},
    {"two of five", [](SqlState& s) { s.Choose(table, two); }, "SELECT [T].[A], [T].[B]"},
    {"two of five, top",
     [](SqlState& s) {
         s.Choose(table, two);
         Top(s, "5");
     },
     "SELECT TOP 5 [T].[A], [T].[B]"},
    {"two of five, distinct, top as typed",
     [](SqlState& s) {
         s.Choose(table, two);
         s.Form().chkDistinct.Value = 1;
         Top(s, "1e3");
     },
     "SELECT DISTINCT TOP 1e3 [T].[A], [T].[B]"},
    {"fields fixed, none chosen, distinct",
     [](SqlState& s) {
         s.Choose(table, none);
         s.state.Options.gAllowFieldSelection = false;
         s.Form().chkDistinct.Value = 1;
     },
     "SELECT DISTINCT *"},
    {"fields fixed, but a part chosen",
     [](SqlState& s) {
         s.Choose(table, two);
         s.state.Options.gAllowFieldSelection = false;
     },
     "SELECT [T].[A], [T].[B]"},
    {"no field chosen", [](SqlState& s) { s.Choose(table, none); }, "SELECT "},
    {"all fields and a calculated one",
     [](SqlState& s) {
         s.Choose(table, all);
         Calc(s, "[T].[A]*2", "X");
     },
     "SELECT *, [T].[A]*2 AS X"},
    {"only a calculated field",
     [](SqlState& s) {
         s.Choose(table, none);
         Calc(s, "[T].[A]*2", "X");
         Calc(s, "[T].[B]", "Y");
     },
     "SELECT [T].[A]*2 AS X, [T].[B] AS Y"},
    {"only a calculated field, distinct",
     [](SqlState& s) {
         s.Choose(table, none);
         s.Form().chkDistinct.Value = 1;
         Calc(s, "[T].[A]*2", "X");
     },
     "SELECT DISTINCT [T].[A]*2 AS X"},
    {"only a calculated field, top",
     [](SqlState& s) {
         s.Choose(table, none);
         Top(s, "5");
         Calc(s, "[T].[A]*2", "X");
     },
     "SELECT TOP 5 , [T].[A]*2 AS X"},
    {"calculated fields are particular about YES",
     [](SqlState& s) {
         s.Choose(table, all);
         Calc(s, "1", "X", "yes");
         Calc(s, "2", "Y", "No");
         Calc(s, "3", "Z");
     },
     "SELECT *, 3 AS Z"},
    {"groups never say distinct",
     [](SqlState& s) {
         s.Choose(table, all);
         s.Form().chkDistinct.Value = 1;
         Group(s, "[T].[A]", "[T].[A]", "");
         Group(s, "[T].[B]", "SUM([T].[B])", "Total");
     },
     "SELECT [T].[A], SUM([T].[B]) AS Total"},
    {"groups, first not put out, top",
     [](SqlState& s) {
         s.Choose(table, all);
         Top(s, "3");
         Group(s, "[T].[A]", "[T].[A]", "", "NO");
         Group(s, "[T].[B]", "SUM([T].[B])", "Total");
     },
     "SELECT TOP 3 SUM([T].[B]) AS Total"},
    {"groups are not particular about yes",
     [](SqlState& s) {
         s.Choose(table, all);
         Group(s, "[T].[A]", "[T].[A]", "", "yes");
     },
     "SELECT [T].[A]"},
    {"groups, none put out",
     [](SqlState& s) {
         s.Choose(table, all);
         Group(s, "[T].[A]", "[T].[A]", "", "NO");
     },
     "SELECT "},
    {"a group without expression looks its alias up",
     [](SqlState& s) {
         s.Choose(table, all);
         SqlState::Add(s.state.rsAlias, {QStringLiteral("[T].[A]"), QStringLiteral("First")});
         Group(s, "[T].[A]", "", "");
         Group(s, "[T].[B]", "", "");
         Group(s, "", "", "");
     },
     "SELECT [T].[A] AS First, [T].[B] AS "},
    {"with groups a calculated field waits for the first aggregate",
     [](SqlState& s) {
         s.Choose(table, all);
         Group(s, "[T].[A]", "[T].[A]", "");
         Calc(s, "[T].[B]", "Before");
         Calc(s, "sum([T].[B])", "Agg", "No");
         Calc(s, "[T].[B]+1", "Behind");
         Calc(s, "[T].[B]+2", "Hidden", "yes");
     },
     "SELECT [T].[A], [T].[B]+1 AS Behind"},
    {"with groups the first item may be a calculated one",
     [](SqlState& s) {
         s.Choose(table, all);
         Top(s, "2");
         Group(s, "[T].[A]", "[T].[A]", "", "NO");
         Calc(s, "MAX([T].[B])", "M");
     },
     "SELECT TOP 2 MAX([T].[B]) AS M"},
};

}  // namespace

TEST(SelectClause, FollowsGroupsFieldsAndOptions) {
    for (const SelectCase& row : cases) {
        SqlState sql;
        row.Arrange(sql);
        BuildSelectClause(sql.state);
        EXPECT_EQ(sql.state.SelectClause, QString::fromLatin1(row.Expected)) << row.Name;
    }
}

TEST(SelectClause, RunsTheGroupByBuilder) {
    SqlState sql;
    sql.state.GroupByClause = QStringLiteral("stale");
    BuildSelectClause(sql.state);
    EXPECT_EQ(sql.state.GroupByClause, QString());
}

TEST(SelectClause, TopTakesWhatIsANumberAndBlanksTheRest) {
    const struct {
        const char* Typed;
        bool Percent;
        const char* Shown;
        const char* Clause;
    } rows[] = {
        {"", false, "", ""},
        {"abc", true, "", ""},
        {"5", false, "5", "TOP 5"},
        {"1.5", false, "1.5", "TOP 1.5"},
        {"-3", true, "-3", "TOP -3 PERCENT"},
        {"1e3", true, "1e3", "TOP 1e3"},
        {"100", true, "100", "TOP 100 PERCENT"},
        {"100.5", true, "100.5", "TOP 100.5"},
        {" 7 ", false, " 7 ", "TOP  7 "},
    };
    for (const auto& row : rows) {
        SqlState sql;
        Top(sql, row.Typed, row.Percent);
        EXPECT_EQ(sql.Form().TopClause, QString::fromLatin1(row.Clause)) << row.Typed;
        EXPECT_EQ(sql.Form().txtTopX.Text, QString::fromLatin1(row.Shown)) << row.Typed;
    }
}

TEST(SelectClause, TellsAggregates) {
    for (const char* text : {"sum([T].[A])", "1+Count(*)", "AVG DISTINCT(x)", "LAST(x)", "MyVAR(1)"})
        EXPECT_TRUE(IsAggregateExpression(QString::fromLatin1(text))) << text;
    for (const char* text : {"SUM (x)", "[T].[SUM]", "STDEV DISTINCT(x)", "VAR", ""})
        EXPECT_FALSE(IsAggregateExpression(QString::fromLatin1(text))) << text;
    EXPECT_FALSE(HoldsAggregateCall(QStringLiteral("SUM DISTINCT(x)"), Qt::CaseInsensitive));
    EXPECT_FALSE(HoldsAggregateCall(QStringLiteral("sum(x)"), Qt::CaseSensitive));
}

TEST(SelectClause, ListsStandForFieldsGroupsAndCalculatedFields) {
    SqlState sql;
    sql.Choose(table, {QStringLiteral("[T].[A]"), QStringLiteral("-[T.x].[B]"), QStringLiteral("bare")});
    Group(sql, "[T].[A]", "[T].[A]", "");
    Group(sql, "[T].[A]", "SUM([T].[A])", "SUMOFA");
    Calc(sql, "[T].[A]*2", "Double");
    Calc(sql, "max([T].[A])", "Most");
    const auto rows = [&] {
        QStringList texts;
        for (int i = 0; i < sql.Form().lstSelectedFields.Items.ListCount(); ++i) {
            const auto& key = sql.Form().SelectedFieldKeys[static_cast<std::size_t>(i)];
            texts << sql.Form().lstSelectedFields.Items.List(i) + u'|' + key.Key + u'|' + key.Column;
        }
        return texts.join(u'\n');
    };
    const QString fields =
        QStringLiteral("[A]|[T].[A]|[T].[A]\nx].[B]|[T.x].[B]|[T.x].[B]\nbare|bare|bare\n");
    FillQueryFieldList(sql.state);
    EXPECT_EQ(rows(), fields + QStringLiteral("SUMOFA|SUM([T].[A])|SUMOFA\n[T].[A]*2|[T].[A]*2|Double\n"
                                              "max([T].[A])|max([T].[A])|Most"));
    RefreshSelectedFieldList(sql.state);
    EXPECT_EQ(rows(), fields + QStringLiteral("Double|[T].[A]*2|Double"));
    sql.Form().optQuery.Selected = 1;
    FillQueryFieldList(sql.state);
    EXPECT_EQ(rows(), fields + QStringLiteral("Double|[T].[A]*2|Double")) << "not filled in Group mode";
}

}  // namespace zephrin
