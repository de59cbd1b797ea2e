#include "flow/BuildTab.h"
#include "flow/FieldTab.h"
#include "output/RunQuery.h"
#include "runstate/clsBridge.h"
#include "support/WizardRun.h"

#include <functional>
#include <gtest/gtest.h>

namespace zephrin {

namespace {

using test::WizardRun;

/// A run that stands on the build tab with every field of a table chosen, and hears what the host would.
struct ReadyRun : WizardRun {
    struct Event {
        int Number;
        QString Error, Sql;
        ado::RecordsetPtr Rows;
    };
    QList<Event> Events;

    explicit ReadyRun(const std::function<void(ZPGGlobalDeclarations&)>& prepare = {}) {
        if (prepare) prepare(state);
        Load();
        ChooseTable(QStringLiteral("[Orders]"));
        SelectTab(state, WizardTab::Fields);
        MoveAllFieldsRight(state);
        SelectTab(state, WizardTab::Build);
        QObject::connect(&state.Bridge(), &clsBridge::QueryComplete, &state.Bridge(),
                         [this](int& number, QString& error, QString& sql, ado::RecordsetPtr& rows,
                                ado::RecordsetPtr& where, ado::RecordsetPtr& having) {
                             EXPECT_TRUE(where && having);
                             Events.append({number, error, sql, rows});
                         });
    }
};

QString Outcome(const FormState& form) {
    QString text = form.txtSQLErrors.Text;
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("/"));
}

}  // namespace

TEST(RunQuery, ShowsTheRowsAndTellsTheHost) {
    ReadyRun run;
    RunQuery(run.state);
    const FormState& form = run.Form();
    EXPECT_EQ(form.TabZPG.Tab, static_cast<int>(WizardTab::Results));
    EXPECT_EQ(run.state.CurrentSQL, QStringLiteral("SELECT *\r\nFROM [Orders]\r\n"));
    EXPECT_EQ(Outcome(form), QStringLiteral("Query Successful ... /4 Records Returned"));
    EXPECT_TRUE(form.txtSQLErrors.Bold);
    const std::vector<ColourSpan> colours{{0, 41, 0xff000000}, {0, 16, 0xff004000}};
    EXPECT_EQ(form.txtSQLErrors.Colours, colours);
    EXPECT_EQ(form.dgrQueryResults.DataSource, run.state.rsQueryResult);
    EXPECT_TRUE(form.cmdAsc.Enabled && form.cmdDesc.Enabled && form.cmdExcel.Enabled);
    EXPECT_EQ(form.Pointer, MousePointer::Default);
    EXPECT_EQ(form.StatusText, QStringLiteral("Ready .."));
    ASSERT_EQ(run.Events.size(), 1);
    EXPECT_EQ(run.Events[0].Number, 0);
    EXPECT_EQ(run.Events[0].Sql, run.state.CurrentSQL);
    EXPECT_EQ(run.Events[0].Rows->RecordCount(), 4);
    EXPECT_NE(run.Events[0].Rows, run.state.rsQueryResult);
}

TEST(RunQuery, RunsWhatStandsInTheBox) {
    struct Row {
        const char* Sql;
        const char* Outcome;
        int Columns;
    };
    const Row rows[] = {
        {"SELECT [Id] FROM [Orders] WHERE [Total] > 100", "Query Successful ... /2 Records Returned", 1},
        {"SELECT [Id], [Id] FROM [Orders] WHERE 1 = 0", "Query Successful ... /0 Records Returned", 2},
        {"UPDATE [Orders] SET [Total] = 1", "Query Successful ... /0 Records Returned", 0},
    };
    for (const Row& row : rows) {
        ReadyRun run;
        StatementTyped(run.state, QString::fromLatin1(row.Sql));
        RunQuery(run.state);
        EXPECT_EQ(Outcome(run.Form()), QString::fromLatin1(row.Outcome)) << row.Sql;
        ASSERT_EQ(run.Events.size(), 1) << row.Sql;
        EXPECT_EQ(run.Events[0].Number, 0) << row.Sql;
        EXPECT_TRUE(run.Events[0].Rows->IsOpen()) << row.Sql;
        EXPECT_EQ(run.Events[0].Rows->FieldCount(), row.Columns) << row.Sql;
        EXPECT_TRUE(run.Form().cmdAsc.Enabled) << row.Sql;
        EXPECT_EQ(run.Form().cmdExcel.Enabled, row.Columns > 0) << row.Sql;
    }
}

