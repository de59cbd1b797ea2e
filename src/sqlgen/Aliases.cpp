#include "sqlgen/Aliases.h"

#include "sqlgen/Blanks.h"
#include "sqlgen/WorkingRows.h"

#include <algorithm>

namespace zephrin {

namespace {

/// What two spellings of one alias have in common.
QString Folded(const ZPGGlobalDeclarations& state, const QString& alias) {
    QString name = BlankTrimmed(alias);
    if (!state.gDelimOpen.isEmpty() && name.startsWith(state.gDelimOpen) && name.endsWith(state.gDelimClose))
        name = name.mid(state.gDelimOpen.size()).chopped(state.gDelimClose.size());
    return name.toCaseFolded();
}

QStringList AliasesInUse(const ZPGGlobalDeclarations& state) {
    return ColumnTexts(state.rsGroupBy, QLatin1String("FieldAlias")) +
           ColumnTexts(state.rsCalcFields, QLatin1String("Alias"));
}

/// The alias of a row of rsGroupBy or rsCalcFields, and what it stands for.
AliasRow AliasAt(const ado::Recordset& rows, qint64 row) {
    const bool group = rows.FieldIndex(u"FieldAlias") >= 0;
    return {rows.TextAt(row, rows.FieldIndex(group ? u"GroupBy" : u"CalcField")),
            rows.TextAt(row, rows.FieldIndex(group ? u"FieldAlias" : u"Alias"))};
}

}  // namespace

bool AliasIsTaken(const ZPGGlobalDeclarations& state, const QString& alias) {
    const QString folded = Folded(state, alias);
    const QStringList used = AliasesInUse(state);
    return !folded.isEmpty() && std::any_of(used.begin(), used.end(), [&](const QString& each) {
        return Folded(state, each) == folded;
    });
}

void TellTakenAlias(ZPGGlobalDeclarations& state) {
    state.UserPrompts->MsgBox(ResString(state, 175) + QStringLiteral("\r\n") + ResString(state, 176),
                              BoxStyle::Exclamation, state.Options.gRunTimeCaption);
}

void DeleteAlias(ZPGGlobalDeclarations& state, const QString& alias, const QString& expression) {
    const bool stillUsed = AliasesInUse(state).contains(alias);
    DeleteRows(state.rsAlias, [&](const ado::Recordset& aliases, qint64 row) {
        return aliases.TextAt(row, aliases.FieldIndex(u"Alias")) == alias &&
               (!stillUsed || aliases.TextAt(row, aliases.FieldIndex(u"FieldName")) == expression);
    });
}

void DeleteAliasedRows(ZPGGlobalDeclarations& state, const ado::RecordsetPtr& rows, const RowTest& goes) {
    std::vector<AliasRow> gone;
    DeleteRows(rows, [&](const ado::Recordset& all, qint64 row) {
        const bool deleted = goes(all, row);
        if (deleted) gone.push_back(AliasAt(all, row));
        return deleted;
    });
    for (const AliasRow& row : gone)
        if (!row.Alias.isEmpty()) DeleteAlias(state, row.Alias, row.FieldName);
}

void DeleteRows(const ado::RecordsetPtr& rows, const RowTest& goes) {
    if (!HasRows(rows)) return;
    // From the last row to the first, so that no deletion moves a row that is still to be looked at.
    for (qint64 row = rows->RecordCount() - 1; row >= 0; --row) {
        if (!goes(*rows, row)) continue;
        rows->SetAbsolutePosition(row + 1);  // Counts from 1.
        rows->Delete();
    }
    rows->MoveFirst();
}

}  // namespace zephrin
