#pragma once

#include "platform/ado/providers/sqlite/values/Dialect.h"

#include <QString>

namespace zephrin::ado::providers::sqlite {

/// What a function gives.
enum class Gives : quint8 { Text, Integer, Double, Date, Truth, AsFirst, AsBranches, Anything };
/// What a function does with its values: it reads texts, dates or numbers, or hands on what it gets.
enum class Reads : quint8 { Texts, Dates, Numbers, Values };

/// A function of a dialect and what carries it out.
struct FunctionInfo {
    const char* Name;
    bool OnServer;
    bool OnFile;
    int LeastArguments;
    int MostArguments;
    Gives Result;
    Reads Input;
    const char* Runs;
};

/// The function of that name (in capitals) in the dialect, or null. One that is not here is left to the
/// engine.
const FunctionInfo* FindFunction(const QString& name, Dialect dialect);

/// True for SUM, COUNT and the like.
bool IsAggregateName(const QString& name, Dialect dialect);

}  // namespace zephrin::ado::providers::sqlite
