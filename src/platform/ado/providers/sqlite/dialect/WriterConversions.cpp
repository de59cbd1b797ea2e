#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/dialect/Writer.h"
#include "platform/ado/providers/sqlite/values/DateText.h"
#include "platform/ado/providers/sqlite/values/TextValue.h"
#include "platform/ado/providers/sqlite/values/TypeSpec.h"

namespace zephrin::ado::providers::sqlite {

/// What a call has to know of its place: see TypeSpec. A view is read without the statement that made it.
QByteArray Writer::Spec(const ColumnType& type, const Expression& at, int leftScale, int rightScale) const {
    return QByteArray::number(Pack({type, leftScale, rightScale, isStoring ? -1 : at.At.From}));
}

void Writer::WriteExact(const Exact& value, const ColumnType& type) {
    if (IsWide(type))
        out << "x'" << ToWide(value).toHex() << "'";
    else
        out << ToDigits(value);
}

/// A number as typed. The engine's own reading of digits is exact as far as a double is.
void Writer::WriteNumeral(const Expression& number) {
    const Family family = FamilyOf(number.Type);
    if (family == Family::Decimal) return WriteExact(*ExactOfText(number.Name), number.Type);
    if (family == Family::Money) {
        const TextValue value = NumberOfText(number.Name, number.Type, false);
        if (!std::holds_alternative<Exact>(value))
            throw NumberTooLarge(speaks, NameOf(number.Type, speaks), number.At.From);
        const Exact money = std::get<Exact>(value);
        out << (FitsDigits(money, NarrowDigits) ? ToDigits(money) : "x'" + ToWide(money).toHex() + "'");
        return;
    }
    out << number.Name.toLatin1();
    const bool looksWhole = !number.Name.contains(u'.') && !number.Name.contains(u'e', Qt::CaseInsensitive);
    if (family == Family::Float && looksWhole) out << ".0";
}

/// A text that stands in the statement is read here, and refused where it stands.
bool Writer::WriteReadText(const Expression& value, const ColumnType& type) {
    if (value.Kind != ExpressionKind::Text) return false;
    const Family family = FamilyOf(type);
    if (family == Family::DateTime) {
        WriteDate(value.Name, value);
        return true;
    }
    if (family == Family::Date) {
        const std::optional<qint64> ticks = ReadDate(value.Name, IsFileDialect(speaks));
        if (!ticks) return false;
        out << "'" << WriteIsoDate(DayPart(*ticks) * TicksPerDay) << "'";
        return true;
    }
    if (!IsOneOf(family, Numbers)) return false;
    const TextValue number = NumberOfText(value.Name, type, IsFileDialect(speaks));
    if (const auto* const failure = std::get_if<Unreadable>(&number)) {
        if (*failure == Unreadable::TooLarge)
            throw NumberTooLarge(speaks, NameOf(type, speaks), value.At.From);
        throw NotANumber(speaks, value.Name, NameOf(type, speaks), value.At.From);
    }
    if (const auto* const whole = std::get_if<qint64>(&number)) out << QByteArray::number(*whole);
    if (const auto* const broken = std::get_if<double>(&number)) {
        const QByteArray digits = QByteArray::number(*broken, 'g', 17);
        const bool looksWhole = !digits.contains('.') && !digits.contains('e');
        out << digits << (looksWhole ? ".0" : "");
    }
    if (const auto* const exact = std::get_if<Exact>(&number)) WriteExact(*exact, type);
    return true;
}

void Writer::WriteConversion(const Expression& value, const ColumnType& type, const Expression* style) {
    if (value.Kind == ExpressionKind::Null) return Write(value);
    if (!style && WriteReadText(value, type)) return;
    // A truth is a whole number already.
    if (FamilyOf(value.Type) == Family::Truth && FamilyOf(type) == Family::Whole) return WriteOperand(value);
    out << "zx_convert(";
    WriteOperand(value);
    out << ", " << Spec(type, value) << ", " << Spec(value.Type, value);
    if (style) {
        out << ", ";
        Write(*style);
    }
    out << ")";
}

/// An exact number with the places of what it is compared with.
void Writer::WriteWide(const Expression& value, int scale) {
    if (value.Kind == ExpressionKind::Null) return Write(value);
    const Family family = FamilyOf(value.Type);
    const int places = family == Family::Money ? MoneyScale : value.Type.NumericScale;
    const bool isSuch = IsWide(value.Type) && !value.IsStored && places == scale;
    if (isSuch) return Write(value);
    out << "zx_wide(";
    WriteOperand(value);
    out << ", " << Spec({DataType::Numeric, 0, MostDigits, scale}, value, places) << ")";
}

}  // namespace zephrin::ado::providers::sqlite
