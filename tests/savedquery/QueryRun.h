#pragma once

#include "flow/BuildTab.h"
#include "flow/FieldTab.h"
#include "runstate/clsBridge.h"
#include "savedquery/OpenQuery.h"
#include "savedquery/QueryFamily.h"
#include "savedquery/SaveQuery.h"
#include "sqlgen/FromClause.h"
#include "sqlgen/Statement.h"
#include "sqlgen/WhereClause.h"
#include "support/WizardRun.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <random>

namespace zephrin::test {

/// Everything of a run that a query file brings back, as one text.
inline std::string Picture(const ZPGGlobalDeclarations& state) {
    QStringList lines;
    const auto list = [&](const char* name, const QStringList& items) {
        lines << QString::fromLatin1(name) + QStringLiteral(": ") + items.join(u'|');
    };
    const FormState& form = *state.Form;
    list("to", form.lstZPQTableTo.Items.Items());
    list("from", form.lstZPQTableSelection.Items.Items());
    list("removed", form.RemoveTables.Items());
    list("fields to", form.lstZPQFieldTo.Items.Items());
    list("fields from", form.lstZPQFieldFrom.Items.Items());
    list("tables", state.colTables.Items());
    list("fields", state.colFields.Items());
    list("output", state.colSelFields.Items());
    list("clauses", {state.SelectClause, state.FromClause, state.WhereClause, state.GroupByClause,
                     state.HavingClause, state.OrderByClause, form.JoinText, form.txtSQL.Text});
    list("options", {QString::number(form.chkDistinct.Value), QString::number(form.chkPercent.Value),
                     form.txtTopX.Text});
    for (const ado::RecordsetPtr* rows :
         {&state.rsAlias, &state.rsWhere, &state.rsGroupBy, &state.rsOrderBy, &state.rsCalcFields,
          &state.rsJoins, &state.rsJoinTable, &state.rsJoinTablesUsed}) {
        QStringList cells;
        for (qint64 row = 0; *rows && row < (*rows)->RecordCount(); ++row)
            for (int field = 0; field < (*rows)->FieldCount(); ++field) {
                const QVariant value = (*rows)->ValueAt(row, field);
                cells << (*rows)->FieldAt(field).Name + u'=' +
                             (value.isValid() ? value.toString() : QStringLiteral("Null"));
            }
        list("rows", cells);
    }
    return lines.join(u'\n').toStdString();
}

/// A run whose query is saved to and opened from a scratch folder.
struct QueryRun : WizardRun {
    QTemporaryDir folder;
    QStringList heard;

    QueryRun() {
        Load();
        QObject::connect(&state.Bridge(), &clsBridge::SaveQuery, [this](QString& name) {
            heard << QStringLiteral("saved ") + name;
            name = QStringLiteral("elsewhere");
        });
        QObject::connect(&state.Bridge(), &clsBridge::DeleteQuery, [this](QString& name) {
            heard << QStringLiteral("deleted ") + name;
            name = QStringLiteral("elsewhere");
        });
    }

    QString Path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
    QStringList Files() const {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    static void Add(const ado::RecordsetPtr& rows, const QStringList& texts) {
        rows->AddNew();
        for (int field = 0; field < texts.size(); ++field)
            if (!texts[field].isNull()) rows->SetValue(field, texts[field]);
        rows->Update();
    }

    /// Two joined tables, some of their fields, and the options: the form as a user leaves it on the
    /// build-query tab.
    void Choose() {
        ChooseTable(QStringLiteral("[Orders]"));
        ChooseTable(QStringLiteral("[Customers]"));
        SelectTab(state, WizardTab::Joins);
        const QString orders = QStringLiteral("[Orders].[CustomerID]"),
                      customers = QStringLiteral("[Customers].[CustomerID]");
        Add(state.rsJoins, {QStringLiteral("[Orders]"), QStringLiteral("INNER JOIN"),
                            QStringLiteral("[Customers] ON"), orders, QStringLiteral("="), customers});
        for (const auto& table : state.colTables) Add(state.rsJoinTablesUsed, {table});
        Form().lstZPQFieldTo.Items.AddItems({state.colFields.Item(1), state.colFields.Item(2)});
        Form().lstZPQFieldFrom.Items.Clear();
        Form().lstZPQFieldFrom.Items.AddItems(state.colFields.Items().mid(2));
        RegenerateAll();
    }

    /// Rows of every kind, at random.
    void Fill(std::mt19937& random) {
        const auto pick = [&] {
            return state.colFields.Item(
                1 + static_cast<int>(random() % static_cast<unsigned>(state.colFields.Count())));
        };
        for (auto row = random() % 4; row > 0; --row) {
            const QString field = pick(), alias = QStringLiteral("SUMOF%1").arg(row);
            const QString sum = QStringLiteral("SUM(%1)").arg(field);
            Add(state.rsGroupBy,
                {field, random() % 2 ? field : sum, random() % 2 ? alias : QString(), QStringLiteral("YES")});
            Add(state.rsAlias, {sum, alias, QStringLiteral("rsGroupBy")});
        }
        for (auto row = random() % 3; row > 0; --row)
            Add(state.rsCalcFields, {pick() + QStringLiteral(" & 'O''Brien \u4e2d'"),
                                     QStringLiteral("C%1").arg(row), QStringLiteral("YES")});
        for (auto row = random() % 3; row > 0; --row) {
            const QString field = pick();
            Add(state.rsOrderBy, {field, field + QStringLiteral(" DESC")});
        }
        SyncCriteriaColumns(state);
        for (auto row = random() % 4; row > 0; --row) {
            state.rsWhere->AddNew();
            state.rsWhere->SetValue(
                static_cast<int>(random() % static_cast<unsigned>(state.rsWhere->FieldCount())),
                QStringLiteral("> %1").arg(row));
            state.rsWhere->Update();
        }
        Form().chkDistinct.Value = static_cast<int>(random() % 2);
        Form().txtTopX.Text = random() % 2 ? QStringLiteral("10") : QString();
        TopXChanged(state);
        RegenerateAll();
    }

    void RegenerateAll() {
        RebuildJoinText(state);
        BuildSelFields(state);
        ShowSqlView(state);
    }

    SaveOutcome Save(const QString& path) {
        prompts->Paths = {path};
        return SaveQuery(state);
    }
};

/// A fresh run with no connection, as a host has it that was given a query's name.
struct FreshRun {
    std::shared_ptr<ScriptedPrompts> prompts = std::make_shared<ScriptedPrompts>();
    ZPGGlobalDeclarations state{ado::providers::AllProviders(), prompts};

    bool Load(const QString& path) {
        state.gOpenQuery = true;
        state.gQueryName = path;
        state.OpenSavedQuery = [](ZPGGlobalDeclarations& run) {
            return OpenSavedQuery(run, run.gQueryName) != OpenOutcome::Failed;
        };
        return LoadForm(state);
    }
};

}  // namespace zephrin::test
