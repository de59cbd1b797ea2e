#include "platform/controls/ColouredText.h"
#include "platform/controls/DataGrid.h"
#include "savedquery/OpenQuery.h"
#include "support/ScriptedPrompts.h"
#include "wizard/FormTest.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using namespace zephrin;

namespace {

class SavedQueryButtons : public test::FormTest {
 protected:
    SavedQueryButtons() {
        Connect();
        Show();
        ChooseOneTable(QStringLiteral("[Orders]"), {QStringLiteral("[Orders].[OrderID]")});
    }
    QString Path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
    void Save(const char* name) {
        prompts->Paths = {Path(name)};
        Click("cmdSaveQuery");
        ASSERT_TRUE(QFile::exists(Path(name)));
    }
    void Open(const char* name, const QList<BoxAnswer>& answers) {
        prompts->Answers = answers;
        prompts->Paths = {Path(name)};
        Click("cmdOpenQuery");
    }

    QTemporaryDir folder;
};

TEST_F(SavedQueryButtons, ASavedQueryComesBackThroughTheOpenButton) {
    const QString statement = Statement();
    prompts->Paths = {Path("Mine.zpb")};
    Click("cmdSaveQuery");
    EXPECT_TRUE(QFile::exists(Path("Mine.zpb")));
    ChooseTab(2);
    Click("cmdZPQFieldRightAll");
    ChooseTab(3);
    EXPECT_NE(Statement(), statement);
    prompts->Answers = {BoxAnswer::No};
    prompts->Paths = {Path("Mine.zpb")};
    Click("cmdOpenQuery");
    EXPECT_EQ(CurrentTab(), 0) << "the fields of the file are those of another day until this tab is left";
    ChooseTab(3);
    EXPECT_EQ(Statement(), statement);
    EXPECT_TRUE(Enabled("cmdRunQuery"));
    Click("cmdRunQuery");
    EXPECT_TRUE(state->rsQueryResult->RecordCount() > 0);
}

TEST_F(SavedQueryButtons, OpeningLeavesNothingOfTheQueryInHand) {
    const QString statement = Statement();
    Save("One.zpb");
    ChooseTab(0);
    DoubleClick("lstZPQTableSelection", QStringLiteral("[Customers]"));
    ChooseTab(1);
    Choose("cmbJoinTables_0", QStringLiteral("[Orders]"));
    Choose("cmbJoinTables_1", QStringLiteral("[Customers]"));
    Click("cmdlockTables");
    Click("cmdAddJoin");
    ChooseTab(3);
    Click("chkDistinct");
    Click("optQuery_1");
    Pick("lstSelectedFields", QStringLiteral("[OrderID]"));
    Pick("lstOperands", Items("lstOperands").first());
    prompts->Answers = {BoxAnswer::Yes};
    Click("cmdCommit");
    ASSERT_TRUE(HasRows(state->rsGroupBy));
    Click("cmdEditWhere");
    Click("cmdSplit");
    Click("cmdSQLView");
    Click("cmdRunQuery");
    ASSERT_EQ(CurrentTab(), 4);
    ASSERT_TRUE(State().dgrQueryResults.DataSource);
    Click("cmdResAddSplit");

    Open("One.zpb", {BoxAnswer::No});
    EXPECT_EQ(CurrentTab(), 0);
    EXPECT_EQ(Items("lstZPQTableTo"), QStringList(QStringLiteral("[Orders]")));
    EXPECT_EQ(Tabs(), QStringLiteral("10111"));
    for (const char* name : {"dgrQueryResults", "dgrSQL"}) {
        EXPECT_FALSE(Find<controls::DataGrid>(name)->DataSource()) << name;
        EXPECT_EQ(Find<controls::DataGrid>(name)->SplitCount(), 1) << name;
    }
    ChooseTab(4);
    EXPECT_TRUE(Find<controls::ColouredText>("txtSQLErrors")->Text().isEmpty());
    for (const char* name : {"cmdAsc", "cmdDesc", "cmdExcel"}) EXPECT_FALSE(Enabled(name)) << name;
    ChooseTab(3);
    EXPECT_EQ(Statement(), statement);
    EXPECT_FALSE(Find<QAbstractButton>("chkDistinct")->isChecked());
    ChooseTab(2);
    DoubleClick("lstZPQFieldFrom", QStringLiteral("[Orders].[CustomerID]"));
    Pick("lstZPQFieldTo", QStringLiteral("[Orders].[OrderID]"));
    EXPECT_TRUE(Enabled("cmdZPQFieldLeft")) << "both lists take clicks";

    // A further table is joined to the table of the file, and to none of the query before it.
    ChooseTab(0);
    DoubleClick("lstZPQTableSelection", QStringLiteral("[Order Details]"));
    ChooseTab(1);
    auto* from = Find<QComboBox>("cmbJoinTables_0");
    ASSERT_EQ(from->count(), 2);
    Choose("cmbJoinTables_0", QStringLiteral("[Orders]"));
    EXPECT_EQ(Find<QComboBox>("cmbJoinTables_1")->count(), 1);
}

TEST_F(SavedQueryButtons, OpeningAsksAboutChangesOnly) {
    Save("Mine.zpb");
    Open("Mine.zpb", {});
    for (const int tab : {2, 3, 4, 0}) ChooseTab(tab);
    Open("Mine.zpb", {});
    EXPECT_TRUE(prompts->Boxes.isEmpty()) << "nothing was changed";
    EXPECT_TRUE(prompts->Choices.last().MustExist);
    ChooseTab(3);
    const struct {
        const char* What;
        QList<BoxAnswer> Answers;
        QStringList Paths;
        bool Opens;
    } rows[] = {
        {"Cancel", {BoxAnswer::Cancel}, {}, false},
        {"a save that is cancelled", {BoxAnswer::Yes}, {QString()}, false},
        {"a save that fails", {BoxAnswer::Yes}, {Path("gone/Mine.zpb")}, false},
        {"No, and no file", {BoxAnswer::No}, {QString()}, false},
        {"No, and no query", {BoxAnswer::No}, {Path("missing.zpb")}, false},
        {"Yes", {BoxAnswer::Yes}, {Path("Other.zpb"), Path("Mine.zpb")}, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.What);
        if (!Find<QAbstractButton>("chkDistinct")->isChecked()) Click("chkDistinct");
        const QString statement = Statement();
        prompts->Answers = row.Answers;
        prompts->Paths = row.Paths;
        Click("cmdOpenQuery");
        EXPECT_TRUE(prompts->Answers.isEmpty() && prompts->Paths.isEmpty());
        EXPECT_TRUE(form->isVisible() && unloads.isEmpty());
        EXPECT_EQ(CurrentTab(), row.Opens ? 0 : 3);
        EXPECT_EQ(Statement() == statement, !row.Opens);
    }
    EXPECT_TRUE(QFile::exists(Path("Other.zpb")));
    state->Options.gAllowSaveDelete = false;
    ChooseTab(3);
    Click("chkDistinct");
    prompts->Boxes.clear();
    Open("Mine.zpb", {});
    EXPECT_TRUE(prompts->Boxes.isEmpty()) << "nobody may save";
}

TEST_F(SavedQueryButtons, AnOpenEditorIsTakenOverOrKeepsTheUser) {
    Save("Mine.zpb");
    Click("cmdEditWhere");
    auto* grid = Find<controls::DataGrid>("dgrSQL");
    for (const bool fits : {false, true}) {
        grid->SetCurrentCell(0, 0);
        if (!grid->Pane(0)->viewport()->findChild<QLineEdit*>()) QTest::keyClick(grid->Pane(0), Qt::Key_F2);
        auto* editor = grid->Pane(0)->viewport()->findChild<QLineEdit*>();
        ASSERT_TRUE(editor);
        editor->setText(fits ? QStringLiteral("7") : QString(600, u'7'));
        if (fits) prompts->Answers = {BoxAnswer::Cancel};
        Find<QAbstractButton>("cmdOpenQuery")->click();
        EXPECT_EQ(prompts->Boxes.last().Style & 3, fits ? int(BoxStyle::YesNoCancel) : 0)
            << "asks of the new 7";
    }
}

TEST_F(SavedQueryButtons, AQueryAtTheStartShowsATabThatIsOpen) {
    Save("Mine.zpb");
    form.reset();
    state->Options.gAllowTableSelection = false;
    state->gOpenQuery = true;
    state->OpenSavedQuery = [this](ZPGGlobalDeclarations& run) {
        return OpenSavedQuery(run, Path("Mine.zpb")) == OpenOutcome::Opened;
    };
    Show();
    EXPECT_EQ(Tabs(), QStringLiteral("-0111"));
    EXPECT_EQ(CurrentTab(), 2);
}

TEST_F(SavedQueryButtons, ASaveThatFailsKeepsTheWizardOpen) {
    prompts->Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    prompts->Paths = {Path("gone/Mine.zpb"), Path("Mine.zpb")};
    EXPECT_FALSE(form->close());
    EXPECT_TRUE(unloads.isEmpty());
    EXPECT_TRUE(State().StatusText.startsWith(QStringLiteral("The query was not saved")));
    EXPECT_TRUE(form->close());
    EXPECT_TRUE(QFile::exists(Path("Mine.zpb")));
    EXPECT_EQ(unloads, QStringList(QString()));
}

TEST_F(SavedQueryButtons, CancellingTheFileDialogClosesAllTheSame) {
    prompts->Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(form->close());
}

}  // namespace
