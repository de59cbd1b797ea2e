#include "Shop.h"
#include "platform/ado/providers/AllProviders.h"
#include "platform/ado/providers/sqlite/ConnectionStringReader.h"
#include "platform/ado/providers/sqlite/values/Failures.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <sqlite3.h>

namespace zephrin::ado::providers::sqlite::test {
namespace {

QString OpenAnswer(const QString& connectionString) {
    Connection connection(AllProviders());
    try {
        connection.Open(connectionString);
        return QStringLiteral("open");
    } catch (const Error& error) {
        return error.Description();
    }
}

TEST(ConnectionStrings, Values) {
    const struct {
        const char* Text;
        const char* DataSource;
    } cases[] = {
        {"Data Source=a b.db", "a b.db"},
        {" data source = x.db ;Mode=Read", "x.db"},
        {"Data Source='a;b=c.db';Mode=Read", "a;b=c.db"},
        {"Data Source=\"it\"\"s.db\"", "it\"s.db"},
        {"Data Source=a.db;Data Source=b.db", "b.db"},
        {"Data Source='never closed", "never closed"},
        {"Data Source=;x", ""},
        {";;=;Data Source=a=b", "a=b"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(KeywordValue(SplitConnectionString(QString::fromUtf8(row.Text)),
                               QLatin1StringView("Data Source")),
                  QString::fromUtf8(row.DataSource))
            << row.Text;
}

TEST_F(ShopTest, Opening) {
    QFile text(shop.Path() + QStringLiteral(".txt"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(5000, 'x'));
    text.close();
    const QString folder = QFileInfo(shop.Path()).absolutePath();
    const QString start = QStringLiteral("Provider=SQLite;");
    const struct {
        QString Rest;
        const char* Answer;
    } cases[] = {
        {u"Dialect=SQL Server;Data Source="_qs + shop.Path(), "open"},
        {u"dialect=ms access;DATA SOURCE="_qs + shop.Path() + u";User ID=;Password=;Mode=ReadWrite"_qs,
         "open"},
        {u"Dialect=Microsoft Excel Driver;Data Source=\""_qs + shop.Path() + u"\";Mode=Read"_qs, "open"},
        {u"Dialect=MS Access"_qs, "names no file"},
        {u"Data Source="_qs + shop.Path(), "names no dialect"},
        {u"Dialect=Oracle;Data Source="_qs + shop.Path(), "'Oracle' is not supported"},
        {u"Dialect=MS Excel;Data Source="_qs + shop.Path(), "'MS Excel' is not supported"},
        {u"Dialect=MS Access;Data Source=/x/SQL Server/a.db"_qs, "stand for SQL Server"},
        {u"Dialect=SQL Server;Colour=red;Data Source="_qs + shop.Path(), "unknown keyword 'Colour'"},
        {u"Dialect=SQL Server;PWD={a;tail};Data Source="_qs + shop.Path(), "unknown keyword behind the password"},
        {u"Dialect=SQL Server;Mode=Sideways;Data Source="_qs + shop.Path(), "Mode=Sideways"},
        {u"Dialect=SQL Server;Data Source="_qs + folder + u"/missing.db"_qs, "Could not find file"},
        {u"Dialect=SQL Server;Data Source="_qs + folder, "is a folder"},
        {u"Dialect=SQL Server;Data Source="_qs + text.fileName(), "is not a database"},
        {u"Dialect=SQL Server;Data Source=:memory:"_qs, "Could not find file"},
        {u"Dialect=SQL Server;Data Source=file:"_qs + shop.Path() + u"?mode=rwc"_qs, "Could not find file"},
    };
    for (const auto& row : cases) {
        const QString answer = OpenAnswer(start + row.Rest);
        EXPECT_TRUE(answer.contains(QLatin1StringView(row.Answer)))
            << qPrintable(row.Rest) << ": " << qPrintable(answer);
    }
    EXPECT_FALSE(QFile::exists(folder + u"/missing.db"_qs)) << "opening never makes a file";
}

TEST(Opening, OddPaths) {
    for (const char* const name :
         {"a b#c%20.db", "q?mode=memory.db", "it's \"so\".db", "Ünïcode 数据.db", "semi;colon.db"}) {
        const TestDatabase database("CREATE TABLE T (A int)", QString::fromUtf8(name));
        QString quoted = database.Path();
        quoted.replace(u"\""_qs, u"\"\""_qs);
        EXPECT_EQ(
            OpenAnswer(QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=\"%1\"").arg(quoted)),
            u"open"_qs)
            << name;
    }
}

TEST_F(ShopTest, ReadingOnly) {
    Connection connection(AllProviders());
    connection.Open(shop.ConnectionString(QStringLiteral("SQL Server")) + QStringLiteral(";Mode=Read"));
    EXPECT_EQ(Answer(connection, QStringLiteral("SELECT COUNT(*) FROM Orders")), u"5"_qs);
    EXPECT_TRUE(Answer(connection, QStringLiteral("DELETE FROM Orders")).contains(u"reading only"));
    EXPECT_EQ(Answer(connection, QStringLiteral("SELECT COUNT(*) FROM Orders")), u"5"_qs);
}

TEST_F(ShopTest, SchemaListsWhatTheFileHolds) {
    shop.Run(
        "CREATE TABLE \"a]\" (x int); CREATE TABLE \"b[c\" (y int); CREATE TABLE \"it's\" (z int);"
        "CREATE TABLE Auto (Id integer PRIMARY KEY AUTOINCREMENT)");
    const auto connection = Connect(shop, QStringLiteral("SQL Server"));
    const RecordsetPtr tables = connection->OpenSchema(Schema::Tables);
    QStringList lines;
    for (; !tables->Eof(); tables->MoveNext())
        lines << tables->Text(u"TABLE_NAME") + u':' + tables->Text(u"Table_Type");
    EXPECT_EQ(lines.join(u'|'),
              u"a]:TABLE|Auto:TABLE|b[c:TABLE|Customers:TABLE|it's:TABLE|Nums:TABLE|Order Details:TABLE|"
              u"Orders:TABLE|Paid Orders:VIEW|sqlite_sequence:SYSTEM TABLE"_qs);
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT [x] FROM [a]]]")), QString());
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT [b[c].[y] FROM [b[c]")), QString());
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT [a]].[x] FROM [a]]")),
              u"! Unclosed delimiter after the name 'a]'.@21"_qs);
}

TEST_F(ShopTest, SchemaTellsColumnsInOrder) {
    shop.Run(
        "CREATE TABLE Kinds (a bit NOT NULL, b tinyint, c bigint, d decimal(10,2), e char(5), f varchar(7), "
        "g text,"
        " h ntext, i image, j uniqueidentifier, k date, l real, m double precision, n, o \"UNSIGNED BIG "
        "INT\","
        " p varbinary(9), q smalldatetime, r memo, s STRING)");
    const auto columns = [&](const char* dialect, const QString& table) {
        const auto connection = Connect(shop, QString::fromUtf8(dialect));
        const RecordsetPtr rows = connection->OpenSchema(Schema::Columns, table);
        QStringList lines;
        for (; !rows->Eof(); rows->MoveNext())
            lines << rows->Text(u"COLUMN_NAME") + u':' + rows->Text(u"DATA_TYPE");
        return lines.join(u' ');
    };
    EXPECT_EQ(
        columns("SQL Server", u"Kinds"_qs),
        u"a:11 b:17 c:20 d:131 e:129 f:200 g:201 h:203 i:205 j:72 k:133 l:4 m:5 n:202 o:20 p:204 q:135 r:203 s:202"_qs);
    EXPECT_EQ(
        columns("MS Access", u"Kinds"_qs),
        u"a:11 b:17 c:20 d:131 e:130 f:202 g:203 h:203 i:205 j:72 k:7 l:4 m:5 n:202 o:20 p:204 q:7 r:203 s:202"_qs);
    EXPECT_EQ(columns("SQL Server", u"paid orders"_qs), u"Id:3 Total:6"_qs);
    EXPECT_EQ(columns("SQL Server", u"Nowhere"_qs), QString());
    const auto connection = Connect(shop, QStringLiteral("SQL Server"));
    const RecordsetPtr sizes = connection->OpenSchema(Schema::Columns, QStringLiteral("Customers"));
    sizes->MoveNext();
    EXPECT_EQ(sizes->Text(u"CHARACTER_MAXIMUM_LENGTH"), u"40"_qs);
    EXPECT_EQ(sizes->Text(u"ORDINAL_POSITION"), u"2"_qs);
}

TEST_F(ShopTest, TablesComeAndGoWhileConnected) {
    const auto connection = Connect(shop, QStringLiteral("SQL Server"));
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT COUNT(*) FROM Nums")), u"4"_qs);
    shop.Run("DROP TABLE Nums; CREATE TABLE News (Id int); INSERT INTO News VALUES (1)");
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT * FROM Nums")),
              u"! Invalid object name 'Nums'.@14"_qs);
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT * FROM News")), u"1"_qs);
    shop.Run("ALTER TABLE News ADD COLUMN Extra text");
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT * FROM News")), u"1|~"_qs);
    try {
        connection->Execute(QStringLiteral("SELECT * FROM Nums"));
        ADD_FAILURE() << "the table is gone";
    } catch (const Error& error) {
        // None of the numbers that stand for a dead connection.
        EXPECT_EQ(error.Number(), FailureNumber::NoTable);
    }
}

