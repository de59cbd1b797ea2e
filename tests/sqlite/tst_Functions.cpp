#include "Shop.h"
#include "platform/ado/providers/sqlite/functions/Functions.h"

#include <QDateTime>

#include <cmath>

namespace zephrin::ado::providers::sqlite::test {
namespace {

TEST_F(ShopTest, ServerFunctions) {
    OnServer({
        // Texts
        {"SELECT LEFT('abc', 2), LEFT('abc', 9), LEFT('abc', 0), LEFT(NULL, 1), LEFT ('abc', 1)",
         "ab|abc||~|a"},
        {"SELECT LEFT('abc', -1)", "! Invalid length parameter passed to the left function.@7"},
        {"SELECT RIGHT('abc', 2), RIGHT('Zoé', 1), RIGHT('a', NULL)", "bc|é|~"},
        {"SELECT '[' + LTRIM('  a ') + '][' + RTRIM(' a  ') + ']'", "[a ][ a]"},
        {"SELECT LEN('ab  '), LEN('  ab'), LEN(''), LEN(NULL), LEN('Zoé')", "2|4|0|~|3"},
        {"SELECT CHAR(65), CHAR(128), CHAR(300), CHAR(NULL)", "A|€|~|~"},
        {"SELECT SUBSTRING('abcdef', 2, 3), SUBSTRING('abc', 0, 2), SUBSTRING('abc', 9, 1)", "bcd|a|"},
        {"SELECT UPPER('zoé'), LOWER('ÅB'), REPLACE('aXbx', 'x', '-'), CHARINDEX('B', 'abc'), REVERSE('abc')",
         "ZOÉ|åb|a-b-|2|cba"},
        {"SELECT LEFT([Order Date], 3), LEN([Order Date]) FROM Orders WHERE Id = 10", "Jul|19"},
        // Dates
        {"SELECT DAY('1996-07-04'), MONTH('7/4/1996'), YEAR('19960704'), YEAR(0), DAY(NULL)",
         "4|7|1996|1900|~"},
        {"SELECT YEAR([Order Date]) FROM Orders ORDER BY Id", "1996; 1996; 1997; 1996; ~"},
        {"SELECT MONTH('no date')",
         "! Conversion failed when converting date and/or time from character string 'no date'.@13"},
        {"SELECT DATEPART(weekday, '1996-07-04'), DATEPART(ww, '1996-07-04'), DATENAME(month, '1996-07-04')",
         "5|27|July"},
        {"SELECT DATEADD(month, 1, '1996-01-31'), DATEADD(hh, -1, '1996-01-01')",
         "1996-02-29|1995-12-31 23:00:00"},
        {"SELECT DATEDIFF(year, '1996-12-31', '1997-01-01'), DATEDIFF(day, '1996-02-28', '1996-03-01')",
         "1|2"},
        // Conversions
        {"SELECT CAST('12' AS int), CAST(12.9 AS int), CAST(-12.9 AS int), CAST('' AS int), CAST(NULL AS "
         "int)",
         "12|12|-12|0|~"},
        {"SELECT CAST('x' AS int)",
         "! Conversion failed when converting the varchar value 'x' to data type int.@12"},
        {"SELECT CAST('1.5' AS int)",
         "! Conversion failed when converting the varchar value '1.5' to data type int.@12"},
        {"SELECT CAST(3000000000 AS int)",
         "! Arithmetic overflow error converting expression to data type int.@12"},
        {"SELECT CAST('1.25' AS float), CAST(2.345 AS decimal(9, 2)), CAST(1 AS bit), CAST('2.5' AS money)",
         "1.25|2.35|True|2.50"},
        {"SELECT CAST(12345 AS varchar(3)), CAST('ab' AS char(4)) + '|', CAST(1.5 AS nvarchar(10))",
         "*|ab  ||1.5"},
        {"SELECT CAST('7/4/1996 2:03 pm' AS datetime), CAST('1996-07-04' AS date)",
         "1996-07-04 14:03:00|1996-07-04"},
        {"SELECT CAST('1996-13-01' AS datetime)",
         "! Conversion failed when converting date and/or time from character string '1996-13-01'.@12"},
        {"SELECT CAST(Total AS varchar(10)) FROM Orders WHERE Id = 10", "10.50"},
        {"SELECT CAST(1 AS nonsense)", "! Type nonsense is not a defined system type.@7"},
        {"SELECT CONVERT(varchar(30), CAST('1996-07-04' AS datetime), 99)",
         "! 99 is not a valid style number when converting from datetime to a character string.@28"},
        {"SELECT CONVERT(datetime, '04/07/96', 3), CONVERT(datetime, '04.07.1996', 104), CONVERT(datetime, "
         "'04/07/96', 1)",
         "1996-07-04|1996-07-04|1996-04-07"},
        // Numbers
        {"SELECT ABS(-3), ABS(-2.5), ABS('-4'), ABS(NULL), SIGN(-2)", "3|2.5|4|~|-1"},
        {"SELECT ROUND(COS(1), 6), ROUND(SIN(1), 6), ROUND(TAN(1), 6), ROUND(EXP(1), 6), LOG(EXP(2))",
         "0.540302|0.841471|1.557408|2.718282|2"},
        {"SELECT ROUND(2.5, 0), ROUND(-2.5, 0), ROUND(2.345, 2), ROUND(1234, -2), CEILING(1.2), FLOOR(-1.2)",
         "3.0|-3.0|2.350|1200|2|-2"},
        {"SELECT LOG(0)", "! An invalid floating point operation occurred: log of 0.@7"},
        {"SELECT EXP(1000)", "! Arithmetic overflow error: the result is out of range.@7"},
        {"SELECT ABS('x')",
         "! Conversion failed when converting the varchar value 'x' to data type float.@11"},
        // Logic
        {"SELECT CASE WHEN N > 5 THEN 'big' WHEN N > 0 THEN 'small' END FROM Nums", "big; small; ~; ~"},
        {"SELECT ISNULL(NULL, 'x'), COALESCE(NULL, NULL, 3), NULLIF('a', 'b'), IIF(1 > 2, 'y', 'n')",
         "x|3|a|n"},
        {"SELECT CASE WHEN NOT (NULL IS NULL) THEN 1 ELSE 2 END AS X", "2"},
    });
}

TEST_F(ShopTest, StylesOfConvert) {
    const auto connection = Connect(shop, QStringLiteral("SQL Server"));
    const struct {
        int Style;
        const char* Text;
    } cases[] = {
        {0, "Jul  4 1996  2:03PM"},
        {1, "07/04/96"},
        {3, "04/07/96"},
        {4, "04.07.96"},
        {5, "04-07-96"},
        {10, "07-04-96"},
        {12, "960704"},
        {20, "1996-07-04 14:03:09"},
        {23, "1996-07-04"},
        {100, "Jul  4 1996  2:03PM"},
        {101, "07/04/1996"},
        {102, "1996.07.04"},
        {103, "04/07/1996"},
        {104, "04.07.1996"},
        {105, "04-07-1996"},
        {106, "04 Jul 1996"},
        {107, "Jul 04, 1996"},
        {108, "14:03:09"},
        {109, "Jul  4 1996  2:03:09:120PM"},
        {110, "07-04-1996"},
        {111, "1996/07/04"},
        {112, "19960704"},
        {113, "04 Jul 1996 14:03:09:120"},
        {114, "14:03:09:120"},
        {120, "1996-07-04 14:03:09"},
        {121, "1996-07-04 14:03:09.120"},
        {126, "1996-07-04T14:03:09.120"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(
            Answer(*connection, QStringLiteral("SELECT CONVERT(varchar(40), CAST('1996-07-04 14:03:09.12' AS "
                                               "datetime), %1)")
                                    .arg(row.Style)),
            Text(row.Text))
            << row.Style;
    EXPECT_EQ(Answer(*connection,
                     QStringLiteral("SELECT CONVERT(varchar, [Order Date]) FROM Orders WHERE Id = 10")),
              u"Jul  4 1996 12:00AM"_qs);
}

TEST_F(ShopTest, FileFunctions) {
    OnFile({
        // Texts
        {"SELECT LEFT('abc', 2), RIGHT('abc', 2), MID('abcdef', 2, 3), MID('abc', 2), MID('abc', 9, 1)",
         "ab|bc|bcd|bc|"},
        {"SELECT MID('abc', 0, 1)",
         "! Invalid procedure call: the start or the length for Mid is out of range.@7"},
        {"SELECT '[' & TRIM('  a ') & LTRIM('  b ') & RTRIM(' c  ') & ']'", "[ab  c]"},
        {"SELECT LEN('ab  '), UCASE('zoé'), LCASE('ÅB'), CHR(65), ASC('A'), INSTR('abc', 'C'), INSTR(2, "
         "'aba', 'a')",
         "4|ZOÉ|åb|A|65|3|3"},
        {"SELECT LEFT([Order Date], 4), LEN([Order Date]) FROM Orders WHERE Id = 10", "7/4/|8"},
        // Dates
        {"SELECT MINUTE(#14:03:09#), HOUR(#2:03 pm#), DAY(#7/4/1996#), MONTH(#1996-07-04#), YEAR('4 July "
         "1996')",
         "3|14|4|7|1996"},
        {"SELECT WEEKDAY(#7/4/1996#), WEEKDAY(#7/4/1996#, 2), YEAR(0), HOUR(35250.5)", "5|4|1899|12"},
        {"SELECT YEAR('never')", "! Syntax error in date: 'never' is not a date.@12"},
        {"SELECT WEEKDAY()", "! Wrong number of arguments used with function 'WEEKDAY'.@7"},
        {"SELECT DATEADD('m', 1, #1/31/1996#), DATEDIFF('d', #2/28/1996#, #3/1/1996#), DATESERIAL(1996, 3, "
         "0)",
         "1996-02-29|2|1996-02-29"},
        {"SELECT [Order Date] + 1, [Order Date] - 0.5 FROM Orders WHERE Id = 10",
         "1996-07-05|1996-07-03 12:00:00"},
        // Numbers
        {"SELECT ABS(-3.5), FIX(-2.7), INT(-2.7), SGN(-2), SQR(9), ROUND(2.5), ROUND(3.5)",
         "3.5|-2|-3|-1|3|2|4"},
        {"SELECT ROUND(ATN(1), 6), ROUND(COS(1), 6), ROUND(EXP(1), 6), ROUND(LOG(10), 6), ROUND(TAN(1), 6)",
         "0.785398|0.540302|2.718282|2.302585|1.557408"},
        {"SELECT ROUND(SIN(0), 6), ABS(NULL), FIX(NULL), SQR(NULL)", "0|~|~|~"},
        {"SELECT SQR(-1)", "! Invalid procedure call: Sqr of -1.@7"},
        {"SELECT LOG(-1)", "! Invalid procedure call: Log of -1.@7"},
        {"SELECT 0 ^ -1", "! Division by zero.@7"},
        {"SELECT N FROM Nums WHERE RND(N) >= 0 AND RND() < 1", "7; 2; -3; 0"},
        // Logic
        {"SELECT IIF(N > 0, 'plus', IIF(N = 0, 'none', 'minus')) FROM Nums", "plus; plus; minus; none"},
        {"SELECT IIF(ISNULL(R), 'null', R) FROM Nums", "7.5; 2.5; 0; null"},
        {"SELECT NZ(R, -1), VAL('12abc'), CSTR(5), CINT(2.5), CDBL('1.5') FROM Nums WHERE N = 0",
         "-1|12|5|2|1.5"},
        {"SELECT N > 0, NOT N > 0 FROM Nums WHERE N = 7", "True|False"},
        {"SELECT 5 + '3', '5' + '3', 5 & 3, '7' * 2, 1.5 + 1", "8|53|53|14|2.5"},
        {"SELECT N + NULL, N & NULL, NULL + T FROM Nums WHERE N = 7", "~|7|~"},
        {"SELECT T * 2 FROM Nums WHERE N = -3",
         "! Data type mismatch in criteria expression: 'a' is not a number.@7"},
    });
}

TEST_F(ShopTest, Formats) {
    OnFile({
        {"SELECT FORMAT([Order Date], 'yyyy-mm'), FORMAT([Order Date], \"Short Date\"), FORMAT([Order Date]) "
         "FROM Orders WHERE "
         "Id = 10",
         "1996-07|7/4/1996|7/4/1996"},
        {"SELECT FORMAT([Order Date], 'mmm d, h:nn AM/PM') FROM Orders WHERE Id = 11", "Jul 5, 2:30 PM"},
        {"SELECT FORMAT(Total, 'Currency'), FORMAT(Total, '0000.0'), FORMAT(Paid, 'Yes/No') FROM Orders "
         "WHERE Id = 10",
         "$10.50|0010.5|Yes"},
        {"SELECT FORMAT(35250.5, 'yyyy-mm-dd hh:nn'), FORMAT(#7/4/1996#, '0.0'), FORMAT(NULL, '0')",
         "1996-07-04 12:00|35250.0|"},
        {"SELECT FORMAT('abc', '>'), FORMAT('ABC', '<@@@@'), FORMAT('abc', '@@@@@'), FORMAT('5551234', "
         "'@@@-@@@@')",
         "ABC| abc|  abc|555-1234"},
        {"SELECT FORMAT('2.5', '0.00'), FORMAT('7/4/1996', 'yyyy'), FORMAT('abc', '0.00')", "2.50|1996|abc"},
        {"SELECT FORMAT(Note, 'yyyy', 1) FROM Orders",
         "! Wrong number of arguments used with function 'FORMAT'.@7"},
    });
    OnServer({
        {"SELECT FORMAT([Order Date], 'yyyy-MM-dd HH:mm:ss'), FORMAT([Order Date], 'd'), FORMAT([Order "
         "Date], 'dddd, MMM yy') "
         "FROM Orders WHERE Id = 11",
         "1996-07-05 14:30:00|7/5/1996|Friday, Jul 96"},
        {"SELECT FORMAT(1234.5, 'N'), FORMAT(1234.5, 'N0'), FORMAT(-1234.5, 'C'), FORMAT(0.125, 'P1'), "
         "FORMAT(42, 'D5')",
         "1,234.50|1,235|($1,234.50)|12.5 %|00042"},
        {"SELECT FORMAT(255, 'X4'), FORMAT(12345.678, 'E2'), FORMAT(1.5, 'D'), FORMAT(1.5, 'G'), FORMAT(7, "
         "'000')",
         "00FF|1.23E+004|~|1.5|007"},
        {"SELECT FORMAT(1234.5, '#,##0.00', 'de-DE'), FORMAT(CAST('1996-07-04' AS date), 'd. MMMM yyyy', "
         "'de-DE')",
         "1.234,50|4. Juli 1996"},
        {"SELECT FORMAT(1234.5, 'N', 'xx-YY')",
         "! The culture parameter 'xx-YY' provided in the function call is not supported.@7"},
        {"SELECT FORMAT(NULL, 'N'), FORMAT(Total, NULL) FROM Orders WHERE Id = 10", "~|~"},
        {"SELECT FORMAT(Name, 'N') FROM Customers",
         "! Argument data type nvarchar is invalid for the format function.@14"},
        {"SELECT PRINTF('%d', 1)", "! 'PRINTF' is not a recognized built-in function name.@7"},
        {"SELECT SUBSTR('abc', 1)", "! 'SUBSTR' is not a recognized built-in function name.@7"},
        {"SELECT LENGTH('abc')", "! 'LENGTH' is not a recognized built-in function name.@7"},
        {"SELECT TYPEOF(1)", "! 'TYPEOF' is not a recognized built-in function name.@7"},
        {"SELECT STRFTIME('%Y', 'now')", "! 'STRFTIME' is not a recognized built-in function name.@7"},
        {"SELECT TOTAL(Id) FROM Orders", "! 'TOTAL' is not a recognized built-in function name.@7"},
        {"SELECT GROUP_CONCAT(Id) FROM Orders",
         "! 'GROUP_CONCAT' is not a recognized built-in function name.@7"},
        {"SELECT YEAR(''), DAY(''), CONVERT(datetime, '')", "1900|1|1900-01-01"},
    });
}

TEST_F(ShopTest, TheClock) {
    const auto server = Connect(shop, QStringLiteral("SQL Server"));
    const auto file = Connect(shop, QStringLiteral("MS Access"));
    const auto isNow = [](const QString& answer) {
        const QDateTime time = QDateTime::fromString(answer.left(19), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        return time.isValid() && std::abs(time.secsTo(QDateTime::currentDateTime())) < 60;
    };
    EXPECT_TRUE(isNow(Answer(*server, QStringLiteral("SELECT GETDATE()"))));
    EXPECT_TRUE(isNow(Answer(*file, QStringLiteral("SELECT NOW()"))));
    EXPECT_EQ(Answer(*file, QStringLiteral("SELECT IIF(TIME() < 1 AND TIME() >= 0, 'time', 'no')")),
              u"time"_qs);
    EXPECT_EQ(Answer(*file, QStringLiteral("SELECT COUNT(*) FROM Orders WHERE [Order Date] < NOW()")),
              u"4"_qs);
}

TEST(Likeness, Patterns) {
    const struct {
        const char* Text;
        const char* Pattern;
        bool Fits;
    } cases[] = {
        {"", "", true},
        {"", "%", true},
        {"a", "", false},
        {"abc", "A%", true},
        {"abc", "%B%", true},
        {"abc", "%d%", false},
        {"abc", "___", true},
        {"abc", "__", false},
        {"50%", "50[%]", true},
        {"500", "50[%]", false},
        {"b", "[a-c]", true},
        {"d", "[a-c]", false},
        {"d", "[^a-c]", true},
        {"-", "[a-]", true},
        {"a[b", "a[b", true},
        {"aXbXc", "a%b%c", true},
        {"aaaaaaaaaaaaaaaaaaaaaaaaaaaaab", "%a%a%a%a%a%a%a%a%a%c", false},
        {"]", "[", false},
        {"ÉCOLE", "é%", true},
        {"a", "[", false},
        {"mississippi", "%issip%i", true},
        {"É", "[a-f]", true},
        {"_", "[a-f]", false},
        {"5", "[0-9a-f]", true},
        {"aab", "%AB", true},
        {"abab ", "%ab", false},
        {"a%b", "%%_b", true},
        {"ba", "%a_", false},
    };
    for (const auto& row : cases) {
        const QString text = QString::fromUtf8(row.Text);
        EXPECT_EQ(IsLike(text, QString::fromUtf8(row.Pattern)), row.Fits)
            << row.Text << " like " << row.Pattern;
        EXPECT_EQ(IsLike(std::string_view(row.Text), row.Pattern, false), row.Fits)
            << row.Text << " like " << row.Pattern << ", as bytes";
    }
    EXPECT_TRUE(IsLike(u"5%", u"5!%", u'!'));
    EXPECT_FALSE(IsLike(u"50", u"5!%", u'!'));
    EXPECT_FALSE(IsLike(u"DE ", u"%e"));
    EXPECT_TRUE(IsLike(u"DE ", u"%e", QChar(), true));
    EXPECT_FALSE(IsLike(u"FR ", u"%e", QChar(), true));
    EXPECT_FALSE(IsLike(u"DE ", u"%e  ", QChar(), true));
}

TEST(DateReading, WhatPeopleWrite) {
    const struct {
        const char* Text;
        const char* OnServer;
        const char* OnFile;
    } cases[] = {
        {"1996-07-04", "1996-07-04", "1996-07-04"},
        {" 7/4/1996 ", "1996-07-04", "1996-07-04"},
        {"07/04/96", "1996-07-04", "1996-07-04"},
        {"7/4/29", "2029-07-04", "2029-07-04"},
        {"7/4/30", "2030-07-04", "1930-07-04"},
        {"19960704", "1996-07-04", "1996-07-04"},
        {"960704", "1996-07-04", "1996-07-04"},
        {"4 Jul 1996", "1996-07-04", "1996-07-04"},
        {"July 4, 1996 2:30 PM", "1996-07-04 14:30:00", "1996-07-04 14:30:00"},
        {"1996-07-04T14:30:00.5", "1996-07-04 14:30:00.5", "1996-07-04 14:30:00.5"},
        {"07/04/1996 12:00:00 am", "1996-07-04", "1996-07-04"},
        {"07/04/1996 12:01:00 pm", "1996-07-04 12:01:00", "1996-07-04 12:01:00"},
        {"14:30", "1900-01-01 14:30:00", "1899-12-30 14:30:00"},
        {"3 pm", "1900-01-01 15:00:00", "1899-12-30 15:00:00"},
        {"31/12/1996", "", "1996-12-31"},
        {"2/29/1996", "1996-02-29", "1996-02-29"},
        {"2/29/1997", "", ""},
        {"2/30/1996", "", ""},
        {"13/13/1996", "", ""},
        {"24:00", "", ""},
        {"1996", "", ""},
        {"7/4", "", ""},
        {"", "", ""},
        {"1:2:3:4:5", "", ""},
        {"x", "", ""},
        {"99999999999999999999", "", ""},
    };
    for (const auto& row : cases) {
        for (const bool file : {false, true}) {
            const std::optional<qint64> ticks = ReadDate(QString::fromUtf8(row.Text), file);
            EXPECT_EQ(ticks ? WriteIsoDate(*ticks).toStdString() : std::string(),
                      file ? row.OnFile : row.OnServer)
                << row.Text;
        }
    }
}

/// Every day of five centuries goes through the reckoning and comes back, in order.
TEST(DateReading, CalendarIsExact) {
    QDate day(1600, 1, 1);
    for (qint64 days = DaysOf(1600, 1, 1); day.year() < 2100; ++days, day = day.addDays(1)) {
        const CivilDate civil = CivilOf(days);
        ASSERT_EQ(QDate(civil.Year, civil.Month, civil.Day), day);
        ASSERT_EQ(DaysOf(civil.Year, civil.Month, civil.Day), days);
        const QByteArray stored = WriteIsoDate(days * TicksPerDay + 5);
        ASSERT_EQ(ReadIsoDate(stored.constData(), stored.size()), days * TicksPerDay + 5);
    }
}

}  // namespace
}  // namespace zephrin::ado::providers::sqlite::test
