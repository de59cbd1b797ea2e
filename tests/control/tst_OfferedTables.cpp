#include "control/OfferedTables.h"
#include "support/ScriptedPrompts.h"

#include <gtest/gtest.h>

namespace zephrin {

TEST(LoadTableString, CutsAtSemicolons) {
    struct Row {
        const char* Text;
        const char* Expected;
    };
    const Row rows[] = {
        {"", ""},
        {"a", ""},
        {"aa", "aa"},
        {"a;b;c", "a,b"},
        {"aa;bb;cc", "aa,bb,cc"},
        {";a;b", "a"},
        {"aa;", "aa"},
        {"aa;;bb", "aa,bb"},
        {";;", ""},
        {"[A B];[C]", "[A B],[C]"},
        {"aa;AA;bb", "aa,bb"},
        {"aa;b", "aa"},
        {" ", ""},
    };
    for (const Row& row : rows) {
        ZPGGlobalDeclarations state({}, std::make_shared<test::ScriptedPrompts>());
        state.OfferedTables.Add(QStringLiteral("old"));
        LoadTableString(state, QString::fromLatin1(row.Text));
        EXPECT_EQ(state.OfferedTables.Items().join(u',').toStdString(), row.Expected) << row.Text;
    }
}

TEST(LoadSchemaTables, TakesWhatIsAskedForAndEachNameOnce) {
    ZPGGlobalDeclarations state({}, std::make_shared<test::ScriptedPrompts>());
    state.gDelimOpen = QStringLiteral("[");
    state.gDelimClose = QStringLiteral("]");
    const auto schema = std::make_shared<ado::Recordset>();
    schema->Append(QStringLiteral("TABLE_SCHEMA"), ado::DataType::VarWChar, 20);
    schema->Append(QStringLiteral("TABLE_NAME"), ado::DataType::VarWChar, 20);
    schema->Append(QStringLiteral("TABLE_TYPE"), ado::DataType::VarWChar, 20);
    schema->Open();
    const char* const rows[][3] = {{"dbo", "Orders", "TABLE"}, {"sales", "orders", "TABLE"},
                                   {"dbo", "Big", "VIEW"},     {"sys", "objects", "SYSTEM TABLE"},
                                   {"dbo", "odd", "table"},    {"dbo", "Syn", "SYNONYM"}};
    for (const auto& row : rows) {
        schema->AddNew();
        for (int field = 0; field < 3; ++field) schema->SetValue(field, QString::fromLatin1(row[field]));
        schema->Update();
    }
    state.rsSchemaTables = schema;
    LoadSchemaTables(state, true);
    EXPECT_EQ(state.OfferedTables.Items().join(u' '), QStringLiteral("[Orders] [Big]"));
    LoadSchemaTables(state, false);
    EXPECT_EQ(state.OfferedTables.Items().join(u' '), QStringLiteral("[Orders] [Big] [objects] [odd] [Syn]"));
    schema->DeleteAll();
    LoadSchemaTables(state, false);
    EXPECT_TRUE(state.OfferedTables.IsEmpty());
}

}  // namespace zephrin
