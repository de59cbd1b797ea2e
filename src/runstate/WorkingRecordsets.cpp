#include "runstate/ZPGGlobalDeclarations.h"

#include <initializer_list>

namespace zephrin {

namespace {

using ado::DataType;
using ado::Recordset;
using ado::RecordsetPtr;

struct Column {
    QString Name;
    DataType Type;
    int Size;
};

Column Text(const char16_t* name, int size = 8000) {
    return {QString::fromUtf16(name), DataType::VarChar, size};
}

Column Flag(const char16_t* name) {
    return {QString::fromUtf16(name), DataType::Boolean, 0};
}

/// A recordset of these columns, open and empty.
RecordsetPtr MakeRecordset(std::initializer_list<Column> columns,
                           int attributes = ado::FieldAttributesUnspecified) {
    auto recordset = std::make_shared<Recordset>();
    for (const Column& column : columns) recordset->Append(column.Name, column.Type, column.Size, attributes);
    recordset->Open();
    return recordset;
}

/// The aliases stay a recordset of their own over all showings, but never bring rows of an earlier one: the
/// rows they belong to are gone.
void PrepareAliases(RecordsetPtr& rsAlias) {
    if (!rsAlias || rsAlias->FieldCount() == 0) {
        rsAlias = MakeRecordset({Text(u"FieldName"), Text(u"Alias"), Text(u"RecordsetType")});
        return;
    }
    if (!rsAlias->IsOpen()) rsAlias->Open();
    rsAlias->DeleteAll();
}

void CloseAndRelease(RecordsetPtr& recordset) {
    if (recordset && recordset->IsOpen()) recordset->Close();
    recordset.reset();
}

}  // namespace

void CreateHostValues(ZPGGlobalDeclarations& state) {
    auto recordset = std::make_shared<Recordset>();
    for (int field = 0; field < 24; ++field)
        recordset->Append(QString::number(field), DataType::VarChar, 255);
    recordset->Open();
    state.rsHostValues = std::move(recordset);
}

void CreateWorkingRecordsets(ZPGGlobalDeclarations& state) {
    state.rsGroupBy =
        MakeRecordset({Text(u"FieldName"), Text(u"GroupBy"), Text(u"FieldAlias"), Text(u"OutputYes/No", 3)});
    state.rsOrderBy = MakeRecordset({Text(u"FieldName"), Text(u"OrderBy"), Text(u"Field")});
    state.rsCalcFields = MakeRecordset({Text(u"CalcField"), Text(u"Alias"), Text(u"OutputYes/No", 3)});
    PrepareAliases(state.rsAlias);
    state.rsJoinTable = MakeRecordset({Text(u"TableName"), Flag(u"Visable")});
    state.rsJoinFieldsUsed = MakeRecordset({Text(u"TableName"), Text(u"FieldName"), Flag(u"Visable")});
    state.rsJoinTablesUsed = MakeRecordset({Text(u"TableName"), Flag(u"Visable")});
    state.rsJoins = MakeRecordset({Text(u"TableFrom"), Text(u"Join"), Text(u"TableTo"), Text(u"FieldFrom"),
                                   Text(u"Compare", 2), Text(u"FieldTo")},
                                  ado::FieldIsNullable);
}

void ReleaseWorkingRecordsets(ZPGGlobalDeclarations& state) {
    for (RecordsetPtr* joins : {&state.rsJoinFieldsUsed, &state.rsJoinTable, &state.rsJoinTablesUsed})
        CloseAndRelease(*joins);
    for (GridState* grid : {&state.Form->dgrQueryResults, &state.Form->dgrSQL, &state.Form->dgrJoins})
        grid->DataSource.reset();
    for (RecordsetPtr* query :
         {&state.rsCalcFields, &state.rsGroupBy, &state.rsHaving, &state.rsOrderBy, &state.rsQueryResult,
          &state.rsJoins, &state.rsWhere, &state.rsWhereClone, &state.rsSavedQuery})
        CloseAndRelease(*query);
    for (Collection* fields : {&state.colFields, &state.colSelFields, &state.colTables}) fields->Clear();
    for (QString* text : {&state.SelectClause, &state.FromClause, &state.WhereClause, &state.GroupByClause,
                          &state.HavingClause, &state.OrderByClause, &state.CurrentSQL})
        text->clear();
}

bool HasRows(const RecordsetPtr& recordset) {
    return recordset && recordset->IsOpen() && recordset->RecordCount() > 0;
}

}  // namespace zephrin
