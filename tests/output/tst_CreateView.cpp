#include "output/CreateView.h"
#include "output/FakeDatabase.h"
#include "runstate/clsBridge.h"
#include "support/ScriptedPrompts.h"

#include <gtest/gtest.h>

namespace zephrin {

namespace {

const auto Taken = QStringLiteral("There is already an object named 'Big' in the database.");

/// A run with a statement, connected to a database that does what a test says.
struct ViewRun {
    std::shared_ptr<test::FakeDatabase> Database = std::make_shared<test::FakeDatabase>();
    std::shared_ptr<test::ScriptedPrompts> Prompts = std::make_shared<test::ScriptedPrompts>();
    ZPGGlobalDeclarations State{{std::make_shared<test::FakeProvider>(Database)}, Prompts};
    QStringList Heard;

    explicit ViewRun(const QString& dialect = QStringLiteral("SQL Server")) {
        State.gDatabaseType = dialect;
        State.gDelimOpen = QStringLiteral("[");
        State.gDelimClose = QStringLiteral("]");
        State.SharedConnection().Open(QStringLiteral("Provider=Fake"));
        State.Form->txtSQL.Text = QStringLiteral("SELECT *\r\nFROM [T]\r\n");
        QObject::connect(&State.Bridge(), &clsBridge::UserViewCreated,
                         [this](QString& name, QString& action) { Heard << name + u'/' + action; });
    }

    /// Creates a view of that name and says what the user saw, box by box.
    QStringList Create(const QString& name) {
        Prompts->Texts = {name};
        CreateView(State);
        QStringList boxes;
        for (const auto& box : Prompts->Boxes)
            boxes << QStringLiteral("%1|%2|%3").arg(box.Title).arg(box.Style).arg(box.Text);
        return boxes;
    }
};

}  // namespace

TEST(CreateView, StoresTheStatementAsItStandsAndOffersTheView) {
    ViewRun run;
    EXPECT_EQ(run.Create(QStringLiteral("Big")),
              QStringList(QStringLiteral("Create View|64|View 'Big' Successfully Created")));
    EXPECT_EQ(run.Database->Statements,
              QStringList(QStringLiteral("CREATE VIEW [Big] AS SELECT *\r\nFROM [T]\r\n")));
    EXPECT_EQ(run.Heard, QStringList(QStringLiteral("Big/NewViewCreated")));
    EXPECT_EQ(run.State.Form->lstZPQTableSelection.Items.Items(), QStringList(QStringLiteral("[Big]")));
    EXPECT_TRUE(run.State.OfferedTables.Contains(QStringLiteral("[Big]")));
    EXPECT_TRUE(run.State.colTables.IsEmpty()) << "nobody chose the new view";

    ViewRun fixed;
    fixed.State.Options.gAllowTableSelection = false;
    fixed.Create(QStringLiteral("Big"));
    EXPECT_TRUE(fixed.State.OfferedTables.IsEmpty())
        << "the next showing would cross it with the fixed tables";
}

TEST(CreateView, NoNameIsACancel) {
    ViewRun run;
    EXPECT_EQ(run.Create({}),
              QStringList(QStringLiteral("Create View|16|No Title entered, Create View cancelled")));
    EXPECT_TRUE(run.Database->Statements.isEmpty());
}

TEST(CreateView, ATakenNameAsksBeforeItAlters) {
    const struct {
        const char* Dialect;
        BoxAnswer Answer;
        const char* AlterError;
        QStringList Altered;
        QStringList LastBox;
        QStringList Heard;
    } rows[] = {
        {"SQL Server", BoxAnswer::No, nullptr, {}, {}, {}},
        {"SQL Server",
         BoxAnswer::Yes,
         nullptr,
         {QStringLiteral("ALTER VIEW [Big] AS SELECT *\r\nFROM [T]\r\n")},
         {QStringLiteral("Create View|64|View 'Big' Successfully Altered")},
         {QStringLiteral("Big/AlterView")}},
        {"SQL Server",
         BoxAnswer::Yes,
         "no such column",
         {QStringLiteral("ALTER VIEW [Big] AS SELECT *\r\nFROM [T]\r\n")},
         {QStringLiteral("Create View Error|16|no such column")},
         {}},
        {"Oracle",
         BoxAnswer::Yes,
         nullptr,
         {QStringLiteral("ALTER VIEW [Big] AS SELECT *\r\nFROM [T]\r\n COMPILE;")},
         {QStringLiteral("Create View|64|View 'Big' Successfully Altered")},
         {QStringLiteral("Big/AlterView")}},
        // Nothing runs, and it is called a success all the same.
        {"MS Access",
         BoxAnswer::Yes,
         nullptr,
         {},
         {QStringLiteral("Create View|64|View 'Big' Successfully Altered")},
         {QStringLiteral("Big/AlterView")}},
    };
    for (const auto& row : rows) {
        ViewRun run(QString::fromUtf8(row.Dialect));
        run.Database->Refusals[QStringLiteral("CREATE")] = Taken;
        if (row.AlterError)
            run.Database->Refusals[QStringLiteral("ALTER")] = QString::fromUtf8(row.AlterError);
        run.Prompts->Answers = {row.Answer};
        QStringList boxes = run.Create(QStringLiteral("Big"));
        EXPECT_EQ(
            boxes.takeFirst(),
            QStringLiteral(
                "Create View|276|View 'Big' already exists.\r\nDo you wish to Alter the View ?\r\n\r\n"
                "Warning:\r\nAltering a View could cause other Views that rely on it to stop functioning "
                "correctly. Only Alter the View if you are fully aware of all implications that altering "
                "the View may cause."));
        EXPECT_EQ(boxes, row.LastBox) << row.Dialect;
        EXPECT_EQ(run.Database->Statements.mid(1), row.Altered) << row.Dialect;
        EXPECT_EQ(run.Heard, row.Heard) << row.Dialect;
    }
}

TEST(CreateView, OtherErrorsAreShownInTheDatabasesWords) {
    ViewRun run;
    run.Database->Refusals[QStringLiteral("CREATE")] = QStringLiteral("permission denied");
    EXPECT_EQ(run.Create(QStringLiteral("Big")),
              QStringList(QStringLiteral("Create View Error|16|permission denied")));
    EXPECT_TRUE(run.Heard.isEmpty());
}

TEST(CreateView, AViewThatIsKnownIsNotOfferedTwice) {
    for (const bool chosen : {false, true}) {
        ViewRun run;
        run.Database->Refusals[QStringLiteral("CREATE")] = Taken;
        run.Prompts->Answers = {BoxAnswer::Yes};
        auto& list = chosen ? run.State.Form->lstZPQTableTo : run.State.Form->lstZPQTableSelection;
        list.Items.AddItem(QStringLiteral("[big]"));
        run.Create(QStringLiteral("Big"));
        EXPECT_EQ(run.State.Form->lstZPQTableSelection.Items.ListCount(), chosen ? 0 : 1);
    }
}

TEST(CreateView, AShowingThatEndsInABoxOrInTheHostsHandlerIsLeftAlone) {
    ViewRun run;
    run.Prompts->WhileOpen = [&](const auto&) { ++run.State.Showing; };
    run.Create(QStringLiteral("Big"));
    EXPECT_TRUE(run.Heard.isEmpty());
    EXPECT_TRUE(run.State.OfferedTables.IsEmpty());
}

}  // namespace zephrin
