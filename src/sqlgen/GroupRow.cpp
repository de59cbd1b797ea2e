#include "sqlgen/GroupRow.h"

#include "sqlgen/Aliases.h"
#include "sqlgen/WorkingRows.h"

#include <algorithm>

namespace zephrin {

namespace {

/// The choice of Group mode, with the texts that follow from it.
struct GroupChoice {
    QString Key;
    QString Operator;
    QString Expression;
    /// Empty for plain grouping.
    QString Alias;
};

/// The field's name as aliases have it: without the table and the delimiters, and without its first blank.
QString AliasName(const ZPGGlobalDeclarations& state, const QString& shown) {
    // Two characters behind the first "."; without one, from the second character of the whole on.
    QString name = shown.mid(shown.indexOf(u'.') + 2);
    name.remove(state.gDelimOpen);
    name.remove(state.gDelimClose);
    const qsizetype blank = name.indexOf(u' ');
    return blank < 0 ? name : name.remove(blank, 1);
}

GroupChoice ReadChoice(const ZPGGlobalDeclarations& state) {
    const FormState& form = *state.Form;
    GroupChoice choice{SelectedFieldKey(form).Key, form.lstOperands.Items.Text(), {}, {}};
    const QString name = AliasName(state, form.lstSelectedFields.Items.Text());
    const qsizetype distinct = choice.Operator.indexOf(QLatin1String("DISTINCT"));
    if (choice.Operator == QLatin1String("GROUP BY")) {
        choice.Expression = choice.Key;
    } else if (distinct > 0) {
        const QString aggregate = choice.Operator.left(distinct - 1);
        const QString word = choice.Operator.mid(distinct);
        choice.Expression = aggregate + u'(' + word + u' ' + choice.Key + u')';
        choice.Alias = aggregate + word + QStringLiteral("OF") + name;
    } else {
        choice.Expression = choice.Operator + u'(' + choice.Key + u')';
        choice.Alias = choice.Operator + QStringLiteral("OF") + name;
    }
    return choice;
}

bool StandsAlready(const ZPGGlobalDeclarations& state, const GroupChoice& choice) {
    const std::vector<GroupRow> rows = GroupRows(state);
    return std::any_of(rows.begin(), rows.end(),
                       [&](const GroupRow& row) { return row.GroupBy == choice.Expression; });
}

bool AskForOutput(const ZPGGlobalDeclarations& state, const QString& listedOperator) {
    const QString shown = state.Form->lstSelectedFields.Items.Text();
    const QString question =
        ResString(state, 159) + u' ' + listedOperator + u'(' + shown + u')' + ResString(state, 160);
    return state.UserPrompts->MsgBox(question, BoxStyle::Question + BoxStyle::YesNo,
                                     state.Options.gRunTimeCaption) == BoxAnswer::Yes;
}

void WriteRow(ado::Recordset& groups, const GroupChoice& choice, bool output) {
    groups.SetValue(u"OutputYes/No", output ? QStringLiteral("YES") : QStringLiteral("NO"));
    groups.SetValue(u"FieldName", choice.Key);
    groups.SetValue(u"GroupBy", choice.Expression);
    if (!choice.Alias.isEmpty()) groups.SetValue(u"FieldAlias", choice.Alias);
    groups.Update();
}

/// Writes what `write` writes into the row in hand; one that can't be written whole is taken away again.
template <typename Write>
RowOutcome WriteOrRemove(ado::Recordset& recordset, Write write) {
    try {
        write();
        return RowOutcome::Added;
    } catch (const ado::Error&) {
        const qint64 rows = recordset.RecordCount();
        recordset.CancelUpdate();
        // A row that somebody moved away from stands as if it were whole.
        if (recordset.RecordCount() == rows) recordset.Delete();
        return RowOutcome::TooLong;
    }
}

void AddAlias(ado::Recordset& aliases, const GroupChoice& choice) {
    BeginRow(aliases);
    WriteOrRemove(aliases, [&] {
        aliases.SetValue(u"FieldName", choice.Expression);
        aliases.SetValue(u"Alias", choice.Alias);
        aliases.SetValue(u"RecordsetType", QStringLiteral("rsGroupBy"));
        aliases.Update();
    });
}

/// Stands on the row that was begun and not yet written, or goes there; false where there is none any more.
bool FindBegunRow(ado::Recordset& groups) {
    const auto isBegun = [&groups] {
        return groups.Text(u"FieldName").isEmpty() && groups.Text(u"GroupBy").isEmpty();
    };
    if (!groups.IsOpen() || groups.RecordCount() == 0) return false;
    if (groups.AbsolutePosition() > 0 && isBegun()) return true;
    for (qint64 row = groups.RecordCount(); row > 0; --row) {
        groups.SetAbsolutePosition(row);
        if (isBegun()) return true;
    }
    return false;
}

}  // namespace

FormState::FieldKey SelectedFieldKey(const FormState& form) {
    const int index = form.lstSelectedFields.Items.ListIndex();
    if (index < 0 || static_cast<std::size_t>(index) >= form.SelectedFieldKeys.size()) return {};
    return form.SelectedFieldKeys[static_cast<std::size_t>(index)];
}

RowOutcome AddGroupRow(ZPGGlobalDeclarations& state) {
    const GroupChoice choice = ReadChoice(state);
    if (choice.Key.isEmpty() || choice.Operator.isEmpty() || !state.rsGroupBy) return RowOutcome::Standing;
    if (StandsAlready(state, choice)) return RowOutcome::Standing;
    if (AliasIsTaken(state, choice.Alias)) {
        TellTakenAlias(state);
        return RowOutcome::TakenAlias;
    }
    const ado::RecordsetPtr groups = state.rsGroupBy;
    const int showing = state.Showing;
    // The row stands, still empty, while the question is asked.
    BeginRow(*groups);
    const bool output = AskForOutput(state, choice.Operator);
    // A host's box may let the user go on: the rows can be others by now, be moved in, or closed.
    if (state.Showing != showing || state.rsGroupBy != groups || !FindBegunRow(*groups))
        return RowOutcome::Standing;
    return WriteOrRemove(*groups, [&] {
        WriteRow(*groups, choice, output);
        if (!choice.Alias.isEmpty() && state.rsAlias) AddAlias(*state.rsAlias, choice);
    });
}

RowOutcome AddOrderRow(ZPGGlobalDeclarations& state) {
    const QString key = SelectedFieldKey(*state.Form).Key;
    if (key.isEmpty() || !state.rsOrderBy) return RowOutcome::Standing;
    ado::Recordset& orders = *state.rsOrderBy;
    BeginRow(orders);
    return WriteOrRemove(orders, [&] {
        orders.SetValue(u"FieldName", key);
        orders.SetValue(u"OrderBy", QString(key + u' ' + state.Form->lstOperands.Items.Text()));
        orders.Update();
    });
}

}  // namespace zephrin
