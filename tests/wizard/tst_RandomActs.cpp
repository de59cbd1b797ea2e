#include "platform/ado/providers/AllProviders.h"
#include "platform/controls/DataGrid.h"
#include "runstate/Dialect.h"
#include "runstate/clsBridge.h"
#include "savedquery/QueryChanges.h"
#include "support/ExpectedLog.h"
#include "support/Invariants.h"
#include "support/ScratchDatabase.h"
#include "wizard/ListBox.h"
#include "wizard/frmZPG.h"

#include <zephrin/Prompts.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMap>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace zephrin {

namespace {

const char* const values[] = {"1", "5", "O'Brien", "a%", "LIKE", "BETWEEN 1", "'", " ", "<> 5 AND < 10"};
const char* const expressions[] = {"[Orders].[Total]*2", "SUM([Orders].[Total])", "1", "(", "[Gone].[X]"};

template <class Widget>
bool Is(const QObject* object) {
    return qobject_cast<const Widget*>(object);
}

/// A wizard with a user who does anything that its widgets let him do, and a host that acts in its events:
/// now and then it ends the wizard in one, or in the middle of a question. One seed always does the same.
class Player : public QObject, public Prompts {
    std::mt19937 numbers;
    int Number(qsizetype below) { return static_cast<int>(numbers() % static_cast<unsigned>(below)); }
    bool Chance(int oneIn) { return Number(oneIn) == 0; }
    template <class Items>
    auto OneOf(const Items& items) {
        return *(std::begin(items) + Number(std::size(items)));
    }

 public:
    explicit Player(unsigned seed);
    ~Player() override { End(); }

    /// What went wrong first, with all that was done until then; empty when nothing did.
    QString Play(int acts);

    // Answers at random; who is asked may find that the wizard is over.
    BoxAnswer MsgBox(const QString& text, int style, const QString& title) override;
    QString InputBox(const QString&, const QString&, const QString&) override {
        return OneOf(
            QStringList{QString(), QStringLiteral("Mine"), QStringLiteral("Orders"), QStringLiteral("a]b")});
    }
    QString ShowOpen(const FileChoice& choice) override;
    QString ShowSave(const FileChoice& choice) override;
    QString PromptNewConnection(const QString&) override { return {}; }
    QString ExportFolder() override { return folder.path(); }
    void ShowAbout(const QString&, const QString&) override {}

 private:
    void Note(const QString& what) { done << what; }

    void Show();
    void End();
    void HostActs();
    bool IsDriven(const QWidget* widget);
    void Act(QWidget* window);
    void ActOnList(ListBox* list);
    void ActOnCombo(QComboBox* combo);
    void ActOnGrid(controls::DataGrid* grid);
    void ActOnTabs(QTabBar* bar);
    void Type(QWidget* box);
    void PressKey(QWidget* widget, const QList<Qt::Key>& keys);
    void DriveDialogs();
    QString Picture() const;
    QString Broken();
    QString BrokenOpening();

