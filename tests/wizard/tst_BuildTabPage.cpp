#include "platform/controls/ColouredText.h"
#include "platform/controls/DataGrid.h"
#include "wizard/FormTest.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace zephrin;

namespace {

const QString city = QStringLiteral("[City]");

class BuildTabPage : public test::FormTest {
 protected:
    void Start() {
        Connect();
        state->Options.gAllowCreateView = true;
        Show();
        ChooseOneTable(QStringLiteral("[Customers]"), {QStringLiteral("[Customers].[Customer Name]")});
    }
    void Criterion(const QString& field, const QString& operation, const QString& value) {
        Pick("lstSelectedFields", field);
        Pick("lstOperands", operation);
        Type("cmbAvailableValues1", value);
        Click("cmdCommit");
    }
    controls::DataGrid* Grid() const { return Find<controls::DataGrid>("dgrSQL"); }
    int Column(const char16_t* name) const { return Grid()->DataSource()->FieldIndex(name); }
    /// Types into a cell of the grid as a user does, ended by Enter.
    void TypeCell(int row, int column, const QString& text) {
        Grid()->SetCurrentCell(row, column);
        QTableView* pane = Grid()->Pane(0);
        QTest::keyClick(pane, Qt::Key_F2);
        auto* editor = pane->viewport()->findChild<QLineEdit*>();
        ASSERT_TRUE(editor);
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
};

TEST_F(BuildTabPage, BuildsASentenceAndCommitsIt) {
    Start();
    Pick("lstSelectedFields", city);
    EXPECT_TRUE(Enabled("lstOperands"));
    EXPECT_EQ(Find("lstSelectedFields")->toolTip(), QStringLiteral("[Customers].[City]"));
    Pick("lstOperands", QStringLiteral("="));
    EXPECT_TRUE(Enabled("cmbAvailableValues1"));
    EXPECT_FALSE(Enabled("cmbAvailableValues2"));
    EXPECT_FALSE(Enabled("cmdCommit"));
    Type("cmbAvailableValues1", QStringLiteral("Graz"));
    EXPECT_EQ(Find<QGroupBox>("fraBuildQuery")->title(), QStringLiteral("Where [City] = Graz"));
    ASSERT_TRUE(Enabled("cmdCommit"));
    QTest::keyClick(Find<QComboBox>("cmbAvailableValues1")->lineEdit(), Qt::Key_Return);
    EXPECT_TRUE(Statement().contains(QStringLiteral("[Customers].[City] = 'Graz'")))
        << qPrintable(Statement());
    EXPECT_EQ(Find<QComboBox>("cmbAvailableValues1")->currentText(), QString());
    EXPECT_FALSE(Enabled("cmdCommit"));
    EXPECT_TRUE(Enabled("optAndOr_1"));
    Click("cmdRunQuery");
    const auto& rows = Find<controls::DataGrid>("dgrQueryResults")->DataSource();
    ASSERT_TRUE(rows);
    EXPECT_GT(rows->RecordCount(), 0);
}

TEST_F(BuildTabPage, ALongValueDoesNotWidenTheForm) {
    Start();
    const int width = form->width();
    Pick("lstSelectedFields", city);
    Pick("lstOperands", QStringLiteral("="));
    Find<QComboBox>("cmbAvailableValues1")->setEditText(QString(10000, u'x'));
    SetStatusText(*state, QString(1000, u'x'));
    ShowFormNow(*state);
    QCoreApplication::processEvents();
    EXPECT_EQ(Find<QGroupBox>("fraBuildQuery")->title().size(),
              10000 + QStringLiteral("Where [City] = ").size());
    EXPECT_EQ(form->width(), width);
    EXPECT_TRUE(Enabled("cmdCommit"));
}

TEST_F(BuildTabPage, WhatDoesNotFitStaysInItsBoxAndIsTold) {
    Start();
    const QString before = Statement();
    Pick("lstSelectedFields", city);
    Pick("lstOperands", QStringLiteral("between"));
    Find<QComboBox>("cmbAvailableValues1")->setEditText(QString(600, u'x'));
    EXPECT_FALSE(Enabled("cmdCommit")) << "until there are both";
    Type("cmbAvailableValues2", QStringLiteral("y"));
    Click("cmdCommit");
    EXPECT_EQ(Find<QLabel>("stbZPB_1")->text(),
              QStringLiteral("Not added: the conditions on a field can have 550 characters in all .."));
    EXPECT_EQ(Find<QComboBox>("cmbAvailableValues1")->currentText().size(), 600);
    EXPECT_FALSE(Enabled("optAndOr_1"));
    EXPECT_TRUE(Enabled("cmdCommit"));
    EXPECT_EQ(Statement(), before);
}

TEST_F(BuildTabPage, OffersTheValuesOfAField) {
    Start();
    Pick("lstSelectedFields", city);
    Pick("lstOperands", QStringLiteral("="));
    Click("cmdFieldValues");
    auto* box = Find<QComboBox>("cmbAvailableValues1");
    EXPECT_GT(box->count(), 10);
    EXPECT_EQ(box->currentText(), QString()) << "nothing is picked by itself";
    Choose("cmbAvailableValues1", QStringLiteral("Graz"));
    EXPECT_EQ(box->currentText(), QStringLiteral("Graz"));
    EXPECT_TRUE(Enabled("cmdCommit"));
}

TEST_F(BuildTabPage, ShowsTheCriteriaAsAGrid) {
    Start();
    Criterion(city, QStringLiteral("="), QStringLiteral("Graz"));
    Click("cmdEditWhere");
    ASSERT_TRUE(Grid()->isVisible());
    EXPECT_FALSE(Find("txtSQL")->isVisible());
    EXPECT_FALSE(Find("chkDistinct")->isVisible());
    EXPECT_FALSE(Enabled("cmdRunQuery"));
    EXPECT_TRUE(Find<QLabel>("lblSQLLabel_0")->text().startsWith(QStringLiteral("Where / Having criteria")));
    TypeCell(0, Column(u"[Customers].[CustomerID]"), QStringLiteral("5"));
    EXPECT_EQ(Grid()->DataSource()->TextAt(0, Column(u"[Customers].[CustomerID]")), QStringLiteral("= 5"));
    EXPECT_FALSE(Enabled("cmdCreateView")) << "a view would lack what stands in an open cell";
    Click("cmdSQLView");
    EXPECT_FALSE(Grid()->isVisible());
    EXPECT_TRUE(Enabled("cmdRunQuery") && Enabled("cmdCreateView"));
    EXPECT_TRUE(Statement().contains(QStringLiteral("[Customers].[CustomerID] = 5")))
        << qPrintable(Statement());
}

TEST_F(BuildTabPage, SplitsTakeTheRoomThatIsThere) {
    Start();
    Click("cmdEditWhere");
    QCoreApplication::processEvents();
    const QSize size = form->size(), least = form->minimumSizeHint();
    int splits = 1;
    for (int press = 0; press < 40; ++press) Click("cmdSplit");
    QCoreApplication::processEvents();
    splits = Grid()->SplitCount();
    EXPECT_GT(splits, 2);
    EXPECT_LT(splits, 41);
    EXPECT_EQ(Find<QLabel>("stbZPB_1")->text(), QStringLiteral("There is no room for another split .."));
    EXPECT_EQ(form->size(), size);
    EXPECT_EQ(form->minimumSizeHint(), least);
    for (; splits > 1; --splits) Click("cmdDeleteSplit");
    EXPECT_FALSE(Enabled("cmdDeleteSplit"));
    EXPECT_EQ(form->size(), size);
}

TEST_F(BuildTabPage, EnterInTheKeypadIsOk) {
    struct Row {
        const char* Focus;
        Qt::KeyboardModifiers Modifiers;
        QString Cell;
    };
    const Row rows[] = {{"txtCriteria", Qt::NoModifier, QStringLiteral("> 1")},
                        {"txtCriteria", Qt::KeypadModifier, QStringLiteral("> 1")},
                        {"cmd5", Qt::NoModifier, QStringLiteral("> 1")},
                        {"txtCriteria", Qt::ShiftModifier, QStringLiteral("> 1\r\n")}};
    Start();
    Click("cmdEditWhere");
    const int column = Column(u"[Customers].[CustomerID]");
    for (const Row& row : rows) {
        Grid()->SetCurrentCell(0, column);
        QTimer::singleShot(0, form.get(), [&row] {
            QWidget* dialog = QApplication::activeModalWidget();
            ASSERT_TRUE(dialog);
            auto* text = dialog->findChild<controls::ColouredText*>(QStringLiteral("txtCriteria"));
            text->SetText(QStringLiteral("> 1"));
            text->moveCursor(QTextCursor::End);
            auto* focus = dialog->findChild<QWidget*>(QString::fromLatin1(row.Focus));
            focus->setFocus();
            QTest::keyClick(focus, Qt::Key_Return, row.Modifiers);
            const bool stays = row.Modifiers == Qt::ShiftModifier;
            EXPECT_EQ(dialog->isVisible(), stays) << row.Focus;
            if (dialog->isVisible()) QTest::keyClick(text, Qt::Key_Enter);
        });
        QTest::keyClick(Grid()->Pane(0), Qt::Key_F4);
        EXPECT_EQ(Grid()->DataSource()->TextAt(0, column), row.Cell) << row.Focus;
        Grid()->DataSource()->DeleteAll();
    }
}

TEST_F(BuildTabPage, AnOpenEditorIsTakenOverBeforeTheStatementShows) {
    Start();
    Click("cmdEditWhere");
    const int column = Column(u"[Customers].[City]");
    Grid()->SetCurrentCell(0, column);
    QTest::keyClick(Grid()->Pane(0), Qt::Key_F2);
    auto* editor = Grid()->Pane(0)->viewport()->findChild<QLineEdit*>();
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor, QStringLiteral("Wien"));
    ChooseTab(0);
    ChooseTab(3);
    EXPECT_TRUE(Statement().contains(QStringLiteral("[Customers].[City] = 'Wien'")))
        << qPrintable(Statement());
}

TEST_F(BuildTabPage, ACellsButtonOpensTheKeypad) {
    Start();
    Click("cmdEditWhere");
    const int column = Column(u"[Customers].[CustomerID]");
    Grid()->SetCurrentCell(0, column);
    QTimer::singleShot(0, form.get(), [] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog);
        EXPECT_EQ(dialog->objectName(), QStringLiteral("frmCriteriaBuilder"));
        for (const char* key : {"cmdGreaterThan", "cmd4", "cmd2", "cmdCriteriaOK"})
            QTest::mouseClick(dialog->findChild<QAbstractButton*>(QString::fromLatin1(key)), Qt::LeftButton);
    });
    QTest::keyClick(Grid()->Pane(0), Qt::Key_F4);
    ASSERT_EQ(Grid()->DataSource()->RecordCount(), 1);
    EXPECT_EQ(Grid()->DataSource()->TextAt(0, column), QStringLiteral(">42"));
}

