#include "Shop.h"

#include <QRandomGenerator>

namespace zephrin::ado::providers::sqlite::test {
namespace {

TEST_F(ShopTest, ChangesOfRows) {
    OnServer({
        {"UPDATE [dbo].[Orders] SET [Note] = 'a' + 'b', [Order Date] = '1/2/1999 3:04 pm', Paid = 1 WHERE "
         "[Id] = 11",
         ""},
        {"SELECT [Note], [Order Date], Paid FROM Orders WHERE Id = 11", "ab|1999-01-02 15:04:00|True"},
        {"INSERT INTO Orders (Id, [Order Date], Total) VALUES (20, '20000229', 5), (21, NULL, 6 / 4.0)", ""},
        {"SELECT Id, [Order Date], Total FROM Orders WHERE Id >= 20", "20|2000-02-29|5.00; 21|~|1.50"},
        {"INSERT INTO Nums SELECT TOP 1 Id, 'x', 0 FROM Orders ORDER BY Id DESC", ""},
        {"SELECT T FROM Nums WHERE N = 21", "x"},
        {"DELETE FROM Orders WHERE [Order Date] < '1997-01-01'", ""},
        {"SELECT COUNT(*) FROM Orders", "5"},
        {"INSERT INTO Orders (Id) VALUES (20)", "! UNIQUE constraint failed: Orders.Id"},
        {"CREATE TABLE Refs (Id int REFERENCES Customers (Id))", ""},
        {"INSERT INTO Refs VALUES (1)", ""},
        {"DELETE FROM Customers WHERE Id = 1", "! FOREIGN KEY constraint failed"},
        {"UPDATE Orders SET Nope = 1", "! Invalid column name 'Nope'.@18"},
        {"UPDATE Orders SET [Order Date] = 'never'",
         "! Conversion failed when converting date and/or time from character string 'never'.@33"},
    });
    OnFile({
        {"UPDATE Orders SET Paid = True, [Order Date] = #2/1/2001# WHERE Id = 12", ""},
        {"SELECT [Order Date] FROM Orders WHERE Paid = Yes AND Id = 12", "2001-02-01"},
        {"DELETE * FROM Orders WHERE Id = 12", ""},
        {"SELECT Id FROM Orders WHERE Id = 12", ""},
        {"CREATE TABLE [dbo].[New One] (Id int, [A b] datetime)", ""},
        {"INSERT INTO [New One] VALUES (1, #1/2/2003#)", ""},
        {"SELECT * FROM [New One]", "1|2003-01-02"},
        {"DROP TABLE [New One];", ""},
        {"DROP TABLE [New One]",
         "! The input table or query 'New One' could not be found. Make sure that it exists and that its "
         "name is spelled "
         "correctly."},
    });
}

TEST_F(ShopTest, Views) {
    OnServer({
        {"CREATE VIEW [Big] AS SELECT TOP 50 PERCENT [Orders].[Id], [Orders].[Total] * 2 AS Twice\r\nFROM "
         "[Orders]\r\n"
         "ORDER BY [Orders].[Total] DESC",
         ""},
        {"SELECT * FROM [Big]", "11|40; 10|21; 12|14.5"},
        {"CREATE VIEW [Big] AS SELECT 1 AS A", "! There is already an object named 'Big' in the database."},
        {"CREATE VIEW [Orders] AS SELECT 1 AS A",
         "! There is already an object named 'Orders' in the database."},
        {"ALTER VIEW [Big] AS SELECT Id FROM Orders WHERE [Order Date] = '7/4/1996'", ""},
        {"SELECT * FROM [Big]", "10"},
        {"ALTER VIEW [Big] AS SELECT Nope FROM Orders", "! Invalid column name 'Nope'.@27"},
        {"ALTER VIEW [Orders] AS SELECT 1 AS A",
         "! Cannot perform alter on 'Orders' because it is an incompatible object type."},
        {"CREATE VIEW [Over] AS SELECT Id FROM [Big]", ""},
        {"ALTER VIEW [Big] AS SELECT Id FROM [Big]",
         "! View or function 'Big' contains a self-reference. Views or functions cannot reference themselves "
         "directly or indirectly."},
        {"ALTER VIEW [Big] AS SELECT (SELECT MAX(Id) FROM [Over]) AS Id",
         "! View or function 'Big' contains a self-reference. Views or functions cannot reference themselves "
         "directly or indirectly."},
        {"SELECT * FROM [Big]", "10"},
        {"CREATE VIEW V AS SELECT Id + 1 FROM Orders",
         "! Create View failed because no column name was specified for column 1."},
        {"CREATE VIEW V AS SELECT Id, Id FROM Orders",
         "! Column names in each view must be unique. Column name 'Id' in view 'V' is specified more than "
         "once."},
        {"CREATE VIEW V AS SELECT City FROM Customers GROUP BY City HAVING City = 'BERLIN'", ""},
        {"SELECT COUNT(*) FROM V", "1"},
    });
    OnFile({
        {"CREATE VIEW [Big] AS SELECT 1",
         "! The object 'Big' could not be created: the name is already used."},
        {"CREATE VIEW W AS SELECT Id & 'x' FROM Orders", ""},
        {"SELECT Expr1000 FROM W WHERE Expr1000 = '10X'", "10x"},
    });
    // What stays in the file needs no collation of ours.
    shop.Run("SELECT * FROM V");
}

TEST_F(ShopTest, ManyCriteria) {
    const auto connection = Connect(shop, QStringLiteral("MS Access"));
    QStringList alternatives;
    for (int index = 0; index < 5000; ++index)
        alternatives << QStringLiteral("([Orders].[Id] = %1)").arg(index + 13);
    EXPECT_EQ(Answer(*connection, u"SELECT [Id] FROM [Orders] WHERE "_qs + alternatives.join(u" OR "_qs)),
              u"13; 14"_qs);
    const auto deep = [](const QString& part, int times) { return part.repeated(times); };
    const QString many = QString::number(1) + deep(u" + 1"_qs, 100'000);
    for (const QString& tooMuch :
         {u"SELECT "_qs + deep(u"("_qs, 100'000), u"SELECT "_qs + deep(u"NOT "_qs, 100'000) + u'1',
          u"SELECT "_qs + deep(u"- "_qs, 100'000) + u'1', u"SELECT "_qs + many,
          u"SELECT * FROM "_qs + deep(u"("_qs, 100'000),
          u"SELECT 1 FROM Nums WHERE N "_qs + deep(u"= 1 "_qs, 100'000)})
        EXPECT_TRUE(Answer(*connection, tooMuch).contains(u"nested too deeply"))
            << qPrintable(tooMuch.left(40));
}

/// Random rows of pieces that mean something: whatever comes out, it is an answer or an error with its place
/// in the statement.
TEST_F(ShopTest, NoStatementIsTooOdd) {
    static const char* const pieces[] = {"SELECT",
                                         "TOP",
                                         "5",
                                         "PERCENT",
                                         "DISTINCT",
                                         "*",
                                         ",",
                                         "FROM",
                                         "[Orders]",
                                         "Orders",
                                         "WHERE",
                                         "(",
                                         ")",
                                         "'",
                                         "''",
                                         "#",
                                         "#1/1/2000#",
                                         "[",
                                         "]",
                                         "\"",
                                         "--",
                                         "/*",
                                         "*/",
                                         ";",
                                         "=",
                                         "<>",
                                         "LIKE",
                                         "'%a'",
                                         "IN",
                                         "NULL",
                                         "IS",
                                         "NOT",
                                         "AND",
                                         "OR",
                                         "BETWEEN",
                                         "GROUP BY",
                                         "ORDER BY",
                                         "HAVING",
                                         "SUM(",
                                         "Id",
                                         "[Order Date]",
                                         "UNION",
                                         "JOIN",
                                         "INNER JOIN",
                                         "ON",
                                         "LEFT",
                                         "LEFT(",
                                         "CASE",
                                         "WHEN",
                                         "THEN",
                                         "END",
                                         "CAST(",
                                         "AS",
                                         "int",
                                         "CONVERT(",
                                         ".",
                                         "1e",
                                         "0x",
                                         "N'x'",
                                         "$",
                                         "@",
                                         "\\",
                                         "&",
                                         "^",
                                         "MOD",
                                         "é",
                                         "\xF0\x9F\x98\x80",
                                         "-",
                                         "+",
                                         "/",
                                         "0",
                                         "[dbo]",
                                         "EXISTS(",
                                         "ANY(",
                                         "ASC",
                                         "DESC",
                                         "WITH (",
                                         "VALUES",
                                         "IIF(",
                                         "\t",
                                         "\r\n",
                                         "DATEADD(",
                                         "1.5",
                                         ".5",
                                         "~",
                                         "|",
                                         "!",
                                         "?",
                                         "{",
                                         "INTO",
                                         "UPDATE",
                                         "SET"};
    for (const char* const dialect : {"SQL Server", "MS Access"}) {
        const auto connection = Connect(shop, QString::fromUtf8(dialect), 5);
        QRandomGenerator random(42);
        for (int round = 0; round < 3000; ++round) {
            QString statement = random.bounded(4) == 0 ? QString() : QStringLiteral("SELECT ");
            for (int count = int(random.bounded(1, 14)); count > 0; --count)
                statement += QString::fromUtf8(pieces[random.bounded(int(std::size(pieces)))]) +
                             (random.bounded(3) == 0 ? QString() : QStringLiteral(" "));
            try {
                connection->Execute(statement);
            } catch (const Error& error) {
                EXPECT_FALSE(error.Description().isEmpty());
                EXPECT_LE(error.Position(), statement.size()) << qPrintable(statement);
            }
        }
    }
}

}  // namespace
}  // namespace zephrin::ado::providers::sqlite::test
