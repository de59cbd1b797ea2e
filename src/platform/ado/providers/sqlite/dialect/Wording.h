#pragma once

#include "platform/ado/providers/sqlite/values/Dialect.h"
#include "platform/ado/providers/sqlite/values/Failures.h"

#include <QString>

namespace zephrin::ado::providers::sqlite {

/// The errors of a statement in the manner of whose dialect it is: people know these texts, and a few are
/// read by programs. Positions count from 0 in the statement as it was sent.

/// What began and never ends.
enum class Open { Text, Name, Date, Comment };

Error Unclosed(Dialect dialect, Open what, const QString& content, qsizetype position);
Error SyntaxNear(Dialect dialect, const QString& token, qsizetype position, bool isKeyword = false);
Error StatementEmpty(Dialect dialect);
Error TooDeep(qsizetype position);
Error TooLong(qsizetype position);
Error TooManyColumns(qsizetype position);
Error NoSuchTable(Dialect dialect, const QString& name, qsizetype position);
Error NoSuchColumn(Dialect dialect, const QString& qualifier, const QString& name, qsizetype position);
Error AmbiguousColumn(Dialect dialect, const QString& name, qsizetype position);
Error NoSuchFunction(Dialect dialect, const QString& name, qsizetype position);
Error WrongArguments(Dialect dialect, const QString& name, qsizetype position);
Error BadTop(Dialect dialect, const QString& typed, bool percent, qsizetype position);
Error NotADate(Dialect dialect, const QString& text, qsizetype position);
Error NotANumber(Dialect dialect, const QString& text, const QString& type, qsizetype position);
Error NumberTooLarge(Dialect dialect, const QString& type, qsizetype position);
Error NotGrouped(Dialect dialect, const QString& expression, const QString& clause, qsizetype position);
Error OrderNotSelected(Dialect dialect, const QString& expression, qsizetype position);
Error AggregateMisplaced(Dialect dialect, const QString& expression, qsizetype position);
Error NameIsTaken(Dialect dialect, const QString& name);
/// An operator or function (`what`, in the server's word) that takes no such operands.
Error WrongOperand(Dialect dialect, const QString& what, const QString& type, const QString& shown,
                   qsizetype position);
Error WrongOperands(Dialect dialect, const QString& what, const QString& left, const QString& right,
                    const QString& shown, qsizetype position);
Error WrongArgument(Dialect dialect, const QString& type, const QString& function, const QString& shown,
                    qsizetype position);
Error NoConversion(Dialect dialect, const QString& from, const QString& to, bool asked, const QString& shown,
                   qsizetype position);
Error NotACondition(Dialect dialect, const QString& shown, qsizetype position);
Error NoSuchType(Dialect dialect, const QString& name, qsizetype position);
/// A table where a view is to be altered.
Error NoView(Dialect dialect, const QString& name);
/// A view that leads back to itself.
Error SelfReference(Dialect dialect, const QString& name);
Error IncompatibleTypes(Dialect dialect, const QString& what, qsizetype position);

}  // namespace zephrin::ado::providers::sqlite
