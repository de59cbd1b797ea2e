#pragma once

#include "platform/ado/providers/sqlite/dialect/Translation.h"
#include "platform/ado/providers/sqlite/dialect/Tree.h"
#include "platform/ado/providers/sqlite/values/Exact.h"

namespace zephrin::ado::providers::sqlite {

/// Writes a resolved tree as SQLite's text.
///
/// What SQLite would silently do otherwise than the servers is said in full: texts are compared with the
/// provider's order of texts, dates in their stored form, truth as truth, and an operation that depends on
/// its operands is a call.
class Writer {
 public:
    /// `forView` writes what may be kept in the file: without a collation that only this provider knows.
    /// `lookUps` finds texts by an index for a query that runs at once.
    Writer(const QString& statement, Dialect dialect, bool forView, const Catalog* lookUps = nullptr)
        : text(statement),
          speaks(dialect),
          collation(forView ? " COLLATE NOCASE" : " COLLATE ZEPHRIN"),
          tables(lookUps),
          isStoring(forView) {}

    void WriteQuery(const Query& query);
    void WriteStatement(const Statement& statement);
    MappedText Take() { return std::move(out); }

 private:
    /// What values are compared as: exact numbers of many digits as blobs with so many places.
    enum class As : quint8 { Raw, Text, Date, Truth, Wide };
    struct Comparing {
        As How = As::Raw;
        int Scale = 0;
    };
    class Level;
    struct QueryDepth {
        explicit QueryDepth(int& of) : depth(of) { ++depth; }
        ~QueryDepth() { --depth; }
        QueryDepth(const QueryDepth&) = delete;
        QueryDepth& operator=(const QueryDepth&) = delete;
        int& depth;
    };

    // --- Queries (WriterQueries.cpp)
    void WriteArm(const QueryArm& arm, bool alone, bool distinct);
    /// `keys`: those that are no columns of the query become columns behind them.
    void WriteCore(const SelectCore& core, bool distinct, const std::vector<OrderItem>* keys = nullptr);
    void WriteItems(const SelectCore& core, bool distinct);
    void WriteStar(const QList<StarColumn>& columns, bool distinct);
    void WriteSources(const SelectCore& core);
    void WriteSource(const Source& source);
    void WriteJoin(const Source& join);
    bool WriteFullJoin(const Source& join);
    void WriteOrder(const std::vector<OrderItem>& order);
    void CheckTop(const TopClause& top) const;
    void WriteLimit(const TopClause& top);
    void WriteShare(const SelectCore& core, bool distinct, const std::vector<OrderItem>& order);
    void WriteChange(const Statement& statement);
    void WriteStored(const Expression& value, const ColumnType& column);
    void WriteItem(const Expression& value, bool distinct);
    /// A value that rows are grouped, sorted or made distinct by.
    void WriteKey(const Expression& value);

    // --- Expressions (WriterExpressions.cpp)
    void Write(const Expression& value);
    void WriteJoined(const std::vector<ExpressionPtr>& operands, size_t from, size_t to, const char* word,
                     bool filters);
    void WriteFilter(const Expression& condition, bool onlyFilters);
    bool WriteLookUp(const Expression& condition);
    void WriteList(const std::vector<ExpressionPtr>& operands, size_t from);
    void WriteCall(const char* function, const Expression& value);
    void WriteColumn(const Expression& column);
    void WriteCase(const Expression& value);
    void WriteCast(const Expression& value);
    void WriteFunction(const Expression& call);
    void WriteNullIf(const Expression& call);
    /// Begins a call that may fail, so that its error points at `at`.
    void WriteCallAt(const QByteArray& function, const Expression& at);
    void WriteAggregate(const Expression& call);
    void WriteDate(const QString& literal, const Expression& at);
    void WriteNumeral(const Expression& number);

    // --- Conversions (WriterConversions.cpp)
    void WriteConversion(const Expression& value, const ColumnType& type, const Expression* style = nullptr);
    bool WriteReadText(const Expression& text, const ColumnType& type);
    void WriteExact(const Exact& value, const ColumnType& type);
    void WriteWide(const Expression& value, int scale);
    QByteArray Spec(const ColumnType& type, const Expression& at, int leftScale = 0,
                    int rightScale = 0) const;

    // --- Arithmetic (WriterArithmetic.cpp)
    void WriteUnary(const Expression& value);
    void WriteArithmetic(const Expression& value);
    void WriteAsFound(const Expression& value);
    void WriteOperands(const Expression& value);
    void WriteOperand(const Expression& value);
    void WriteInfix(const Expression& value, const char* symbol);
    void WriteLogic(const Expression& value);

    // --- Comparisons (WriterComparisons.cpp)
    static Comparing Decide(const std::vector<const Expression*>& values);
    void WriteCompared(const Expression& value, Comparing as);
    void WriteCondition(const Expression& value);
    void WriteTruth(const Expression& value);
    void WriteComparison(const Expression& left, const QString& symbol, const Expression& right);
    void WriteBetween(const Expression& value);
    void WriteInList(const Expression& value);
    void WriteInQuery(const Expression& value);
    void WriteQuantified(const Expression& value);
    void WriteLike(const Expression& value);
    /// What is not known to be anything else may be a text.
    static bool IsComparedAsText(DataType type) {
        return type == DataType::Empty || type == DataType::Guid || IsTextType(type);
    }
    const char* CollationFor(Comparing as) const { return as.How == As::Text ? collation : ""; }

    QString text;
    Dialect speaks;
    const char* collation;
    /// Whether the order of the tables of the FROM in hand shows nowhere.
    bool mayTurnJoins = true;
    const Catalog* tables;
    /// Whether the condition in hand only lets rows pass: to that, Null is the same as False.
    bool filters = false;
    /// Whether what comes out is kept in the file: in the form that columns have, which other programs read
    /// too.
    bool isStoring = false;
    /// Queries in one another, the outermost being 1.
    int depth = 0;
    int fullJoins = 0;
    int level = 0;
    int deepest = 0;
    MappedText out;
};

/// One level of what is being written. The place of the deepest one is kept: there the engine gives up on a
/// statement that is too deep for it.
class Writer::Level {
 public:
    Level(Writer& of, qsizetype position);
    ~Level() { --writer.level; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

 private:
    Writer& writer;
};

}  // namespace zephrin::ado::providers::sqlite
