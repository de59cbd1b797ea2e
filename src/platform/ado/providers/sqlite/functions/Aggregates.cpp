#include "platform/ado/providers/sqlite/functions/Aggregates.h"

#include <QtGlobal>

#include <cmath>
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
    // Comes zeroed, and so is what a new State would be.
    return static_cast<State*>(sqlite3_aggregate_context(context, sizeof(State)));
}

void AddValue(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    if (Spread* const spread = StateOf<Spread>(context)) spread->Add(sqlite3_value_double(values[0]));
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

/// The mean of whole numbers, as whole as a server gives it.
struct WholeSum {
    qint64 Count;
    qint64 Sum;
    bool Overflows;
};

void AddWhole(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    WholeSum* const whole = StateOf<WholeSum>(context);
    if (!whole) return;
    ++whole->Count;
    whole->Overflows |= __builtin_add_overflow(whole->Sum, sqlite3_value_int64(values[0]), &whole->Sum);
}

void GiveWholeMean(sqlite3_context* context) {
    const WholeSum* const whole = StateOf<WholeSum>(context);
    if (!whole || whole->Count == 0) return sqlite3_result_null(context);
    if (whole->Overflows) return sqlite3_result_error(context, "integer overflow", -1);
    sqlite3_result_int64(context, whole->Sum / whole->Count);
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
    Register(database, "zx_avg_whole", AddWhole, GiveWholeMean);
    Register(database, "zx_stdev", AddValue, GiveSpread<true, true>);
    Register(database, "zx_stdevp", AddValue, GiveSpread<false, true>);
    Register(database, "zx_var", AddValue, GiveSpread<true, false>);
    Register(database, "zx_varp", AddValue, GiveSpread<false, false>);
    Register(database, "zx_first", KeepValue<true>, GiveValue);
    Register(database, "zx_last", KeepValue<false>, GiveValue);
}

}  // namespace zephrin::ado::providers::sqlite
