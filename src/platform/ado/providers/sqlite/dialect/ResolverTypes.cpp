#include "platform/ado/providers/sqlite/dialect/FunctionTable.h"
#include "platform/ado/providers/sqlite/dialect/Resolver.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/values/Exact.h"

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

namespace {

bool SameName(const QString& left, const QString& right) {
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

ColumnType Plain(DataType type) {
    return {type, 0, 0, 0};
}

}  // namespace

ColumnType Resolver::DateType() const {
    return Plain(IsFileDialect(speaks) ? DataType::Date : DataType::DBTimeStamp);
}

void Resolver::ResolveExpression(Expression& value, const Scope& scope) {
    tables.CheckTime();
    if (value.Kind == ExpressionKind::Column) return ResolveColumn(value, scope);
    for (const ExpressionPtr& operand : value.Operands) {
        ResolveExpression(*operand, scope);
        value.IsAggregate = value.IsAggregate || operand->IsAggregate;
    }
    if (value.Nested) {
        const QList<OutputColumn> output = ResolveQuery(*value.Nested, &scope);
        if (value.Kind != ExpressionKind::Exists && output.size() != 1)
            throw Failure(FailureNumber::Statement,
                          QStringLiteral("A subquery in an expression must have exactly one column."),
                          value.At.From);
        if (value.Kind == ExpressionKind::Subquery) {
            value.Type = output.front().Type;
            value.IsStored = output.front().IsStored;
        } else if (value.Kind != ExpressionKind::Exists) {
            // What the query gives is compared like an operand.
            ExpressionPtr nested = std::make_unique<Expression>();
            nested->Kind = ExpressionKind::Column;
            nested->At = value.At;
            nested->Name = QStringLiteral("zx_v");
            nested->Type = output.front().Type;
            nested->IsStored = output.front().IsStored;
            value.Operands.push_back(std::move(nested));
        }
    }
    if (value.Kind == ExpressionKind::Function && IsAggregateName(value.Name, speaks)) {
        if (value.IsAggregate) throw AggregateMisplaced(speaks, Spelled(value.At), value.At.From);
        value.IsAggregate = true;
    }
    SetType(value);
}

void Resolver::ResolveColumn(Expression& column, const Scope& scope) {
    for (const Scope* around = &scope; around; around = around->Outer)
        if (FindColumn(column, *around)) return;
    throw NoSuchColumn(speaks, column.Qualifier, column.Name, column.At.From);
}

bool Resolver::FindColumn(Expression& column, const Scope& scope) const {
    bool found = false;
    for (size_t index = 0; index < scope.Sources.size(); ++index) {
        const ScopeSource& source = scope.Sources[index];
        if (!column.Qualifier.isEmpty() && !SameName(source.Name, column.Qualifier)) continue;
        for (const CatalogColumn& candidate : source.Columns) {
            if (!SameName(candidate.Name, column.Name)) continue;
            if (found) throw AmbiguousColumn(speaks, column.Name, column.At.From);
            found = true;
            column.Type = candidate.Type;
            column.IsStored = candidate.IsStored;
            column.Table = candidate.Table;
            column.Identity =
                QStringLiteral("%1:%2:%3").arg(scope.Number).arg(index).arg(candidate.Name.toCaseFolded());
        }
    }
    return found;
}

/// A number is as exact as it is typed, and as narrow as its digits.
ColumnType Resolver::TypeOfNumber(const Expression& number) const {
    const QString& digits = number.Name;
    if (text.at(number.At.From) == u'$') return MoneyType();
    if (digits.contains(u'e', Qt::CaseInsensitive)) return Plain(DataType::Double);
    bool whole = false;
    const qint64 value = digits.toLongLong(&whole);
    QString significant = digits;
    while (significant.startsWith(u'0')) significant.remove(0, 1);
    const int count = int(significant.size() - significant.count(u'.'));
    if (whole && value == qint32(value)) return {DataType::Integer, 0, std::max(count, 1), 0};
    if (IsFileDialect(speaks)) return Plain(DataType::Double);
    const qsizetype point = digits.indexOf(u'.');
    const int scale = point < 0 ? 0 : int(digits.size() - point - 1);
    const int precision = std::max({count, scale, 1});
    if (precision > MostDigits)
        throw Failure(
            FailureNumber::Overflow,
            QStringLiteral("The number '%1' is out of the range for numeric representation (maximum "
                           "precision 38).")
                .arg(digits),
            number.At.From);
    return {DataType::Numeric, 0, precision, scale};
}

void Resolver::SetType(Expression& value) {
    const bool isOperator =
        IsCondition(value) || value.Kind == ExpressionKind::Unary || value.Kind == ExpressionKind::Binary2;
    if (isOperator) return ResolveOperator(value);
    switch (value.Kind) {
        case ExpressionKind::Number:
            value.Type = TypeOfNumber(value);
            // Money stands there as a column would hold it.
            value.IsStored = sqlite::FamilyOf(value.Type) == Family::Money;
            break;
        case ExpressionKind::Text:
            value.Type = {IsFileDialect(speaks) ? DataType::VarWChar : DataType::VarChar,
                          int(value.Name.size()), 0, 0};
            if (!IsFileDialect(speaks) && text.at(value.At.From) != u'\'')
                value.Type.Type = DataType::VarWChar;
            break;
        case ExpressionKind::Date:
            value.Type = DateType();
            break;
        case ExpressionKind::Truth:
            value.Type = Plain(DataType::Boolean);
            break;
        case ExpressionKind::Binary:
            value.Type = Plain(DataType::VarBinary);
            break;
        case ExpressionKind::Cast:
            ResolveCast(value);
            break;
        case ExpressionKind::Case:
            ResolveCase(value);
            break;
        case ExpressionKind::Function:
            ResolveFunction(value);
            break;
        default:
            break;
    }
}

}  // namespace zephrin::ado::providers::sqlite