// A text that the cell can't hold comes back as often as the user insists, and is lost only when he gives it
// up.
TEST_F(BuildTabPage, ARefusedTextIsOfferedUntilItFitsOrIsGivenUp) {
    struct Row {
        const char* What;
        QStringList Ends;  ///< the button that ends each showing of the keypad, after "Clear" where it is "+"
        int Boxes;
        QString Cell;
    };
    const Row table[] = {
        {"insisted, then made to fit",
         {QStringLiteral("OK"), QStringLiteral("OK"), QStringLiteral("+OK")},
         2,
         QStringLiteral("= 5")},
        {"given up", {QStringLiteral("OK"), QStringLiteral("Cancel")}, 1, QString()},
    };
    Start();
    Click("cmdEditWhere");
    const int column = Column(u"[Customers].[CustomerID]");
    for (const Row& row : table) {
        Grid()->SetCurrentCell(0, column);
        const qsizetype before = prompts->Boxes.size();
        int showing = 0;
        QTimer driver;
        QObject::connect(&driver, &QTimer::timeout, &driver, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog) return;
            const QString end = row.Ends.value(showing, QStringLiteral("Cancel"));
            auto* text = dialog->findChild<controls::ColouredText*>(QStringLiteral("txtCriteria"));
            if (showing++ == 0) text->SetText(QStringLiteral("> ") + QString(600, u'9'));
            EXPECT_GT(text->Text().size(), 550) << row.What << ", showing " << showing;
            if (end.startsWith(u'+')) text->SetText(QStringLiteral("= 5"));
            const QString name = QStringLiteral("cmdCriteria") + QString(end).remove(u'+');
            dialog->findChild<QAbstractButton*>(name)->click();
        });
        driver.start(0);
        QTest::keyClick(Grid()->Pane(0), Qt::Key_F4);
        driver.stop();
        EXPECT_EQ(showing, row.Ends.size()) << row.What;
        EXPECT_EQ(prompts->Boxes.size() - before, row.Boxes) << row.What;
        const bool written = Grid()->DataSource()->RecordCount() > 0;
        EXPECT_EQ(written ? Grid()->DataSource()->TextAt(0, column) : QString(), row.Cell) << row.What;
        if (written) Grid()->DataSource()->DeleteAll();
    }
}

