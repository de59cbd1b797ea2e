#include "platform/text/Text.h"

#include <gtest/gtest.h>

namespace zephrin::text {

namespace {

/// What a text is read as, as "yyyy-MM-dd HH:mm:ss.zzz" with the year of today written as "now"; "" for no
/// date.
QString Read(QStringView text, const QLocale& locale) {
    const std::optional<QDateTime> value = ToDate(text, locale);
    EXPECT_EQ(value.has_value(), IsDate(text, locale));
    if (!value) return QString();
    QString shown = value->toString(QStringLiteral("yyyy-MM-dd"));
    if (value->date().year() == QDate::currentDate().year()) shown.replace(0, 4, QStringLiteral("now"));
    if (value->time() == QTime(0, 0)) return shown;
    const bool fraction = value->time().msec() != 0;
    return shown + value->toString(fraction ? QStringLiteral(" HH:mm:ss.zzz") : QStringLiteral(" HH:mm:ss"));
}

struct Row {
    QStringView Text;
    QStringView Expected;
};

template <std::size_t N>
void ExpectRead(const Row (&rows)[N], const QLocale& locale) {
    for (const Row& row : rows)
        EXPECT_EQ(Read(row.Text, locale), row.Expected.toString()) << qPrintable(row.Text.toString());
}

}  // namespace

TEST(Date, AmericanForms) {
    const Row rows[] = {
        {u"1/31/2003", u"2003-01-31"},
        {u"01-31-2003", u"2003-01-31"},
        {u"1 31 2003", u"2003-01-31"},
        {u" 1 / 31 / 2003 ", u"2003-01-31"},
        {u"3/4/2003", u"2003-03-04"},
        {u"31/1/2003", u"2003-01-31"},
        {u"2003-01-31", u"2003-01-31"},
        {u"2003/1/31", u"2003-01-31"},
        {u"2003/31/1", u"2003-01-31"},
        {u"1/2/29", u"2029-01-02"},
        {u"1/2/30", u"1930-01-02"},
        {u"1/2/5", u"2005-01-02"},
        {u"2/29/2004", u"2004-02-29"},
        {u"1/31", u"now-01-31"},
        {u"31/1", u"now-01-31"},
        {u"1/2003", u"2003-01-01"},
        {u"2003/5", u"2003-05-01"},
        {u"12/31/9999", u"9999-12-31"},
        {u"1/1/100", u"0100-01-01"},
        {u"Jan 31, 2003", u"2003-01-31"},
        {u"january 31 2003", u"2003-01-31"},
        {u"31 Jan 2003", u"2003-01-31"},
        {u"31-JAN-03", u"2003-01-31"},
        {u"31Jan2003", u"2003-01-31"},
        {u"2003 Jan 31", u"2003-01-31"},
        {u"May 5", u"now-05-05"},
        {u"5 may", u"now-05-05"},
        {u"Feb 2003", u"2003-02-01"},
    };
    ExpectRead(rows, QLocale::c());
    ExpectRead(rows, QLocale(QLocale::English, QLocale::UnitedStates));
}

TEST(Date, Times) {
    const Row rows[] = {
        {u"10:30", u"1899-12-30 10:30:00"},
        {u"10:30:15", u"1899-12-30 10:30:15"},
        {u"3 pm", u"1899-12-30 15:00:00"},
        {u"3PM", u"1899-12-30 15:00:00"},
        {u"3:05 p", u"1899-12-30 15:05:00"},
        {u"12 am", u"1899-12-30"},
        {u"12:30 am", u"1899-12-30 00:30:00"},
        {u"12:30 pm", u"1899-12-30 12:30:00"},
        {u"13:20 pm", u"1899-12-30 13:20:00"},
        {u"13.50", u"1899-12-30 13:50:00"},
        {u"12.25.10", u"1899-12-30 12:25:10"},
        {u"1/31/2003 10:30", u"2003-01-31 10:30:00"},
        {u"1/31/2003 1:02:03 PM", u"2003-01-31 13:02:03"},
        {u"10:30 1/31/2003", u"2003-01-31 10:30:00"},
        {u"10:30 am Jan 31 2003", u"2003-01-31 10:30:00"},
        {u"Jan 31, 2003 5 pm", u"2003-01-31 17:00:00"},
        {u"2003-01-31 10:30:00", u"2003-01-31 10:30:00"},
        {u"2003-01-31 10:30:00.25", u"2003-01-31 10:30:00.250"},
        {u"2003-01-31T10:30:00", u"2003-01-31 10:30:00"},
        // An hour that a switch to summer time leaves out somewhere is still an hour.
        {u"2021-03-28 02:30", u"2021-03-28 02:30:00"},
    };
    ExpectRead(rows, QLocale::c());
}

TEST(Date, TextsThatAreNoDates) {
    for (const char16_t* text : {u"",
                                 u" ",
                                 u"12",
                                 u"2003",
                                 u"20030131",
                                 u"abc",
                                 u"Jan",
                                 u"pm",
                                 u"13/13/2003",
                                 u"2/30/2003",
                                 u"2/29/2003",
                                 u"1/2/99999",
                                 u"0/1/2003",
                                 u"1//2/2003",
                                 u"/1/2/2003",
                                 u"1/2/2003/",
                                 u"1/2/3/4",
                                 u"-3",
                                 u"4--5",
                                 u"1 2",
                                 u"1 2 3",
                                 u"24:00",
                                 u"10:60",
                                 u"10:",
                                 u":30",
                                 u"13:00 am",
                                 u"13:20 xm",
                                 u"10:30 10:40",
                                 u"1/2 10:30 2003",
                                 u"12.25.2010",
                                 u"31.01.2003",
                                 u"Friday",
                                 u"Friday, January 31, 2003",
                                 u"Sept 5 2003",
                                 u"Jan Feb 2003",
                                 u"#1/1/2003#",
                                 u"1/2/2003 abc",
                                 u"O'Brien",
                                 u"192.168.1.1",
                                 u"99999999999999999999/1/1",
                                 u"1,2,2003x",
                                 u"1/2/2003 1/2/2003 1/2/2003 1/2/2003 1/2/2003 1/2/2003"})
        EXPECT_EQ(Read(QStringView(text), QLocale::c()), QString())
            << qPrintable(QStringView(text).toString());
}

TEST(Date, FormsOfOtherLocales) {
    const Row german[] = {
        {u"31.01.2003", u"2003-01-31"},
        {u"3.4.2003", u"2003-04-03"},
        {u"3/4/2003", u"2003-04-03"},
        {u"31. Januar 2003", u"2003-01-31"},
        {u"3.4.", u""},
        {u"3.4", u"now-04-03"},
        {u"31.01.2003 10:30", u"2003-01-31 10:30:00"},
        {u"2003-01-31", u"2003-01-31"},
        {u"31 January 2003", u"2003-01-31"},
        {u"1/31/2003", u"2003-01-31"},
    };
    ExpectRead(german, QLocale(QLocale::German, QLocale::Germany));
    const Row british[] = {{u"3/4/2003", u"2003-04-03"}, {u"1/31/2003", u"2003-01-31"}};
    ExpectRead(british, QLocale(QLocale::English, QLocale::UnitedKingdom));
    const Row japanese[] = {{u"2003/04/03", u"2003-04-03"}, {u"03/04/05", u"2003-04-05"}};
    ExpectRead(japanese, QLocale(QLocale::Japanese, QLocale::Japan));
}

}  // namespace zephrin::text
