#include "BuildRun.h"
#include "flow/CalcFields.h"

#include <functional>

namespace zephrin {

namespace {

using test::BuildRun;
using test::WizardRun;

const QString customers = QStringLiteral("[Customers]");
const QString orders = QStringLiteral("[Orders]");

QString Join(const ListBoxState& list) {
    return list.Items.Items().join(u' ');
}

void AddRow(const ado::RecordsetPtr& rows, const QString& text) {
    rows->AddNew();
    rows->SetValue(0, text);
    if (const int alias = rows->FieldIndex(u"Alias"); alias >= 0) rows->SetValue(alias, text.left(3));
    rows->Update();
}

QStringList FirstColumn(const ado::RecordsetPtr& rows) {
    QStringList texts;
    for (qint64 row = 0; row < rows->RecordCount(); ++row) texts << rows->ValueAt(row, 0).toString();
    return texts;
}

/// A run whose table tab was left with these tables.
struct ChosenRun : WizardRun {
    explicit ChosenRun(const QStringList& tables) {
        Load();
        for (const QString& table : tables) ChooseTable(table);
        SelectTab(state, tables.size() > 1 ? WizardTab::Joins : WizardTab::Fields);
    }
    void BackToTables() { SelectTab(state, WizardTab::Tables); }
};

}  // namespace

TEST(FieldTab, FieldsComeInTheOrderOfTablesAndColumns) {
    ChosenRun run({orders, customers});
    const QStringList expected{QStringLiteral("[Orders].[Id]"),      QStringLiteral("[Orders].[CustomerId]"),
                               QStringLiteral("[Orders].[Total]"),   QStringLiteral("[Customers].[Id]"),
                               QStringLiteral("[Customers].[Name]"), QStringLiteral("[Customers].[City]")};
    EXPECT_EQ(run.state.colTables.Items(), QStringList({orders, customers}));
    EXPECT_EQ(run.state.colFields.Items(), expected);
    EXPECT_EQ(run.Form().lstZPQFieldFrom.Items.Items(), expected);
    EXPECT_EQ(run.state.rsWhere->FieldCount(), 6);
    EXPECT_EQ(run.Form().lstSelectedFields.Items.ListCount(), 6);
    EXPECT_FALSE(run.Form().TablesChanged);
}

TEST(FieldTab, MovesKeepOrderAndSelection) {
    ChosenRun run({orders});
    FormState& form = run.Form();
    const QString id = QStringLiteral("[Orders].[Id]"), customer = QStringLiteral("[Orders].[CustomerId]"),
                  total = QStringLiteral("[Orders].[Total]");
    EXPECT_TRUE(form.cmdZPQFieldRightAll.Enabled);
    WizardRun::Pick(form.lstZPQFieldFrom.Items, customer);
    EXPECT_EQ(form.lstZPQFieldFrom.ToolTipText, customer);
    MoveFieldRight(run.state);
    EXPECT_EQ(form.lstZPQFieldFrom.Items.Text(), total);
    MoveFieldRight(run.state);
    EXPECT_EQ(form.lstZPQFieldFrom.Items.ListIndex(), -1);
    EXPECT_FALSE(form.cmdZPQFieldRight.Enabled);
    EXPECT_EQ(Join(form.lstZPQFieldTo), customer + u' ' + total);
    // Taking all back stays off until an output field is clicked.
    EXPECT_FALSE(form.cmdZPQFieldLeftAll.Enabled);
    WizardRun::Pick(form.lstZPQFieldTo.Items, customer);
    EXPECT_TRUE(form.cmdZPQFieldLeftAll.Enabled);
    MoveFieldLeft(run.state);
    EXPECT_EQ(Join(form.lstZPQFieldFrom), id + u' ' + customer);
    MoveAllFieldsRight(run.state);
    EXPECT_EQ(Join(form.lstZPQFieldTo), total + u' ' + id + u' ' + customer);
    EXPECT_TRUE(form.cmdZPQFieldLeft.Enabled) << "the other direction's single button is not touched";
    EXPECT_FALSE(form.cmdZPQFieldRightAll.Enabled);
    MoveAllFieldsLeft(run.state);
    EXPECT_EQ(form.lstZPQFieldTo.Items.ListCount(), 0);
    MoveFieldLeft(run.state);
    EXPECT_TRUE(form.cmdZPQFieldRightAll.Enabled);
}

TEST(FieldTab, ClicksAreDeadWhileTheTablesAreAhead) {
    ChosenRun run({orders});
    run.Form().TablesChanged = true;
    WizardRun::Pick(run.Form().lstZPQFieldFrom.Items, QStringLiteral("[Orders].[Id]"));
    EXPECT_FALSE(run.Form().cmdZPQFieldRight.Enabled);
    EXPECT_EQ(run.Form().lstZPQFieldFrom.ToolTipText, QString());
    FieldFromDoubleClicked(run.state);
    EXPECT_EQ(run.Form().lstZPQFieldTo.Items.ListCount(), 0);
}

TEST(FieldTab, OutputFieldsSurviveAChangeOfTablesAsFarAsTheyCan) {
    ChosenRun run({orders, customers});
    for (const char* field : {"[Customers].[City]", "[Orders].[Total]", "[Customers].[Id]"}) {
        WizardRun::Pick(run.Form().lstZPQFieldFrom.Items, QString::fromLatin1(field));
        MoveFieldRight(run.state);
    }
    run.BackToTables();
    WizardRun::Pick(run.Form().lstZPQTableTo.Items, orders);
    MoveTableLeft(run.state);
    EXPECT_EQ(run.Form().lstZPQFieldTo.Items.ListCount(), 3) << "until the tab is left";
    SelectTab(run.state, WizardTab::Fields);
    EXPECT_EQ(Join(run.Form().lstZPQFieldTo), QStringLiteral("[Customers].[City] [Customers].[Id]"));
    EXPECT_EQ(Join(run.Form().lstZPQFieldFrom), QStringLiteral("[Customers].[Name]"));
    EXPECT_EQ(run.state.colSelFields.Items(), run.Form().lstZPQFieldTo.Items.Items());
    EXPECT_EQ(run.state.SelectClause, QStringLiteral("SELECT [Customers].[City], [Customers].[Id]"));
    EXPECT_EQ(run.state.FromClause, QStringLiteral("FROM [Customers]"));
}

TEST(FieldTab, RowsOfTablesThatWentAreDropped) {
    ChosenRun run({orders, customers});
    AddRow(run.state.rsGroupBy, QStringLiteral("[Orders].[Total]"));
    AddRow(run.state.rsGroupBy, QStringLiteral("[Customers].[City]"));
    AddRow(run.state.rsOrderBy, QStringLiteral("[Orders].[Id] DESC"));
    AddRow(run.state.rsOrderBy, QStringLiteral("x[Customers].[Id]x"));
    AddRow(run.state.rsCalcFields, QStringLiteral("[Orders].[Total]*[Customers].[Id]"));
    AddRow(run.state.rsCalcFields, QStringLiteral("1+[Orders].[Total]"));
    run.BackToTables();
    WizardRun::Pick(run.Form().lstZPQTableTo.Items, orders);
    MoveTableLeft(run.state);
    SelectTab(run.state, WizardTab::Fields);
    EXPECT_EQ(FirstColumn(run.state.rsGroupBy), QStringList({QStringLiteral("[Customers].[City]")}));
    EXPECT_EQ(FirstColumn(run.state.rsOrderBy), QStringList({QStringLiteral("x[Customers].[Id]x")}));
    EXPECT_EQ(FirstColumn(run.state.rsCalcFields),
              QStringList({QStringLiteral("[Orders].[Total]*[Customers].[Id]")}));
}

// The query is entered as a user does: what went took its aliases along, what stayed says what it said.
TEST(FieldTab, AChangeOfTablesKeepsWhatIsNotConcerned) {
    BuildRun run;
    const auto group = [&run](const char* field, const char* listed) {
        ChooseQueryMode(run.state, 1);
        run.PickField(QString::fromLatin1(field));
        run.PickOperator(QString::fromLatin1(listed));
        run.prompts->Answers = {BoxAnswer::Yes};
        CommitEntry(run.state);
    };
    const auto calculate = [&run](const char* expression, const char* alias) {
        CalcFieldForm form = LoadCalcField(run.state);
        form.Criteria = QString::fromLatin1(expression);
        form.Alias = QString::fromLatin1(alias);
        EXPECT_EQ(AcceptCalcField(run.state, form), CalcOutcome::Stored);
        EndCalcField(run.state);
    };
    calculate("[Orders].Total*2", "Twice");
    group("Twice", "MAX");
    group("[CustomerId]", "GROUP BY");
    ChooseQueryMode(run.state, 0);
    run.Enter(QStringLiteral("MAXOFwice"), QStringLiteral(">"), QStringLiteral("1"));
    ChooseQueryMode(run.state, 2);
    run.PickField(QStringLiteral("MAXOFwice"));
    run.PickOperator(QStringLiteral("DESC"));
    CommitEntry(run.state);
    const QString before = run.Sql();
    EXPECT_TRUE(before.contains(QStringLiteral("HAVING (MAX([Orders].Total*2) > 1) | ORDER BY")))
        << qPrintable(before);
    const auto visitTables = [&run](const std::function<void()>& act) {
        SelectTab(run.state, WizardTab::Tables);
        act();
        run.Form().TablesChanged = true;
        SelectTab(run.state, WizardTab::Fields);
        SelectTab(run.state, WizardTab::Build);
    };
    visitTables([] {});
    EXPECT_EQ(run.Sql(), before);
    visitTables([&run] {
        MoveAllTablesLeft(run.state);
        run.ChooseTable(customers);
    });
    EXPECT_EQ(run.Sql(), QStringLiteral("SELECT  | FROM [Customers] | "));
    EXPECT_FALSE(HasRows(run.state.rsAlias)) << "a name of the table that went would stand in HAVING";
}

TEST(FieldTab, ConditionsOutlastALookUpThatFails) {
    WizardRun run;
    run.Load();
    for (const QString& table : {orders, customers}) run.ChooseTable(table);
    run.database.Run(QStringLiteral("ALTER TABLE Customers RENAME TO Away"));
    const auto chooseOrders = [&run] {
        MoveAllTablesLeft(run.state);
        run.ChooseTable(orders);
        SelectTab(run.state, WizardTab::Build);
    };
    chooseOrders();
    WizardRun::Pick(run.Form().lstSelectedFields.Items, QStringLiteral("[Total]"));
    WizardRun::Pick(run.Form().lstOperands.Items, QStringLiteral(">"));
    ValueTyped(run.state, 0, QStringLiteral("100"));
    CommitEntry(run.state);
    const QString where = run.state.WhereClause;
    SelectTab(run.state, WizardTab::Tables);
    run.ChooseTable(customers);
    SelectTab(run.state, WizardTab::Joins);
    ASSERT_EQ(run.prompts->Boxes.size(), 1) << "Customers is away";
    chooseOrders();
    EXPECT_EQ(run.state.WhereClause, where);
    EXPECT_EQ(where, QStringLiteral("WHERE ([Orders].[Total] > 100)"));
}

TEST(FieldTab, ATableThatIsGoneLeadsBackWithNothingChosen) {
    struct Row {
        const char* What;
        std::function<void(WizardRun&)> Break;
        QString Named;
    };
    const Row rows[] = {
        {"the table", [](WizardRun& run) { run.database.Run(QStringLiteral("DROP TABLE Customers")); },
         QStringLiteral("Customers")},
        {"the database",
         [](WizardRun& run) {
             run.state.SharedConnection().Close();
             run.state.SharedConnection().SetConnectionString(
                 QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=/nowhere/none.db"));
         },
         QStringLiteral("none.db")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.What);
        WizardRun run;
        run.Load();
        run.ChooseTable(orders);
        run.ChooseTable(customers);
        row.Break(run);
        SelectTab(run.state, WizardTab::Joins);
        ASSERT_EQ(run.prompts->Boxes.size(), 1);
        EXPECT_EQ(run.prompts->Boxes[0].Style, BoxStyle::Critical);
        EXPECT_EQ(run.prompts->Boxes[0].Title, run.state.Options.gRunTimeCaption);
        EXPECT_TRUE(run.prompts->Boxes[0].Text.contains(row.Named)) << qPrintable(run.prompts->Boxes[0].Text);
        EXPECT_EQ(run.Form().TabZPG.Tab, 0);
        EXPECT_EQ(run.Form().lstZPQTableTo.Items.ListCount(), 0);
        EXPECT_EQ(run.state.FromClause, QString());
        EXPECT_FALSE(run.Form().TabZPG.TabEnabled[1]);
        EXPECT_EQ(run.Form().Pointer, MousePointer::Default);
    }
}

TEST(FieldTab, ALookUpThatFailsInsideAJumpClosesTheLaterTabs) {
    WizardRun run;
    run.state.Options.gAllowJoinCreation = false;
    run.Load();
    run.database.Run(QStringLiteral("DROP TABLE Customers"));
    run.ChooseTable(customers);
    EXPECT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_EQ(run.Form().TabZPG.Tab, 0);
    EXPECT_EQ(run.Form().TabZPG.TabEnabled, (std::array<bool, 5>{true, false, false, false, false}));
}

TEST(FieldTab, TheWizardMayEndInTheBoxOfALookUp) {
    WizardRun run;
    run.Load();
    run.ChooseTable(customers);
    run.database.Run(QStringLiteral("DROP TABLE Customers"));
    run.prompts->WhileOpen = [&](const auto&) { UnloadForm(run.state); };
    SelectTab(run.state, WizardTab::Fields);
    EXPECT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_EQ(run.state.rsWhere, nullptr);
    EXPECT_EQ(run.Form().lstZPQTableSelection.Items.ListCount(), 0);
}

}  // namespace zephrin
