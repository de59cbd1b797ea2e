#pragma once

#include "platform/ado/providers/sqlite/values/TypeMap.h"

#include <QString>

#include <vector>

namespace zephrin::ado::providers::sqlite {

/// What the rules of a dialect tell types apart by. A bit of its own each, so that a rule can name several.
enum class Family : quint16 {
    Unknown = 1,  ///< a column without a declared type: its values decide, row by row
    Null = 2,     ///< the word NULL
    Truth = 4,
    Whole = 8,
    Decimal = 16,
    Money = 32,
    Float = 64,
    Text = 128,
    DateTime = 256,
    Date = 512,  ///< a day without a time, which only servers have
    Time = 1024,
    Binary = 2048,
    Guid = 4096,
};
using Families = quint16;
constexpr Families operator|(Family a, Family b) {
    return Families(quint16(a) | quint16(b));
}
constexpr Families operator|(Families a, Family b) {
    return Families(a | quint16(b));
}
constexpr bool IsOneOf(Family family, Families of) {
    return (quint16(family) & of) != 0;
}
inline constexpr Families Numbers = Family::Whole | Family::Decimal | Family::Money | Family::Float;

Family FamilyOf(const ColumnType& type);

/// What an operator does with operands that it takes.
enum class Does : quint8 {
    Refuse,
    Join,     ///< puts texts together
    Reckon,   ///< with numbers, in the type that both have in common
    Divide,   ///< the same; a file divides in floating point
    Whole,    ///< with whole numbers, into which a file rounds its operands
    Power,    ///< in floating point
    Move,     ///< a date by days
    Between,  ///< the days between two dates
    Bits,     ///< with the bits of whole numbers
    AsFound,  ///< what the values of a row ask for
};

/// The rule of the dialect for an operator between two families; `Refuse` where there is none.
Does RuleFor(const QString& symbol, Family left, Family right, Dialect dialect);
/// The same for a sign in front of a value.
bool TakesSign(const QString& sign, Family family, Dialect dialect);

/// Whether a value becomes one of another family: by itself where it has to, or when CAST asks for it.
enum class Asked : quint8 { Implicitly, Explicitly };
bool MayBecome(Family from, Family to, Asked how, Dialect dialect);

/// What values of several types become where one type is wanted: compared with each other, or one of them
/// chosen. A type of Empty where nothing is known or nothing common exists.
enum class Meeting : quint8 { Compared, Chosen };
ColumnType CommonType(const std::vector<ColumnType>& types, Meeting how, Dialect dialect);

/// A number's type as an exact one.
ColumnType AsExact(const ColumnType& type);
/// What + - * / % give for two numbers, the type of a literal being as narrow as its digits.
ColumnType ResultOf(const QString& symbol, const ColumnType& left, const ColumnType& right, Dialect dialect);
/// An exact type, with its places cut down where it would have more than 38 digits.
ColumnType ExactType(int precision, int scale);
ColumnType MoneyType();

/// The type as its server names it.
QString NameOf(const ColumnType& type, Dialect dialect);

}  // namespace zephrin::ado::providers::sqlite
