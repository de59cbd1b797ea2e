#include "BuildRun.h"

namespace zephrin {

namespace {

using test::BuildRun;

const QString total = QStringLiteral("[Total]");
const QString plain = QStringLiteral("SELECT * | FROM [Orders] | ");

}  // namespace

TEST(BuildTab, ModesOfferTheirOperators) {
    const struct {
        const char* Dialect;
        int Mode;
        const char* Caption;
        const char* Operators;
    } rows[] = {
        {"SQL Server", 0, "Where",
         "=,<>,>,>=,<,<=,between,like,not like,contains,does not contain,begins with,does not begin "
         "with,ends with,"
         "does not end with,is null,is not null"},
        {"SQL Server", 1, "Group",
         "GROUP BY,SUM,COUNT,AVG,MIN,MAX,STDEV,VAR,SUM DISTINCT,COUNT DISTINCT,AVG DISTINCT,MIN DISTINCT,MAX "
         "DISTINCT"},
        {"MS Access", 1, "Group", "GROUP BY,SUM,COUNT,AVG,MIN,MAX,STDEV,VAR,FIRST,LAST"},
        {"MS Access", 2, "Order", "ASC,DESC"},
    };
    for (const auto& row : rows) {
        BuildRun run(QString::fromLatin1(row.Dialect));
        ChooseQueryMode(run.state, row.Mode);
        EXPECT_EQ(run.Form().lstOperands.Items.Items().join(u','), QString::fromLatin1(row.Operators));
        EXPECT_FALSE(run.Form().lstOperands.Enabled);
        EXPECT_EQ(run.Form().fraBuildQuery.Caption, QString::fromLatin1(row.Caption));
    }
    BuildRun run;
    run.state.gDatabaseType = QStringLiteral("Other");
    ChooseQueryMode(run.state, 1);
    EXPECT_EQ(run.Form().lstOperands.Items.ListCount(), 0);
}

TEST(BuildTab, OptionsWriteTheStatementAtOnce) {
    BuildRun run;
    EXPECT_EQ(run.Sql(), plain);
    run.Form().chkDistinct.Value = 1;
    DistinctClicked(run.state);
    run.Form().txtTopX.Text = QStringLiteral("10");
    TopXChanged(run.state);
    run.Form().chkPercent.Value = 1;
    PercentClicked(run.state);
    EXPECT_EQ(run.Sql(), QStringLiteral("SELECT DISTINCT TOP 10 PERCENT * | FROM [Orders] | "));
    run.Form().txtTopX.Text = QStringLiteral("1x");
    TopXChanged(run.state);
    EXPECT_EQ(run.Form().txtTopX.Text, QString());
    EXPECT_EQ(run.Sql(), QStringLiteral("SELECT DISTINCT * | FROM [Orders] | "));
}

TEST(BuildTab, OptionControlsFollowTheHostAndTheTables) {
    BuildRun run;
    const FormState& form = run.Form();
    run.state.Options.gAllowGroupBy = run.state.Options.gAllowCalcFields = false;
    SetOptionControls(run.state, 0);
    EXPECT_FALSE(form.cmdSaveQuery.Enabled);
    EXPECT_FALSE(form.fraQueryOptions.Enabled);
    SetOptionControls(run.state, 1);
    EXPECT_TRUE(form.cmdSaveQuery.Enabled);
    EXPECT_TRUE(form.fraQueryOptions.Enabled);
    EXPECT_FALSE(form.optQuery.Options[1].Enabled);
    EXPECT_FALSE(form.cmdEditGroup.Enabled);
    EXPECT_FALSE(form.cmdCalcField.Enabled);
    EXPECT_FALSE(form.cmdEditCalcField.Enabled);
    EXPECT_TRUE(form.optQuery.Options[2].Enabled);
    EXPECT_TRUE(form.cmdEditOrder.Enabled);
    run.state.Options.gAllowSaveDelete = false;
    SetOptionControls(run.state, 2);
    EXPECT_FALSE(form.cmdSaveQuery.Enabled);
}

TEST(BuildTab, TypedTextKeepsItsColoursAndDecidesWhetherItRuns) {
    BuildRun run;
    RichTextState& box = run.Form().txtSQL;
    const QString text = QStringLiteral("SELECT *\r\nFROM [Orders]\r\n");
    ASSERT_EQ(box.Text, text);
    // The last colour of a place counts.
    const auto colourAt = [&](int place) {
        quint32 colour = 0;
        for (const ColourSpan& span : box.Colours)
            if (place >= span.Start && place < span.Start + span.Length) colour = span.Colour;
        return colour;
    };
    const quint32 blue = 0xff0000ff, black = 0xff000000;
    StatementTyped(run.state, QStringLiteral("SELECTx *\r\nFROM [Orders]\r\n"));
    EXPECT_EQ(colourAt(6), blue) << "typed behind a coloured character";
    EXPECT_EQ(colourAt(7), black);
    EXPECT_EQ(colourAt(11), blue) << "FROM has moved along";
    EXPECT_EQ(colourAt(15), black);
    StatementTyped(run.state, QStringLiteral("SELECTx FROM [Orders]\r\n"));
    EXPECT_EQ(colourAt(8), blue);
    EXPECT_EQ(colourAt(12), black);
    StatementTyped(run.state, QStringLiteral("\r\n"));
    EXPECT_FALSE(run.Form().cmdRunQuery.Enabled);
    StatementTyped(run.state, QStringLiteral("x"));
    EXPECT_TRUE(run.Form().cmdRunQuery.Enabled);
}

TEST(BuildTab, ShowingTheStatementEndsTheEntryAndPurgesEmptyRows) {
    BuildRun run;
    run.PickField(total);
    run.PickOperator(QStringLiteral("between"));
    ValueTyped(run.state, 0, QStringLiteral("1"));
    ValueTyped(run.state, 1, QStringLiteral("2"));
    run.state.rsWhere->AddNew();
    run.state.rsWhere->Update();
    StatementTyped(run.state, QStringLiteral("SELECT 1"));
    ShowSqlView(run.state);
    FormState& form = run.Form();
    EXPECT_EQ(form.lstOperands.Items.Text() + form.cmbAvailableValues1.Text + form.cmbAvailableValues2.Text,
              QString());
    for (const ControlState* control : {static_cast<const ControlState*>(&form.lstOperands),
                                        static_cast<const ControlState*>(&form.cmbAvailableValues1),
                                        static_cast<const ControlState*>(&form.cmbAvailableValues2),
                                        static_cast<const ControlState*>(&form.cmdFieldValues),
                                        static_cast<const ControlState*>(&form.optAndOr.Options[0])})
        EXPECT_FALSE(control->Enabled);
    EXPECT_EQ(run.state.rsWhere->RecordCount(), 0);
    EXPECT_EQ(run.Sql(), plain) << "what was typed by hand is written over";
    EXPECT_EQ(form.Pointer, MousePointer::Default);
}

TEST(BuildTab, ResetAsksAndKeepsTablesFieldsAndJoins) {
    BuildRun run;
    run.Form().txtTopX.Text = QStringLiteral("10");
    TopXChanged(run.state);
    run.Form().chkDistinct.Value = 1;
    DistinctClicked(run.state);
    run.Enter(total, QStringLiteral(">"), QStringLiteral("5"));
    ChooseQueryMode(run.state, 2);
    run.PickField(total);
    run.PickOperator(QStringLiteral("DESC"));
    CommitEntry(run.state);
    run.state.rsHaving = run.state.rsWhere->Clone();
    const QString full = QStringLiteral(
        "SELECT DISTINCT TOP 10 * | FROM [Orders] | WHERE ([Orders].[Total] > 5) | ORDER BY [Orders].[Total] "
        "DESC");
    EXPECT_EQ(run.Sql(), full);
    run.prompts->Answers = {BoxAnswer::No};
    ResetSql(run.state);
    EXPECT_EQ(run.Sql(), full);
    EXPECT_EQ(run.prompts->Boxes.last().Text, QStringLiteral("Are you sure you want to reset the SQL ?"));
    EXPECT_EQ(run.prompts->Boxes.last().Style, 36);

    run.prompts->Answers = {BoxAnswer::Yes};
    ResetSql(run.state);
    FormState& form = run.Form();
    EXPECT_EQ(run.Sql(), plain);
    EXPECT_FALSE(run.state.rsHaving->IsOpen());
    EXPECT_EQ(form.optQuery.Selected, 0);
    EXPECT_EQ(form.lstOperands.Items.ListCount(), 17) << "Where mode, with its operators on offer";
    EXPECT_FALSE(form.lstOperands.Enabled);
    EXPECT_FALSE(form.cmdCommit.Enabled);
    EXPECT_FALSE(form.fraAndOr.Enabled);
    EXPECT_EQ(form.FocusRequest, QStringLiteral("optQuery_0"));
    EXPECT_EQ(form.txtTopX.Text, QString());
    EXPECT_EQ(form.chkDistinct.Value, 0);
    EXPECT_EQ(form.lstZPQFieldTo.Items.ListCount(), 3);
    run.Enter(total, QStringLiteral("="), QStringLiteral("5"));
    EXPECT_TRUE(form.fraAndOr.Enabled) << "comes back with its options";
    EXPECT_TRUE(form.optAndOr.Options[1].Enabled);
}

}  // namespace zephrin
