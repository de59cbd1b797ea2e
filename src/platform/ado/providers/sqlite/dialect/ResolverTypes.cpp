#include "platform/ado/providers/sqlite/dialect/FunctionTable.h"
#include "platform/ado/providers/sqlite/dialect/Resolver.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

namespace {

bool SameName(const QString& left, const QString& right) {
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

ColumnType Plain(DataType type) {
    return {type, 0, 0, 0};
}

ColumnType TextType() {
    return {DataType::VarWChar, 255, 0, 0};
}

/// The wider of two numbers: floating point, then money, then whole.
DataType Wider(DataType left, DataType right) {
    if (left == right) return left;
    if (left == DataType::Boolean) left = DataType::Integer;
    if (right == DataType::Boolean) right = DataType::Integer;
    if (IsIntegerType(left) && IsIntegerType(right))
        return left == DataType::BigInt || right == DataType::BigInt ? DataType::BigInt : DataType::Integer;
    const auto isMoneyOrWhole = [](DataType type) {
        return type == DataType::Currency || IsIntegerType(type);
    };
    return isMoneyOrWhole(left) && isMoneyOrWhole(right) ? DataType::Currency : DataType::Double;
}

DataType TypeOfNumber(const QString& digits) {
    bool whole = false;
    const qint64 value = digits.toLongLong(&whole);
    if (!whole) return DataType::Double;
    return value == qint32(value) ? DataType::Integer : DataType::BigInt;
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
        if (value.Kind == ExpressionKind::Subquery) value.Type = output.front().Type;
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
    // The server has no words for truth; people who know other dialects type them all the same.
    const bool isTrue = SameName(column.Name, QStringLiteral("true"));
    if (column.Qualifier.isEmpty() && (isTrue || SameName(column.Name, QStringLiteral("false")))) {
        column.Kind = ExpressionKind::Truth;
        column.IsTrue = isTrue;
        column.Type = Plain(DataType::Boolean);
        return;
    }
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
            column.Identity =
                QStringLiteral("%1:%2:%3").arg(scope.Number).arg(index).arg(candidate.Name.toCaseFolded());
        }
    }
    return found;
}

void Resolver::SetType(Expression& value) const {
    switch (value.Kind) {
        case ExpressionKind::Number:
            value.Type = Plain(TypeOfNumber(value.Name));
            break;
        case ExpressionKind::Text:
            value.Type = TextType();
            break;
        case ExpressionKind::Date:
            value.Type = DateType();
            break;
        case ExpressionKind::Binary:
            value.Type = Plain(DataType::VarBinary);
            break;
        case ExpressionKind::Unary:
            value.Type = value.Operands.front()->Type;
            if (value.Type.Type == DataType::Boolean) value.Type = Plain(DataType::Integer);
            break;
        case ExpressionKind::Binary2:
            value.Type = TypeOfArithmetic(value);
            break;
        case ExpressionKind::Cast:
            value.Type = TypeOfDeclaration(value.Name, speaks);
            break;
        case ExpressionKind::Case:
            value.Type = TypeOfBranches(value);
            break;
        case ExpressionKind::Function:
            value.Type = TypeOfFunction(value);
            break;
        case ExpressionKind::Null:
        case ExpressionKind::Subquery:
        case ExpressionKind::Keyword:
        case ExpressionKind::Star:
        case ExpressionKind::Column:
            break;
        default:
            value.Type = Plain(DataType::Boolean);
            break;
    }
}

