#include "TdsListener.h"
#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"

#include <zephrin/ado/Error.h>

#include <gtest/gtest.h>

namespace zephrin {
namespace {

using test::TdsListener;
using Answer = TdsListener::Answer;

/// What the server hears of a connection that is tried with these keywords.
QString Heard(const char* string, Answer answer, const char* user = "", const char* password = "") {
    TdsListener server(answer);
    ado::Connection connection(ado::providers::AllProviders());
    connection.SetConnectionTimeout(20);
    try {
        connection.Open(
            QString::fromUtf8(string).replace(QStringLiteral("PORT"), QString::number(server.Port())),
            QString::fromUtf8(user), QString::fromUtf8(password));
        ADD_FAILURE() << "no server answered";
    } catch (const ado::Error& error) {
        if (error.Description().contains(QStringLiteral("not installed"))) return QStringLiteral("no driver");
    }
    return server.Heard().join(u'|');
}

#define NEED_FREETDS() \
    if (Heard("Driver=FreeTDS;Server=127.0.0.1,PORT", Answer::HangUp) == u"no driver") GTEST_SKIP()

TEST(FreeTds, SendsNoPasswordInClearWhereTheStringDemandsEncryption) {
    NEED_FREETDS();
    const struct {
        const char* Keywords;
        Answer Server;
        const char* Heard;
    } cases[] = {
        {"", Answer::NotSupported, "asks for encryption: 0|clear: me secret "},
        {"Encrypt=no", Answer::NotSupported, "asks for encryption: 0|clear: me secret "},
        {"Encrypt=yes;TrustServerCertificate=yes", Answer::NotSupported, "asks for encryption: 1"},
        {"Encrypt=Mandatory;Trust Server Certificate=true", Answer::Required, "asks for encryption: 1|TLS"},
        {"Encrypt=yes;TrustServerCertificate=yes", Answer::HangUp, "asks for encryption: 1"},
        {"Use Encryption for Data=True;TrustServerCertificate=yes", Answer::NotSupported,
         "asks for encryption: 1"},
        {"Encryption=require", Answer::HangUp, "asks for encryption: 1"},
        // Refused before anything is sent.
        {"Encrypt=yes", Answer::Required, ""},
        {"Encrypt=required", Answer::Required, ""},
        {"Encrypt=strict", Answer::Required, ""},
        {"HostNameInCertificate=box", Answer::Required, ""},
        {"Encrypt=yes;TrustServerCertificate=yes;TDS_Version=7.0", Answer::NotSupported, ""},
    };
    for (const char* form :
         {"Driver=FreeTDS;Server=127.0.0.1,PORT;UID=me;PWD=secret;",
          "Provider=MSDASQL;Extended Properties=\"Driver=FreeTDS;Server=127.0.0.1;Port=PORT\";"
          "User ID=me;Password=secret;"})
        for (const auto& row : cases)
            EXPECT_EQ(Heard((std::string(form) + row.Keywords).c_str(), row.Server).toStdString(), row.Heard)
                << form << row.Keywords;
}

TEST(FreeTds, HearsPasswordsAsTheyAre) {
    NEED_FREETDS();
    for (const char* password :
         {"a}b", "a;b", "a;}b", "a;b}", "{a", "{a}", " a ", "a\"b'", "a=b;UID=sa", "a}};x", "\u00fc"}) {
        const QString expected =
            QByteArray(password).contains("};")
                ? QString()
                : QStringLiteral("asks for encryption: 0|clear: me %1 ").arg(QString::fromUtf8(password));
        EXPECT_EQ(
            Heard("Driver=FreeTDS;Server=127.0.0.1,PORT;UID=sa;PWD=no", Answer::NotSupported, "me", password),
            expected);
    }
    EXPECT_EQ(Heard("Driver=FreeTDS;Server=127.0.0.1,PORT;UID=me;PWD={a}}b}", Answer::NotSupported),
              QStringLiteral("asks for encryption: 0|clear: me a}b "))
        << "braces as ODBC has them, which the driver does not read so";
}

TEST(FreeTds, TakesNoSecondUserOutOfAQuotedValue) {
    NEED_FREETDS();
    EXPECT_EQ(Heard("Provider=MSDASQL;APP=\"x;UID=sa\";Server=127.0.0.1,PORT;Driver=FreeTDS",
                    Answer::NotSupported, "me", "pw"),
              QStringLiteral("asks for encryption: 0|clear: me pw x;UID=sa"));
    EXPECT_EQ(
        Heard("Provider=MSDASQL;Extended Properties=\"Driver=FreeTDS;Server=127.0.0.1,PORT;UID=sa;PWD=no\"",
              Answer::NotSupported, "me", "pw"),
        QStringLiteral("asks for encryption: 0|clear: me pw "));
}

}  // namespace
}  // namespace zephrin