TEST(RunQuery, AFaultOfTheStatementIsShownAndTold) {
    ReadyRun run;
    RunQuery(run.state);
    StatementTyped(run.state, QStringLiteral("SELECT [Nope] FROM [Orders]"));
    RunQuery(run.state);
    const FormState& form = run.Form();
    ASSERT_EQ(run.Events.size(), 2);
    EXPECT_NE(run.Events[1].Number, 0);
    EXPECT_FALSE(run.Events[1].Rows->IsOpen());
    EXPECT_EQ(Outcome(form), QStringLiteral("SQL Syntax Error :/") + run.Events[1].Error);
    ASSERT_EQ(form.txtSQLErrors.Colours.size(), 2U);
    EXPECT_EQ(form.txtSQLErrors.Colours[1], (ColourSpan{0, 18, 0xffff0000}));
    EXPECT_EQ(form.dgrQueryResults.DataSource, nullptr);
    EXPECT_FALSE(form.cmdAsc.Enabled || form.cmdDesc.Enabled || form.cmdExcel.Enabled);
    EXPECT_EQ(form.Pointer, MousePointer::Default);
    EXPECT_EQ(form.StatusText, QStringLiteral("Ready .."));
    EXPECT_TRUE(run.prompts->Boxes.isEmpty());
}

TEST(RunQuery, WithHiddenResultsAFaultStandsInTheStatusBar) {
    ReadyRun run;
    run.state.Options.gAllowShowResults = false;
    StatementTyped(run.state, QStringLiteral("SELECT [Nope] FROM [Orders]"));
    RunQuery(run.state);
    EXPECT_EQ(run.Form().StatusText, QStringLiteral("SQL Syntax Error : Invalid column name 'Nope'."));
    StatementTyped(run.state, QStringLiteral("SELECT [Id] FROM [Orders]"));
    RunQuery(run.state);
    EXPECT_EQ(run.Form().StatusText, QStringLiteral("Ready .."));
}

TEST(RunQuery, ALostConnectionIsToldToTheUserAlone) {
    ReadyRun run;
    RunQuery(run.state);
    run.state.SharedConnection().Close();
    SelectTab(run.state, WizardTab::Build);
    RunQuery(run.state);
    const FormState& form = run.Form();
    ASSERT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_EQ(run.prompts->Boxes[0].Text,
              QStringLiteral("Unable to make a connection to the database.\r\nConnection string: ") +
                  run.database.ConnectionString());
    EXPECT_EQ(run.prompts->Boxes[0].Style, BoxStyle::Critical);
    EXPECT_EQ(run.Events.size(), 1);
    EXPECT_EQ(form.Pointer, MousePointer::Hourglass);
    EXPECT_EQ(form.StatusText, QStringLiteral("Running Query .."));
    // The grid keeps what it shows, though there is a new recordset behind it.
    ASSERT_NE(form.dgrQueryResults.DataSource, nullptr);
    EXPECT_EQ(form.dgrQueryResults.DataSource->RecordCount(), 4);
    EXPECT_FALSE(run.state.rsQueryResult->IsOpen());
    EXPECT_TRUE(form.cmdAsc.Enabled);
    const std::vector<ColourSpan> black{{0, 41, 0xff000000}};
    EXPECT_EQ(form.txtSQLErrors.Colours, black);
    SortResults(run.state, true);
    SelectTab(run.state, WizardTab::Build);
    EXPECT_EQ(form.Pointer, MousePointer::Default);
}

