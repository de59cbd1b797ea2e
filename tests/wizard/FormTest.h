#pragma once

#include "runstate/Retrieval.h"
#include "support/ScriptedPrompts.h"
#include "wizard/frmZPG.h"

#include <QAbstractButton>

#include <gtest/gtest.h>
#include <memory>

namespace zephrin {
class ListBox;
}

namespace zephrin::test {

/// A wizard on the sample database, driven as a user drives it: through its widgets, found by their names.
class FormTest : public testing::Test {
 protected:
    FormTest();
    ~FormTest() override;

    /// Connects to the sample database, or to a copy that may be changed, in `dialect` and offers its tables
    /// and views.
    void Connect(const QString& dialect = QStringLiteral("SQL Server"), const QString& copy = {});
    /// Loads the form and shows it, not modal.
    void Show();

    template <class Widget = QWidget>
    Widget* Find(const char* name) const {
        auto* widget = form->findChild<Widget*>(QString::fromLatin1(name));
        if (!widget) ADD_FAILURE() << "no control " << name;
        return widget;
    }
    FormState& State() const { return *state->Form; }

    /// A mouse click on a button.
    void Click(const char* name) const;
    /// A mouse click on the row of the list that has `text`.
    void Pick(const char* list, const QString& text) const;
    void DoubleClick(const char* list, const QString& text) const;
    /// Drops the box's list down and chooses an item with Enter.
    void Choose(const char* combo, const QString& text) const;
    /// Types into the text of a drop-down or of a line.
    void Type(const char* box, const QString& text) const;
    /// A mouse click on the tab's head.
    void ChooseTab(int tab) const;
    int CurrentTab() const;
    QStringList Items(const char* list) const;
    QString Statement() const;
    /// "1" for an enabled tab, "0" for a disabled one, "-" for a hidden one.
    QString Tabs() const;
    bool Enabled(const char* name) const { return Find(name)->isEnabled(); }

    /// Picks a table and puts `fields` of it out; ends on the build-query tab.
    void ChooseOneTable(const QString& table, const QStringList& fields) const;

    std::shared_ptr<ScriptedPrompts> prompts = std::make_shared<ScriptedPrompts>();
    std::shared_ptr<ZPGGlobalDeclarations> state;
    std::unique_ptr<frmZPG> form;
    QStringList unloads;  ///< the texts of Unloaded, as they came

 private:
    QPoint RowOf(ListBox* list, const QString& text) const;
};

}  // namespace zephrin::test
