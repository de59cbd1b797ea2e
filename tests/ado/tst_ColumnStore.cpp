#include "platform/ado/ColumnStore.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace zephrin::ado {
namespace {

void AppendText(ColumnStore& store, int column, const std::string& text) {
    store.AppendText(column, text.data(), static_cast<qsizetype>(text.size()));
}

/// Texts around every border of the ways in which they are kept.
std::string TextOfRow(qint64 row) {
    static const std::size_t sizes[] = {0, 1, 6, 7, 8, 9, 100, 3000};
    std::string text(sizes[row % 8], static_cast<char>('a' + row % 26));
    if (!text.empty()) text.back() = '!';
    return text;
}

TEST(ColumnStore, GivesBackWhatWasAppendedAcrossChunks) {
    ColumnStore store(3);
    const qint64 rows = 3 * qint64{ColumnStore::ChunkRows} + 17;
    // A block fetch writes one column after the other.
    for (qint64 row = 0; row < rows; ++row) store.AppendInt(0, row - 5);
    for (qint64 row = 0; row < rows; ++row) AppendText(store, 1, TextOfRow(row));
    for (qint64 row = 0; row < rows; ++row)
        if (row % 3 == 0)
            store.AppendNull(2);
        else
            store.AppendDouble(2, double(row) / 4);
    store.EndRows(rows);
    for (int pass = 0; pass < 2; ++pass) {
        ASSERT_EQ(store.RowCount(), rows + pass);
        for (qint64 row = 0; row < rows; ++row) {
            ASSERT_EQ(store.IntAt(row, 0), row - 5);
            ASSERT_EQ(store.RunAt(row, 1), TextOfRow(row));
            ASSERT_EQ(store.TagAt(row, 2), row % 3 == 0 ? CellTag::Null : CellTag::Double);
            ASSERT_TRUE(row % 3 == 0 || store.DoubleAt(row, 2) == double(row) / 4) << row;
        }
        store.Squeeze();
        store.AppendInt(0, 1);
        AppendText(store, 1, "a text behind the squeeze");
        store.AppendNull(2);
        store.EndRows();
    }
    EXPECT_EQ(store.RunAt(rows, 1), "a text behind the squeeze");
    store.Clear();
    EXPECT_EQ(store.RowCount(), 0);
    EXPECT_EQ(store.ColumnCount(), 3);
}

TEST(ColumnStore, HugeTexts) {
    ColumnStore store(1);
    const std::string huge(10 << 20, 'x');
    const std::size_t borders[] = {(1 << 20) - 2, (1 << 20) - 1, 1 << 20};
    AppendText(store, 0, huge);
    for (const std::size_t size : borders) AppendText(store, 0, huge.substr(0, size));
    AppendText(store, 0, "small");
    store.EndRows(5);
    EXPECT_EQ(store.RunAt(0, 0), huge);
    for (int row = 0; row < 3; ++row) EXPECT_EQ(store.RunAt(row + 1, 0).size(), borders[row]);
    EXPECT_EQ(store.RunAt(4, 0), "small");
    EXPECT_EQ(store.TextAt(0, 0, DataType::LongVarWChar, 5), u"xxxxx"_qs);
}

TEST(ColumnStore, SmallResultsOfManyColumnsStaySmall) {
    ColumnStore store(400);
    for (int row = 0; row < 10; ++row) {
        for (int column = 0; column < 400; ++column) AppendText(store, column, "twelve bytes");
        store.EndRows();
    }
    store.Squeeze();
    EXPECT_LT(store.MemoryUsage(), 4000 * 40);
    ColumnStore tall(1);
    for (int row = 0; row < 100'000; ++row) tall.AppendInt(0, row);
    tall.EndRows(100'000);
    tall.Squeeze();
    EXPECT_LT(tall.MemoryUsage(), 100'000 * 92 / 10);
}

TEST(ColumnStore, ValuesAndTexts) {
    struct Row {
        const char* What;
        std::function<void(ColumnStore&)> Append;
        DataType Type;
        QVariant Value;
        const char16_t* Text;
    };
    const auto text = [](const char* bytes, qsizetype size) {
        return [=](ColumnStore& store) { store.AppendText(0, bytes, size); };
    };
    const auto integer = [](qint64 value) { return [=](ColumnStore& store) { store.AppendInt(0, value); }; };
    const auto number = [](double value) {
        return [=](ColumnStore& store) { store.AppendDouble(0, value); };
    };
    const auto money = [](qint64 value) {
        return [=](ColumnStore& store) { store.AppendCurrency(0, value); };
    };
    const auto moment = [](qint64 ticks) {
        return [=](ColumnStore& store) { store.AppendDateTime(0, ticks); };
    };
    const qint64 march = 19'783 * TicksPerDay;  // 2024-03-01
    const Row rows[] = {
        {"true", integer(-1), DataType::Boolean, true, u"True"},
        {"true as 1", integer(1), DataType::Boolean, true, u"True"},
        {"false", integer(0), DataType::Boolean, false, u"False"},
        {"int", integer(-7), DataType::Integer, -7, u"-7"},
        {"more than int", integer(1LL << 40), DataType::Integer, 1LL << 40, u"1099511627776"},
        {"bigint", integer(7), DataType::BigInt, 7LL, u"7"},
        {"least", integer(std::numeric_limits<qint64>::min()), DataType::BigInt,
         std::numeric_limits<qint64>::min(), u"-9223372036854775808"},
        {"double", number(0.1), DataType::Double, 0.1, u"0.1"},
        {"whole double", number(100000), DataType::Double, 100000.0, u"100000"},
        {"large double", number(1e20), DataType::Double, 1e20, u"1E+20"},
        {"tiny double", number(-2.5e-7), DataType::Double, -2.5e-7, u"-2.5E-07"},
        {"single", number(double(0.1F)), DataType::Single, double(0.1F), u"0.1"},
        {"finer than a single", number(0.1), DataType::Single, 0.1, u"0.1"},
        {"money", money(125'000), DataType::Currency, u"12.50"_qs, u"12.50"},
        {"all of its decimals", money(-1), DataType::Currency, u"-0.0001"_qs, u"-0.0001"},
        {"least money", money(std::numeric_limits<qint64>::min()), DataType::Currency,
         u"-922337203685477.5808"_qs, u"-922337203685477.5808"},
        {"date", [](ColumnStore& s) { s.AppendDate(0, 19'783); }, DataType::DBDate, QDate(2024, 3, 1),
         u"2024-03-01"},
        {"time", [](ColumnStore& s) { s.AppendTime(0, 50'700 * TicksPerSecond + 2'500'000); },
         DataType::DBTime, QTime(14, 5, 0, 250), u"14:05:00.25"},
        {"midnight", moment(march), DataType::DBTimeStamp, QDateTime(QDate(2024, 3, 1), QTime(0, 0), Qt::UTC),
         u"2024-03-01"},
        {"moment", moment(march + 50'700 * TicksPerSecond), DataType::DBTimeStamp,
         QDateTime(QDate(2024, 3, 1), QTime(14, 5), Qt::UTC), u"2024-03-01 14:05:00"},
        {"before 1970", moment(-TicksPerSecond), DataType::DBTimeStamp,
         QDateTime(QDate(1969, 12, 31), QTime(23, 59, 59), Qt::UTC), u"1969-12-31 23:59:59"},
        {"finest", moment(march + 1), DataType::DBTimeStamp,
         QDateTime(QDate(2024, 3, 1), QTime(0, 0), Qt::UTC), u"2024-03-01 00:00:00.0000001"},
        {"sum of prices", [](ColumnStore& s) { s.AppendDouble(0, 977.2700000000001); }, DataType::Double,
         977.2700000000001, u"977.27"},
        {"text", text("na\xC3\xAFve", 6), DataType::VarWChar, u"na\u00EFve"_qs, u"na\u00EFve"},
        {"no UTF-8", text("a\xFF\xC3", 3), DataType::VarChar, u"a\uFFFD\uFFFD"_qs, u"a\uFFFD\uFFFD"},
        {"zero inside", text("a\0b", 3), DataType::VarChar, QString(u"a\0b"_qs), nullptr},
        {"bytes", [](ColumnStore& s) { s.AppendBytes(0, "\x01\xAB", 2); }, DataType::VarBinary,
         QByteArray("\x01\xAB"), u"0x01AB"},
        {"decimal", [](ColumnStore& s) { s.AppendDecimal(0, "-12.50", 6); }, DataType::Numeric, u"-12.50"_qs,
         u"-12.50"},
        {"null", [](ColumnStore& s) { s.AppendNull(0); }, DataType::VarChar, QVariant(), u""},
    };
    for (const Row& row : rows) {
        ColumnStore store(1);
        row.Append(store);
        store.EndRows();
        EXPECT_EQ(store.ValueAt(0, 0, row.Type), row.Value) << row.What;
        EXPECT_EQ(store.ValueAt(0, 0, row.Type).typeId(), row.Value.typeId()) << row.What;
        if (!row.Text) continue;
        EXPECT_EQ(store.TextAt(0, 0, row.Type, 100), QString::fromUtf16(row.Text)) << row.What;
    }
}

TEST(ColumnStore, ShownTextIsCutAtWholeCharacters) {
    const QString mixed = u"a\u00E9\u20AC\U0001F600z"_qs;
    QString many;
    for (int copy = 0; copy < 50; ++copy) many += mixed;
    ColumnStore store(1);
    AppendText(store, 0, many.toStdString());
    store.EndRows();
    for (qsizetype most = 0; most <= many.size() + 1; ++most) {
        QString expected = many.left(most);
        if (expected.endsWith(QChar(0xD83D))) expected.chop(1);
        ASSERT_EQ(store.TextAt(0, 0, DataType::VarWChar, most), expected) << most;
    }
}

}  // namespace
}  // namespace zephrin::ado