    test::ScratchDatabase database{test::SmallShopScript()};
    QTemporaryDir folder;
    // The prompts live as long as the player, whoever holds them.
    std::shared_ptr<ZPGGlobalDeclarations> state = std::make_shared<ZPGGlobalDeclarations>(
        ado::providers::AllProviders(), std::shared_ptr<Prompts>(std::shared_ptr<void>(), this));
    QPointer<frmZPG> form;
    QStringList done;
    QString failure;  ///< what a box told that no box should tell
    /// What each saved query was, by its path, and the one that was asked for last.
    QMap<QString, QStringList> saved;
    QString asked;
    bool driving = false;
    int stepsInDialogs = 0;
};

Player::Player(unsigned seed) : numbers(seed) {
    const QString dialect = OneOf(QStringList{QStringLiteral("SQL Server"), QStringLiteral("MS Access")});
    EXPECT_TRUE(OpenDatabaseConnection(*state, database.ConnectionString(dialect), 5, 5, {}, {}).IsEmpty());
    state->OfferedTables = Collection(
        {QStringLiteral("[Orders]"), QStringLiteral("[Customers]"), QStringLiteral("[Order Details]")});
    state->Options.gAllowCreateView = Chance(2);
    state->Options.gAllowJoinCreation = !Chance(6);
    state->Options.gAllowShowResults = !Chance(6);
    // A form that minimises itself after each run is out of the user's reach.
    state->Options.gModalForm = true;
    const clsBridge* host = &state->Bridge();
    connect(host, &clsBridge::QueryComplete, this, [this] { HostActs(); });
    connect(host, &clsBridge::UserViewCreated, this, [this] { HostActs(); });
    connect(host, &clsBridge::SaveQuery, this, [this](const QString& name) {
        saved[name] = state->Form->KeptQuery;
        HostActs();
    });
    connect(host, &clsBridge::DeleteQuery, this, [this](const QString& name) {
        saved.remove(name);
        HostActs();
    });
}

// --- The host ---

void Player::Show() {
    auto* shown = new frmZPG(state, QIcon(), QApplication::font());
    form = shown;
    connect(shown, &frmZPG::Unloaded, this, [this, shown] {
        form.clear();
        shown->DeleteWhenIdle();
    });
    ASSERT_TRUE(shown->Load());
    shown->show();
    Note(QStringLiteral("show"));
}

void Player::End() {
    if (!form) return;
    frmZPG* ended = form;
    form.clear();
    ended->UnloadSilently();
    ended->DeleteWhenIdle();
}

void Player::HostActs() {
    if (Chance(12)) {
        Note(QStringLiteral("the host ends the wizard"));
        End();
    } else if (form && Chance(4)) {
        ShowFormNow(*state);
    } else if (form && Chance(4)) {
        form->resize(700 + Number(400), 500 + Number(300));
    }
}

BoxAnswer Player::MsgBox(const QString& text, int style, const QString&) {
    Note(QStringLiteral("box: ") + text.section(u'\r', 0, 0));
    if (text.startsWith(QLatin1StringView("That could not be done"))) failure = text;
    if (Chance(3)) HostActs();
    const BoxAnswer answers[] = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel};
    const int buttons = style & 7;
    if (buttons == BoxStyle::OkOnly) return BoxAnswer::Ok;
    return answers[Number(buttons == BoxStyle::YesNoCancel ? 3 : 2)];
}

QString Player::ShowOpen(const FileChoice& choice) {
    if (Chance(3)) HostActs();
    asked = OneOf(saved.keys() << QString() << folder.filePath(QStringLiteral("missing.zpb")));
    Note(choice.Title + u' ' + asked.section(u'/', -1));
    return asked;
}

QString Player::ShowSave(const FileChoice&) {
    const QString name = OneOf(QStringList{QString(), QStringLiteral("A.zpb"), QStringLiteral("B.zpb"),
                                           QStringLiteral("gone/C.zpb")});
    Note(QStringLiteral("save as ") + name);
    return name.isEmpty() ? QString() : folder.filePath(name);
}

// --- The user ---

bool Player::IsDriven(const QWidget* widget) {
    const QString name = widget->objectName();
    if (!widget->isVisible() || !widget->isEnabled() || name.isEmpty()) return false;
    // What ends the wizard or saves is done more seldom than there are buttons for it; what takes long, and
    // what is typed by hand, which no rebuild makes, never.
    if (name == QLatin1StringView("cmdExit")) return Chance(25);
    if (name == QLatin1StringView("cmdExcel") || name == QLatin1StringView("txtSQL")) return false;
    if (name.endsWith(QLatin1StringView("Query")) && name != QLatin1StringView("cmdRunQuery"))
        return Chance(4);
    if (Is<QLineEdit>(widget)) return !Is<QComboBox>(widget->parent());
    if (Is<QPlainTextEdit>(widget) || Is<QTextEdit>(widget)) return !widget->property("readOnly").toBool();
    return Is<QAbstractButton>(widget) || Is<ListBox>(widget) || Is<QComboBox>(widget) ||
           Is<controls::DataGrid>(widget) || Is<QTabBar>(widget);
}

void Player::Act(QWidget* window) {
    QList<QWidget*> within;
    for (QWidget* widget : window->findChildren<QWidget*>())
        if (widget->window() == window && IsDriven(widget)) within << widget;
    if (within.isEmpty()) return;
    QWidget* widget = OneOf(within);
    if (auto* bar = window->findChild<QTabBar*>(); bar && Chance(5)) widget = bar;
    Note(widget->objectName());
    if (Is<QAbstractButton>(widget)) {
        QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(10, widget->height() / 2));
    } else if (auto* list = qobject_cast<ListBox*>(widget)) {
        ActOnList(list);
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        ActOnCombo(combo);
    } else if (auto* grid = qobject_cast<controls::DataGrid*>(widget)) {
        ActOnGrid(grid);
    } else if (auto* tabs = qobject_cast<QTabBar*>(widget)) {
        ActOnTabs(tabs);
    } else {
        Type(widget);
    }
}

