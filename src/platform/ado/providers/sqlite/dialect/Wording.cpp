#include "platform/ado/providers/sqlite/dialect/Wording.h"

#include "platform/ado/providers/sqlite/dialect/Limits.h"

namespace zephrin::ado::providers::sqlite {

namespace {

Error Say(Dialect dialect, int number, qsizetype position, const QString& onServer, const QString& onFile) {
    return Failure(number, IsFileDialect(dialect) ? onFile : onServer, position);
}

}  // namespace

Error Unclosed(Dialect dialect, Open what, const QString& content, qsizetype position) {
    constexpr int number = FailureNumber::Statement;
    const QString shown = content.left(128);
    switch (what) {
        case Open::Comment:
            return Say(dialect, number, position, QStringLiteral("Missing end comment mark '*/'."),
                       QStringLiteral("A comment has no end: '%1'.").arg(shown));
        case Open::Date:
            return Failure(number,
                           QStringLiteral("Syntax error in date: '#%1' has no closing '#'.").arg(shown),
                           position);
        case Open::Name:
            return Say(dialect, number, position,
                       QStringLiteral("Unclosed delimiter after the name '%1'.").arg(shown),
                       QStringLiteral("The name '%1' has no closing bracket.").arg(shown));
        case Open::Text:
            break;
    }
    return Say(dialect, number, position,
               QStringLiteral("Unclosed quotation mark after the character string '%1'.").arg(shown),
               QStringLiteral("Syntax error in string: '%1' has no closing quotation mark.").arg(shown));
}

Error SyntaxNear(Dialect dialect, const QString& token, qsizetype position, bool isKeyword) {
    const QString onServer = isKeyword ? QStringLiteral("Incorrect syntax near the keyword '%1'.").arg(token)
                                       : QStringLiteral("Incorrect syntax near '%1'.").arg(token);
    return Say(
        dialect, FailureNumber::Statement, position, onServer,
        QStringLiteral("Syntax error in the statement near '%1': a word is misspelled or missing, or the "
                       "punctuation is incorrect.")
            .arg(token));
}

Error StatementEmpty(Dialect dialect) {
    return Say(dialect, FailureNumber::Statement, 0, QStringLiteral("The statement is empty."),
               QStringLiteral("Invalid SQL statement; expected 'DELETE', 'INSERT', 'SELECT', or 'UPDATE'."));
}

Error TooDeep(qsizetype position) {
    return Failure(FailureNumber::Statement, QStringLiteral("The statement is nested too deeply."), position);
}

Error TooLong(qsizetype position) {
    return Failure(FailureNumber::Statement, QStringLiteral("The statement is too long."), position);
}

Error TooManyColumns(qsizetype position) {
    return Failure(FailureNumber::Statement,
                   QStringLiteral("The statement asks for more than %1 columns.").arg(Limits::Columns),
                   position);
}

Error NoSuchTable(Dialect dialect, const QString& name, qsizetype position) {
    return Say(dialect, FailureNumber::NoTable, position,
               QStringLiteral("Invalid object name '%1'.").arg(name),
               QStringLiteral(
                   "The input table or query '%1' could not be found. Make sure that it exists and that its "
                   "name is spelled correctly.")
                   .arg(name));
}

Error NoSuchColumn(Dialect dialect, const QString& qualifier, const QString& name, qsizetype position) {
    const QString whole = qualifier.isEmpty() ? name : qualifier + u'.' + name;
    return Say(dialect, FailureNumber::NoColumn, position,
               qualifier.isEmpty()
                   ? QStringLiteral("Invalid column name '%1'.").arg(name)
                   : QStringLiteral("The multi-part identifier \"%1\" could not be bound.").arg(whole),
               QStringLiteral(
                   "No value given for one or more required parameters: '%1' is not a field of the tables.")
                   .arg(whole));
}

Error AmbiguousColumn(Dialect dialect, const QString& name, qsizetype position) {
    return Say(dialect, FailureNumber::NoColumn, position,
               QStringLiteral("Ambiguous column name '%1'.").arg(name),
               QStringLiteral(
                   "The specified field '%1' could refer to more than one table listed in the FROM clause.")
                   .arg(name));
}

Error NoSuchFunction(Dialect dialect, const QString& name, qsizetype position) {
    return Say(dialect, FailureNumber::Statement, position,
               QStringLiteral("'%1' is not a recognized built-in function name.").arg(name),
               QStringLiteral("Undefined function '%1' in expression.").arg(name));
}

Error WrongArguments(Dialect dialect, const QString& name, qsizetype position) {
    return Say(dialect, FailureNumber::Statement, position,
               QStringLiteral("The %1 function has a wrong number of arguments.").arg(name.toLower()),
               QStringLiteral("Wrong number of arguments used with function '%1'.").arg(name));
}

Error BadTop(Dialect dialect, const QString& typed, bool percent, qsizetype position) {
    QString onServer =
        QStringLiteral("The number of rows provided for a TOP clause must be an integer, not '%1'.");
    if (typed.startsWith(u'-'))
        onServer = QStringLiteral("A TOP value may not be negative: '%1'.");
    else if (percent)
        onServer = QStringLiteral("Percent values must be between 0 and 100, not '%1'.");
    return Say(dialect, FailureNumber::Statement, position, onServer.arg(typed),
               QStringLiteral("Invalid argument to the TOP predicate: '%1' is not a whole number%2.")
                   .arg(typed, percent ? QStringLiteral(" from 0 to 100") : QString()));
}

Error NotADate(Dialect dialect, const QString& text, qsizetype position) {
    return Say(
        dialect, FailureNumber::Conversion, position,
        QStringLiteral("Conversion failed when converting date and/or time from character string '%1'.")
            .arg(text),
        QStringLiteral("Syntax error in date: '%1' is not a date.").arg(text));
}

Error NotANumber(Dialect dialect, const QString& text, const QString& type, qsizetype position) {
    return Say(dialect, FailureNumber::Conversion, position,
               QStringLiteral("Conversion failed when converting the varchar value '%1' to data type %2.")
                   .arg(text, type),
               QStringLiteral("Data type mismatch in criteria expression: '%1' is not a number.").arg(text));
}

Error NumberTooLarge(Dialect dialect, const QString& type, qsizetype position) {
    return Say(dialect, FailureNumber::Overflow, position,
               QStringLiteral("Arithmetic overflow error converting expression to data type %1.").arg(type),
               QStringLiteral("Overflow."));
}

Error NotGrouped(Dialect dialect, const QString& expression, const QString& clause, qsizetype position) {
    return Say(
        dialect, FailureNumber::Statement, position,
        QStringLiteral("Column '%1' is invalid in the %2 because it is not contained in either an aggregate "
                       "function or the GROUP BY clause.")
            .arg(expression, clause),
        QStringLiteral(
            "The query does not include the expression '%1' as part of an aggregate function or of "
            "its groups.")
            .arg(expression));
}

Error OrderNotSelected(Dialect dialect, const QString& expression, qsizetype position) {
    return Say(
        dialect, FailureNumber::Statement, position,
        QStringLiteral("ORDER BY items must appear in the select list if SELECT DISTINCT is specified: '%1'.")
            .arg(expression),
        QStringLiteral("The ORDER BY clause (%1) conflicts with DISTINCT.").arg(expression));
}

Error AggregateMisplaced(Dialect dialect, const QString& expression, qsizetype position) {
    return Say(
        dialect, FailureNumber::Statement, position,
        QStringLiteral(
            "An aggregate may not appear here: '%1'. Only the select list, HAVING and ORDER BY take one.")
            .arg(expression),
        QStringLiteral("Cannot have aggregate function in this clause: '%1'.").arg(expression));
}

Error NameIsTaken(Dialect dialect, const QString& name) {
    return Say(dialect, FailureNumber::Statement, -1,
               QStringLiteral("There is already an object named '%1' in the database.").arg(name),
               QStringLiteral("The object '%1' could not be created: the name is already used.").arg(name));
}

Error WrongOperand(Dialect dialect, const QString& what, const QString& type, const QString& shown,
                   qsizetype position) {
    return Say(dialect, FailureNumber::Conversion, position,
               QStringLiteral("Operand data type %1 is invalid for %2 operator.").arg(type, what),
               QStringLiteral("Data type mismatch in expression '%1'.").arg(shown));
}

Error WrongOperands(Dialect dialect, const QString& what, const QString& left, const QString& right,
                    const QString& shown, qsizetype position) {
    if (left == right) return WrongOperand(dialect, what, left, shown, position);
    return Say(dialect, FailureNumber::Conversion, position,
               QStringLiteral("The data types %1 and %2 are incompatible in the %3 operator.")
                   .arg(left, right, what),
               QStringLiteral("Data type mismatch in expression '%1'.").arg(shown));
}

Error WrongArgument(Dialect dialect, const QString& type, const QString& function, const QString& shown,
                    qsizetype position) {
    return Say(
        dialect, FailureNumber::Conversion, position,
        QStringLiteral("Argument data type %1 is invalid for the %2 function.").arg(type, function.toLower()),
        QStringLiteral("Data type mismatch in expression '%1'.").arg(shown));
}

Error NoConversion(Dialect dialect, const QString& from, const QString& to, bool asked, const QString& shown,
                   qsizetype position) {
    return Say(
        dialect, FailureNumber::Conversion, position,
        asked ? QStringLiteral("Explicit conversion from data type %1 to %2 is not allowed.").arg(from, to)
              : QStringLiteral("Operand type clash: %1 is incompatible with %2.").arg(from, to),
        QStringLiteral("Data type mismatch in expression '%1'.").arg(shown));
}

Error NotACondition(Dialect dialect, const QString& shown, qsizetype position) {
    return Say(dialect, FailureNumber::Statement, position,
               QStringLiteral("An expression of non-boolean type specified in a context where a condition is "
                              "expected, near '%1'.")
                   .arg(shown),
               QStringLiteral("Data type mismatch in criteria expression '%1'.").arg(shown));
}

Error NoSuchType(Dialect dialect, const QString& name, qsizetype position) {
    return Say(dialect, FailureNumber::Statement, position,
               QStringLiteral("Type %1 is not a defined system type.").arg(name),
               QStringLiteral("The type %1 is not known.").arg(name));
}

Error NoView(Dialect dialect, const QString& name) {
    return Say(
        dialect, FailureNumber::Statement, -1,
        QStringLiteral("Cannot perform alter on '%1' because it is an incompatible object type.").arg(name),
        QStringLiteral("The object '%1' is a table; only a query can be altered.").arg(name));
}

Error SelfReference(Dialect dialect, const QString& name) {
    return Say(
        dialect, FailureNumber::Statement, -1,
        QStringLiteral("View or function '%1' contains a self-reference. Views or functions cannot reference "
                       "themselves directly or indirectly.")
            .arg(name),
        QStringLiteral("Circular reference caused by '%1'.").arg(name));
}

Error IncompatibleTypes(Dialect dialect, const QString& what, qsizetype position) {
    return Say(dialect, FailureNumber::Conversion, position,
               QStringLiteral("The data types are incompatible in '%1'.").arg(what),
               QStringLiteral("Data type mismatch in expression '%1'.").arg(what));
}

}  // namespace zephrin::ado::providers::sqlite
