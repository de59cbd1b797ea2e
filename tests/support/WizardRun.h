#pragma once

#include "flow/Shell.h"
#include "flow/TableTab.h"
#include "platform/ado/providers/AllProviders.h"
#include "runstate/Dialect.h"
#include "runstate/ZPGGlobalDeclarations.h"
#include "support/ScratchDatabase.h"
#include "support/ScriptedPrompts.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <memory>

namespace zephrin::test {

/// One wizard run without a window: a state on a small shop, connected and not yet loaded.
struct WizardRun {
    ScratchDatabase database{SmallShopScript()};
    std::shared_ptr<ScriptedPrompts> prompts = std::make_shared<ScriptedPrompts>();
    ZPGGlobalDeclarations state{ado::providers::AllProviders(), prompts};

    explicit WizardRun(const QString& dialect = QStringLiteral("SQL Server")) {
        EXPECT_TRUE(
            OpenDatabaseConnection(state, database.ConnectionString(dialect), 5, 5, {}, {}).IsEmpty());
        state.OfferedTables = Collection(
            {QStringLiteral("[Orders]"), QStringLiteral("[Customers]"), QStringLiteral("[Order Details]")});
    }

    FormState& Form() { return *state.Form; }
    void Load() { EXPECT_TRUE(LoadForm(state)); }

    /// Picks a row of a list as a click does.
    static void Pick(ListState& list, const QString& text) {
        const int index = static_cast<int>(list.Items().indexOf(text));
        ASSERT_GE(index, 0) << qPrintable(text);
        if (list.ListIndex() == index) {
            Q_EMIT list.Click();
        } else {
            list.SetListIndex(index);
        }
    }
    void ChooseTable(const QString& table) {
        Pick(Form().lstZPQTableSelection.Items, table);
        MoveTableRight(state);
    }
};

}  // namespace zephrin::test
