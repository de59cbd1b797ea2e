#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/dialect/Writer.h"
#include "platform/ado/providers/sqlite/values/Naming.h"

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

namespace {

/// The output column of a nested query, under a name of our own.
constexpr const char* NestedAsValue = " FROM (SELECT NULL AS zx_v WHERE 0 UNION ALL SELECT * FROM (";

ColumnType NestedType(const Query& query) {
    const QueryArm& first = query.Arms.front();
    return first.Nested ? NestedType(*first.Nested) : first.Core.Output.front().Type;
}

}  // namespace

Writer::As Writer::Decide(const std::vector<const Expression*>& values) {
    bool dates = false;
    bool truths = false;
    bool numbers = false;
    bool texts = false;
    bool unknown = false;
    for (const Expression* const value : values) {
        const DataType type = value->Type.Type;
        if (value->Kind == ExpressionKind::Null) continue;
        dates = dates || IsDateType(type);
        truths = truths || type == DataType::Boolean;
        numbers = numbers || IsNumberType(type);
        texts = texts || IsTextType(type);
        unknown = unknown || type == DataType::Empty;
    }
    if (dates) return As::Date;
    if (truths) return As::Truth;
    if (numbers && texts) return As::Number;
    if (numbers && !unknown) return As::Raw;
    return As::Text;
}

void Writer::WriteCompared(const Expression& value, As as) {
    switch (as) {
        case As::Truth:
            return WriteTruth(value);
        case As::Number:
            return WriteNumber(value);
        case As::Date:
            break;
        case As::Raw:
        case As::Text:
            return Write(value);
    }
    if (value.Kind == ExpressionKind::Text) return WriteDate(value.Name, value);
    if (value.Kind == ExpressionKind::Null || value.Kind == ExpressionKind::Date) return Write(value);
    // A column's value that is no date stays what it is; anything else must be one.
    const bool stored = value.Kind == ExpressionKind::Column && IsDateType(value.Type.Type);
    out << (stored ? "zx_stored_date(" : "zx_date(");
    Write(value);
    out << ")";
}

/// Any number but 0 is true, as is the word.
void Writer::WriteTruth(const Expression& value) {
    if (value.Kind == ExpressionKind::Null) {
        out << "NULL";
    } else if (value.Kind == ExpressionKind::Truth) {
        out << (value.IsTrue ? "1" : "0");
    } else if (value.Kind == ExpressionKind::Text) {
        const QString word = value.Name.trimmed().toLower();
        bool isNumber = false;
        const double number = word.toDouble(&isNumber);
        if (!isNumber && word != u"true" && word != u"false")
            throw NotANumber(speaks, value.Name, u"bit"_qs, value.At.From);
        out << ((isNumber ? number != 0 : word == u"true") ? "1" : "0");
    } else {
        out << "(";
        Write(value);
        out << " <> 0)";
    }
}

void Writer::WriteNumber(const Expression& value) {
    if (value.Kind == ExpressionKind::Text) {
        bool isNumber = false;
        const QString digits = value.Name.trimmed();
        digits.toDouble(&isNumber);
        if (!isNumber) throw NotANumber(speaks, value.Name, u"int"_qs, value.At.From);
        out << digits.toUtf8();
    } else if (IsTextType(value.Type.Type)) {
        WriteCall("zx_num", value);
    } else {
        Write(value);
    }
}

void Writer::WriteComparison(const Expression& left, const QString& symbol, const Expression& right) {
    const As as = Decide({&left, &right});
    // Truth has an order only as a number: -1 and 0 in a file, 1 and 0 on a server.
    const bool ordered = as == As::Truth && symbol != u"=" && symbol != u"<>";
    const auto side = [&](const Expression& value) {
        ordered ? WriteOperand(value) : WriteCompared(value, as);
    };
    out << "(";
    side(left);
    out << " " << symbol.toLatin1() << " ";
    side(right);
    out << CollationFor(as) << ")";
}

void Writer::WriteBetween(const Expression& value) {
    const As as = Decide({value.Operands[0].get(), value.Operands[1].get(), value.Operands[2].get()});
    out << (value.IsNegated ? "(NOT (" : "((");
    WriteCompared(*value.Operands[0], as);
    out << CollationFor(as) << " BETWEEN ";
    WriteCompared(*value.Operands[1], as);
    out << " AND ";
    WriteCompared(*value.Operands[2], as);
    out << "))";
}

void Writer::WriteInList(const Expression& value) {
    std::vector<const Expression*> all;
    for (const ExpressionPtr& operand : value.Operands) all.push_back(operand.get());
    const As as = Decide(all);
    out << "(";
    WriteCompared(*value.Operands.front(), as);
    out << CollationFor(as) << (value.IsNegated ? " NOT IN (" : " IN (");
    for (size_t index = 1; index < value.Operands.size(); ++index) {
        if (index > 1) out << ", ";
        WriteCompared(*value.Operands[index], as);
    }
    out << "))";
}

void Writer::WriteInQuery(const Expression& value) {
    Expression nested;
    nested.Kind = ExpressionKind::Column;
    nested.Name = QStringLiteral("zx_v");
    nested.Type = NestedType(*value.Nested);
    const As as = Decide({value.Operands.front().get(), &nested});
    out << "(";
    WriteCompared(*value.Operands.front(), as);
    out << CollationFor(as) << (value.IsNegated ? " NOT IN (" : " IN (");
    if (as == As::Raw || as == As::Text) {
        WriteQuery(*value.Nested);
    } else {
        out << "SELECT ";
        WriteCompared(nested, as);
        out << NestedAsValue;
        WriteQuery(*value.Nested);
        out << "))";
    }
    out << "))";
}

/// ANY holds when some row compares true; ALL when none compares other than true, which a Null never does.
void Writer::WriteQuantified(const Expression& value) {
    Expression nested;
    nested.Kind = ExpressionKind::Column;
    nested.Name = QStringLiteral("zx_v");
    nested.Type = NestedType(*value.Nested);
    out << (value.IsTrue ? "(NOT EXISTS (SELECT 1" : "(EXISTS (SELECT 1") << NestedAsValue;
    WriteQuery(*value.Nested);
    out << ")) WHERE (";
    WriteComparison(*value.Operands.front(), value.Name, nested);
    out << (value.IsTrue ? ") IS NOT TRUE))" : ")))");
}

void Writer::WriteLike(const Expression& value) {
    const DataType type = value.Operands.front()->Type.Type;
    const bool padded = type == DataType::Char || type == DataType::VarChar || type == DataType::LongVarChar;
    out << (value.IsNegated ? "(NOT " : "") << (padded ? "zx_like_padded(" : "zx_like(");
    for (size_t index = 0; index < value.Operands.size(); ++index) {
        if (index > 0) out << ", ";
        WriteArgument(*value.Operands[index], true);
    }
    out << (value.IsNegated ? "))" : ")");
}

}  // namespace zephrin::ado::providers::sqlite