void Player::PressKey(QWidget* widget, const QList<Qt::Key>& keys) {
    const Qt::Key key = OneOf(keys);
    Note(QStringLiteral("key %1").arg(key, 0, 16));
    // As it comes from a keyboard: what nobody takes goes up to the window.
    const QPointer<QWidget> alive(widget);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, {}, key == Qt::Key_Space ? QStringLiteral(" ") : QString());
        if (alive) QApplication::sendEvent(widget, &event);
    }
}

void Player::Type(QWidget* box) {
    const bool isText = Is<QPlainTextEdit>(box) || Is<QTextEdit>(box);
    const QString text = QLatin1StringView(isText ? OneOf(expressions) : OneOf(values));
    Note(QStringLiteral("type ") + text);
    if (Chance(2)) QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(box, text);
}

void Player::ActOnList(ListBox* list) {
    const int rows = list->model() ? list->model()->rowCount() : 0;
    if (rows == 0) return;
    list->setFocus();
    if (Chance(4))
        return PressKey(
            list, {Qt::Key_Down, Qt::Key_Up, Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape, Qt::Key_F4});
    const QModelIndex row = list->model()->index(Number(rows), 0);
    Note(QStringLiteral("row ") + row.data().toString());
    list->scrollTo(row);
    const QPoint place = list->visualRect(row).center();
    const QPointer<ListBox> alive(list);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    if (alive && alive->isVisible() && Chance(3))
        QTest::mouseDClick(alive->viewport(), Qt::LeftButton, {}, place);
}

void Player::ActOnCombo(QComboBox* combo) {
    combo->setFocus();
    if (combo->count() == 0 || Chance(3)) return Type(combo);
    if (Chance(3)) return PressKey(combo, {Qt::Key_Down, Qt::Key_Up, Qt::Key_Return});
    const int row = Number(combo->count());
    Note(QStringLiteral("item ") + combo->itemText(row));
    combo->showPopup();
    combo->view()->setCurrentIndex(combo->model()->index(row, 0));
    QTest::keyClick(combo->view(), Qt::Key_Return);
}

void Player::ActOnGrid(controls::DataGrid* grid) {
    const QPointer<QTableView> pane(grid->Pane(Number(grid->SplitCount())));
    const QAbstractItemModel* model = pane->model();
    if (model->rowCount() == 0 || model->columnCount() == 0) return;
    const QModelIndex cell = model->index(Number(model->rowCount()), Number(model->columnCount()));
    Note(QStringLiteral("cell %1, %2").arg(cell.row()).arg(cell.column()));
    pane->setFocus();
    pane->scrollTo(cell);
    QTest::mouseClick(pane->viewport(), Qt::LeftButton, {}, pane->visualRect(cell).center());
    if (!pane || !pane->isVisible()) return;
    if (Chance(2)) return PressKey(pane, {Qt::Key_F4, Qt::Key_Delete, Qt::Key_Down});
    QTest::keyClick(pane, Qt::Key_F2);
    auto* editor = pane ? pane->viewport()->findChild<QLineEdit*>() : nullptr;
    if (!editor) return;
    editor->setText(Chance(8) ? QString(600, u'7') : QString::fromLatin1(OneOf(values)));
    Note(QStringLiteral("write ") + editor->text().left(20));
    // An open editor is left for the next act now and then.
    if (!Chance(3)) PressKey(editor, {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape});
}

void Player::ActOnTabs(QTabBar* bar) {
    QList<int> tabs(bar->count());
    std::iota(tabs.begin(), tabs.end(), 0);
    tabs.removeIf([bar](int tab) { return !bar->isTabEnabled(tab) || !bar->isTabVisible(tab); });
    const int tab = OneOf(tabs);
    Note(QStringLiteral("tab %1").arg(tab));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
}

/// A dialog that an act opened waits in an event loop of its own: there the user goes on, one act at a time,
/// and closes it at last.
void Player::DriveDialogs() {
    if (!driving) return;
    QTimer::singleShot(1, this, [this] { DriveDialogs(); });
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog || dialog == form) return;
    if (++stepsInDialogs % 20 == 0) {
        Note(QStringLiteral("leave ") + dialog->objectName());
        if (Chance(2)) return PressKey(dialog, {Qt::Key_Escape});
        dialog->close();
    } else {
        Act(dialog);
    }
}

