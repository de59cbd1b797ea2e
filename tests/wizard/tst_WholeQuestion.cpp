// A question of a person who knows no SQL, put together with the mouse and the keys in each big dialect:
// customers in three cities with more than five orders over 100 since a day, with their totals, biggest
// first.

#include "platform/controls/DataGrid.h"
#include "wizard/FormTest.h"

#include <QComboBox>

#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>

using namespace zephrin;

namespace {

const char* const plainSql =
    "SELECT c.[Customer Name], SUM(t.Total), COUNT(*) FROM Customers c"
    " JOIN Orders o ON o.CustomerID = c.CustomerID JOIN [Order Totals] t ON t.OrderID = o.OrderID"
    " WHERE c.City IN ('Wien', 'Malmö', 'Zürich') AND t.Total > 100 AND o.[Order Date] >= '2024-01-01'"
    " GROUP BY c.CustomerID HAVING COUNT(*) > 5 ORDER BY SUM(t.Total) DESC";

QString Line(const QString& name, double total, int orders) {
    return QStringLiteral("%1: %2 in %3").arg(name, QString::number(total, 'f', 2)).arg(orders);
}

/// What the database itself answers, without the wizard and its provider.
QStringList PlainAnswer() {
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(ZEPHRIN_SHOP_DB, &raw, SQLITE_OPEN_READONLY, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(raw, sqlite3_close);
    EXPECT_EQ(opened, SQLITE_OK);
    sqlite3_stmt* statement = nullptr;
    const int prepared = sqlite3_prepare_v2(raw, plainSql, -1, &statement, nullptr);
    EXPECT_EQ(prepared, SQLITE_OK) << sqlite3_errmsg(raw);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> owner(statement, sqlite3_finalize);
    QStringList lines;
    while (sqlite3_step(statement) == SQLITE_ROW)
        lines << Line(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0))),
                      sqlite3_column_double(statement, 1), sqlite3_column_int(statement, 2));
    return lines;
}

class WholeQuestion : public test::FormTest, public testing::WithParamInterface<const char*> {
 protected:
    void Join(const QString& from, const QString& to) {
        Choose("cmbJoinTables_0", from);
        Choose("cmbJoinTables_1", to);
        Click("cmdlockTables");
        // The two fields of the same name stand chosen.
        Click("cmdAddJoin");
        Click("cmdlockTables");
    }
    void ChooseTablesAndFields() {
        for (const auto* table : {u"[Customers]", u"[Orders]", u"[Order Totals]"})
            DoubleClick("lstZPQTableSelection", QString::fromUtf16(table));
        ChooseTab(1);
        Join(QStringLiteral("[Customers]"), QStringLiteral("[Orders]"));
        EXPECT_EQ(Tabs(), QStringLiteral("11000")) << "one table is not joined yet";
        Join(QStringLiteral("[Orders]"), QStringLiteral("[Order Totals]"));
        ChooseTab(2);
        DoubleClick("lstZPQFieldFrom", QStringLiteral("[Customers].[Customer Name]"));
        DoubleClick("lstZPQFieldFrom", QStringLiteral("[Order Totals].[Total]"));
        ChooseTab(3);
    }
    void Criterion(const char16_t* field, const char16_t* operation, const QString& value) {
        Pick("lstSelectedFields", QString::fromUtf16(field));
        Pick("lstOperands", QString::fromUtf16(operation));
        Type("cmbAvailableValues1", value);
        Click("cmdCommit");
    }
    /// A value that the user picks among those of the field.
    void LookedUp(const char16_t* field, const char16_t* operation, const QString& value) {
        Pick("lstSelectedFields", QString::fromUtf16(field));
        Pick("lstOperands", QString::fromUtf16(operation));
        Click("cmdFieldValues");
        Choose("cmbAvailableValues1", value);
        Click("cmdCommit");
    }
    void Entry(const char16_t* field, const char16_t* operation, BoxAnswer output = BoxAnswer::Yes) {
        Pick("lstSelectedFields", QString::fromUtf16(field));
        Pick("lstOperands", QString::fromUtf16(operation));
        prompts->Answers = {output};
        Click("cmdCommit");
    }
    QStringList Answer() {
        Click("cmdRunQuery");
        const auto& rows = Find<controls::DataGrid>("dgrQueryResults")->DataSource();
        if (!rows) return {QStringLiteral("the statement failed")};
        QStringList lines;
        for (qint64 row = 0; row < rows->RecordCount(); ++row)
            lines << Line(rows->TextAt(row, 0), rows->ValueAt(row, 1).toDouble(),
                          rows->ValueAt(row, 2).toInt());
        return lines;
    }
};

TEST_P(WholeQuestion, BigCustomersOfThreeCities) {
    const QStringList expected = PlainAnswer();
    ASSERT_GT(expected.size(), 2);
    Connect(QString::fromLatin1(GetParam()));
    Show();
    ChooseTablesAndFields();

    Criterion(u"[Total]", u">", QStringLiteral("100"));
    Criterion(u"[Order Date]", u">=", QStringLiteral("2024-01-01"));
    for (const auto* city : {u"Wien", u"Malmö", u"Zürich"})
        LookedUp(u"[City]", u"=", QString::fromUtf16(city));
    Click("optQuery_1");
    // Some customers share a name, so the number tells them apart without being shown.
    Entry(u"[CustomerID]", u"GROUP BY", BoxAnswer::No);
    Entry(u"[Customer Name]", u"GROUP BY");
    Entry(u"[Total]", u"SUM");
    Entry(u"[OrderID]", u"COUNT");
    Click("optQuery_0");
    Criterion(u"COUNTOFOrderID", u">", QStringLiteral("5"));
    Click("optQuery_2");
    Entry(u"SUMOFTotal", u"DESC");

    EXPECT_EQ(Answer().join(u'\n').toStdString(), expected.join(u'\n').toStdString())
        << qPrintable(Statement());
}

INSTANTIATE_TEST_SUITE_P(Dialects, WholeQuestion, testing::Values("SQL Server", "MS Access"));

}  // namespace
