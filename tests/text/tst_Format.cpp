#include "platform/text/Text.h"

#include <gtest/gtest.h>

namespace zephrin::text {

namespace {

QDateTime At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
}

}  // namespace

TEST(Format, Tokens) {
    // A Friday.
    const QDateTime afternoon = At(2003, 1, 31, 15, 4, 5);
    const struct {
        QStringView Format;
        QStringView Expected;
    } rows[] = {
        {u"mm/dd/yyyy h:mm:ss am/pm", u"01/31/2003 3:04:05 pm"},
        {u"yyyy-mm-dd", u"2003-01-31"},
        {u"yyyy-mm-dd hh:nn:ss", u"2003-01-31 15:04:05"},
        {u"d", u"31"},
        {u"ddd dddd", u"Fri Friday"},
        {u"ddddd", u"1/31/2003"},
        {u"dddddd", u"Friday, January 31, 2003"},
        {u"m mm mmm mmmm", u"1 01 Jan January"},
        {u"MM/DD/YYYY", u"01/31/2003"},
        {u"y yy yyyy", u"31 03 2003"},
        {u"w ww q", u"6 5 1"},
        {u"h hh", u"15 15"},
        {u"h:m", u"15:4"},
        {u"hh mm", u"15 04"},
        {u"mm:ss", u"01:05"},
        {u"h:n:s", u"15:4:5"},
        {u"hh:mm AM/PM", u"03:04 PM"},
        {u"h A/P", u"3 P"},
        {u"h a/p", u"3 p"},
        {u"h AMPM", u"3 PM"},
        {u"ttttt", u"3:04:05 PM"},
        {u"c", u"1/31/2003 3:04:05 PM"},
        {u"", u"1/31/2003 3:04:05 PM"},
        {u"\"day\" d", u"day 31"},
        {u"\\d\\m d", u"dm 31"},
        {u"yyyy\\", u"2003"},
        {u"\"open d", u"open d"},
        {u"yyyymmddThhnnss", u"20030131T150405"},
        {u"\"am/pm\" h", u"am/pm 15"},
        {u"General Date", u"1/31/2003 3:04:05 PM"},
        {u"long date", u"Friday, January 31, 2003"},
        {u"Medium Date", u"31-Jan-03"},
        {u"Short Date", u"1/31/2003"},
        {u"Long Time", u"3:04:05 PM"},
        {u"Medium Time", u"03:04 PM"},
        {u"Short Time", u"15:04"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Format(afternoon, row.Format, QLocale::c()), row.Expected.toString())
            << qPrintable(row.Format.toString());
}

TEST(Format, EdgesOfDayAndYear) {
    const auto format = [](const QDateTime& value, QStringView form) {
        return Format(value, form, QLocale::c());
    };
    EXPECT_EQ(format(At(2003, 1, 31), u"mm/dd/yyyy h:mm:ss am/pm"), QStringLiteral("01/31/2003 12:00:00 am"));
    EXPECT_EQ(format(At(2003, 1, 31, 12), u"h am/pm"), QStringLiteral("12 pm"));
    EXPECT_EQ(format(At(2003, 1, 31), u"c"), QStringLiteral("1/31/2003"));
    EXPECT_EQ(format(At(1899, 12, 30, 10, 30), u"c"), QStringLiteral("10:30:00 AM"));
    EXPECT_EQ(format(At(1899, 12, 30), u"c"), QStringLiteral("12:00:00 AM"));
    // The week of January 1 is the first, and a new one begins on Sunday.
    EXPECT_EQ(format(At(2000, 1, 1), u"w ww"), QStringLiteral("7 1"));
    EXPECT_EQ(format(At(2000, 1, 2), u"w ww"), QStringLiteral("1 2"));
    EXPECT_EQ(format(At(2000, 12, 31), u"ww y q"), QStringLiteral("54 366 4"));
    EXPECT_EQ(format(QDateTime(), u"c"), QString());
}

TEST(Format, NamesFollowTheLocaleAndSeparatorsDoNot) {
    const QLocale german(QLocale::German, QLocale::Germany);
    EXPECT_EQ(Format(At(2003, 1, 31), u"d. mmmm yyyy", german), QStringLiteral("31. Januar 2003"));
    EXPECT_EQ(Format(At(2003, 1, 31, 15, 4), u"mm/dd/yyyy h:mm am/pm", german),
              QStringLiteral("01/31/2003 3:04 pm"));
    EXPECT_EQ(Format(At(2003, 1, 31, 15, 4), u"c", german), QStringLiteral("31.01.03 15:04:00"));
}

TEST(FormatNumber, Pictures) {
    const struct {
        double Value;
        QStringView Format;
        QStringView Classic;
        QStringView Server;
    } rows[] = {
        {1234.5, u"#,##0.00", u"1,234.50", u"1,234.50"},
        {-1234.5, u"#,##0.00", u"-1,234.50", u"-1,234.50"},
        {0.5, u"#.##", u".5", u".5"},
        {5, u"0.##", u"5.", u"5"},
        {2.675, u"0.00", u"2.68", u"2.68"},
        {-0.001, u"0.00", u"0.00", u"0.00"},
        {999.995, u"#,##0.00", u"1,000.00", u"1,000.00"},
        {0.1234, u"0.0%", u"12.3%", u"12.3%"},
        {5551234, u"000-0000", u"555-1234", u"555-1234"},
        {42, u"00000", u"00042", u"00042"},
        {1234567, u"#,##0,", u"1,235", u"1,235"},
        {1234567890, u"0,,.0\\M", u"1234.6M", u"1234.6M"},
        {12345.678, u"0.00E+00", u"1.23E+04", u"1.23E+04"},
        {0.00012, u"0.0e-0", u"1.2e-4", u"1.2e-4"},
        {999999, u"0.0E+0", u"1.0E+6", u"1.0E+6"},
        {-3, u"0;(0);zero", u"(3)", u"(3)"},
        {0, u"0;(0);zero", u"zero", u"zero"},
        {3, u"\"a;b\" 0", u"a;b 3", u"a;b 3"},
        {3, u"'n'0", u"'n'3", u"n3"},
        {0, u"#", u"", u""},
        {1e20, u"0", u"100000000000000000000", u"100000000000000000000"},
        {7, u"text", u"text", u"text"},
        {-12.5, u"Currency", u"($12.50)", u""},
        {0.256, u"percent", u"25.60%", u""},
        {-1, u"Yes/No", u"Yes", u""},
        {0, u"On/Off", u"Off", u""},
        {2.5, u"General Number", u"2.5", u""},
        {2.5, u"", u"2.5", u"2.5"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FormatNumber(row.Value, row.Format), row.Classic.toString())
            << row.Value << qPrintable(row.Format.toString());
        if (!row.Server.isEmpty()) {
            EXPECT_EQ(FormatNumber(row.Value, row.Format, PictureStyle::Server), row.Server.toString())
                << row.Value << qPrintable(row.Format.toString());
        }
    }
    EXPECT_EQ(FormatNumber(1234.5, u"#,##0.00", PictureStyle::Server, QLocale(QLocale::German)), u"1.234,50");
}

}  // namespace zephrin::text
