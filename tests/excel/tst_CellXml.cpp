#include "platform/excel/CellXml.h"

#include <QDate>

#include <gtest/gtest.h>
#include <limits>

namespace zephrin::excel {

namespace {

std::string Cell(const std::function<void(QByteArray&)>& write) {
    QByteArray out;
    write(out);
    return out.toStdString();
}

std::string InText(const std::string& inner) {
    return "<c t=\"inlineStr\"><is><t>" + inner + "</t></is></c>";
}

}  // namespace

TEST(CellXml, TextStaysTextAndNeverBreaksThePart) {
    const struct {
        const char* Name;
        std::string Text;
        std::string Xml;
    } rows[] = {
        {"formula", "=1+1", InText("=1+1")},
        {"at sign", "@SUM(A1)", InText("@SUM(A1)")},
        {"leading zeros", "00123", InText("00123")},
        {"markup", "a<b>&\"c\"", InText("a&lt;b&gt;&amp;&quot;c&quot;")},
        {"control characters",
         std::string("a\x01\x1f\x7f"
                     "b\0c",
                     7),
         InText("a\x7f"
                "bc")},
        {"noncharacter",
         "a\xEF\xBF\xBF"
         "b",
         InText("ab")},
        {"carriage return", "a\rb", InText("a&#13;b")},
        {"looks like an escape", "_x0041_ _x41_", InText("_x005F_x0041_ _x41_")},
        {"emoji", "\xF0\x9F\x98\x80", InText("\xF0\x9F\x98\x80")},
        {"no UTF-8",
         "a\xFF"
         "b",
         InText("a\xEF\xBF\xBD"
                "b")},
        {"empty", "", InText("")},
        {"blank at the edge", " a", "<c t=\"inlineStr\"><is><t xml:space=\"preserve\"> a</t></is></c>"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Cell([&](QByteArray& out) { EXPECT_TRUE(AppendTextCell(out, row.Text)); }), row.Xml)
            << row.Name;
}

TEST(CellXml, LongTextIsCutAtTheCellsLimitBetweenCharacters) {
    const std::string emoji = "\xF0\x9F\x98\x80";
    std::string text(static_cast<size_t>(CellTextLimit) - 1, 'a');
    QByteArray out;
    EXPECT_TRUE(AppendTextCell(out, text + "b"));
    out.clear();
    // The emoji takes two units of which only one is left.
    EXPECT_FALSE(AppendTextCell(out, text + emoji));
    EXPECT_EQ(out.toStdString(), InText(text));
}

TEST(CellXml, NumbersKeepTheirDigitsOrBecomeText) {
    EXPECT_EQ(Cell([](QByteArray& out) { AppendIntegerCell(out, 123456789012345); }),
              "<c><v>123456789012345</v></c>");
    EXPECT_EQ(Cell([](QByteArray& out) { AppendIntegerCell(out, 1234567890123456); }),
              InText("1234567890123456"));
    EXPECT_EQ(Cell([](QByteArray& out) { AppendDecimalCell(out, "-0.000012345678901234"); }),
              "<c><v>-0.000012345678901234</v></c>");
    EXPECT_EQ(Cell([](QByteArray& out) { AppendDecimalCell(out, "12345678901234.56"); }),
              InText("12345678901234.56"));
    EXPECT_EQ(Cell([](QByteArray& out) { AppendNumberCell(out, 0.1); }), "<c><v>0.1</v></c>");
    EXPECT_EQ(Cell([](QByteArray& out) { AppendNumberCell(out, std::numeric_limits<double>::infinity()); }),
              InText("Infinity"));
}

TEST(CellXml, DaysAreCountedLikeSheetsDo) {
    const struct {
        QDate Day;
        double Serial;
    } rows[] = {
        {{1899, 12, 31}, -1}, {{1900, 1, 1}, 1},      {{1900, 2, 28}, 59},
        {{1900, 3, 1}, 61},   {{2024, 2, 29}, 45351}, {{9999, 12, 31}, 2958465},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DaySerial(QDate(1970, 1, 1).daysTo(row.Day)), row.Serial) << qPrintable(row.Day.toString());
    EXPECT_EQ(ColumnLetters(0), QStringLiteral("A"));
    EXPECT_EQ(ColumnLetters(26), QStringLiteral("AA"));
    EXPECT_EQ(ColumnLetters(SheetColumnLimit - 1), QStringLiteral("XFD"));
}

}  // namespace zephrin::excel
