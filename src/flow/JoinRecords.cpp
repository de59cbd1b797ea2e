#include "flow/JoinRecords.h"

#include "sqlgen/WorkingRows.h"

namespace zephrin {

namespace {

QString JoinWords(const QString& type) {
    if (type == QLatin1String("=")) return QStringLiteral("INNER JOIN");
    if (type == QLatin1String(">=")) return QStringLiteral("LEFT OUTER JOIN");
    return QStringLiteral("FULL OUTER JOIN");
}

/// The texts go crosswise: the field into the column of the table, and the other way round. Files have them
/// so, and only their number is ever read: a row means that the lock has a join already.
void AddFieldUse(ado::Recordset& used, const QString& table, const QString& field) {
    BeginRow(used);
    used.SetValue(u"TableName", field);
    used.SetValue(u"FieldName", table);
    used.Update();
}

void AddTableUse(const ado::RecordsetPtr& used, const QString& table) {
    if (ColumnTexts(used, QLatin1String("TableName")).contains(table)) return;
    BeginRow(*used);
    used->SetValue(u"TableName", table);
    used->Update();
}

/// Sets `Visable` of the rows whose table `which` names; of all rows for an empty list.
void SetVisable(const ado::RecordsetPtr& joinTable, const QStringList& which, bool visable) {
    const QStringList tables = ColumnTexts(joinTable, QLatin1String("TableName"));
    if (tables.isEmpty()) return;
    const int field = joinTable->FieldIndex(u"Visable");
    for (qsizetype row = 0; row < tables.size(); ++row)
        if (which.isEmpty() || which.contains(tables[row])) joinTable->SetValueAt(row, field, visable);
    joinTable->MoveFirst();
}

}  // namespace

void AddJoinRow(ZPGGlobalDeclarations& state) {
    const FormState& form = *state.Form;
    ado::Recordset& joins = *state.rsJoins;
    const bool isFirst = !HasRows(state.rsJoins);
    BeginRow(joins);
    if (HasRows(state.rsJoinFieldsUsed)) {
        joins.SetValue(u"TableTo", QStringLiteral("AND"));
    } else {
        if (isFirst) joins.SetValue(u"TableFrom", form.cmbJoinTables[0].Text);
        joins.SetValue(u"Join", JoinWords(form.cmbJoinType.Text));
        joins.SetValue(u"TableTo", QString(form.cmbJoinTables[1].Text + QStringLiteral(" ON")));
    }
    joins.SetValue(u"FieldFrom", form.lstJoinFields[0].Items.Text());
    joins.SetValue(u"Compare", QStringLiteral("="));
    joins.SetValue(u"FieldTo", form.lstJoinFields[1].Items.Text());
    joins.Update();
    joins.MoveFirst();
}

void RecordJoinUse(ZPGGlobalDeclarations& state) {
    const FormState& form = *state.Form;
    QStringList tables;
    for (const std::size_t side : {0U, 1U}) {
        const QString& table = form.cmbJoinTables[side].Text;
        AddFieldUse(*state.rsJoinFieldsUsed, table, form.lstJoinFields[side].Items.Text());
        AddTableUse(state.rsJoinTablesUsed, table);
        tables << table;
    }
    SetVisable(state.rsJoinTable, tables, false);
}

void OfferJoinTable(ado::Recordset& joinTable, const QString& table) {
    BeginRow(joinTable);
    joinTable.SetValue(u"TableName", table);
    joinTable.SetValue(u"Visable", true);
    joinTable.Update();
}

QStringList FreeJoinTables(const ZPGGlobalDeclarations& state) {
    const QStringList tables = ColumnTexts(state.rsJoinTable, QLatin1String("TableName"));
    if (tables.isEmpty()) return {};
    const int visable = state.rsJoinTable->FieldIndex(u"Visable");
    QStringList freeTables;
    for (qsizetype row = 0; row < tables.size(); ++row)
        if (state.rsJoinTable->ValueAt(row, visable).toBool()) freeTables << tables[row];
    return freeTables;
}

void FreeAllJoinTables(ZPGGlobalDeclarations& state) {
    SetVisable(state.rsJoinTable, {}, true);
    DeleteAllRows(state.rsJoinTablesUsed);
}

}  // namespace zephrin
