#include "platform/ado/ColumnStore.h"
#include "platform/ado/DecimalDigits.h"
#include "platform/ado/RowOrder.h"
#include "platform/ado/TextOrder.h"

#include <QDateTime>
#include <QRandomGenerator>

#include <algorithm>
#include <gtest/gtest.h>

namespace zephrin::ado {
namespace {

using Rows = std::vector<std::uint32_t>;

ColumnStore StoreOf(const QList<QVariantList>& columns, const QList<DataType>& types) {
    ColumnStore store(static_cast<int>(columns.size()));
    for (int column = 0; column < columns.size(); ++column)
        for (const QVariant& value : columns.at(column)) store.AppendValue(column, value, types.at(column));
    store.EndRows(columns.first().size());
    return store;
}

/// Texts of the values in ascending order, those of one row list each.
QStringList Sorted(const QVariantList& values, DataType type, bool descending = false) {
    const ColumnStore store = StoreOf({values}, {type});
    QStringList texts;
    for (const std::uint32_t row : SortedRows(store, RowsInOrder(values.size()), {{0, type, descending}}))
        texts << (values.at(row).isValid() ? store.TextAt(row, 0, type, 100) : u"Null"_qs);
    return texts;
}

TEST(RowOrder, OrderOfEachKind) {
    const QVariant null;
    const qint64 big = (1LL << 53) + 1;
    const struct {
        const char* What;
        DataType Type;
        QVariantList Values;
        const char16_t* Ascending;
        const char16_t* Descending;
    } cases[] = {
        {"integers", DataType::Integer, {3, null, -20, 100, 3}, u"Null|-20|3|3|100", u"100|3|3|-20|Null"},
        {"booleans", DataType::Boolean, {true, false, null}, u"Null|False|True", u"True|False|Null"},
        {"doubles",
         DataType::Double,
         {0.5, -0.5, 0.0, -1e300, 1e-300},
         u"-1E+300|-0.5|0|1E-300|0.5",
         u"0.5|1E-300|0|-0.5|-1E+300"},
        {"integers among doubles",
         DataType::Double,
         {big, double(1LL << 53), 2, 1.5, big - 2},
         u"1.5|2|9007199254740991|9.007199254740992E+15|9007199254740993",
         u"9007199254740993|9.007199254740992E+15|9007199254740991|2|1.5"},
        {"exact decimals",
         DataType::Numeric,
         {u"10.5"_qs, u"9.99"_qs, u"-0.5"_qs, u"10.50000000000000000001"_qs, u"-12"_qs, u"0"_qs},
         u"-12|-0.5|0|9.99|10.5|10.50000000000000000001",
         u"10.50000000000000000001|10.5|9.99|0|-0.5|-12"},
        {"texts without case",
         DataType::VarChar,
         {u"b"_qs, u"C"_qs, u"B"_qs, null, u"a"_qs, u""_qs},
         u"Null||a|b|B|C",
         u"C|b|B|a||Null"},
        {"texts beyond ASCII",
         DataType::VarWChar,
         {u"\u00C9b"_qs, u"\u00E9a"_qs, u"\u00E9C"_qs, u"z"_qs},
         u"\u00E9a|\u00C9b|\u00E9C|z",
         u"z|\u00E9C|\u00C9b|\u00E9a"},
        {"prefixes",
         DataType::VarChar,
         {u"aaaaaaaa"_qs, u"aaaaaaa"_qs, u"aaaaaab"_qs, u"aaaaaaaA"_qs, u"aaaaaa"_qs},
         u"aaaaaa|aaaaaaa|aaaaaaaa|aaaaaaaA|aaaaaab",
         u"aaaaaab|aaaaaaaa|aaaaaaaA|aaaaaaa|aaaaaa"},
        {"dates",
         DataType::DBTimeStamp,
         {QDateTime(QDate(2024, 3, 1), QTime(1, 0), Qt::UTC), QDate(2024, 3, 1), QDate(1969, 1, 1)},
         u"1969-01-01|2024-03-01|2024-03-01 01:00:00",
         u"2024-03-01 01:00:00|2024-03-01|1969-01-01"},
        {"kinds mixed",
         DataType::Variant,
         {u"1"_qs, 2, QByteArray("\x01"), QTime(1, 0), QDate(2000, 1, 1), null, 1.5},
         u"Null|1.5|2|2000-01-01|01:00:00|1|0x01",
         u"0x01|1|01:00:00|2000-01-01|2|1.5|Null"},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(Sorted(row.Values, row.Type).join(u'|').toStdString(),
                  QString::fromUtf16(row.Ascending).toStdString())
            << row.What;
        EXPECT_EQ(Sorted(row.Values, row.Type, true).join(u'|').toStdString(),
                  QString::fromUtf16(row.Descending).toStdString())
            << row.What;
    }
}

// --- Against a model that compares whole values, two at a time
// -----------------------------------------------------

int CompareValues(const QVariant& a, const QVariant& b) {
    if (!a.isValid() || !b.isValid()) return int(a.isValid()) - int(b.isValid());
    if (a.typeId() == QMetaType::QString)
        return CompareTexts(a.toString().toStdString(), b.toString().toStdString());
    const long double x =
        a.typeId() == QMetaType::Double ? a.toDouble() : static_cast<long double>(a.toLongLong());
    const long double y =
        b.typeId() == QMetaType::Double ? b.toDouble() : static_cast<long double>(b.toLongLong());
    return x < y ? -1 : x > y ? 1 : 0;
}

QVariant RandomValue(QRandomGenerator& random, int kind) {
    if (random.bounded(10) == 0) return {};
    switch (kind) {
        case 0:
            return random.bounded(-20, 20);
        case 1:
            return random.bounded(-8, 8) / 4.0;
        case 2:
            return random.bounded(2) ? QVariant(random.bounded(-5, 5))
                                     : QVariant(random.bounded(-20, 20) / 4.0);
        default:
            break;
    }
    // Few letters and shared beginnings, so that every depth of comparison is met.
    QString text = QString(random.bounded(3) * 9, u'x');
    for (int left = random.bounded(12); left > 0; --left)
        text += u"aAbB\u00E9\u00C9\0"_qs.at(random.bounded(7));
    return text;
}

TEST(RowOrder, AgreesWithPairwiseComparison) {
    QRandomGenerator random(20'240'301);
    for (int round = 0; round < 300; ++round) {
        const int count = random.bounded(1, round < 280 ? 60 : 1500);
        QList<QVariantList> columns(3);
        std::vector<SortKey> keys;
        for (int column = 0; column < 3; ++column) {
            const int kind = random.bounded(4);
            for (int row = 0; row < count; ++row) columns[column] << RandomValue(random, kind);
            keys.push_back({column, DataType::Variant, random.bounded(2) == 1});
        }
        keys.resize(static_cast<std::size_t>(random.bounded(1, 4)));
        Rows expected = RowsInOrder(count);
        std::shuffle(expected.begin(), expected.end(), random);
        const Rows before = expected;
        std::stable_sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
            for (const SortKey& key : keys) {
                const int sign = CompareValues(columns[key.Column][a], columns[key.Column][b]);
                if (sign != 0) return key.Descending ? sign > 0 : sign < 0;
            }
            return false;
        });
        const ColumnStore store = StoreOf(columns, {DataType::Variant, DataType::Variant, DataType::Variant});
        ASSERT_EQ(SortedRows(store, before, keys), expected) << "round " << round;
    }
}

