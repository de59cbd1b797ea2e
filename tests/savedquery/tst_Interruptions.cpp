#include "savedquery/QueryRun.h"
#include "support/FaultyDisk.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zephrin {

namespace {

using test::FaultyDisk;
using test::FreshRun;
using test::QueryRun;

/// A query that has two forms, of different companions, and what each looks like when it is opened.
struct TwoForms {
    QueryRun run;
    const QString path = run.Path("Sales.zpb");
    std::string pictures[2];

    TwoForms() {
        run.Choose();
        run.prompts->Answers = QList<BoxAnswer>(2'000, BoxAnswer::Yes);
        for (const int form : {1, 0}) {
            EXPECT_EQ(Save(form), SaveOutcome::Saved);
            pictures[form] = Open();
        }
        EXPECT_NE(pictures[0], pictures[1]);
    }

    SaveOutcome Save(int form) {
        run.state.rsOrderBy->DeleteAll();
        run.state.rsJoins->DeleteAll();
        QueryRun::Add(form ? run.state.rsOrderBy : run.state.rsJoins,
                      QStringList(2, run.state.colFields.Item(1)));
        run.Form().txtTopX.Text = form ? QStringLiteral("7") : QString();
        return run.Save(path);
    }

    /// What is opened; a mixture is told in it.
    std::string Open() const {
        FreshRun fresh;
        EXPECT_TRUE(fresh.Load(path));
        return test::Picture(fresh.state) + '\n' + fresh.state.Form->StatusText.toStdString();
    }

    /// Runs `act` in a process of its own.
    template <class Act>
    static pid_t InAnotherProcess(Act act) {
        const pid_t child = fork();
        if (child != 0) return child;
        act();
        _exit(0);
    }
    /// Whether the process was killed.
    static bool WaitFor(pid_t child) {
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return WIFSIGNALED(status);
    }

    /// After whatever happened: the query is whole, in one of its forms, which is the answer, and the next
    /// save, of the first form, leaves nothing else in the folder.
    int ExpectWhole(const std::string& what) {
        const std::string picture = Open();
        EXPECT_TRUE(picture == pictures[0] || picture == pictures[1]) << what << ": " << picture;
        EXPECT_EQ(Save(0), SaveOutcome::Saved) << what;
        EXPECT_EQ(run.Files().filter(QStringLiteral("Sales")), run.Files()) << what;
        return picture == pictures[1] ? 1 : 0;
    }
};

}  // namespace

TEST(Interruptions, AFaultOfTheDiskAtAnyStepLeavesTheFormerQueryAndIsTold) {
    const struct {
        int Error;
        FaultyDisk::Fault Fault;
    } rows[] = {{ENOSPC, FaultyDisk::Fault::FromThenOn},
                {EIO, FaultyDisk::Fault::Once},
                {EROFS, FaultyDisk::Fault::FromThenOn}};
    TwoForms query;
    for (const auto& row : rows) {
        int failures = 0, irrevocable = 0;
        query.Save(0);
        for (int step = 0;; ++step) {
            bool happened = false;
            SaveOutcome outcome{};
            QString told;
            {
                const FaultyDisk disk(query.run.folder.path(), step, row.Error, row.Fault);
                outcome = query.Save(1);
                happened = disk.Happened();
                told = query.run.Form().StatusText;
            }
            if (!happened) break;
            const std::string what = std::string(strerror(row.Error)) + ", step " + std::to_string(step);
            const int opened = query.ExpectWhole(what);
            if (outcome == SaveOutcome::Saved) {
                EXPECT_EQ(opened, 1) << what;
                continue;
            }
            ++failures;
            irrevocable += opened;
            EXPECT_TRUE(told.contains(QString::fromUtf8(strerror(row.Error)))) << what << qPrintable(told);
        }
        EXPECT_GT(failures, 25) << "what goes wrong later is only tidying up";
        EXPECT_LE(irrevocable, row.Fault == FaultyDisk::Fault::Once ? 0 : 2)
            << "nothing can be taken back on a disk that fails behind the very last step";
    }
}

TEST(Interruptions, AKillAtAnyStepLeavesOneOfTheTwo) {
    TwoForms query;
    bool killed = true;
    int step = 0;
    for (; killed; ++step) {
        killed = test::IsKilledIn([&] {
            const FaultyDisk disk(query.run.folder.path(), step, 0, FaultyDisk::Fault::Kill);
            query.Save(1);
        });
        query.ExpectWhole("killed at step " + std::to_string(step));
    }
    EXPECT_GT(step, 40);
}

TEST(Interruptions, AKillAtAnyMomentLeavesOneOfTheTwo) {
    TwoForms query;
    std::mt19937 random(std::random_device{}());
    for (int kill = 0; kill < 25; ++kill) {
        const pid_t child = TwoForms::InAnotherProcess([&] {
            for (int form = 1; form < 1'000; ++form) query.Save(form % 2);
        });
        usleep(static_cast<useconds_t>(random() % 20'000));
        ::kill(child, SIGKILL);
        EXPECT_TRUE(TwoForms::WaitFor(child));
        query.ExpectWhole("kill " + std::to_string(kill));
    }
}

TEST(Interruptions, TwoWhoSaveTakeTurnsAndWhoOpensReadsOneOfTheTwo) {
    TwoForms query;
    pid_t children[2];
    for (const int form : {0, 1})
        children[form] = TwoForms::InAnotherProcess([&] {
            for (int save = 0; save < 25; ++save)
                if (query.Save(form) != SaveOutcome::Saved) abort();
        });
    for (int opening = 0; opening < 30; ++opening) {
        const std::string picture = query.Open();
        EXPECT_TRUE(picture == query.pictures[0] || picture == query.pictures[1]) << picture;
    }
    for (const pid_t child : children) EXPECT_FALSE(TwoForms::WaitFor(child));
    query.ExpectWhole("behind them");
}

TEST(Interruptions, FilesOfAnotherSaveAreTold) {
    TwoForms query;
    const QString values = query.run.Path("SalesrsQueryValues.dat");
    ASSERT_TRUE(QFile::copy(values, query.run.Path("kept")));
    query.Save(1);
    ASSERT_TRUE(QFile::remove(values) && QFile::rename(query.run.Path("kept"), values));
    FreshRun fresh;
    ASSERT_TRUE(fresh.Load(query.path));
    EXPECT_EQ(fresh.state.Form->StatusText,
              QStringLiteral("Saved at another time than the query: SalesrsQueryValues.dat"));
}

TEST(Interruptions, AQueryThatWasSavedWithoutMarksOpensAndIsReplaced) {
    TwoForms query;
    for (const QString& name : query.run.Files()) {
        ado::Recordset rows;
        rows.OpenFile(query.run.folder.filePath(name));
        rows.Save(query.run.folder.filePath(name));
    }
    EXPECT_EQ(query.Open(), query.pictures[0]);
    EXPECT_TRUE(test::IsKilledIn([&] {
        const FaultyDisk disk(query.run.folder.path(), 30, 0, FaultyDisk::Fault::Kill);
        query.Save(1);
    }));
    query.ExpectWhole("killed over files without marks");
}

TEST(Interruptions, FilesOfSomebodysOwnStay) {
    TwoForms query;
    const QStringList own{QStringLiteral("Sales.zpb.new"), QStringLiteral("Sales.zpb.old"),
                          QStringLiteral("SalesrsWhere.dat.old"), QStringLiteral(".zpb-mine.old")};
    for (const QString& name : own)
        EXPECT_TRUE(QFile(query.run.folder.filePath(name)).open(QIODevice::WriteOnly));
    query.Save(1);
    for (const QString& name : own) EXPECT_TRUE(query.run.Files().contains(name)) << qPrintable(name);
}

}  // namespace zephrin
