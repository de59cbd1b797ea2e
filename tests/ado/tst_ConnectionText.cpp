#include "platform/ado/ConnectionText.h"

#include <gtest/gtest.h>

namespace zephrin::ado {
namespace {

TEST(ConnectionText, FindsValues) {
    const struct {
        const char16_t* String;
        const char16_t* Key;
        const char16_t* Value;
    } cases[] = {
        {u"Provider=SQLite;Data Source=a b.db", u"data source", u"a b.db"},
        {u" PROVIDER = SQLite ; x=1", u"Provider", u"SQLite"},
        {u"Driver={SQL Server};PWD={a;}}b}", u"pwd", u"a;}b"},
        {u"PWD=\"a;\"\"b\";x=1", u"x", u"1"},
        {u"Data Source='it''s; PWD=no';PWD=yes", u"PWD", u"yes"},
        {u"x;;Provider=A;Provider=B", u"Provider", u"A"},
        {u"PWD={open", u"PWD", u"open"},
        {u"PWD=", u"PWD", u""},
        {u"", u"PWD", u""},
        {u"nonsense", u"PWD", u""},
    };
    for (const auto& row : cases)
        EXPECT_EQ(ConnectionValue(QString::fromUtf16(row.String), QStringView(row.Key)),
                  QString::fromUtf16(row.Value))
            << qPrintable(QString::fromUtf16(row.String));
}

TEST(ConnectionText, BlanksPasswords) {
    const struct {
        const char16_t* Text;
        const char16_t* String;
        const char16_t* Password;
        const char16_t* Shown;
    } cases[] = {
        {u"cannot open", u"PWD=hush", u"", u"cannot open"},
        {u"bad: PWD=hush;UID=me", u"", u"", u"bad: PWD=***;UID=me"},
        {u"bad: Password = \"hu;sh\"; x", u"", u"", u"bad: Password = ***; x"},
        {u"'hush' is wrong", u"Password=hush", u"", u"'***' is wrong"},
        {u"'a.b*' is wrong", u"", u"a.b*", u"'***' is wrong"},
        {u"a table", u"PWD=a", u"", u"a table"},
        {u"bad: PWD=my pass;word;UID=me", u"", u"my pass;word", u"bad: PWD=***;UID=me"},
        {u"bad: PWD={a}}b;tail};UID=me", u"PWD={a}}b;tail}", u"", u"bad: PWD=***;UID=me"},
        {u"bad: PWD={a}b;tail};UID=me", u"", u"", u"bad: PWD=***;UID=me"},
        {u"bad: 'x;PWD={a;b}' failed", u"", u"", u"bad: 'x;PWD=***' failed"},
        {u"bad: pwd=one two\nnext", u"", u"", u"bad: pwd=***\nnext"},
        {u"bad: Password='a''tail'; x", u"", u"", u"bad: Password=***; x"},
        {u"bad: PWD={never closed; x=y", u"", u"", u"bad: PWD=***"},
        {u"no 'hush', no 'open'", u"Jet OLEDB:Database Password=hush;Extended Properties=\"UID=a;PWD=open\"",
         u"", u"no '***', no '***'"},
        {u"keyword tail is unknown", u"PWD=hushhush;x=1;Password=\"tail\"", u"", u"keyword *** is unknown"},
        {u"The password is wrong.", u"", u"", u"The password is wrong."},
    };
    for (const auto& row : cases)
        EXPECT_EQ(WithoutPasswords(QString::fromUtf16(row.Text), QString::fromUtf16(row.String),
                                   QString::fromUtf16(row.Password)),
                  QString::fromUtf16(row.Shown));
}

}  // namespace
}  // namespace zephrin::ado
