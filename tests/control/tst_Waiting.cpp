#include "control/Host.h"
#include "wizard/ListBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace zephrin {

namespace {

using test::Host;

const auto Script = QStringLiteral(
    "CREATE TABLE One (Id int, Name nvarchar(10));"
    "INSERT INTO One VALUES (1, 'x'), (2, 'y');"
    "CREATE VIEW Endless AS WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c) SELECT n FROM "
    "c;");
const auto Forever = QStringLiteral("SELECT COUNT(*) FROM Endless");

/// A host with a wizard on one table, on the build-query tab. Somebody else may lock the database, and then
/// everything that asks it waits.
struct WaitingHost : Host {
    QStringList waits;  ///< of what Busy has told, each once
    int ended = 0;
    std::function<void()> OnBusy;

    WaitingHost() : Host(Script) {
        prompts->Folder = QFileInfo(database.Path()).path();
        control->SetZPBAllowCreateView(true);
        QObject::connect(control, &Zephrin::Busy, control, [this](const QString& what, qint64, int) {
            if (waits.isEmpty() || waits.last() != what) waits << what;
            const auto act = OnBusy;
            if (act) act();
        });
        QObject::connect(control, &Zephrin::BusyEnded, control, [this] { ++ended; });
        Connect();
        control->ZPBTableCollection().RemoveTable(QStringLiteral("Endless"));
        control->ZPBShowZephrin();
        ChooseEverything();
        log.clear();
    }
    ~WaitingHost() { Unlock(); }

    void Lock() {
        ASSERT_EQ(sqlite3_open(database.Path().toUtf8().constData(), &other), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    }
    void Unlock() {
        if (other) sqlite3_close(std::exchange(other, nullptr));
    }
    bool IsGone() const { return control.isNull(); }
    QString Path(const char* name) const { return prompts->Folder + u'/' + QString::fromUtf8(name); }

    static void Type(const QString& statement) {
        auto* box = qobject_cast<QTextEdit*>(Find("txtSQL"));
        ASSERT_TRUE(box);
        box->setPlainText(statement);
    }
    static void Pick(const char* name, int row) {
        auto* list = qobject_cast<ListBox*>(Find(name));
        ASSERT_TRUE(list);
        list->setCurrentIndex(list->model()->index(row, 0));
    }
    int Runs() const { return int(log.filter(QStringLiteral("QueryExecuted")).size()); }

 private:
    sqlite3* other = nullptr;
};

/// A click as it comes from outside: to the window, and from there to what lies at the point.
void ClickFromOutside(QWidget* widget) {
    QWidget* const window = widget->window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                      widget->mapTo(window, widget->rect().center()));
}

}  // namespace

TEST(Waiting, AnEndlessStatementIsStoppedInThreeWays) {
    const struct {
        const char* How;
        std::function<void(WaitingHost&)> Stop;
        bool ByEscape = false;
    } rows[] = {
        {"the button", [](WaitingHost&) { ClickFromOutside(Host::Find("cmdStop")); }},
        {"Escape, twenty times",
         [](WaitingHost&) {
             for (int i = 0; i < 20; ++i) QTest::keyClick(frmZPG::OpenForm(), Qt::Key_Escape);
         },
         true},
        {"the host", [](WaitingHost& h) { h.control->StopWork(); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.How);
        WaitingHost host;
        host.Type(Forever);
        bool counted = false;
        host.OnBusy = [&] {
            EXPECT_TRUE(Host::Find("cmdStop")->isVisible());
            EXPECT_NE(QApplication::overrideCursor(), nullptr);
            const QString status = qobject_cast<QLabel*>(Host::Find("stbZPB_1"))->text();
            // From one second on the bar says so.
            if (!status.startsWith(u"Running Query .. 1 s") || std::exchange(counted, true)) return;
            QTimer::singleShot(0, qApp, [&] { row.Stop(host); });
        };
        host.RunQuery();
        EXPECT_TRUE(counted);
        EXPECT_EQ(host.log, QStringList{QStringLiteral("QueryExecuted 3712 error")});
        EXPECT_EQ(qobject_cast<QTextEdit*>(Host::Find("txtSQLErrors"))->toPlainText(),
                  QStringLiteral("SQL Syntax Error :\nOperation has been cancelled by the user."));
        EXPECT_EQ(qobject_cast<QLabel*>(Host::Find("stbZPB_1"))->text(), QStringLiteral("Ready .."));
        EXPECT_FALSE(Host::Find("cmdStop")->isVisible());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        EXPECT_EQ(host.waits, QStringList{QStringLiteral("Running Query ..")});
        EXPECT_EQ(host.ended, 1);
        if (row.ByEscape) QTest::keyClick(frmZPG::OpenForm(), Qt::Key_Escape);
        EXPECT_TRUE(frmZPG::OpenForm()) << "an Escape too many closes nothing";
        host.OnBusy = {};
        host.ChooseTab(3);
        host.Type(QStringLiteral("SELECT Id FROM One"));
        host.RunQuery();
        ASSERT_TRUE(host.rows && host.rows->IsOpen());
        EXPECT_EQ(host.rows->RecordCount(), 2) << "usable at once";
    }
}

TEST(Waiting, NothingElseGetsInput) {
    WaitingHost host;
    host.Type(Forever);
    QWidget beside;
    beside.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&beside));
    bool boxWasAnswered = false;
    int step = 0;
    host.OnBusy = [&] {
        if (step++ != 0) return;
        QTimer::singleShot(0, qApp, [&] {
            for (const char* button : {"cmdExit", "cmdSaveQuery"}) ClickFromOutside(Host::Find(button));
            QTest::keyClick(frmZPG::OpenForm(), Qt::Key_Return);
            EXPECT_FALSE(frmZPG::OpenForm()->close());
            EXPECT_FALSE(beside.close());
            // A box that the host opens meanwhile is answered all the same.
            QDialog box;
            QTimer::singleShot(0, &box, [&] { QTest::keyClick(&box, Qt::Key_Escape); });
            boxWasAnswered = box.exec() == QDialog::Rejected;
            host.control->StopWork();
        });
    };
    host.RunQuery();
    EXPECT_TRUE(boxWasAnswered);
    EXPECT_TRUE(beside.isVisible());
    EXPECT_TRUE(host.prompts->Boxes.isEmpty() && host.prompts->Choices.isEmpty());
    EXPECT_EQ(host.log, QStringList{QStringLiteral("QueryExecuted 3712 error")});
    Host::Drain();
    EXPECT_TRUE(frmZPG::OpenForm()) << "what was clicked meanwhile is not done later";
}