TEST_F(ShopTest, TimeOutStopsAStatement) {
    const auto connection = Connect(shop, QStringLiteral("SQL Server"), 1);
    shop.Run(
        "CREATE VIEW Endless AS WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c) SELECT n "
        "FROM c");
    const auto number = [&](const char* statement) {
        try {
            connection->Execute(QString::fromUtf8(statement));
            return 0;
        } catch (const Error& error) {
            return error.Number();
        }
    };
    EXPECT_EQ(number("SELECT COUNT(*) FROM Endless"), ErrorNumber::TimeoutExpired);
    EXPECT_EQ(number("SELECT n FROM Endless WHERE n % 50000000 = 0"), ErrorNumber::TimeoutExpired);
    EXPECT_EQ(number("SELECT TOP 3 n FROM Endless"), 0);
}

TEST_F(ShopTest, AWatcherStopsWhateverTakesLong) {
    shop.Run(
        "CREATE VIEW Endless AS WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c) SELECT n "
        "FROM c;"
        "CREATE TABLE Many (N int, T nvarchar(30));"
        "INSERT INTO Many SELECT n, 'text ' || (n * 7919 % 100003) FROM Endless LIMIT 20000");
    const auto connection = Connect(shop, QStringLiteral("SQL Server"));
    QList<qint64> rows;
    for (const char* statement :
         {"SELECT COUNT(*) FROM Many a, Many b, Many c", "SELECT a.N, b.T FROM Many a, Many b, Many c",
          "SELECT TOP 1 a.N FROM Many a, Many b WHERE a.N <> b.N ORDER BY b.T, a.T DESC",
          "SELECT a.T, STDEV(b.N) FROM Many a, Many b GROUP BY a.T",
          "SELECT MAX(LEFT(a.T, 7) + CONVERT(varchar(10), b.N)) FROM Many a, Many b"}) {
        qint64 asked = 0;
        connection->SetWatcher([&](const Progress& progress) {
            asked = progress.Elapsed;
            rows << progress.Rows;
            return progress.Elapsed < 200;
        });
        const QString answer = Answer(*connection, QString::fromUtf8(statement));
        EXPECT_EQ(answer, u"! Operation has been cancelled by the user."_qs) << statement;
        EXPECT_GE(asked, 200) << statement;
        connection->SetWatcher({});
        EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT COUNT(*) FROM Nums")), u"4"_qs)
            << "usable at once";
    }
    EXPECT_GT(*std::max_element(rows.begin(), rows.end()), 0);
}

