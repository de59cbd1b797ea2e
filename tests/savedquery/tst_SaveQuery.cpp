#include "savedquery/QueryRun.h"
#include "support/FaultyDisk.h"

#include <gtest/gtest.h>

namespace zephrin {

using test::QueryRun;

TEST(SaveQuery, WritesTheFamilyAndTellsTheHostAfterwards) {
    QueryRun run;
    run.Choose();
    const QString path = run.Path("Sales.zpb");
    EXPECT_EQ(run.Save(path), SaveOutcome::Saved);
    EXPECT_EQ(run.Files(),
              QStringList({QStringLiteral("Sales.zpb"), QStringLiteral("SalesrsJoinTable.dat"),
                           QStringLiteral("SalesrsJoinTablesUsed.dat"), QStringLiteral("SalesrsJoins.dat"),
                           QStringLiteral("SalesrsQueryValues.dat"), QStringLiteral("SalesrsWhere.dat")}));
    EXPECT_EQ(run.heard, QStringList(QStringLiteral("saved ") + path));
    EXPECT_TRUE(run.Form().QueryPath.isEmpty());
    for (const QString& name : run.Files())
        EXPECT_EQ(QFile::permissions(run.folder.filePath(name)) & (QFile::ReadGroup | QFile::ReadOther),
                  QFile::Permissions())
            << qPrintable(name);
    EXPECT_EQ(run.prompts->Choices.last().Title, QStringLiteral("Save Query"));

    ado::Recordset master;
    master.OpenFile(path);
    EXPECT_EQ(master.RecordCount(), 1);
    EXPECT_EQ(master.Text(u"rsJoins"), run.Path("SalesrsJoins.dat"));
    EXPECT_EQ(master.Text(u"rsOrderBy"), QString());
    EXPECT_EQ(master.Text(u"ConnectionString"), run.state.SharedConnection().ConnectionString());
    EXPECT_EQ(master.FieldAt(12).Name, QStringLiteral("rsJoinTablesUsed"));

    ado::Recordset values;
    values.OpenFile(run.Path("SalesrsQueryValues.dat"));
    EXPECT_FALSE(values.Value(u"Tables").isValid()) << "the first row holds the options alone";
    EXPECT_EQ(values.Value(u"Distinct").toInt(), 0);
}

TEST(SaveQuery, SavingAgainLeavesNoStaleCompanion) {
    QueryRun run;
    run.Choose();
    run.Save(run.Path("Sales.zpb"));
    run.state.rsJoins->DeleteAll();
    run.prompts->Answers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_EQ(run.Save(run.Path("Sales.zpb")), SaveOutcome::Cancelled) << "No overwrites nothing";
    EXPECT_TRUE(run.Files().contains(QStringLiteral("SalesrsJoins.dat")));
    EXPECT_EQ(run.Save(run.Path("Sales.zpb")), SaveOutcome::Saved);
    EXPECT_FALSE(run.Files().contains(QStringLiteral("SalesrsJoins.dat")));
    EXPECT_EQ(run.heard.size(), 2);
}

TEST(SaveQuery, TheLastFourCharactersAlwaysGo) {
    const struct {
        const char* Typed;
        SaveOutcome Outcome;
        const char* Master;
    } rows[] = {
        {"Sales.zpb", SaveOutcome::Saved, "Sales.zpb"},
        {"Sales", SaveOutcome::Saved, "S.zpb"},
        {"Four", SaveOutcome::Failed, nullptr},
        {"", SaveOutcome::Cancelled, nullptr},
    };
    for (const auto& row : rows) {
        QueryRun run;
        EXPECT_EQ(run.Save(row.Typed[0] ? run.Path(row.Typed) : QString()), row.Outcome) << row.Typed;
        EXPECT_EQ(run.Files().contains(QString::fromUtf8(row.Master ? row.Master : "-")),
                  row.Master != nullptr);
        EXPECT_EQ(run.Form().StatusText.contains(run.Path(row.Master ? row.Master : "-")),
                  row.Master != nullptr)
            << "the user hears of the name that the file got";
        if (!row.Master) {
            EXPECT_TRUE(run.Files().isEmpty() && run.heard.isEmpty()) << row.Typed;
        }
    }
}

TEST(SaveQuery, NamesMayHoldAnything) {
    for (const char16_t* name :
         {u"O'Brien & [Co] 100%1", u"\u4e2d\u6587 \U0001f600", u"half \xd800 pair", u"a\nb"}) {
        QueryRun run;
        run.Choose();
        const QString path = run.folder.filePath(QString::fromUtf16(name)) + QStringLiteral(".zpb");
        SCOPED_TRACE(qPrintable(path));
        ASSERT_EQ(run.Save(path), SaveOutcome::Saved);
        EXPECT_TRUE(QFile::exists(path));
        run.prompts->Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
        EXPECT_EQ(run.Save(path), SaveOutcome::Saved);
        QueryRun other;
        EXPECT_EQ(OpenSavedQuery(other.state, path), OpenOutcome::Opened);
        EXPECT_EQ(other.state.rsJoins->RecordCount(), 1);
        run.prompts->Paths = {path};
        DeleteQuery(run.state);
        EXPECT_TRUE(run.Files().isEmpty());
    }
}

TEST(SaveQuery, AFolderThatVanishedIsSaidInTheStatusBar) {
    QueryRun run;
    EXPECT_EQ(run.Save(run.Path("gone/Sales.zpb")), SaveOutcome::Failed);
    EXPECT_TRUE(run.Form().StatusText.startsWith(QStringLiteral("The query was not saved: ")))
        << qPrintable(run.Form().StatusText);
    EXPECT_TRUE(run.heard.isEmpty());
}

TEST(SaveQuery, WhatIsTooLongIsLeftOutByName) {
    QueryRun run;
    run.state.gPassword = QString(256, u'x');
    run.state.gCommandTimeout = 10'000;
    run.Form().RemoveTables.Add(QString(256, u't'));
    EXPECT_EQ(run.Save(run.Path("Sales.zpb")), SaveOutcome::Saved);
    EXPECT_TRUE(run.Form().StatusText.contains(QStringLiteral("PassWord")))
        << qPrintable(run.Form().StatusText);
    EXPECT_TRUE(run.Form().StatusText.contains(QStringLiteral("CommandTimeout")));
    ado::Recordset master;
    master.OpenFile(run.Path("Sales.zpb"));
    EXPECT_FALSE(master.Value(u"PassWord").isValid());
    EXPECT_FALSE(master.Value(u"CommandTimeout").isValid());
}

TEST(DeleteQuery, TheFamilyGoesAndTheHostHearsOfItAfterwards) {
    QueryRun run;
    run.Choose();
    run.Save(run.Path("Sales.zpb"));
    QFile(run.Path("SalesOther.dat")).open(QIODevice::WriteOnly);
    run.prompts->Paths = {run.Path("Sales.zpb"), run.Path("Sales.zpb")};
    run.prompts->Answers = {BoxAnswer::No, BoxAnswer::Yes};
    DeleteQuery(run.state);
    EXPECT_TRUE(run.Files().contains(QStringLiteral("Sales.zpb")));
    DeleteQuery(run.state);
    EXPECT_EQ(run.Files(), QStringList(QStringLiteral("SalesOther.dat")));
    EXPECT_EQ(run.heard.last(), QStringLiteral("deleted ") + run.Path("Sales.zpb"));
    EXPECT_EQ(run.prompts->Boxes.last().Text,
              QStringLiteral("Please confirm that you wish to delete Query: ") + run.Path("Sales.zpb"));
    EXPECT_EQ(run.prompts->Boxes.last().Style, 36);
    EXPECT_TRUE(run.prompts->Choices.last().MustExist);
}

TEST(DeleteQuery, AMasterThatStaysKeepsItsCompanions) {
    QueryRun run;
    run.Choose();
    run.Save(run.Path("Sales.zpb"));
    const QStringList before = run.Files();
    run.prompts->Paths = {run.Path("Sales.zpb")};
    run.prompts->Answers = {BoxAnswer::Yes};
    {
        const test::FaultyDisk disk(run.folder.path(), 1);
        DeleteQuery(run.state);
    }
    EXPECT_EQ(run.Files(), before);
    EXPECT_EQ(run.heard.size(), 1);
    EXPECT_TRUE(run.Form().StatusText.contains(QStringLiteral("Input/output error")));
}

}  // namespace zephrin