TEST(Waiting, WhateverAHostDoesMeanwhile) {
    const struct {
        const char* What;
        std::function<void(WaitingHost&)> Cause;
        bool Connects = false;
    } works[] = {
        {"run", [](WaitingHost& h) { h.RunQuery(); }},
        {"look values up",
         [](WaitingHost& h) {
             h.Pick("lstSelectedFields", 0);
             h.Pick("lstOperands", 0);
             h.Click("cmdFieldValues");
         }},
        {"read fields",
         [](WaitingHost& h) {
             h.ChooseTab(0);
             h.Click("cmdZPQTableLeftAll");
             h.Click("cmdZPQTableRightAll");
             h.ChooseTab(2);
         }},
        {"create a view",
         [](WaitingHost& h) {
             h.prompts->Texts = {QStringLiteral("Fresh")};
             h.Click("cmdCreateView");
         }},
        {"add a table",
         [](WaitingHost& h) { h.control->ZPBTableCollection().AddTable(QStringLiteral("Endless")); }},
        {"open a query",
         [](WaitingHost& h) {
             h.prompts->Paths = {h.Path("Mine.zpb")};
             h.Click("cmdOpenQuery");
         },
         true},
        {"export", [](WaitingHost& h) { h.Click("cmdExcel"); }},
        {"connect",
         [](WaitingHost& h) {
             frmZPG::OpenForm()->close();
             h.Connect();
         }},
    };
    const struct {
        const char* What;
        std::function<void(WaitingHost&)> Do;
        bool Goes = false;
        bool Disconnects = false;
    } acts[] = {
        {"delete the control", [](WaitingHost& h) { delete h.control; }, true},
        {"delete its parent",
         [](WaitingHost& h) {
             auto* parent = new QWidget;
             h.control->setParent(parent);
             delete parent;
         },
         true},
        {"stop", [](WaitingHost& h) { h.control->StopWork(); }},
        {"disconnect", [](WaitingHost& h) { h.control->ZPBDisconnectConnection(); }, false, true},
        {"everything again",
         [](WaitingHost& h) {
             h.Connect();
             h.control->ZPBShowZephrin();
             h.control->ZPBTableCollection().AddTable(QStringLiteral("One"));
             if (frmZPG::OpenForm()) qobject_cast<QAbstractButton*>(Host::Find("cmdRunQuery"))->click();
         }},
        {"an event loop",
         [](WaitingHost&) {
             QEventLoop loop;
             QTimer::singleShot(20, &loop, &QEventLoop::quit);
             loop.exec();
         }},
        {"another control",
         [](WaitingHost& h) {
             Zephrin second;
             second.SetPrompts(h.prompts);
             h.Unlock();
             second.ZPBMakeConnection(h.database.ConnectionString());
             second.ZPBTableCollection().AddTable(QStringLiteral("One"));
         }},
    };
    for (const auto& work : works) {
        for (const auto& act : acts) {
            SCOPED_TRACE(testing::Message() << act.What << " in the middle of: " << work.What);
            WaitingHost host;
            host.prompts->Paths = {host.Path("Mine.zpb")};
            host.Click("cmdSaveQuery");
            host.RunQuery();
            host.ChooseTab(3);
            host.log.clear();
            host.prompts->Answers = {BoxAnswer::No, BoxAnswer::Ok, BoxAnswer::Ok, BoxAnswer::Ok};
            host.Lock();
            bool acted = false;
            host.OnBusy = [&] {
                if (std::exchange(acted, true)) return host.Unlock();
                act.Do(host);
            };
            work.Cause(host);
            host.Unlock();
            EXPECT_TRUE(acted);
            EXPECT_EQ(host.IsGone(), act.Goes);
            // On a slow machine a second step of the same work is long, too, and ends by itself.
            EXPECT_EQ(host.ended > 0, !host.IsGone());
            EXPECT_EQ(QApplication::overrideCursor(), nullptr);
            Host::Drain();
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
            EXPECT_EQ(
                QDir(host.prompts->Folder).entryList({QStringLiteral("*.tmp")}, QDir::Files | QDir::Hidden),
                QStringList());
            EXPECT_FALSE(host.IsGone() && frmZPG::OpenForm());
            if (!frmZPG::OpenForm()) continue;
            EXPECT_LE(host.log.filter(QStringLiteral("QueryExecuted 0")).size(), 1)
                << "no statement runs twice";
            host.OnBusy = {};
            host.log.clear();
            host.prompts->Answers = {BoxAnswer::Ok};
            host.ChooseTab(3);
            host.RunQuery();
            EXPECT_TRUE(act.Disconnects || work.Connects || host.Runs() == 1) << "usable at once";
        }
    }
}

