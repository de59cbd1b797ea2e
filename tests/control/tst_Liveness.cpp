#include "control/Host.h"
#include "wizard/ListBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

#include <gtest/gtest.h>

namespace zephrin {

namespace {

using test::Host;

/// Calls out at everything that lets the host or the user in, before it is answered.
class CallingPrompts : public test::ScriptedPrompts {
 public:
    std::function<void()> LetIn;

    BoxAnswer MsgBox(const QString& text, int style, const QString& title) override {
        Call();
        return ScriptedPrompts::MsgBox(text, style, title);
    }
    QString InputBox(const QString& prompt, const QString& title, const QString& text) override {
        Call();
        return ScriptedPrompts::InputBox(prompt, title, text);
    }
    QString ShowOpen(const FileChoice& choice) override {
        Call();
        return ScriptedPrompts::ShowOpen(choice);
    }
    QString ShowSave(const FileChoice& choice) override {
        Call();
        return ScriptedPrompts::ShowSave(choice);
    }
    bool OpenDocument(const QString& path) override {
        Call();
        return ScriptedPrompts::OpenDocument(path);
    }

 private:
    void Call() const {
        // What runs may replace itself.
        const auto letIn = LetIn;
        if (letIn) letIn();
    }
};

/// A host whose wizard offers everything, on the build-query tab of a query on one table. Its control goes
/// when it was let in `chances` times.
struct GoingHost : Host {
    std::shared_ptr<CallingPrompts> calling = std::make_shared<CallingPrompts>();
    int chances;

    explicit GoingHost(int times)
        : Host(QStringLiteral("CREATE TABLE One (Id int, Name nvarchar(10));"
                              "INSERT INTO One VALUES (1, 'x'), (2, 'x'), (3, 'x');"
                              "CREATE VIEW Taken AS SELECT Id FROM One;")),
          chances(times) {
        prompts = calling;
        prompts->Folder = Folder();
        control->SetPrompts(prompts);
        control->SetZPBAllowCreateView(true);
        control->ZPBMakeConnection(database.ConnectionString(), {}, {}, 5, 5, 0, false, {}, true);
        control->ZPBShowZephrin();
        while (control->ZPBTableCollection().CountTableCollection() > 1)
            control->ZPBTableCollection().RemoveTable(2);
        ChooseTable();
        log.clear();
        calling->LetIn = [this] { Step(); };
        OnEvent = [this](const QString&) { Step(); };
    }

    QString Folder() const { return QFileInfo(database.Path()).path(); }
    QString Path(const char* name) const { return Folder() + u'/' + QString::fromUtf8(name); }
    bool IsGone() const { return control.isNull(); }

    /// A press on a button that an earlier step may have taken along.
    void Press(const char* name) const {
        if (!IsGone()) Click(name);
    }
    /// Acts on the dialog that comes up next, and closes it where that did not.
    static void InDialog(const std::function<void(QWidget&)>& act) {
        QTimer::singleShot(0, qApp, [act] {
            QPointer<QWidget> dialog = QApplication::activeModalWidget();
            if (!dialog) return;
            act(*dialog);
            if (dialog && dialog->isVisible()) dialog->close();
        });
    }

