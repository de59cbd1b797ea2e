#include "platform/ado/Conversion.h"

#include "platform/ado/CellValue.h"
#include "platform/ado/DecimalDigits.h"

#include <zephrin/ado/Error.h>

#include <QDateTime>
#include <QUuid>

#include <cmath>
#include <limits>
#include <optional>

namespace zephrin::ado {

namespace {

Error Refused(const Field& field, const char* why) {
    return Error(
        ErrorNumber::ValueRefused,
        QStringLiteral("The field '%1' cannot hold the value: %2.").arg(field.Name, QLatin1StringView(why)));
}

constexpr const char* TooLong = "it is longer than the field's defined size";
constexpr const char* WrongType = "it does not convert to the field's type";
constexpr const char* OutOfRange = "it is out of the field's range";

bool IsText(const QVariant& value) {
    return value.typeId() == QMetaType::QString || value.typeId() == QMetaType::QChar;
}

QVariant AsText(const QVariant& value, const Field& field) {
    const bool shown = IsText(value) || value.canConvert<QString>();
    if (!shown || value.typeId() == QMetaType::QByteArray) throw Refused(field, WrongType);
    // The whole text: here nothing may be cut off.
    const QString text = ValueText(value, DataType::Variant, std::numeric_limits<qsizetype>::max());
    if (field.DefinedSize > 0 && text.size() > field.DefinedSize) throw Refused(field, TooLong);
    // A null string is a text of no characters, never a Null.
    return text.isNull() ? QString(QLatin1StringView("")) : text;
}

/// The number as exact digits, or nothing where the value is none.
std::optional<DecimalDigits> DigitsOf(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::Bool:
            return DecimalDigits::OfInteger(value.toBool() ? -1 : 0, 0);
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Long:
        case QMetaType::LongLong:
            return DecimalDigits::OfInteger(value.toLongLong(), 0);
        case QMetaType::ULong:
        case QMetaType::ULongLong:
            return DecimalDigits::OfText(std::to_string(value.toULongLong()));
        case QMetaType::Float:
        case QMetaType::Double:
            if (!std::isfinite(value.toDouble())) return {};
            return DecimalDigits::OfDouble(value.toDouble());
        default:
            break;
    }
    if (!IsText(value)) return {};
    const std::string text = value.toString().trimmed().toStdString();
    if (!DecimalDigits::IsNumber(text)) return {};
    return DecimalDigits::OfText(text);
}

DecimalDigits RequireDigits(const QVariant& value, const Field& field) {
    const auto digits = DigitsOf(value);
    if (!digits) throw Refused(field, WrongType);
    return *digits;
}

template <class Integer>
Integer AsInteger(const QVariant& value, const Field& field) {
    const DecimalDigits digits = RequireDigits(value, field);
    if (static_cast<std::int64_t>(digits.Digits.size()) > digits.Point) {
        if (!digits.Digits.empty()) throw Refused(field, WrongType);
    }
    const auto low = DecimalDigits::OfInteger(std::numeric_limits<Integer>::min(), 0);
    const auto high = DecimalDigits::OfInteger(std::numeric_limits<Integer>::max(), 0);
    if (Compare(digits, low) < 0 || Compare(digits, high) > 0) throw Refused(field, OutOfRange);
    return static_cast<Integer>(std::stoll(digits.ToText()));
}

QVariant AsBoolean(const QVariant& value, const Field& field) {
    if (value.typeId() == QMetaType::Bool) return value;
    const QString text = IsText(value) ? value.toString().trimmed() : QString();
    if (text.compare(u"True", Qt::CaseInsensitive) == 0) return true;
    if (text.compare(u"False", Qt::CaseInsensitive) == 0) return false;
    return !RequireDigits(value, field).Digits.empty();
}

QVariant AsDouble(const QVariant& value, const Field& field) {
    if (value.typeId() == QMetaType::Double) return value;
    const double number = RequireDigits(value, field).ToDouble();
    if (!std::isfinite(number)) throw Refused(field, OutOfRange);
    return number;
}

QVariant AsExact(const QVariant& value, const Field& field, int precision, int scale) {
    const DecimalDigits digits = RequireDigits(value, field);
    const auto behind = static_cast<std::int64_t>(digits.Digits.size()) - digits.Point;
    if (precision > 0 && (digits.Point > precision - scale || behind > scale))
        throw Refused(field, OutOfRange);
    constexpr std::int64_t longest = 1000;
    if (std::abs(digits.Point) > longest) throw Refused(field, OutOfRange);
    return QString::fromStdString(digits.ToText());
}

QVariant AsCurrency(const QVariant& value, const Field& field) {
    const QString text = AsExact(value, field, 19, 4).toString();
    return CurrencyText(AsInteger<qint64>(text + QStringLiteral("e4"), field));
}

/// Reads "2024-03-01", "2024-03-01 14:05:00.25" or the same with a T.
QDateTime ReadMoment(QString text) {
    text = text.trimmed();
    const QDate date = QDate::fromString(text.left(10), Qt::ISODate);
    if (text.size() == 10) return QDateTime(date, QTime(0, 0), Qt::UTC);
    const QChar between = text.size() > 10 ? text.at(10) : QChar();
    if (between != u' ' && between != u'T') return {};
    const QTime time = QTime::fromString(text.mid(11), Qt::ISODateWithMs);
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}

QDateTime MomentOf(const QVariant& value, const Field& field) {
    QDateTime moment;
    if (value.typeId() == QMetaType::QDateTime)
        moment = QDateTime(value.toDateTime().date(), value.toDateTime().time(), Qt::UTC);
    else if (value.typeId() == QMetaType::QDate)
        moment = QDateTime(value.toDate(), QTime(0, 0), Qt::UTC);
    else if (IsText(value))
        moment = ReadMoment(value.toString());
    if (!moment.isValid()) throw Refused(field, WrongType);
    return moment;
}

QVariant AsDate(const QVariant& value, const Field& field) {
    const QDateTime moment = MomentOf(value, field);
    if (moment.time() != QTime(0, 0)) throw Refused(field, WrongType);
    return moment.date();
}

QVariant AsTime(const QVariant& value, const Field& field) {
    const QTime time =
        IsText(value) ? QTime::fromString(value.toString().trimmed(), Qt::ISODateWithMs) : value.toTime();
    if (!time.isValid() || value.typeId() == QMetaType::QDateTime) throw Refused(field, WrongType);
    return time;
}

QVariant AsGuid(const QVariant& value, const Field& field) {
    const QUuid guid =
        value.typeId() == QMetaType::QUuid ? value.toUuid() : QUuid::fromString(value.toString());
    const bool nil = value.toString().contains(QStringLiteral("00000000-0000-0000-0000-000000000000"));
    if (guid.isNull() && !nil) throw Refused(field, WrongType);
    return guid.toString(QUuid::WithoutBraces);
}

QVariant AsBytes(const QVariant& value, const Field& field) {
    if (value.typeId() != QMetaType::QByteArray) throw Refused(field, WrongType);
    if (field.DefinedSize > 0 && value.toByteArray().size() > field.DefinedSize)
        throw Refused(field, TooLong);
    return value;
}

}  // namespace

