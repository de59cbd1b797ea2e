#include "sqlgen/CommitCriterion.h"

#include "sqlgen/CriteriaRows.h"
#include "sqlgen/CriterionText.h"
#include "sqlgen/WhereClause.h"

#include <zephrin/ado/Error.h>

#include <algorithm>

namespace zephrin {

namespace {

QString Joined(const QString& cell, const QString& fragment) {
    return cell.isEmpty() ? fragment : cell + QStringLiteral(" AND ") + fragment;
}

/// What a commit writes into one row of the sheet.
struct CellWrite {
    qint64 Row;
    QString Text;
};

/// The cells that the fragment goes into, its own row first. AND goes on in the last row and has to hold in
/// the other alternatives too: where the field has no cell yet, and, for an exclusion, everywhere. An emptied
/// cell is not the same as none. OR begins a row of its own.
std::vector<CellWrite> PlanWrites(const ado::Recordset& sheet, int field, const CriteriaOperator& entry,
                                  bool byOr, const QString& fragment) {
    const qint64 rows = sheet.RecordCount();
    if (byOr || rows == 0) return {{rows, fragment}};
    std::vector<CellWrite> writes;
    for (qint64 row = rows - 1; row >= 0; --row)
        if (row == rows - 1 || entry.Distributes || sheet.IsNullAt(row, field))
            writes.push_back({row, Joined(sheet.TextAt(row, field), fragment)});
    return writes;
}

/// All or nothing: one text that is too long, and the sheet stays as it is.
bool Fits(const ado::Recordset& sheet, int field, const std::vector<CellWrite>& writes) {
    return std::all_of(writes.begin(), writes.end(),
                       [size = sheet.FieldAt(field).DefinedSize](const CellWrite& write) {
                           return write.Text.size() <= size;
                       });
}

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

void WriteCells(ado::Recordset& sheet, int field, const std::vector<CellWrite>& writes) {
    if (writes.front().Row == sheet.RecordCount()) {
        sheet.AddNew();
        sheet.Update();
    } else {
        sheet.MoveLast();
    }
    for (const CellWrite& write : writes) sheet.SetValueAt(write.Row, field, write.Text);
}

CommitOutcome WriteCriterion(ZPGGlobalDeclarations& state, const CriteriaOperator& entry) {
    ado::Recordset& sheet = *state.rsWhere;
    const int field = sheet.FieldIndex(state.Form->CriteriaField);
    if (field < 0) return CommitOutcome::Failed;
    const bool byOr = state.Form->optAndOr.Selected == 1;
    // The first row of all is no alternative to anything.
    const bool addsAlternative = byOr && sheet.RecordCount() > 0;
    const QString delimiterBefore = state.Form->ValueDelimiter;
    const std::vector<CellWrite> writes = PlanWrites(sheet, field, entry, byOr, CriterionText(state, entry));
    if (!Fits(sheet, field, writes)) {
        state.Form->ValueDelimiter = delimiterBefore;
        return CommitOutcome::TooLong;
    }
    if (addsAlternative && state.Form->FieldHasCriteria > 0) {
        RebuildOrRows(sheet, field, writes.front().Text);
    } else {
        WriteCells(sheet, field, writes);
    }
    BuildWhereClause(state);
    BuildHavingClause(state);
    return CommitOutcome::Written;
}

}  // namespace

CommitOutcome CommitCriterion(ZPGGlobalDeclarations& state) {
    const CriteriaOperator* entry = FindCriteriaOperator(state.Form->lstOperands.Items.Text());
    if (!entry || !state.rsWhere || !state.rsWhere->IsOpen()) return CommitOutcome::Failed;
    state.Form->Pointer = MousePointer::Hourglass;
    CommitOutcome outcome = CommitOutcome::Failed;
    try {
        outcome = WriteCriterion(state, *entry);
    } catch (const ado::Error& error) {
        if (error.Number() == ado::ErrorNumber::OperationCancelled) throw;
        // A sheet that can't be written, as from a damaged file: the rest of the commit is left undone.
    }
    state.Form->Pointer = MousePointer::Default;
    return outcome;
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
