#include "flow/BuildTab.h"
#include "flow/FieldTab.h"
#include "flow/Shell.h"
#include "support/WizardRun.h"

#include <functional>
#include <gtest/gtest.h>

namespace zephrin {

namespace {

using test::WizardRun;

const QString customers = QStringLiteral("[Customers]");
const QString orders = QStringLiteral("[Orders]");

std::string Digits(const std::array<bool, WizardTabCount>& tabs) {
    std::string text;
    for (int tab = 0; tab < WizardTabCount; ++tab)
        if (tabs[static_cast<std::size_t>(tab)]) text += std::to_string(tab);
    return text;
}

/// The statement as lines joined by "/".
QString Statement(const WizardRun& run) {
    QString text = run.state.Form->txtSQL.Text;
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("/"));
}

void TakeAllFields(WizardRun& run) {
    run.Load();
    run.ChooseTable(orders);
    SelectTab(run.state, WizardTab::Fields);
    MoveAllFieldsRight(run.state);
}

}  // namespace

TEST(LoadForm, ShowsWhatTheOptionsAllow) {
    struct Row {
        const char* What;
        std::function<void(RunOptions&)> Set;
        const char* Visible;
        const char* Enabled;
        int Tab;
    };
    const Row rows[] = {
        {"as it comes", [](RunOptions&) {}, "01234", "0", 0},
        {"no joins", [](RunOptions& o) { o.gAllowJoinCreation = false; }, "0234", "0", 0},
        {"no fields", [](RunOptions& o) { o.gAllowFieldSelection = false; }, "0134", "0", 0},
        {"no results", [](RunOptions& o) { o.gAllowShowResults = false; }, "0123", "0", 0},
        {"fixed tables", [](RunOptions& o) { o.gAllowTableSelection = o.gAllowJoinCreation = false; }, "234",
         "01234", 2},
        {"fixed tables with joins", [](RunOptions& o) { o.gAllowTableSelection = false; }, "1234", "01234",
         1},
        {"the build tab alone",
         [](RunOptions& o) {
             o.gAllowTableSelection = o.gAllowJoinCreation = o.gAllowFieldSelection = o.gAllowShowResults =
                 false;
         },
         "3", "01234", 3},
    };
    for (const Row& row : rows) {
        WizardRun run;
        row.Set(run.state.Options);
        run.Load();
        EXPECT_EQ(Digits(run.Form().TabZPG.TabVisible), row.Visible) << row.What;
        EXPECT_EQ(Digits(run.Form().TabZPG.TabEnabled), row.Enabled) << row.What;
        EXPECT_EQ(run.Form().TabZPG.Tab, row.Tab) << row.What;
        EXPECT_EQ(run.Form().StatusText, QStringLiteral("Ready .."));
    }
}

TEST(LoadForm, ArrangesItselfByDialect) {
    struct Row {
        const char* Dialect;
        bool CreateView;
        const char* JoinTypes;
        int RunWidth;
        bool ViewButton;
    };
    for (const Row& row :
         {Row{"SQL Server", true, "= >= <>", 855, true}, Row{"SQL Server", false, "= >= <>", 1245, false},
          Row{"MS Access", true, "= >=", 1245, false},
          Row{"Microsoft Excel Driver", true, "= >=", 1245, false}}) {
        WizardRun run(QString::fromLatin1(row.Dialect));
        run.state.Options.gAllowCreateView = row.CreateView;
        run.Load();
        EXPECT_EQ(run.Form().cmbJoinType.Items.Items().join(u' ').toStdString(), row.JoinTypes)
            << row.Dialect;
        EXPECT_EQ(run.Form().cmbJoinType.Text, QStringLiteral("="));
        EXPECT_EQ(run.Form().cmdRunQueryWidth, row.RunWidth) << row.Dialect;
        EXPECT_EQ(run.Form().cmdCreateView.Visible, row.ViewButton) << row.Dialect;
    }
}

TEST(LoadForm, FixedTablesAreThereFromTheBeginning) {
    WizardRun run;
    run.state.Options.gAllowTableSelection = run.state.Options.gAllowJoinCreation = false;
    run.state.Options.gAllowFieldSelection = false;
    run.state.OfferedTables = Collection({customers});
    run.Load();
    EXPECT_EQ(Statement(run), QStringLiteral("SELECT */FROM [Customers]/"));
    EXPECT_EQ(run.Form().lstSelectedFields.Items.Items().join(u' '), QStringLiteral("[Id] [Name] [City]"));
    EXPECT_EQ(run.state.rsWhere->FieldCount(), 3);
    EXPECT_GT(run.Form().lstOperands.Items.ListCount(), 0);
    EXPECT_TRUE(run.Form().cmdRunQuery.Enabled);
    EXPECT_TRUE(run.Form().fraQueryOptions.Enabled);
    EXPECT_FALSE(run.Form().cmdZPQTableRightAll.Enabled);
}