TEST_F(ShopTest, LockedDatabase) {
    const auto connection = Connect(shop, QStringLiteral("MS Access"), 1);
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(shop.Path().toUtf8().constData(), &other), SQLITE_OK);
    sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    EXPECT_TRUE(
        Answer(*connection, QStringLiteral("SELECT * FROM Nums")).contains(u"locked by another user"));
    // A user who waits for the lock may do something else; the time of his answer is no time of the
    // statement's.
    connection->SetWatcher([](const Progress& progress) {
        if (progress.Elapsed < 300) QThread::msleep(1200);
        return progress.Elapsed < 300;
    });
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT * FROM Nums")),
              u"! Operation has been cancelled by the user."_qs);
    sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT COUNT(*) FROM Nums")), u"4"_qs);
}

TEST_F(ShopTest, RowsComeInAnyPortion) {
    const auto connection = Connect(shop, QStringLiteral("SQL Server"));
    Recordset rows;
    rows.SetMaxRecords(3);
    rows.Open(QStringLiteral("SELECT Id FROM Orders ORDER BY Id"), *connection);
    EXPECT_EQ(rows.RecordCount(), 3);
    EXPECT_TRUE(rows.Truncated());
    // The statement that was left in the middle holds no lock.
    EXPECT_EQ(Answer(*connection, QStringLiteral("UPDATE Orders SET Total = 1 WHERE Id = 10")), QString());
}

TEST_F(ShopTest, OddCells) {
    const QByteArray fill =
        "CREATE TABLE Odd (A image, B ntext, C datetime, D money, E int, F decimal(9,2), G "
        "uniqueidentifier, H date, I time);"
        "INSERT INTO Odd VALUES (x'00ff41', printf('%.*c', 10000000, 'x'), 'soon', 'much', 'text', 12.5,"
        " '6F9619FF-8B86-D011-B42D-00C04FC964FF', '2000-02-29', '08:15:00');"
        "INSERT INTO Odd VALUES (NULL, '', 42, 1e300, 1.5, 7, 'none', '2000-01-01 10:00:00', 'x')";
    shop.Run(fill.constData());
    const auto connection = Connect(shop, QStringLiteral("SQL Server"));
    const RecordsetPtr rows = connection->Execute(QStringLiteral("SELECT * FROM Odd"));
    ASSERT_EQ(rows->RecordCount(), 2);
    EXPECT_EQ(rows->Value(0).toByteArray(), QByteArray("\0\xff\x41", 3));
    EXPECT_EQ(rows->Value(1).toString().size(), 10'000'000);
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT C, D, E, F, G, H, I FROM Odd")),
              u"soon|much|text|12.50|6F9619FF-8B86-D011-B42D-00C04FC964FF|2000-02-29|08:15:00; "
              u"42|1E+300|1.5|7.00|none|2000-01-01 10:00:00|x"_qs);
}

}  // namespace
}  // namespace zephrin::ado::providers::sqlite::test
