#include "sqlgen/WorkingRows.h"

#include <array>

namespace zephrin {

namespace {

/// Reads `names.size()` columns of every row and hands them, in the order of `names`, to `take`.
template <std::size_t N, typename Take>
void ForEachRow(const ado::RecordsetPtr& recordset, const std::array<const char*, N>& names, Take take) {
    if (!HasRows(recordset)) return;
    std::array<int, N> fields{};
    for (std::size_t i = 0; i < N; ++i) fields[i] = recordset->FieldIndex(QString::fromLatin1(names[i]));
    const qint64 rows = recordset->RecordCount();
    for (qint64 row = 0; row < rows; ++row) {
        std::array<QString, N> texts;
        for (std::size_t i = 0; i < N; ++i)
            if (fields[i] >= 0) texts[i] = recordset->TextAt(row, fields[i]);
        take(texts);
    }
}

}  // namespace

std::vector<GroupRow> GroupRows(const ZPGGlobalDeclarations& state) {
    std::vector<GroupRow> rows;
    ForEachRow(state.rsGroupBy, std::array{"FieldName", "GroupBy", "FieldAlias", "OutputYes/No"},
               [&](const auto& text) {
                   rows.push_back({text[0], text[1], text[2], text[3]});
               });
    return rows;
}

std::vector<CalcRow> CalcRows(const ZPGGlobalDeclarations& state) {
    std::vector<CalcRow> rows;
    ForEachRow(state.rsCalcFields, std::array{"CalcField", "Alias", "OutputYes/No"}, [&](const auto& text) {
        rows.push_back({text[0], text[1], text[2]});
    });
    return rows;
}

std::vector<OrderRow> OrderRows(const ZPGGlobalDeclarations& state) {
    std::vector<OrderRow> rows;
    ForEachRow(state.rsOrderBy, std::array{"FieldName", "OrderBy"}, [&](const auto& text) {
        rows.push_back({text[0], text[1]});
    });
    return rows;
}

std::vector<AliasRow> AliasRows(const ZPGGlobalDeclarations& state) {
    std::vector<AliasRow> rows;
    ForEachRow(state.rsAlias, std::array{"FieldName", "Alias"}, [&](const auto& text) {
        rows.push_back({text[0], text[1]});
    });
    return rows;
}

std::vector<JoinRow> JoinRows(const ZPGGlobalDeclarations& state) {
    std::vector<JoinRow> rows;
    ForEachRow(state.rsJoins, std::array{"TableFrom", "Join", "TableTo", "FieldFrom", "Compare", "FieldTo"},
               [&](const auto& text) {
                   rows.push_back({text[0], text[1], text[2], text[3], text[4], text[5]});
               });
    return rows;
}

QStringList ColumnTexts(const ado::RecordsetPtr& recordset, QLatin1String column) {
    QStringList texts;
    ForEachRow(recordset, std::array{column.data()}, [&](const auto& text) { texts << text[0]; });
    return texts;
}

qint64 RowCount(const ado::RecordsetPtr& recordset) {
    return recordset ? recordset->RecordCount() : 0;
}

void ReturnToFirst(const ado::RecordsetPtr& recordset) {
    if (HasRows(recordset)) recordset->MoveFirst();
}

void MovePastEnd(const ado::RecordsetPtr& recordset) {
    if (!HasRows(recordset)) return;
    recordset->MoveLast();
    recordset->MoveNext();
}

void BeginRow(ado::Recordset& recordset) {
    if (!recordset.IsOpen()) recordset.Open();
    recordset.AddNew();
}

void DeleteAllRows(const ado::RecordsetPtr& recordset) {
    if (HasRows(recordset)) recordset->DeleteAll();
}

}  // namespace zephrin
