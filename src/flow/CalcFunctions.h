#pragma once

#include <QString>
#include <QStringList>

namespace zephrin {

/// The kinds of functions that the calculated-field dialog offers, in the order of its options. The last one
/// has no option and stays unseen.
enum class CalcFunctionType : int { Date = 0, Text = 1, Math = 2, Logical = 3, Aggregate = 4 };

/// What the dialect offers of one kind, with placeholders for the user to overwrite; empty for an unknown
/// dialect.
QStringList CalcFunctions(const QString& databaseType, CalcFunctionType type);

QStringList CalcOperators();

}  // namespace zephrin
