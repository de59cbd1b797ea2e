#include "BuildRun.h"
#include "flow/CalcFields.h"
#include "flow/FieldOrder.h"

#include <functional>

namespace zephrin {

namespace {

using test::BuildRun;

const QString id = QStringLiteral("[Id]");
const QString total = QStringLiteral("[Total]");
const QString between = QStringLiteral("between");
const QString equal = QStringLiteral("=");
const QString isNull = QStringLiteral("is null");

}  // namespace

TEST(Criteria, OperatorsEnableWhatTheyNeed) {
    // Of each act: box 1, box 2 and commit, "+" where enabled.
    const struct {
        const char* Operator;
        const char* Value1;
        const char* Before;  ///< the operator that was chosen before
        const char* Expected;
    } rows[] = {
        {"=", "", "", "+--"},       {"=", "5", "", "+-+"},           {"between", "5", "", "++-"},
        {"is null", "", "", "--+"}, {"is not null", "5", "", "--+"}, {"contains", "", "is null", "+-+"},
    };
    for (const auto& row : rows) {
        BuildRun run;
        run.PickField(total);
        if (*row.Before) run.PickOperator(QString::fromLatin1(row.Before));
        ValueTyped(run.state, 0, QString::fromLatin1(row.Value1));
        run.PickOperator(QString::fromLatin1(row.Operator));
        const FormState& form = run.Form();
        QString enabled;
        for (const ControlState* control : {static_cast<const ControlState*>(&form.cmbAvailableValues1),
                                            static_cast<const ControlState*>(&form.cmbAvailableValues2),
                                            static_cast<const ControlState*>(&form.cmdCommit)})
            enabled += control->Enabled ? u'+' : u'-';
        EXPECT_EQ(enabled, QString::fromLatin1(row.Expected)) << row.Operator;
        EXPECT_TRUE(form.cmdFieldValues.Enabled);
    }
}

TEST(Criteria, BetweenWaitsForBothValues) {
    BuildRun run;
    run.PickField(total);
    run.PickOperator(between);
    ValueTyped(run.state, 0, QStringLiteral("1"));
    EXPECT_FALSE(run.Form().cmdCommit.Enabled);
    ValueTyped(run.state, 1, QStringLiteral("5"));
    EXPECT_TRUE(run.Form().cmdCommit.Enabled);
    EXPECT_EQ(run.Form().fraBuildQuery.Caption, QStringLiteral("Where [Total] between 1 AND 5"));
    ValueTyped(run.state, 0, {});
    EXPECT_FALSE(run.Form().cmdCommit.Enabled);
}

TEST(Criteria, ACommitEmptiesTheValuesAndKeepsTheOperator) {
    BuildRun run;
    run.PickField(total);
    EXPECT_EQ(run.Form().lstSelectedFields.ToolTipText, QStringLiteral("[Orders].[Total]"));
    run.PickOperator(QStringLiteral(">"));
    ValueTyped(run.state, 0, QStringLiteral("5"));
    CommitEntry(run.state);
    const FormState& form = run.Form();
    EXPECT_EQ(run.Sql(), QStringLiteral("SELECT * | FROM [Orders] | WHERE ([Orders].[Total] > 5) | "));
    EXPECT_EQ(form.cmbAvailableValues1.Text, QString());
    EXPECT_EQ(form.lstOperands.Items.Text(), QStringLiteral(">"));
    EXPECT_FALSE(form.cmdCommit.Enabled);
    EXPECT_TRUE(form.optAndOr.Options[0].Enabled);
    EXPECT_EQ(form.FocusRequest, QStringLiteral("cmbAvailableValues1"));
    EXPECT_EQ(form.StatusText, QStringLiteral("Ready .."));
    EXPECT_EQ(form.FieldHasCriteria, 1);
}

TEST(Criteria, TheOperatorChoosesBetweenAndAndOr) {
    const struct {
        const char* Operator;
        int Expected;
    } rows[] = {{"=", 1},
                {"<>", 0},
                {">", 0},
                {"<=", 0},
                {"between", 1},
                {"like", 0},
                {"not like", 0},
                {"contains", 1},
                {"begins with", 1},
                {"ends with", 1},
                {"does not end with", 0},
                {"is null", 1},
                {"is not null", 1}};
    BuildRun run;
    run.Enter(total, QStringLiteral(">"), QStringLiteral("5"));
    for (const auto& row : rows) {
        run.PickField(total);
        run.PickOperator(QString::fromLatin1(row.Operator));
        EXPECT_EQ(run.Form().optAndOr.Selected, row.Expected) << row.Operator;
        // A field that has no criterion keeps AND.
        run.PickField(id);
        run.PickOperator(QString::fromLatin1(row.Operator));
        EXPECT_EQ(run.Form().optAndOr.Selected, 0) << row.Operator;
    }
    // A click on the field alone applies it too.
    run.PickOperator(equal);
    run.PickField(total);
    EXPECT_EQ(run.Form().optAndOr.Selected, 1);
}

TEST(Criteria, TwoValuesOfOneFieldBecomeAlternatives) {
    BuildRun run;
    run.Enter(id, QStringLiteral(">"), QStringLiteral("0"));
    run.Enter(total, equal, QStringLiteral("50"));
    ValueTyped(run.state, 0, QStringLiteral("75"));
    CommitEntry(run.state);
    EXPECT_EQ(run.state.WhereClause,
              QStringLiteral("WHERE ([Orders].[Id] > 0) AND ([Orders].[Total] = 50) OR "
                             "([Orders].[Id] > 0) AND ([Orders].[Total] = 75)"));
}

// The entry is the user's work: what a cell can't hold stays where it was typed.
TEST(Criteria, WhatDoesNotFitLeavesQueryAndEntryAsTheyWere) {
    const auto snapshot = [](const BuildRun& run) {
        const FormState& form = *run.state.Form;
        return QStringLiteral("%1, %2 criteria, %3 %4, \"%5\", %6, %7")
            .arg(run.state.WhereClause)
            .arg(form.FieldHasCriteria)
            .arg(form.optAndOr.Selected)
            .arg(form.optAndOr.Options[1].Enabled)
            .arg(form.cmbAvailableValues1.Text, form.fraBuildQuery.Caption)
            .arg(form.cmdCommit.Enabled);
    };
    const struct {
        const char* What;
        const char* Before;  ///< the operator and the value of a condition that stands already
        const char* Operator;
        int Join;
        int Length;
    } rows[] = {{"the first", "", "=", 0, 600},
                {"an alternative", "> 1", "=", 1, 600},
                {"a further one without room", "<> 1", "<>", 0, 540},
                {"a pattern", "> 1", "does not contain", 0, 545}};
    for (const auto& row : rows) {
        BuildRun run;
        const QStringList before = QString::fromLatin1(row.Before).split(u' ', Qt::SkipEmptyParts);
        if (!before.isEmpty()) run.Enter(total, before[0], before[1]);
        run.PickField(total);
        run.PickOperator(QString::fromLatin1(row.Operator));
        run.Form().optAndOr.Selected = row.Join;
        ValueTyped(run.state, 0, QString(row.Length, u'9'));
        const QString as = snapshot(run);
        CommitEntry(run.state);
        EXPECT_EQ(snapshot(run), as) << row.What;
        EXPECT_EQ(run.Form().StatusText,
                  QStringLiteral("Not added: the conditions on a field can have 550 characters in all .."));
        EXPECT_EQ(run.Form().Pointer, MousePointer::Default);
        ValueTyped(run.state, 0, QStringLiteral("2"));
        CommitEntry(run.state);
        EXPECT_EQ(run.Form().StatusText, QStringLiteral("Ready ..")) << row.What;
        EXPECT_NE(snapshot(run), as) << row.What;
    }
}

TEST(Criteria, AGroupOrOrderThatDoesNotFitSaysSo) {
    BuildRun run;
    const QString expression = QString(7998, u'1');
    run.state.rsCalcFields->AddNew();
    run.state.rsCalcFields->SetValue(0, expression);
    run.state.rsCalcFields->SetValue(1, QStringLiteral("Long"));
    run.state.rsCalcFields->Update();
    const struct {
        int Mode;
        QString Row, Operator;
    } rows[] = {{1, QStringLiteral("Long"), QStringLiteral("SUM")}, {2, expression, QStringLiteral("ASC")}};
    for (const auto& row : rows) {
        ChooseQueryMode(run.state, row.Mode);
        run.PickField(row.Row);
        run.PickOperator(row.Operator);
        run.prompts->Answers = {BoxAnswer::Yes};
        CommitEntry(run.state);
        EXPECT_EQ(run.Form().StatusText,
                  QStringLiteral("Not added: the expression can have 8000 characters in all .."));
        EXPECT_EQ(run.Form().lstOperands.Items.Text(), row.Operator) << "the entry stays";
        EXPECT_TRUE(run.Form().cmdCommit.Enabled);
        EXPECT_FALSE(HasRows(run.state.rsGroupBy) || HasRows(run.state.rsOrderBy));
    }
}

TEST(Criteria, NothingTellsOfAFieldThatIsNoLongerSelected) {
    const struct {
        const char* What;
        std::function<void(BuildRun&)> Act;
        const char* Caption;
    } rows[] = {
        {"the statement is shown", [](BuildRun& run) { ShowSqlView(run.state); }, "Where"},
        {"a dialog", [](BuildRun& run) { BeginFieldOrder(run.state, QStringLiteral("Order")); }, "Where"},
        {"a calculated field", [](BuildRun& run) { EndCalcField(run.state); }, "Where"},
        {"a group",
         [](BuildRun& run) {
             ChooseQueryMode(run.state, 1);
             run.PickField(total);
             run.PickOperator(QStringLiteral("SUM"));
             run.prompts->Answers = {BoxAnswer::Yes};
             CommitEntry(run.state);
         },
         "Group"},
    };
    for (const auto& row : rows) {
        BuildRun run;
        run.Enter(total, QStringLiteral(">"), QStringLiteral("5"));
        row.Act(run);
        const FormState& form = run.Form();
        EXPECT_EQ(form.lstSelectedFields.Items.ListIndex(), -1) << row.What;
        EXPECT_EQ(form.fraBuildQuery.Caption, QString::fromLatin1(row.Caption)) << row.What;
        EXPECT_EQ(form.lstSelectedFields.ToolTipText, QString()) << row.What;
        EXPECT_EQ(form.FieldHasCriteria, 0) << row.What;
        EXPECT_FALSE(form.cmdCommit.Enabled) << row.What;
    }
}

TEST(Criteria, ValuesAreLookedUpWithoutNulls) {
    BuildRun run;
    run.database.Run(QStringLiteral("INSERT INTO Orders VALUES (14, NULL, NULL), (15, 1, 50)"));
    run.PickField(total);
    run.PickOperator(equal);
    LookUpFieldValues(run.state);
    const QStringList expected{QStringLiteral("50.00"), QStringLiteral("75.00"), QStringLiteral("120.00"),
                               QStringLiteral("250.50")};
    EXPECT_EQ(run.Form().cmbAvailableValues1.Items.Items(), expected);
    EXPECT_EQ(run.Form().cmbAvailableValues2.Items.Items(), expected);
    run.Form().cmbAvailableValues1.Items.SetListIndex(2);
    EXPECT_EQ(run.Form().cmbAvailableValues1.Text, QStringLiteral("120.00"));
    EXPECT_TRUE(run.Form().cmdCommit.Enabled);
    // Typed over and picked again.
    ValueTyped(run.state, 0, QStringLiteral("12"));
    run.Form().cmbAvailableValues1.Items.SetListIndex(2);
    EXPECT_EQ(run.Form().cmbAvailableValues1.Text, QStringLiteral("120.00"));
    run.PickField(id);
    EXPECT_EQ(run.Form().cmbAvailableValues1.Items.ListCount(), 0);
    run.database.Run(QStringLiteral("DROP TABLE Orders"));
    LookUpFieldValues(run.state);
    EXPECT_EQ(run.Form().cmbAvailableValues1.Items.ListCount(), 0);
    EXPECT_TRUE(run.Form().StatusText.startsWith(QStringLiteral("The values could not be read: ")));
    EXPECT_EQ(run.Form().Pointer, MousePointer::Default);
}

TEST(Criteria, ValueSearchMayBeForbidden) {
    BuildRun run;
    run.state.Options.gAllowValueSearch = false;
    run.PickField(total);
    run.PickOperator(equal);
    EXPECT_FALSE(run.Form().cmdFieldValues.Enabled);
}

TEST(Criteria, GroupsAreWrittenWithTheirHaving) {
    BuildRun run;
    ChooseQueryMode(run.state, 1);
    run.PickField(QStringLiteral("[CustomerId]"));
    EXPECT_FALSE(run.Form().cmdCommit.Enabled);
    run.PickOperator(QStringLiteral("GROUP BY"));
    EXPECT_TRUE(run.Form().cmdCommit.Enabled);
    run.prompts->Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    CommitEntry(run.state);
    EXPECT_EQ(run.Form().FocusRequest, QStringLiteral("lstSelectedFields"));
    EXPECT_FALSE(run.Form().cmdCommit.Enabled);
    run.PickField(total);
    run.PickOperator(QStringLiteral("SUM"));
    CommitEntry(run.state);
    ChooseQueryMode(run.state, 0);
    run.Enter(QStringLiteral("SUMOFTotal"), QStringLiteral(">"), QStringLiteral("100"));
    ChooseQueryMode(run.state, 2);
    run.PickField(QStringLiteral("SUMOFTotal"));
    run.PickOperator(QStringLiteral("DESC"));
    CommitEntry(run.state);
    EXPECT_EQ(
        run.Sql(),
        QStringLiteral("SELECT [Orders].[CustomerId], SUM([Orders].[Total]) AS SUMOFTotal | FROM [Orders]"
                       " | GROUP BY [Orders].[CustomerId] | HAVING (SUM([Orders].[Total]) > 100)"
                       " | ORDER BY SUM([Orders].[Total]) DESC"));
}

TEST(Criteria, AShowingThatEndsInTheQuestionEndsTheCommit) {
    BuildRun run;
    ChooseQueryMode(run.state, 1);
    run.PickField(total);
    run.PickOperator(QStringLiteral("SUM"));
    run.prompts->Answers = {BoxAnswer::Yes};
    run.prompts->WhileOpen = [&](const auto&) { UnloadForm(run.state); };
    CommitEntry(run.state);
    EXPECT_EQ(run.state.rsGroupBy, nullptr);
    EXPECT_EQ(run.Form().StatusText, QString());
}

}  // namespace zephrin
