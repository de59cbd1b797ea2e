#pragma once

#include <QString>
#include <QTemporaryDir>

namespace zephrin::test {

/// A real SQLite file in a folder of its own, gone with the object.
class ScratchDatabase {
 public:
    /// Runs `script`, statements separated by ";".
    explicit ScratchDatabase(const QString& script);

    QString Path() const;
    /// `dialect` is "SQL Server", "MS Access" or "Microsoft Excel Driver".
    QString ConnectionString(const QString& dialect = QStringLiteral("SQL Server")) const;
    /// Changes the database behind the back of whoever has it open. Fails the test when SQLite refuses.
    void Run(const QString& script);

 private:
    QTemporaryDir folder;
};

/// A small shop: Customers (Id, Name, City), Orders (Id, CustomerId, Total), [Order Details] (OrderId, [Unit
/// Price], Discount), the table Odd'Name, and the view BigOrders; three customers, four orders.
QString SmallShopScript();

}  // namespace zephrin::test
