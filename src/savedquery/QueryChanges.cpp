#include "savedquery/QueryChanges.h"

#include "savedquery/SaveQuery.h"
#include "sqlgen/WorkingRows.h"

namespace zephrin {

namespace {

void AddList(QStringList& lines, const QString& name, const QStringList& items) {
    if (!items.isEmpty()) lines << name << items;
}

/// The cells that hold something, by the names of their columns: criteria get and lose columns with the
/// tables.
void AddRows(QStringList& lines, const QString& name, const ado::RecordsetPtr& rows) {
    for (qint64 row = 0; row < RowCount(rows); ++row) {
        QStringList cells;
        for (int field = 0; field < rows->FieldCount(); ++field)
            if (const QString text = rows->TextAt(row, field); !text.isEmpty())
                cells << rows->FieldAt(field).Name + u'=' + text;
        AddList(lines, name, cells);
    }
}

}  // namespace

QStringList DescribeQuery(const ZPGGlobalDeclarations& state) {
    const FormState& form = *state.Form;
    QStringList lines;
    AddList(lines, QStringLiteral("tables"), form.lstZPQTableTo.Items.Items());
    AddList(lines, QStringLiteral("fields"), form.lstZPQFieldTo.Items.Items());
    if (form.chkDistinct.Value == 1) lines << QStringLiteral("distinct");
    if (form.chkPercent.Value == 1) lines << QStringLiteral("percent");
    if (!form.txtTopX.Text.isEmpty()) lines << QStringLiteral("top") << form.txtTopX.Text;
    AddRows(lines, QStringLiteral("join"), state.rsJoins);
    AddRows(lines, QStringLiteral("where"), state.rsWhere);
    AddRows(lines, QStringLiteral("group"), state.rsGroupBy);
    AddRows(lines, QStringLiteral("order"), state.rsOrderBy);
    AddRows(lines, QStringLiteral("calculated"), state.rsCalcFields);
    return lines;
}

void KeepQuery(ZPGGlobalDeclarations& state) {
    state.Form->KeptQuery = DescribeQuery(state);
}

bool MayLeaveQuery(ZPGGlobalDeclarations& state) {
    if (!state.Options.gAllowSaveDelete || DescribeQuery(state) == state.Form->KeptQuery) return true;
    const int showing = state.Showing;
    const BoxAnswer answer =
        state.UserPrompts->MsgBox(QStringLiteral("The query has changes that are not saved.\r\n"
                                                 "Do you want to save them before another query is opened ?"),
                                  BoxStyle::YesNoCancel + BoxStyle::Question, state.Form->Caption);
    if (state.Showing != showing || answer == BoxAnswer::Cancel) return false;
    if (answer != BoxAnswer::Yes) return true;
    // Who wanted to keep it and then didn't, by a cancelled dialog or a full disk, still has it in hand.
    return SaveQuery(state) == SaveOutcome::Saved && state.Showing == showing;
}

}  // namespace zephrin
