#include "support/SpreadsheetProgram.h"
#include "wizard/FormTest.h"

#include <QDir>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace zephrin;

namespace {

class Export : public test::FormTest {
 protected:
    void Begin() {
        prompts->Folder = folder.path();
        Connect();
        Show();
        ChooseOneTable(QStringLiteral("[Categories]"), {QStringLiteral("[Categories].[CategoryID]"),
                                                        QStringLiteral("[Categories].[Category Name]")});
        Click("cmdRunQuery");
        ASSERT_TRUE(state->rsQueryResult);
        ASSERT_GT(state->rsQueryResult->RecordCount(), 0);
    }
    QStringList Files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
    /// Cell texts of the result's first row, as a spreadsheet has them.
    QString FirstRow() const {
        state->rsQueryResult->MoveFirst();
        return QStringLiteral("row float:%1|string:%2")
            .arg(state->rsQueryResult->Text(0), state->rsQueryResult->Text(1));
    }
    /// Answers the next dialog with `button`, after `before`.
    void WhenAsked(const char* button, const std::function<void(QWidget&)>& before = {}) {
        QTimer::singleShot(0, form.get(), [button, before] {
            QWidget* dialog = QApplication::activeModalWidget();
            ASSERT_TRUE(dialog);
            if (before) before(*dialog);
            QTest::mouseClick(dialog->findChild<QAbstractButton*>(QString::fromLatin1(button)),
                              Qt::LeftButton);
        });
    }

    QTemporaryDir folder;
};

TEST_F(Export, TheButtonMakesAWorkbookWithRowsAndPivot) {
    Begin();
    Click("cmdExcel");
    EXPECT_EQ(State().StatusText, QStringLiteral("Ready ..."));
    EXPECT_TRUE(prompts->Boxes.isEmpty());
    ASSERT_EQ(prompts->Opened.size(), 1);
    EXPECT_EQ(Files(), QStringList(QFileInfo(prompts->Opened.first()).fileName()));
    const std::optional<QStringList> said = test::ReadBySpreadsheetProgram(prompts->Opened.first());
    if (!said) GTEST_SKIP() << "LibreOffice is not installed";
    EXPECT_EQ(said->indexOf(QStringLiteral("sheet Pivot Report")), 0);
    EXPECT_TRUE(said->contains(FirstRow())) << qPrintable(said->join(u'\n'));
    const qint64 rows = state->rsQueryResult->RecordCount();
    EXPECT_EQ(
        said->last(),
        QStringLiteral("pivot QueryBuilder Data of 'Query Results'.A1:'Query Results'.B%1").arg(rows + 1));
}

TEST_F(Export, TheOlderRouteAsksForDataOrPivot) {
    Begin();
    state->gExcel97 = {QStringLiteral("SQL Server"),
                       QStringLiteral("shop"),
                       QStringLiteral("host"),
                       {},
                       {},
                       {},
                       QStringLiteral("YES"),
                       true};
    WhenAsked("cmdCancel");
    Click("cmdExcel");
    EXPECT_EQ(Files(), QStringList());

    WhenAsked("cmdOK", [](QWidget& dialog) {
        EXPECT_TRUE(dialog.findChild<QRadioButton*>(QStringLiteral("optDataChoice_1"))->isChecked());
    });
    Click("cmdExcel");
    WhenAsked("cmdOK", [](QWidget& dialog) {
        dialog.findChild<QRadioButton*>(QStringLiteral("optDataChoice_0"))->setChecked(true);
    });
    Click("cmdExcel");
    ASSERT_EQ(prompts->Opened.size(), 2);
    const char16_t* const sheets[] = {u"Query Results", u"Pivot Table"};
    for (int each = 0; each < 2; ++each) {
        const std::optional<QStringList> said = test::ReadBySpreadsheetProgram(prompts->Opened.at(each));
        if (!said) GTEST_SKIP() << "LibreOffice is not installed";
        EXPECT_EQ(said->value(0), QStringLiteral("sheet ") + QString::fromUtf16(sheets[each]));
        EXPECT_EQ(said->contains(FirstRow()), each == 0);
    }
}

TEST_F(Export, TextsThatLoseTheirEndAreTold) {
    Begin();
    state->CurrentSQL = QStringLiteral("SELECT TOP 2 REPLICATE('x', 32768) AS [Long] FROM [Customers]");
    Click("cmdExcel");
    ASSERT_EQ(prompts->Boxes.size(), 1);
    EXPECT_EQ(prompts->Boxes.first().Style, BoxStyle::Information);
    EXPECT_TRUE(prompts->Boxes.first().Text.endsWith(QStringLiteral("lost their end: 2.")))
        << qPrintable(prompts->Boxes.first().Text);
}

TEST_F(Export, AFailureLeavesNoFileAndTheWizardAsItWas) {
    Begin();
    const struct {
        const char* Name;
        QString Sql, Folder, Text;
    } rows[] = {
        {"statement", QStringLiteral("SELECT [Nowhere] FROM [Customers]"), folder.path(),
         QStringLiteral("Nowhere")},
        {"folder", state->CurrentSQL, QStringLiteral("/dev/null/there"), QStringLiteral("/dev/null/there")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        prompts->Boxes.clear();
        state->CurrentSQL = row.Sql;
        prompts->Folder = row.Folder;
        Click("cmdExcel");
        ASSERT_EQ(prompts->Boxes.size(), 1);
        EXPECT_EQ(prompts->Boxes.first().Style, BoxStyle::Critical);
        EXPECT_TRUE(prompts->Boxes.first().Text.contains(row.Text))
            << qPrintable(prompts->Boxes.first().Text);
        EXPECT_EQ(State().StatusText, QStringLiteral("Ready ..."));
        EXPECT_EQ(State().Pointer, MousePointer::Default);
        EXPECT_EQ(Files(), QStringList());
        EXPECT_TRUE(Enabled("cmdExcel"));
    }
}

}  // namespace
