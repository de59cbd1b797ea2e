#include "savedquery/QueryRun.h"
#include "sqlgen/GroupRow.h"

#include <gtest/gtest.h>

namespace zephrin {

namespace {

using test::FreshRun;
using test::Picture;
using test::QueryRun;

QString TabsOf(const ZPGGlobalDeclarations& state) {
    QString tabs;
    for (const bool enabled : state.Form->TabZPG.TabEnabled) tabs += enabled ? u'1' : u'0';
    return tabs;
}

}  // namespace

TEST(OpenQuery, RandomQueriesComeBackWhole) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 25; ++round) {
        QueryRun run;
        run.Choose();
        run.Fill(random);
        ASSERT_EQ(run.Save(run.Path("Sales.zpb")), SaveOutcome::Saved);
        FreshRun fresh;
        ASSERT_TRUE(fresh.Load(run.Path("Sales.zpb")));
        EXPECT_EQ(Picture(fresh.state), Picture(run.state)) << "round " << round;
        EXPECT_EQ(TabsOf(fresh.state), QStringLiteral("11111"));
        EXPECT_EQ(fresh.state.gDatabaseType, QStringLiteral("SQL Server"));
        EXPECT_TRUE(fresh.state.Form->TablesChanged);
        EXPECT_TRUE(fresh.state.Form->cmdRunQuery.Enabled);
        EXPECT_EQ(fresh.state.Form->cmbJoinType.Items.ListCount(), 3);
        EXPECT_TRUE(fresh.state.Form->QueryPath.isEmpty());
        EXPECT_EQ(fresh.state.OfferedTables.Count(), 3);
    }
}