TEST(RunQuery, WithoutFieldsThereIsNothingToRun) {
    ReadyRun run;
    MoveAllFieldsLeft(run.state);
    SelectTab(run.state, WizardTab::Fields);
    SelectTab(run.state, WizardTab::Build);
    StatementTyped(run.state, QStringLiteral("SELECT 1"));
    RunQuery(run.state);
    ASSERT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_EQ(run.prompts->Boxes[0].Text,
              QStringLiteral("No SELECT fields specified.\r\nUnable to execute the SQL."));
    EXPECT_EQ(run.prompts->Boxes[0].Style, BoxStyle::Critical);
    EXPECT_TRUE(run.Events.isEmpty());
    EXPECT_EQ(run.Form().TabZPG.Tab, static_cast<int>(WizardTab::Build));
}

TEST(RunQuery, FollowsTheOptions) {
    struct Row {
        const char* What;
        std::function<void(ZPGGlobalDeclarations&)> Set;
        int Tab;
        bool Open, Excel, Minimised;
        int Rows;
    };
    const Row rows[] = {
        {"no recordset",
         [](ZPGGlobalDeclarations& s) {
             s.Options.gAllowCreateRecordset = s.Options.gAllowShowResults = false;
         },
         3, false, false, true, 0},
        {"no results shown", [](ZPGGlobalDeclarations& s) { s.Options.gAllowShowResults = false; }, 3, true,
         true, true, 4},
        {"no results shown, modal",
         [](ZPGGlobalDeclarations& s) {
             s.Options.gAllowShowResults = false;
             s.Options.gModalForm = true;
         },
         3, true, true, false, 4},
        {"no Excel", [](ZPGGlobalDeclarations& s) { s.Options.gAllowExcelExport = false; }, 4, true, false,
         false, 4},
        {"a limit", [](ZPGGlobalDeclarations& s) { s.gMaxRecords = 3; }, 4, true, true, false, 3},
        {"a negative limit is none", [](ZPGGlobalDeclarations& s) { s.gMaxRecords = -3; }, 4, true, true,
         false, 4},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.What);
        ReadyRun run(row.Set);
        RunQuery(run.state);
        EXPECT_EQ(run.Form().TabZPG.Tab, row.Tab);
        EXPECT_EQ(run.Form().cmdExcel.Enabled, row.Excel);
        EXPECT_EQ(run.Form().Minimised, row.Minimised);
        ASSERT_EQ(run.Events.size(), 1);
        EXPECT_EQ(run.Events[0].Number, 0);
        EXPECT_EQ(run.Events[0].Rows->IsOpen(), row.Open);
        EXPECT_EQ(run.Events[0].Rows->RecordCount(), row.Rows);
        EXPECT_EQ(run.Form().txtSQLErrors.ToolTipText.isEmpty(), row.Rows != 3);
    }
}

TEST(RunQuery, TheHostMayEndTheWizardInTheEvent) {
    ReadyRun run;
    QObject::connect(&run.state.Bridge(), &clsBridge::QueryComplete, &run.state.Bridge(),
                     [&] { UnloadForm(run.state); });
    RunQuery(run.state);
    EXPECT_EQ(run.state.rsQueryResult, nullptr);
    ASSERT_EQ(run.Events.size(), 1);
    EXPECT_EQ(run.Events[0].Rows->RecordCount(), 4);
}

TEST(SortResults, OrdersByTheColumnWhoseNameItCanWrite) {
    ReadyRun run;
    SortResults(run.state, false);
    StatementTyped(run.state,
                   QStringLiteral("SELECT [Total], [Id] AS [An Id], [Id] FROM [Orders] ORDER BY [Id]"));
    RunQuery(run.state);
    struct Row {
        const char* What;
        int Column;
        bool Descending;
        int FirstId;
    };
    const Row rows[] = {
        {"biggest total", 0, true, 11},         {"a name with a blank sorts nothing", 1, false, 11},
        {"smallest id", 2, false, 10},          {"no column", -1, true, 10},
        {"one that is not there", 9, true, 10},
    };
    for (const Row& row : rows) {
        run.Form().SortColumn = row.Column;
        SortResults(run.state, row.Descending);
        EXPECT_EQ(run.state.rsQueryResult->ValueAt(0, 2).toInt(), row.FirstId) << row.What;
    }
    SortResults(run.state, true);
    EXPECT_EQ(run.Events[0].Rows->ValueAt(0, 2).toInt(), 10) << "the host's copy keeps its order";
}

}  // namespace zephrin
