#include "sqlgen/CommitCriterion.h"

#include "sqlgen/CriteriaRows.h"
#include "sqlgen/CriterionText.h"
#include "sqlgen/WhereClause.h"
#include "sqlgen/WorkingRows.h"

namespace zephrin {

namespace {

/// One commit on its way through the sheet.
class Commit {
 public:
    Commit(ado::Recordset& criteria, int column, const CriteriaOperator& entry, bool joinsByOr)
        : sheet(criteria), field(column), distributes(entry.Distributes), byOr(joinsByOr) {}

    /// Writes the fragment. Throws, with no row left behind that it made, when a cell can't hold it.
    void Write(const QString& fragment) {
        ChooseRow();
        WriteOwnRow(fragment);
        if (!byOr) Distribute(fragment);
    }

    bool RowWasAdded() const { return rowWasAdded; }
    const QString& CellText() const { return cellText; }

 private:
    /// AND goes on in the last row, OR begins a new one. The first row of all counts as no added one.
    void ChooseRow() {
        rowWasAdded = byOr && sheet.RecordCount() > 0;
        rowIsNew = rowWasAdded || sheet.RecordCount() == 0;
        if (rowIsNew) {
            sheet.AddNew();
        } else {
            sheet.MoveLast();
        }
    }

    void WriteOwnRow(const QString& fragment) {
        cellText = byOr ? fragment : Joined(sheet.Text(field), fragment);
        try {
            sheet.SetValue(field, cellText);
        } catch (const ado::Error&) {
            if (rowIsNew) sheet.CancelUpdate();
            throw;
        }
        sheet.Update();
    }

    /// An AND has to hold in the other alternatives too: where the field has no cell yet, and, for an
    /// exclusion, everywhere. An emptied cell is not the same as none.
    void Distribute(const QString& fragment) {
        for (qint64 row = sheet.RecordCount() - 2; row >= 0; --row)
            if (distributes || sheet.IsNullAt(row, field))
                sheet.SetValueAt(row, field, Joined(sheet.TextAt(row, field), fragment));
    }

    static QString Joined(const QString& cell, const QString& fragment) {
        return cell.isEmpty() ? fragment : cell + QStringLiteral(" AND ") + fragment;
    }

    ado::Recordset& sheet;
    int field;
    bool distributes;
    bool byOr;
    bool rowWasAdded = false;
    bool rowIsNew = false;
    QString cellText;
};

void DeleteRow(ado::Recordset& sheet, qint64 row) {
    sheet.SetAbsolutePosition(row + 1);  // Counts from 1.
    sheet.Delete();
}

void RemoveRepeatedRows(ado::Recordset& sheet) {
    const std::vector<int> fields = AllFields(sheet);
    std::vector<CriteriaRow> rows;
    for (qint64 row = 0; row < sheet.RecordCount(); ++row)
        rows.push_back(ReadCriteriaRow(sheet, row, fields));
    const std::vector<std::size_t> repeated = RepeatedRows(rows);
    for (auto row = repeated.rbegin(); row != repeated.rend(); ++row)
        DeleteRow(sheet, static_cast<qint64>(*row));
}

/// Adds each row once more with `cellText` in `field`: the alternatives of a field multiply out over the
/// other fields.
void RebuildOrRows(ado::Recordset& sheet, int field, const QString& cellText) {
    const std::vector<int> fields = AllFields(sheet);
    const qint64 before = sheet.RecordCount();
    for (qint64 row = 0; row < before; ++row) {
        const CriteriaRow cells = ReadCriteriaRow(sheet, row, fields);
        sheet.AddNew();
        for (const Criterion& cell : cells)
            if (cell.Field != field) sheet.SetValue(cell.Field, cell.Text);
        sheet.SetValue(field, cellText);
        sheet.Update();
    }
    RemoveRepeatedRows(sheet);
    sheet.MoveLast();
}

void WriteCriterion(ZPGGlobalDeclarations& state, const CriteriaOperator& entry) {
    ado::Recordset& sheet = *state.rsWhere;
    const int field = sheet.FieldIndex(state.Form->CriteriaField);
    if (field < 0) return;
    Commit commit(sheet, field, entry, state.Form->optAndOr.Selected == 1);
    commit.Write(CriterionText(state, entry));
    if (commit.RowWasAdded() && state.Form->FieldHasCriteria > 0) {
        // The field has a criterion already: its new row was only a place to write in.
        DeleteRow(sheet, sheet.RecordCount() - 1);
        RebuildOrRows(sheet, field, commit.CellText());
    }
    BuildWhereClause(state);
    BuildHavingClause(state);
}

}  // namespace

void CommitCriterion(ZPGGlobalDeclarations& state) {
    const CriteriaOperator* entry = FindCriteriaOperator(state.Form->lstOperands.Items.Text());
    if (!entry || !state.rsWhere || !state.rsWhere->IsOpen()) return;
    state.Form->Pointer = MousePointer::Hourglass;
    try {
        WriteCriterion(state, *entry);
    } catch (const ado::Error&) {
        // A cell refused its text: the rest of the commit is left undone, and nobody is told.
    }
    state.Form->Pointer = MousePointer::Default;
}

FieldParts SplitField(const ZPGGlobalDeclarations& state, const QString& field) {
    const qsizetype dot = field.indexOf(u'.');
    const auto wrapped = [&](const QString& name) { return state.gDelimOpen + name + state.gDelimClose; };
    if (dot < 0) return {QString(), wrapped(field)};
    // The delimiters around both names are one character each.
    const QString bareTable = field.mid(1, std::max<qsizetype>(dot - 2, 0));
    const QString bareField = field.mid(dot + 2, std::max<qsizetype>(field.size() - dot - 3, 0));
    return {wrapped(bareTable), wrapped(bareField)};
}

}  // namespace zephrin
