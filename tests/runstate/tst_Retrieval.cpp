#include "platform/ado/providers/AllProviders.h"
#include "runstate/Dialect.h"
#include "runstate/Retrieval.h"
#include "support/ScratchDatabase.h"
#include "support/ScriptedPrompts.h"

#include <gtest/gtest.h>

namespace zephrin {

namespace {

struct Shop {
    test::ScratchDatabase database{test::SmallShopScript()};
    ZPGGlobalDeclarations state{ado::providers::AllProviders(), std::make_shared<test::ScriptedPrompts>()};
    QStringList Failures;

    Shop() {
        EXPECT_TRUE(OpenDatabaseConnection(state, database.ConnectionString(), 5, 5, {}, {}).IsEmpty());
    }

    QStringList Fields(const QStringList& tables) {
        clsFieldRetrieval retrieval(state);
        retrieval.FieldCollectionError = [this](const QString& text) { Failures << text; };
        return retrieval.FieldCollection(Collection(tables)).Items();
    }
};

}  // namespace

TEST(FieldRetrieval, ReadsTheFieldsOfTablesInOrder) {
    const QStringList orders{QStringLiteral("[Orders].[Id]"), QStringLiteral("[Orders].[CustomerId]"),
                             QStringLiteral("[Orders].[Total]")};
    struct Row {
        const char* What;
        QStringList Tables;
        QStringList Expected;
        bool Fails;
    };
    const Row rows[] = {
        {"none", {}, {}, false},
        {"a blank and an apostrophe in names",
         {QStringLiteral("[Odd'Name]"), QStringLiteral("[Order Details]")},
         {QStringLiteral("[Odd'Name].[Id]"), QStringLiteral("[Order Details].[OrderId]"),
          QStringLiteral("[Order Details].[Unit Price]"), QStringLiteral("[Order Details].[Discount]")},
         false},
        {"a view",
         {QStringLiteral("[BigOrders]")},
         {QStringLiteral("[BigOrders].[Id]"), QStringLiteral("[BigOrders].[Total]")},
         false},
        {"the same table twice, in another case",
         {QStringLiteral("[Orders]"), QStringLiteral("(orders)")},
         orders,
         false},
        {"a name without delimiters loses its ends", {QStringLiteral("xOrdersx")}, orders, false},
        {"and is then unknown", {QStringLiteral("Orders")}, {}, true},
        {"a short text ends the walk", {QStringLiteral("[Orders]"), QStringLiteral("[]")}, {}, false},
        {"an unknown table spoils the rest",
         {QStringLiteral("[Orders]"), QStringLiteral("[Nope]")},
         {},
         true},
    };
    for (const Row& row : rows) {
        Shop run;
        EXPECT_EQ(run.Fields(row.Tables), row.Expected) << row.What;
        EXPECT_EQ(run.Failures.size(), row.Fails ? 1 : 0) << row.What;
    }
}

TEST(FieldRetrieval, NamesTheTableThatHasNoColumns) {
    Shop run;
    run.Fields({QStringLiteral("[Nope]")});
    ASSERT_EQ(run.Failures.size(), 1);
    EXPECT_TRUE(run.Failures[0].contains(QStringLiteral("Nope")));
}

TEST(FieldRetrieval, UsesAConnectionOfItsOwn) {
    Shop run;
    run.state.SharedConnection().Close();
    EXPECT_EQ(run.Fields({QStringLiteral("[BigOrders]")}).size(), 2);
    EXPECT_EQ(run.state.SharedConnection().State(), ado::ObjectState::Closed);
}

TEST(FieldType, IsThatOfTheColumn) {
    Shop run;
    struct Row {
        const char* Table;
        const char* Field;
        ado::DataType Expected;
    };
    for (const Row& row : {Row{"[Orders]", "[Id]", ado::DataType::Integer},
                           Row{"[Orders]", "[Total]", ado::DataType::Currency},
                           Row{"[Customers]", "[Name]", ado::DataType::VarWChar},
                           Row{"[Order Details]", "[Discount]", ado::DataType::Double}})
        EXPECT_EQ(
            clsFieldType(run.state).FieldType(QString::fromLatin1(row.Table), QString::fromLatin1(row.Field)),
            row.Expected)
            << row.Field;
    EXPECT_THROW(clsFieldType(run.state).FieldType(QStringLiteral("[Nope]"), QStringLiteral("[Id]")),
                 ado::Error);
}

TEST(FieldValues, AreDistinctAscendingAndKeepNull) {
    Shop run;
    clsFieldValues values(run.state);
    const auto texts = [](const ado::RecordsetPtr& rows) {
        QStringList all;
        for (qint64 row = 0; row < rows->RecordCount(); ++row)
            all << (rows->IsNullAt(row, 0) ? QStringLiteral("Null") : rows->TextAt(row, 0));
        return all.join(u',');
    };
    EXPECT_EQ(texts(values.colFieldValues(QStringLiteral("[Customers]"), QStringLiteral("[City]"))),
              QStringLiteral("Null,Ankara,Oslo"));
    EXPECT_EQ(texts(values.colExpressionValues(QStringLiteral("[Id]*0+2"),
                                               QStringLiteral("FROM [Orders] WHERE [Id] > 10"))),
              QStringLiteral("2"));
    EXPECT_THROW(values.colFieldValues(QStringLiteral("[Nope]"), QStringLiteral("[City]")), ado::Error);
}

}  // namespace zephrin
