#include "platform/ado/PersistText.h"

#include "platform/ado/CellValue.h"
#include "platform/ado/Conversion.h"

#include <zephrin/ado/Error.h>

#include <QDateTime>

#include <limits>

namespace zephrin::ado {

namespace {

constexpr qsizetype EscapeLength = 7;

bool IsHexDigit(QChar c) {
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F') || (c >= u'a' && c <= u'f');
}

/// Whether "_xHHHH_" stands at `at`.
bool IsEscape(const QString& text, qsizetype at) {
    if (text.size() - at < EscapeLength || text.at(at) != u'_' || text.at(at + 1) != u'x' ||
        text.at(at + 6) != u'_')
        return false;
    return std::all_of(text.begin() + at + 2, text.begin() + at + 6, IsHexDigit);
}

bool IsWholePair(const QString& text, qsizetype at) {
    return text.at(at).isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate();
}

bool HoldsInXml(QChar c) {
    if (c.isSurrogate() || c.unicode() >= 0xFFFE) return false;
    return c.unicode() >= 0x20 || c == u'\t' || c == u'\n' || c == u'\r';
}

QString EscapeOf(QChar c) {
    return QStringLiteral("_x%1_").arg(c.unicode(), 4, 16, QLatin1Char('0'));
}

Error Refused(const Field& field) {
    return Error(ErrorNumber::ValueRefused,
                 QStringLiteral("The field '%1' has a value that cannot be saved.").arg(field.Name));
}

QString DateOf(const QDate& date, const Field& field) {
    if (date.year() < 1 || date.year() > 9999) throw Refused(field);
    return date.toString(Qt::ISODate);
}

QString TimeOf(const QTime& time) {
    return time.toString(time.msec() == 0 ? Qt::ISODate : Qt::ISODateWithMs);
}

QString HexOf(const QByteArray& bytes) {
    return QString::fromLatin1(bytes.toHex());
}

QByteArray BytesOf(const QString& hex, const Field& field) {
    const bool whole = hex.size() % 2 == 0 && std::all_of(hex.begin(), hex.end(), IsHexDigit);
    if (!whole) throw Refused(field);
    return QByteArray::fromHex(hex.toLatin1());
}

/// A field as which one value of a column of any kind is written.
Field FieldOfKind(const QVariant& value, const Field& field) {
    Field kind{field.Name, DataType::VarWChar};
    switch (value.typeId()) {
        case QMetaType::Bool:
            kind.Type = DataType::Boolean;
            break;
        case QMetaType::Int:
        case QMetaType::Short:
        case QMetaType::UShort:
            kind.Type = DataType::Integer;
            break;
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::LongLong:
            kind.Type = DataType::BigInt;
            break;
        case QMetaType::ULong:
        case QMetaType::ULongLong:
            kind.Type = DataType::Decimal;
            break;
        case QMetaType::Float:
        case QMetaType::Double:
            kind.Type = DataType::Double;
            break;
        case QMetaType::QDate:
            kind.Type = DataType::DBDate;
            break;
        case QMetaType::QTime:
            kind.Type = DataType::DBTime;
            break;
        case QMetaType::QDateTime:
            kind.Type = DataType::DBTimeStamp;
            break;
        case QMetaType::QByteArray:
            kind.Type = DataType::VarBinary;
            break;
        default:
            break;
    }
    return kind;
}

bool HoldsAnyKind(const Field& field) {
    return field.Type == DataType::Variant || field.Type == DataType::Empty;
}

/// In a column of any kind the type code stands before the value: "3:12".
QString KindAndValue(const QVariant& value, const Field& field) {
    const Field kind = FieldOfKind(value, field);
    return QString::number(static_cast<int>(kind.Type)) + QLatin1Char(':') +
           PersistedValue(Converted(value, kind), kind);
}

QVariant ValueOfKind(const QString& text, const Field& field) {
    const qsizetype colon = text.indexOf(QLatin1Char(':'));
    bool isNumber = false;
    const int type = text.left(colon).toInt(&isNumber);
    if (colon < 0 || !isNumber) throw Refused(field);
    for (const DataType known :
         {DataType::Boolean, DataType::Integer, DataType::BigInt, DataType::Decimal, DataType::Double,
          DataType::DBDate, DataType::DBTime, DataType::DBTimeStamp, DataType::VarBinary, DataType::VarWChar})
        if (static_cast<int>(known) == type)
            return ValueOfPersisted(text.mid(colon + 1), Field{field.Name, known});
    throw Refused(field);
}

}  // namespace

QString EscapedForXml(const QString& text) {
    QString escaped;
    escaped.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar c = text.at(at);
        if (IsWholePair(text, at)) {
            escaped += c;
            escaped += text.at(++at);
        } else if (!HoldsInXml(c) || IsEscape(text, at)) {
            escaped += EscapeOf(c);
        } else {
            escaped += c;
        }
    }
    return escaped;
}

QString UnescapedFromXml(const QString& text) {
    if (!text.contains(u"_x")) return text;
    QString plain;
    plain.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!IsEscape(text, at)) {
            plain += text.at(at);
            continue;
        }
        plain += QChar(QStringView(text).mid(at + 2, 4).toUShort(nullptr, 16));
        at += EscapeLength - 1;
    }
    return plain;
}

QString PersistedValue(const QVariant& value, const Field& field) {
    if (HoldsAnyKind(field)) return KindAndValue(value, field);
    switch (value.typeId()) {
        case QMetaType::QString:
            return EscapedForXml(value.toString());
        case QMetaType::QByteArray:
            return HexOf(value.toByteArray());
        case QMetaType::QDate:
            return DateOf(value.toDate(), field);
        case QMetaType::QTime:
            return TimeOf(value.toTime());
        case QMetaType::QDateTime: {
            const QDateTime moment = value.toDateTime();
            return DateOf(moment.date(), field) + QLatin1Char('T') + TimeOf(moment.time());
        }
        default:
            break;
    }
    return ValueText(value, DataType::Variant, std::numeric_limits<qsizetype>::max());
}

QVariant ValueOfPersisted(const QString& text, const Field& field) {
    switch (field.Type) {
        case DataType::Variant:
        case DataType::Empty:
            return ValueOfKind(text, field);
        case DataType::Binary:
        case DataType::VarBinary:
        case DataType::LongVarBinary:
            return Converted(BytesOf(text, field), field);
        default:
            return Converted(UnescapedFromXml(text), field);
    }
}

}  // namespace zephrin::ado
