#pragma once

#include "flow/BuildTab.h"
#include "flow/Criteria.h"
#include "flow/CriteriaGrid.h"
#include "flow/FieldTab.h"
#include "support/WizardRun.h"

namespace zephrin::test {

/// A run on the build-query tab, with the table [Orders] and all its fields put out.
struct BuildRun : WizardRun {
    explicit BuildRun(const QString& dialect = QStringLiteral("SQL Server")) : WizardRun(dialect) {
        Load();
        ChooseTable(QStringLiteral("[Orders]"));
        SelectTab(state, WizardTab::Fields);
        MoveAllFieldsRight(state);
        SelectTab(state, WizardTab::Build);
    }

    void PickField(const QString& shown) { Pick(Form().lstSelectedFields.Items, shown); }
    void PickOperator(const QString& listed) { Pick(Form().lstOperands.Items, listed); }

    /// Enters one criterion as a user does, and commits it.
    void Enter(const QString& shown, const QString& listed, const QString& value) {
        PickField(shown);
        PickOperator(listed);
        ValueTyped(state, 0, value);
        CommitEntry(state);
    }

    /// The statement in one line.
    QString Sql() {
        return QString(Form().txtSQL.Text).replace(QStringLiteral("\r\n"), QStringLiteral(" | "));
    }
};

}  // namespace zephrin::test