 private:
    void ChooseTable() const {
        auto* list = qobject_cast<ListBox*>(Find("lstZPQTableSelection"));
        ASSERT_TRUE(list);
        list->setCurrentIndex(list->model()->index(0, 0));
        Click("cmdZPQTableRight");
        ChooseTab(2);
        Click("cmdZPQFieldRightAll");
        ChooseTab(3);
    }
    void Step() {
        if (chances-- == 0) delete control;
    }
};

void Press(QWidget& dialog, const char* name) {
    auto* button = dialog.findChild<QAbstractButton*>(QString::fromLatin1(name));
    ASSERT_TRUE(button) << name;
    button->click();
}

/// Writes a calculated field and presses OK.
void WriteField(GoingHost& host, const QString& expression) {
    GoingHost::InDialog([expression](QWidget& dialog) {
        dialog.findChild<QPlainTextEdit*>()->setPlainText(expression);
        dialog.findChild<QLineEdit*>(QStringLiteral("txtAlias"))->setText(QStringLiteral("A"));
        Press(dialog, "cmdOK");
    });
    host.Press("cmdCalcField");
}

void SaveAs(GoingHost& host, const char* name) {
    host.prompts->Paths = {host.Path(name)};
    host.Press("cmdSaveQuery");
}

void CreateView(GoingHost& host, const char* name) {
    host.prompts->Texts = {QString::fromUtf8(name)};
    host.Press("cmdCreateView");
}

void Export(GoingHost& host, const std::function<void()>& behindTheRun = {}) {
    host.Press("cmdRunQuery");
    if (host.IsGone()) return;
    if (behindTheRun) behindTheRun();
    host.Press("cmdExcel");
}

}  // namespace

TEST(Liveness, TheControlMayGoWhereverAWayOutLetsTheHostIn) {
    const struct {
        const char* What;
        std::function<void(GoingHost&)> Cause;
        int Chances;
    } rows[] = {
        {"save, and over it",
         [](GoingHost& h) {
             h.prompts->Answers = {BoxAnswer::Yes};
             SaveAs(h, "Mine.zpb");
             SaveAs(h, "Mine.zpb");
         },
         5},
        {"save on closing",
         [](GoingHost& h) {
             h.prompts->Answers = {BoxAnswer::Yes};
             h.prompts->Paths = {h.Path("Mine.zpb")};
             frmZPG::OpenForm()->close();
         },
         4},
        {"delete",
         [](GoingHost& h) {
             SaveAs(h, "Mine.zpb");
             h.prompts->Answers = {BoxAnswer::Yes};
             h.prompts->Paths = {h.Path("Mine.zpb")};
             h.Press("cmdDeleteQuery");
         },
         5},
        {"open",
         [](GoingHost& h) {
             SaveAs(h, "Mine.zpb");
             h.prompts->Paths = {h.Path("Mine.zpb")};
             h.Press("cmdOpenQuery");
         },
         3},
        {"open what is missing",
         [](GoingHost& h) {
             h.prompts->Answers = {BoxAnswer::No};
             h.prompts->Paths = {h.Path("Nothing.zpb")};
             h.Press("cmdOpenQuery");
         },
         3},
        {"new view", [](GoingHost& h) { CreateView(h, "Fresh"); }, 3},
        {"no name", [](GoingHost& h) { CreateView(h, ""); }, 2},
        {"altered view",
         [](GoingHost& h) {
             h.prompts->Answers = {BoxAnswer::Yes};
             CreateView(h, "Taken");
         },
         4},
        {"export", [](GoingHost& h) { Export(h); }, 3},
        {"export that fails",
         [](GoingHost& h) { Export(h, [&] { h.database.Run(QStringLiteral("DROP TABLE One")); }); }, 3},
        {"export of the older kind",
         [](GoingHost& h) {
             Export(h, [&] {
                 h.control->ZPBExcel97ConnectionDetails(QStringLiteral("SQL Server"), QStringLiteral("shop"));
                 GoingHost::InDialog([](QWidget& dialog) { Press(dialog, "cmdOK"); });
             });
         },
         3},
        {"calculated field of an unknown aggregate",
         [](GoingHost& h) { WriteField(h, QStringLiteral("SUM(Id)")); }, 1},
        {"calculated field of a taken alias",
         [](GoingHost& h) {
             WriteField(h, QStringLiteral("1"));
             WriteField(h, QStringLiteral("2"));
         },
         1},
        {"deleted calculated field",
         [](GoingHost& h) {
             WriteField(h, QStringLiteral("1"));
             h.prompts->Answers = {BoxAnswer::Yes};
             GoingHost::InDialog([](QWidget& dialog) {
                 auto* list = dialog.findChild<ListBox*>(QStringLiteral("lstFields"));
                 list->setCurrentIndex(list->model()->index(0, 0));
                 Press(dialog, "cmdDelete");
             });
             h.Press("cmdEditCalcField");
         },
         1},
    };
    for (const auto& row : rows) {
        for (int chance = 0; chance <= row.Chances; ++chance) {
            SCOPED_TRACE(testing::Message() << row.What << ", at chance " << chance);
            GoingHost host(chance);
            row.Cause(host);
            // The last round goes through to the end.
            EXPECT_EQ(host.IsGone(), chance < row.Chances) << "chances left: " << host.chances;
            if (host.IsGone()) {
                EXPECT_EQ(frmZPG::OpenForm(), nullptr);
                EXPECT_EQ(QApplication::overrideCursor(), nullptr);
            }
            const auto heard = host.log.size();
            Host::Drain();
            EXPECT_EQ(host.log.size(), heard);
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        }
    }
}

}  // namespace zephrin
