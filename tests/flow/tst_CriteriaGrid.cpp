#include "BuildRun.h"
#include "flow/CriteriaGrid.h"

namespace zephrin {

namespace {

using test::BuildRun;

constexpr int totalColumn = 2;

}  // namespace

TEST(CriteriaGrid, TakesThePlaceOfTheStatement) {
    BuildRun run;
    run.Enter(QStringLiteral("[Total]"), QStringLiteral(">"), QStringLiteral("5"));
    EditCriteria(run.state);
    const FormState& form = run.Form();
    EXPECT_EQ(form.GridMode, QStringLiteral("Where"));
    EXPECT_EQ(form.dgrSQL.DataSource, run.state.rsWhere);
    EXPECT_TRUE(form.dgrSQL.ColumnButtons);
    EXPECT_TRUE(form.dgrSQL.Visible && form.fraTxt.Visible && form.lblSQLLabel[0].Visible &&
                form.cmdSplit.Visible && form.cmdSQLView.Visible);
    EXPECT_FALSE(form.txtSQL.Visible || form.lblSQLLabel[1].Visible || form.chkDistinct.Visible ||
                 form.txtTopX.Visible);
    EXPECT_FALSE(form.cmdRunQuery.Enabled || form.cmdCreateView.Enabled || form.cmdCommit.Enabled ||
                 form.cmbAvailableValues1.Enabled);
    EXPECT_FALSE(form.lblSQLLabel[0].Caption.isEmpty());
    run.state.rsWhere->SetValueAt(0, totalColumn, QStringLiteral("> 50"));
    ShowSqlView(run.state);
    EXPECT_TRUE(form.txtSQL.Visible && form.cmdRunQuery.Enabled && form.cmdCreateView.Enabled &&
                form.chkDistinct.Visible);
    EXPECT_FALSE(form.dgrSQL.Visible || form.cmdSQLView.Visible || form.cmdSplit.Visible);
    EXPECT_EQ(run.state.WhereClause, QStringLiteral("WHERE ([Orders].[Total] > 50)"));
}

TEST(CriteriaGrid, SwitchesTheRightSideOnly) {
    BuildRun run;
    ShowStatementOrGrid(run.state, QueryView::Statement);
    EXPECT_FALSE(run.Form().cmdCommit.Enabled) << "no operator";
    run.PickField(QStringLiteral("[Total]"));
    run.PickOperator(QStringLiteral("="));
    ShowStatementOrGrid(run.state, QueryView::Grid);
    const FormState& form = run.Form();
    EXPECT_TRUE(form.dgrSQL.Visible && form.txtOr.Visible && form.lblSQLLabel[0].Visible);
    EXPECT_FALSE(form.txtSQL.Visible || form.cmdCommit.Enabled || form.fraQueryOptions.Enabled);
    EXPECT_EQ(form.dgrSQL.DataSource, run.state.rsWhere);
    ShowStatementOrGrid(run.state, QueryView::Statement);
    EXPECT_TRUE(form.txtSQL.Visible && form.cmdCommit.Enabled && form.fraQueryOptions.Enabled &&
                form.lblSQLLabel[1].Visible);
    EXPECT_FALSE(form.dgrSQL.Visible || form.txtValue.Visible || form.lblSQLLabel[0].Visible);
}

TEST(CriteriaGrid, NormalisesWhatIsTyped) {
    const struct {
        const char* Dialect;
        const char* Typed;
        const char* Expected;
    } rows[] = {
        {"SQL Server", "5", "= 5"},
        {"SQL Server", "> 5", "> 5"},
        {"SQL Server", "abc", "= 'abc'"},
        {"SQL Server", "  abc ", "= 'abc '"},
        {"SQL Server", "", ""},
        {"SQL Server", "1/31/2003", "= '2003-01-31'"},
        {"MS Access", "1/31/2003", "= #2003-01-31#"},
        {"Other", "1/31/2003", "= #2003-01-31#"},
        {"SQL Server", "  'abc'", "'abc'"},
        {"SQL Server", "  O'Brien", "O'Brien"},
        // A token counts in any capitals, also inside a word.
        {"SQL Server", "likely", "likely"},
        {"SQL Server", "is null", "is null"},
    };
    BuildRun run;
    run.state.Options.gDateFormat = QStringLiteral("yyyy-mm-dd");
    for (const auto& row : rows) {
        run.state.gDatabaseType = QString::fromLatin1(row.Dialect);
        EXPECT_EQ(NormaliseCriterion(run.state, QString::fromLatin1(row.Typed)),
                  QString::fromLatin1(row.Expected))
            << row.Typed;
    }
}

TEST(CriteriaGrid, AnEditedCellCountsForItsOwnFieldAndKeepsItsRow) {
    BuildRun run;
    run.PickField(QStringLiteral("[Total]"));
    for (int i = 0; i < 2; ++i) {
        run.state.rsWhere->AddNew();
        run.state.rsWhere->Update();
    }
    run.state.rsWhere->SetValue(totalColumn, QStringLiteral("= 5"));
    CriterionEdited(run.state, totalColumn);
    EXPECT_EQ(run.Form().FieldHasCriteria, 1);
    EXPECT_EQ(run.state.rsWhere->AbsolutePosition(), 2);
    CriterionEdited(run.state, 0);
    EXPECT_EQ(run.Form().FieldHasCriteria, 1);
    run.PickField(QStringLiteral("[Id]"));
    CriterionEdited(run.state, totalColumn);
    EXPECT_EQ(run.Form().FieldHasCriteria, 0) << "the field in hand has none";
    CriterionEdited(run.state, 99);
}

TEST(CriteriaGrid, TheDialogChangesACellOrBeginsARow) {
    BuildRun run;
    run.state.CriteriaChanged = true;
    BeginCellDialog(run.state, totalColumn, true);
    EXPECT_FALSE(run.state.CriteriaChanged) << "nothing is left of the dialog before";
    EXPECT_TRUE(EndCellDialog(run.state, totalColumn, true));
    EXPECT_EQ(run.state.rsWhere->RecordCount(), 0) << "a cancelled dialog adds no row";

    BeginCellDialog(run.state, totalColumn, true);
    run.state.CurrentCellText = QStringLiteral("5");
    run.state.CriteriaChanged = true;
    EXPECT_TRUE(EndCellDialog(run.state, totalColumn, true));
    EXPECT_EQ(run.state.rsWhere->TextAt(0, totalColumn), QStringLiteral("= 5"));

    BeginCellDialog(run.state, totalColumn, false);
    EXPECT_EQ(run.state.CurrentCellText, QStringLiteral("= 5"));
    run.state.CurrentCellText = QString(551, u'=');
    run.state.CriteriaChanged = true;
    EXPECT_FALSE(EndCellDialog(run.state, totalColumn, false)) << "too long for the cell";
    EXPECT_EQ(run.state.rsWhere->TextAt(0, totalColumn), QStringLiteral("= 5"));
    EXPECT_EQ(run.state.CurrentCellText.size(), 551) << "what was written is not lost";
    EXPECT_FALSE(EndCellDialog(run.state, totalColumn, true));
    EXPECT_EQ(run.state.rsWhere->RecordCount(), 1);
}

}  // namespace zephrin
