#include "output/CreateView.h"
#include "wizard/FormTest.h"

#include <QFile>
#include <QTemporaryDir>

using namespace zephrin;

namespace {

class Views : public test::FormTest {
 protected:
    void Begin(const QString& dialect) {
        const QString file = folder.filePath(QStringLiteral("shop.db"));
        ASSERT_TRUE(QFile::copy(QStringLiteral(ZEPHRIN_SHOP_DB), file));
        QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        Connect(dialect, file);
        state->Options.gAllowCreateView = true;
        Show();
        ChooseOneTable(QStringLiteral("[Customers]"), {QStringLiteral("[Customers].[City]")});
    }
    qint64 RowsOfView() const {
        return state->SharedConnection().Execute(QStringLiteral("SELECT * FROM [Mine]"))->RecordCount();
    }
    qint64 Rows(const char16_t* table) const {
        return state->SharedConnection()
            .Execute(QStringLiteral("SELECT * FROM ") + QString::fromUtf16(table))
            ->RecordCount();
    }

    QTemporaryDir folder;
};

TEST_F(Views, ANewViewIsQueriedAndAlteredInTheSameRun) {
    Begin(QStringLiteral("SQL Server"));
    prompts->Texts = {QStringLiteral("Mine")};
    Click("cmdCreateView");
    ASSERT_EQ(prompts->Boxes.size(), 1);
    EXPECT_EQ(prompts->Boxes[0].Text, QStringLiteral("View 'Mine' Successfully Created"));

    ChooseTab(0);
    DoubleClick("lstZPQTableTo", QStringLiteral("[Customers]"));
    DoubleClick("lstZPQTableSelection", QStringLiteral("[Mine]"));
    ChooseTab(2);
    DoubleClick("lstZPQFieldFrom", QStringLiteral("[Mine].[City]"));
    ChooseTab(3);
    Click("cmdRunQuery");
    ASSERT_TRUE(state->rsQueryResult);
    EXPECT_EQ(state->rsQueryResult->RecordCount(), Rows(u"[Customers]"));

    ChooseTab(0);
    DoubleClick("lstZPQTableTo", QStringLiteral("[Mine]"));
    ChooseOneTable(QStringLiteral("[Products]"), {QStringLiteral("[Products].[ProductID]")});
    prompts->Texts = {QStringLiteral("Mine")};
    prompts->Answers = {BoxAnswer::Yes};
    Click("cmdCreateView");
    ASSERT_EQ(prompts->Boxes.size(), 3) << qPrintable(prompts->Boxes.last().Text);
    EXPECT_EQ(prompts->Boxes[1].Style, 276);
    EXPECT_EQ(prompts->Boxes[2].Text, QStringLiteral("View 'Mine' Successfully Altered"));
    EXPECT_EQ(RowsOfView(), Rows(u"[Products]"));
    EXPECT_EQ(Items("lstZPQTableSelection").count(QStringLiteral("[Mine]")), 1);
}

TEST_F(Views, AFileDatabaseKeepsTheViewThatHasTheName) {
    for (const char16_t* dialect : {u"MS Access", u"Microsoft Excel Driver"}) {
        SCOPED_TRACE(qPrintable(QString::fromUtf16(dialect)));
        QFile::remove(folder.filePath(QStringLiteral("shop.db")));
        prompts->Boxes.clear();
        Begin(QString::fromUtf16(dialect));
        EXPECT_FALSE(Find("cmdCreateView")->isVisible());
        prompts->Texts = {QStringLiteral("Mine")};
        CreateView(*state);
        EXPECT_EQ(RowsOfView(), Rows(u"[Customers]"));
        State().txtSQL.Text = QStringLiteral("SELECT * FROM [Products]");
        prompts->Texts = {QStringLiteral("Mine")};
        prompts->Answers = {BoxAnswer::Yes};
        CreateView(*state);
        ASSERT_EQ(prompts->Boxes.size(), 3);
        EXPECT_EQ(prompts->Boxes[1].Style, 276);
        EXPECT_EQ(prompts->Boxes[2].Text, QStringLiteral("View 'Mine' Successfully Altered"));
        EXPECT_EQ(RowsOfView(), Rows(u"[Customers]")) << "nothing ran";
    }
}

}  // namespace
