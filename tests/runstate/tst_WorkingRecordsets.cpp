#include "runstate/ZPGGlobalDeclarations.h"
#include "support/ScriptedPrompts.h"

#include <gtest/gtest.h>

namespace zephrin {

namespace {

QString Shape(const ado::RecordsetPtr& recordset) {
    QStringList columns;
    for (int field = 0; field < recordset->FieldCount(); ++field) {
        const ado::Field& column = recordset->FieldAt(field);
        columns << QStringLiteral("%1:%2:%3:%4")
                       .arg(column.Name)
                       .arg(static_cast<int>(column.Type))
                       .arg(column.DefinedSize)
                       .arg(column.Attributes);
    }
    return columns.join(u' ');
}

}  // namespace

TEST(WorkingRecordsets, HaveTheirColumns) {
    ZPGGlobalDeclarations state({}, std::make_shared<test::ScriptedPrompts>());
    CreateWorkingRecordsets(state);
    struct Row {
        const char* Name;
        ado::RecordsetPtr Recordset;
        const char* Expected;
    };
    const Row rows[] = {
        {"rsGroupBy", state.rsGroupBy,
         "FieldName:200:8000:-1 GroupBy:200:8000:-1 FieldAlias:200:8000:-1 OutputYes/No:200:3:-1"},
        {"rsOrderBy", state.rsOrderBy, "FieldName:200:8000:-1 OrderBy:200:8000:-1 Field:200:8000:-1"},
        {"rsCalcFields", state.rsCalcFields, "CalcField:200:8000:-1 Alias:200:8000:-1 OutputYes/No:200:3:-1"},
        {"rsAlias", state.rsAlias, "FieldName:200:8000:-1 Alias:200:8000:-1 RecordsetType:200:8000:-1"},
        {"rsJoinTable", state.rsJoinTable, "TableName:200:8000:-1 Visable:11:0:-1"},
        {"rsJoinFieldsUsed", state.rsJoinFieldsUsed,
         "TableName:200:8000:-1 FieldName:200:8000:-1 Visable:11:0:-1"},
        {"rsJoinTablesUsed", state.rsJoinTablesUsed, "TableName:200:8000:-1 Visable:11:0:-1"},
        {"rsJoins", state.rsJoins,
         "TableFrom:200:8000:32 Join:200:8000:32 TableTo:200:8000:32 FieldFrom:200:8000:32 Compare:200:2:32 "
         "FieldTo:200:8000:32"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Shape(row.Recordset).toStdString(), row.Expected) << row.Name;
        EXPECT_TRUE(row.Recordset->IsOpen() && row.Recordset->IsUpdatable()) << row.Name;
        EXPECT_EQ(row.Recordset->RecordCount(), 0) << row.Name;
    }
    CreateHostValues(state);
    EXPECT_EQ(state.rsHostValues->FieldCount(), 24);
    EXPECT_EQ(state.rsHostValues->FieldAt(23).Name, QStringLiteral("23"));
}

TEST(WorkingRecordsets, AJoinComparisonHoldsTwoCharacters) {
    ZPGGlobalDeclarations state({}, std::make_shared<test::ScriptedPrompts>());
    CreateWorkingRecordsets(state);
    state.rsJoins->AddNew();
    state.rsJoins->SetValue(u"Compare", QStringLiteral("<>"));
    EXPECT_THROW(state.rsJoins->SetValue(u"Compare", QStringLiteral("<=>")), ado::Error);
    EXPECT_EQ(state.rsJoins->Value(u"Compare").toString(), QStringLiteral("<>"));
}

TEST(WorkingRecordsets, AliasesStayOneRecordsetAndLoseTheirRows) {
    ZPGGlobalDeclarations state({}, std::make_shared<test::ScriptedPrompts>());
    CreateWorkingRecordsets(state);
    const ado::RecordsetPtr aliases = state.rsAlias;
    aliases->AddNew();
    aliases->SetValue(u"Alias", QStringLiteral("SUMOFTotal"));
    aliases->Update();
    ReleaseWorkingRecordsets(state);
    EXPECT_EQ(state.rsGroupBy, nullptr);
    EXPECT_EQ(state.rsAlias, aliases);
    aliases->Close();
    CreateWorkingRecordsets(state);
    EXPECT_EQ(state.rsAlias, aliases);
    EXPECT_TRUE(aliases->IsOpen());
    EXPECT_EQ(aliases->RecordCount(), 0);
    EXPECT_EQ(aliases->FieldCount(), 3);
}

TEST(WorkingRecordsets, ReleaseForgetsTheQueryAndKeepsCopiesOfTheHost) {
    ZPGGlobalDeclarations state({}, std::make_shared<test::ScriptedPrompts>());
    CreateWorkingRecordsets(state);
    state.rsQueryResult = std::make_shared<ado::Recordset>();
    state.rsQueryResult->Append(QStringLiteral("A"), ado::DataType::Integer);
    state.rsQueryResult->Open();
    state.rsQueryResult->AddNew();
    state.rsQueryResult->SetValue(0, 7);
    state.rsQueryResult->Update();
    state.Form->dgrQueryResults.DataSource = state.rsQueryResult;
    const ado::RecordsetPtr hosts = state.rsQueryResult->Clone();
    state.OrderByClause = state.SelectClause = state.CurrentSQL = QStringLiteral("text");
    state.colFields = state.colTables = Collection({QStringLiteral("[A]")});
    ReleaseWorkingRecordsets(state);
    EXPECT_EQ(state.Form->dgrQueryResults.DataSource, nullptr);
    EXPECT_TRUE(state.colFields.IsEmpty() && state.colTables.IsEmpty());
    EXPECT_EQ(state.OrderByClause + state.SelectClause + state.CurrentSQL, QString());
    EXPECT_EQ(hosts->ValueAt(0, 0).toInt(), 7);
    ReleaseWorkingRecordsets(state);
}

}  // namespace zephrin
