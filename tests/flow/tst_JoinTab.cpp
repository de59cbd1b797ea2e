#include "flow/FieldTab.h"
#include "flow/JoinTab.h"
#include "support/WizardRun.h"

namespace zephrin {

namespace {

using test::WizardRun;

const QString orders = QStringLiteral("[Orders]");
const QString customers = QStringLiteral("[Customers]");
const QString details = QStringLiteral("[Order Details]");

/// A run on the join tab with these tables chosen.
struct JoinRun : WizardRun {
    explicit JoinRun(const QStringList& tables) {
        Load();
        for (const QString& table : tables) ChooseTable(table);
        SelectTab(state, WizardTab::Joins);
    }
    ListState& From() { return Form().cmbJoinTables[0].Items; }
    ListState& To() { return Form().cmbJoinTables[1].Items; }
    void Lock(const QString& from, const QString& to) {
        Pick(From(), from);
        Pick(To(), to);
        LockClicked(state);
    }
    void PickFields(const QString& from, const QString& to) {
        Pick(Form().lstJoinFields[0].Items, from);
        Pick(Form().lstJoinFields[1].Items, to);
    }
    void Join(const QString& from, const QString& to, const QString& fieldFrom, const QString& fieldTo) {
        Lock(from, to);
        PickFields(fieldFrom, fieldTo);
        AddJoin(state);
    }
    void JoinOrdersAndCustomers() {
        Join(orders, customers, QStringLiteral("[Orders].[CustomerId]"), QStringLiteral("[Customers].[Id]"));
    }
    QString Rows() {
        QStringList rows;
        for (qint64 row = 0; row < state.rsJoins->RecordCount(); ++row) {
            QStringList cells;
            for (int field = 0; field < 6; ++field)
                cells << (state.rsJoins->IsNullAt(row, field) ? QStringLiteral("-")
                                                              : state.rsJoins->TextAt(row, field));
            rows << cells.join(u'|');
        }
        return rows.join(u'\n');
    }
    bool LaterTabsOpen() { return Form().TabZPG.TabEnabled[2]; }
};

QString Items(const ListState& list) {
    return list.Items().join(u',');
}

}  // namespace

TEST(JoinTab, OffersTablesStepByStep) {
    JoinRun run({orders, customers, details});
    FormState& form = run.Form();
    EXPECT_EQ(Items(run.From()), QStringLiteral("[Orders],[Customers],[Order Details]"));
    EXPECT_FALSE(form.cmbJoinTables[1].Enabled);
    WizardRun::Pick(run.From(), orders);
    EXPECT_TRUE(form.cmbJoinTables[1].Enabled);
    EXPECT_EQ(Items(run.To()), QStringLiteral("[Customers],[Order Details]")) << "no table joins itself";
    EXPECT_EQ(form.FocusRequest, QStringLiteral("cmbJoinTables_0")) << "another one may be picked next";
    JoinTableChosen(run.state, 0);
    EXPECT_EQ(form.FocusRequest, QStringLiteral("cmbJoinTables_1"));
    EXPECT_FALSE(form.cmdlockTables.Enabled);
    WizardRun::Pick(run.To(), customers);
    EXPECT_TRUE(form.cmdlockTables.Enabled);
    JoinTableChosen(run.state, 1);
    EXPECT_EQ(form.FocusRequest, QStringLiteral("cmdlockTables"));
    // Another left table takes the pair apart.
    WizardRun::Pick(run.From(), customers);
    EXPECT_EQ(form.cmbJoinTables[1].Text, QString());
    EXPECT_FALSE(form.cmdlockTables.Enabled);
    // Typing picks nothing.
    WizardRun::Pick(run.To(), orders);
    JoinTableTyped(run.state, 1);
    EXPECT_EQ(form.cmbJoinTables[1].Text, QString());
    EXPECT_FALSE(form.cmdlockTables.Enabled);
}

TEST(JoinTab, ALockShowsFieldsAndPairsTheSameName) {
    JoinRun run({orders, customers});
    FormState& form = run.Form();
    run.Lock(orders, customers);
    EXPECT_EQ(form.cmdlockTables.Tag, QStringLiteral("1"));
    EXPECT_EQ(form.cmdlockTables.ToolTipText, QStringLiteral("Unlock Tables"));
    EXPECT_FALSE(form.cmbJoinTables[0].Enabled || form.cmbJoinTables[1].Enabled);
    EXPECT_TRUE(form.cmbJoinType.Enabled);
    EXPECT_EQ(Items(form.lstJoinFields[1].Items),
              QStringLiteral("[Customers].[Id],[Customers].[Name],[Customers].[City]"));
    EXPECT_EQ(form.lblJoinTableFrom.ForeColor, 0xE0E0E0);
    EXPECT_EQ(form.lstJoinFields[0].Items.Text(), QStringLiteral("[Orders].[Id]"));
    EXPECT_EQ(form.lstJoinFields[1].Items.Text(), QStringLiteral("[Customers].[Id]"));
    EXPECT_TRUE(form.cmdAddJoin.Enabled);
    LockClicked(run.state);
    EXPECT_EQ(form.cmdlockTables.Tag, QStringLiteral("0"));
    EXPECT_EQ(form.lstJoinFields[0].Items.ListCount(), 0);
    EXPECT_FALSE(form.cmdAddJoin.Enabled || form.cmbJoinType.Enabled || form.cmdlockTables.Enabled);
    EXPECT_EQ(form.lblJoinTableTo.ForeColor, 0xFFFFFF);
}

TEST(JoinTab, JoinTypesDescribeThemselves) {
    JoinRun run({orders, customers});
    run.Lock(orders, customers);
    const struct {
        const char* Type;
        const char* Tip;
    } rows[] = {
        {">=",
         "Include [ALL RECORDS] from '[Orders]' and [ONLY THOSE RECORDS] from '[Customers]' where the Joined "
         "Fields "
         "are [EQUAL]."},
        {"<>", "Include [ALL RECORDS] from '[Orders]' and [ALL RECORDS] from '[Customers]'"},
        {"=",
         "[ONLY INCLUDE ROWS] where the Joined Fields from '[Orders]' are [EQUAL] to the Fields from "
         "'[Customers]'"},
    };
    for (const auto& row : rows) {
        WizardRun::Pick(run.Form().cmbJoinType.Items, QString::fromLatin1(row.Type));
        EXPECT_EQ(run.Form().cmbJoinType.ToolTipText, QString::fromLatin1(row.Tip));
    }
    WizardRun::Pick(run.Form().cmbJoinType.Items, QStringLiteral("<>"));
    JoinTypeTyped(run.state);
    EXPECT_EQ(run.Form().cmbJoinType.Text, QStringLiteral("="));
}

TEST(JoinTab, PairsUnderOneLockContinueTheJoin) {
    JoinRun run({orders, customers});
    FormState& form = run.Form();
    EXPECT_FALSE(run.LaterTabsOpen());
    run.JoinOrdersAndCustomers();
    EXPECT_FALSE(form.cmdAddJoin.Enabled || form.cmbJoinType.Enabled);
    EXPECT_TRUE(form.cmdResetJoins.Enabled);
    EXPECT_EQ(form.FocusRequest, QStringLiteral("cmdlockTables"));
    EXPECT_EQ(Items(form.lstJoinFields[0].Items), QStringLiteral("[Orders].[Id],[Orders].[Total]"))
        << "used up";
    EXPECT_TRUE(run.LaterTabsOpen());
    run.PickFields(QStringLiteral("[Orders].[Total]"), QStringLiteral("[Customers].[City]"));
    AddJoin(run.state);
    EXPECT_EQ(run.Rows(),
              QStringLiteral("[Orders]|INNER JOIN|[Customers] ON|[Orders].[CustomerId]|=|[Customers].[Id]\n"
                             "-|-|AND|[Orders].[Total]|=|[Customers].[City]"));
    // The scratch rows go crosswise, two for each pair.
    EXPECT_EQ(run.state.rsJoinFieldsUsed->RecordCount(), 4);
    EXPECT_EQ(run.state.rsJoinFieldsUsed->Text(u"FieldName"), customers);
    LockClicked(run.state);
    EXPECT_EQ(run.state.rsJoinFieldsUsed->RecordCount(), 0);
    EXPECT_EQ(form.JoinText,
              QStringLiteral("([Orders] INNER JOIN [Customers] ON [Orders].[CustomerId] = [Customers].[Id]"
                             " AND [Orders].[Total] = [Customers].[City])"));
}

TEST(JoinTab, FurtherJoinsGrowFromWhatIsJoined) {
    JoinRun run({orders, customers, details});
    FormState& form = run.Form();
    run.JoinOrdersAndCustomers();
    EXPECT_FALSE(run.LaterTabsOpen());
    LockClicked(run.state);
    EXPECT_EQ(Items(run.From()), QStringLiteral("[Orders],[Customers]"));
    WizardRun::Pick(run.From(), orders);
    EXPECT_EQ(Items(run.To()), details) << "what is joined is offered no more";
    WizardRun::Pick(run.To(), details);
    LockClicked(run.state);
    WizardRun::Pick(form.cmbJoinType.Items, QStringLiteral(">="));
    run.PickFields(QStringLiteral("[Orders].[Id]"), QStringLiteral("[Order Details].[OrderId]"));
    AddJoin(run.state);
    EXPECT_TRUE(run.LaterTabsOpen());
    SelectTab(run.state, WizardTab::Fields);
    EXPECT_EQ(
        run.state.FromClause,
        QStringLiteral("FROM (([Orders] INNER JOIN [Customers] ON [Orders].[CustomerId] = [Customers].[Id])"
                       "  LEFT OUTER JOIN [Order Details] ON [Orders].[Id] = [Order Details].[OrderId])"));
    EXPECT_EQ(form.cmdlockTables.Tag, QStringLiteral("0")) << "a lock does not survive a change of tab";
}

TEST(JoinTab, AComparisonIsChosenFromItsList) {
    JoinRun run({orders, customers});
    FormState& form = run.Form();
    run.JoinOrdersAndCustomers();
    CompareButtonClicked(run.state);
    EXPECT_TRUE(form.lstJoinCompare.Visible);
    EXPECT_EQ(Items(form.lstJoinCompare.Items), QStringLiteral("=,>,<,<>,>=,<="));
    WizardRun::Pick(form.lstJoinCompare.Items, QStringLiteral("<>"));
    EXPECT_FALSE(form.lstJoinCompare.Visible);
    EXPECT_EQ(
        form.JoinText,
        QStringLiteral("([Orders] INNER JOIN [Customers] ON [Orders].[CustomerId] <> [Customers].[Id])"));
    CompareButtonClicked(run.state);
    CompareButtonClicked(run.state);
    EXPECT_FALSE(form.lstJoinCompare.Visible);
    CompareButtonClicked(run.state);
    HideCompareList(run.state);
    EXPECT_FALSE(form.lstJoinCompare.Visible);
    EXPECT_EQ(run.state.rsJoins->Text(u"Compare"), QStringLiteral("<>"));
}

TEST(JoinTab, RemovingAllJoinsAsksAndFreesTheTables) {
    JoinRun run({orders, customers});
    run.JoinOrdersAndCustomers();
    run.prompts->Answers = {BoxAnswer::No, BoxAnswer::Yes};
    ResetJoins(run.state);
    EXPECT_EQ(run.state.rsJoins->RecordCount(), 1);
    EXPECT_EQ(run.prompts->Boxes[0].Text, QStringLiteral("Are you sure that you want to remove all Joins ?"));
    EXPECT_EQ(run.prompts->Boxes[0].Title, QStringLiteral("Remove Table Joins"));
    EXPECT_EQ(run.prompts->Boxes[0].Style, 4 + 32 + 256);
    ResetJoins(run.state);
    EXPECT_EQ(run.state.rsJoins->RecordCount(), 0);
    EXPECT_EQ(run.state.rsJoinTable->RecordCount(), 2);
    EXPECT_EQ(run.Form().JoinText, QString());
    EXPECT_FALSE(run.Form().cmdResetJoins.Enabled || run.LaterTabsOpen());
    WizardRun::Pick(run.From(), customers);
    EXPECT_EQ(Items(run.To()), orders);
}

TEST(JoinTab, AnAddedTableKeepsTheJoinsAndARemovedOneDropsThem) {
    JoinRun run({orders, customers});
    run.JoinOrdersAndCustomers();
    SelectTab(run.state, WizardTab::Tables);
    run.ChooseTable(details);
    SelectTab(run.state, WizardTab::Joins);
    EXPECT_EQ(run.state.rsJoins->RecordCount(), 1);
    EXPECT_FALSE(run.LaterTabsOpen());
    WizardRun::Pick(run.From(), customers);
    EXPECT_EQ(Items(run.To()), details);
    SelectTab(run.state, WizardTab::Tables);
    WizardRun::Pick(run.Form().lstZPQTableTo.Items, details);
    MoveTableLeft(run.state);
    EXPECT_EQ(run.state.rsJoins->RecordCount(), 0);
    EXPECT_EQ(run.Form().JoinText, QString());
}

TEST(JoinTab, ATableThatIsGoneTakesTheLockOffAndTheUserBack) {
    JoinRun run({orders, customers});
    WizardRun::Pick(run.From(), orders);
    WizardRun::Pick(run.To(), customers);
    run.database.Run(QStringLiteral("DROP TABLE Customers"));
    LockClicked(run.state);
    EXPECT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_EQ(run.Form().TabZPG.Tab, 0);
    EXPECT_EQ(run.Form().lstZPQTableTo.Items.ListCount(), 0);
    EXPECT_EQ(run.Form().cmdlockTables.Tag, QStringLiteral("0"));
    EXPECT_EQ(run.state.FromClause, QString());
    EXPECT_EQ(run.Form().Pointer, MousePointer::Default);
}

TEST(JoinTab, AFailedJoinIsTold) {
    JoinRun run({orders, customers});
    run.Lock(orders, customers);
    // Rows of a file whose columns are too narrow for these tables.
    run.state.rsJoins = std::make_shared<ado::Recordset>();
    run.state.rsJoins->Append(QStringLiteral("TableFrom"), ado::DataType::VarChar, 3);
    AddJoin(run.state);
    ASSERT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_TRUE(run.prompts->Boxes[0].Text.startsWith(QLatin1String("Error : ")));
    EXPECT_EQ(run.prompts->Boxes[0].Style, 16);
}

}  // namespace zephrin
