#include "flow/BuildTab.h"
#include "flow/Criteria.h"
#include "flow/FieldTab.h"
#include "flow/JoinTab.h"
#include "flow/Shell.h"
#include "flow/TableTab.h"
#include "platform/ado/providers/AllProviders.h"
#include "runstate/Dialect.h"
#include "savedquery/SaveQuery.h"

#include <QCoreApplication>
#include <QTextStream>

using namespace zephrin;

namespace {

/// Answers as somebody who wants the query saved under `Path`, and every grouped field put out.
class Answers : public Prompts {
 public:
    QString Path;

    BoxAnswer MsgBox(const QString& text, int style, const QString&) override {
        if ((style & BoxStyle::Critical) != 0 && (style & BoxStyle::YesNo) == 0) Failures << text;
        return BoxAnswer::Yes;
    }
    QString InputBox(const QString&, const QString&, const QString&) override { return {}; }
    QString ShowOpen(const FileChoice&) override { return {}; }
    QString ShowSave(const FileChoice&) override { return Path; }
    QString PromptNewConnection(const QString&) override { return {}; }
    void ShowAbout(const QString&, const QString&) override {}

    QStringList Failures;
};

/// One query in the making, by what a user of the wizard does.
class Query {
 public:
    explicit Query(const QStringList& tables) {
        const auto connection =
            QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=" ZEPHRIN_SHOP_DB);
        const ConnectionErrors errors = OpenDatabaseConnection(state, connection, 60, 60, {}, {});
        if (!errors.IsEmpty()) answers->Failures << errors.Description();
        for (state.rsSchemaTables->MoveFirst(); !state.rsSchemaTables->Eof();
             state.rsSchemaTables->MoveNext())
            if (!state.rsSchemaTables->Text(u"Table_Type").startsWith(u"SYSTEM"))
                state.OfferedTables.Add(u'[' + state.rsSchemaTables->Text(u"TABLE_NAME") + u']');
        LoadForm(state);
        for (const QString& table : tables) {
            Pick(form().lstZPQTableSelection.Items, table);
            MoveTableRight(state);
        }
    }

    void Join(const QString& left, const QString& right, const QString& field) {
        SelectTab(state, WizardTab::Joins);
        Pick(form().cmbJoinTables[0].Items, left);
        Pick(form().cmbJoinTables[1].Items, right);
        LockClicked(state);
        Pick(form().lstJoinFields[0].Items, left + u'.' + field);
        Pick(form().lstJoinFields[1].Items, right + u'.' + field);
        AddJoin(state);
    }

    void PutOut(const QStringList& fields) {
        SelectTab(state, WizardTab::Fields);
        for (const QString& field : fields) {
            Pick(form().lstZPQFieldFrom.Items, field);
            MoveFieldRight(state);
        }
    }

    /// Commits `field` `operation` `value` in a mode: 0 Where, 1 Group, 2 Order. `join` is 0 for AND, 1 for
    /// OR.
    void Commit(int mode, const QString& field, const QString& operation, const QString& value = {},
                int join = 0) {
        SelectTab(state, WizardTab::Build);
        ChooseQueryMode(state, mode);
        const auto& keys = form().SelectedFieldKeys;
        for (size_t row = 0; row < keys.size(); ++row)
            if (keys[row].Key == field) form().lstSelectedFields.Items.SetListIndex(static_cast<int>(row));
        Pick(form().lstOperands.Items, operation);
        ValueTyped(state, 0, value);
        form().optAndOr.Selected = join;
        CommitEntry(state);
    }

    /// What went wrong on the way, or nothing.
    QStringList Save(const QString& path) {
        answers->Path = path;
        // The build removes what it makes anew, so there is nothing to be asked about.
        if (SaveQuery(state) != SaveOutcome::Saved) answers->Failures << state.Form->StatusText;
        state.SharedConnection().Execute(form().txtSQL.Text);
        return answers->Failures;
    }

 private:
    FormState& form() { return *state.Form; }

    void Pick(ListState& list, const QString& text) {
        const auto row = static_cast<int>(list.Items().indexOf(text));
        if (row < 0) answers->Failures << QStringLiteral("nothing is called ") + text;
        list.SetListIndex(-1);
        list.SetListIndex(row);
    }

    std::shared_ptr<Answers> answers = std::make_shared<Answers>();
    ZPGGlobalDeclarations state{ado::providers::AllProviders(), answers};
};

QStringList OrdersInThreeCities(const QString& path) {
    const auto orders = QStringLiteral("[Orders]"), customers = QStringLiteral("[Customers]");
    const auto city = QStringLiteral("[Customers].[City]");
    Query query({orders, customers});
    query.Join(orders, customers, QStringLiteral("[CustomerID]"));
    query.PutOut({QStringLiteral("[Orders].[OrderID]"), QStringLiteral("[Orders].[Order Date]"),
                  QStringLiteral("[Customers].[Customer Name]"), city, QStringLiteral("[Orders].[Freight]")});
    query.Commit(0, city, QStringLiteral("="), QStringLiteral("Wien"));
    query.Commit(0, city, QStringLiteral("="), QStringLiteral("Zürich"), 1);
    query.Commit(0, city, QStringLiteral("="), QStringLiteral("Malmö"), 1);
    query.Commit(2, QStringLiteral("[Orders].[Freight]"), QStringLiteral("DESC"));
    return query.Save(path);
}

QStringList FreightByShipper(const QString& path) {
    const auto orders = QStringLiteral("[Orders]"), shippers = QStringLiteral("[Shippers]");
    const auto freight = QStringLiteral("[Orders].[Freight]");
    Query query({orders, shippers});
    query.Join(orders, shippers, QStringLiteral("[ShipperID]"));
    query.PutOut({QStringLiteral("[Shippers].[Company Name]"), freight});
    query.Commit(1, QStringLiteral("[Shippers].[Company Name]"), QStringLiteral("GROUP BY"));
    query.Commit(1, freight, QStringLiteral("SUM"));
    query.Commit(1, freight, QStringLiteral("COUNT"));
    return query.Save(path);
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QString folder = application.arguments().value(1, QStringLiteral("."));
    try {
        const QStringList failures =
            OrdersInThreeCities(folder + QStringLiteral("/OrdersInThreeCities.zpb")) +
            FreightByShipper(folder + QStringLiteral("/FreightByShipper.zpb"));
        for (const QString& failure : failures) QTextStream(stderr) << failure << '\n';
        return failures.isEmpty() ? 0 : 1;
    } catch (const ado::Error& error) {
        QTextStream(stderr) << error.Description() << '\n';
        return 1;
    }
}
