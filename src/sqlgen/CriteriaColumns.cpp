// The shape of the criteria sheet: its columns follow the fields, the groups and the calculated fields.

#include "sqlgen/WhereClause.h"
#include "sqlgen/WorkingRows.h"

#include <zephrin/ado/Error.h>

#include <QSet>

namespace zephrin {

namespace {

constexpr int CriterionSize = 550;
constexpr int CriterionAttributes = ado::FieldUpdatable | ado::FieldMayBeNull;

/// Appends one criteria column after another. A name that stands already gets no second column.
class ColumnAppender {
 public:
    explicit ColumnAppender(ado::Recordset& target) : recordset(target) {}
    void Append(const QString& name) {
        const qsizetype before = names.size();
        names.insert(name.toCaseFolded());
        if (names.size() > before)
            recordset.Append(name, ado::DataType::VarChar, CriterionSize, CriterionAttributes);
    }

 private:
    ado::Recordset& recordset;
    QSet<QString> names;
};

void AppendColumns(const ZPGGlobalDeclarations& state, ado::Recordset& recordset) {
    ColumnAppender columns(recordset);
    for (const QString& field : state.colFields) columns.Append(field);
    for (const GroupRow& row : GroupRows(state))
        if (!row.FieldAlias.isEmpty()) columns.Append(row.FieldAlias);
    for (const CalcRow& row : CalcRows(state)) columns.Append(row.Alias);
}

/// Writes into the row in hand. A text that came in a wider column and is too long for this one is left out.
void WriteIfItFits(ado::Recordset& recordset, int field, const QString& text) {
    try {
        recordset.SetValue(field, text);
    } catch (const ado::Error&) {
        // The cell stays unwritten.
    }
}

bool RowHasText(const ado::Recordset& recordset, qint64 row) {
    for (int field = 0; field < recordset.FieldCount(); ++field)
        if (!recordset.IsNullAt(row, field) && !recordset.TextAt(row, field, 1).isEmpty()) return true;
    return false;
}

/// Copies the cells of a row that have a column in `to`, where each column finds its texts in `source`. A
/// cell without text stays unwritten.
void CarryRow(const ado::Recordset& from, qint64 row, const std::vector<int>& source, ado::Recordset& to) {
    to.AddNew();
    for (int i = 0; i < to.FieldCount(); ++i) {
        const int field = source[static_cast<std::size_t>(i)];
        if (field < 0 || from.IsNullAt(row, field)) continue;
        const QString text = from.TextAt(row, field);
        if (!text.isEmpty()) WriteIfItFits(to, i, text);
    }
    // A row that lost all of its conditions says nothing any more; as an alternative it would take in those
    // to come.
    if (RowHasText(from, row) && !RowHasText(to, to.RecordCount() - 1)) {
        to.CancelUpdate();
    } else {
        to.Update();
    }
}

/// Carries the rows over by the names of their columns.
void CarryRows(const ado::Recordset& from, ado::Recordset& to) {
    std::vector<int> source(static_cast<std::size_t>(to.FieldCount()));
    for (int i = 0; i < to.FieldCount(); ++i)
        source[static_cast<std::size_t>(i)] = from.FieldIndex(to.FieldAt(i).Name);
    for (qint64 row = 0; row < from.RecordCount(); ++row) CarryRow(from, row, source, to);
    to.MoveFirst();
}

void PurgeEmptyRows(const ado::RecordsetPtr& recordset) {
    if (!HasRows(recordset) || recordset->FieldCount() == 0) return;
    for (qint64 row = recordset->RecordCount() - 1; row >= 0; --row) {
        if (RowHasText(*recordset, row)) continue;
        recordset->SetAbsolutePosition(row + 1);  // Counts from 1.
        recordset->Delete();
    }
    recordset->MoveFirst();
}

}  // namespace

void SyncCriteriaColumns(ZPGGlobalDeclarations& state) {
    // No fields are known until a look-up succeeds. It may find again what the conditions are about.
    const bool hasColumns = state.rsWhere && state.rsWhere->IsOpen() && state.rsWhere->FieldCount() > 0;
    if (state.colFields.IsEmpty() && hasColumns) return;
    const auto shaped = std::make_shared<ado::Recordset>();
    AppendColumns(state, *shaped);
    shaped->Open();
    const ado::RecordsetPtr old = std::exchange(state.rsWhere, shaped);
    if (old) {
        if (HasRows(old)) CarryRows(*old, *shaped);
        if (state.Form->dgrSQL.DataSource == old) state.Form->dgrSQL.DataSource = shaped;
        if (old->IsOpen()) old->Close();
    }
    ReturnToFirst(state.rsCalcFields);
}

void PurgeEmptyCriteria(ZPGGlobalDeclarations& state) {
    PurgeEmptyRows(state.rsWhere);
    PurgeEmptyRows(state.rsHaving);
}

}  // namespace zephrin
