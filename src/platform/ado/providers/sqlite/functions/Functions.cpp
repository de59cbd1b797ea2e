#include "platform/ado/providers/sqlite/functions/Functions.h"

#include "platform/ado/providers/sqlite/functions/Aggregates.h"

namespace zephrin::ado::providers::sqlite {

namespace {

/// What the engine keeps for a function as long as the connection lives.
struct Registered {
    void (*Run)(Call& call);
    Dialect Speaks;
};

void RunFunction(sqlite3_context* context, int count, sqlite3_value** values) {
    const auto* const function = static_cast<const Registered*>(sqlite3_user_data(context));
    Call call(context, function->Speaks, count, values);
    function->Run(call);
}

void Forget(void* function) {
    delete static_cast<Registered*>(function);
}

int Collate(void*, int leftBytes, const void* left, int rightBytes, const void* right) {
    return CompareTexts(static_cast<const char*>(left), leftBytes, static_cast<const char*>(right),
                        rightBytes);
}

}  // namespace

void RegisterFunctions(sqlite3* database, Dialect dialect) {
    for (const QList<FunctionEntry>& entries :
         {TextFunctions(), MathFunctions(), DateFunctions(), OperatorFunctions(), ConversionFunctions()}) {
        for (const FunctionEntry& entry : entries) {
            const int flags = SQLITE_UTF8 | (entry.Deterministic ? SQLITE_DETERMINISTIC : 0);
            // The engine owns it from here on, and frees it even where it refuses the function.
            sqlite3_create_function_v2(database, entry.Name, entry.Arguments, flags,
                                       new Registered{entry.Run, dialect}, RunFunction, nullptr, nullptr,
                                       Forget);
        }
    }
    RegisterAggregates(database);
    sqlite3_create_collation_v2(database, "ZEPHRIN", SQLITE_UTF8, nullptr, Collate, nullptr);
}

}  // namespace zephrin::ado::providers::sqlite