TEST(RowOrder, LongTextsThatBeginAlike) {
    const QString beginning(100'000, u'q');
    const QVariantList values = {beginning + u"c"_qs, beginning, beginning + u"B"_qs, beginning + u"a"_qs};
    QVariantList many;
    for (int copy = 0; copy < 5; ++copy) many += values;
    const ColumnStore store = StoreOf({many}, {DataType::LongVarWChar});
    QString ends;
    for (const std::uint32_t row :
         SortedRows(store, RowsInOrder(many.size()), {{0, DataType::LongVarWChar, false}}))
        ends += many.at(row).toString().mid(100'000) + u'.';
    EXPECT_EQ(ends, u".....a.a.a.a.a.B.B.B.B.B.c.c.c.c.c."_qs);
}

TEST(DecimalDigits, ReadsAndCompares) {
    const char* ascending[] = {"-1e3", "-12.5", "-12.49", "-0.001", "0",  "1e-400",
                               "0.1",  ".5",    "1.",     "9",      "10", "1e2"};
    for (std::size_t a = 0; a < std::size(ascending); ++a)
        for (std::size_t b = 0; b < std::size(ascending); ++b) {
            const int sign =
                Compare(DecimalDigits::OfText(ascending[a]), DecimalDigits::OfText(ascending[b]));
            EXPECT_EQ(sign, a < b ? -1 : a > b ? 1 : 0) << ascending[a] << " " << ascending[b];
        }
    const struct {
        const char* Text;
        const char* Plain;
    } plain[] = {{"+007.50", "7.5"}, {"-0", "0"}, {"1e3", "1000"}, {"-12.5e-4", "-0.00125"}, {"0.000", "0"}};
    for (const auto& row : plain) EXPECT_EQ(DecimalDigits::OfText(row.Text).ToText(), row.Plain);
    for (const char* text : {"", ".", "-", "1e", "1e+", "1e+-2", "1 2", "0x1", "1e99999999999", "inf", "1,5"})
        EXPECT_FALSE(DecimalDigits::IsNumber(text)) << text;
}

}  // namespace
}  // namespace zephrin::ado
