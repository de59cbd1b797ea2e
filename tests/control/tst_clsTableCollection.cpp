#include "control/Host.h"

#include <QAbstractItemView>

#include <gtest/gtest.h>

namespace zephrin {

namespace {

using test::Host;

/// What the last box said, its lines joined by "/".
QString LastBox(const Host& host) {
    if (host.prompts->Boxes.isEmpty()) return {};
    const auto& box = host.prompts->Boxes.last();
    EXPECT_EQ(box.Style, BoxStyle::Critical);
    QString text = box.Title + QStringLiteral(": ") + box.Text;
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("/"));
}

}  // namespace

TEST(TableCollection, AddsAndRemovesTablesOfTheOffer) {
    struct Row {
        const char* What;
        std::function<void(clsTableCollection)> Act;
        const char* Offer;
        const char* Box;
    };
    const Row rows[] = {
        {"a new table", [](auto t) { t.AddTable(QStringLiteral("Customers")); },
         "[Orders] [Order Details] [Customers]", ""},
        {"with delimiters", [](auto t) { t.AddTable(QStringLiteral("[Customers]")); },
         "[Orders] [Order Details] [Customers]", ""},
        {"an unknown one", [](auto t) { t.AddTable(QStringLiteral("Nope")); }, "[Orders] [Order Details]",
         "Add Table method: Table : 'Nope' unknown to database"},
        {"one that is there", [](auto t) { t.AddTable(QStringLiteral("orders")); },
         "[Orders] [Order Details]",
         "AddTable Method: Table : 'orders' already exists in Collection./Unable to add Table."},
        {"no name", [](auto t) { t.AddTable(QString()); }, "[Orders] [Order Details]", ""},
        {"by name", [](auto t) { t.RemoveTable(QStringLiteral("Orders")); }, "[Order Details]", ""},
        {"by name in delimiters", [](auto t) { t.RemoveTable(QStringLiteral("[ORDERS]")); },
         "[Order Details]", ""},
        {"by position", [](auto t) { t.RemoveTable(1); }, "[Order Details]", ""},
        {"by a text that is a number", [](auto t) { t.RemoveTable(QStringLiteral("2")); }, "[Orders]", ""},
        {"a half goes to the even one", [](auto t) { t.RemoveTable(1.5); }, "[Orders]", ""},
        {"by a flag", [](auto t) { t.RemoveTable(true); }, "[Orders] [Order Details]",
         "AddTable Method: Table : 'true' does not exist in Collection./Unable to remove Table."},
        {"the first of the names, twice",
         [](auto t) {
             t.RemoveTable(1);
             t.AddTable(QStringLiteral("Orders"));
             t.RemoveTable(QStringLiteral(" 1 "));
         },
         "[Orders]", ""},
        {"below the first", [](auto t) { t.RemoveTable(0); }, "[Orders] [Order Details]",
         "AddTable Method: Table : '0' does not exist in Collection./Unable to remove Table."},
        {"past the end", [](auto t) { t.RemoveTable(3); }, "[Orders] [Order Details]",
         "AddTable Method: Table : '3' does not exist in Collection./Unable to remove Table."},
        {"far past the end", [](auto t) { t.RemoveTable(QStringLiteral("1e300")); },
         "[Orders] [Order Details]",
         "AddTable Method: Table : '1e300' does not exist in Collection./Unable to remove Table."},
        {"a delimiter alone", [](auto t) { t.AddTable(QStringLiteral("[")); }, "[Orders] [Order Details]",
         "Add Table method: Table : '[' unknown to database"},
        {"one letter", [](auto t) { t.AddTable(QStringLiteral("O")); }, "[Orders] [Order Details]",
         "Add Table method: Table : 'O' unknown to database"},
        {"an unknown name", [](auto t) { t.RemoveTable(QStringLiteral("Nope")); }, "[Orders] [Order Details]",
         "AddTable Method: Table : 'Nope' does not exist in Collection./Unable to remove Table."},
        {"nothing at all", [](auto t) { t.RemoveTable(QVariant()); }, "[Orders] [Order Details]",
         "AddTable Method: Table : '' does not exist in Collection./Unable to remove Table."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.What);
        Host host;
        host.control->SetZPBConnectionString(host.database.ConnectionString());
        host.control->SetZPBTableString(QStringLiteral("[Orders];[Order Details]"));
        host.control->ZPBMakeConnection();
        row.Act(host.control->ZPBTableCollection());
        EXPECT_EQ(host.Offer().join(u' ').toStdString(), row.Offer);
        EXPECT_EQ(LastBox(host).toStdString(), row.Box);
    }
}

TEST(TableCollection, NeedsAConnectionAndOutlivesItsControl) {
    Host host;
    clsTableCollection tables = host.control->ZPBTableCollection();
    tables.AddTable(QStringLiteral("Orders"));
    EXPECT_EQ(LastBox(host),
              QStringLiteral(
                  "AddTable Method: No database connection has been established./You must make a connection "
                  "before you can alter the Table Collection./Changes to Table Collection were "
                  "unsuccessful."));
    host.Connect();
    EXPECT_GT(tables.CountTableCollection(), 3);
    EXPECT_EQ(tables.GetTableName(0) + tables.GetTableName(99), QString());
    delete host.control;
    tables.AddTable(QStringLiteral("Orders"));
    tables.RemoveTable(1);
    EXPECT_EQ(tables.CountTableCollection(), 0);
    EXPECT_EQ(host.prompts->Boxes.size(), 1);
}

TEST(TableCollection, AnOpenWizardSeesNothingOfIt) {
    Host host;
    host.Connect();
    host.control->ZPBShowZephrin();
    Host::Click("cmdZPQTableRightAll");
    const auto* chosen = qobject_cast<QAbstractItemView*>(Host::Find("lstZPQTableTo"));
    const int count = host.control->ZPBTableCollection().CountTableCollection();
    host.control->ZPBTableCollection().RemoveTable(1);
    host.control->ZPBTableCollection().RemoveTable(QStringLiteral("Orders"));
    Host::ChooseTab(1);
    EXPECT_EQ(chosen->model()->rowCount(), count);
    frmZPG::OpenForm()->UnloadSilently();
    EXPECT_EQ(host.control->ZPBTableCollection().CountTableCollection(), count - 2);
}

}  // namespace zephrin
