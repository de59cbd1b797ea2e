#pragma once

#include <zephrin/ado/Error.h>

#include <QByteArray>
#include <QString>

namespace zephrin::ado::providers::sqlite {

/// The provider's own error numbers: those that ADO users know from other providers for the same faults.
namespace FailureNumber {
inline constexpr int Statement = -2147217900;   ///< the text of the statement is wrong
inline constexpr int NoTable = -2147217865;     ///< a table or view that is not there
inline constexpr int NoColumn = -2147217904;    ///< a name that stands for nothing
inline constexpr int Conversion = -2147217913;  ///< a value that does not convert
inline constexpr int Overflow = -2147217833;    ///< a number out of range
inline constexpr int Constraint = -2147217873;  ///< a row that breaks a rule of its table
inline constexpr int ReadOnly = -2147217911;    ///< a write to what may only be read
}  // namespace FailureNumber

/// What the errors of this provider say who they come from.
QString FailureSource();

/// An error of this provider; `position` points into the statement, -1 for none.
Error Failure(int number, const QString& description, qsizetype position = -1);

/// An error of a function goes through the engine as a text; number and position travel in front of the
/// words.
QByteArray PackedFailure(int number, qsizetype position, const QString& words);
/// The error of such a text, or of any other with the number for values that don't convert.
Error UnpackedFailure(const QString& packed);

/// Why a database could not be opened.
Error ConnectFailure(const QString& description);

}  // namespace zephrin::ado::providers::sqlite
