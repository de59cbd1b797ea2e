#pragma once

#include "platform/ado/providers/sqlite/dialect/TypeRules.h"

#include <QList>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace zephrin::ado::providers::sqlite {

struct Query;
struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

/// A stretch of the statement, from 0.
struct Range {
    qsizetype From = 0;
    qsizetype To = 0;
};

enum class ExpressionKind : quint8 {
    Null,
    Number,   ///< Name: digits as typed
    Text,     ///< Name: the text
    Date,     ///< Name: what stands between the number signs
    Binary,   ///< Name: hexadecimal digits
    Truth,    ///< True or False, Yes or No, On or Off; IsTrue
    Column,   ///< Qualifier, Name
    Star,     ///< * or T.*
    Unary,    ///< Name: + - ~
    Binary2,  ///< Name: the operator between two operands, arithmetic or on texts
    Compare,  ///< Name: = <> < > <= >=
    Like,     ///< value, pattern, escape where given
    Between,  ///< value, low, high
    InList,   ///< value, then the list
    InQuery,  ///< value; Nested
    IsNull,
    Exists,      ///< Nested
    Subquery,    ///< Nested, one value
    Quantified,  ///< value; Name: the comparison; IsTrue for ALL; Nested
    Not,
    And,
    Or,
    Logic,     ///< Name: XOR EQV IMP
    Function,  ///< Name; IsDistinct; IsStar for COUNT(*)
    Cast,      ///< value, style where given; Name: the type as typed; Type: what it means
    Case,      ///< operand where HasOperand, then pairs of WHEN and THEN, ELSE last where HasElse
    Keyword,   ///< Name: a part of a date, as DATEPART takes it
    Convert,   ///< the operand as the type that its place wants; nobody types it, the resolver puts it there
};

struct Expression {
    ExpressionKind Kind = ExpressionKind::Null;
    Range At;
    /// Levels from here down to the deepest leaf.
    int Height = 1;
    QString Name;
    QString Qualifier;
    std::vector<ExpressionPtr> Operands;
    std::unique_ptr<Query> Nested;
    bool IsNegated = false;
    bool IsDistinct = false;
    bool IsStar = false;
    bool IsTrue = false;
    bool HasOperand = false;
    bool HasElse = false;

    // Known after the names were resolved.
    ColumnType Type;
    /// What the operator does with its operands.
    Does What = Does::AsFound;
    /// The value is handed on as a file holds it, which need not be what its column declares.
    bool IsStored = false;
    /// Which source of which depth a column comes from, so that two spellings of one column are the same.
    QString Identity;
    /// In ORDER BY, which column of the query it stands for, from 0; -1 for an expression of its own.
    int Output = -1;
    bool IsAggregate = false;
    /// The table of a column that lies in one.
    QString Table;
};

enum class SourceKind : quint8 { Table, Derived, Join };
enum class JoinKind : quint8 { Inner, Left, Right, Full, Cross };

struct Source {
    SourceKind Kind = SourceKind::Table;
    Range At;
    int Height = 1;
    QString Name;
    QString Alias;
    std::unique_ptr<Query> Nested;
    JoinKind How = JoinKind::Inner;
    std::unique_ptr<Source> Left;
    std::unique_ptr<Source> Right;
    ExpressionPtr On;
};
using SourcePtr = std::unique_ptr<Source>;

struct SelectItem {
    ExpressionPtr Value;
    QString Alias;
};

struct OrderItem {
    ExpressionPtr Value;
    bool Descending = false;
};

/// How many rows: the digits as typed.
struct TopClause {
    Range At;
    QString Digits;
    bool Percent = false;
};

/// A column that a query gives.
struct OutputColumn {
    QString Name;
    ColumnType Type;
    /// False for an expression that a server leaves without a name, or names by itself.
    bool IsNamed = true;
    bool IsStored = false;
    /// Of a plain column, the table that it comes from, by its name there.
    QString Source = {};
};

/// A column that a star stands for.
struct StarColumn {
    QString Source;
    QString Name;
    ColumnType Type;
    bool IsStored = true;
};

struct SelectCore {
    Range At;
    bool Distinct = false;
    std::optional<TopClause> Top;
    std::vector<SelectItem> Items;
    std::vector<SourcePtr> From;
    ExpressionPtr Where;
    std::vector<ExpressionPtr> GroupBy;
    ExpressionPtr Having;

    // Known after the names were resolved.
    QList<OutputColumn> Output;
    /// What each star of Items stands for, in their order.
    std::vector<QList<StarColumn>> Stars;
    /// False where a star could not be written out, because two of its columns share source and name.
    bool StarsAreDistinct = true;
};

enum class SetOperator : quint8 { First, Union, UnionAll, Intersect, Except };

struct QueryArm {
    SetOperator Joined = SetOperator::First;
    SelectCore Core;
    /// Instead of Core: a query in parentheses.
    std::unique_ptr<Query> Nested;
};

struct Query {
    int Height = 1;
    std::vector<QueryArm> Arms;
    std::vector<OrderItem> OrderBy;
};

/// SET column = value.
struct Assignment {
    QString Column;
    Range At;
    ExpressionPtr Value;
    ColumnType Type;
};

enum class StatementKind : quint8 { Select, CreateView, AlterView, Insert, Update, Delete, Other };

struct Statement {
    StatementKind Kind = StatementKind::Other;
    /// The view or table.
    QString Name;
    Range NameAt;
    /// Columns of INSERT, or of a view.
    QList<QString> Columns;
    std::unique_ptr<Query> Body;
    /// Rows of INSERT ... VALUES.
    std::vector<std::vector<ExpressionPtr>> Rows;
    std::vector<Assignment> Assignments;
    ExpressionPtr Where;
};

}  // namespace zephrin::ado::providers::sqlite
