#include "SqlState.h"
#include "sqlgen/SelectClause.h"

namespace zephrin {

namespace {

using test::SqlState;

struct SelectCase {
    const char* Name;
    const char* Fields;   ///< of [T]; none means no table
    const char* Options;  ///< distinct, fixed (the fields), FIXED (the tables too), top=..., percent=0/1/2
    const char* Groups;   ///< FieldName|GroupBy|FieldAlias|Output
    const char* Calcs;    ///< CalcField|Alias|Output
    const char* Expected;
};

constexpr char all[] = "[T].[A],[T].[B]";
constexpr char two[] = "[T].[A],[T].[B],-[T].[C],-[T].[D],-[T].[E]";
constexpr char none[] = "-[T].[A],-[T].[B]";

const SelectCase cases[] = {
    {"no table", "", "", "", "", ""},
    {"tables and fields fixed", "", "FIXED", "", "", "SELECT *"},
    {"all fields", all, "", "", "", "SELECT *"},
    {"all, distinct, top", all, "distinct top=10", "", "", "SELECT DISTINCT TOP 10 *"},
    {"all, distinct, percent", all, "distinct percent=1 top=10", "", "", "SELECT DISTINCT TOP 10 PERCENT *"},
    {"percent above 100", all, "percent=1 top=150", "", "", "SELECT TOP 150 *"},
    {"a grey percent box is no tick", all, "percent=2 top=5", "", "", "SELECT TOP 5 *"},
    {"two of five", two, "", "", "", "SELECT [T].[A], [T].[B]"},
    {"two, top", two, "top=5", "", "", "SELECT TOP 5 [T].[A], [T].[B]"},
    {"two, distinct, top as typed", two, "distinct top=1e3", "", "",
     "SELECT DISTINCT TOP 1e3 [T].[A], [T].[B]"},
    {"fields fixed, none chosen, distinct", none, "fixed distinct", "", "", "SELECT DISTINCT *"},
    {"fields fixed, but a part chosen", two, "fixed", "", "", "SELECT [T].[A], [T].[B]"},
    {"no field chosen", none, "", "", "", "SELECT "},
    {"all and a calculated one", all, "", "", "[T].[A]*2|X|YES", "SELECT *, [T].[A]*2 AS X"},
    {"only calculated fields", none, "", "", "1|X|YES; 2|Y|YES", "SELECT 1 AS X, 2 AS Y"},
    {"only a calculated one, distinct", none, "distinct", "", "1|X|YES", "SELECT DISTINCT 1 AS X"},
    {"only a calculated one, top", none, "top=5", "", "1|X|YES", "SELECT TOP 5 , 1 AS X"},
    {"calculated fields are particular about YES", all, "", "", "1|X|yes; 2|Y|No; 3|Z|YES",
     "SELECT *, 3 AS Z"},
    {"groups never say distinct", all, "distinct", "a|a||YES; b|SUM(b)|Total|YES", "",
     "SELECT a, SUM(b) AS Total"},
    {"groups, first not put out, top", all, "top=3", "a|a||NO; b|SUM(b)|Total|YES", "",
     "SELECT TOP 3 SUM(b) AS Total"},
    {"groups are not particular about yes", all, "", "a|a||yes", "", "SELECT a"},
    {"groups, none put out", all, "", "a|a||NO", "", "SELECT "},
    {"a group without expression looks its alias up", all, "", "named|||YES; b|||YES; |||YES", "",
     "SELECT named AS First, b AS "},
    {"with groups a calculated field waits for the first aggregate", all, "", "a|a||YES",
     "b|Before|YES; sum(b)|Agg|No; b+1|Behind|YES; b+2|Hidden|yes", "SELECT a, b+1 AS Behind"},
    {"with groups the first item may be a calculated one", all, "top=2", "a|a||NO", "MAX(b)|M|YES",
     "SELECT TOP 2 MAX(b) AS M"},
};

void Arrange(SqlState& sql, const SelectCase& row) {
    if (*row.Fields) sql.Choose("[T]", row.Fields);
    const QString options = QString::fromLatin1(row.Options);
    RunOptions& host = sql.state.Options;
    host.gAllowTableSelection = !options.contains(QLatin1String("FIXED"));
    host.gAllowFieldSelection = !options.contains(QLatin1String("fixed"), Qt::CaseInsensitive);
    sql.Form().chkDistinct.Value = options.contains(QLatin1String("distinct")) ? 1 : 0;
    sql.Form().chkPercent.Value = options.section(QLatin1String("percent="), 1).left(1).toInt();
    sql.Form().txtTopX.Text = options.section(QLatin1String("top="), 1);
    RebuildTopClause(sql.state);
    SqlState::Add(sql.state.rsAlias, "named|First");
    SqlState::Add(sql.state.rsGroupBy, row.Groups);
    SqlState::Add(sql.state.rsCalcFields, row.Calcs);
}

}  // namespace

TEST(SelectClause, FollowsGroupsFieldsAndOptions) {
    for (const SelectCase& row : cases) {
        SqlState sql;
        Arrange(sql, row);
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
        sql.Form().txtTopX.Text = QString::fromLatin1(row.Typed);
        sql.Form().chkPercent.Value = row.Percent;
        RebuildTopClause(sql.state);
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
    sql.Choose("[T]", "[T].[A],-[T.x].[B],bare");
    SqlState::Add(sql.state.rsGroupBy, "[T].[A]|[T].[A]||YES; [T].[A]|SUM([T].[A])|SUMOFA|YES");
    SqlState::Add(sql.state.rsCalcFields, "[T].[A]*2|Double|YES; max([T].[A])|Most|YES");
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
