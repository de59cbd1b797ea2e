#include "platform/ado/providers/sqlite/functions/Aggregates.h"

#include "platform/ado/providers/sqlite/functions/Call.h"
#include "platform/ado/providers/sqlite/values/Failures.h"
#include "platform/ado/providers/sqlite/values/TextValue.h"

#include <QLocale>

#include <cmath>
#include <cstdint>
#include <new>

namespace zephrin::ado::providers::sqlite {

namespace {

/// Mean and squared distances, kept up to date value by value, so that nothing cancels out.
struct Spread {
    qint64 Count = 0;
    double Mean = 0;
    double Squares = 0;

    void Add(double value) {
        ++Count;
        const double distance = value - Mean;
        Mean += distance / double(Count);
        Squares += distance * (value - Mean);
    }
};

template <typename State>
State* StateOf(sqlite3_context* context) {
    // Comes zeroed, and so is what a new State would be; but with no more than the alignment of a pointer,
    // and exact numbers want a stricter one.
    constexpr std::uintptr_t alignment = alignof(State);
    void* const memory = sqlite3_aggregate_context(context, int(sizeof(State) + alignment - 1));
    return reinterpret_cast<State*>((reinterpret_cast<std::uintptr_t>(memory) + alignment - 1) / alignment *
                                    alignment);
}

/// Ends the statement where a column of numbers holds something else.
void RefuseValue(sqlite3_context* context, sqlite3_value* value) {
    const QByteArray words = PackedFailure(
        FailureNumber::Conversion, -1,
        QStringLiteral("The value '%1' of a column of numbers is no number.").arg(TextOf(value)));
    sqlite3_result_error(context, words.constData(), int(words.size()));
    sqlite3_result_error_code(context, SQLITE_MISMATCH);
}

std::optional<Exact> ExactIn(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
            return Exact{sqlite3_value_int64(value), 0};
        case SQLITE_FLOAT: {
            // The digits that a double keeps tell how many places there are.
            const double number = sqlite3_value_double(value);
            const std::optional<Exact> money = ExactOfDouble(number, MoneyScale);
            if (money && ToDouble(*money) == number) return money;
            return ExactOfText(QString::number(number, 'f', QLocale::FloatingPointShortest));
        }
        case SQLITE_BLOB:
            return OfWide(sqlite3_value_blob(value), sqlite3_value_bytes(value));
        default:
            return ExactOfText(TextOf(value));
    }
}

std::optional<double> FloatIn(sqlite3_value* value) {
    const int storage = sqlite3_value_type(value);
    if (storage == SQLITE_INTEGER || storage == SQLITE_FLOAT) return sqlite3_value_double(value);
    const std::optional<Exact> exact = ExactIn(value);
    return exact ? std::optional(ToDouble(*exact)) : std::nullopt;
}

void AddValue(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    const std::optional<double> number = FloatIn(values[0]);
    if (!number) return RefuseValue(context, values[0]);
    if (Spread* const spread = StateOf<Spread>(context)) spread->Add(*number);
}

/// A sample has one degree of freedom less than a population; too few values have no spread.
template <bool Sample, bool Root>
void GiveSpread(sqlite3_context* context) {
    const Spread* const spread = StateOf<Spread>(context);
    const qint64 freedom = spread ? spread->Count - (Sample ? 1 : 0) : 0;
    if (freedom < 1) return sqlite3_result_null(context);
    const double variance = spread->Squares / double(freedom);
    sqlite3_result_double(context, Root ? std::sqrt(variance) : variance);
}

/// A sum that loses nothing. Its places are the most that a value had.
struct ExactSum {
    qint64 Count;
    Exact Total;
    bool Overflows;
};

void AddExact(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    ExactSum* const sum = StateOf<ExactSum>(context);
    if (!sum) return;
    const std::optional<Exact> value = ExactIn(values[0]);
    if (!value) return RefuseValue(context, values[0]);
    ++sum->Count;
    const std::optional<Exact> total = Sum(sum->Total, *value, std::max(sum->Total.Scale, value->Scale));
    sum->Overflows = sum->Overflows || !total;
    if (total) sum->Total = *total;
}

/// What has left 38 digits goes on as a number that no type holds: who takes it knows its place in the
/// statement.
void GiveExact(sqlite3_context* context, const std::optional<Exact>& value) {
    const QByteArray wide = ToWide(value.value_or(Exact{PowerOfTen(MostDigits), 0}));
    sqlite3_result_blob(context, wide.constData(), int(wide.size()), SQLITE_TRANSIENT);
}

void GiveExactSum(sqlite3_context* context) {
    const ExactSum* const sum = StateOf<ExactSum>(context);
    if (!sum || sum->Count == 0) return sqlite3_result_null(context);
    GiveExact(context, sum->Overflows ? std::nullopt : std::optional(sum->Total));
}

/// Cut to more places than any type of a mean shows, as far as there is room for them.
void GiveExactMean(sqlite3_context* context) {
    const ExactSum* const sum = StateOf<ExactSum>(context);
    if (!sum || sum->Count == 0) return sqlite3_result_null(context);
    std::optional<Exact> mean;
    for (int places = 30; places >= 6 && !mean && !sum->Overflows; places -= 4)
        mean = Quotient(sum->Total, {sum->Count, 0}, places);
    GiveExact(context, mean);
}

/// The mean of whole numbers, as whole as a server gives it; their sum has to fit the type too.
template <DataType Type>
void GiveWholeMean(sqlite3_context* context) {
    const ExactSum* const sum = StateOf<ExactSum>(context);
    if (!sum || sum->Count == 0) return sqlite3_result_null(context);
    const std::optional<Exact> whole = Rescaled(sum->Total, 0, Rounding::Cut);
    if (sum->Overflows || !whole || !HoldsWhole(Type, whole->Units)) return GiveExact(context, std::nullopt);
    sqlite3_result_int64(context, qint64(whole->Units / sum->Count));
}

struct FloatSum {
    qint64 Count;
    double Total;
};

void AddFloat(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    FloatSum* const sum = StateOf<FloatSum>(context);
    if (!sum) return;
    const std::optional<double> number = FloatIn(values[0]);
    if (!number) return RefuseValue(context, values[0]);
    ++sum->Count;
    sum->Total += *number;
}

template <bool Mean>
void GiveFloatSum(sqlite3_context* context) {
    const FloatSum* const sum = StateOf<FloatSum>(context);
    if (!sum || sum->Count == 0) return sqlite3_result_null(context);
    if (!std::isfinite(sum->Total)) {
        const QByteArray words = PackedFailure(
            FailureNumber::Overflow, -1,
            QStringLiteral("Arithmetic overflow error converting expression to data type float."));
        sqlite3_result_error(context, words.constData(), int(words.size()));
        return sqlite3_result_error_code(context, SQLITE_MISMATCH);
    }
    sqlite3_result_double(context, Mean ? sum->Total / double(sum->Count) : sum->Total);
}

struct Kept {
    sqlite3_value* Value;
};

/// The first or the last value in the order in which the rows come, Null or not.
template <bool First>
void KeepValue(sqlite3_context* context, int, sqlite3_value** values) {
    Kept* const kept = StateOf<Kept>(context);
    if (!kept || (First && kept->Value)) return;
    sqlite3_value_free(kept->Value);
    kept->Value = sqlite3_value_dup(values[0]);
}

void GiveValue(sqlite3_context* context) {
    Kept* const kept = StateOf<Kept>(context);
    if (!kept || !kept->Value) return sqlite3_result_null(context);
    sqlite3_result_value(context, kept->Value);
    sqlite3_value_free(kept->Value);
    kept->Value = nullptr;
}

using Step = void (*)(sqlite3_context*, int, sqlite3_value**);
using Final = void (*)(sqlite3_context*);

void Register(sqlite3* database, const char* name, Step step, Final final) {
    sqlite3_create_function_v2(database, name, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                               nullptr, nullptr, step, final, nullptr);
}

}  // namespace

void RegisterAggregates(sqlite3* database) {
    Register(database, "zx_sum_exact", AddExact, GiveExactSum);
    Register(database, "zx_avg_exact", AddExact, GiveExactMean);
    Register(database, "zx_avg_int", AddExact, GiveWholeMean<DataType::Integer>);
    Register(database, "zx_avg_bigint", AddExact, GiveWholeMean<DataType::BigInt>);
    Register(database, "zx_sum_float", AddFloat, GiveFloatSum<false>);
    Register(database, "zx_avg_float", AddFloat, GiveFloatSum<true>);
    Register(database, "zx_stdev", AddValue, GiveSpread<true, true>);
    Register(database, "zx_stdevp", AddValue, GiveSpread<false, true>);
    Register(database, "zx_var", AddValue, GiveSpread<true, false>);
    Register(database, "zx_varp", AddValue, GiveSpread<false, false>);
    Register(database, "zx_first", KeepValue<true>, GiveValue);
    Register(database, "zx_last", KeepValue<false>, GiveValue);
}

}  // namespace zephrin::ado::providers::sqlite
