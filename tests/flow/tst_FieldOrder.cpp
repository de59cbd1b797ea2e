#include "flow/CalcFields.h"
#include "flow/FieldOrder.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/SqlState.h"
#include "sqlgen/WorkingRows.h"

#include <functional>
#include <gtest/gtest.h>

namespace zephrin {

namespace {

using test::SqlState;

/// Groups, orders and calculated fields over one table.
struct OrderRun : SqlState {
    explicit OrderRun(const char* mode) {
        Choose("[T]", "[T].[A],[T].[B]");
        Add(state.rsGroupBy, "[T].[A]|[T].[A]|-|YES; [T].[B]|SUM([T].[B])|SUMOFB|YES");
        Add(state.rsAlias, "SUM([T].[B])|SUMOFB|rsGroupBy; [T].[A]*2|X|rsCalcFields");
        Add(state.rsCalcFields, "[T].[A]*2|X|YES; [T].[A]*3|Y|No");
        Add(state.rsOrderBy, "[T].[A]|[T].[A] ASC; SUM([T].[B])|SUM([T].[B]) ASC; [T].[A]*2|[T].[A]*2 ASC");
        state.EditMode = QString::fromUtf8(mode);
    }

    FieldOrderForm On(int row) {
        FieldOrderForm form = LoadFieldOrder(state);
        OrderRowClicked(state, form, row);
        return form;
    }
    QStringList Groups() const {
        QStringList rows;
        for (const GroupRow& row : GroupRows(state))
            rows << row.FieldName + u'|' + row.GroupBy + u'|' + row.Output;
        return rows;
    }
    QStringList Orders() const { return ColumnTexts(state.rsOrderBy, QLatin1String("OrderBy")); }
    QStringList Calcs() const { return ColumnTexts(state.rsCalcFields, QLatin1String("CalcField")); }
    QStringList Aliases() const { return ColumnTexts(state.rsAlias, QLatin1String("Alias")); }
};

QStringList Texts(const char* joined) {
    return QString::fromUtf8(joined).split(u';', Qt::SkipEmptyParts);
}

}  // namespace

TEST(FieldOrder, ShowsTheRowsOfItsMode) {
    const struct {
        const char* Mode;
        const char* Fields;
        const char* Aliases;
        bool Output, Edit;
    } rows[] = {
        {"Group", "[T].[A];SUM([T].[B])", ";SUMOFB", true, false},
        {"Order", "[T].[A] ASC;SUM([T].[B]) ASC;[T].[A]*2 ASC", ";;", false, false},
        {"Calc", "[T].[A]*2;[T].[A]*3", "X;Y", true, true},
    };
    for (const auto& row : rows) {
        OrderRun run(row.Mode);
        const FieldOrderForm form = LoadFieldOrder(run.state);
        QStringList fields, aliases;
        for (const auto& each : form.Rows) {
            fields << each.Field;
            aliases << each.Alias;
        }
        EXPECT_EQ(fields.join(u';'), QString::fromUtf8(row.Fields));
        EXPECT_EQ(aliases.join(u';'), QString::fromUtf8(row.Aliases));
        EXPECT_EQ(form.OutputVisible, row.Output);
        EXPECT_EQ(form.AliasVisible, row.Output);
        EXPECT_EQ(form.EditVisible, row.Edit);
        EXPECT_FALSE(form.DeleteEnabled || form.EditEnabled || form.UpEnabled || form.DownEnabled);
    }
}

TEST(FieldOrder, MovesAreEnabledByTheRowsPlace) {
    OrderRun run("Order");
    const bool up[] = {false, true, true}, down[] = {true, true, false};
    for (int row = 0; row < 3; ++row) {
        const FieldOrderForm form = run.On(row);
        EXPECT_EQ(form.UpEnabled, up[row]) << row;
        EXPECT_EQ(form.DownEnabled, down[row]) << row;
        EXPECT_TRUE(form.DeleteEnabled);
    }
    run.state.rsOrderBy->DeleteAll();
    run.Add(run.state.rsOrderBy, "a|a ASC");
    EXPECT_FALSE(run.On(0).UpEnabled || run.On(0).DownEnabled);
}

TEST(FieldOrder, AMoveCountsOnlyAtOk) {
    OrderRun run("Group");
    const QStringList before = run.Groups();
    FieldOrderForm form = run.On(0);
    MoveOrderRow(run.state, form, true);
    EXPECT_EQ(form.ListIndex, 1);
    EXPECT_EQ(run.Groups(), before);
    AcceptFieldOrder(run.state, form);
    EXPECT_EQ(run.Groups(), QStringList({before[1], before[0]}));
    BuildSelectClause(run.state);
    EXPECT_TRUE(run.state.SelectClause.startsWith(QStringLiteral("SELECT SUM([T].[B]) AS SUMOFB, [T].[A]")))
        << qPrintable(run.state.SelectClause);
}

TEST(FieldOrder, OfEqualRowsEachStaysAndOneGoes) {
    OrderRun run("Order");
    run.Add(run.state.rsOrderBy, "[T].[A]|[T].[A] ASC");
    FieldOrderForm form = run.On(0);
    MoveOrderRow(run.state, form, true);
    AcceptFieldOrder(run.state, form);
    EXPECT_EQ(run.Orders(), Texts("SUM([T].[B]) ASC;[T].[A] ASC;[T].[A]*2 ASC;[T].[A] ASC"));
    run.prompts->Answers = {BoxAnswer::Yes};
    form = run.On(3);
    DeleteOrderRow(run.state, form);
    EXPECT_EQ(run.Orders(), Texts("SUM([T].[B]) ASC;[T].[A]*2 ASC;[T].[A] ASC"));
}

TEST(FieldOrder, OutputIsWrittenAtOnceInCapitals) {
    OrderRun run("Calc");
    FieldOrderForm form = run.On(1);
    EXPECT_FALSE(form.Output);
    form = run.On(0);
    EXPECT_TRUE(form.Output);
    OutputClicked(run.state, form, false);
    EXPECT_EQ(ColumnTexts(run.state.rsCalcFields, QLatin1String("OutputYes/No")), Texts("NO;No"));
    run.state.EditMode = QStringLiteral("Order");
    OutputClicked(run.state, form, true);
    EXPECT_EQ(ColumnTexts(run.state.rsCalcFields, QLatin1String("OutputYes/No")), Texts("NO;No"));
}

TEST(FieldOrder, ADeletedRowTakesWithItWhatHangsOnIt) {
    const struct {
        const char* Mode;
        int Row;
        const char* Groups;
        const char* Calcs;
        const char* Orders;
        const char* Aliases;
    } rows[] = {
        {"Group", 1, "[T].[A]|[T].[A]|YES", "[T].[A]*2;[T].[A]*3", "[T].[A] ASC;[T].[A]*2 ASC", "X"},
        // The text of a group on A stands in the order on twice A, too.
        {"Group", 0, "[T].[B]|SUM([T].[B])|YES", "[T].[A]*2;[T].[A]*3", "SUM([T].[B]) ASC", "SUMOFB;X"},
        {"Calc", 0, "[T].[A]|[T].[A]|YES;[T].[B]|SUM([T].[B])|YES", "[T].[A]*3",
         "[T].[A] ASC;SUM([T].[B]) ASC", "SUMOFB"},
        {"Order", 1, "[T].[A]|[T].[A]|YES;[T].[B]|SUM([T].[B])|YES", "[T].[A]*2;[T].[A]*3",
         "[T].[A] ASC;[T].[A]*2 ASC", "SUMOFB;X"},
    };
    for (const auto& row : rows) {
        OrderRun run(row.Mode);
        run.prompts->Answers = {BoxAnswer::No, BoxAnswer::Yes};
        FieldOrderForm form = run.On(row.Row);
        const auto count = form.Rows.size();
        DeleteOrderRow(run.state, form);
        EXPECT_EQ(form.Rows.size(), count) << "No deletes nothing";
        // A host's box may let the user change the list meanwhile.
        run.prompts->WhileOpen = [&form](const auto&) { std::vector<FieldOrderForm::Row>().swap(form.Rows); };
        DeleteOrderRow(run.state, form);
        EXPECT_EQ(run.Groups(), Texts(row.Groups)) << row.Mode;
        EXPECT_EQ(run.Calcs(), Texts(row.Calcs)) << row.Mode;
        EXPECT_EQ(run.Orders(), Texts(row.Orders)) << row.Mode;
        EXPECT_EQ(run.Aliases(), Texts(row.Aliases)) << row.Mode;
        EXPECT_FALSE(form.DeleteEnabled);
        EXPECT_EQ(run.prompts->Boxes[0].Style, 36);
        EXPECT_EQ(run.prompts->Boxes[0].Title, QStringLiteral("Delete Field"));
    }
}

TEST(FieldOrder, GroupsAndOrdersFollowAnEditedExpression) {
    OrderRun run("Calc");
    const auto old = QStringLiteral("[T].[A]*2"), fresh = QStringLiteral("[T].[A]*4");
    run.Add(run.state.rsGroupBy, "[T].[A]*2|[T].[A]*2|-|YES; [T].[A]*2|MAX([T].[A]*2)|MAXOF|YES");
    run.Add(run.state.rsAlias, "MAX([T].[A]*2)|MAXOF|rsGroupBy");
    run.Add(run.state.rsOrderBy, "[T].[A]*2|[T].[A]*2 DESC");
    FieldOrderForm form = run.On(0);
    BeginCalcEdit(run.state, form);
    EXPECT_EQ(run.state.EditCalcField, old);
    EXPECT_EQ(run.state.EditCalcAlias, QStringLiteral("X"));
    EXPECT_EQ(run.state.EditCalcShow, 1);
    run.state.CalcFieldCreated = true;
    run.state.EditCalcNew = fresh;
    EndCalcEdit(run.state, form, old);
    EXPECT_EQ(run.Groups().mid(2), Texts("[T].[A]*4|[T].[A]*4|YES;[T].[A]*4|MAX([T].[A]*4)|YES"));
    EXPECT_EQ(run.Orders().mid(2), Texts("[T].[A]*4 ASC;[T].[A]*4 DESC"));
    EXPECT_EQ(ColumnTexts(run.state.rsAlias, QLatin1String("FieldName")).last(),
              QStringLiteral("MAX([T].[A]*4)"));
    EXPECT_FALSE(run.state.CalcFieldCreated);
    EXPECT_TRUE(run.state.EditCalcNew.isEmpty());
}

TEST(FieldOrder, OnlyWhatAnAggregateIsCalledWithFollowsAnEdit) {
    const struct {
        const char* Old;
        const char* GroupBy;
        const char* New;
        const char* After;
    } rows[] = {
        {"A", "AVG(A)", "B", "AVG(B)"},
        {"M", "SUM(DISTINCT M)", "M*2", "SUM(DISTINCT M*2)"},
        {"D", "COUNT(DISTINCT D)", "E", "COUNT(DISTINCT E)"},
        {"(A)", "MAX((A))", "(B)", "MAX((B))"},
        {"A", "A", "B", "B"},
        {"A", "AVG([A] + A)", "B", "AVG([A] + A)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.GroupBy);
        const QString old = QString::fromUtf8(row.Old), groupBy = QString::fromUtf8(row.GroupBy),
                      fresh = QString::fromUtf8(row.New), after = QString::fromUtf8(row.After);
        OrderRun run("Calc");
        run.Add(run.state.rsGroupBy, {old, groupBy, QStringLiteral("Z"), QStringLiteral("YES")});
        run.Add(run.state.rsAlias, {groupBy, QStringLiteral("Z"), QStringLiteral("rsGroupBy")});
        run.Add(run.state.rsOrderBy, {groupBy, groupBy + QStringLiteral(" DESC")});
        FieldOrderForm form = run.On(0);
        run.state.CalcFieldCreated = true;
        run.state.EditCalcNew = fresh;
        EndCalcEdit(run.state, form, old);
        EXPECT_EQ(run.Groups().last(), fresh + u'|' + after + QStringLiteral("|YES"));
        EXPECT_EQ(run.Orders().last(), after + QStringLiteral(" DESC")) << "the ordering follows the group";
        if (groupBy != old) {
            EXPECT_EQ(ColumnTexts(run.state.rsAlias, QLatin1String("FieldName")).last(), after);
        }
    }
}

TEST(FieldOrder, ARowThatCannotHoldTheEditedExpressionStays) {
    OrderRun run("Calc");
    const auto old = QStringLiteral("[T].[A]*2"), fresh = QStringLiteral("1").repeated(7999);
    run.Add(run.state.rsGroupBy, "[T].[A]*2|MAX([T].[A]*2)|-|YES; [T].[A]*2|[T].[A]*2|-|YES");
    FieldOrderForm form = run.On(0);
    run.state.CalcFieldCreated = true;
    run.state.EditCalcNew = fresh;
    EndCalcEdit(run.state, form, old);
    EXPECT_EQ(run.Groups().mid(2), QStringList({QStringLiteral("[T].[A]*2|MAX([T].[A]*2)|YES"),
                                                fresh + u'|' + fresh + QStringLiteral("|YES")}));
    EXPECT_EQ(run.Orders().mid(2), Texts("[T].[A]*2 ASC"));
}

TEST(FieldOrder, MovesOutlastWhatElseIsDone) {
    const struct {
        const char* What;
        std::function<void(OrderRun&, FieldOrderForm&)> Act;
        const char* After;
    } acts[] = {
        {"a cancelled edit",
         [](OrderRun& run, FieldOrderForm& form) {
             BeginCalcEdit(run.state, form);
             EndCalcEdit(run.state, form, run.state.EditCalcField);
             EXPECT_EQ(form.ListIndex, 2);
         },
         "[T].[A]*3;[T].[A]*4;[T].[A]*2"},
        {"an edit",
         [](OrderRun& run, FieldOrderForm& form) {
             OrderRowClicked(run.state, form, 0);
             BeginCalcEdit(run.state, form);
             CalcFieldForm editor = LoadCalcField(run.state);
             ExpressionTyped(editor, QStringLiteral("9"));
             EXPECT_EQ(AcceptCalcField(run.state, editor), CalcOutcome::Stored);
             EndCalcEdit(run.state, form, QStringLiteral("[T].[A]*3"));
             EXPECT_EQ(form.Alias, QStringLiteral("Y")) << "the row is still in hand";
         },
         "9;[T].[A]*4;[T].[A]*2"},
        {"a delete",
         [](OrderRun& run, FieldOrderForm& form) {
             OrderRowClicked(run.state, form, 1);
             run.prompts->Answers = {BoxAnswer::Yes};
             DeleteOrderRow(run.state, form);
         },
         "[T].[A]*3;[T].[A]*2"},
    };
    for (const auto& act : acts) {
        OrderRun run("Calc");
        run.Add(run.state.rsCalcFields, "[T].[A]*4|Z|YES");
        FieldOrderForm form = run.On(0);
        for (int step = 0; step < 2; ++step) MoveOrderRow(run.state, form, true);
        act.Act(run, form);
        AcceptFieldOrder(run.state, form);
        EXPECT_EQ(run.Calcs(), Texts(act.After)) << act.What;
    }
}

TEST(FieldOrder, DeletingABlankExpressionTakesNoOrderAlong) {
    OrderRun run("Calc");
    run.Add(run.state.rsCalcFields, {QString(), QStringLiteral("Blank"), QStringLiteral("YES")});
    const QStringList orders = run.Orders();
    FieldOrderForm form = run.On(2);
    run.prompts->Answers = {BoxAnswer::Yes};
    DeleteOrderRow(run.state, form);
    EXPECT_EQ(run.Calcs().size(), 2);
    EXPECT_EQ(run.Orders(), orders);
}

TEST(FieldOrder, AnEmptyRecordsetIsAnEmptyList) {
    OrderRun run("Group");
    run.state.rsGroupBy->DeleteAll();
    FieldOrderForm form = LoadFieldOrder(run.state);
    EXPECT_TRUE(form.Rows.empty());
    AcceptFieldOrder(run.state, form);
    run.state.rsGroupBy.reset();
    AcceptFieldOrder(run.state, form);
}

}  // namespace zephrin
