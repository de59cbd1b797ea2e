#include "Shop.h"

namespace zephrin::ado::providers::sqlite::test {
namespace {

TEST_F(ShopTest, StatementsOfTheWizard) {
    OnBoth({
        {"SELECT *\r\nFROM [Customers]\r\n",
         "1|Ana|Berlin|1.5; 2|bob|BERLIN|2.5; 3|O'Neil|Paris|~; 4|Zoé|Ålborg|4"},
        {"SELECT [Customers].[Name], [Orders].[Id]\r\nFROM ([Customers] INNER JOIN [Orders] ON "
         "[Customers].[Id] = "
         "[Orders].[CustomerId])\r\nORDER BY [Orders].[Id] DESC",
         "O'Neil|13; bob|12; Ana|11; Ana|10"},
        {"SELECT [Customers].[Name], [Order Details].[Qty] FROM (([Customers] LEFT OUTER JOIN [Orders] ON "
         "[Customers].[Id] = [Orders].[CustomerId])  LEFT OUTER JOIN [Order Details] ON [Orders].[Id] = "
         "[Order "
         "Details].[OrderId]) WHERE ([Customers].[Id] > 2) ORDER BY [Customers].[Id] ASC",
         "O'Neil|2; Zoé|~"},
        {"SELECT COUNT(*) FROM ([Customers] INNER JOIN [Orders] ON [Customers].[Id] = "
         "[Orders].[CustomerId]), [Nums]",
         "16"},
        {"SELECT [Orders].[CustomerId], SUM([Orders].[Total]) AS SUMOFTotal FROM [Orders] GROUP BY "
         "[Orders].[CustomerId] HAVING (SUM([Orders].[Total]) > 5) ORDER BY [Orders].[CustomerId] ASC",
         "1|30.50; 2|7.25"},
        {"SELECT [Customers].[Id] FROM [Customers] WHERE ([Customers].[Name] = 'O''Neil') OR "
         "([Customers].[Id] BETWEEN "
         "1 AND 1)",
         "1; 3"},
        {"SELECT DISTINCT [Customers].[City] FROM [Customers] ORDER BY [Customers].[City] ASC",
         "Ålborg; Berlin; Paris"},
        {"SELECT [Id] FROM [dbo].[Orders] WHERE [dbo].[Orders].[Note] IS NULL", "11"},
        {"SELECT o.Id FROM Orders AS o, Customers c WHERE o.CustomerId = c.Id AND c.Name LIKE 'b%'", "12"},
        {"SELECT * FROM (SELECT Id AS A FROM Customers) c RIGHT JOIN (SELECT Id AS B, CustomerId FROM "
         "Orders) o ON c.A = "
         "o.CustomerId AND o.B > 12 ORDER BY o.B",
         "~|10|1; ~|11|1; ~|12|2; 3|13|3; ~|14|~"},
        {"SELECT * FROM (SELECT Id AS A FROM Customers) RIGHT JOIN (SELECT Id AS B FROM Orders) ON A = B - "
         "10 WHERE B < 12 "
         "ORDER BY 2",
         "~|10; 1|11"},
        {"SELECT Id FROM Orders WHERE [Order Date] LIKE '%1997%' AND Note NOT LIKE 'q%'", "12"},
        {"SELECT [Paid Orders].* FROM [Paid Orders] WHERE [Total] < 8", "12|7.25; 13|3.00"},
    });
    OnServer(
        {{"SELECT [Customers].[Id], [Orders].[Id] FROM ([Orders] FULL OUTER JOIN [Customers] ON "
          "[Customers].[Id] = "
          "[Orders].[CustomerId]) WHERE [Orders].[Id] IS NULL OR [Customers].[Id] IS NULL ORDER BY 1",
          "~|14; 4|~"}});
}

TEST_F(ShopTest, WorkbookDialect) {
    shop.Run(
        "CREATE TABLE [Sheet1$] ([First Name] nvarchar(20), Born datetime); INSERT INTO [Sheet1$] VALUES "
        "('Ana', "
        "'1970-01-02')");
    Check(QStringLiteral("Microsoft Excel Driver"),
          {{"SELECT [Sheet1$].[First Name] FROM [Sheet1$] WHERE ([Sheet1$].[Born] = #1/2/1970#)", "Ana"},
           {"SELECT UCASE([First Name]) & YEAR([Born]) FROM [Sheet1$]", "ANA1970"}});
}

TEST_F(ShopTest, Top) {
    OnBoth({
        {"SELECT TOP 2 [Id] FROM [Orders] ORDER BY [Id] DESC", "14; 13"},
        {"SELECT DISTINCT TOP 2 [City] FROM [Customers] ORDER BY [City]", "Ålborg; Berlin"},
        {"SELECT TOP 0 [Id] FROM [Orders]", ""},
        {"SELECT TOP 40 PERCENT [Id] FROM [Orders] ORDER BY [Id]", "10; 11"},
        {"SELECT TOP 41 PERCENT [Id] FROM [Orders] ORDER BY [Id]", "10; 11; 12"},
        {"SELECT TOP 1 PERCENT [Id] FROM [Orders]", "10"},
        {"SELECT TOP 100 PERCENT [Id] FROM [Orders]", "10; 11; 12; 13; 14"},
        {"SELECT DISTINCT TOP 50 PERCENT [City] FROM [Customers] ORDER BY [City] DESC", "Paris; Berlin"},
        {"SELECT TOP 1 [Id] FROM [Orders] UNION SELECT TOP 1 [Id] FROM [Customers]", "1; 10"},
        {"SELECT [Id] FROM [Orders] WHERE [Id] IN (SELECT TOP 2 [OrderId] FROM [Order Details] ORDER BY "
         "[OrderId] DESC)",
         "12; 13"},
        {"SELECT q.Id FROM (SELECT TOP 3 Id FROM (SELECT TOP 4 Id FROM Orders ORDER BY Id) p ORDER BY Id "
         "DESC) q ORDER BY "
         "q.Id",
         "11; 12; 13"},
        {"SELECT [Note] FROM [Orders] WHERE [Note] = 'TOP 5 #1/1/2000# [x]' -- TOP 1",
         "TOP 5 #1/1/2000# [x]"},
        {"SELECT Id AS [TOP 5] FROM Orders WHERE Id = 10 /* TOP 2 ' */", "10"},
    });
    OnServer({
        {"SELECT TOP 40.01 PERCENT [Id] FROM [Orders]", "10; 11; 12"},
        {"SELECT TOP 4e1 PERCENT [Id] FROM [Orders]", "10; 11"},
        {"SELECT TOP (3) [Id] FROM [Orders]", "10; 11; 12"},
        {"SELECT TOP 1.5 [Id] FROM [Orders]",
         "! The number of rows provided for a TOP clause must be an integer, not '1.5'.@11"},
        {"SELECT TOP -3 [Id] FROM [Orders]", "! A TOP value may not be negative: '-3'.@11"},
        {"SELECT TOP 101 PERCENT [Id] FROM [Orders]",
         "! Percent values must be between 0 and 100, not '101'.@11"},
        {"SELECT TOP 5 , [Id] AS X FROM [Orders]", "! Incorrect syntax near ','.@13"},
        {"SELECT ", "! Incorrect syntax near 'SELECT'.@0"},
        {"SELECT \r\nFROM [Orders]", "! Incorrect syntax near the keyword 'FROM'.@9"},
    });
    OnFile({
        {"SELECT TOP 1e3 [Id] FROM [Orders]",
         "! Invalid argument to the TOP predicate: '1e3' is not a whole number.@11"},
        {"SELECT TOP 5 , [Id] AS X FROM [Orders]",
         "! Syntax error in the statement near ',': a word is misspelled or missing, or the punctuation is "
         "incorrect.@13"},
    });
}

TEST_F(ShopTest, TopPercentIsRoundedUp) {
    shop.Run(
        "CREATE TABLE Many (N int);"
        "WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < 1000) INSERT INTO Many "
        "SELECT n FROM c;");
    const auto connection = Connect(shop, QStringLiteral("SQL Server"));
    // Hundredths of a percent of a thousand rows, so that the rows to come are known exactly.
    for (const int hundredths : {0, 1, 9, 10, 11, 70, 110, 290, 333, 3333, 5670, 9999, 10000}) {
        const QString percent =
            QString::number(hundredths / 100) + u'.' + QString::number(hundredths % 100 + 100).mid(1);
        const RecordsetPtr rows =
            connection->Execute(QStringLiteral("SELECT TOP %1 PERCENT N FROM Many ORDER BY N").arg(percent));
        EXPECT_EQ(rows->RecordCount(), (hundredths + 9) / 10) << percent.toStdString();
    }
}

TEST_F(ShopTest, Names) {
    const struct {
        const char* Statement;
        const char* OnServer;
        const char* OnFile;
    } cases[] = {
        {"SELECT [Orders].[Id], Total AS [My Total], Id + 1, COUNT(*) FROM Orders GROUP BY Id, Total",
         "Id|My Total||", "Id|My Total|Expr1000|Expr1001"},
        {"SELECT c.Id, o.Id FROM Customers c, Orders o", "Id|Id", "Id|Id"},
        {"SELECT Nums.*, T FROM Nums", "N|T|R|T", "N|T|R|T"},
        {"SELECT o.* FROM (Customers c LEFT JOIN (Orders o INNER JOIN [Order Details] d ON o.Id = d.OrderId) "
         "ON c.Id = "
         "o.CustomerId)",
         "Id|CustomerId|Order Date|Total|Paid|Note", "Id|CustomerId|Order Date|Total|Paid|Note"},
    };
    const auto server = Connect(shop, QStringLiteral("SQL Server"));
    const auto file = Connect(shop, QStringLiteral("MS Access"));
    for (const auto& row : cases) {
        EXPECT_EQ(test::Names(*server, Text(row.Statement)).toStdString(), row.OnServer) << row.Statement;
        EXPECT_EQ(test::Names(*file, Text(row.Statement)).toStdString(), row.OnFile) << row.Statement;
    }
}

TEST_F(ShopTest, Types) {
    const struct {
        const char* Statement;
        const char* OnServer;
        const char* OnFile;
    } cases[] = {
        {"SELECT * FROM Orders", "3|3|135|6|11|203", "3|3|7|6|11|203"},
        {"SELECT MIN([Order Date]), MAX(Total), COUNT(*), SUM(Total), AVG(Id) FROM Orders", "135|6|3|6|3",
         "7|6|3|6|5"},
        {"SELECT Total * 2, Qty / 2, Qty + 0.5, Note + '' FROM Orders, [Order Details]", "6|3|131|200",
         "6|5|5|202"},
        {"SELECT IIF(Id > 1, Total, 0), CASE WHEN Id = 1 THEN [Order Date] END FROM Orders", "6|135", "6|7"},
        {"SELECT NULL, 'x', 3000000000, 1.5 FROM Orders", "202|200|131|131", "202|202|5|5"},
    };
    const auto server = Connect(shop, QStringLiteral("SQL Server"));
    const auto file = Connect(shop, QStringLiteral("MS Access"));
    for (const auto& row : cases) {
        EXPECT_EQ(test::Types(*server, Text(row.Statement)).toStdString(), row.OnServer) << row.Statement;
        EXPECT_EQ(test::Types(*file, Text(row.Statement)).toStdString(), row.OnFile) << row.Statement;
    }
}

TEST_F(ShopTest, Dates) {
    OnServer({
        {"SELECT Id FROM Orders WHERE [Order Date] = '07/04/1996'", "10"},
        {"SELECT Id FROM Orders WHERE ([Orders].[Order Date] > '07/04/1996 12:00:00 am')", "11; 12; 13"},
        {"SELECT Id FROM Orders WHERE [Order Date] > '07/04/1996 0:00:00 am'", "11; 12; 13"},
        {"SELECT Id FROM Orders WHERE [Order Date] = '07/05/1996 2:30:00 pm'", "11"},
        {"SELECT Id FROM Orders WHERE [Order Date] BETWEEN '1996-07-05' AND 'Dec 31, 1996 23:59:59'",
         "11; 13"},
        {"SELECT Id FROM Orders WHERE [Order Date] IN ('19960704', '1/1/97')", "10; 12"},
        {"SELECT Id FROM Orders WHERE '12/31/1996 23:59:59' = [Order Date]", "13"},
        {"SELECT Id FROM Orders WHERE [Order Date] > 'abc'",
         "! Conversion failed when converting date and/or time from character string 'abc'.@43"},
        {"SELECT TOP 1 [Order Date] FROM Orders WHERE Id = 13", "1996-12-31 23:59:59"},
        {"SELECT Id FROM Orders WHERE [Order Date] + 1 = '1996-07-05'", "10"},
    });
    OnFile({
        {"SELECT Id FROM Orders WHERE [Order Date] = #7/4/1996#", "10"},
        {"SELECT Id FROM Orders WHERE ([Orders].[Order Date] >= #07/05/1996 2:30:00 pm#) AND "
         "([Orders].[Order Date] < "
         "#1997-01-01#)",
         "11; 13"},
        {"SELECT Id FROM Orders WHERE [Order Date]=#13/1/1997#", ""},
        {"SELECT Id FROM Orders WHERE [Order Date] = #nonsense#",
         "! Syntax error in date: 'nonsense' is not a date.@43"},
        {"SELECT Id FROM Orders WHERE [Order Date] = #1/1/1997",
         "! Syntax error in date: '#1/1/1997' has no closing '#'.@43"},
        {"SELECT #1/1/1997# - [Order Date] FROM Orders WHERE Id = 10", "181"},
        {"SELECT 'on ' & [Order Date] FROM Orders WHERE Id IN (10, 11)",
         "on 7/4/1996; on 7/5/1996 2:30:00 PM"},
    });
}

TEST_F(ShopTest, TextsNumbersAndTruth) {
    OnBoth({
        {"SELECT COUNT(*) FROM Customers WHERE City = 'berlin'", "2"},
        {"SELECT Id FROM Customers WHERE Name IN ('BOB', 'zOÉ')", "2; 4"},
        {"SELECT City, COUNT(*) FROM Customers GROUP BY City ORDER BY City", "Ålborg|1; Berlin|2; Paris|1"},
        {"SELECT COUNT(*) FROM (SELECT City FROM Customers UNION SELECT 'paris' FROM Customers) q", "3"},
        {"SELECT Id FROM Customers WHERE Name LIKE '%[m-o]_'", "1; 2; 4"},
        {"SELECT Id FROM Customers WHERE Name LIKE '[^a-b]%' AND Name NOT LIKE '%neil'", "4"},
        {"SELECT N FROM Nums WHERE N = '7'", "7"},
        {"SELECT Id FROM Orders WHERE Paid <> 0", "10; 12; 13"},
        {"SELECT Paid FROM Orders WHERE Id IN (10, 11)", "True; False"},
        {"SELECT 'a' + Name + '!' FROM Customers WHERE Id = 1", "aAna!"},
        {"SELECT N + 1, N - R FROM Nums WHERE N = 7", "8|-0.5"},
        {"SELECT N FROM Nums WHERE N > ALL (SELECT Qty FROM [Order Details])", "7"},
        {"SELECT N FROM Nums WHERE N = ANY (SELECT Qty FROM [Order Details])", "2"},
        {"SELECT N FROM Nums WHERE NOT (N > 0) AND N IS NOT NULL", "-3; 0"},
        {"SELECT STDEV(N), VAR(N) FROM Nums WHERE N >= 0", "3.60555127546399|13"},
    });
    OnServer({
        {"SELECT Id FROM Orders WHERE Paid = 1", "10; 12; 13"},
        {"SELECT Id FROM Orders WHERE Paid = 'true'", "10; 12; 13"},
        {"SELECT Id FROM Orders WHERE Paid = -1", ""},
        {"SELECT Id FROM Orders WHERE Paid = True", "! Invalid column name 'True'.@35"},
        {"SELECT N / 2, N % 2, N / 2.0 FROM Nums WHERE N = 7", "3|1|3.500000"},
        {"SELECT AVG(N) FROM Nums", "1"},
        {"SELECT 1 / N FROM Nums", "! Divide by zero error encountered.@7"},
        {"SELECT T + N FROM Nums WHERE N = 7", "14"},
        {"SELECT T + N FROM Nums WHERE N = -3",
         "! Conversion failed when converting the varchar value 'a' to data type int.@7"},
        {"SELECT Id FROM Customers WHERE Name = N'Ana' COLLATE x", "! Incorrect syntax near 'COLLATE'.@45"},
        {"SELECT Id FROM Customers WITH (NOLOCK) WHERE Name = N'Ana   '", "1"},
        {"SELECT COUNT(DISTINCT City), SUM(DISTINCT Rating) FROM Customers", "3|8"},
        {"SELECT 5 & 4, 5 | 2, 5 ^ 1, ~5 FROM Nums WHERE N = 0", "4|7|4|-6"},
        {"SELECT CASE City WHEN 'berlin' THEN 'B' ELSE '-' END FROM Customers", "B; B; -; -"},
    });
    OnFile({
        {"SELECT N / 2, N \\ 2, N MOD 2, N ^ 2, -2 ^ 2 FROM Nums WHERE N = 7", "3.5|3|1|49|-4"},
        {"SELECT 7.5 \\ 2, 10 \\ 3 * 2 FROM Nums WHERE N = 0", "4|1"},
        {"SELECT AVG(N) FROM Nums", "1.5"},
        {"SELECT Id FROM Orders WHERE Paid = -1", "10; 12; 13"},
        {"SELECT Id FROM Orders WHERE Paid = True", "10; 12; 13"},
        {"SELECT Id FROM Orders WHERE Paid <> 1", "11"},
        {"SELECT N FROM Nums WHERE 1 / N > 0", "! Division by zero.@25"},
        {"SELECT NULL & Name, Name & Rating, Name & NULL FROM Customers WHERE Id = 1", "Ana|Ana1.5|Ana"},
        {"SELECT \"x\" & 'y' FROM Nums WHERE N = 0", "xy"},
        {"SELECT FIRST(Name), LAST(Name), SUM(Paid) FROM Customers, Orders WHERE Customers.Id = "
         "Orders.CustomerId",
         "Ana|O'Neil|-3"},
        {"SELECT N FROM Nums WHERE N > 0 XOR N = 7", "2"},
        {"SELECT DISTINCTROW [N] FROM [Nums] WHERE [Nums]![N]=7;", "7"},
    });
}

TEST_F(ShopTest, WhatServersRefuse) {
    OnServer({
        {"SELECT * FROM Nowhere", "! Invalid object name 'Nowhere'.@14"},
        {"SELECT Nope FROM Orders", "! Invalid column name 'Nope'.@7"},
        {"SELECT x.Id FROM Orders", "! The multi-part identifier \"x.Id\" could not be bound.@7"},
        {"SELECT Id FROM Orders, Customers", "! Ambiguous column name 'Id'.@7"},
        {"SELECT Id, SUM(Total) FROM Orders",
         "! Column 'Id' is invalid in the select list because it is not contained in either an aggregate "
         "function or the "
         "GROUP BY clause.@7"},
        {"SELECT Id AS X FROM Orders WHERE X = 1", "! Invalid column name 'X'.@33"},
        {"SELECT Id FROM Orders WHERE SUM(Total) > 1",
         "! An aggregate may not appear here: 'SUM(Total) > 1'. Only the select list, HAVING and ORDER BY "
         "take one.@28"},
        {"SELECT DISTINCT City FROM Customers ORDER BY Name",
         "! ORDER BY items must appear in the select list if SELECT DISTINCT is specified: 'Name'.@45"},
        {"SELECT Id FROM Orders; SELECT 1", "! Incorrect syntax near the keyword 'SELECT'.@23"},
        {"SELECT Frobnicate(1) FROM Orders", "! 'Frobnicate' is not a recognized built-in function name.@7"},
        {"SELECT LEFT(Name) FROM Customers", "! The left function has a wrong number of arguments.@7"},
        {"SELECT Name FROM Customers WHERE Name = 'x",
         "! Unclosed quotation mark after the character string 'x'.@40"},
        {"SELECT [Name FROM Customers", "! Unclosed delimiter after the name 'Name FROM Customers'.@7"},
        {"SELECT Id FROM Orders WHERE Id = 'x'",
         "! Conversion failed when converting the varchar value 'x' to data type int.@33"},
        {"SELECT SUM(Name) FROM Customers", "! Operand data type nvarchar is invalid for sum operator.@7"},
        {"total nonsense", "! Incorrect syntax near 'total'.@0"},
        {"", "! The statement is empty.@0"},
        {"SELECT SQRT(-1)", "! An invalid floating point operation occurred: square root of -1.@7"},
    });
    OnFile({
        {"SELECT Nope FROM Orders",
         "! No value given for one or more required parameters: 'Nope' is not a field of the tables.@7"},
        {"SELECT Id FROM Orders, Customers",
         "! The specified field 'Id' could refer to more than one table listed in the FROM clause.@7"},
    });
}

}  // namespace
}  // namespace zephrin::ado::providers::sqlite::test