TEST(Waiting, AStoppedLookUpLeavesTheListsAsTheyWere) {
    WaitingHost host;
    host.Pick("lstSelectedFields", 0);
    host.Pick("lstOperands", 0);
    host.Click("cmdFieldValues");
    auto* values = qobject_cast<QComboBox*>(Host::Find("cmbAvailableValues1"));
    ASSERT_EQ(values->count(), 2);
    host.OnBusy = [&] { host.control->StopWork(); };
    host.Lock();
    host.Click("cmdFieldValues");
    EXPECT_EQ(values->count(), 2);
    host.ChooseTab(0);
    host.Click("cmdZPQTableLeftAll");
    host.Click("cmdZPQTableRightAll");
    host.ChooseTab(2);
    EXPECT_EQ(qobject_cast<QTabWidget*>(Host::Find("TabZPG"))->currentIndex(), 0)
        << "back where he came from";
    host.Unlock();
    host.ChooseTab(2);
    EXPECT_EQ(qobject_cast<ListBox*>(Host::Find("lstZPQFieldTo"))->model()->rowCount(), 2);
    EXPECT_TRUE(host.prompts->Boxes.isEmpty());
    // And a connection attempt that was stopped is told.
    host.prompts->Answers = {BoxAnswer::No};
    frmZPG::OpenForm()->close();
    host.log.clear();
    host.Lock();
    host.Connect();
    EXPECT_EQ(host.log.first(),
              QStringLiteral("ConnectionComplete 3712 'Operation has been cancelled by the user.' "
                             "'ADODB'"));
}

TEST(Waiting, TheProgramMayEnd) {
    for (const auto end : {&QCoreApplication::quit, +[] { QCoreApplication::exit(); }}) {
        WaitingHost host;
        host.Type(Forever);
        host.prompts->Answers = {BoxAnswer::No};
        host.OnBusy = [&] { end(); };
        QTimer::singleShot(0, qApp, [&] { host.RunQuery(); });
        QApplication::exec();
        EXPECT_EQ(host.log.first(), QStringLiteral("QueryExecuted 3712 error"));
    }
}

TEST(Waiting, AnExportShowsHowMuchIsLeft) {
    WaitingHost host;
    host.Type(QStringLiteral("SELECT a.n FROM (SELECT TOP 300000 n FROM Endless) a"));
    host.RunQuery();
    ASSERT_EQ(host.rows->RecordCount(), 300'000);
    int shown = 0;
    host.OnBusy = [&] {
        const auto* bar = qobject_cast<QProgressBar*>(Host::Find("prgWork"));
        EXPECT_TRUE(bar->isVisible());
        shown = std::max(shown, bar->value());
        if (shown > 0) host.control->StopWork();
    };
    host.Click("cmdExcel");
    EXPECT_TRUE(shown > 0 || host.waits.isEmpty()) << "unless the machine is too fast";
    EXPECT_EQ(
        QDir(host.prompts->Folder).entryList({QStringLiteral("*.xlsx")}, QDir::Files | QDir::Hidden).size(),
        shown > 0 ? 0 : 1);
}

}  // namespace zephrin
