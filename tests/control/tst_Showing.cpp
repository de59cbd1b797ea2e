#include "control/Host.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

namespace zephrin {

namespace {

using test::Host;

const QString oneTable = QStringLiteral(
    "CREATE TABLE One (Id int, Name nvarchar(10));"
    "INSERT INTO One VALUES (1, 'a'), (2, 'b'), (3, NULL);");
const QString unloaded = QStringLiteral("ZPBUnloaded");

/// A host with an open wizard on one table that closes without a question.
struct OpenHost : Host {
    explicit OpenHost(bool modal = false) : Host(oneTable) {
        control->SetZPBAllowSaveDeleteQuery(false);
        control->SetZPBModalForm(modal);
        control->ZPBMakeConnection(database.ConnectionString(), {}, {}, 5, 5, 0, false, {}, true);
        log.clear();
        if (!modal) control->ZPBShowZephrin();
    }
};

}  // namespace

TEST(Showing, RunsAWholeQuery) {
    OpenHost host;
    ASSERT_NE(frmZPG::OpenForm(), nullptr);
    EXPECT_TRUE(frmZPG::OpenForm()->isVisible());
    Host::ChooseEverything();
    Host::RunQuery();
    EXPECT_EQ(host.log, QStringList(QStringLiteral("QueryExecuted 0")));
    ASSERT_NE(host.rows, nullptr);
    EXPECT_EQ(host.rows->RecordCount(), 3);
    frmZPG::OpenForm()->close();
    EXPECT_EQ(host.log.last(), unloaded);
    delete host.control;
    EXPECT_EQ(host.rows->ValueAt(1, 1).toString(), QStringLiteral("b"))
        << "the host's rows outlive the control";
}

TEST(Showing, LimitsTheRowsAsAsked) {
    Host host(oneTable);
    host.control->ZPBMakeConnection(host.database.ConnectionString(), {}, {}, 5, 5, 2, false, {}, true);
    host.control->ZPBShowZephrin();
    Host::ChooseEverything();
    Host::RunQuery();
    EXPECT_EQ(host.rows->RecordCount(), 2);
}

TEST(Showing, CanBeRepeatedOnOneConnection) {
    OpenHost host;
    for (int round = 0; round < 3; ++round) {
        Host::ChooseEverything();
        Host::RunQuery();
        frmZPG::OpenForm()->close();
        Host::Drain();
        host.control->ZPBShowZephrin();
        ASSERT_NE(frmZPG::OpenForm(), nullptr);
    }
    EXPECT_EQ(host.log.count(unloaded), 3);
    EXPECT_EQ(host.log.count(QStringLiteral("QueryExecuted 0")), 3);
}

TEST(Showing, CanFollowInsideTheEventOfTheOneBefore) {
    OpenHost host;
    int rounds = 0;
    host.OnEvent = [&](const QString& event) {
        if (event != unloaded || ++rounds > 2) return;
        host.Connect();
        host.control->ZPBShowZephrin();
    };
    for (int round = 0; round < 3; ++round) {
        ASSERT_NE(frmZPG::OpenForm(), nullptr);
        frmZPG::OpenForm()->close();
    }
    EXPECT_EQ(frmZPG::OpenForm(), nullptr);
    EXPECT_EQ(host.log.count(unloaded), 3);
}

TEST(Showing, AFailedLookUpReachesTheWidgets) {
    OpenHost host;
    host.database.Run(QStringLiteral("DROP TABLE One"));
    Host::Click("cmdZPQTableRightAll");
    Host::ChooseTab(2);
    EXPECT_EQ(host.prompts->Boxes.size(), 1);
    EXPECT_EQ(Host::Find("TabZPG")->property("currentIndex").toInt(), 0);
}

TEST(Showing, ADisconnectedWizardTakesTheBareWay) {
    OpenHost host;
    Host::ChooseEverything();
    host.control->ZPBDisconnectConnection();
    Host::RunQuery();
    EXPECT_EQ(host.prompts->Boxes.size(), 1);
    EXPECT_TRUE(host.log.isEmpty());
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    frmZPG::OpenForm()->close();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(host.log, QStringList(unloaded));
}

TEST(Showing, OneWizardAtATime) {
    OpenHost first;
    Host second(oneTable);
    frmZPG* form = frmZPG::OpenForm();
    second.Connect();
    second.control->ZPBShowZephrin();
    first.Connect();
    first.control->ZPBShowZephrin();
    EXPECT_EQ(frmZPG::OpenForm(), form);
    EXPECT_EQ(first.log, QStringList(QStringLiteral("ZPBAlreadyLoaded")));
    EXPECT_EQ(second.log, QStringList(QStringLiteral("ZPBAlreadyLoaded")));
    EXPECT_TRUE(second.Offer().isEmpty());
    delete second.control;
    EXPECT_EQ(frmZPG::OpenForm(), form);
    Host::ChooseEverything();
    Host::RunQuery();
    EXPECT_EQ(first.log.last(), QStringLiteral("QueryExecuted 0"));
}

TEST(Showing, PropertiesCountFromTheNextShowingOn) {
    OpenHost host;
    host.control->SetZPBRunTimeControlCaption(QStringLiteral("Next"));
    host.control->SetZPBAllowFieldSelection(false);
    EXPECT_EQ(frmZPG::OpenForm()->windowTitle(), QStringLiteral("Brimlow Zephrin V1.2"));
    Host::Click("cmdZPQTableRightAll");
    Host::ChooseTab(2);
    frmZPG::OpenForm()->close();
    host.control->ZPBShowZephrin();
    EXPECT_EQ(frmZPG::OpenForm()->windowTitle(), QStringLiteral("Next"));
}

TEST(Showing, AModalOneReturnsWhenItWasClosed) {
    OpenHost host(true);
    bool wasModal = false;
    QTimer::singleShot(0, qApp, [&] {
        wasModal = frmZPG::OpenForm()->isModal();
        frmZPG::OpenForm()->close();
    });
    host.control->ZPBShowZephrin();
    EXPECT_TRUE(wasModal);
    EXPECT_EQ(host.log, QStringList(unloaded));
    EXPECT_EQ(frmZPG::OpenForm(), nullptr);
}

TEST(Showing, AsksBeforeClosingAndCanStay) {
    OpenHost host;
    frmZPG::OpenForm()->close();
    host.control->SetZPBAllowSaveDeleteQuery(true);
    host.control->ZPBShowZephrin();
    host.log.clear();
    host.prompts->Answers = {BoxAnswer::Cancel, BoxAnswer::No};
    frmZPG::OpenForm()->close();
    EXPECT_NE(frmZPG::OpenForm(), nullptr);
    EXPECT_TRUE(host.log.isEmpty());
    frmZPG::OpenForm()->close();
    EXPECT_EQ(host.log, QStringList(unloaded));
}

TEST(Showing, AFormThatTheToolkitTookIsUnloadedOnce) {
    OpenHost host;
    Host::ChooseEverything();
    delete frmZPG::OpenForm();
    EXPECT_EQ(host.log, QStringList(unloaded));
    host.control->ZPBShowZephrin();
    Host::ChooseEverything();
    Host::RunQuery();
    EXPECT_EQ(host.log.last(), QStringLiteral("QueryExecuted 0"));
}

TEST(Showing, AQueryThatCannotBeOpenedEndsItBeforeItIsSeen) {
    for (const bool modal : {false, true}) {
        OpenHost host(true);
        host.control->SetZPBAllowSaveDeleteQuery(true);
        host.control->SetZPBModalForm(modal);
        const QStringList offer = host.Offer();
        const QString connection = host.control->ZPBActiveConnectionString();
        host.control->ZPBMakeConnection({}, {}, {}, 5, 5, 0, false, QStringLiteral("/nowhere/q.zpb"));
        host.log.clear();
        host.prompts->WhileOpen = [](const auto&) {
            ASSERT_NE(frmZPG::OpenForm(), nullptr);
            EXPECT_FALSE(frmZPG::OpenForm()->isVisible());
        };
        const QString told = QStringLiteral(
            "ZPBUnloaded Query /nowhere/q.zpb can not be found at the specified location."
            "The file may be missing or corrupt.");
        for (int round = 1; round <= 2; ++round) {
            host.control->ZPBShowZephrin();
            EXPECT_EQ(frmZPG::OpenForm(), nullptr);
            EXPECT_EQ(host.prompts->Boxes.size(), round) << "no question whether to save";
            EXPECT_EQ(host.log.count(told), round) << qPrintable(host.log.join(u'/'));
        }
        EXPECT_EQ(host.log.size(), 2);
        EXPECT_EQ(host.prompts->Boxes[0].Title, QStringLiteral("Error Opening Query : /nowhere/q.zpb"));
        EXPECT_EQ(host.prompts->Boxes[0].Text,
                  QStringLiteral("Query  /nowhere/q.zpb  can not be found at the specified location.\r\n"
                                 "The file may be missing or corrupt."));
        EXPECT_EQ(host.Offer(), offer);
        EXPECT_EQ(host.control->ZPBActiveConnectionString(), connection);
    }
}

// --- The host's windows ---

TEST(Showing, AWizardOfAModalDialogTakesInput) {
    Host host(oneTable);
    host.control->SetZPBAllowSaveDeleteQuery(false);
    host.control->ZPBMakeConnection(host.database.ConnectionString());
    QDialog dialog;
    host.control->setParent(&dialog);
    QTimer::singleShot(0, &dialog, [&] {
        host.control->ZPBShowZephrin();
        frmZPG* form = frmZPG::OpenForm();
        ASSERT_NE(form, nullptr);
        EXPECT_EQ(form->windowHandle()->transientParent(), dialog.windowHandle());
        // Through the window, as a mouse does: what is blocked gets nothing.
        QWidget* exit = Host::Find("cmdExit");
        const QPoint place = exit->mapTo(form, exit->rect().center());
        QTest::mouseClick(form->windowHandle(), Qt::LeftButton, {}, place);
        EXPECT_EQ(frmZPG::OpenForm(), nullptr) << "the wizard is dead";
        dialog.reject();
    });
    dialog.exec();
    EXPECT_EQ(host.log.last(), unloaded);
    host.control->setParent(nullptr);
}

TEST(Showing, ASecondCallBringsTheWizardBackAndSaysNothing) {
    OpenHost host;
    Host::ChooseEverything();
    frmZPG* form = frmZPG::OpenForm();
    form->showMinimized();
    host.log.clear();
    host.control->ZPBShowZephrin();
    EXPECT_EQ(frmZPG::OpenForm(), form);
    EXPECT_TRUE(form->isVisible() && !form->isMinimized());
    EXPECT_EQ(Host::Find("TabZPG")->property("currentIndex").toInt(), 3) << "nothing is loaded anew";
    EXPECT_TRUE(host.log.isEmpty());
}

TEST(Showing, AWizardShownBehindTheConnectionPromptStays) {
    class Showing : public test::ScriptedPrompts {
     public:
        Zephrin* control = nullptr;
        QString PromptNewConnection(const QString&) override {
            control->ZPBShowZephrin();
            return QStringLiteral("Provider=SQLite;Dialect=MS Access;Data Source=/nowhere/x.db");
        }
    };
    Host host(oneTable);
    host.control->ZPBMakeConnection(host.database.ConnectionString(), {}, {}, 5, 5, 2);
    const QString connection = host.control->ZPBActiveConnectionString();
    host.log.clear();
    const auto prompts = std::make_shared<Showing>();
    prompts->control = host.control;
    host.control->SetPrompts(prompts);
    host.control->ZPBMakeConnection();
    EXPECT_EQ(host.log, QStringList(QStringLiteral("ZPBAlreadyLoaded")));
    EXPECT_EQ(host.control->ZPBActiveConnectionString(), connection);
    Host::ChooseEverything();
    Host::RunQuery();
    EXPECT_EQ(host.rows->RecordCount(), 2) << "the limit of the call before still holds";
}

// --- The control goes while something is going on ---

TEST(Liveness, TheControlMayGoInAnyOfItsEvents) {
    struct Row {
        const char* Event;
        std::function<void(Host&)> Cause;
    };
    const auto close = [](Host&) { frmZPG::OpenForm()->close(); };
    const Row rows[] = {
        {"ConnectionComplete", [](Host& h) { h.Connect(); }},
        {"ZPBUnloaded", close},
        {"ZPBUnloaded", [](Host&) { delete frmZPG::OpenForm(); }},
        {"ZPBAlreadyLoaded", [](Host& h) { h.Connect(); }},
        {"QueryExecuted",
         [](Host&) {
             Host::ChooseEverything();
             Host::RunQuery();
         }},
        {"PropertyChanged", [](Host& h) { h.control->SetZPBAllowTableSelection(false); }},
        {"PropertyChanged", [](Host& h) { h.control->SetZPBModalForm(false); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.Event);
        OpenHost host;
        if (row.Event == std::string("ConnectionComplete")) frmZPG::OpenForm()->close();
        host.log.clear();
        host.OnEvent = [&host](const QString&) { delete host.control; };
        row.Cause(host);
        EXPECT_EQ(host.log.size(), 1);
        EXPECT_TRUE(host.log.value(0).startsWith(QString::fromLatin1(row.Event)));
        EXPECT_EQ(host.control, nullptr);
        EXPECT_EQ(frmZPG::OpenForm(), nullptr);
        Host::Drain();
        EXPECT_EQ(host.log.size(), 1) << "nothing is heard of a control that is gone";
    }
}

TEST(Liveness, TheControlMayGoInAnyBox) {
    struct Row {
        const char* What;
        std::function<void(Host&)> Cause;
    };
    const Row rows[] = {
        {"nothing to show",
         [](Host& h) {
             frmZPG::OpenForm()->close();
             while (!h.Offer().isEmpty()) h.control->ZPBTableCollection().RemoveTable(1);
             h.log.clear();
             h.control->ZPBShowZephrin();
         }},
        {"an unknown table",
         [](Host& h) { h.control->ZPBTableCollection().AddTable(QStringLiteral("Nope")); }},
        {"a failed look-up",
         [](Host& h) {
             h.database.Run(QStringLiteral("DROP TABLE One"));
             Host::Click("cmdZPQTableRightAll");
             Host::ChooseTab(2);
         }},
        {"a lost connection",
         [](Host& h) {
             Host::ChooseEverything();
             h.control->ZPBDisconnectConnection();
             Host::RunQuery();
         }},
        {"the question before closing",
         [](Host& h) {
             frmZPG::OpenForm()->close();
             h.control->SetZPBAllowSaveDeleteQuery(true);
             h.control->ZPBShowZephrin();
             h.log.clear();
             h.prompts->Answers = {BoxAnswer::No};
             frmZPG::OpenForm()->close();
         }},
        {"a query that cannot be opened",
         [](Host& h) {
             frmZPG::OpenForm()->close();
             h.control->ZPBMakeConnection({}, {}, {}, 5, 5, 0, false, QStringLiteral("/nowhere/q.zpb"));
             h.log.clear();
             h.control->ZPBShowZephrin();
         }},
        {"the question before a reset",
         [](Host& h) {
             Host::ChooseEverything();
             h.prompts->Answers = {BoxAnswer::Yes};
             Host::Click("cmdResetSQL");
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.What);
        OpenHost host;
        host.prompts->WhileOpen = [&host](const auto&) { delete host.control; };
        row.Cause(host);
        EXPECT_EQ(host.prompts->Boxes.size(), 1);
        EXPECT_EQ(host.control, nullptr);
        EXPECT_EQ(frmZPG::OpenForm(), nullptr);
        Host::Drain();
        EXPECT_TRUE(host.log.isEmpty()) << qPrintable(host.log.join(u' '));
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
}

TEST(Liveness, TheControlMayGoWhileItsWizardIsOpen) {
    for (const bool modal : {false, true}) {
        OpenHost host(modal);
        if (modal) {
            QTimer::singleShot(0, qApp, [&] { delete host.control; });
            host.control->ZPBShowZephrin();
        } else {
            Host::ChooseEverything();
            delete host.control;
        }
        EXPECT_EQ(host.control, nullptr);
        EXPECT_EQ(frmZPG::OpenForm(), nullptr);
        Host::Drain();
        EXPECT_TRUE(host.log.isEmpty());
        EXPECT_TRUE(host.prompts->Boxes.isEmpty());
    }
}

TEST(Liveness, TheControlMayGoWhileTheUserChoosesAConnection) {
    class Going : public test::ScriptedPrompts {
     public:
        QPointer<Zephrin> control;
        QString PromptNewConnection(const QString&) override {
            delete control;
            return QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=/nowhere/x.db");
        }
        void ShowAbout(const QString&, const QString&) override { delete control; }
    };
    for (const bool about : {false, true}) {
        Host host;
        const auto going = std::make_shared<Going>();
        going->control = host.control;
        host.control->SetPrompts(going);
        if (about) {
            host.control->ShowAboutBox();
        } else {
            host.control->ZPBMakeConnection();
        }
        EXPECT_EQ(host.control, nullptr);
        EXPECT_TRUE(host.log.isEmpty());
    }
}

}  // namespace zephrin
