#include "platform/text/Text.h"

#include <gtest/gtest.h>

namespace zephrin::text {

TEST(Number, TextsThatAreNumbers) {
    const struct {
        QStringView Text;
        double Value;
    } rows[] = {
        {u"0", 0},
        {u"1.5", 1.5},
        {u"-3", -3},
        {u"+3", 3},
        {u"- 3", -3},
        {u"3-", -3},
        {u"3 -", -3},
        {u"1e3", 1000},
        {u"1E+3", 1000},
        {u"1d-1", 0.1},
        {u"1.", 1},
        {u".5", 0.5},
        {u"-.5", -0.5},
        {u"1,234.5", 1234.5},
        {u"1,2,3", 123},
        {u"1,", 1},
        {u"$5", 5},
        {u"-$5", -5},
        {u"$-5", -5},
        {u"5$", 5},
        {u"$ 5", 5},
        {u"(5)", -5},
        {u"($1,000)", -1000},
        {u"$(5)", -5},
        {u"( 5 )", -5},
        {u"  7\t", 7},
        {u"&H1F", 31},
        {u"&hff", 255},
        {u"&O17", 15},
        {u" &H10 ", 16},
        {u"&HFFFFFFFF", -1},
        {u"007", 7},
        {u"\u00a08", 8},
        {u"-0.25e2", -25},
        {u"12345678901234567890", 12345678901234567890.0},
    };
    for (const auto& row : rows) {
        const std::optional<double> value = ToNumber(row.Text);
        ASSERT_TRUE(value) << qPrintable(row.Text.toString());
        EXPECT_DOUBLE_EQ(*value, row.Value) << qPrintable(row.Text.toString());
        EXPECT_TRUE(IsNumeric(row.Text));
    }
}

TEST(Number, TextsThatAreNone) {
    for (const char16_t* text :
         {u"",     u" ",   u"-",     u"+",     u"$",   u".",        u",",      u"e3",  u"1e",
          u"1e+",  u"1 2", u"1.2.3", u"1.2,3", u"--1", u"-1-",      u"(1",     u"1)",  u"(-1)",
          u"()",   u"$$1", u"1e3.5", u"1e999", u"abc", u"5%",       u"&H",     u"&HG", u"&O8",
          u"&H-1", u"&17", u"0x10",  u"inf",   u"nan", u"5 apples", u"\u0663", u"1/2", u"€5"})
        EXPECT_FALSE(IsNumeric(text)) << qPrintable(QStringView(text).toString());
}

}  // namespace zephrin::text
