#include "platform/ado/providers/sqlite/functions/Functions.h"

#include "platform/ado/TextOrder.h"
#include "platform/ado/providers/sqlite/functions/Aggregates.h"

namespace zephrin::ado::providers::sqlite {

namespace {

/// What the engine keeps for a function as long as the connection lives.
struct Registered {
    FunctionEntry Entry;
    Dialect Speaks;
    /// The first argument is the call's place in the statement, for its errors.
    bool IsPlaced = false;
};

/// The one place at which every call arrives.
void RunFunction(sqlite3_context* context, int count, sqlite3_value** values) {
    const auto* const function = static_cast<const Registered*>(sqlite3_user_data(context));
    qsizetype position = -1;
    if (function->IsPlaced && count > 0) {
        position = sqlite3_value_int64(values[0]);
        ++values;
        --count;
    }
    if (count < function->Entry.Least || count > function->Entry.Most) {
        const QByteArray words =
            QByteArray("wrong number of arguments to function ") + function->Entry.Name + "()";
        return sqlite3_result_error(context, words.constData(), int(words.size()));
    }
    Call call(context, function->Speaks, count, values, position);
    function->Entry.Run(call);
}

void Forget(void* function) {
    delete static_cast<Registered*>(function);
}

int Collate(void*, int leftBytes, const void* left, int rightBytes, const void* right) {
    return CompareTexts({static_cast<const char*>(left), size_t(leftBytes)},
                        {static_cast<const char*>(right), size_t(rightBytes)});
}

}  // namespace

void RegisterFunctions(sqlite3* database, Dialect dialect) {
    for (const QList<FunctionEntry>& entries :
         {TextFunctions(), MathFunctions(), DateFunctions(), FormatFunctions(), OperatorFunctions(),
          ArithmeticFunctions(), ConversionFunctions(), SchemaFunctions()}) {
        for (const FunctionEntry& entry : entries) {
            const int flags = SQLITE_UTF8 | (entry.Deterministic ? SQLITE_DETERMINISTIC : 0) |
                              (entry.From == CalledFrom::Anywhere ? SQLITE_INNOCUOUS : SQLITE_DIRECTONLY);
            // The engine owns it from here on, and frees it even where it refuses the function.
            sqlite3_create_function_v2(database, entry.Name, entry.Least == entry.Most ? entry.Least : -1,
                                       flags, new Registered{entry, dialect}, RunFunction, nullptr, nullptr,
                                       Forget);
            // The same with its place in front, which only the statement in hand has.
            const QByteArray placed = QByteArray(entry.Name) + "_at";
            const int own = (flags & ~SQLITE_INNOCUOUS) | SQLITE_DIRECTONLY;
            sqlite3_create_function_v2(database, placed.constData(), -1, own,
                                       new Registered{entry, dialect, true}, RunFunction, nullptr, nullptr,
                                       Forget);
        }
    }
    RegisterAggregates(database);
    sqlite3_create_collation_v2(database, "ZEPHRIN", SQLITE_UTF8, nullptr, Collate, nullptr);
}

}  // namespace zephrin::ado::providers::sqlite
