#include "sqlgen/WhereClause.h"

#include "sqlgen/CriteriaRows.h"
#include "sqlgen/SelectClause.h"
#include "sqlgen/TokenScan.h"
#include "sqlgen/WorkingRows.h"

#include <QHash>
#include <QSet>

namespace zephrin {

namespace {

/// What the columns of the sheet stand for: the fields behind aliases, and which of them are aggregates.
class ColumnNames {
 public:
    explicit ColumnNames(const ZPGGlobalDeclarations& state) {
        for (const AliasRow& row : AliasRows(state)) {
            last.insert(row.Alias, row.FieldName);
            if (!first.contains(row.Alias)) first.insert(row.Alias, row.FieldName);
        }
        for (const GroupRow& row : GroupRows(state)) {
            if (row.FieldAlias.isEmpty()) aggregates.insert(row.FieldName);
            aggregates.insert(row.GroupBy);
        }
        for (const CalcRow& row : CalcRows(state))
            if (IsAggregateExpression(row.CalcField)) aggregates.insert(row.CalcField);
    }
    /// The name that is written; of several rows of one alias the first counts.
    QString Written(const QString& column) const { return first.value(column, column); }
    /// What is looked up among groups and calculated fields; of several rows of one alias the last counts.
    bool IsAggregate(const QString& column) const { return aggregates.contains(last.value(column, column)); }

 private:
    QHash<QString, QString> first, last;
    QSet<QString> aggregates;
};

/// The rows of the sheet cut down to `fields`, without those that hold nothing there, each different one
/// once.
std::vector<CriteriaRow> DifferentRows(const ado::Recordset& sheet, const std::vector<int>& fields) {
    std::vector<CriteriaRow> rows;
    for (qint64 at = 0; at < sheet.RecordCount(); ++at) {
        CriteriaRow row = ReadCriteriaRow(sheet, at, fields);
        if (!row.empty()) rows.push_back(std::move(row));
    }
    const std::vector<std::size_t> repeated = RepeatedRows(rows);
    for (auto at = repeated.rbegin(); at != repeated.rend(); ++at)
        rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(*at));
    return rows;
}

/// Appends the cell with its name, without the blanks that it would begin with.
void AppendTrimmed(QString& text, const QString& cell, const QString& name, const QStringList& tokens) {
    const qsizetype begin = text.size();
    AppendNamed(text, cell, name, tokens);
    qsizetype end = begin;
    while (end < text.size() && text[end] == u' ') ++end;
    text.remove(begin, end - begin);
}

/// Cells of a row are joined by AND and rows by OR, with no parenthesis around a row. Empty without any cell.
QString CriteriaText(const ZPGGlobalDeclarations& state, const QString& word, bool aggregates) {
    if (!HasRows(state.rsWhere)) return {};
    const ado::Recordset& sheet = *state.rsWhere;
    const ColumnNames names(state);
    std::vector<int> fields;
    for (int field = 0; field < sheet.FieldCount(); ++field)
        if (names.IsAggregate(sheet.FieldAt(field).Name) == aggregates) fields.push_back(field);

    QString text;
    for (const CriteriaRow& row : DifferentRows(sheet, fields)) {
        text += text.isEmpty() ? word : QStringLiteral(" OR ");
        for (const Criterion& cell : row) {
            if (&cell != &row.front()) text += QStringLiteral(" AND ");
            text += u'(';
            AppendTrimmed(text, cell.Text, names.Written(sheet.FieldAt(cell.Field).Name),
                          state.Form->OperatorTokens);
            text += u')';
        }
    }
    return text;
}

}  // namespace

void BuildWhereClause(ZPGGlobalDeclarations& state) {
    state.WhereClause = CriteriaText(state, QStringLiteral("WHERE "), false);
    ReturnToFirst(state.rsCalcFields);
}

void BuildHavingClause(ZPGGlobalDeclarations& state) {
    state.HavingClause = CriteriaText(state, QStringLiteral("HAVING "), true);
    ReturnToFirst(state.rsCalcFields);
}

}  // namespace zephrin
