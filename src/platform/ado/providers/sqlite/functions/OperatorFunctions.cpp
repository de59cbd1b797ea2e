#include "platform/ado/providers/sqlite/functions/Functions.h"

#include <cmath>

namespace zephrin::ado::providers::sqlite {

namespace {

/// Joins texts; a Null counts as empty, unless both are.
void Ampersand(Call& call) {
    if (call.IsNull(0) && call.IsNull(1)) return call.ReturnNull();
    call.Return(call.Text(0) + call.Text(1));
}

/// + where the statement doesn't tell what its operands are: two texts are joined, else they are numbers.
void Plus(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    if (call.Storage(0) == SQLITE_TEXT && call.Storage(1) == SQLITE_TEXT)
        return call.Return(call.Text(0) + call.Text(1));
    if (call.Storage(0) == SQLITE_INTEGER && call.Storage(1) == SQLITE_INTEGER) {
        qint64 sum = 0;
        if (!__builtin_add_overflow(*call.Whole(0), *call.Whole(1), &sum)) return call.Return(sum);
    }
    const std::optional<double> left = call.Number(0);
    const std::optional<double> right = left ? call.Number(1) : left;
    if (!left || !right) return;
    const double sum = *left + *right;
    // The text "5" is as whole as the number 5.
    const bool whole = sum == std::trunc(sum) && std::fabs(sum) < 9e15 && call.Storage(0) != SQLITE_FLOAT &&
                       call.Storage(1) != SQLITE_FLOAT;
    whole ? call.Return(qint64(sum)) : call.Return(sum);
}

void Divide(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<double> left = call.Number(0);
    const std::optional<double> right = left ? call.Number(1) : left;
    if (!left || !right) return;
    if (*right == 0) return call.FailDivision();
    call.Return(*left / *right);
}

/// Division of whole numbers, towards zero. A file rounds its operands first.
void DivideWhole(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<qint64> left = call.Whole(0);
    const std::optional<qint64> right = left ? call.Whole(1) : left;
    if (!left || !right) return;
    if (*right == 0) return call.FailDivision();
    if (*right == -1) return call.Return(-double(*left) >= 9.2e18 ? *left : -*left);
    call.Return(*left / *right);
}

void DivideByStorage(Call& call) {
    const bool whole = call.Storage(0) == SQLITE_INTEGER && call.Storage(1) == SQLITE_INTEGER;
    whole ? DivideWhole(call) : Divide(call);
}

void Modulo(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const bool broken =
        !call.IsFile() && (call.Storage(0) == SQLITE_FLOAT || call.Storage(1) == SQLITE_FLOAT);
    if (broken) {
        const std::optional<double> left = call.Number(0);
        const std::optional<double> right = left ? call.Number(1) : left;
        if (!left || !right) return;
        return *right == 0 ? call.FailDivision() : call.Return(std::fmod(*left, *right));
    }
    const std::optional<qint64> left = call.Whole(0);
    const std::optional<qint64> right = left ? call.Whole(1) : left;
    if (!left || !right) return;
    if (*right == 0) return call.FailDivision();
    call.Return(*right == -1 ? qint64(0) : *left % *right);
}

void ExclusiveOr(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<qint64> left = call.Whole(0);
    const std::optional<qint64> right = left ? call.Whole(1) : left;
    if (left && right) call.Return(*left ^ *right);
}

template <bool Padded>
void Like(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    if (call.Count() == 2 && call.Storage(0) == SQLITE_TEXT && call.Storage(1) == SQLITE_TEXT)
        return call.Return(qint64(IsLike(call.Bytes(0), call.Bytes(1), Padded)));
    const QString escape = call.Count() > 2 ? call.Text(2) : QString();
    if (escape.size() > 1)
        return call.Fail(QStringLiteral("The escape of LIKE must be one character."),
                         QStringLiteral("The escape of LIKE must be one character."));
    call.Return(
        qint64(IsLike(call.Text(0), call.Text(1), escape.isEmpty() ? QChar() : escape.front(), Padded)));
}

/// The number that a text stands for, where it is compared with numbers.
void AsNumber(Call& call) {
    if (call.Storage(0) != SQLITE_TEXT) return call.ReturnArgument(0);
    const std::optional<double> number = call.Number(0);
    if (!number) return;
    if (*number == std::trunc(*number) && std::fabs(*number) < 9e15) return call.Return(qint64(*number));
    call.Return(*number);
}

void IsNull(Call& call) {
    call.Return(qint64(call.IsNull(0) ? -1 : 0));
}

/// A second value where the first is Null; without one, 0 would fit a number, and an empty text fits the
/// rest.
void Nz(Call& call) {
    if (!call.IsNull(0)) return call.ReturnArgument(0);
    call.Count() > 1 ? call.ReturnArgument(1) : call.Return(QString());
}

}  // namespace

QList<FunctionEntry> OperatorFunctions() {
    return {
        {"zx_amp", 2, 2, Ampersand},
        {"zx_plus", 2, 2, Plus},
        {"zx_div", 2, 2, Divide},
        {"zx_anydiv", 2, 2, DivideByStorage},
        {"zx_mod", 2, 2, Modulo},
        {"zx_xor", 2, 2, ExclusiveOr},
        {"zx_like", 2, 3, Like<false>},
        {"zx_like_padded", 2, 3, Like<true>},
        {"zx_num", 1, 1, AsNumber},
        {"zx_isnull", 1, 1, IsNull},
        {"zx_nz", 1, 2, Nz},
    };
}

}  // namespace zephrin::ado::providers::sqlite
