#include "platform/ado/providers/odbc/ConnectionString.h"

#include <zephrin/ado/Error.h>

#include <gtest/gtest.h>

namespace zephrin::ado::odbc {
namespace {

struct Reading {
    const char* Text;
    const char* Keyword;
    const char* Value;
};

TEST(ConnectionString, ReadsValues) {
    const Reading readings[] = {
        {"Driver={SQL Server};Server=box", "driver", "SQL Server"},
        {"Driver={SQL Server};Server=box", "SERVER", "box"},
        {" ;; DSN = shop ;;", "DSN", "shop"},
        {"shop", "DSN", "shop"},
        {"PWD={a;b}}c};UID=x", "PWD", "a;b}c"},
        {"PWD={a;b}}c};UID=x", "UID", "x"},
        {"PWD=a=b", "PWD", "a=b"},
        {"PWD=it's \"so\"", "PWD", "it's \"so\""},
        {"UID=first;uid=second", "UID", "first"},
        {"Provider=SQLOLEDB;User ID=first;user id=second", "User ID", "second"},
        {"Provider=SQLOLEDB;Password=\"a;\"\"b\";User ID='o''x'", "Password", "a;\"b"},
        {"Provider=SQLOLEDB;Password=\"a;\"\"b\";User ID='o''x'", "User ID", "o'x"},
        {"Server=;Database=d", "Server", ""},
        {"Database=d", "Server", ""},
    };
    for (const Reading& reading : readings) {
        const ConnectionString parsed = ConnectionString::Parse(QString::fromUtf8(reading.Text));
        EXPECT_EQ(parsed.Value(QString::fromUtf8(reading.Keyword)), QString::fromUtf8(reading.Value))
            << reading.Text;
    }
}

TEST(ConnectionString, RefusesWhatIsMalformedWithoutTellingValues) {
    for (const char* text : {"Driver={SQL Server;PWD=geheim", "PWD={geheim}x;UID=y", "=geheim",
                             "Server=a;geheim;UID=x", "Provider=SQLOLEDB;Password=\"geheim", ";geheim;",
                             "geheim;PWD=y", "PWD={geheim}}", "PWD=a;geheim=c;d", "PWD=a;geheim={d", "{"}) {
        try {
            ConnectionString::Parse(QString::fromUtf8(text));
            // "{" alone is a word, and so the name of a data source that nobody has.
            EXPECT_STREQ(text, "{");
        } catch (const Error& error) {
            EXPECT_TRUE(
                error.Description().startsWith(QLatin1StringView("The connection string is not well formed")))
                << text;
            EXPECT_FALSE(error.Description().contains(QLatin1StringView("geheim"))) << error.what();
        }
    }
}

TEST(ConnectionString, KeepsWhatNobodyChanged) {
    ConnectionString parsed =
        ConnectionString::Parse(QStringLiteral("Driver={A};; PWD={x;y};UID=me;uid=you"));
    EXPECT_EQ(parsed.Text(), QStringLiteral("Driver={A};PWD={x;y};UID=me;"));
    parsed.Set(QStringLiteral("uid"), QStringLiteral("a}b"));
    parsed.Set(QStringLiteral("Port"), QStringLiteral("1"));
    parsed.Remove(u"driver");
    EXPECT_EQ(parsed.Text(), QStringLiteral("PWD={x;y};UID={a}}b};Port=1;"));
}

}  // namespace
}  // namespace zephrin::ado::odbc