TEST(OpenQuery, AMissingOrForeignMasterClosesTheWizard) {
    QueryRun run;
    run.Choose();
    run.Save(run.Path("Sales.zpb"));
    QFile text(run.Path("text.zpb"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("no query");
    text.close();
    for (const char* name : {"missing.zpb", "text.zpb", "SalesrsQueryValues.dat"}) {
        FreshRun fresh;
        const QString path = run.Path(name);
        EXPECT_FALSE(fresh.Load(path)) << name;
        ASSERT_EQ(fresh.prompts->Boxes.size(), 1) << name;
        EXPECT_EQ(fresh.prompts->Boxes[0].Text,
                  QStringLiteral("Query  %1  can not be found at the specified location.\r\n"
                                 "The file may be missing or corrupt.")
                      .arg(path));
        EXPECT_EQ(fresh.prompts->Boxes[0].Title, QStringLiteral("Error Opening Query : ") + path);
        EXPECT_EQ(fresh.prompts->Boxes[0].Style, 16);
        EXPECT_EQ(fresh.state.gLoadError,
                  QStringLiteral("Query %1 can not be found at the specified location.The file may be "
                                 "missing or corrupt.")
                      .arg(path));
        EXPECT_TRUE(fresh.state.gClosingSilently);
    }
}

TEST(OpenQuery, ACompanionThatIsLostLeavesTheRest) {
    QueryRun run;
    run.Choose();
    QueryRun::Add(run.state.rsGroupBy,
                  {run.state.colFields.Item(1), run.state.colFields.Item(1), {}, QStringLiteral("YES")});
    run.Save(run.Path("Sales.zpb"));
    ASSERT_TRUE(QFile::remove(run.Path("SalesrsGroupBy.dat")));
    FreshRun fresh;
    ASSERT_TRUE(fresh.Load(run.Path("Sales.zpb")));
    EXPECT_FALSE(fresh.state.rsGroupBy->IsOpen());
    EXPECT_TRUE(fresh.state.GroupByClause.isEmpty());
    EXPECT_EQ(fresh.state.rsJoins->RecordCount(), 1);
    EXPECT_EQ(fresh.state.Form->StatusText, QStringLiteral("Missing or damaged: SalesrsGroupBy.dat"));

    // The first row that is added brings it back to life.
    ChooseQueryMode(fresh.state, 1);
    fresh.state.Form->lstSelectedFields.Items.SetListIndex(0);
    fresh.state.Form->lstOperands.Items.SetText(QStringLiteral("GROUP BY"));
    fresh.prompts->Answers = {BoxAnswer::Yes};
    AddGroupRow(fresh.state);
    EXPECT_EQ(fresh.state.rsGroupBy->RecordCount(), 1);
}

TEST(OpenQuery, WithoutItsValuesTheOfferStays) {
    QueryRun run;
    run.Choose();
    run.Save(run.Path("Sales.zpb"));
    QFile::remove(run.Path("SalesrsQueryValues.dat"));
    const QStringList offer = run.state.OfferedTables.Items();
    EXPECT_EQ(OpenSavedQuery(run.state, run.Path("Sales.zpb")), OpenOutcome::Opened);
    EXPECT_EQ(run.Form().lstZPQTableTo.Items.ListCount() + run.Form().lstZPQFieldTo.Items.ListCount(), 0);
    EXPECT_TRUE(run.state.colTables.IsEmpty());
    EXPECT_EQ(run.state.OfferedTables.Items(), offer);
    EXPECT_EQ(run.Form().lstZPQTableSelection.Items.ListCount(), offer.size()) << "something can be chosen";
    EXPECT_EQ(run.Form().StatusText, QStringLiteral("Missing or damaged: SalesrsQueryValues.dat"));
}

TEST(OpenQuery, FixedTablesAreNeitherMoreNorTwice) {
    for (const bool savedFixed : {false, true})
        for (const bool openedFixed : {false, true}) {
            QueryRun run;
            if (savedFixed) {
                UnloadForm(run.state);
                run.state.Options.gAllowTableSelection = false;
                run.state.OfferedTables =
                    Collection({QStringLiteral("[Orders]"), QStringLiteral("[Customers]")});
                run.Load();
            } else {
                run.Choose();
            }
            run.Save(run.Path("Sales.zpb"));
            FreshRun fresh;
            fresh.state.Options.gAllowTableSelection = !openedFixed;
            ASSERT_TRUE(fresh.Load(run.Path("Sales.zpb")));
            FormState& form = *fresh.state.Form;
            EXPECT_EQ(form.lstZPQTableTo.Items.ListCount(), 2);
            EXPECT_EQ(form.lstZPQTableSelection.Items.ListCount(), savedFixed ? 0 : 1);
            // A table on offer that is not in the query would stand in the next one, crossed with the others.
            EXPECT_EQ(fresh.state.OfferedTables.Count(), savedFixed || openedFixed ? 2 : 3);
        }
}

TEST(OpenQuery, WhatAFileDoesNotSayStays) {
    QueryRun run;
    run.Choose();
    run.state.rsJoins->DeleteAll();
    run.Save(run.Path("Sales.zpb"));
    ado::Recordset values;
    values.OpenFile(run.Path("SalesrsQueryValues.dat"));
    values.DeleteAll();
    values.Save(run.Path("SalesrsQueryValues.dat"));

    QueryRun other;
    other.Choose();
    other.Form().chkDistinct.Value = 1;
    other.Form().txtTopX.Text = QStringLiteral("10");
    other.Form().cmdResetJoins.Enabled = false;
    EXPECT_EQ(OpenSavedQuery(other.state, run.Path("Sales.zpb")), OpenOutcome::Opened);
    EXPECT_EQ(other.state.rsJoins->RecordCount(), 1) << "there is no file of joins";
    EXPECT_FALSE(other.Form().cmdResetJoins.Enabled);
    EXPECT_EQ(other.Form().chkDistinct.Value, 1) << "the file of values has no row of options";
    EXPECT_EQ(other.Form().txtTopX.Text, QStringLiteral("10"));
    EXPECT_EQ(other.Form().lstZPQTableTo.Items.ListCount(), 0) << "lists are cleared all the same";
}

TEST(OpenQuery, AConnectionThatFailsIsSaidAndTheQueryOpens) {
    QString path;
    QTemporaryDir keep;
    {
        QueryRun run;
        run.Choose();
        run.folder.setAutoRemove(false);
        path = run.Path("Sales.zpb");
        run.Save(path);
    }
    FreshRun fresh;
    ASSERT_TRUE(fresh.Load(path)) << "the database went, the query did not";
    EXPECT_NE(fresh.state.Form->StatusText, QStringLiteral("Ready .."));
    EXPECT_EQ(fresh.state.Form->lstZPQTableTo.Items.ListCount(), 2);
    QDir(QFileInfo(path).path()).removeRecursively();
}

TEST(OpenQuery, TheButtonAsksAndCancelChangesNothing) {
    QueryRun run;
    run.Choose();
    const std::string before = Picture(run.state);
    run.state.gQueryName = run.Path("host.zpb");
    run.prompts->Answers = {BoxAnswer::No};
    EXPECT_EQ(OpenFromButton(run.state), OpenOutcome::Cancelled);
    EXPECT_EQ(Picture(run.state), before);
    EXPECT_EQ(run.prompts->Choices.last().Title, QStringLiteral("Open Saved Query"));
    run.Save(run.Path("Sales.zpb"));
    run.prompts->Paths = {run.Path("Sales.zpb")};
    bool hourglass = false;
    run.state.ShowForm = [&] { hourglass = hourglass || run.Form().Pointer == MousePointer::Hourglass; };
    EXPECT_EQ(OpenFromButton(run.state), OpenOutcome::Opened);
    EXPECT_TRUE(hourglass) << "while it connects";
    EXPECT_EQ(run.Form().Pointer, MousePointer::Default);
    EXPECT_EQ(Picture(run.state), before);
    EXPECT_EQ(TabsOf(run.state), QStringLiteral("11111"));
}

TEST(OpenQuery, CancelAtTheStartLeavesAnOrdinaryWizard) {
    for (const bool fixed : {false, true}) {
        test::WizardRun asked, plain;
        for (test::WizardRun* run : {&asked, &plain}) {
            run->state.Options.gAllowTableSelection = !fixed;
            run->state.OfferedTables = Collection({QStringLiteral("[Orders]")});
            run->state.OpenSavedQuery = [&](ZPGGlobalDeclarations& state) {
                return OpenSavedQuery(state, state.gQueryName) != OpenOutcome::Failed;
            };
            run->state.gOpenQuery = run == &asked;
            run->Load();
        }
        EXPECT_EQ(asked.prompts->Choices.size(), 1);
        EXPECT_EQ(Picture(asked.state), Picture(plain.state)) << fixed;
        EXPECT_EQ(TabsOf(asked.state), TabsOf(plain.state)) << fixed;
    }
}

TEST(OpenQuery, DamagedFilesNeverCrash) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    QueryRun run;
    run.Choose();
    run.Fill(random);
    run.Save(run.Path("Sales.zpb"));
    for (const QString& name : run.Files()) {
        const QString path = run.folder.filePath(name);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray whole = file.readAll();
        file.close();
        for (int damage = 0; damage < 4; ++damage) {
            QByteArray bytes = whole;
            if (damage % 2)
                bytes.truncate(static_cast<qsizetype>(random() % static_cast<unsigned>(whole.size())));
            else
                for (int flips = 0; flips < 4; ++flips)
                    bytes[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()))] ^=
                        static_cast<char>(1U << random() % 8);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
            file.write(bytes);
            file.close();
            FreshRun fresh;
            if (fresh.Load(run.Path("Sales.zpb"))) RegenerateStatement(fresh.state);
        }
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(whole);
        file.close();
    }
}

}  // namespace zephrin
