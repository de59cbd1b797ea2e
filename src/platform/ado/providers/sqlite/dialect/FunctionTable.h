#pragma once

#include "platform/ado/providers/sqlite/values/Dialect.h"

#include <QString>

namespace zephrin::ado::providers::sqlite {

/// What a function gives: a type of its own, or one that follows from its arguments.
enum class Gives : quint8 {
    Text,
    Integer,
    Double,
    Date,
    Truth,
    AsFirst,     ///< the type of the first argument, which the others become
    AsDate,      ///< the date type of the last argument
    AsBranches,  ///< what the arguments behind the condition have in common
    AsAll,       ///< what all arguments have in common
    AsNumber,    ///< the number type of the first argument, with room for all its digits
    AsWhole,     ///< the same without places; a date stays a date
    AsPower,     ///< a power of the first argument, in its type
};

/// A function of a dialect and what carries it out.
struct FunctionInfo {
    const char* Name;
    bool OnServer;
    bool OnFile;
    int LeastArguments;
    int MostArguments;
    Gives Result;
    /// What each argument becomes, the last letter standing for all further ones: t a text, n a number in
    /// floating point, i a whole number, x a number of its own type, d a date, c a condition, f what FORMAT
    /// writes; v and k are left as they are.
    const char* Takes;
    const char* Runs;
};

/// The function of that name (in capitals) in the dialect, or null.
const FunctionInfo* FindFunction(const QString& name, Dialect dialect);

/// True for SUM, COUNT and the like.
bool IsAggregateName(const QString& name, Dialect dialect);

}  // namespace zephrin::ado::providers::sqlite
