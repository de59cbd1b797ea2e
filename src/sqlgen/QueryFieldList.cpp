// The list of the build-query tab, filled for the mode that the tab is in.

#include "sqlgen/SelectClause.h"
#include "sqlgen/WorkingRows.h"

namespace zephrin {

namespace {

/// Collects the rows of lstSelectedFields with what each one stands for, and shows them at once.
class QueryFields {
 public:
    explicit QueryFields(FormState& shown) : form(shown) {}

    void Add(const QString& shown, const QString& key, const QString& column) {
        texts << shown;
        meanings << key;
        keys.push_back({key, column});
    }
    /// Every field, without its table: same-named fields of two tables look the same.
    void AddFields(const Collection& fields) {
        for (const QString& field : fields) Add(field.mid(field.indexOf(u'.') + 1), field, field);
    }
    void Show() {
        form.lstSelectedFields.Items.Clear();
        form.lstSelectedFields.Items.AddItems(texts, meanings);
        form.SelectedFieldKeys = std::move(keys);
    }

 private:
    FormState& form;
    QStringList texts, meanings;
    std::vector<FormState::FieldKey> keys;
};

}  // namespace

void RefreshSelectedFieldList(ZPGGlobalDeclarations& state) {
    QueryFields list(*state.Form);
    list.AddFields(state.colFields);
    // An aggregate can't be grouped again.
    for (const CalcRow& row : CalcRows(state))
        if (!HoldsAggregateCall(row.CalcField, Qt::CaseInsensitive))
            list.Add(row.Alias, row.CalcField, row.Alias);
    list.Show();
    ReturnToFirst(state.rsCalcFields);
}

void FillQueryFieldList(ZPGGlobalDeclarations& state) {
    if (state.Form->optQuery.Selected == 1) return;
    QueryFields list(*state.Form);
    list.AddFields(state.colFields);
    for (const GroupRow& row : GroupRows(state))
        if (!row.FieldName.isEmpty() && !row.FieldAlias.isEmpty())
            list.Add(row.FieldAlias, row.GroupBy, row.FieldAlias);
    for (const CalcRow& row : CalcRows(state)) list.Add(row.CalcField, row.CalcField, row.Alias);
    list.Show();
}

}  // namespace zephrin
