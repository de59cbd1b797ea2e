#include "platform/ado/providers/sqlite/dialect/Resolver.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/values/Exact.h"

#include <array>

namespace zephrin::ado::providers::sqlite {

namespace {

ColumnType Plain(DataType type) {
    return {type, 0, 0, 0};
}

QString WordOf(const QString& symbol) {
    static constexpr std::array words{
        std::pair{"+", "add"},    std::pair{"-", "subtract"}, std::pair{"*", "multiply"},
        std::pair{"/", "divide"}, std::pair{"%", "modulo"},
    };
    for (const auto& [sign, word] : words)
        if (symbol == QLatin1StringView(sign)) return QString::fromLatin1(word);
    return u'\'' + symbol + u'\'';
}

/// Whether a value of one type is held in the engine as one of the other is. `chosen`: among others of that
/// type.
bool IsHeldAlike(const Expression& value, const ColumnType& to, bool chosen) {
    const ColumnType& from = value.Type;
    const Family one = FamilyOf(from), other = FamilyOf(to);
    const bool exact = IsOneOf(other, Family::Decimal | Family::Money);
    if (chosen && exact && IsWide(to))
        return one == other && IsWide(from) && !value.IsStored && from.NumericScale == to.NumericScale;
    // A whole number is an exact one too, as long as a double holds either.
    if (other == Family::Decimal && !IsWide(to))
        return one == Family::Whole || (one == other && !IsWide(from));
    if (other == Family::Decimal) return one == other && IsWide(from) && from.NumericScale == to.NumericScale;
    return one == other;
}

}  // namespace

ColumnType Resolver::TextType() const {
    return {IsFileDialect(speaks) ? DataType::VarWChar : DataType::VarChar, 255, 0, 0};
}

Family Resolver::FamilyOf(const Expression& value) const {
    return value.Kind == ExpressionKind::Null ? Family::Null : sqlite::FamilyOf(value.Type);
}

bool Resolver::IsCondition(const Expression& value) {
    switch (value.Kind) {
        case ExpressionKind::Compare:
        case ExpressionKind::Like:
        case ExpressionKind::Between:
        case ExpressionKind::InList:
        case ExpressionKind::InQuery:
        case ExpressionKind::IsNull:
        case ExpressionKind::Exists:
        case ExpressionKind::Quantified:
        case ExpressionKind::Not:
        case ExpressionKind::And:
        case ExpressionKind::Or:
        case ExpressionKind::Logic:
            return true;
        default:
            return false;
    }
}

/// On a server a condition is no value: it can't be shown, compared or reckoned with.
void Resolver::WantValue(const Expression& value) const {
    if (IsFileDialect(speaks) || !IsCondition(value)) return;
    throw SyntaxNear(speaks, value.Name.isEmpty() ? Spelled(value.At) : value.Name, value.At.From);
}

void Resolver::WantValues(const Expression& value, size_t from) const {
    for (size_t index = from; index < value.Operands.size(); ++index) WantValue(*value.Operands[index]);
}

/// On a server a value is no condition.
void Resolver::WantCondition(const Expression* value) const {
    if (!value || IsCondition(*value)) return;
    const bool taken = IsOneOf(FamilyOf(*value), Numbers | Family::Truth | Family::Null | Family::Unknown |
                                                     Family::DateTime | Family::Text);
    if (!IsFileDialect(speaks) || !taken) throw NotACondition(speaks, Spelled(value->At), value->At.From);
}

void Resolver::ConvertTo(ExpressionPtr& operand, const ColumnType& type, Asked how, bool chosen) const {
    const Family from = FamilyOf(*operand);
    const Family to = sqlite::FamilyOf(type);
    if (from == Family::Null || from == Family::Unknown || to == Family::Unknown) return;
    if (IsHeldAlike(*operand, type, chosen)) return;
    if (!MayBecome(from, to, how, speaks))
        throw NoConversion(speaks, NameOf(operand->Type, speaks), NameOf(type, speaks),
                           how == Asked::Explicitly, Spelled(operand->At), operand->At.From);
    Wrap(*operand, type);
}

/// The expression becomes the operand of a conversion that stands in its place.
void Resolver::Wrap(Expression& value, const ColumnType& type) const {
    ExpressionPtr inner = std::make_unique<Expression>(std::move(value));
    value = Expression();
    value.Kind = ExpressionKind::Convert;
    value.At = inner->At;
    value.Height = inner->Height + 1;
    value.IsAggregate = inner->IsAggregate;
    value.Name = QStringLiteral("%1,%2,%3").arg(int(type.Type)).arg(type.Precision).arg(type.NumericScale);
    value.Type = type;
    value.Operands.push_back(std::move(inner));
}

ColumnType Resolver::Unite(const std::vector<ExpressionPtr*>& operands, Meeting how) const {
    std::vector<ColumnType> types;
    for (const ExpressionPtr* const operand : operands)
        if ((*operand)->Kind != ExpressionKind::Null) types.push_back((*operand)->Type);
    const ColumnType common = CommonType(types, how, speaks);
    if (common.Type == DataType::Empty) return common;
    if (how == Meeting::Chosen) {
        // Columns of money are left as the file holds them, unless something else stands among them.
        bool plain = sqlite::FamilyOf(common) == Family::Money;
        for (const ExpressionPtr* const operand : operands)
            plain = plain && ((*operand)->Kind == ExpressionKind::Null ||
                              ((*operand)->IsStored && (*operand)->Type == common));
        for (ExpressionPtr* const operand : operands)
            if (!plain) ConvertTo(*operand, common, Asked::Implicitly, true);
        return common;
    }
    for (ExpressionPtr* const operand : operands) {
        // Numbers are compared as they are; only one of many digits has to become what it is compared with.
        const Family family = FamilyOf(**operand);
        const bool bare = IsOneOf(family, Numbers) && IsOneOf(sqlite::FamilyOf(common), Numbers);
        const bool wideToFloat = sqlite::FamilyOf(common) == Family::Float && IsWide((*operand)->Type) &&
                                 !(family == Family::Money && (*operand)->IsStored);
        if (!bare || wideToFloat) ConvertTo(*operand, common);
    }
    return common;
}

void Resolver::ResolveOperator(Expression& value) {
    switch (value.Kind) {
        case ExpressionKind::Unary:
            return ResolveSign(value);
        case ExpressionKind::Binary2:
            return ResolveArithmetic(value);
        case ExpressionKind::Compare:
        case ExpressionKind::Between:
        case ExpressionKind::InList:
        case ExpressionKind::InQuery:
        case ExpressionKind::Quantified:
            return ResolveComparison(value);
        case ExpressionKind::Like:
            WantValues(value);
            for (ExpressionPtr& operand : value.Operands) ConvertTo(operand, TextType());
            break;
        case ExpressionKind::Not:
        case ExpressionKind::And:
        case ExpressionKind::Or:
        case ExpressionKind::Logic:
            for (const ExpressionPtr& operand : value.Operands) WantCondition(operand.get());
            break;
        default:
            WantValues(value);
            break;
    }
    value.Type = Plain(DataType::Boolean);
}

void Resolver::ResolveSign(Expression& value) {
    WantValues(value);
    ExpressionPtr& operand = value.Operands.front();
    const Family family = FamilyOf(*operand);
    if (!TakesSign(value.Name, family, speaks)) {
        const QString word = value.Name == u"-" ? u"minus"_qs : value.Name == u"+" ? u"plus"_qs : u"'~'"_qs;
        throw WrongOperand(speaks, word, NameOf(operand->Type, speaks), Spelled(value.At), value.At.From);
    }
    // A plus changes nothing, not even a text.
    if (value.Name == u"-" && IsOneOf(family, Family::Text | Family::DateTime | Family::Time))
        ConvertTo(operand, Plain(DataType::Double));
    value.Type = operand->Type;
    value.IsStored = value.Name == u"+" && operand->IsStored;
    if (family == Family::Null) value.Type = Plain(DataType::Integer);
    if (value.Name != u"-") return;
    if (family == Family::Truth) value.Type = Plain(DataType::Integer);
    if (value.Type.Type == DataType::UnsignedTinyInt) value.Type = Plain(DataType::SmallInt);
}

void Resolver::ResolveArithmetic(Expression& value) {
    WantValues(value);
    ExpressionPtr& left = value.Operands[0];
    ExpressionPtr& right = value.Operands[1];
    const bool file = IsFileDialect(speaks);
    value.What = RuleFor(value.Name, FamilyOf(*left), FamilyOf(*right), speaks);
    // A Null is reckoned with as the other side is.
    if (left->Kind == ExpressionKind::Null) left->Type = right->Type;
    if (right->Kind == ExpressionKind::Null) right->Type = left->Type;
    const ColumnType number = Plain(file ? DataType::Double : DataType::Integer);
    const auto numberOf = [&](ExpressionPtr& operand, const ColumnType& other) {
        const Family family = sqlite::FamilyOf(operand->Type);
        if (family == Family::Unknown) operand->Type = number;
        if (!IsOneOf(family, Family::Text | Family::DateTime | Family::Time)) return;
        // A server reads a text as the type of the other side, a file as any number. Products that speak the
        // server's dialect don't agree on whether 1e2 is exact; an empty text is taken for 0 by one reading
        // alone.
        const bool isLiteral = value.Operands[&operand == &left ? 1 : 0]->Kind == ExpressionKind::Number;
        const bool asOther = !file && IsOneOf(sqlite::FamilyOf(other), Numbers);
        const bool doubtful = asOther && isLiteral && sqlite::FamilyOf(other) == Family::Float;
        ConvertTo(operand, doubtful ? ExactType(MostDigits, 10) : asOther ? other : Plain(DataType::Double));
        if (operand->Kind == ExpressionKind::Null) operand->Type = number;
    };
    switch (value.What) {
        case Does::Refuse:
            throw WrongOperands(speaks, WordOf(value.Name), NameOf(left->Type, speaks),
                                NameOf(right->Type, speaks), Spelled(value.At), value.At.From);
        case Does::Join: {
            ConvertTo(left, TextType());
            ConvertTo(right, TextType());
            const bool wide = left->Type.Type == DataType::VarWChar ||
                              right->Type.Type == DataType::VarWChar || left->Type.Type == DataType::WChar ||
                              right->Type.Type == DataType::WChar;
            value.Type = {wide || file ? DataType::VarWChar : DataType::VarChar, 255, 0, 0};
            break;
        }
        case Does::Reckon:
        case Does::Divide: {
            const ColumnType leftType = left->Type;
            numberOf(left, right->Type);
            numberOf(right, leftType);
            const bool exact = sqlite::FamilyOf(left->Type) == Family::Decimal ||
                               sqlite::FamilyOf(right->Type) == Family::Decimal;
            if (value.What == Does::Divide && !exact)
                value.Type = Plain(DataType::Double);
            else
                value.Type = ResultOf(value.Name, left->Type, right->Type, speaks);
            break;
        }
        case Does::Whole:
        case Does::Power:
            for (ExpressionPtr* const operand : {&left, &right})
                if (sqlite::FamilyOf((*operand)->Type) != Family::Whole)
                    ConvertTo(*operand, Plain(DataType::Double));
            value.Type = Plain(value.What == Does::Power ? DataType::Double : DataType::Integer);
            if (left->Type.Type == DataType::BigInt && value.What == Does::Whole)
                value.Type = Plain(DataType::BigInt);
            break;
        case Does::Move:
            // Of two texts that could be a date, the one that stands for days is a number in a file.
            for (ExpressionPtr* const operand : {&left, &right}) {
                const Family family = sqlite::FamilyOf((*operand)->Type);
                if (family == Family::Text) ConvertTo(*operand, file ? Plain(DataType::Double) : DateType());
                if (IsOneOf(family, Family::Decimal | Family::Money))
                    ConvertTo(*operand, Plain(DataType::Double));
            }
            value.Type = DateType();
            break;
        case Does::Between:
            value.Type = Plain(DataType::Double);
            break;
        case Does::Bits:
            value.Type = ResultOf(value.Name, left->Type, right->Type, speaks);
            if (sqlite::FamilyOf(value.Type) == Family::Unknown) value.Type = Plain(DataType::BigInt);
            break;
        case Does::AsFound:
            break;
    }
}

/// Everything that is compared becomes of one type; an empty text is 0 to a number and the first of the
/// calendar to a date, where the server says so.
void Resolver::ResolveComparison(Expression& value) {
    WantValues(value);
    std::vector<ExpressionPtr*> operands;
    Families families = 0;
    for (ExpressionPtr& operand : value.Operands) {
        operands.push_back(&operand);
        families = families | FamilyOf(*operand);
    }
    // In a file any number but 0 is as true as another; only an order goes by the number.
    const bool equals = value.Name.isEmpty() || value.Name == u"=" || value.Name == u"<>";
    const bool orders = value.Kind == ExpressionKind::Between || !equals;
    const bool truths = IsFileDialect(speaks) && (families & Families(Family::Truth)) &&
                        (families & Numbers) && !(families & Families(Family::Text)) && !orders;
    if (truths)
        for (ExpressionPtr* const operand : operands) ConvertTo(*operand, Plain(DataType::Boolean));
    else
        Unite(operands, Meeting::Compared);
    value.Type = Plain(DataType::Boolean);
}

}  // namespace zephrin::ado::providers::sqlite