TEST(LoadForm, OpensASavedQueryWhereThereIsOne) {
    struct Row {
        const char* What;
        std::function<bool(ZPGGlobalDeclarations&)> Open;
        bool Loads;
        const char* Enabled;
    };
    const Row rows[] = {
        {"nobody can", nullptr, true, "0"},
        {"the user cancelled", [](ZPGGlobalDeclarations&) { return true; }, true, "0"},
        {"the file is missing", [](ZPGGlobalDeclarations&) { return false; }, false, "01234"},
        {"two tables",
         [](ZPGGlobalDeclarations& state) {
             state.Form->QueryPath = QStringLiteral("q.zpb");
             state.colTables = Collection({customers, orders});
             state.Form->lstZPQTableTo.Items.AddItems(state.colTables.Items());
             state.Form->TabZPG.TabEnabled = {true, false, true, true, true};
             return true;
         },
         true, "01234"},
        {"the wizard ended meanwhile",
         [](ZPGGlobalDeclarations& state) {
             UnloadForm(state);
             return true;
         },
         false, "01234"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.What);
        WizardRun run;
        run.state.gOpenQuery = true;
        run.state.OpenSavedQuery = row.Open;
        EXPECT_EQ(LoadForm(run.state), row.Loads);
        EXPECT_EQ(Digits(run.Form().TabZPG.TabEnabled), row.Enabled);
        EXPECT_EQ(run.Form().QueryPath, QString());
        EXPECT_TRUE(run.state.gOpenQuery);
    }
}

TEST(LoadForm, TellsAnErrorOnceAndGivesUp) {
    WizardRun run;
    run.state.gOpenQuery = true;
    run.state.OpenSavedQuery = [](ZPGGlobalDeclarations&) -> bool {
        throw ado::Error(1, QStringLiteral("out of luck"));
    };
    EXPECT_FALSE(LoadForm(run.state));
    ASSERT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_EQ(run.prompts->Boxes[0].Text,
              QStringLiteral("Internal Error unable to load frmZPG\r\nout of luck"));
    EXPECT_EQ(run.prompts->Boxes[0].Title, QStringLiteral("Internal Control Error"));
    EXPECT_TRUE(run.state.gClosingSilently);
    EXPECT_EQ(UnloadForm(run.state), QString());
    EXPECT_FALSE(run.state.gClosingSilently);
}

TEST(SelectTab, LeavingTheFieldTabWritesTheStatement) {
    WizardRun run;
    TakeAllFields(run);
    EXPECT_EQ(Statement(run), QStringLiteral("SELECT /FROM [Orders]/"));
    SelectTab(run.state, WizardTab::Build);
    EXPECT_EQ(Statement(run), QStringLiteral("SELECT */FROM [Orders]/"));
    EXPECT_TRUE(run.Form().cmdRunQuery.Enabled);
    EXPECT_TRUE(run.Form().fraQueryOptions.Enabled);
}

TEST(SelectTab, ResultsAreClearedOnLeavingAllButTheLastTwoTabs) {
    for (const int tab : {0, 1, 2, 3, 4}) {
        WizardRun run;
        TakeAllFields(run);
        FormState& form = run.Form();
        form.TabZPG.Tab = tab;
        form.dgrQueryResults.DataSource = std::make_shared<ado::Recordset>();
        form.SortColumn = 2;
        form.cmdAsc.Enabled = form.cmdDesc.Enabled = form.cmdExcel.Enabled = true;
        form.txtSQLErrors.Text = QStringLiteral("text");
        SelectTab(run.state, tab == 4 ? WizardTab::Build : WizardTab::Results);
        const bool kept = tab >= 3;
        if (tab == 4) continue;
        EXPECT_EQ(form.dgrQueryResults.DataSource != nullptr, kept) << tab;
        EXPECT_EQ(form.SortColumn, kept ? 2 : 0) << tab;
        EXPECT_EQ(form.cmdAsc.Enabled && form.cmdDesc.Enabled && form.cmdExcel.Enabled, kept) << tab;
        EXPECT_EQ(form.txtSQLErrors.Text.isEmpty(), !kept) << tab;
    }
}

TEST(SelectTab, HandEditsLastUntilTheTableTabIsLeft) {
    WizardRun run;
    TakeAllFields(run);
    SelectTab(run.state, WizardTab::Build);
    StatementTyped(run.state, QStringLiteral("SELECT 1"));
    SelectTab(run.state, WizardTab::Results);
    SelectTab(run.state, WizardTab::Tables);
    EXPECT_EQ(run.Form().txtSQL.Text, QStringLiteral("SELECT 1"));
    SelectTab(run.state, WizardTab::Build);
    EXPECT_EQ(Statement(run), QStringLiteral("SELECT */FROM [Orders]/"));
}

