#include "Editor.h"
#include "support/ScratchDatabase.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

#include <functional>
#include <gtest/gtest.h>

namespace zephrin::test {
namespace {

/// The dialog with the page while it is open.
class OpenDialog {
 public:
    explicit OpenDialog(QWidget& shown) : dialog(shown) {}

    template <typename Widget>
    Widget& Find(const char* name) const {
        return *dialog.findChild<Widget*>(QString::fromLatin1(name));
    }
    QPushButton& Button(QDialogButtonBox::StandardButton which) const {
        return *dialog.findChild<QDialogButtonBox*>()->button(which);
    }
    void Write(const char* line, const QString& text) const { Find<QLineEdit>(line).setText(text); }
    void Press(QDialogButtonBox::StandardButton which) const {
        QTest::mouseClick(&Button(which), Qt::LeftButton);
    }
    QString Title() const { return dialog.windowTitle(); }

 private:
    QWidget& dialog;
};

/// Opens the page as its menu entry does, lets the user do something, and cancels what is open then.
void OnPage(Editor& editor, const std::function<void(const OpenDialog&)>& user) {
    bool reached = false;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [&] {
            const QPointer<QWidget> dialog = QApplication::activeModalWidget();
            ASSERT_TRUE(dialog);
            user(OpenDialog(*dialog));
            reached = true;
            if (dialog && dialog->isVisible()) qobject_cast<QDialog*>(dialog)->reject();
        });
    });
    editor.TaskMenu().preferredEditAction()->trigger();
    EXPECT_TRUE(reached);
}

void WriteConnection(const OpenDialog& page) {
    page.Write("txtZPGDataConnection", u"Provider=SQLite;Data Source=ü.db"_qs);
    page.Write("txtConnectionTimeout", u"5"_qs);
}

constexpr QStringView stored = u"ZPBConnectionString=Provider=SQLite;Data Source=ü.db\nConnectionTimeout=5\n";

TEST(ZephrinTaskMenu, OffersTheConnectionPage) {
    Editor editor;
    editor.Open();
    const QList<QAction*> actions = editor.TaskMenu().taskActions();
    ASSERT_EQ(actions.size(), 1);
    EXPECT_EQ(actions.first()->text(), u"Connection..."_qs);
    EXPECT_EQ(editor.TaskMenu().preferredEditAction(), actions.first());
    OnPage(editor, [](const OpenDialog& page) {
        EXPECT_EQ(page.Title(), u"Connection - zephrin"_qs);
        EXPECT_FALSE(page.Button(QDialogButtonBox::Apply).isEnabled());
    });
    EXPECT_EQ(editor.Stored(), QString());
    EXPECT_FALSE(editor.form->isDirty());
}

TEST(ZephrinTaskMenu, StoresThePageAsOneStepOfTheHistory) {
    Editor editor;
    editor.Open();
    OnPage(editor, [](const OpenDialog& page) {
        WriteConnection(page);
        EXPECT_TRUE(page.Button(QDialogButtonBox::Apply).isEnabled());
        page.Press(QDialogButtonBox::Ok);
    });
    EXPECT_EQ(editor.Stored(), stored.toString());
    EXPECT_EQ(editor.History().count(), 1);
    EXPECT_TRUE(editor.form->isDirty());
    editor.History().undo();
    EXPECT_EQ(editor.Stored(), QString());
    EXPECT_EQ(editor.control->ZPBConnectionString(), QString());
    EXPECT_EQ(editor.control->ConnectionTimeout(), 60);
    EXPECT_FALSE(editor.form->isDirty());
    editor.History().redo();
    EXPECT_EQ(editor.Stored(), stored.toString());
    editor.Reopen();
    EXPECT_EQ(editor.control->ZPBConnectionString(), u"Provider=SQLite;Data Source=ü.db"_qs);
    EXPECT_EQ(editor.control->ConnectionTimeout(), 5);
}

TEST(ZephrinTaskMenu, ChangesNothingWhenThePageIsCancelled) {
    Editor editor;
    editor.Open();
    OnPage(editor, [](const OpenDialog& page) {
        WriteConnection(page);
        page.Press(QDialogButtonBox::Cancel);
    });
    EXPECT_EQ(editor.Stored(), QString());
    EXPECT_EQ(editor.History().count(), 0);
}

TEST(ZephrinTaskMenu, AppliesAndStaysOpen) {
    Editor editor;
    editor.Open();
    OnPage(editor, [&editor](const OpenDialog& page) {
        WriteConnection(page);
        page.Press(QDialogButtonBox::Apply);
        EXPECT_FALSE(page.Button(QDialogButtonBox::Apply).isEnabled());
        EXPECT_EQ(editor.Stored(), stored.toString());
        page.Write("txtConnectionTimeout", u"6"_qs);
        page.Press(QDialogButtonBox::Ok);
    });
    EXPECT_EQ(editor.control->ConnectionTimeout(), 6);
    EXPECT_EQ(editor.History().count(), 2);
}

TEST(ZephrinTaskMenu, StoresNoMoreWhatIsAsOnANewControl) {
    Editor editor;
    editor.Open(
        u"<property name=\"ZPBConnectionString\" stdset=\"0\"><cstring>x</cstring></property>"
        u"<property name=\"ZPBCommandTimeout\" stdset=\"0\"><number>7</number></property>"_qs);
    OnPage(editor, [](const OpenDialog& page) {
        EXPECT_EQ(page.Find<QLineEdit>("txtZPGDataConnection").text(), u"x"_qs);
        page.Write("txtZPGDataConnection", QString());
        page.Write("txtCommandTimeout", u"60"_qs);
        page.Press(QDialogButtonBox::Ok);
    });
    EXPECT_EQ(editor.Stored(), QString());
    editor.History().undo();
    EXPECT_EQ(editor.Stored(), u"ZPBConnectionString=x\nZPBCommandTimeout=7\n"_qs);
}

// The whole way: connect, choose tables, and have the running program offer them.
TEST(ZephrinTaskMenu, TakesTheTablesOfADatabaseToTheForm) {
    const ScratchDatabase database(SmallShopScript());
    Editor editor;
    editor.Open();
    OnPage(editor, [&database](const OpenDialog& page) {
        page.Write("txtZPGDataConnection", database.ConnectionString());
        page.Find<QComboBox>("cmbZPGCommandType").setCurrentText(u"Tables"_qs);
        auto& tables = page.Find<QListWidget>("lstZPGSelTables");
        ASSERT_GT(tables.count(), 1);
        tables.item(1)->setSelected(true);
        page.Press(QDialogButtonBox::Ok);
    });
    EXPECT_EQ(editor.control->ZPBCommandType(), u"Tables"_qs);
    EXPECT_TRUE(editor.control->ZPBTableString().startsWith(u';'));
    EXPECT_EQ(editor.History().count(), 1);
    editor.Reopen();
    EXPECT_EQ(editor.control->ZPBConnectionString(), database.ConnectionString());
}

}  // namespace
}  // namespace zephrin::test
