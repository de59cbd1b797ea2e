#include "platform/ado/providers/sqlite/dialect/FunctionTable.h"
#include "platform/ado/providers/sqlite/dialect/Resolver.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

/// What an expression says, whatever its blanks and the case of its names: two with one key are the same.
QString Resolver::KeyOf(const Expression& value) {
    if (value.Kind == ExpressionKind::Column) return value.Identity;
    QString key = QString::number(int(value.Kind)) + u'(' + value.Name + u',';
    if (value.IsNegated) key += QLatin1StringView("not,");
    if (value.IsDistinct) key += QLatin1StringView("distinct,");
    if (value.IsTrue) key += QLatin1StringView("true,");
    // Two subqueries are never taken for the same.
    if (value.Nested) key += QString::number(value.At.From);
    for (const ExpressionPtr& operand : value.Operands) key += KeyOf(*operand) + u',';
    return key + u')';
}

void Resolver::RefuseAggregate(const Expression* value) const {
    if (value && value->IsAggregate) throw AggregateMisplaced(speaks, Spelled(value->At), value->At.From);
}

void Resolver::CheckGroups(const SelectCore& core, const std::vector<OrderItem>& order,
                           const Scope& scope) const {
    const auto aggregates = [](const SelectItem& item) { return item.Value->IsAggregate; };
    const bool grouped =
        !core.GroupBy.empty() || core.Having || std::any_of(core.Items.begin(), core.Items.end(), aggregates);
    if (!grouped) return;
    QList<QString> keys;
    for (const ExpressionPtr& key : core.GroupBy) keys.append(KeyOf(*key));
    for (const SelectItem& item : core.Items)
        CheckGrouped(*item.Value, keys, scope, QStringLiteral("select list"));
    if (core.Having) CheckGrouped(*core.Having, keys, scope, QStringLiteral("HAVING clause"));
    for (const OrderItem& item : order)
        if (item.Value->Output < 0) CheckGrouped(*item.Value, keys, scope, QStringLiteral("ORDER BY clause"));
}

void Resolver::CheckGrouped(const Expression& value, const QList<QString>& keys, const Scope& scope,
                            const QString& clause) const {
    tables.CheckTime();
    if (value.Kind == ExpressionKind::Function && IsAggregateName(value.Name, speaks)) return;
    if (keys.contains(KeyOf(value))) return;
    const bool ofThisQuery = value.Identity.startsWith(QStringLiteral("%1:").arg(scope.Number));
    if (value.Kind == ExpressionKind::Star || (value.Kind == ExpressionKind::Column && ofThisQuery))
        throw NotGrouped(speaks, Spelled(value.At), clause, value.At.From);
    for (const ExpressionPtr& operand : value.Operands) CheckGrouped(*operand, keys, scope, clause);
}

/// Rows that were made distinct have no value left of a column that is not among them.
void Resolver::CheckDistinctOrder(const SelectCore& core, const std::vector<OrderItem>& order) const {
    QList<QString> keys;
    for (const SelectItem& item : core.Items) keys.append(KeyOf(*item.Value));
    for (const OrderItem& item : order) {
        const Expression& value = *item.Value;
        if (value.Output >= 0 || keys.contains(KeyOf(value))) continue;
        const auto inStar = [&](const QList<StarColumn>& star) {
            return value.Kind == ExpressionKind::Column &&
                   std::any_of(star.begin(), star.end(), [&](const StarColumn& column) {
                       return column.Name.compare(value.Name, Qt::CaseInsensitive) == 0;
                   });
        };
        if (std::any_of(core.Stars.begin(), core.Stars.end(), inStar)) continue;
        throw OrderNotSelected(speaks, Spelled(value.At), value.At.From);
    }
}

}  // namespace zephrin::ado::providers::sqlite
