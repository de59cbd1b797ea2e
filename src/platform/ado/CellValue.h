#pragma once

#include <zephrin/ado/Types.h>

#include <QDateTime>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <string_view>

namespace zephrin::ado {

// What a stored cell is to a host, and how it is written for a reader: numbers with a point, dates in ISO
// form, "True" and "False". Nothing here depends on the locale.

QVariant IntegerValue(std::int64_t value, DataType type);
QString IntegerText(std::int64_t value, DataType type);
/// The fewest digits that give the number back; those of a Single where the value is one.
QString DoubleText(double value, DataType type = DataType::Double);
/// The same as people are shown it: with the fifteen digits that a double always keeps, so that a sum of prices does not
/// end in the dust of its binary form.
QString DoubleShown(double value, DataType type);
/// Two decimals, or as many of four as it takes.
QString CurrencyText(std::int64_t tenThousandths);
QString TimeText(std::int64_t ticksSinceMidnight);
/// Midnight is shown as the bare date.
QString DateTimeText(std::int64_t ticksSinceEpoch);
/// "0x" and hexadecimal digits.
QString BytesText(std::string_view bytes, qsizetype maxChars);
/// The first `maxChars` UTF-16 units of UTF-8, with U+FFFD for what is none; a pair is never cut in two.
QString LeadingText(std::string_view utf8, qsizetype maxChars);

/// The text of any value that a recordset holds; empty for Null.
QString ValueText(const QVariant& value, DataType type = DataType::Variant, qsizetype maxChars = 32767);

QDate DateOfDays(std::int64_t days);
std::int64_t DaysOfDate(const QDate& date);
/// Fractions finer than a millisecond are dropped.
QTime TimeOfTicks(std::int64_t ticks);
std::int64_t TicksOfTime(const QTime& time);
QDateTime DateTimeOfTicks(std::int64_t ticks);
/// The date and the time that `value` shows, whatever its time zone.
std::int64_t TicksOfDateTime(const QDateTime& value);

}  // namespace zephrin::ado
