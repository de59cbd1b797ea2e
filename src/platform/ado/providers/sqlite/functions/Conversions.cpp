#include "platform/ado/providers/sqlite/functions/Functions.h"
#include "platform/ado/providers/sqlite/values/Failures.h"
#include "platform/ado/providers/sqlite/values/TextValue.h"

#include <cmath>

namespace zephrin::ado::providers::sqlite {

namespace {

/// What becomes what: a value, the type it becomes, the type it has, and perhaps a style.
struct Conversion {
    TypeSpec Target;
    TypeSpec Source;
    int Style = -1;

    bool IsFrom(DataType type) const { return Source.Type.Type == type; }
    bool IsFromExact() const { return IsFrom(DataType::Numeric) || IsFrom(DataType::Decimal); }
    int Places() const { return IsFrom(DataType::Currency) ? MoneyScale : Source.Type.NumericScale; }
};

bool IsExactType(DataType type) {
    return type == DataType::Numeric || type == DataType::Decimal || type == DataType::Currency;
}

void GiveNumber(Call& call, const TextValue& number, const TypeSpec& target) {
    if (const auto* const whole = std::get_if<qint64>(&number)) return call.ReturnWhole(*whole, target);
    if (const auto* const broken = std::get_if<double>(&number)) return call.ReturnFloat(*broken, target);
    if (const auto* const exact = std::get_if<Exact>(&number)) return call.ReturnExact(*exact, target);
    std::get<Unreadable>(number) == Unreadable::TooLarge ? call.FailOverflow(target)
                                                         : call.FailReading(0, target);
}

/// The days since the first of the calendar.
std::optional<double> DaysOfDate(Call& call) {
    const std::optional<qint64> ticks = call.Date(0);
    if (!ticks) return std::nullopt;
    return double(*ticks - DayZero(call.IsFile()) * TicksPerDay) / double(TicksPerDay);
}

/// A server cuts a broken number, and rounds money and dates; a file rounds to the even neighbour.
void ToInteger(Call& call, const Conversion& conversion) {
    const TypeSpec& target = conversion.Target;
    if (IsDateType(conversion.Source.Type.Type)) {
        const std::optional<double> days = DaysOfDate(call);
        if (days)
            call.ReturnWhole(Exact::Integer(call.IsFile() ? std::nearbyint(*days) : std::floor(*days + 0.5)),
                             target);
        return;
    }
    if (IsExactType(conversion.Source.Type.Type)) {
        const std::optional<Exact> value = call.ExactOf(0, conversion.Places(), target);
        const bool rounds = conversion.IsFrom(DataType::Currency);
        const std::optional<Exact> whole = value ? Rescaled(*value, 0,
                                                            call.IsFile() ? Rounding::HalfEven
                                                            : rounds      ? Rounding::HalfAway
                                                                          : Rounding::Cut)
                                                 : value;
        if (whole) call.ReturnWhole(whole->Units, target);
        return;
    }
    if (call.Storage(0) == SQLITE_INTEGER) return call.ReturnWhole(sqlite3_value_int64(call.Raw(0)), target);
    const std::optional<double> number = call.FloatOf(0, target);
    if (!number) return;
    if (!(std::fabs(*number) < 1e37)) return call.FailOverflow(target);
    call.ReturnWhole(Exact::Integer(call.IsFile() ? std::nearbyint(*number) : std::trunc(*number)), target);
}

void ToBoolean(Call& call, const Conversion& conversion) {
    std::optional<double> number;
    if (call.Storage(0) == SQLITE_TEXT && !IsDateType(conversion.Source.Type.Type)) {
        const QString word = call.Text(0).trimmed().toLower();
        if (word == u"true" || word == u"false") {
            number = word == u"true";
        } else if (word.isEmpty() && !call.IsFile()) {
            number = 0;
        } else {
            number = NumberIn(word);
            if (!number) return call.FailReading(0, conversion.Target);
        }
    } else {
        number =
            IsDateType(conversion.Source.Type.Type) ? DaysOfDate(call) : call.FloatOf(0, conversion.Target);
    }
    if (number) call.Return(qint64(*number == 0 ? 0 : call.IsFile() ? -1 : 1));
}

void ToExact(Call& call, const Conversion& conversion) {
    const TypeSpec& target = conversion.Target;
    const int scale = target.Type.Type == DataType::Currency ? MoneyScale : target.Type.NumericScale;
    if (IsDateType(conversion.Source.Type.Type)) {
        const std::optional<double> days = DaysOfDate(call);
        if (days) call.ReturnExact(ExactOfDouble(*days, scale), target);
        return;
    }
    const bool broken = !IsExactType(conversion.Source.Type.Type);
    const std::optional<Exact> value = call.ExactOf(0, broken ? scale : conversion.Places(), target);
    if (value) call.ReturnExact(Rescaled(*value, scale), target);
}

void ToFloat(Call& call, const Conversion& conversion) {
    const bool date = IsDateType(conversion.Source.Type.Type);
    const std::optional<double> number = date ? DaysOfDate(call) : call.FloatOf(0, conversion.Target);
    if (number) call.ReturnFloat(*number, conversion.Target);
}

void ToNumber(Call& call, const Conversion& conversion) {
    const DataType type = conversion.Target.Type.Type;
    const bool text = call.Storage(0) == SQLITE_TEXT && IsTextType(conversion.Source.Type.Type);
    if (text)
        return GiveNumber(call, NumberOfText(call.Text(0), conversion.Target.Type, call.IsFile()),
                          conversion.Target);
    if (IsIntegerType(type)) return ToInteger(call, conversion);
    IsExactType(type) ? ToExact(call, conversion) : ToFloat(call, conversion);
}

void ToDate(Call& call, const Conversion& conversion) {
    const DataType type = conversion.Target.Type.Type;
    std::optional<qint64> ticks;
    if (call.Storage(0) == SQLITE_TEXT && conversion.Style >= 0)
        ticks = ReadDate(call.Text(0), call.IsFile(), OrderOfStyle(conversion.Style));
    if (!ticks && IsExactType(conversion.Source.Type.Type)) {
        const std::optional<double> days = call.FloatOf(0, conversion.Target);
        if (!days) return;
        if (!(std::fabs(*days) < 3'000'000)) return call.FailOverflow(conversion.Target);
        ticks = DayZero(call.IsFile()) * TicksPerDay +
                std::llround(*days * 86'400'000.0) * (TicksPerSecond / 1000);
    }
    if (!ticks && call.Storage(0) != SQLITE_TEXT) {
        const std::optional<double> days = call.FloatOf(0, conversion.Target);
        if (!days) return;
        if (!(std::fabs(*days) < 3'000'000)) return call.FailOverflow(conversion.Target);
    }
    const bool empty =
        !ticks && !call.IsFile() && call.Storage(0) == SQLITE_TEXT && call.Text(0).trimmed().isEmpty();
    if (empty) ticks = DayZero(false) * TicksPerDay;
    if (!ticks) ticks = call.Date(0);
    if (!ticks) return;
    if (type == DataType::DBDate) return call.ReturnDate(DayPart(*ticks) * TicksPerDay);
    if (type != DataType::DBTime) {
        if (!IsInCalendar(*ticks, call.IsFile())) return call.FailOverflow(conversion.Target);
        return call.ReturnDate(*ticks);
    }
    const QByteArray stored = WriteIsoDate(TimePart(*ticks));
    call.Return(stored.size() > 10 ? QString::fromLatin1(stored.mid(11)) : QStringLiteral("00:00:00"));
}

/// A broken number in six digits, as a server writes it, with an exponent of three.
QString ServerFloatText(double value) {
    QString text = QString::number(value, 'g', 6);
    const qsizetype sign = text.indexOf(u'e') + 1;
    while (sign > 0 && text.size() - sign - 1 < 3) text.insert(sign + 1, u'0');
    return text;
}

/// How a value is written: dates by the style, money with its cents (style 1 groups thousands, 2 shows all
/// digits), exact numbers with all of their places.
std::optional<QString> Written(Call& call, const Conversion& conversion) {
    if (IsDateType(conversion.Source.Type.Type)) {
        // What a column holds that is no date is a text already.
        if (call.Storage(0) == SQLITE_TEXT && !ReadDate(call.Text(0), call.IsFile())) return call.Text(0);
        const std::optional<qint64> ticks = call.Date(0);
        if (!ticks) return std::nullopt;
        if (call.IsFile()) return GeneralDate(*ticks);
        const int usual = conversion.IsFrom(DataType::DBDate) ? 23 : 0;
        const std::optional<QString> text =
            DateInStyle(*ticks, conversion.Style < 0 ? usual : conversion.Style);
        if (!text)
            call.FailAt(
                conversion.Target.Position, FailureNumber::Conversion,
                QStringLiteral(
                    "%1 is not a valid style number when converting from datetime to a character string.")
                    .arg(conversion.Style));
        return text;
    }
    if (IsExactType(conversion.Source.Type.Type) && !call.IsFile()) {
        const std::optional<Exact> value = call.ExactOf(0, conversion.Places(), conversion.Target);
        const bool money = conversion.IsFrom(DataType::Currency);
        const int places = !money ? conversion.Places() : conversion.Style == 2 ? 4 : 2;
        const std::optional<Exact> shown = value ? Rescaled(*value, places) : value;
        if (!shown) return std::nullopt;
        QString text = QString::fromLatin1(ToDigits(*shown));
        if (money && conversion.Style == 1)
            for (qsizetype at = text.indexOf(u'.') - 3; at > (text.startsWith(u'-') ? 1 : 0); at -= 3)
                text.insert(at, u',');
        return text;
    }
    if (call.Storage(0) == SQLITE_BLOB) {
        const std::optional<Exact> value = call.ExactOf(0, 0, conversion.Target);
        if (!value) return std::nullopt;
        QString digits = QString::fromLatin1(ToDigits(*value));
        while (value->Scale > 0 && digits.endsWith(u'0')) digits.chop(1);
        if (digits.endsWith(u'.')) digits.chop(1);
        return digits;
    }
    if (call.Storage(0) == SQLITE_FLOAT && !call.IsFile())
        return ServerFloatText(sqlite3_value_double(call.Raw(0)));
    return call.Text(0);
}

/// A text is cut to the length of its type; a number that doesn't fit is none any more.
void ToText(Call& call, const Conversion& conversion) {
    std::optional<QString> text = Written(call, conversion);
    if (!text) return;
    const ColumnType& target = conversion.Target.Type;
    const int size = target.DefinedSize > 0 ? target.DefinedSize : LongestText;
    const bool fixed = target.Type == DataType::Char || target.Type == DataType::WChar;
    const bool unlimited = target.DefinedSize <= 0;
    if (!unlimited && text->size() > size && !call.IsFile()) {
        const DataType from = conversion.Source.Type.Type;
        const bool narrow = target.Type == DataType::Char || target.Type == DataType::VarChar;
        if (IsIntegerType(from) && narrow)
            *text = QStringLiteral("*");
        else if (IsNumberType(from))
            return call.FailAt(
                conversion.Target.Position, FailureNumber::Overflow,
                QStringLiteral("Arithmetic overflow error converting a number to a text of %1 characters.")
                    .arg(size));
    }
    if (!unlimited) *text = text->left(size);
    if (fixed && !unlimited) *text = text->leftJustified(size);
    call.Return(*text);
}

void Convert(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    Conversion conversion{.Target = {}, .Source = call.SpecAt(2)};
    conversion.Target = call.SpecAt(1);
    if (call.Count() > 3 && !call.IsNull(3)) {
        const std::optional<qint64> style = call.Whole(3);
        if (!style) return;
        conversion.Style = int(*style);
    }
    const DataType type = conversion.Target.Type.Type;
    if (type == DataType::Boolean) return ToBoolean(call, conversion);
    if (IsNumberType(type)) return ToNumber(call, conversion);
    if (IsDateType(type) || type == DataType::DBTime) return ToDate(call, conversion);
    if (IsTextType(type)) return ToText(call, conversion);
    call.ReturnArgument(0);
}

void CStr(Call& call) {
    call.IsNull(0) ? call.ReturnNull() : call.Return(call.Text(0));
}

/// The number that a text begins with, 0 for none.
void Val(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    // No number has more digits than that, and a long text is tried from its end.
    const QString text = call.Text(0).left(1000).simplified().remove(u' ').left(400);
    for (qsizetype length = text.size(); length > 0; --length)
        if (const std::optional<double> number = NumberIn(text.first(length))) return call.Return(*number);
    call.Return(0.0);
}

void CLng(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    if (const std::optional<qint64> whole = call.Whole(0)) call.Return(*whole);
}

void CDbl(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    if (const std::optional<double> number = call.Number(0)) call.Return(*number);
}

}  // namespace

QList<FunctionEntry> ConversionFunctions() {
    return {
        {"zx_convert", 3, 4, Convert}, {"zx_cstr", 1, 1, CStr}, {"zx_val", 1, 1, Val},
        {"zx_clng", 1, 1, CLng},       {"zx_cdbl", 1, 1, CDbl},
    };
}

}  // namespace zephrin::ado::providers::sqlite
