#include "platform/ado/providers/sqlite/functions/Functions.h"
#include "platform/ado/providers/sqlite/values/TypeMap.h"

#include <QLocale>

#include <cmath>

namespace zephrin::ado::providers::sqlite {

namespace {

/// What CAST and CONVERT are asked for: a value, the target as typed, the type that the value is known to
/// have, and perhaps a style.
struct Conversion {
    ColumnType Target;
    DataType Source = DataType::Empty;
    int Style = -1;
};

void FailConversion(Call& call, const QString& type) {
    call.Fail(QStringLiteral("Conversion failed when converting the value '%1' to data type %2.")
                  .arg(call.Text(0), type),
              QStringLiteral("Type conversion failure: '%1' is no %2.").arg(call.Text(0), type));
}

/// Whole numbers lose a fraction, as they do on the server; a text must be one already.
void ToInteger(Call& call, DataType type) {
    const QString name = type == DataType::BigInt ? QStringLiteral("bigint") : QStringLiteral("int");
    double value = 0;
    if (call.Storage(0) == SQLITE_TEXT) {
        const std::optional<double> number = NumberIn(call.Text(0));
        if (!number && !call.Text(0).trimmed().isEmpty()) return FailConversion(call, name);
        value = number.value_or(0);
        if (value != std::trunc(value)) return FailConversion(call, name);
    } else {
        const std::optional<double> number = call.Number(0);
        if (!number) return;
        value = std::trunc(*number);
    }
    double least = -2147483648.0;
    double most = 2147483647.0;
    if (type == DataType::SmallInt) least = -32768, most = 32767;
    if (type == DataType::UnsignedTinyInt) least = 0, most = 255;
    if (type == DataType::BigInt) least = -9.2e18, most = 9.2e18;
    if (value < least || value > most)
        return call.Fail(
            QStringLiteral("Arithmetic overflow error converting expression to data type %1.").arg(name),
            QStringLiteral("Overflow."));
    if (call.Storage(0) == SQLITE_INTEGER) return call.ReturnArgument(0);
    call.Return(qint64(value));
}

void ToBoolean(Call& call) {
    const QString word = call.Storage(0) == SQLITE_TEXT ? call.Text(0).trimmed().toLower() : QString();
    if (word == u"true" || word == u"false") return call.Return(qint64(word == u"true"));
    if (const std::optional<double> number = call.Number(0)) call.Return(qint64(*number != 0));
}

void ToNumber(Call& call, const ColumnType& target) {
    const std::optional<double> number = call.Number(0);
    if (!number) return;
    const bool exact = target.Type == DataType::Numeric || target.Type == DataType::Decimal;
    const int places = target.Type == DataType::Currency ? 4 : target.NumericScale;
    if (!exact && target.Type != DataType::Currency) return call.Return(*number);
    if (exact && std::fabs(*number) >= std::pow(10.0, target.Precision - places))
        return call.Fail(
            QStringLiteral("Arithmetic overflow error converting expression to data type numeric."),
            QStringLiteral("Overflow."));
    const double unit = std::pow(10.0, places);
    call.Return(std::round(QString::number(*number * unit, 'g', 15).toDouble()) / unit);
}

void ToDate(Call& call, const Conversion& conversion) {
    std::optional<qint64> ticks;
    if (call.Storage(0) == SQLITE_TEXT && conversion.Style >= 0)
        ticks = ReadDate(call.Text(0), call.IsFile(), OrderOfStyle(conversion.Style));
    if (!ticks) ticks = call.Date(0);
    if (!ticks) return;
    if (conversion.Target.Type == DataType::DBDate) return call.ReturnDate(DayPart(*ticks) * TicksPerDay);
    if (conversion.Target.Type != DataType::DBTime) return call.ReturnDate(*ticks);
    const QByteArray stored = WriteIsoDate(TimePart(*ticks));
    call.Return(stored.size() > 10 ? QString::fromLatin1(stored.mid(11)) : QStringLiteral("00:00:00"));
}

/// How a value is written: dates by the style, money with its cents (style 1 groups thousands, 2 shows all
/// digits).
std::optional<QString> Written(Call& call, const Conversion& conversion) {
    if (IsDateType(conversion.Source)) {
        const std::optional<qint64> ticks = call.Date(0);
        if (!ticks) return std::nullopt;
        const int usual = conversion.Source == DataType::DBDate ? 23 : 0;
        const std::optional<QString> text =
            DateInStyle(*ticks, conversion.Style < 0 ? usual : conversion.Style);
        if (!text)
            call.Fail(
                QStringLiteral(
                    "%1 is not a valid style number when converting from datetime to a character string.")
                    .arg(conversion.Style),
                QStringLiteral("Invalid procedure call: the style is not known."));
        return text;
    }
    if (conversion.Source == DataType::Currency) {
        const std::optional<double> number = call.Number(0);
        if (!number) return std::nullopt;
        const QString plain = QString::number(*number, 'f', conversion.Style == 2 ? 4 : 2);
        return conversion.Style == 1
                   ? QLocale(QLocale::English, QLocale::UnitedStates).toString(*number, 'f', 2)
                   : plain;
    }
    return call.Text(0);
}

void ToText(Call& call, const Conversion& conversion) {
    std::optional<QString> text = Written(call, conversion);
    if (!text) return;
    const int size = conversion.Target.DefinedSize;
    const bool fixed = conversion.Target.Type == DataType::Char || conversion.Target.Type == DataType::WChar;
    // Without a length, a converted text has thirty characters.
    const bool unlimited = size > 8000;
    if (!unlimited || fixed) *text = text->left(unlimited ? 30 : size);
    if (fixed) *text = text->leftJustified(unlimited ? 30 : size);
    call.Return(*text);
}

void Cast(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    Conversion conversion;
    conversion.Target = TypeOfDeclaration(call.Text(1), call.Speaks());
    const std::optional<qint64> source = call.Whole(2);
    if (!source) return;
    conversion.Source = DataType(int(*source));
    if (call.Count() > 3 && !call.IsNull(3)) {
        const std::optional<qint64> style = call.Whole(3);
        if (!style) return;
        conversion.Style = int(*style);
    }
    const DataType type = conversion.Target.Type;
    if (type == DataType::Boolean) return ToBoolean(call);
    if (IsIntegerType(type)) return ToInteger(call, type);
    if (IsNumberType(type)) return ToNumber(call, conversion.Target);
    if (IsDateType(type) || type == DataType::DBTime) return ToDate(call, conversion);
    if (IsTextType(type)) return ToText(call, conversion);
    if (type != DataType::Empty) return call.ReturnArgument(0);
    call.Fail(QStringLiteral("Type %1 is not a defined system type.").arg(call.Text(1)),
              QStringLiteral("The type %1 is not known.").arg(call.Text(1)));
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

void MoneyText(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    if (const std::optional<double> number = call.Number(0)) call.Return(QString::number(*number, 'f', 2));
}

}  // namespace

QList<FunctionEntry> ConversionFunctions() {
    return {
        {"zx_cast", 3, 4, Cast}, {"zx_cstr", 1, 1, CStr}, {"zx_val", 1, 1, Val},
        {"zx_clng", 1, 1, CLng}, {"zx_cdbl", 1, 1, CDbl}, {"zx_moneytext", 1, 1, MoneyText},
    };
}

}  // namespace zephrin::ado::providers::sqlite
