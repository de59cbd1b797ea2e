#pragma once

#include "TestDatabase.h"

#include <gtest/gtest.h>

namespace zephrin::ado::providers::sqlite::test {

/// A shop small enough to be reckoned by hand.
inline constexpr const char* ShopScript = R"sql(
CREATE TABLE Customers (Id int PRIMARY KEY, Name nvarchar(40), City nvarchar(20), Rating float);
INSERT INTO Customers VALUES (1,'Ana','Berlin',1.5),(2,'bob','BERLIN',2.5),(3,'O''Neil','Paris',NULL),(4,'Zoé','Ålborg',4);
CREATE TABLE Orders (Id int PRIMARY KEY, CustomerId int, [Order Date] datetime, Total money, Paid bit, Note ntext);
INSERT INTO Orders VALUES (10,1,'1996-07-04',10.5,1,'TOP 5 #1/1/2000# [x]'),(11,1,'1996-07-05 14:30:00',20,0,NULL),
 (12,2,'1997-01-01',7.25,1,''),(13,3,'1996-12-31T23:59:59',3,-1,'x'),(14,NULL,NULL,NULL,NULL,'y');
CREATE TABLE [Order Details] (OrderId int, [Unit Price] money, Qty smallint);
INSERT INTO [Order Details] VALUES (10,2.5,3),(10,1,3),(12,7.25,1),(13,1.5,2);
CREATE TABLE Nums (N int, T nvarchar(10), R real);
INSERT INTO Nums VALUES (7,'7',7.5),(2,'2',2.5),(-3,'a',0),(0,'',NULL);
CREATE VIEW [Paid Orders] AS SELECT Id, Total FROM Orders WHERE Paid <> 0;
)sql";

struct Case {
    const char* Statement;
    const char* Expected;
};

/// Runs each statement of a table and compares the answers.
class ShopTest : public testing::Test {
 protected:
    static QString Text(const char* text) { return QString::fromUtf8(text); }

    void Check(const QString& dialect, std::initializer_list<Case> cases) const {
        const auto connection = Connect(shop, dialect);
        for (const Case& row : cases)
            EXPECT_EQ(Answer(*connection, Text(row.Statement)), Text(row.Expected)) << row.Statement;
    }
    void OnServer(std::initializer_list<Case> cases) const { Check(QStringLiteral("SQL Server"), cases); }
    void OnFile(std::initializer_list<Case> cases) const { Check(QStringLiteral("MS Access"), cases); }
    void OnBoth(std::initializer_list<Case> cases) const {
        OnServer(cases);
        OnFile(cases);
    }

    TestDatabase shop{ShopScript};
};

}  // namespace zephrin::ado::providers::sqlite::test
