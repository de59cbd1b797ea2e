#include "platform/ado/providers/odbc/KeywordTranslation.h"

#include <zephrin/ado/Error.h>

#include <gtest/gtest.h>

namespace zephrin::ado::odbc {
namespace {

Installation WithDrivers(std::initializer_list<Driver> drivers) {
    return {QList<Driver>(drivers), {}};
}

Driver Named(const char* name) {
    return {QString::fromUtf8(name), QStringLiteral("/usr/lib/libmsodbcsql.so")};
}

const Driver freeTds{QStringLiteral("FreeTDS"), QStringLiteral("libtdsodbc.so")};
const Driver freeTdsInDisguise{QStringLiteral("SQL Server"), QStringLiteral("/usr/lib/libtdsodbc.so")};

struct Translation {
    const char* Name;
    Installation Machine;
    const char* Given;
    const char* Sent;
};

QString Sent(const QString& given, const Installation& machine, const QString& user = {},
             const QString& password = {}) {
    OpenRequest request;
    request.ConnectionString = given;
    request.UserId = user;
    request.Password = password;
    return Translate(request, machine).ConnectionString;
}

TEST(KeywordTranslation, WritesTheDriversKeywords) {
    const Installation vendor = WithDrivers({freeTds, Named("ODBC Driver 17 for SQL Server"),
                                             Named("ODBC Driver 18 for SQL Server"), Named("SQL Server")});
    const Installation free = WithDrivers({Named("SQLite3"), freeTds});
    const Translation translations[] = {
        {"the newest driver of the vendor", vendor,
         "Provider=SQLOLEDB;Data Source=box,1444;Initial Catalog=shop;User ID=me;Password=pw",
         "Driver={ODBC Driver 18 for SQL Server};Server=box,1444;Database=shop;UID=me;PWD=pw;"},
        {"a trusted login", vendor,
         "Provider=SQLOLEDB.1;Persist Security Info=False;Integrated Security=SSPI;Data Source=.\\X;Initial "
         "Catalog=d",
         "Driver={ODBC Driver 18 for SQL Server};Server=.\\X;Database=d;Trusted_Connection=Yes;"},
        {"no trusted login where it says no", vendor,
         "Provider=SQLNCLI11;Server=a;Trusted_Connection=no;Uid=u;Pwd=p",
         "Driver={ODBC Driver 18 for SQL Server};Server=a;UID=u;PWD=p;"},
        {"encryption, application and what we don't know", vendor,
         "Provider=MSOLEDBSQL;Data Source=a;Use Encryption for Data=True;Application "
         "Name=z;ApplicationIntent=ReadOnly",
         "Driver={ODBC Driver 18 for SQL Server};ApplicationIntent=ReadOnly;Server=a;APP=z;Encrypt=yes;"},
        {"strict encryption", vendor, "Provider=MSOLEDBSQL19;Server=a;Use Encryption for Data=Strict",
         "Driver={ODBC Driver 18 for SQL Server};Server=a;Encrypt=strict;"},
        {"no word of encryption is taken for a no", vendor,
         "Provider=SQLOLEDB;Server=a;Use Encryption for Data=please",
         "Driver={ODBC Driver 18 for SQL Server};Server=a;Encrypt=yes;"},
        {"quotes are OLE DB's, braces ODBC's; the dialect is ours", vendor,
         "Provider=SQLOLEDB;Server=\"a\";APP=\"x;UID=sa\";Dialect=SQL Server",
         "Driver={ODBC Driver 18 for SQL Server};Server=a;APP={x;UID=sa};"},
        {"FreeTDS wants the port by itself", free,
         "Provider=SQLOLEDB;Data Source=tcp:box,1444;Initial Catalog=shop;Dialect=SQL Server",
         "Driver={FreeTDS};Server=box;Database=shop;Port=1444;ClientCharset=UTF-8;"},
        {"FreeTDS has words of its own for encryption", free,
         "Provider=SQLOLEDB;Server=a;Use Encryption for Data=yes;Trust Server Certificate=yes",
         "Driver={FreeTDS};Server=a;Encryption=require;TDS_Version=7.4;Port=1433;ClientCharset=UTF-8;"},
        {"which stand where they stand", free,
         "Driver=FreeTDS;Encrypt=yes;TrustServerCertificate=yes;Encryption=off",
         "Driver=FreeTDS;Encryption=off;ClientCharset=UTF-8;"},
        {"and behind a data source, too",
         {{freeTds}, {{QStringLiteral("shop"), QStringLiteral("FreeTDS")}}},
         "DSN=shop;Encrypt=strict;TrustServerCertificate=yes;PWD={a}}b}",
         "DSN=shop;PWD=a}b;Encryption=strict;"},
        {"the vendor's driver is not here", free,
         "Driver={ODBC Driver 17 for SQL Server};Server=(local);UID=u",
         "Driver=FreeTDS;Server=localhost;UID=u;Port=1433;ClientCharset=UTF-8;"},
        {"FreeTDS under the vendor's name", WithDrivers({freeTdsInDisguise}),
         "Driver={SQL Server};Server=box,1;Port=2",
         "Driver={SQL Server};Server=box;Port=2;ClientCharset=UTF-8;"},
        {"the port for the vendor stays in the server", vendor, "Driver={SQL Server};Server=box,1433",
         "Driver={SQL Server};Server=box,1433;"},
        {"the bridge's keywords", free, "Provider=MSDASQL.1;Data Source=shop;User ID=me;Initial Catalog=d",
         "DSN=shop;Database=d;UID=me;"},
        {"the bridge's string in a string", free,
         "Provider=MSDASQL;Extended Properties=\"Driver=SQLite3;Database=/a b.db\";Mode=Read",
         "Driver=SQLite3;Database=/a b.db;"},
        {"Access", WithDrivers({Named("Microsoft Access Driver (*.mdb, *.accdb)")}),
         "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\a.mdb;Jet OLEDB:Database Password=pw;Jet "
         "OLEDB:Engine Type=5",
         "Driver={Microsoft Access Driver (*.mdb, *.accdb)};DBQ=C:\\a.mdb;PWD=pw;"},
        {"Access for reading alone", WithDrivers({Named("Microsoft Access Driver (*.mdb, *.accdb)")}),
         "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=a.mdb;Mode=Share Deny None|Read;Dialect=MS Access",
         "Driver={Microsoft Access Driver (*.mdb, *.accdb)};DBQ=a.mdb;ReadOnly=1;"},
        {"a workbook through the Access provider",
         WithDrivers({Named("Microsoft Access Driver (*.mdb)"), Named("Microsoft Excel Driver (*.xls)")}),
         "Provider=Microsoft.ACE.OLEDB.12.0;Data Source=a.xls;Extended Properties=\"Excel 8.0;HDR=Yes\"",
         "Driver={Microsoft Excel Driver (*.xls)};DBQ=a.xls;"},
        {"the dialect is ours", free, "Driver=SQLite3;Database=a.db;Dialect=MS Access",
         "Driver=SQLite3;Database=a.db;"},
        {"a driver by its file", free, "Driver=/x/libpsqlodbcw.so;Server=a,1",
         "Driver=/x/libpsqlodbcw.so;Server=a,1;"},
        {"a source", free, "DSN=shop;UID=u", "DSN=shop;UID=u;"},
        {"nothing", free, "", ""},
    };
    for (const Translation& row : translations)
        EXPECT_EQ(Sent(QString::fromUtf8(row.Given), row.Machine).toStdString(), row.Sent) << row.Name;
}

TEST(KeywordTranslation, ReadsServersAsPeopleWriteThem) {
    const struct {
        const char* Server;
        const char* Sent;
    } servers[] = {
        {"box", "Server=box;Port=1433;"},
        {"tcp:box", "Server=box;Port=1433;"},
        {"box, 1444 ", "Server=box;Port=1444;"},
        {"box\\one,1444", "Server=box;Port=1444;"},
        {"box\\one", "Server=box\\one;"},
        {"box\\MSSQLSERVER", "Server=box;Port=1433;"},
        {".\\X", "Server=localhost\\X;"},
        {"(local)\\X", "Server=localhost\\X;"},
        {".", "Server=localhost;Port=1433;"},
        {"lpc:(local)", "Server=localhost;Port=1433;"},
        {"np:box", "Server=box;Port=1433;"},
        {"np:\\\\box\\pipe\\sql\\query", "Server=box;Port=1433;"},
        {"\\\\.\\pipe\\MSSQL$X\\sql\\query", "Server=localhost\\X;"},
        {"box,1\n", "Server=box;Port=1;"},
    };
    for (const auto& row : servers)
        EXPECT_EQ(Sent(QStringLiteral("Driver=FreeTDS;Server=") + QString::fromUtf8(row.Server),
                       WithDrivers({freeTds}))
                      .toStdString(),
                  std::string("Driver=FreeTDS;") + row.Sent + "ClientCharset=UTF-8;");
    EXPECT_EQ(Sent(QStringLiteral("Driver=FreeTDS;Servername=box"), WithDrivers({freeTds})),
              QStringLiteral("Driver=FreeTDS;Servername=box;ClientCharset=UTF-8;"));
}

TEST(KeywordTranslation, PutsTheRequestsLoginFirst) {
    const Installation free = WithDrivers({freeTds, Named("SQLite3")});
    EXPECT_EQ(Sent(QStringLiteral("Driver=SQLite3;UID=old;Password=old"), free, QStringLiteral("new"),
                   QStringLiteral("a;b")),
              QStringLiteral("Driver=SQLite3;UID=new;PWD={a;b};"));
    EXPECT_EQ(Sent(QStringLiteral("Provider=SQLOLEDB;Server=s;User ID=old;Password=old"), free,
                   QStringLiteral("new"), QStringLiteral("pw")),
              QStringLiteral("Driver={FreeTDS};Server=s;UID=new;PWD=pw;Port=1433;ClientCharset=UTF-8;"));
}

TEST(KeywordTranslation, SaysWhichDriverIsMissing) {
    const Installation machine = WithDrivers({Named("SQLite3"), Named("PostgreSQL Unicode")});
    const struct {
        const char* Given;
        const char* Missing;
    } cases[] = {
        {"Driver={SQL Server};Server=a", "'SQL Server'"},
        {"Provider=SQLOLEDB;Data Source=a", "'ODBC Driver 18 for SQL Server'"},
        {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=a", "'Microsoft Access Driver'"},
        {"Driver={Microsoft Excel Driver (*.xls)};DBQ=a", "'Microsoft Excel Driver (*.xls)'"},
    };
    for (const auto& row : cases) {
        try {
            Sent(QString::fromUtf8(row.Given), machine);
            ADD_FAILURE() << row.Given;
        } catch (const Error& error) {
            EXPECT_TRUE(error.Description().contains(QString::fromUtf8(row.Missing))) << error.what();
            EXPECT_TRUE(error.Description().endsWith(
                QStringLiteral("Installed drivers: SQLite3, PostgreSQL Unicode.")));
        }
    }
    EXPECT_THROW(Sent(QStringLiteral("Provider=Nobody.1;Data Source=a"), machine), Error);
}

}  // namespace
}  // namespace zephrin::ado::odbc