// --- What has to hold after every act ---

/// What the widgets show, a line each.
QString Player::Picture() const {
    QStringList lines;
    for (const QWidget* widget : form->findChildren<QWidget*>()) {
        if (widget->objectName().isEmpty()) continue;
        QString line =
            widget->objectName() + (widget->isEnabled() ? u'1' : u'0') + (widget->isHidden() ? u'0' : u'1');
        if (const auto* list = qobject_cast<const ListBox*>(widget); list && list->model())
            line += QString::number(list->model()->rowCount());
        for (const char* property :
             {"text", "plainText", "currentText", "currentIndex", "checked", "title", "toolTip"})
            line += u'|' + widget->property(property).toString().replace(u'\n', u' ');
        lines << line;
    }
    return lines.join(u'\n');
}

/// An opened query is the one that was saved, on a form without anything of the one before.
QString Player::BrokenOpening() {
    const QString path = std::exchange(asked, {});
    if (!saved.contains(path) || state->Form->KeptQuery.isEmpty() || !state->Form->TablesChanged) return {};
    const FormState& now = *state->Form;
    if (done.last() != QLatin1StringView("Open Saved Query ") + path.section(u'/', -1)) return {};
    if (DescribeQuery(*state) != saved[path])
        return QStringLiteral("opened\n") + DescribeQuery(*state).join(u'|') +
               QStringLiteral("\nbut saved\n") + saved[path].join(u'|');
    if (now.TabZPG.Tab != 0 || now.dgrQueryResults.DataSource || now.cmdExcel.Enabled || state->rsQueryResult)
        return QStringLiteral("something of the query before is left");
    return {};
}

QString Player::Broken() {
    if (!failure.isEmpty()) return failure;
    if (QGuiApplication::overrideCursor()) return QStringLiteral("an hourglass stayed");
    if (!form) return {};
    if (const QString opening = BrokenOpening(); !opening.isEmpty()) return opening;
    const auto* tabs = form->findChild<QTabWidget*>(QStringLiteral("TabZPG"));
    if (!tabs->isTabEnabled(tabs->currentIndex()) || !tabs->isTabVisible(tabs->currentIndex()))
        return QStringLiteral("the user stands on a tab that is shut");
    const QStringList before = Picture().split(u'\n');
    ShowFormNow(*state);
    const QStringList after = Picture().split(u'\n');
    for (qsizetype line = 0; line < std::min(before.size(), after.size()); ++line)
        if (before[line] != after[line])
            return QStringLiteral("the form shows %1, the state has %2").arg(before[line], after[line]);
    return test::BrokenInvariant(*state);
}

QString Player::Play(int acts) {
    for (int act = 0; act < acts; ++act) {
        if (!form) Show();
        driving = true;
        stepsInDialogs = 0;
        QTimer::singleShot(1, this, [this] { DriveDialogs(); });
        Act(form);
        driving = false;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        if (const QString broken = Broken(); !broken.isEmpty())
            return done.join(QStringLiteral("\n  ")) + QStringLiteral("\nbreaks: ") + broken;
    }
    End();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return {};
}

}  // namespace

/// ZEPHRIN_SEEDS in the environment plays that many instead; ZEPHRIN_SEED plays the one.
TEST(RandomActsOnWidgets, LeaveNobodyStuckOrMisled) {
    // A user presses keys that nothing takes.
    test::ExpectLog(QStringLiteral("Keyboard event not accepted"));
    const bool one = qEnvironmentVariableIsSet("ZEPHRIN_SEED");
    const unsigned first = one ? qEnvironmentVariable("ZEPHRIN_SEED").toUInt() : 1;
    const unsigned count = one ? 1 : qEnvironmentVariable("ZEPHRIN_SEEDS", QStringLiteral("5")).toUInt();
    for (unsigned seed = first; seed - first < count; ++seed) {
        Player player(seed);
        const QString broken = player.Play(80);
        ASSERT_TRUE(broken.isEmpty() && !testing::Test::HasFailure())
            << "seed " << seed << ":\n  " << qPrintable(broken);
    }
}

}  // namespace zephrin
