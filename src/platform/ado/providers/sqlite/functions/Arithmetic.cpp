#include "platform/ado/providers/sqlite/functions/Functions.h"
#include "platform/ado/providers/sqlite/values/TextValue.h"

#include <cmath>

/// Operators on numbers. Each call says which type its result has; that decides how its operands are read,
/// how many places are kept, and what is too large.
namespace zephrin::ado::providers::sqlite {

namespace {

enum class Operator { Add, Subtract, Multiply, Divide, Remainder };
using Integer = Exact::Integer;

template <Operator What>
void ReckonWhole(Call& call, const TypeSpec& spec) {
    const std::optional<qint64> left = call.WholeOf(0, spec);
    const std::optional<qint64> right = left ? call.WholeOf(1, spec) : left;
    if (!left || !right) return;
    // 128 bits hold whatever two of 64 make.
    const Integer a = *left, b = *right;
    if constexpr (What == Operator::Add) return call.ReturnWhole(a + b, spec);
    if constexpr (What == Operator::Subtract) return call.ReturnWhole(a - b, spec);
    if constexpr (What == Operator::Multiply) return call.ReturnWhole(a * b, spec);
    if (b == 0) return call.FailDivision(spec);
    call.ReturnWhole(What == Operator::Divide ? a / b : a % b, spec);
}

template <Operator What>
void ReckonFloat(Call& call, const TypeSpec& spec) {
    const std::optional<double> left = call.FloatOf(0, spec);
    const std::optional<double> right = left ? call.FloatOf(1, spec) : left;
    if (!left || !right) return;
    if constexpr (What == Operator::Add) return call.ReturnFloat(*left + *right, spec);
    if constexpr (What == Operator::Subtract) return call.ReturnFloat(*left - *right, spec);
    if constexpr (What == Operator::Multiply) return call.ReturnFloat(*left * *right, spec);
    if (*right == 0) return call.FailDivision(spec);
    call.ReturnFloat(What == Operator::Divide ? *left / *right : std::fmod(*left, *right), spec);
}

template <Operator What>
void ReckonExact(Call& call, const TypeSpec& spec) {
    const std::optional<Exact> left = call.ExactOf(0, spec.LeftScale, spec);
    const std::optional<Exact> right = left ? call.ExactOf(1, spec.RightScale, spec) : left;
    if (!left || !right) return;
    // Money is cut to its places at each step, an exact number rounded.
    const bool money = spec.Type.Type == DataType::Currency;
    const int scale = money ? MoneyScale : spec.Type.NumericScale;
    if constexpr (What == Operator::Add) return call.ReturnExact(Sum(*left, *right, scale), spec);
    if constexpr (What == Operator::Subtract)
        return call.ReturnExact(Sum(*left, {-right->Units, right->Scale}, scale), spec);
    if constexpr (What == Operator::Multiply)
        return call.ReturnExact(Product(*left, *right, scale, money ? Rounding::Cut : Rounding::HalfAway),
                                spec);
    if (right->Units == 0) return call.FailDivision(spec);
    call.ReturnExact(
        What == Operator::Divide ? Quotient(*left, *right, scale) : Remainder(*left, *right, scale), spec);
}

template <Operator What>
void Reckon(Call& call) {
    if (call.IsNull(0) || call.IsNull(1)) return call.ReturnNull();
    const TypeSpec spec = call.SpecAt(2);
    if (IsIntegerType(spec.Type.Type)) {
        // A file's MOD rounds its operands first.
        if (What != Operator::Remainder || !call.IsFile()) return ReckonWhole<What>(call, spec);
        const std::optional<qint64> left = call.Whole(0);
        const std::optional<qint64> right = left ? call.Whole(1) : left;
        if (!left || !right) return;
        return *right == 0 ? call.FailDivision(spec) : call.ReturnWhole(Integer(*left) % *right, spec);
    }
    const bool exact = spec.Type.Type == DataType::Currency || spec.Type.Type == DataType::Numeric ||
                       spec.Type.Type == DataType::Decimal;
    exact ? ReckonExact<What>(call, spec) : ReckonFloat<What>(call, spec);
}

/// Division of a file in whole numbers, towards zero, of operands that are rounded first.
void DivideWhole(Call& call) {
    if (call.IsNull(0) || call.IsNull(1)) return call.ReturnNull();
    const TypeSpec spec = call.SpecAt(2);
    const std::optional<qint64> left = call.Whole(0);
    const std::optional<qint64> right = left ? call.Whole(1) : left;
    if (!left || !right) return;
    if (*right == 0) return call.FailDivision(spec);
    call.ReturnWhole(Integer(*left) / *right, spec);
}

void Minus(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const TypeSpec spec = call.SpecAt(1);
    if (IsIntegerType(spec.Type.Type)) {
        if (const std::optional<qint64> value = call.WholeOf(0, spec))
            call.ReturnWhole(-Integer(*value), spec);
    } else if (spec.Type.Type == DataType::Currency || spec.Type.Type == DataType::Numeric) {
        const std::optional<Exact> value = call.ExactOf(0, spec.LeftScale, spec);
        if (value) call.ReturnExact(Exact{-value->Units, value->Scale}, spec);
    } else if (const std::optional<double> value = call.FloatOf(0, spec)) {
        call.ReturnFloat(-*value, spec);
    }
}

/// The whole number of a type that a function or sum has made.
void AsWhole(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const TypeSpec spec = call.SpecAt(1);
    if (call.Storage(0) == SQLITE_INTEGER) return call.ReturnWhole(sqlite3_value_int64(call.Raw(0)), spec);
    const std::optional<Exact> value = call.ExactOf(0, 0, spec);
    const std::optional<Exact> whole = value ? Rescaled(*value, 0, Rounding::Cut) : value;
    if (whole) call.ReturnWhole(whole->Units, spec);
}

void AsExact(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const TypeSpec spec = call.SpecAt(1);
    const std::optional<Exact> value = call.ExactOf(0, spec.Type.NumericScale, spec);
    // A mean is cut.
    if (value)
        call.ReturnExact(
            Rescaled(*value, spec.Type.Type == DataType::Currency ? MoneyScale : spec.Type.NumericScale,
                     Rounding::Cut),
            spec);
}

/// The form in which numbers of many digits are compared. What a column holds that is no number stays as it
/// is.
void AsWide(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const TypeSpec spec = call.SpecAt(1);
    if (call.Storage(0) == SQLITE_TEXT && !ExactOfText(call.Text(0))) return call.ReturnArgument(0);
    const std::optional<Exact> value = call.ExactOf(0, spec.LeftScale, spec);
    if (!value) return;
    TypeSpec wide = spec;
    wide.Type.Precision = MostDigits;
    call.ReturnExact(value, wide);
}

/// The form in which a file holds a number of many digits: as a number, or as its digits where a double loses
/// some.
void AsNarrow(Call& call) {
    if (call.Storage(0) != SQLITE_BLOB) return call.ReturnArgument(0);
    const std::optional<Exact> value =
        OfWide(sqlite3_value_blob(call.Raw(0)), sqlite3_value_bytes(call.Raw(0)));
    if (!value) return call.ReturnArgument(0);
    if (FitsDigits(*value, NarrowDigits)) return call.Return(ToDouble(*value));
    call.Return(QString::fromLatin1(ToDigits(*value)));
}

}  // namespace

QList<FunctionEntry> ArithmeticFunctions() {
    return {
        {"zx_add", 3, 3, Reckon<Operator::Add>},
        {"zx_subtract", 3, 3, Reckon<Operator::Subtract>},
        {"zx_multiply", 3, 3, Reckon<Operator::Multiply>},
        {"zx_divide", 3, 3, Reckon<Operator::Divide>},
        {"zx_remainder", 3, 3, Reckon<Operator::Remainder>},
        {"zx_wholediv", 3, 3, DivideWhole},
        {"zx_minus", 2, 2, Minus},
        {"zx_whole", 2, 2, AsWhole},
        {"zx_exact", 2, 2, AsExact},
        {"zx_wide", 2, 2, AsWide},
        {"zx_narrow", 1, 1, AsNarrow},
    };
}

}  // namespace zephrin::ado::providers::sqlite
