#include "sqlgen/SelectClause.h"

#include "platform/text/Text.h"
#include "sqlgen/GroupByClause.h"
#include "sqlgen/WorkingRows.h"

#include <algorithm>
#include <array>

namespace zephrin {

namespace {

const QString Select = QStringLiteral("SELECT ");
const QString SelectDistinct = QStringLiteral("SELECT DISTINCT ");

QString TopPrefix(const FormState& form) {
    return form.TopClause.isEmpty() ? QString() : form.TopClause + u' ';
}

/// "SELECT " with the options that stand in front of the fields, and a blank behind.
QString SelectBase(const FormState& form) {
    return (form.chkDistinct.Value == 1 ? SelectDistinct : Select) + TopPrefix(form);
}

/// True while nothing but a base, with whichever options, stands in the clause.
bool IsAnyBase(const QString& clause, const QString& topClause) {
    return clause == Select || clause == SelectDistinct || clause == SelectDistinct + topClause + u' ' ||
           clause == Select + topClause + u' ';
}

/// Appends an item of the grouped form: the first one takes the TOP in front of it.
void AppendGrouped(QString& clause, const FormState& form, const QString& item) {
    clause += (clause == Select ? TopPrefix(form) : QStringLiteral(", ")) + item;
}

/// What a group row puts out; empty for one that names nothing.
QString GroupItem(const ZPGGlobalDeclarations& state, const GroupRow& row) {
    if (!row.FieldAlias.isEmpty()) return row.GroupBy + QStringLiteral(" AS ") + row.FieldAlias;
    if (!row.GroupBy.isEmpty()) return row.GroupBy;
    if (row.FieldName.isEmpty()) return {};
    const std::vector<AliasRow> aliases = AliasRows(state);
    const auto found = std::find_if(aliases.begin(), aliases.end(),
                                    [&](const AliasRow& alias) { return alias.FieldName == row.FieldName; });
    // Without an alias the item ends in a bare AS.
    return row.FieldName + QStringLiteral(" AS ") + (found == aliases.end() ? QString() : found->Alias);
}

void WriteGroups(ZPGGlobalDeclarations& state) {
    // A grouped query never says DISTINCT, whatever the box shows.
    state.SelectClause = Select;
    for (const GroupRow& row : GroupRows(state)) {
        if (row.Output.toUpper() != QLatin1String("YES")) continue;
        const QString item = GroupItem(state, row);
        if (!item.isEmpty()) AppendGrouped(state.SelectClause, *state.Form, item);
    }
    MovePastEnd(state.rsGroupBy);
}

void WriteFields(ZPGGlobalDeclarations& state) {
    const FormState& form = *state.Form;
    const bool someChosen = form.lstZPQFieldTo.Items.ListCount() > 0;
    const bool someLeft = form.lstZPQFieldFrom.Items.ListCount() > 0;
    state.SelectClause = SelectBase(form);
    if (someChosen ? !someLeft : !state.Options.gAllowFieldSelection) state.SelectClause += u'*';
    if (!someChosen || !someLeft) return;
    for (const QString& field : state.colSelFields)
        state.SelectClause +=
            IsAnyBase(state.SelectClause, form.TopClause) ? field : QStringLiteral(", ") + field;
}

void WriteCalculated(ZPGGlobalDeclarations& state) {
    QString& clause = state.SelectClause;
    for (const CalcRow& row : CalcRows(state)) {
        // This test, unlike that of the groups, is particular about capitals.
        if (row.Output != QLatin1String("YES")) continue;
        const QString item = row.CalcField + QStringLiteral(" AS ") + row.Alias;
        // A base with a TOP in it is none of these two, and so gets a comma in front of its first item.
        if (clause == Select || clause == SelectDistinct) {
            clause += TopPrefix(*state.Form) + item;
        } else {
            clause += QStringLiteral(", ") + item;
        }
    }
    MovePastEnd(state.rsCalcFields);
}

void WriteCalculatedAggregates(ZPGGlobalDeclarations& state) {
    // Not set back between rows: what follows the first aggregate is let through, aggregate or not.
    bool aggregateSeen = false;
    for (const CalcRow& row : CalcRows(state)) {
        if (HoldsAggregateCall(row.CalcField, Qt::CaseInsensitive)) aggregateSeen = true;
        if (aggregateSeen && row.Output == QLatin1String("YES"))
            AppendGrouped(state.SelectClause, *state.Form,
                          row.CalcField + QStringLiteral(" AS ") + row.Alias);
    }
    MovePastEnd(state.rsCalcFields);
}

bool HoldsAny(const QString& text, std::initializer_list<QLatin1String> words, Qt::CaseSensitivity cs) {
    return std::any_of(words.begin(), words.end(),
                       [&](QLatin1String word) { return text.contains(word, cs); });
}

}  // namespace

void RebuildTopClause(ZPGGlobalDeclarations& state) {
    FormState& form = *state.Form;
    const auto number = text::ToNumber(form.txtTopX.Text);
    if (!number) {
        form.txtTopX.Text.clear();
        form.TopClause.clear();
        return;
    }
    form.TopClause = QStringLiteral("TOP ") + form.txtTopX.Text;
    // A percentage above 100 is written as a plain number of rows, with the tick in place.
    if (form.chkPercent.Value == 1 && *number <= 100) form.TopClause += QStringLiteral(" PERCENT");
}

void BuildSelectClause(ZPGGlobalDeclarations& state) {
    if (state.Form->lstZPQTableTo.Items.ListCount() == 0 && state.Options.gAllowTableSelection) {
        state.SelectClause.clear();
    } else if (HasRows(state.rsGroupBy)) {
        WriteGroups(state);
        WriteCalculatedAggregates(state);
    } else {
        WriteFields(state);
        WriteCalculated(state);
    }
    BuildGroupByClause(state);
}

bool IsAggregateExpression(const QString& text) {
    return HoldsAggregateCall(text, Qt::CaseInsensitive) ||
           HoldsAny(text,
                    {QLatin1String("SUM DISTINCT("), QLatin1String("COUNT DISTINCT("),
                     QLatin1String("AVG DISTINCT("), QLatin1String("MIN DISTINCT("),
                     QLatin1String("MAX DISTINCT(")},
                    Qt::CaseInsensitive);
}

bool HoldsAggregateCall(const QString& text, Qt::CaseSensitivity cs) {
    return HoldsAny(text,
                    {QLatin1String("SUM("), QLatin1String("COUNT("), QLatin1String("AVG("),
                     QLatin1String("MIN("), QLatin1String("MAX("), QLatin1String("STDEV("),
                     QLatin1String("VAR("), QLatin1String("FIRST("), QLatin1String("LAST(")},
                    cs);
}

}  // namespace zephrin
