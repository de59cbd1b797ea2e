#include "platform/ado/providers/sqlite/dialect/FunctionTable.h"
#include "platform/ado/providers/sqlite/dialect/Resolver.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/values/Exact.h"

#include <cstring>

namespace zephrin::ado::providers::sqlite {

namespace {

ColumnType Plain(DataType type) {
    return {type, 0, 0, 0};
}

/// The least type of a server's functions of numbers: small whole numbers become int, a bit floating point.
ColumnType AsNumber(const ColumnType& type) {
    switch (FamilyOf(type)) {
        case Family::Whole:
            return Plain(type.Type == DataType::BigInt ? DataType::BigInt : DataType::Integer);
        case Family::Decimal:
            return ExactType(MostDigits, type.NumericScale);
        case Family::Money:
            return MoneyType();
        case Family::Unknown:
            return {};
        default:
            return Plain(DataType::Double);
    }
}

}  // namespace

void Resolver::TakeArgument(ExpressionPtr& argument, char as) const {
    const Family family = FamilyOf(*argument);
    switch (as) {
        case 't':
            return ConvertTo(argument, TextType());
        case 'n':
            if (family != Family::Whole && family != Family::Truth)
                ConvertTo(argument, Plain(DataType::Double));
            return;
        case 'i':
            if (family != Family::Truth) ConvertTo(argument, Plain(DataType::Integer));
            return;
        case 'x':
            if (family == Family::Null) argument->Type = Plain(DataType::Integer);
            if (!IsOneOf(family, Numbers)) ConvertTo(argument, Plain(DataType::Double));
            return;
        case 'd':
            if (family != Family::Date) ConvertTo(argument, DateType());
            return;
        case 'f':
            if (IsOneOf(family, Family::DateTime | Family::Date)) return;
            if (IsOneOf(family, Numbers)) return ConvertTo(argument, Plain(DataType::Double));
            if (IsFileDialect(speaks) || IsOneOf(family, Family::Unknown | Family::Null)) return;
            throw WrongArgument(speaks, NameOf(argument->Type, speaks), QStringLiteral("FORMAT"),
                                Spelled(argument->At), argument->At.From);
        case 'c':
            return WantCondition(argument.get());
        default:
            return;
    }
}

void Resolver::ResolveArguments(Expression& call, const FunctionInfo& info) {
    // INSTR may begin with where to begin.
    const bool placed = call.Name == u"INSTR" && call.Operands.size() > 2;
    const char* const takes = placed ? "itti" : info.Takes;
    const size_t last = std::strlen(takes) - 1;
    for (size_t index = 0; index < call.Operands.size(); ++index) {
        const char as = takes[std::min(index, last)];
        if (as != 'c') WantValue(*call.Operands[index]);
        TakeArgument(call.Operands[index], as);
    }
}

void Resolver::ResolveFunction(Expression& call) {
    if (IsAggregateName(call.Name, speaks)) return ResolveAggregate(call);
    const FunctionInfo* const info = FindFunction(call.Name, speaks);
    if (!info) throw NoSuchFunction(speaks, text.sliced(call.At.From, call.Name.size()), call.At.From);
    const int count = int(call.Operands.size());
    if (count < info->LeastArguments || count > info->MostArguments || call.IsStar)
        throw WrongArguments(speaks, call.Name, call.At.From);
    const ColumnType given = count > 0 ? call.Operands.front()->Type : ColumnType();
    const ColumnType date = count > 0 ? call.Operands.back()->Type : ColumnType();
    // What stands for a Null that nobody named: nothing of the first value's kind.
    if (call.Name == u"NZ" && count == 1) {
        const bool isNumber = IsOneOf(sqlite::FamilyOf(given), Numbers | Family::Truth | Family::DateTime);
        ExpressionPtr nothing = std::make_unique<Expression>();
        nothing->Kind = isNumber ? ExpressionKind::Number : ExpressionKind::Text;
        nothing->At = call.At;
        nothing->Name = isNumber ? QStringLiteral("0") : QString();
        nothing->Type = isNumber ? ColumnType{DataType::Integer, 0, 1, 0} : TextType();
        call.Operands.push_back(std::move(nothing));
    }
    ResolveArguments(call, *info);
    std::vector<ExpressionPtr*> all;
    for (ExpressionPtr& operand : call.Operands) all.push_back(&operand);
    const auto anyStored = [&](size_t from) {
        for (size_t index = from; index < call.Operands.size(); ++index)
            call.IsStored = call.IsStored || call.Operands[index]->IsStored;
    };
    switch (info->Result) {
        case Gives::Text:
            call.Type = TextType();
            break;
        case Gives::Integer:
            call.Type = Plain(DataType::Integer);
            break;
        case Gives::Double:
            call.Type = Plain(DataType::Double);
            break;
        case Gives::Date:
            call.Type = DateType();
            break;
        case Gives::Truth:
            call.Type = Plain(DataType::Boolean);
            break;
        case Gives::AsDate:
            call.Type = sqlite::FamilyOf(date) == Family::Date ? date : DateType();
            break;
        case Gives::AsBranches:
            all.erase(all.begin());
            call.Type = Unite(all, Meeting::Chosen);
            anyStored(1);
            break;
        case Gives::AsAll:
            if (call.Name == u"NULLIF") {
                Unite(all, Meeting::Compared);
                call.Type = call.Operands.front()->Type;
            } else {
                call.Type = Unite(all, Meeting::Chosen);
            }
            anyStored(0);
            break;
        case Gives::AsFirst:
            if (call.Operands.front()->Kind == ExpressionKind::Null) {
                call.Type = call.Operands.back()->Type;
            } else {
                // What is held differently is brought into one form, in the type of the first value.
                const Expression& first = *call.Operands.front();
                const bool plain =
                    first.IsStored && call.Operands.back()->IsStored && call.Operands.back()->Type == given;
                for (ExpressionPtr* const operand : all)
                    if (!plain) ConvertTo(*operand, given, Asked::Implicitly, true);
                call.Type = given;
            }
            anyStored(0);
            break;
        case Gives::AsNumber:
            call.Type = AsNumber(call.Operands.front()->Type);
            break;
        case Gives::AsWhole:
            call.Type = AsNumber(call.Operands.front()->Type);
            if (sqlite::FamilyOf(call.Type) == Family::Decimal) call.Type = ExactType(MostDigits, 0);
            // The whole days of a date are a date.
            if (sqlite::FamilyOf(given) == Family::DateTime) Wrap(call, DateType());
            break;
        case Gives::AsPower: {
            const ColumnType power = AsNumber(call.Operands.front()->Type);
            ConvertTo(call.Operands.front(), Plain(DataType::Double));
            call.Type = Plain(DataType::Double);
            if (power.Type != DataType::Double) Wrap(call, power);
            break;
        }
    }
}

void Resolver::ResolveAggregate(Expression& call) {
    const bool counts = call.Name.startsWith(QLatin1StringView("COUNT"));
    if (call.Operands.size() != 1 && !(call.IsStar && counts))
        throw WrongArguments(speaks, call.Name, call.At.From);
    if (!call.IsStar) WantValues(call);
    call.Type = Plain(call.Name == u"COUNT_BIG" ? DataType::BigInt : DataType::Integer);
    if (counts) return;
    ExpressionPtr& argument = call.Operands.front();
    const bool file = IsFileDialect(speaks);
    const Family family = FamilyOf(*argument);
    const bool keeps =
        call.Name == u"MIN" || call.Name == u"MAX" || call.Name == u"FIRST" || call.Name == u"LAST";
    const bool taken = keeps ? file || family != Family::Truth
                             : IsOneOf(family, Numbers | Family::Unknown | Family::Null) ||
                                   (file && IsOneOf(family, Family::Truth | Family::DateTime | Family::Time));
    if (!taken)
        throw WrongOperand(speaks, call.Name.toLower(), NameOf(argument->Type, speaks), Spelled(call.At),
                           call.At.From);
    const ColumnType type = argument->Type;
    if (keeps) {
        call.Type = type;
        call.IsStored = argument->IsStored;
        return;
    }
    if (IsOneOf(family, Family::DateTime | Family::Time)) ConvertTo(argument, Plain(DataType::Double));
    call.Type = Plain(DataType::Double);
    if (call.Name != u"SUM" && call.Name != u"AVG") return;
    const bool mean = call.Name == u"AVG";
    if (family == Family::Money) call.Type = MoneyType();
    if (family == Family::Decimal)
        call.Type = {DataType::Numeric, 0, MostDigits,
                     mean ? std::max(type.NumericScale, 6) : type.NumericScale};
    if (family == Family::Whole && !file)
        call.Type = Plain(type.Type == DataType::BigInt ? DataType::BigInt : DataType::Integer);
    if (family == Family::Unknown) call.Type = {};
}

void Resolver::ResolveCast(Expression& cast) {
    WantValues(cast);
    cast.Type = TypeOfDeclaration(cast.Name, speaks);
    const Family to = sqlite::FamilyOf(cast.Type);
    if (to == Family::Unknown) throw NoSuchType(speaks, cast.Name, cast.At.From);
    const bool sized = cast.Name.contains(u'(');
    const bool isLong = cast.Type.Type == DataType::LongVarChar || cast.Type.Type == DataType::LongVarWChar;
    // Without a length, a converted text has thirty characters.
    if (to == Family::Text && !sized && !isLong && !IsFileDialect(speaks)) cast.Type.DefinedSize = 30;
    const bool tooExact = to == Family::Decimal &&
                          (cast.Type.Precision > MostDigits || cast.Type.NumericScale > cast.Type.Precision);
    if (tooExact) throw NoSuchType(speaks, cast.Name, cast.At.From);
    const Expression& value = *cast.Operands.front();
    if (!MayBecome(FamilyOf(value), to, Asked::Explicitly, speaks))
        throw NoConversion(speaks, NameOf(value.Type, speaks), NameOf(cast.Type, speaks), true,
                           Spelled(cast.At), cast.At.From);
    if (cast.Operands.size() > 1) TakeArgument(cast.Operands[1], 'i');
}

/// An operand is compared with what stands behind each WHEN; the values behind THEN and ELSE meet in one
/// type.
void Resolver::ResolveCase(Expression& value) {
    const size_t first = value.HasOperand ? 1 : 0;
    const size_t end = value.Operands.size() - (value.HasElse ? 1 : 0);
    std::vector<ExpressionPtr*> compared;
    std::vector<ExpressionPtr*> chosen;
    if (value.HasOperand) compared.push_back(&value.Operands.front());
    for (size_t index = first; index < end; index += 2) {
        if (value.HasOperand)
            compared.push_back(&value.Operands[index]);
        else
            WantCondition(value.Operands[index].get());
        chosen.push_back(&value.Operands[index + 1]);
    }
    if (value.HasElse) chosen.push_back(&value.Operands.back());
    for (const auto& values : {compared, chosen})
        for (const ExpressionPtr* const part : values) WantValue(**part);
    if (value.HasOperand) Unite(compared, Meeting::Compared);
    value.Type = Unite(chosen, Meeting::Chosen);
    for (const ExpressionPtr* const part : chosen) value.IsStored = value.IsStored || (*part)->IsStored;
}

}  // namespace zephrin::ado::providers::sqlite