TEST_F(BuildTabPage, TheFormMayGoWhileItsDialogIsOpen) {
    Start();
    Click("cmdEditWhere");
    Grid()->SetCurrentCell(0, 0);
    QTableView* pane = Grid()->Pane(0);
    const QPointer<frmZPG> raw(form.release());
    QTimer::singleShot(0, raw, [raw] {
        raw->UnloadSilently();
        raw->DeleteWhenIdle();
    });
    QTest::keyClick(pane, Qt::Key_F4);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(raw);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(BuildTabPage, GroupsAndOrders) {
    Start();
    Click("optQuery_1");
    Pick("lstSelectedFields", city);
    Pick("lstOperands", QStringLiteral("GROUP BY"));
    prompts->Answers = {BoxAnswer::Yes};
    Click("cmdCommit");
    EXPECT_TRUE(Statement().contains(QStringLiteral("GROUP BY [Customers].[City]")))
        << qPrintable(Statement());
    Click("optQuery_2");
    Pick("lstSelectedFields", city);
    Pick("lstOperands", QStringLiteral("DESC"));
    Click("cmdCommit");
    EXPECT_TRUE(Statement().contains(QStringLiteral("ORDER BY [Customers].[City] DESC")))
        << qPrintable(Statement());
    prompts->Answers = {BoxAnswer::Yes};
    Click("cmdResetSQL");
    EXPECT_FALSE(Statement().contains(QStringLiteral("GROUP BY"))) << qPrintable(Statement());
}

}  // namespace