QVariant Converted(const QVariant& value, const Field& field) {
    if (!value.isValid() || value.typeId() == QMetaType::Nullptr) return {};
    switch (field.Type) {
        case DataType::Empty:
        case DataType::Variant:
            return value;
        case DataType::SmallInt:
            return static_cast<int>(AsInteger<qint16>(value, field));
        case DataType::Integer:
            return AsInteger<int>(value, field);
        case DataType::TinyInt:
            return static_cast<int>(AsInteger<qint8>(value, field));
        case DataType::UnsignedTinyInt:
            return static_cast<int>(AsInteger<quint8>(value, field));
        case DataType::BigInt:
            return static_cast<qlonglong>(AsInteger<qint64>(value, field));
        case DataType::Single:
        case DataType::Double:
            return AsDouble(value, field);
        case DataType::Currency:
            return AsCurrency(value, field);
        case DataType::Decimal:
        case DataType::Numeric:
            return AsExact(value, field, field.Precision, field.NumericScale);
        case DataType::Boolean:
            return AsBoolean(value, field);
        case DataType::Date:
        case DataType::DBTimeStamp:
            return MomentOf(value, field);
        case DataType::DBDate:
            return AsDate(value, field);
        case DataType::DBTime:
            return AsTime(value, field);
        case DataType::Guid:
            return AsGuid(value, field);
        case DataType::Binary:
        case DataType::VarBinary:
        case DataType::LongVarBinary:
            return AsBytes(value, field);
        case DataType::Char:
        case DataType::WChar:
        case DataType::VarChar:
        case DataType::LongVarChar:
        case DataType::VarWChar:
        case DataType::LongVarWChar:
            break;
    }
    return AsText(value, field);
}

}  // namespace zephrin::ado