TEST(SelectTab, LeavingTheBuildTabEndsTheEntryInHand) {
    WizardRun run;
    TakeAllFields(run);
    SelectTab(run.state, WizardTab::Build);
    FormState& form = run.Form();
    WizardRun::Pick(form.lstSelectedFields.Items, QStringLiteral("[Total]"));
    WizardRun::Pick(form.lstOperands.Items, QStringLiteral("between"));
    form.cmbAvailableValues1.Items.AddItem(QStringLiteral("1"));
    form.cmbAvailableValues1.Text = form.cmbAvailableValues2.Text = QStringLiteral("5");
    form.lstOperands.Enabled = form.cmbAvailableValues1.Enabled = form.cmbAvailableValues2.Enabled = true;
    form.cmdFieldValues.Enabled = form.cmdCommit.Enabled = true;
    SelectTab(run.state, WizardTab::Fields);
    EXPECT_EQ(form.lstSelectedFields.Items.ListIndex(), -1);
    EXPECT_EQ(form.lstOperands.Items.ListIndex(), -1);
    EXPECT_GT(form.lstOperands.Items.ListCount(), 0);
    EXPECT_EQ(form.cmbAvailableValues1.Text + form.cmbAvailableValues2.Text, QString());
    EXPECT_FALSE(form.lstOperands.Enabled || form.cmbAvailableValues1.Enabled ||
                 form.cmbAvailableValues2.Enabled || form.cmdFieldValues.Enabled || form.cmdCommit.Enabled);
}

TEST(SelectTab, UnlocksTheJoinTablesAndTakesFocusOnlyWhereTheyAreSeen) {
    WizardRun run;
    run.Load();
    run.ChooseTable(orders);
    run.ChooseTable(customers);
    run.Form().cmdlockTables.Tag = QStringLiteral("1");
    SelectTab(run.state, WizardTab::Joins);
    EXPECT_EQ(run.Form().cmdlockTables.Tag, QStringLiteral("0"));
    EXPECT_EQ(run.Form().FocusRequest, QStringLiteral("cmbJoinTables_0"));
    run.Form().FocusRequest.clear();
    run.Form().cmdlockTables.Tag = QStringLiteral("1");
    SelectTab(run.state, WizardTab::Tables);
    EXPECT_EQ(run.Form().cmdlockTables.Tag, QStringLiteral("0"));
    EXPECT_EQ(run.Form().FocusRequest, QString());
    EXPECT_EQ(run.Form().Pointer, MousePointer::Default);
}

TEST(QueryUnload, AsksWhereThereIsSomethingToAsk) {
    struct Row {
        const char* What;
        bool SaveAllowed, Silent;
        BoxAnswer Answer;
        CloseAnswer Expected;
        int Boxes;
    };
    const Row rows[] = {
        {"yes", true, false, BoxAnswer::Yes, CloseAnswer::SaveThenClose, 1},
        {"no", true, false, BoxAnswer::No, CloseAnswer::Close, 1},
        {"cancel", true, false, BoxAnswer::Cancel, CloseAnswer::Stay, 1},
        {"silent", true, true, BoxAnswer::Cancel, CloseAnswer::Close, 0},
        {"nothing can be saved", false, false, BoxAnswer::Cancel, CloseAnswer::Close, 0},
    };
    for (const Row& row : rows) {
        WizardRun run;
        run.state.Options.gAllowSaveDelete = row.SaveAllowed;
        run.state.Options.gRunTimeCaption = QStringLiteral("My Tool");
        run.Load();
        run.state.gClosingSilently = row.Silent;
        run.prompts->Answers = {row.Answer};
        EXPECT_EQ(QueryUnload(run.state), row.Expected) << row.What;
        EXPECT_EQ(run.prompts->Boxes.size(), row.Boxes) << row.What;
        EXPECT_FALSE(run.state.gClosingSilently);
        if (row.Boxes == 0) continue;
        EXPECT_EQ(
            run.prompts->Boxes[0].Text,
            QStringLiteral(
                "You have chosen to close My Tool.\r\nDo you want to Save your changes before closing ?"));
        EXPECT_EQ(run.prompts->Boxes[0].Style, 67);
        EXPECT_EQ(run.prompts->Boxes[0].Title, QStringLiteral("My Tool"));
    }
}

TEST(UnloadForm, LeavesAFreshStateAndTheOfferBehind) {
    WizardRun run;
    TakeAllFields(run);
    SelectTab(run.state, WizardTab::Build);
    run.state.gLoadError = QStringLiteral("bad file");
    run.state.CurrentCellText = run.state.ViewName = QStringLiteral("x");
    const std::weak_ptr<FormState> old = run.state.Form;
    EXPECT_EQ(UnloadForm(run.state), QStringLiteral("bad file"));
    EXPECT_TRUE(old.expired());
    EXPECT_EQ(run.state.gLoadError, QString());
    EXPECT_EQ(run.state.colTables, run.state.OfferedTables);
    EXPECT_EQ(run.state.SharedConnection().State(), ado::ObjectState::Open);
    run.Load();
    EXPECT_EQ(run.Form().lstZPQTableSelection.Items.ListCount(), 3);
    EXPECT_EQ(run.Form().lstZPQTableTo.Items.ListCount(), 0);
    EXPECT_EQ(run.state.CurrentCellText + run.state.ViewName + run.Form().txtSQL.Text, QString());
}

}  // namespace zephrin
