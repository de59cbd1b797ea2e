#pragma once

#include "platform/ado/providers/sqlite/values/Exact.h"
#include "platform/ado/providers/sqlite/values/TypeMap.h"

#include <QStringView>

#include <variant>

namespace zephrin::ado::providers::sqlite {

enum class Unreadable : quint8 {
    Wrong,    ///< no such number
    TooLarge  ///< a number, but not of the type
};
/// A number as the engine holds it: whole, floating, exact, or why there is none.
using TextValue = std::variant<qint64, double, Exact, Unreadable>;

/// The number of a type that a text stands for, as the dialect reads it: a server takes nothing but digits
/// for a whole number, and an empty text for 0 where it isn't an exact one; a file takes any number.
TextValue NumberOfText(QStringView text, const ColumnType& type, bool file);

/// The range of a type of whole numbers.
bool HoldsWhole(DataType type, Exact::Integer value);

}  // namespace zephrin::ado::providers::sqlite
