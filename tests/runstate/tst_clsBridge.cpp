#include "runstate/clsBridge.h"

#include <gtest/gtest.h>

namespace zephrin {

TEST(Bridge, HandsACopyOfTheRowsAndKeepsWhatAHostWritesToItself) {
    const auto rows = std::make_shared<ado::Recordset>();
    rows->Append(QStringLiteral("A"), ado::DataType::VarChar, 10);
    rows->Open();
    rows->AddNew();
    rows->SetValue(0, QStringLiteral("x"));
    rows->Update();
    const QString sql = QStringLiteral("SELECT 1"), error = QStringLiteral("none");
    clsBridge bridge;
    ado::RecordsetPtr seen;
    QObject::connect(&bridge, &clsBridge::QueryComplete, &bridge,
                     [&](int& number, QString& text, QString& statement, ado::RecordsetPtr& results,
                         ado::RecordsetPtr&, ado::RecordsetPtr&) {
                         seen = results;
                         results->SetValueAt(0, 0, QStringLiteral("host"));
                         number = 9;
                         text = statement = QStringLiteral("changed");
                         results.reset();
                     });
    bridge.PassSQLandResultRecordset(0, error, sql, rows, nullptr, nullptr);
    EXPECT_EQ(sql + error, QStringLiteral("SELECT 1none"));
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->ValueAt(0, 0).toString(), QStringLiteral("host"));
    EXPECT_EQ(rows->ValueAt(0, 0).toString(), QStringLiteral("x"));
}

TEST(Bridge, LetsGoOfTheRowsWhenTheWizardCloses) {
    const auto rows = std::make_shared<ado::Recordset>(), where = std::make_shared<ado::Recordset>();
    clsBridge bridge;
    std::weak_ptr<ado::Recordset> copy;
    QObject::connect(&bridge, &clsBridge::QueryComplete, &bridge,
                     [&](int&, QString&, QString&, ado::RecordsetPtr& results, ado::RecordsetPtr&,
                         ado::RecordsetPtr&) { copy = results; });
    bridge.PassSQLandResultRecordset(0, {}, {}, rows, where, nullptr);
    EXPECT_FALSE(copy.expired());
    bridge.CloseZPB({});
    EXPECT_TRUE(copy.expired());
    EXPECT_EQ(where.use_count(), 1);
}

TEST(Bridge, HandsAnUnopenedRecordsetOnAsOne) {
    for (const ado::RecordsetPtr& rows : {std::make_shared<ado::Recordset>(), ado::RecordsetPtr()}) {
        clsBridge bridge;
        bool heard = false;
        QObject::connect(&bridge, &clsBridge::QueryComplete, &bridge,
                         [&](int&, QString&, QString&, ado::RecordsetPtr& results, ado::RecordsetPtr&,
                             ado::RecordsetPtr&) { heard = results && !results->IsOpen(); });
        bridge.PassSQLandResultRecordset(5, {}, {}, rows, nullptr, nullptr);
        EXPECT_TRUE(heard);
    }
}

}  // namespace zephrin
