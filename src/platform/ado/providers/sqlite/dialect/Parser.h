#pragma once

#include "platform/ado/providers/sqlite/dialect/Lexer.h"
#include "platform/ado/providers/sqlite/dialect/Tree.h"

namespace zephrin::ado::providers::sqlite {

/// Reads one statement of a dialect into its tree. Throws ado::Error with a position for what it can't read.
///
/// Queries, views and changes of rows are read whole; any other statement comes back as StatementKind::Other,
/// to be handed on as it stands.
class Parser {
 public:
    Parser(const QString& statement, Dialect dialect);
    Statement Read();

 private:
    // --- Statements (ParserStatements.cpp)
    Statement View(StatementKind kind);
    Statement Insert();
    Statement Update();
    Statement Delete();
    void TableName(Statement& statement);
    QList<QString> NameList();

    // --- Queries (ParserQueries.cpp)
    std::unique_ptr<Query> ParseQuery();
    QueryArm ParseArm();
    SelectCore ParseCore();
    TopClause Top();
    std::vector<SelectItem> Items();
    SelectItem Item();
    std::vector<OrderItem> OrderItems();
    SourcePtr JoinedSource();
    SourcePtr ContinueJoin(SourcePtr left);
    SourcePtr PrimarySource();
    bool AtJoin() const;
    JoinKind TakeJoin();
    void SkipHints();
    QString OptionalAlias(bool textsToo);

    // --- Expressions (ParserExpressions.cpp)
    ExpressionPtr ParseExpression();
    ExpressionPtr Logic(int loosest);
    ExpressionPtr Negation();
    ExpressionPtr Predicate();
    ExpressionPtr PredicateTail(ExpressionPtr value);
    ExpressionPtr Comparison(ExpressionPtr value);
    ExpressionPtr InTail(ExpressionPtr value);
    ExpressionPtr Arithmetic(int loosest);
    ExpressionPtr Sign();
    ExpressionPtr PowerOf();
    // --- What stands between operators (ParserOperands.cpp)
    ExpressionPtr Primary();
    ExpressionPtr Parenthesis();
    ExpressionPtr NameOrCall();
    ExpressionPtr ColumnName();
    ExpressionPtr Call();
    ExpressionPtr CastCall();
    ExpressionPtr ConvertCall();
    ExpressionPtr CaseOf();
    ExpressionPtr ExistsOf();
    QString TypeName();

    // --- Tokens
    const Token& Now() const { return tokens[at]; }
    const Token& Ahead(qsizetype by = 1) const { return tokens[std::min(at + by, tokens.size() - 1)]; }
    const Token& Take() { return tokens[at + 1 < tokens.size() ? at++ : at]; }
    bool AtWord(const char* word) const { return Now().Is(QLatin1StringView(word)); }
    bool AtSymbol(const char* symbol) const { return Now().IsSymbol(QLatin1StringView(symbol)); }
    bool TakeWord(const char* word);
    bool TakeSymbol(const char* symbol);
    void ExpectWord(const char* word);
    void ExpectSymbol(const char* symbol);
    bool AtName() const;
    /// A name of one to four parts; only its last one or two mean anything to a file.
    QString TakeName();
    [[noreturn]] void Refuse() const;
    ExpressionPtr Make(ExpressionKind kind, qsizetype from) const;
    /// Ends an expression whose operands are complete.
    void Close(Expression& expression) const;
    /// The height of a node over parts of which the tallest is that tall. Refuses what becomes too tall.
    int HeightOver(int tallest) const;

    class Depth;

    QString statement;
    Dialect dialect;
    QList<Token> tokens;
    qsizetype at = 0;
    int depth = 0;
};

/// Counts how deep the reading stands, so that a statement of ten thousand parentheses is an error and no
/// crash.
class Parser::Depth {
 public:
    /// `weight`: how much of the stack the level takes, in parts of which there are Limits::Nesting.
    explicit Depth(Parser& parser, int weight = 1);
    ~Depth() { reader.depth -= weight; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;

 private:
    Parser& reader;
    int weight;
};

}  // namespace zephrin::ado::providers::sqlite
