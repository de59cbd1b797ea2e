#pragma once

#include "platform/ado/providers/AllProviders.h"
#include "runstate/ZPGGlobalDeclarations.h"
#include "sqlgen/WhereClause.h"
#include "support/ScriptedPrompts.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <memory>
#include <ostream>

/// Makes texts readable in failures.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << qPrintable(text) << '"';
}

namespace zephrin::test {

/// A state with open working recordsets, whose rows a test writes by hand.
struct SqlState {
    std::shared_ptr<ScriptedPrompts> prompts = std::make_shared<ScriptedPrompts>();
    ZPGGlobalDeclarations state{ado::providers::AllProviders(), prompts};

    explicit SqlState(const char* dialect = "SQL Server") {
        state.gDatabaseType = QString::fromLatin1(dialect);
        state.gDelimOpen = QStringLiteral("[");
        state.gDelimClose = QStringLiteral("]");
        CreateWorkingRecordsets(state);
        state.Form->OperatorTokens =
            QStringLiteral("=,>,<,>=,<=,<>,LIKE,NOT LIKE,IS NULL,IS NOT NULL,BETWEEN").split(u',');
    }

    FormState& Form() { return *state.Form; }

    /// Adds a row to `rows`, column by column; a null text leaves its cell unwritten.
    static void Add(const ado::RecordsetPtr& rows, const QStringList& texts) {
        rows->AddNew();
        for (int i = 0; i < texts.size(); ++i)
            if (!texts[i].isNull()) rows->SetValue(i, texts[i]);
        rows->Update();
    }

    /// Chooses tables and fields as the first tabs leave them. Fields behind a "-" stay on the left.
    void Choose(const QStringList& tables, const QStringList& fields) {
        state.colTables = Collection(tables);
        Form().lstZPQTableTo.Items.AddItems(tables);
        for (QString field : fields) {
            const bool left = field.startsWith(u'-');
            if (left) field.remove(0, 1);
            state.colFields.Add(field);
            (left ? Form().lstZPQFieldFrom : Form().lstZPQFieldTo).Items.AddItem(field);
            if (!left) state.colSelFields.Add(field);
        }
        SyncCriteriaColumns(state);
    }

    /// Adds a row to the criteria sheet: texts such as "[T].[A]: = 1", by the name of the column.
    void AddCriteria(const QStringList& cells) {
        state.rsWhere->AddNew();
        for (const QString& cell : cells) {
            const qsizetype colon = cell.indexOf(u':');
            state.rsWhere->SetValue(cell.left(colon), cell.mid(colon + 2));
        }
        state.rsWhere->Update();
    }
};

}  // namespace zephrin::test
