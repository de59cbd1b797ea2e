#pragma once

#include "platform/ado/providers/sqlite/dialect/Catalog.h"
#include "platform/ado/providers/sqlite/dialect/Tree.h"
#include "platform/ado/providers/sqlite/values/Dialect.h"

namespace zephrin::ado::providers::sqlite {

struct FunctionInfo;

/// Finds what every name of a tree means and which type every expression has, and refuses what the server of
/// the dialect refuses: names that mean nothing or two things, columns that are neither grouped nor
/// aggregated.
class Resolver {
 public:
    Resolver(const QString& statement, Dialect dialect, const Catalog& catalog)
        : text(statement), speaks(dialect), tables(catalog) {}

    void Resolve(Statement& statement);

 private:
    struct ScopeSource {
        QString Name;
        QList<CatalogColumn> Columns;
    };
    /// The sources that names may mean, and those around them.
    struct Scope {
        std::vector<ScopeSource> Sources;
        const Scope* Outer = nullptr;
        int Number = 0;
    };

    // --- Queries (Resolver.cpp)
    QList<OutputColumn> ResolveQuery(Query& query, const Scope* outer);
    void ResolveCore(SelectCore& core, Scope& scope);
    void UniteArms(Query& query, QList<OutputColumn>& output);
    void ResolveOrder(Query& query, const Scope* scope);
    bool ResolveAlias(Expression& value, const QList<OutputColumn>& output, bool aliasesOnly,
                      const SelectCore* core);
    bool ResolveOrdinal(Expression& value, const QList<OutputColumn>& output) const;
    void AddSource(Source& source, Scope& scope);
    void ResolveConditions(Source& source, const Scope& scope);
    void ResolveItems(SelectCore& core, const Scope& scope);
    void ExpandStar(const Expression& star, SelectCore& core, const Scope& scope);
    void ResolveChange(Statement& statement);
    ScopeSource TableScope(const QString& name, const QString& alias, const Range& at) const;
    Scope NewScope(const Scope* outer);

    // --- Grouping (ResolverGroups.cpp)
    void CheckGroups(const SelectCore& core, const std::vector<OrderItem>& order, const Scope& scope) const;
    void CheckGrouped(const Expression& value, const QList<QString>& keys, const Scope& scope,
                      const QString& clause) const;
    void CheckDistinctOrder(const SelectCore& core, const std::vector<OrderItem>& order) const;
    void RefuseAggregate(const Expression* value) const;
    static QString KeyOf(const Expression& value);

    // --- Expressions (ResolverTypes.cpp)
    void ResolveExpression(Expression& value, const Scope& scope);
    void ResolveColumn(Expression& column, const Scope& scope);
    bool FindColumn(Expression& column, const Scope& scope) const;
    void SetType(Expression& value);
    ColumnType TypeOfNumber(const Expression& number) const;
    // --- Operators (ResolverOperators.cpp)
    static bool IsCondition(const Expression& value);
    Family FamilyOf(const Expression& value) const;
    void ResolveOperator(Expression& value);
    void ResolveSign(Expression& value);
    void ResolveArithmetic(Expression& value);
    void ResolveComparison(Expression& value);
    void WantValues(const Expression& value, size_t from = 0) const;
    void WantValue(const Expression& value) const;
    void WantCondition(const Expression* value) const;
    /// Puts a conversion around an operand that is of another type; refuses what never becomes one.
    /// `chosen`: the value will be held among others of that type, in the form of which there is but one.
    void ConvertTo(ExpressionPtr& operand, const ColumnType& type, Asked how = Asked::Implicitly,
                   bool chosen = false) const;
    /// Brings operands to what they have in common.
    ColumnType Unite(const std::vector<ExpressionPtr*>& operands, Meeting how) const;
    ColumnType TextType() const;
    // --- Functions, conversions and choices (ResolverFunctions.cpp)
    void ResolveFunction(Expression& call);
    void ResolveArguments(Expression& call, const FunctionInfo& info);
    void TakeArgument(ExpressionPtr& argument, char as) const;
    void ResolveAggregate(Expression& call);
    void ResolveCast(Expression& cast);
    void ResolveCase(Expression& value);
    void Wrap(Expression& value, const ColumnType& type) const;
    ColumnType DateType() const;
    QString Spelled(const Range& at) const { return text.sliced(at.From, at.To - at.From); }

    QString text;
    Dialect speaks;
    const Catalog& tables;
    int scopes = 0;
};

}  // namespace zephrin::ado::providers::sqlite
