#include "Failing.h"
#include "platform/ado/CellValue.h"
#include "platform/ado/Conversion.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace zephrin::ado {
namespace {

TEST(Conversion, HoldsWhatSuitsAndRefusesTheRest) {
    const QDateTime shop(QDate(2024, 3, 31), QTime(2, 30), Qt::LocalTime);
    const struct {
        Field Column;
        QVariant Given;
        QVariant Held;  ///< invalid where the value is refused
    } cases[] = {
        {{u"text"_qs, DataType::VarChar, 5}, u"abcde"_qs, u"abcde"_qs},
        {{u"text"_qs, DataType::VarChar, 5}, u"abcdef"_qs, {}},
        {{u"text"_qs, DataType::VarChar, 0}, u"abcdef"_qs, u"abcdef"_qs},
        {{u"text"_qs, DataType::VarChar, 5}, QString(), u""_qs},
        {{u"text"_qs, DataType::VarChar, 5}, true, u"True"_qs},
        {{u"text"_qs, DataType::VarChar, 5}, 12.5, u"12.5"_qs},
        {{u"text"_qs, DataType::VarChar, 5}, 123456, {}},
        {{u"text"_qs, DataType::VarWChar, 20}, QDate(2024, 3, 1), u"2024-03-01"_qs},
        {{u"text"_qs, DataType::VarChar, 20}, QByteArray("x"), {}},
        {{u"flag"_qs, DataType::Boolean}, -1, true},
        {{u"flag"_qs, DataType::Boolean}, 0, false},
        {{u"flag"_qs, DataType::Boolean}, u"false"_qs, false},
        {{u"flag"_qs, DataType::Boolean}, u" -1 "_qs, true},
        {{u"flag"_qs, DataType::Boolean}, u""_qs, {}},
        {{u"small"_qs, DataType::SmallInt}, 32767, 32767},
        {{u"small"_qs, DataType::SmallInt}, 32768, {}},
        {{u"small"_qs, DataType::SmallInt}, true, -1},
        {{u"small"_qs, DataType::SmallInt}, u"12"_qs, 12},
        {{u"small"_qs, DataType::SmallInt}, u"1e2"_qs, 100},
        {{u"small"_qs, DataType::SmallInt}, u"1.5"_qs, {}},
        {{u"small"_qs, DataType::SmallInt}, u"1e999999"_qs, {}},
        {{u"tiny"_qs, DataType::UnsignedTinyInt}, 255, 255},
        {{u"tiny"_qs, DataType::UnsignedTinyInt}, -1, {}},
        {{u"big"_qs, DataType::BigInt}, u"9223372036854775807"_qs, std::numeric_limits<qint64>::max()},
        {{u"big"_qs, DataType::BigInt}, u"9223372036854775808"_qs, {}},
        {{u"number"_qs, DataType::Double}, u"-2.5"_qs, -2.5},
        {{u"number"_qs, DataType::Double}, u"1e999"_qs, {}},
        {{u"number"_qs, DataType::Double}, u"two"_qs, {}},
        {{u"money"_qs, DataType::Currency}, 12.5, u"12.50"_qs},
        {{u"money"_qs, DataType::Currency}, u"922337203685477.5807"_qs, u"922337203685477.5807"_qs},
        {{u"money"_qs, DataType::Currency}, u"922337203685477.5808"_qs, {}},
        {{u"money"_qs, DataType::Currency}, u"0.00001"_qs, {}},
        {{u"exact"_qs, DataType::Numeric, 0, -1, 5, 2}, u"-123.45"_qs, u"-123.45"_qs},
        {{u"exact"_qs, DataType::Numeric, 0, -1, 5, 2}, u"1234"_qs, {}},
        {{u"exact"_qs, DataType::Numeric, 0, -1, 5, 2}, u"0.001"_qs, {}},
        {{u"exact"_qs, DataType::Decimal}, 0.1, u"0.1"_qs},
        {{u"exact"_qs, DataType::Decimal}, u"1e5000"_qs, {}},
        {{u"moment"_qs, DataType::DBTimeStamp},
         u"2024-03-01 14:05:00.25"_qs,
         QDateTime(QDate(2024, 3, 1), QTime(14, 5, 0, 250), Qt::UTC)},
        {{u"moment"_qs, DataType::Date},
         QDate(2024, 3, 1),
         QDateTime(QDate(2024, 3, 1), QTime(0, 0), Qt::UTC)},
        {{u"moment"_qs, DataType::Date}, shop, QDateTime(shop.date(), shop.time(), Qt::UTC)},
        {{u"moment"_qs, DataType::Date}, u"yesterday"_qs, {}},
        {{u"moment"_qs, DataType::Date}, u"2024-03-01x14:05"_qs, {}},
        {{u"day"_qs, DataType::DBDate}, u"2024-02-29"_qs, QDate(2024, 2, 29)},
        {{u"day"_qs, DataType::DBDate}, u"2023-02-29"_qs, {}},
        {{u"day"_qs, DataType::DBDate}, u"2024-02-29 01:00"_qs, {}},
        {{u"time"_qs, DataType::DBTime}, u"14:05"_qs, QTime(14, 5)},
        {{u"time"_qs, DataType::DBTime}, u"25:00"_qs, {}},
        {{u"guid"_qs, DataType::Guid},
         u"{6BA7B810-9DAD-11D1-80B4-00C04FD430C8}"_qs,
         u"6ba7b810-9dad-11d1-80b4-00c04fd430c8"_qs},
        {{u"guid"_qs, DataType::Guid},
         u"00000000-0000-0000-0000-000000000000"_qs,
         u"00000000-0000-0000-0000-000000000000"_qs},
        {{u"guid"_qs, DataType::Guid}, u"me"_qs, {}},
        {{u"bytes"_qs, DataType::VarBinary, 2}, QByteArray("ab"), QByteArray("ab")},
        {{u"bytes"_qs, DataType::VarBinary, 2}, QByteArray("abc"), {}},
        {{u"bytes"_qs, DataType::VarBinary}, u"text"_qs, {}},
        {{u"any"_qs, DataType::Variant}, 1.5, 1.5},
    };
    for (const auto& row : cases) {
        const QString what = row.Column.Name + u" given "_qs + ValueText(row.Given);
        QVariant held;
        const int number = test::NumberOf([&] { held = Converted(row.Given, row.Column); });
        EXPECT_EQ(number, row.Held.isValid() ? 0 : ErrorNumber::ValueRefused) << qPrintable(what);
        EXPECT_EQ(held, row.Held) << qPrintable(what);
        EXPECT_EQ(held.typeId(), row.Held.typeId()) << qPrintable(what);
        EXPECT_FALSE(Converted({}, row.Column).isValid());
    }
}

}  // namespace
}  // namespace zephrin::ado
