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

inline QStringList Split(const char* texts, QLatin1String separator) {
    return QString::fromLatin1(texts).split(separator, Qt::SkipEmptyParts);
}

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
    /// Adds rows written as "a|b; c|d"; a cell "-" stays unwritten.
    static void Add(const ado::RecordsetPtr& rows, const char* texts) {
        for (const QString& row : Split(texts, QLatin1String("; "))) {
            QStringList cells = row.split(u'|');
            for (QString& cell : cells)
                if (cell == QLatin1String("-")) cell = QString();
            Add(rows, cells);
        }
    }

    /// Chooses tables and fields as the first tabs leave them, separated by commas. Fields behind a "-" stay
    /// on the left.
    void Choose(const char* tables, const char* fields) {
        const QStringList chosen = Split(tables, QLatin1String(","));
        state.colTables = Collection(chosen);
        Form().lstZPQTableTo.Items.AddItems(chosen);
        for (QString field : Split(fields, QLatin1String(","))) {
            const bool left = field.startsWith(u'-');
            if (left) field.remove(0, 1);
            state.colFields.Add(field);
            (left ? Form().lstZPQFieldFrom : Form().lstZPQFieldTo).Items.AddItem(field);
            if (!left) state.colSelFields.Add(field);
        }
        SyncCriteriaColumns(state);
    }

    /// Adds rows to the criteria sheet, with cells by the name of their column: "A: = 1|B: > 2; A: = 3". A
    /// row "." has no cell.
    void AddCriteria(const char* rows) {
        for (const QString& row : Split(rows, QLatin1String("; "))) {
            state.rsWhere->AddNew();
            for (const QString& cell : row.split(u'|'))
                if (const qsizetype colon = cell.indexOf(u':'); colon > 0)
                    state.rsWhere->SetValue(cell.left(colon), cell.mid(colon + 2));
            state.rsWhere->Update();
        }
    }
};

}  // namespace zephrin::test
