#include "platform/ado/providers/sqlite/dialect/TypeRules.h"

#include "platform/ado/providers/sqlite/values/Exact.h"

#include <algorithm>
#include <array>

namespace zephrin::ado::providers::sqlite {

namespace {

using enum Family;

constexpr Families Counts = Whole | Truth;
constexpr Families Moments = DateTime | Date;
constexpr Families Reckonable = Numbers | Truth;
/// A file takes nearly everything for a number where it wants one.
constexpr Families Numeric = Families(Reckonable | Text) | DateTime | Time;

struct OperatorRule {
    const char* Symbols;  ///< between blanks
    Families Left;
    Families Right;
    Does What;
};

// The first rule that fits holds; where none does, the operator is refused.
constexpr std::array serverRules{
    OperatorRule{" + ", Families(Text), Families(Text), Does::Join},
    OperatorRule{" + - ", Families(DateTime), Reckonable | DateTime, Does::Move},
    OperatorRule{" + - ", Reckonable | Text, Families(DateTime), Does::Move},
    OperatorRule{" + - ", Families(DateTime), Families(Text), Does::Move},
    OperatorRule{" + - * / ", Numbers, Reckonable | Text, Does::Reckon},
    OperatorRule{" + - * / ", Truth | Text, Numbers, Does::Reckon},
    OperatorRule{" % ", Whole | Decimal | Money, Whole | Decimal | Money | Truth | Text, Does::Reckon},
    OperatorRule{" % ", Truth | Text, Whole | Decimal | Money, Does::Reckon},
    OperatorRule{" & | ^ ", Counts, Counts, Does::Bits},
};

constexpr std::array fileRules{
    OperatorRule{" & ", Numeric | Guid, Numeric | Guid, Does::Join},
    OperatorRule{" + ", Families(Text), Families(Text), Does::Join},
    OperatorRule{" - ", Families(DateTime), Families(DateTime), Does::Between},
    OperatorRule{" + - ", Families(DateTime), Numeric, Does::Move},
    OperatorRule{" + - ", Numeric, Families(DateTime), Does::Move},
    OperatorRule{" + - * ", Numeric, Numeric, Does::Reckon},
    OperatorRule{" / ", Numeric, Numeric, Does::Divide},
    OperatorRule{" \\ MOD ", Numeric, Numeric, Does::Whole},
    OperatorRule{" ^ ", Numeric, Numeric, Does::Power},
};

struct ConversionRule {
    Families From;
    Families To;
    bool MustBeAsked;
};

constexpr std::array serverConversions{
    ConversionRule{Families(Text), Families(Numbers | Truth) | Text | DateTime | Date | Time | Guid, false},
    ConversionRule{Reckonable, Families(Reckonable | Text) | DateTime, false},
    ConversionRule{Families(DateTime), DateTime | Date | Time | Text, false},
    ConversionRule{Families(DateTime), Reckonable, true},
    ConversionRule{Families(Date), DateTime | Date | Text, false},
    ConversionRule{Families(Time), DateTime | Time | Text, false},
    ConversionRule{Families(Guid), Guid | Text, false},
    ConversionRule{Families(Binary), Families(Binary), false},
};

constexpr std::array fileConversions{
    ConversionRule{Numeric, Numeric, false},
    ConversionRule{Text | Guid, Text | Guid, false},
    ConversionRule{Families(Binary), Families(Binary), false},
};

/// Among types that meet, the one whose family stands first here is what the others become.
constexpr std::array precedence{DateTime, Date,  Time, Float, Decimal, Money,
                                Whole,    Truth, Guid, Text,  Binary};
/// A file chooses between a text and something else as texts: its columns have room for both.
constexpr std::array fileChoice{Text,  DateTime, Date,  Time, Float, Decimal,
                                Money, Whole,    Truth, Guid, Binary};

template <size_t Size>
size_t RankIn(const std::array<Family, Size>& order, Family family) {
    return size_t(std::find(order.begin(), order.end(), family) - order.begin());
}

int WholeRank(DataType type) {
    switch (type) {
        case DataType::BigInt:
            return 4;
        case DataType::Integer:
            return 3;
        case DataType::SmallInt:
            return 2;
        default:
            return 1;
    }
}

int TextRank(DataType type) {
    static constexpr std::array order{DataType::Char,     DataType::VarChar,     DataType::WChar,
                                      DataType::VarWChar, DataType::LongVarChar, DataType::LongVarWChar};
    return int(std::find(order.begin(), order.end(), type) - order.begin());
}

/// Two types of one family: the one that holds both.
ColumnType Wider(const ColumnType& a, const ColumnType& b) {
    switch (FamilyOf(a)) {
        case Whole:
            return WholeRank(a.Type) >= WholeRank(b.Type) ? a : b;
        case Decimal: {
            const int scale = std::max(a.NumericScale, b.NumericScale);
            return ExactType(std::max(a.Precision - a.NumericScale, b.Precision - b.NumericScale) + scale,
                             scale);
        }
        case Float:
            return a.Type == DataType::Double ? a : b;
        case Text: {
            ColumnType wider = TextRank(a.Type) >= TextRank(b.Type) ? a : b;
            // Texts of several lengths keep their own.
            if (wider.Type == DataType::Char && a.DefinedSize != b.DefinedSize)
                wider.Type = DataType::VarChar;
            if (wider.Type == DataType::WChar && a.DefinedSize != b.DefinedSize)
                wider.Type = DataType::VarWChar;
            wider.DefinedSize = std::max(a.DefinedSize, b.DefinedSize);
            return wider;
        }
        default:
            return a;
    }
}

int WholeDigits(DataType type) {
    switch (type) {
        case DataType::Boolean:
            return 1;
        case DataType::UnsignedTinyInt:
        case DataType::TinyInt:
            return 3;
        case DataType::SmallInt:
            return 5;
        case DataType::BigInt:
            return 19;
        default:
            return 10;
    }
}

}  // namespace

Family FamilyOf(const ColumnType& type) {
    if (type.Type == DataType::Empty) return Unknown;
    if (type.Type == DataType::Boolean) return Truth;
    if (IsIntegerType(type.Type)) return Whole;
    if (type.Type == DataType::Numeric || type.Type == DataType::Decimal) return Decimal;
    if (type.Type == DataType::Currency) return Money;
    if (IsNumberType(type.Type)) return Float;
    if (IsTextType(type.Type)) return Text;
    if (type.Type == DataType::DBDate) return Date;
    if (IsDateType(type.Type)) return DateTime;
    if (type.Type == DataType::DBTime) return Time;
    if (type.Type == DataType::Guid) return Guid;
    return IsBinaryType(type.Type) ? Binary : Unknown;
}

Does RuleFor(const QString& symbol, Family left, Family right, Dialect dialect) {
    // A Null is of whatever type is wanted.
    if (left == Null) left = right == Null ? Whole : right;
    if (right == Null) right = left;
    const QString wanted = u' ' + symbol + u' ';
    const auto fits = [&](const OperatorRule& rule) {
        return QLatin1StringView(rule.Symbols).contains(wanted) && IsOneOf(left, rule.Left | Unknown) &&
               IsOneOf(right, rule.Right | Unknown);
    };
    const auto pick = [&](const auto& rules) {
        const auto found = std::find_if(rules.begin(), rules.end(), fits);
        if (found == rules.end()) return Does::Refuse;
        const bool unknown = left == Unknown || right == Unknown;
        const bool moves = found->What == Does::Move && left != DateTime && right != DateTime;
        const bool open = moves || found->What == Does::Reckon || found->What == Does::Divide ||
                          found->What == Does::Between || (found->What == Does::Join && symbol == u"+");
        return unknown && open ? Does::AsFound : found->What;
    };
    return IsFileDialect(dialect) ? pick(fileRules) : pick(serverRules);
}

bool TakesSign(const QString& sign, Family family, Dialect dialect) {
    if (IsOneOf(family, Numbers | Null | Unknown))
        return sign != u"~" || IsOneOf(family, Whole | Null | Unknown);
    if (IsFileDialect(dialect)) return IsOneOf(family, Numeric);
    return (sign == u"~" && family == Truth) || (sign == u"+" && IsOneOf(family, Truth | Text));
}

bool MayBecome(Family from, Family to, Asked how, Dialect dialect) {
    if (IsOneOf(from, Null | Unknown) || IsOneOf(to, Null | Unknown)) return true;
    const auto holds = [&](const ConversionRule& rule) {
        return IsOneOf(from, rule.From) && IsOneOf(to, rule.To) &&
               (!rule.MustBeAsked || how == Asked::Explicitly);
    };
    return IsFileDialect(dialect) ? std::any_of(fileConversions.begin(), fileConversions.end(), holds)
                                  : std::any_of(serverConversions.begin(), serverConversions.end(), holds);
}

ColumnType CommonType(const std::vector<ColumnType>& types, Meeting how, Dialect dialect) {
    ColumnType common;
    const bool textFirst = IsFileDialect(dialect) && how == Meeting::Chosen;
    const auto rank = [&](Family family) {
        return textFirst ? RankIn(fileChoice, family) : RankIn(precedence, family);
    };
    for (const ColumnType& type : types) {
        if (type.Type == DataType::Empty) return {};
        if (common.Type == DataType::Empty) {
            common = type;
        } else if (FamilyOf(common) == FamilyOf(type)) {
            common = Wider(common, type);
        } else {
            const Family one = FamilyOf(common), other = FamilyOf(type);
            ColumnType next = rank(one) < rank(other) ? common : type;
            // An exact number keeps all digits of the others.
            if (FamilyOf(next) == Decimal) {
                const ColumnType& lesser = FamilyOf(common) == Decimal ? type : common;
                if (IsOneOf(FamilyOf(lesser), Numbers | Truth)) next = Wider(next, AsExact(lesser));
            }
            if (textFirst && FamilyOf(next) == Text) next.DefinedSize = std::max(next.DefinedSize, 255);
            common = next;
        }
    }
    return common;
}

ColumnType ExactType(int precision, int scale) {
    if (precision > MostDigits) {
        // The whole part keeps its room as long as six places are left.
        const int whole = precision - scale;
        const int least = std::min(scale, 6);
        scale = std::max(MostDigits - whole, least);
        precision = MostDigits;
    }
    return {DataType::Numeric, 0, precision, scale};
}

ColumnType MoneyType() {
    return {DataType::Currency, 0, 0, 0};
}

ColumnType AsExact(const ColumnType& type) {
    if (FamilyOf(type) == Decimal) return type;
    if (FamilyOf(type) == Money) return ExactType(MoneyPrecision, MoneyScale);
    // A literal says by its precision how many digits it has.
    return ExactType(type.Precision > 0 ? type.Precision : WholeDigits(type.Type), 0);
}

namespace {

ColumnType ExactResult(const QString& symbol, const ColumnType& left, const ColumnType& right) {
    const int p1 = left.Precision, s1 = left.NumericScale, p2 = right.Precision, s2 = right.NumericScale;
    const int scale = std::max(s1, s2);
    if (symbol == u"*") return ExactType(p1 + p2 + 1, s1 + s2);
    if (symbol == u"/") {
        const int places = std::max(6, s1 + p2 + 1);
        return ExactType(p1 - s1 + s2 + places, places);
    }
    if (symbol == u"%") return ExactType(std::min(p1 - s1, p2 - s2) + scale, scale);
    const int whole = std::max(p1 - s1, p2 - s2);
    if (whole + scale + 1 <= MostDigits) return ExactType(whole + scale + 1, scale);
    // A sum gives up places for the whole part, all of them where it must.
    return {DataType::Numeric, 0, MostDigits, std::min(scale, MostDigits - std::min(whole, MostDigits))};
}

DataType AtLeastInteger(DataType type) {
    return type == DataType::BigInt ? type : DataType::Integer;
}

ColumnType ServerResult(const QString& symbol, const ColumnType& left, const ColumnType& right) {
    const auto either = [&](Family family) { return FamilyOf(left) == family || FamilyOf(right) == family; };
    if (either(Float)) {
        const bool single = left.Type == DataType::Single && right.Type == DataType::Single;
        return {single ? DataType::Single : DataType::Double, 0, 0, 0};
    }
    if (either(Decimal)) return ExactResult(symbol, AsExact(left), AsExact(right));
    if (either(Money)) return MoneyType();
    const ColumnType& wider = FamilyOf(left) == Truth    ? right
                              : FamilyOf(right) == Truth ? left
                                                         : Wider(left, right);
    return {wider.Type, 0, 0, 0};
}

/// A file's + and - rank money above floating point, its * the other way round.
ColumnType FileResult(const QString& symbol, const ColumnType& left, const ColumnType& right) {
    const auto either = [&](Family family) { return FamilyOf(left) == family || FamilyOf(right) == family; };
    const auto isExact = [](const ColumnType& type) { return FamilyOf(type) != Float; };
    if (either(Decimal) && isExact(left) && isExact(right))
        return ExactResult(symbol, AsExact(left), AsExact(right));
    if (either(Decimal)) return {DataType::Double, 0, 0, 0};
    if (either(Money) && (symbol != u"*" || !either(Float))) return MoneyType();
    if (either(Float)) return {DataType::Double, 0, 0, 0};
    const bool big = left.Type == DataType::BigInt || right.Type == DataType::BigInt;
    return {AtLeastInteger(big ? DataType::BigInt : DataType::Integer), 0, 0, 0};
}

}  // namespace

ColumnType ResultOf(const QString& symbol, const ColumnType& left, const ColumnType& right, Dialect dialect) {
    return IsFileDialect(dialect) ? FileResult(symbol, left, right) : ServerResult(symbol, left, right);
}

QString NameOf(const ColumnType& type, Dialect dialect) {
    struct Names {
        DataType Type;
        const char* OnServer;
        const char* OnFile;
    };
    static constexpr std::array names{
        Names{DataType::Boolean, "bit", "Yes/No"},
        Names{DataType::UnsignedTinyInt, "tinyint", "Byte"},
        Names{DataType::TinyInt, "tinyint", "Byte"},
        Names{DataType::SmallInt, "smallint", "Integer"},
        Names{DataType::Integer, "int", "Long Integer"},
        Names{DataType::BigInt, "bigint", "Large Number"},
        Names{DataType::Currency, "money", "Currency"},
        Names{DataType::Single, "real", "Single"},
        Names{DataType::Double, "float", "Double"},
        Names{DataType::Numeric, "numeric", "Decimal"},
        Names{DataType::Decimal, "decimal", "Decimal"},
        Names{DataType::DBTimeStamp, "datetime", "Date/Time"},
        Names{DataType::Date, "datetime", "Date/Time"},
        Names{DataType::DBDate, "date", "Date/Time"},
        Names{DataType::DBTime, "time", "Date/Time"},
        Names{DataType::Char, "char", "Text"},
        Names{DataType::VarChar, "varchar", "Text"},
        Names{DataType::LongVarChar, "text", "Memo"},
        Names{DataType::WChar, "nchar", "Text"},
        Names{DataType::VarWChar, "nvarchar", "Text"},
        Names{DataType::LongVarWChar, "ntext", "Memo"},
        Names{DataType::Guid, "uniqueidentifier", "Replication ID"},
        Names{DataType::Binary, "binary", "Binary"},
        Names{DataType::VarBinary, "varbinary", "Binary"},
        Names{DataType::LongVarBinary, "image", "OLE Object"},
    };
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const Names& row) { return row.Type == type.Type; });
    if (found == names.end()) return QStringLiteral("unknown");
    return QString::fromLatin1(IsFileDialect(dialect) ? found->OnFile : found->OnServer);
}

}  // namespace zephrin::ado::providers::sqlite
