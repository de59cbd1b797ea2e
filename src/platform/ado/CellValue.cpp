#include "platform/ado/CellValue.h"

#include "platform/ado/ColumnStore.h"

#include <charconv>
#include <cmath>

namespace zephrin::ado {

namespace {

constexpr std::int64_t TicksPerMillisecond = TicksPerSecond / 1000;

std::int64_t FloorDivide(std::int64_t value, std::int64_t by) {
    return value / by - (value % by < 0 ? 1 : 0);
}

const QDate& Epoch() {
    static const QDate epoch(1970, 1, 1);
    return epoch;
}

/// Decimals behind a point without trailing zeros, or nothing.
QString FractionText(std::int64_t fraction, int digits) {
    if (fraction == 0) return {};
    QString text = QStringLiteral(".%1").arg(fraction, digits, 10, QLatin1Char('0'));
    while (text.endsWith(QLatin1Char('0'))) text.chop(1);
    return text;
}

/// Cut behind `maxChars` units, or before the pair that this would cut in two.
QString Shortened(QString text, qsizetype maxChars) {
    if (text.size() <= maxChars) return text;
    if (maxChars <= 0) return {};
    text.truncate(text.at(maxChars - 1).isHighSurrogate() ? maxChars - 1 : maxChars);
    return text;
}

template <class Number>
QString ShortestText(Number value) {
    char buffer[64];
    // Scientific where plain digits would be a row of zeros.
    const Number size = std::abs(value);
    const bool plain = size == 0 || (size >= Number(1e-5) && size < Number(1e15));
    const auto format = plain ? std::chars_format::fixed : std::chars_format::scientific;
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format).ptr;
    return QString::fromLatin1(buffer, end - buffer).toUpper();
}

}  // namespace

QVariant IntegerValue(std::int64_t value, DataType type) {
    switch (type) {
        case DataType::Boolean:
            return value != 0;
        case DataType::TinyInt:
        case DataType::UnsignedTinyInt:
        case DataType::SmallInt:
        case DataType::Integer:
            if (value == static_cast<int>(value)) return static_cast<int>(value);
            break;
        default:
            break;
    }
    return static_cast<qlonglong>(value);
}

QString IntegerText(std::int64_t value, DataType type) {
    if (type == DataType::Boolean) return value != 0 ? QStringLiteral("True") : QStringLiteral("False");
    return QString::number(value);
}

QString DoubleText(double value, DataType type) {
    const auto single = static_cast<float>(value);
    if (type == DataType::Single && static_cast<double>(single) == value) return ShortestText(single);
    return ShortestText(value);
}

QString DoubleShown(double value, DataType type) {
    constexpr int shownDigits = 15;
    // A Single is short as it is, and so large a number keeps what tells it from its neighbours.
    if (type == DataType::Single || std::abs(value) >= 1e15) return DoubleText(value, type);
    return DoubleText(QByteArray::number(value, 'g', shownDigits).toDouble(), type);
}

QString CurrencyText(std::int64_t tenThousandths) {
    // The smallest number has no positive counterpart among the signed ones.
    const bool negative = tenThousandths < 0;
    const auto size = negative ? 0 - static_cast<std::uint64_t>(tenThousandths)
                               : static_cast<std::uint64_t>(tenThousandths);
    QString text = (negative ? QStringLiteral("-") : QString()) + QString::number(size / 10'000) +
                   QStringLiteral(".%1").arg(size % 10'000, 4, 10, QLatin1Char('0'));
    for (int drop = 0; drop < 2 && text.endsWith(QLatin1Char('0')); ++drop) text.chop(1);
    return text;
}

QString TimeText(std::int64_t ticks) {
    const std::int64_t seconds = FloorDivide(ticks, TicksPerSecond);
    return QStringLiteral("%1:%2:%3")
               .arg(seconds / 3600, 2, 10, QLatin1Char('0'))
               .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
               .arg(seconds % 60, 2, 10, QLatin1Char('0')) +
           FractionText(ticks - seconds * TicksPerSecond, 7);
}

QString DateTimeText(std::int64_t ticks) {
    const std::int64_t days = FloorDivide(ticks, TicksPerDay);
    const QString date = DateOfDays(days).toString(Qt::ISODate);
    const std::int64_t rest = ticks - days * TicksPerDay;
    return rest == 0 ? date : date + QLatin1Char(' ') + TimeText(rest);
}

QString BytesText(std::string_view bytes, qsizetype maxChars) {
    if (bytes.empty()) return {};
    const qsizetype shown =
        std::min<qsizetype>(static_cast<qsizetype>(bytes.size()), std::max<qsizetype>(maxChars, 0) / 2);
    const QByteArray hex = QByteArray(bytes.data(), shown).toHex().toUpper();
    return (QStringLiteral("0x") + QString::fromLatin1(hex)).left(maxChars);
}

QString LeadingText(std::string_view utf8, qsizetype maxChars) {
    if (maxChars <= 0) return {};
    auto size = static_cast<qsizetype>(utf8.size());
    // A UTF-16 unit takes three bytes at the most.
    if (size / 3 > maxChars) {
        size = maxChars * 3;
        while (size > 0 &&
               (static_cast<unsigned char>(utf8[static_cast<std::size_t>(size)]) & 0xC0) == 0x80 &&
               size > maxChars * 3 - 4)
            --size;
    }
    return Shortened(QString::fromUtf8(utf8.data(), size), maxChars);
}

QString ValueText(const QVariant& value, DataType type, qsizetype maxChars) {
    switch (value.typeId()) {
        case QMetaType::UnknownType:
            return {};
        case QMetaType::Bool:
            return IntegerText(value.toBool(), DataType::Boolean).left(maxChars);
        case QMetaType::Int:
        case QMetaType::LongLong:
            return IntegerText(value.toLongLong(), type).left(maxChars);
        case QMetaType::Float:
        case QMetaType::Double:
            return DoubleText(value.toDouble(), type).left(maxChars);
        case QMetaType::QDate:
            return value.toDate().toString(Qt::ISODate).left(maxChars);
        case QMetaType::QTime:
            return TimeText(TicksOfTime(value.toTime())).left(maxChars);
        case QMetaType::QDateTime:
            return DateTimeText(TicksOfDateTime(value.toDateTime())).left(maxChars);
        case QMetaType::QByteArray: {
            const QByteArray bytes = value.toByteArray();
            return BytesText({bytes.constData(), static_cast<std::size_t>(bytes.size())}, maxChars);
        }
        default:
            break;
    }
    return Shortened(value.toString(), maxChars);
}

QDate DateOfDays(std::int64_t days) {
    return Epoch().addDays(days);
}

std::int64_t DaysOfDate(const QDate& date) {
    return Epoch().daysTo(date);
}

QTime TimeOfTicks(std::int64_t ticks) {
    const std::int64_t inDay = ticks - FloorDivide(ticks, TicksPerDay) * TicksPerDay;
    return QTime::fromMSecsSinceStartOfDay(static_cast<int>(inDay / TicksPerMillisecond));
}

std::int64_t TicksOfTime(const QTime& time) {
    return time.msecsSinceStartOfDay() * TicksPerMillisecond;
}

QDateTime DateTimeOfTicks(std::int64_t ticks) {
    return QDateTime(DateOfDays(FloorDivide(ticks, TicksPerDay)), TimeOfTicks(ticks), Qt::UTC);
}

std::int64_t TicksOfDateTime(const QDateTime& value) {
    return DaysOfDate(value.date()) * TicksPerDay + TicksOfTime(value.time());
}

}  // namespace zephrin::ado
