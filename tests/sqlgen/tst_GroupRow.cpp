#include "SqlState.h"
#include "sqlgen/GroupRow.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/WorkingRows.h"

#include <functional>

namespace zephrin {

namespace {

using test::SqlState;

/// A state in Group mode with the field and the operator selected.
struct GroupRun : SqlState {
    GroupRun() {
        Form().optQuery.Selected = 1;
        Choose("[T]", "[T].[Price],[T].[Unit Price each],[T].[a.b]");
        Add(state.rsCalcFields, "[T].[Price]*2|Profit");
        RefreshSelectedFieldList(state);
    }
    void Add(int field, const char* operatorText, BoxAnswer answer = BoxAnswer::Yes) {
        Form().lstSelectedFields.Items.SetListIndex(field);
        Form().lstOperands.Items.Clear();
        Form().lstOperands.Items.AddItem(QString::fromLatin1(operatorText));
        Form().lstOperands.Items.SetListIndex(0);
        prompts->Answers = {answer};
        AddGroupRow(state);
    }
    using SqlState::Add;
    QString LastRow() const {
        QStringList cells;
        const qint64 last = state.rsGroupBy->RecordCount() - 1;
        for (int field = 0; field < 4; ++field) cells << state.rsGroupBy->TextAt(last, field);
        return cells.join(u'|');
    }
};

}  // namespace

TEST(GroupRow, NamesExpressionAndAlias) {
    const struct {
        int Field;
        const char* Operator;
        const char* Row;
        const char* Alias;
    } rows[] = {
        {0, "GROUP BY", "[T].[Price]|[T].[Price]||YES", ""},
        {0, "SUM", "[T].[Price]|SUM([T].[Price])|SUMOFPrice|YES", "SUM([T].[Price])|SUMOFPrice|rsGroupBy"},
        {0, "SUM DISTINCT", "[T].[Price]|SUM(DISTINCT [T].[Price])|SUMDISTINCTOFPrice|YES",
         "SUM(DISTINCT [T].[Price])|SUMDISTINCTOFPrice|rsGroupBy"},
        // The first blank goes, the second one stays.
        {1, "MAX", "[T].[Unit Price each]|MAX([T].[Unit Price each])|MAXOFUnitPrice each|YES",
         "MAX([T].[Unit Price each])|MAXOFUnitPrice each|rsGroupBy"},
        // Two characters go behind a dot, and one at the start of a text without any.
        {2, "AVG", "[T].[a.b]|AVG([T].[a.b])|AVGOF|YES", "AVG([T].[a.b])|AVGOF|rsGroupBy"},
        {3, "MIN", "[T].[Price]*2|MIN([T].[Price]*2)|MINOFrofit|YES",
         "MIN([T].[Price]*2)|MINOFrofit|rsGroupBy"},
    };
    for (const auto& row : rows) {
        GroupRun run;
        run.Add(row.Field, row.Operator);
        EXPECT_EQ(run.LastRow(), QString::fromLatin1(row.Row)) << row.Operator;
        const ado::RecordsetPtr& aliases = run.state.rsAlias;
        const QString alias = HasRows(aliases) ? aliases->TextAt(0, 0) + u'|' + aliases->TextAt(0, 1) + u'|' +
                                                     aliases->TextAt(0, 2)
                                               : QString();
        EXPECT_EQ(alias, QString::fromLatin1(row.Alias)) << row.Operator;
    }
}

TEST(GroupRow, AsksWithTheRowStandingAlready) {
    GroupRun run;
    qint64 rowsInQuestion = -1;
    run.prompts->WhileOpen = [&](const auto&) { rowsInQuestion = run.state.rsGroupBy->RecordCount(); };
    run.Add(0, "SUM", BoxAnswer::No);
    ASSERT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_EQ(run.prompts->Boxes[0].Text,
              QStringLiteral("Do you want to include SUM([Price]) as an Output Field ?"));
    EXPECT_EQ(run.prompts->Boxes[0].Style, 36);
    EXPECT_EQ(run.prompts->Boxes[0].Title, run.state.Options.gRunTimeCaption);
    EXPECT_EQ(rowsInQuestion, 1);
    EXPECT_TRUE(run.LastRow().endsWith(QLatin1String("|NO")));
    // The same again adds nothing and asks nothing; plain grouping asks as well.
    run.Add(0, "SUM");
    EXPECT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_EQ(run.state.rsGroupBy->RecordCount(), 1);
    run.Add(0, "GROUP BY");
    EXPECT_EQ(run.prompts->Boxes.last().Text,
              QStringLiteral("Do you want to include GROUP BY([Price]) as an Output Field ?"));
}

TEST(GroupRow, AnAliasThatStandsStopsAnotherFieldOfThatName) {
    const struct {
        const char* Operator;
        const char* Group;
        const char* Calculated;
    } rows[] = {{"SUM", "SUMOFPrice", ""},
                {"SUM", "sumofprice", ""},
                {"SUM DISTINCT", "SumDistinctOfPrice", ""},
                {"MAX", "", "[MAXOFPRICE]"},
                {"MIN", "", "MINOFPrice "}};
    for (const auto& row : rows) {
        GroupRun run;
        if (*row.Group)
            run.Add(run.state.rsGroupBy, {QStringLiteral("[U].[Price]"), QStringLiteral("SUM([U].[Price])"),
                                          QString::fromLatin1(row.Group), QStringLiteral("YES")});
        if (*row.Calculated)
            run.Add(run.state.rsCalcFields, {QStringLiteral("1"), QString::fromLatin1(row.Calculated)});
        const qint64 before = run.state.rsGroupBy->RecordCount();
        run.Add(0, row.Operator);
        EXPECT_EQ(run.state.rsGroupBy->RecordCount(), before) << row.Operator;
        ASSERT_EQ(run.prompts->Boxes.size(), 1) << row.Operator;
        EXPECT_EQ(run.prompts->Boxes[0].Text,
                  QStringLiteral("Alias already exists.\r\nAll Alias must be unique."));
    }
}

TEST(GroupRow, AShowingThatEndsInTheQuestionWritesNothing) {
    GroupRun run;
    run.prompts->WhileOpen = [&](const auto&) { ++run.state.Showing; };
    run.Add(0, "SUM");
    EXPECT_EQ(run.state.rsAlias->RecordCount(), 0);
    EXPECT_EQ(run.LastRow(), QStringLiteral("|||"));
}

TEST(GroupRow, TheQuestionMayLetAnybodyChangeTheRows) {
    const struct {
        const char* Name;
        std::function<void(GroupRun&)> Meanwhile;
        const char* Groups;
    } cases[] = {
        {"moved", [](GroupRun& run) { run.state.rsGroupBy->MoveFirst(); },
         "MAX([T].[Price]);SUM([T].[Price])"},
        {"deleted", [](GroupRun& run) { run.state.rsGroupBy->DeleteAll(); }, ""},
        {"closed", [](GroupRun& run) { run.state.rsGroupBy->Close(); }, ""},
        {"replaced", [](GroupRun& run) { run.state.rsGroupBy = std::make_shared<ado::Recordset>(); }, ""},
        {"again", [](GroupRun& run) { run.Add(0, "MIN"); },
         "MAX([T].[Price]);SUM([T].[Price]);MIN([T].[Price])"},
    };
    for (const auto& row : cases) {
        GroupRun run;
        run.Add(0, "MAX");
        bool asked = false;
        run.prompts->WhileOpen = [&](const auto&) {
            if (!std::exchange(asked, true)) row.Meanwhile(run);
            run.prompts->Answers = {BoxAnswer::Yes};
        };
        run.Add(0, "SUM");
        QStringList groups;
        for (const GroupRow& group : GroupRows(run.state)) groups << group.GroupBy;
        EXPECT_EQ(groups.join(u';'), QString::fromLatin1(row.Groups)) << row.Name;
    }
}

TEST(GroupRow, OrdersComeAsOftenAsTheyAreAdded) {
    GroupRun run;
    run.Add(3, "DESC");
    EXPECT_EQ(run.state.rsOrderBy->RecordCount(), 0);
    for (int i = 0; i < 2; ++i) AddOrderRow(run.state);
    EXPECT_EQ(run.state.rsOrderBy->RecordCount(), 2);
    EXPECT_EQ(run.state.rsOrderBy->TextAt(1, 0), QStringLiteral("[T].[Price]*2"));
    EXPECT_EQ(run.state.rsOrderBy->TextAt(1, 1), QStringLiteral("[T].[Price]*2 DESC"));
    EXPECT_TRUE(run.state.rsOrderBy->IsNullAt(1, 2));
}

}  // namespace zephrin
