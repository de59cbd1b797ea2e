#include "platform/controls/DataGrid.h"
#include "support/ScriptedPrompts.h"
#include "wizard/FormTest.h"

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
    prompts->Paths = {Path("Mine.zpb")};
    Click("cmdOpenQuery");
    EXPECT_EQ(Statement(), statement);
    EXPECT_TRUE(Enabled("cmdRunQuery"));
    Click("cmdRunQuery");
    EXPECT_TRUE(state->rsQueryResult->RecordCount() > 0);
}

TEST_F(SavedQueryButtons, AnUnreadableFileClosesTheWizard) {
    prompts->Paths = {Path("missing.zpb")};
    Click("cmdOpenQuery");
    EXPECT_FALSE(form->isVisible());
    ASSERT_EQ(unloads.size(), 1);
    EXPECT_TRUE(unloads[0].startsWith(QStringLiteral("Query ") + Path("missing.zpb")));
}

TEST_F(SavedQueryButtons, AnUnreadableFileClosesTheWizardOverAnEditorToo) {
    Click("cmdEditWhere");
    auto* grid = Find<controls::DataGrid>("dgrSQL");
    grid->SetCurrentCell(0, 0);
    QTest::keyClick(grid->Pane(0), Qt::Key_F2);
    auto* editor = grid->Pane(0)->viewport()->findChild<QLineEdit*>();
    ASSERT_TRUE(editor);
    editor->setText(QString(600, u'7'));
    prompts->Paths = {Path("missing.zpb")};
    Find<QAbstractButton>("cmdOpenQuery")->click();
    EXPECT_EQ(unloads.size(), 1);
    EXPECT_EQ(prompts->Boxes.size(), 1);
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
