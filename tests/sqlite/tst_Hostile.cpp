#include "Shop.h"
#include "platform/ado/providers/sqlite/dialect/Translation.h"
#include "platform/ado/providers/sqlite/functions/Functions.h"
#include "platform/ado/providers/sqlite/values/Failures.h"

#include <zephrin/ado/Error.h>

#include <QThread>

#include <sqlite3.h>

namespace zephrin::ado::providers::sqlite::test {
namespace {

/// Runs `work` where there is little room: a host may run statements on a thread of its own.
template <class Work>
void OnSmallStack(Work work) {
    const std::unique_ptr<QThread> thread(QThread::create(work));
    thread->setStackSize(512 * 1024);
    thread->start();
    thread->wait();
}

/// Every function with every number of arguments and every kind of value: an answer or an error, never a look
/// past the end.
TEST(Hostile, FunctionsUnderTheirOwnNames) {
    static constexpr const char* values[] = {
        "NULL", "1", "-9223372036854775808", "1e308", "'abc'", "'1996-07-04'", "x'00ff41'", "''"};
    for (const Dialect dialect : {Dialect::SqlServer, Dialect::Access}) {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(":memory:", &database), SQLITE_OK);
        RegisterFunctions(database, dialect);
        for (const auto& entries : {TextFunctions(), MathFunctions(), DateFunctions(), OperatorFunctions(),
                                    ConversionFunctions(), SchemaFunctions()}) {
            for (const FunctionEntry& entry : entries) {
                for (int count = 0; count <= 6; ++count) {
                    for (const char* const value : values) {
                        const QByteArray call = "SELECT " + QByteArray(entry.Name) + "(" +
                                                QByteArrayList(count, value).join(", ") + ")";
                        const int code = sqlite3_exec(database, call.constData(), nullptr, nullptr, nullptr);
                        if (count < entry.Least || count > entry.Most) {
                            EXPECT_EQ(code, SQLITE_ERROR) << call.constData();
                        }
                    }
                }
            }
        }
        sqlite3_close(database);
    }
}

TEST_F(ShopTest, ViewsOfForeignFiles) {
    shop.Run("PRAGMA foreign_keys = 0");
    const auto connection = Connect(shop, QStringLiteral("SQL Server"));
    EXPECT_EQ(Answer(*connection,
                     QStringLiteral("CREATE VIEW Ours AS SELECT CAST(Id AS varchar(2)) + LEFT(Name, 1) + 'x' "
                                    "AS B FROM Customers WHERE Name LIKE 'a%'")),
              QString());
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT B FROM Ours")), u"1Ax"_qs);
    const struct {
        const char* View;
        const char* Answer;
    } cases[] = {
        {"zx_cast(Name, 'varchar(10)')", "wrong number of arguments"},
        {"zx_left(Name)", "wrong number of arguments"},
        {"zx_cast(Name, 'varchar(10)', 'x')", "Conversion failed"},
        {"zx_type_code(Name)", "unsafe use"},
        {"load_extension(Name)", "unsafe use|not authorized"},
    };
    for (const auto& row : cases) {
        // The engine checks what a view calls only when somebody reads it.
        sqlite3* file = nullptr;
        ASSERT_EQ(sqlite3_open(shop.Path().toUtf8().constData(), &file), SQLITE_OK);
        const QByteArray make = "DROP VIEW IF EXISTS Theirs; CREATE VIEW Theirs AS SELECT " +
                                QByteArray(row.View) + " AS b FROM Customers";
        ASSERT_EQ(sqlite3_exec(file, make.constData(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(file);
        const QString answer = Answer(*connection, QStringLiteral("SELECT * FROM Theirs"));
        EXPECT_TRUE(answer.startsWith(u'!')) << row.View << ": " << qPrintable(answer);
    }
    EXPECT_TRUE(Answer(*connection, QStringLiteral("PRAGMA writable_schema = 1")).isEmpty());
    EXPECT_TRUE(Answer(*connection, QStringLiteral("UPDATE sqlite_master SET sql = 'x'")).startsWith(u'!'));
}

/// Chains in nested parentheses, calls, subqueries and joins: refused with a place, or answered, on a small
/// stack.
TEST_F(ShopTest, DepthHasAnEnd) {
    const auto nested = [](const char* open, const char* middle, const char* close, int levels) {
        return QString::fromLatin1(open).repeated(levels) + QLatin1StringView(middle) +
               QString::fromLatin1(close).repeated(levels);
    };
    const auto chain = [](const char* part, int links) { return QString::fromLatin1(part).repeated(links); };
    const QByteArray link = QByteArray(" + 1").repeated(90) + ')';
    QStringList statements;
    for (const int levels : {10, 40, 90, 190, 800, 5000}) {
        statements << u"SELECT "_qs + nested("(", "1", ")", levels)
                   << u"SELECT "_qs + nested("ABS(", "1", ")", levels)
                   << u"SELECT "_qs + nested("CASE WHEN 1 = 1 THEN ", "1", " END", levels)
                   << u"SELECT "_qs + nested("CASE 1 WHEN ", "1", " THEN 1 END", levels)
                   << u"SELECT "_qs + nested("(SELECT ", "1", ")", levels)
                   << u"SELECT * FROM "_qs + nested("(SELECT * FROM ", "Nums", ") q", levels)
                   << u"SELECT 1 WHERE "_qs + nested("NOT (1 = 1 AND ", "1 = 1", ")", levels)
                   << u"SELECT 1"_qs + chain(" + 1", levels) << u"SELECT '1'"_qs + chain(" + '1'", levels)
                   << u"SELECT N FROM Nums WHERE N = 1"_qs + chain(" OR N = 1", levels)
                   << u"SELECT TOP 1 1 FROM Nums"_qs + chain(" CROSS JOIN Nums", levels)
                   << u"SELECT 1"_qs + chain(" UNION ALL SELECT 1", levels)
                   << u"SELECT "_qs + nested("(", "1", link.constData(), levels);
    }
    for (const QString& statement : statements) {
        OnSmallStack([&] {
            for (const char* const dialect : {"SQL Server", "MS Access"}) {
                const auto connection = Connect(shop, QString::fromLatin1(dialect), 20);
                try {
                    connection->Execute(statement);
                } catch (const Error& error) {
                    const bool place = error.Position() >= 0 && error.Position() <= statement.size();
                    EXPECT_TRUE(place || error.Description().contains(u"at most"))
                        << qPrintable(statement.left(60)) << qPrintable(error.Description());
                }
            }
        });
    }
    // Two chains, each short enough, of which one stands in the other.
    EXPECT_EQ(Answer(*Connect(shop, QStringLiteral("SQL Server")),
                     u"SELECT "_qs + nested("(", "1", link.constData(), 2)),
              u"! The statement is nested too deeply.@412"_qs);
}

/// What would double with each level if an operand were written twice ends at once.
TEST_F(ShopTest, NothingDoublesByLevel) {
    const auto nest = [](const char* open, const char* middle, const char* close, int levels) {
        return QString::fromLatin1(open).repeated(levels) + QLatin1StringView(middle) +
               QString::fromLatin1(close).repeated(levels);
    };
    const auto connection = Connect(shop, QStringLiteral("SQL Server"), 20);
    const struct {
        QString Statement;
        const char* Answer;
    } cases[] = {
        {nest("SELECT TOP 100 PERCENT * FROM (", "SELECT TOP 50 PERCENT N FROM Nums ORDER BY N", ") q", 3),
         "-3; 0"},
        {u"SELECT "_qs + nest("CASE ", "1", " WHEN 1 THEN 1 WHEN 2 THEN 2 WHEN 3 THEN 3 END", 14), "1"},
        {nest("SELECT AVG(a) AS a FROM (", "SELECT N AS a FROM Nums", ") q", 12), "1"},
        {nest("SELECT *, * FROM (", "SELECT N FROM Nums", ") q", 30),
         "! The statement asks for more than 2000 columns.@0"},
    };
    for (const auto& row : cases)
        EXPECT_TRUE(Answer(*connection, row.Statement).startsWith(QLatin1StringView(row.Answer).left(40)))
            << qPrintable(row.Statement.left(60)) << qPrintable(Answer(*connection, row.Statement));
}

/// A database whose time is over when it has been asked often enough.
class ImpatientCatalog : public Catalog {
 public:
    const CatalogTable* Find(const QString&) const override { return &table; }
    void CheckTime() const override {
        if (++asked == 1000) throw Failure(ErrorNumber::TimeoutExpired, QStringLiteral("over"));
    }

 private:
    CatalogTable table{QStringLiteral("T"), {{QStringLiteral("N"), {DataType::Integer}}}};
    mutable int asked = 0;
};

TEST(Hostile, TranslatingIsUnderTheTimeOut) {
    const QString list = u"N"_qs + u", N"_qs.repeated(600);
    for (const QString& statement : {u"SELECT "_qs + list + u", N"_qs.repeated(600) + u" FROM T"_qs,
                                     u"SELECT "_qs + list + u" FROM T GROUP BY "_qs + list}) {
        try {
            Translate(statement, Dialect::SqlServer, ImpatientCatalog());
            ADD_FAILURE() << "nobody looked at the time";
        } catch (const Error& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::TimeoutExpired);
        }
    }
    const auto tooLong = u"SELECT "_qs + QString(2'000'000, u' ') + u'1';
    EXPECT_THROW(Translate(tooLong, Dialect::SqlServer, ImpatientCatalog()), Error);
}

TEST_F(ShopTest, DigitsOfOtherScripts) {
    for (const char* const statement :
         {"SELECT Id FROM Orders WHERE Id = \u0661\u0660", "SELECT \uFF11", "SELECT \u0967.5"}) {
        const QString answer = Answer(*Connect(shop, QStringLiteral("SQL Server")), Text(statement));
        EXPECT_TRUE(answer.startsWith(u"! Incorrect syntax near")) << qPrintable(answer);
    }
}

}  // namespace
}  // namespace zephrin::ado::providers::sqlite::test
