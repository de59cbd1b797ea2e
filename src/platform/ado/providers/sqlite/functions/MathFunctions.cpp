#include "platform/ado/providers/sqlite/functions/Functions.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>

namespace zephrin::ado::providers::sqlite {

namespace {

/// A function of one number that is defined for every number.
template <double (*Function)(double)>
void OfNumber(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    if (const std::optional<double> number = call.Number(0)) call.Return(Function(*number));
}

/// Keeps a whole number whole.
template <double (*Function)(double)>
void Rounded(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    if (call.Storage(0) == SQLITE_INTEGER) return call.ReturnArgument(0);
    if (const std::optional<double> number = call.Number(0)) call.Return(Function(*number));
}

double Cosine(double value) {
    return std::cos(value);
}
double Sine(double value) {
    return std::sin(value);
}
double Tangent(double value) {
    return std::tan(value);
}
double ArcTangent(double value) {
    return std::atan(value);
}
double Exponential(double value) {
    return std::exp(value);
}
double Down(double value) {
    return std::floor(value);
}
double Up(double value) {
    return std::ceil(value);
}
double TowardsZero(double value) {
    return std::trunc(value);
}

void Abs(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    if (call.Storage(0) == SQLITE_INTEGER) {
        const std::optional<qint64> whole = call.Whole(0);
        if (*whole == std::numeric_limits<qint64>::min()) return call.Return(std::fabs(double(*whole)));
        return call.Return(*whole < 0 ? -*whole : *whole);
    }
    if (const std::optional<double> number = call.Number(0)) call.Return(std::fabs(*number));
}

void Logarithm(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<double> number = call.Number(0);
    const std::optional<double> base = call.Count() > 1 ? call.Number(1) : std::optional<double>(M_E);
    if (!number || !base) return;
    if (*number <= 0 || *base <= 0 || *base == 1)
        return call.Fail(
            QStringLiteral("An invalid floating point operation occurred: log of %1.").arg(*number),
            QStringLiteral("Invalid procedure call: Log of %1.").arg(*number));
    call.Return(call.Count() > 1 ? std::log(*number) / std::log(*base) : std::log(*number));
}

void Logarithm10(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const std::optional<double> number = call.Number(0);
    if (!number) return;
    if (*number <= 0) return call.FailArgument(QStringLiteral("log10"));
    call.Return(std::log10(*number));
}

void SquareRoot(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const std::optional<double> number = call.Number(0);
    if (!number) return;
    if (*number < 0)
        return call.Fail(
            QStringLiteral("An invalid floating point operation occurred: square root of %1.").arg(*number),
            QStringLiteral("Invalid procedure call: Sqr of %1.").arg(*number));
    call.Return(std::sqrt(*number));
}

void Sign(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const std::optional<double> number = call.Number(0);
    if (!number) return;
    const int sign = *number > 0 ? 1 : *number < 0 ? -1 : 0;
    // On a server the sign is of the type of the number.
    call.IsFile() || call.Storage(0) == SQLITE_INTEGER ? call.Return(qint64(sign))
                                                       : call.Return(double(sign));
}

/// Halves go away from zero on a server, to the even neighbour in a file.
void Round(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<qint64> cut = call.Count() > 2 ? call.Whole(2) : std::optional<qint64>(0);
    if (!cut) return;
    const std::optional<qint64> places = call.Count() > 1 ? call.Whole(1) : std::optional<qint64>(0);
    if (!places) return;
    if (call.Storage(0) == SQLITE_INTEGER && *places >= 0) return call.ReturnArgument(0);
    const std::optional<double> number = call.Number(0);
    if (!number) return;
    if (*places < 0 && call.IsFile()) return call.FailArgument(QStringLiteral("Round"));
    if (*places > 15) return call.Return(*number);
    // Farther to the left than any number reaches.
    const double unit = std::pow(10.0, std::min(std::abs(double(*places)), 308.0));
    // 2.675 is a little less in binary; fifteen digits say what was meant.
    const double scaled = QString::number(*places >= 0 ? *number * unit : *number / unit, 'g', 15).toDouble();
    const double rounded = *cut != 0       ? std::trunc(scaled)
                           : call.IsFile() ? std::nearbyint(scaled)
                                           : std::round(scaled);
    call.Return(*places >= 0 ? rounded / unit : rounded * unit);
}

void Power(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<double> base = call.Number(0);
    const std::optional<double> exponent = base ? call.Number(1) : base;
    if (!base || !exponent) return;
    if (*base == 0 && *exponent < 0) return call.FailDivision();
    const double result = std::pow(*base, *exponent);
    if (std::isnan(result)) return call.FailArgument(QStringLiteral("power"));
    call.Return(result);
}

/// The exact functions take what they are called with, and then the type of the result; the places of the
/// first argument stand in it.
template <Rounding How>
void RoundedExact(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const TypeSpec spec = call.SpecAt(1);
    const std::optional<Exact> value = call.ExactOf(0, spec.LeftScale, spec);
    if (value) call.ReturnExact(Rescaled(*value, 0, How), spec);
}

void AbsExact(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const TypeSpec spec = call.SpecAt(1);
    const std::optional<Exact> value = call.ExactOf(0, spec.LeftScale, spec);
    if (value) call.ReturnExact(value->Units < 0 ? Exact{-value->Units, value->Scale} : *value, spec);
}

void SignExact(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const TypeSpec spec = call.SpecAt(1);
    const std::optional<Exact> value = call.ExactOf(0, spec.LeftScale, spec);
    if (value) call.ReturnExact(Exact{value->Units > 0 ? 1 : value->Units < 0 ? -1 : 0, 0}, spec);
}

void RoundExact(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const int last = call.Count() - 1;
    const TypeSpec spec = call.SpecAt(last);
    const std::optional<qint64> places = last > 1 ? call.WholeOf(1, spec) : std::optional<qint64>(0);
    const std::optional<qint64> cut = last > 2 ? call.WholeOf(2, spec) : std::optional<qint64>(0);
    const std::optional<Exact> value = places && cut ? call.ExactOf(0, spec.LeftScale, spec) : std::nullopt;
    if (!value) return;
    if (*places < 0 && call.IsFile()) return call.FailArgument(QStringLiteral("Round"));
    if (*places >= value->Scale) return call.ReturnExact(value, spec);
    const Rounding how = *cut != 0 ? Rounding::Cut : call.IsFile() ? Rounding::HalfEven : Rounding::HalfAway;
    if (*places >= 0) return call.ReturnExact(Rescaled(*value, int(*places), how), spec);
    // Places in front of the point: what is left of so many digits is shifted back.
    const int digits =
        int(std::min<qint64>(-std::max<qint64>(*places, -MostDigits), MostDigits - value->Scale));
    const std::optional<Exact> shifted = Rescaled({value->Units, value->Scale + digits}, 0, how);
    const std::optional<Exact> back = shifted ? Rescaled(*shifted, digits) : shifted;
    call.ReturnExact(back ? std::optional<Exact>({back->Units, 0}) : back, spec);
}

/// A new number for every row, whatever the argument.
void Random(Call& call) {
    call.Return(QRandomGenerator::global()->generateDouble());
}

}  // namespace

QList<FunctionEntry> MathFunctions() {
    return {
        {"zx_abs", 1, 1, Abs},
        {"zx_cos", 1, 1, OfNumber<Cosine>},
        {"zx_sin", 1, 1, OfNumber<Sine>},
        {"zx_tan", 1, 1, OfNumber<Tangent>},
        {"zx_atn", 1, 1, OfNumber<ArcTangent>},
        {"zx_exp", 1, 1, OfNumber<Exponential>},
        {"zx_floor", 1, 1, Rounded<Down>},
        {"zx_ceiling", 1, 1, Rounded<Up>},
        {"zx_fix", 1, 1, Rounded<TowardsZero>},
        {"zx_abs_exact", 2, 2, AbsExact},
        {"zx_sgn_exact", 2, 2, SignExact},
        {"zx_floor_exact", 2, 2, RoundedExact<Rounding::Down>},
        {"zx_ceiling_exact", 2, 2, RoundedExact<Rounding::Up>},
        {"zx_fix_exact", 2, 2, RoundedExact<Rounding::Cut>},
        {"zx_round_exact", 2, 4, RoundExact},
        {"zx_log", 1, 2, Logarithm},
        {"zx_log10", 1, 1, Logarithm10},
        {"zx_sqr", 1, 1, SquareRoot},
        {"zx_sgn", 1, 1, Sign},
        {"zx_round", 1, 3, Round},
        {"zx_power", 2, 2, Power},
        {"zx_rnd", 0, 1, Random, false},
    };
}

}  // namespace zephrin::ado::providers::sqlite