ColumnType Resolver::TypeOfArithmetic(const Expression& value) const {
    const DataType left = value.Operands[0]->Type.Type;
    const DataType right = value.Operands[1]->Type.Type;
    const bool file = IsFileDialect(speaks);
    if (value.Name == u"&" && file) return TextType();
    if (value.Name == u"^" && file) return Plain(DataType::Double);
    if (value.Name == u"\\" || value.Name == u"MOD") return Plain(DataType::Integer);
    if (value.Name == u"+" && IsTextType(left) && IsTextType(right)) return TextType();
    if (IsDateType(left) || IsDateType(right)) {
        if (value.Name == u"-" && IsDateType(left) && IsDateType(right)) return Plain(DataType::Double);
        return DateType();
    }
    const auto isNumber = [](DataType type) { return IsNumberType(type) || type == DataType::Boolean; };
    if (!isNumber(left) || !isNumber(right)) return {};
    if (value.Name == u"/" && file) return Plain(DataType::Double);
    const DataType wider = Wider(left, right);
    return Plain(wider == DataType::Boolean ? DataType::Integer : wider);
}

/// The branches of CASE, or what IIF chooses from: their common type, the wider where they are numbers.
ColumnType Resolver::TypeOfBranches(const Expression& value) const {
    ColumnType common;
    const size_t count = value.Operands.size();
    for (size_t index = value.Kind == ExpressionKind::Case && value.HasOperand ? 2 : 1; index < count;) {
        const ColumnType& type = value.Operands[index]->Type;
        if (value.Operands[index]->Kind != ExpressionKind::Null) {
            if (common.Type == DataType::Empty)
                common = type;
            else if (IsNumberType(common.Type) && IsNumberType(type.Type))
                common = common == type ? type : Plain(Wider(common.Type, type.Type));
            else if (common.Type != type.Type)
                return {};
        }
        // THEN stands on every second place; behind the last one there may be an ELSE.
        const bool elseFollows = value.Kind == ExpressionKind::Case && value.HasElse && index + 2 == count;
        index += value.Kind != ExpressionKind::Case || elseFollows ? 1 : 2;
    }
    return common;
}

ColumnType Resolver::TypeOfFunction(const Expression& call) const {
    if (IsAggregateName(call.Name, speaks)) return TypeOfAggregate(call);
    const FunctionInfo* const info = FindFunction(call.Name, speaks);
    if (!info) return {};
    const int count = int(call.Operands.size());
    if (count < info->LeastArguments || count > info->MostArguments || call.IsStar)
        throw WrongArguments(speaks, call.Name, call.At.From);
    switch (info->Result) {
        case Gives::Text:
            return TextType();
        case Gives::Integer:
            return Plain(DataType::Integer);
        case Gives::Double:
            return Plain(DataType::Double);
        case Gives::Date:
            return DateType();
        case Gives::Truth:
            return Plain(DataType::Boolean);
        case Gives::AsBranches:
            return TypeOfBranches(call);
        case Gives::AsFirst:
            return call.Operands.front()->Type;
        case Gives::Anything:
            break;
    }
    return {};
}

ColumnType Resolver::TypeOfAggregate(const Expression& call) const {
    const bool counts = call.Name.startsWith(QLatin1StringView("COUNT"));
    if (call.Operands.size() != 1 && !(call.IsStar && counts))
        throw WrongArguments(speaks, call.Name, call.At.From);
    if (counts) return Plain(DataType::Integer);
    const ColumnType& argument = call.Operands.front()->Type;
    static const QList<QString> keeping{u"MIN"_qs, u"MAX"_qs, u"FIRST"_qs, u"LAST"_qs};
    if (keeping.contains(call.Name)) return argument;
    if (IsTextType(argument.Type)) throw IncompatibleTypes(speaks, Spelled(call.At), call.At.From);
    if (call.Name != u"SUM" && call.Name != u"AVG") return Plain(DataType::Double);
    if (argument.Type == DataType::Currency) return argument;
    if (IsFileDialect(speaks)) return argument.Type == DataType::Empty ? argument : Plain(DataType::Double);
    if (IsIntegerType(argument.Type))
        return Plain(argument.Type == DataType::BigInt ? DataType::BigInt : DataType::Integer);
    return IsNumberType(argument.Type) ? Plain(DataType::Double) : ColumnType{};
}

}  // namespace zephrin::ado::providers::sqlite
