#include "platform/ado/providers/sqlite/dialect/Resolver.h"

#include "platform/ado/providers/sqlite/dialect/Limits.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/values/Exact.h"

#include <QSet>

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

namespace {

bool SameName(const QString& left, const QString& right) {
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

}  // namespace

void Resolver::Resolve(Statement& statement) {
    if (statement.Kind == StatementKind::Insert || statement.Kind == StatementKind::Update ||
        statement.Kind == StatementKind::Delete)
        ResolveChange(statement);
    else if (statement.Body)
        ResolveQuery(*statement.Body, nullptr);
}

Resolver::Scope Resolver::NewScope(const Scope* outer) {
    return {{}, outer, ++scopes};
}

QList<OutputColumn> Resolver::ResolveQuery(Query& query, const Scope* outer) {
    QList<OutputColumn> output;
    for (QueryArm& arm : query.Arms) {
        QList<OutputColumn> columns;
        if (arm.Nested) {
            columns = ResolveQuery(*arm.Nested, outer);
        } else {
            Scope scope = NewScope(outer);
            ResolveCore(arm.Core, scope);
            columns = arm.Core.Output;
            if (query.Arms.size() == 1) {
                ResolveOrder(query, &scope);
                CheckGroups(arm.Core, query.OrderBy, scope);
                if (arm.Core.Distinct) CheckDistinctOrder(arm.Core, query.OrderBy);
            } else {
                CheckGroups(arm.Core, {}, scope);
            }
        }
        // The first arm names the columns of all.
        if (output.isEmpty()) output = columns;
    }
    if (query.Arms.size() > 1) UniteArms(query, output);
    if (query.Arms.size() > 1 || query.Arms.front().Nested) {
        for (OrderItem& item : query.OrderBy) {
            if (ResolveOrdinal(*item.Value, output)) continue;
            if (item.Value->Kind != ExpressionKind::Column ||
                !ResolveAlias(*item.Value, output, false, nullptr))
                throw NoSuchColumn(speaks, item.Value->Qualifier, item.Value->Name, item.Value->At.From);
        }
    }
    return output;
}

namespace {

QList<OutputColumn>& OutputOf(QueryArm& arm) {
    return arm.Nested ? OutputOf(arm.Nested->Arms.front()) : arm.Core.Output;
}

/// Writes stars out as the columns that they stand for, so that one of them can be converted.
void WriteOutStars(SelectCore& core) {
    std::vector<SelectItem> items;
    size_t star = 0;
    for (SelectItem& item : core.Items) {
        if (item.Value->Kind != ExpressionKind::Star) {
            items.push_back(std::move(item));
            continue;
        }
        for (const StarColumn& column : core.Stars[star]) {
            ExpressionPtr value = std::make_unique<Expression>();
            value->Kind = ExpressionKind::Column;
            value->At = item.Value->At;
            value->Qualifier = column.Source;
            value->Name = column.Name;
            value->Type = column.Type;
            value->IsStored = column.IsStored;
            items.push_back({std::move(value), QString()});
        }
        ++star;
    }
    core.Items = std::move(items);
    core.Stars.clear();
}

}  // namespace

/// The columns of all arms become of one type each.
void Resolver::UniteArms(Query& query, QList<OutputColumn>& output) {
    for (QueryArm& arm : query.Arms)
        if (OutputOf(arm).size() != output.size())
            throw Failure(
                FailureNumber::Statement,
                QStringLiteral("All queries combined using a UNION, INTERSECT or EXCEPT operator must have "
                               "an equal number of expressions in their target lists."),
                arm.Core.At.From);
    for (qsizetype column = 0; column < output.size(); ++column) {
        std::vector<ColumnType> types;
        bool differ = false;
        for (QueryArm& arm : query.Arms) {
            const OutputColumn& one = OutputOf(arm)[column];
            output[column].IsStored = output[column].IsStored || one.IsStored;
            const bool isNull = !arm.Nested && arm.Core.Stars.empty() &&
                                arm.Core.Items[size_t(column)].Value->Kind == ExpressionKind::Null;
            if (isNull) continue;
            types.push_back(one.Type);
            differ = differ || !(one.Type == types.front());
        }
        if (types.empty()) continue;
        const ColumnType common = CommonType(types, Meeting::Chosen, speaks);
        const bool stored = output[column].IsStored;
        output[column].Type = common;
        OutputColumn& first = OutputOf(query.Arms.front())[column];
        first.IsStored = stored;
        const ColumnType own = first.Type;
        first.Type = common;
        if (!differ && !(IsWide(common) && stored)) continue;
        for (QueryArm& arm : query.Arms) {
            if (arm.Nested) {
                const ColumnType& type = &arm == &query.Arms.front() ? own : OutputOf(arm)[column].Type;
                if (sqlite::FamilyOf(type) == sqlite::FamilyOf(common)) continue;
                throw NoConversion(speaks, NameOf(OutputOf(arm)[column].Type, speaks), NameOf(common, speaks),
                                   false, output[column].Name, arm.Core.At.From);
            }
            if (!arm.Core.Stars.empty() && arm.Core.StarsAreDistinct) WriteOutStars(arm.Core);
            if (!arm.Core.Stars.empty()) continue;
            ConvertTo(arm.Core.Items[size_t(column)].Value, common, Asked::Implicitly, true);
            arm.Core.Output[column].Type = common;
        }
    }
}

void Resolver::ResolveCore(SelectCore& core, Scope& scope) {
    for (const SourcePtr& source : core.From) AddSource(*source, scope);
    for (const SourcePtr& source : core.From) ResolveConditions(*source, scope);
    ResolveItems(core, scope);
    if (core.Where) {
        ResolveExpression(*core.Where, scope);
        WantCondition(core.Where.get());
        RefuseAggregate(core.Where.get());
    }
    for (const ExpressionPtr& key : core.GroupBy) {
        ResolveExpression(*key, scope);
        WantValue(*key);
        RefuseAggregate(key.get());
    }
    if (!core.Having) return;
    ResolveExpression(*core.Having, scope);
    WantCondition(core.Having.get());
}

/// A name in ORDER BY means an alias of the query before it means a column.
void Resolver::ResolveOrder(Query& query, const Scope* scope) {
    const SelectCore& core = query.Arms.front().Core;
    for (OrderItem& item : query.OrderBy) {
        Expression& value = *item.Value;
        if (ResolveOrdinal(value, core.Output)) continue;
        if (value.Kind == ExpressionKind::Column && ResolveAlias(value, core.Output, true, &core)) continue;
        ResolveExpression(value, *scope);
        WantValue(value);
    }
}

/// A number in ORDER BY is the place of a column.
bool Resolver::ResolveOrdinal(Expression& value, const QList<OutputColumn>& output) const {
    if (value.Kind != ExpressionKind::Number) return false;
    bool whole = false;
    const qint64 place = value.Name.toLongLong(&whole);
    if (!whole || place < 1 || place > output.size())
        throw Failure(
            FailureNumber::Statement,
            QStringLiteral("The ORDER BY position number %1 is out of range of the number of items in the "
                           "select list.")
                .arg(value.Name),
            value.At.From);
    value.Output = int(place - 1);
    value.Type = output[place - 1].Type;
    return true;
}

bool Resolver::ResolveAlias(Expression& value, const QList<OutputColumn>& output, bool aliasesOnly,
                            const SelectCore* core) {
    if (aliasesOnly && !value.Qualifier.isEmpty()) return false;
    for (qsizetype index = 0; index < output.size(); ++index) {
        if (!SameName(output[index].Name, value.Name)) continue;
        if (aliasesOnly) {
            const auto aliased = [&](const SelectItem& item) { return SameName(item.Alias, value.Name); };
            if (std::none_of(core->Items.begin(), core->Items.end(), aliased)) continue;
        }
        value.Qualifier.clear();
        value.Type = output[index].Type;
        value.Output = int(index);
        return true;
    }
    return false;
}

Resolver::ScopeSource Resolver::TableScope(const QString& name, const QString& alias, const Range& at) const {
    const CatalogTable* const table = tables.Find(name);
    if (!table) throw NoSuchTable(speaks, name, at.From);
    return {alias.isEmpty() ? name : alias, table->Columns};
}

void Resolver::AddSource(Source& source, Scope& scope) {
    if (source.Kind == SourceKind::Join) {
        AddSource(*source.Left, scope);
        AddSource(*source.Right, scope);
        return;
    }
    if (source.Kind == SourceKind::Table) {
        scope.Sources.push_back(TableScope(source.Name, source.Alias, source.At));
        return;
    }
    ScopeSource derived{source.Alias, {}};
    for (const OutputColumn& column : ResolveQuery(*source.Nested, scope.Outer))
        derived.Columns.append({column.Name, column.Type, column.IsStored});
    scope.Sources.push_back(std::move(derived));
}

void Resolver::ResolveConditions(Source& source, const Scope& scope) {
    if (source.Kind != SourceKind::Join) return;
    ResolveConditions(*source.Left, scope);
    ResolveConditions(*source.Right, scope);
    if (!source.On) return;
    ResolveExpression(*source.On, scope);
    WantCondition(source.On.get());
    RefuseAggregate(source.On.get());
}

void Resolver::ResolveItems(SelectCore& core, const Scope& scope) {
    int unnamed = 1000;
    for (SelectItem& item : core.Items) {
        if (item.Value->Kind == ExpressionKind::Star) {
            ExpandStar(*item.Value, core, scope);
            continue;
        }
        ResolveExpression(*item.Value, scope);
        WantValue(*item.Value);
        OutputColumn column{item.Alias, item.Value->Type, true, item.Value->IsStored};
        if (item.Alias.isEmpty() && item.Value->Kind == ExpressionKind::Column) {
            column.Name = item.Value->Name;
            column.Source = item.Value->Qualifier;
        }
        if (column.Name.isEmpty()) {
            // The server leaves an expression without a name, a file numbers it.
            column.IsNamed = false;
            if (IsFileDialect(speaks)) column.Name = QStringLiteral("Expr%1").arg(unnamed++);
        }
        if (core.Output.size() >= Limits::Columns) throw TooManyColumns(item.Value->At.From);
        core.Output.append(column);
    }
}

void Resolver::ExpandStar(const Expression& star, SelectCore& core, const Scope& scope) {
    QList<StarColumn> columns;
    bool found = false;
    QSet<QString> seen;
    for (const ScopeSource& source : scope.Sources) {
        if (!star.Qualifier.isEmpty() && !SameName(source.Name, star.Qualifier)) continue;
        found = true;
        for (const CatalogColumn& column : source.Columns) {
            const QString key = source.Name.toCaseFolded() + QChar(1) + column.Name.toCaseFolded();
            if (seen.contains(key) || source.Name.isEmpty()) core.StarsAreDistinct = false;
            seen.insert(key);
            if (core.Output.size() >= Limits::Columns) throw TooManyColumns(star.At.From);
            columns.append({source.Name, column.Name, column.Type, column.IsStored});
            core.Output.append({column.Name, column.Type, true, column.IsStored, source.Name});
        }
    }
    if (!found) {
        if (star.Qualifier.isEmpty()) throw SyntaxNear(speaks, QStringLiteral("*"), star.At.From);
        throw NoSuchColumn(speaks, star.Qualifier, QStringLiteral("*"), star.At.From);
    }
    core.Stars.push_back(std::move(columns));
}

void Resolver::ResolveChange(Statement& statement) {
    Scope scope = NewScope(nullptr);
    scope.Sources.push_back(TableScope(statement.Name, QString(), statement.NameAt));
    const QList<CatalogColumn> columns = scope.Sources.front().Columns;
    for (Assignment& assignment : statement.Assignments) {
        const auto found = std::find_if(columns.begin(), columns.end(), [&](const CatalogColumn& column) {
            return SameName(column.Name, assignment.Column);
        });
        if (found == columns.end())
            throw NoSuchColumn(speaks, QString(), assignment.Column, assignment.At.From);
        assignment.Type = found->Type;
        ResolveExpression(*assignment.Value, scope);
        WantValue(*assignment.Value);
    }
    if (statement.Where) {
        ResolveExpression(*statement.Where, scope);
        WantCondition(statement.Where.get());
    }
    const Scope none = NewScope(nullptr);
    for (std::vector<ExpressionPtr>& row : statement.Rows)
        for (ExpressionPtr& value : row) ResolveExpression(*value, none);
    if (statement.Body) ResolveQuery(*statement.Body, nullptr);
}

}  // namespace zephrin::ado::providers::sqlite
