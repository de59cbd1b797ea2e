#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/dialect/Writer.h"
#include "platform/ado/providers/sqlite/values/Naming.h"

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

namespace {

/// The output column of a nested query, under a name of our own.
constexpr const char* NestedAsValue = " FROM (SELECT NULL AS zx_v WHERE 0 UNION ALL SELECT * FROM (";

/// Whether a nested query's column is compared as it comes.
bool IsAsItComes(const Expression& nested) {
    return nested.Kind == ExpressionKind::Column;
}

}  // namespace

Writer::Comparing Writer::Decide(const std::vector<const Expression*>& values) {
    Comparing as;
    bool unknown = false;
    bool numbers = false;
    for (const Expression* const value : values) {
        if (value->Kind == ExpressionKind::Null) continue;
        const Family family = FamilyOf(value->Type);
        if (IsOneOf(family, Family::DateTime | Family::Date)) as.How = As::Date;
        if (family == Family::Truth && as.How != As::Date) as.How = As::Truth;
        if (IsOneOf(family, Family::Text | Family::Guid | Family::Time) && as.How == As::Raw)
            as.How = As::Text;
        if (!IsOneOf(family, Numbers)) {
            unknown = unknown || family == Family::Unknown;
            continue;
        }
        numbers = true;
        // A column of money is as narrow as what the file holds.
        const bool wide = IsWide(value->Type) && !(family == Family::Money && value->IsStored);
        if (wide && as.How == As::Raw) as.How = As::Wide;
        if (family != Family::Whole && family != Family::Float)
            as.Scale = std::max(as.Scale, family == Family::Money ? MoneyScale : value->Type.NumericScale);
    }
    if (as.How == As::Raw && unknown && !numbers) as.How = As::Text;
    return as;
}

void Writer::WriteCompared(const Expression& value, Comparing as) {
    switch (as.How) {
        case As::Truth:
            return WriteTruth(value);
        case As::Wide:
            return WriteWide(value, as.Scale);
        case As::Date:
            break;
        case As::Raw:
        case As::Text:
            return Write(value);
    }
    const bool made = IsDateType(value.Type.Type) && !value.IsStored;
    if (made || value.Kind == ExpressionKind::Null) return Write(value);
    // A column's value that is no date stays what it is; anything else must be one.
    const bool stored = IsDateType(value.Type.Type);
    if (stored)
        out << "zx_stored_date(";
    else
        WriteCallAt("zx_date", value);
    Write(value);
    out << ")";
}

/// What stands where a condition is wanted; a file takes any value for one that isn't 0.
void Writer::WriteCondition(const Expression& value) {
    const Family family = FamilyOf(value.Type);
    const bool isColumn = value.Kind == ExpressionKind::Column || value.Kind == ExpressionKind::Subquery;
    if (family == Family::Truth && !isColumn && value.Kind != ExpressionKind::Truth) return Write(value);
    if (value.Kind == ExpressionKind::Null) return Write(value);
    out << "(";
    if (IsOneOf(family, Numbers | Family::Truth))
        IsWide(value.Type) ? WriteConversion(value, {DataType::Double, 0, 0, 0}) : Write(value);
    else
        WriteConversion(value, {DataType::Double, 0, 0, 0});
    out << " <> 0)";
}

/// Any number but 0 is true, as is the word.
void Writer::WriteTruth(const Expression& value) {
    if (value.Kind == ExpressionKind::Null) {
        out << "NULL";
    } else if (value.Kind == ExpressionKind::Truth) {
        out << (value.IsTrue ? "1" : "0");
    } else {
        out << "(";
        Write(value);
        out << " <> 0)";
    }
}

void Writer::WriteComparison(const Expression& left, const QString& symbol, const Expression& right) {
    const Comparing as = Decide({&left, &right});
    // Truth has an order only as a number: -1 and 0 in a file, 1 and 0 on a server.
    const bool ordered = as.How == As::Truth && symbol != u"=" && symbol != u"<>";
    const auto side = [&](const Expression& value) {
        ordered ? WriteOperand(value) : WriteCompared(value, as);
    };
    // The order stands on both sides: where the engine makes a list of comparisons with OR, it forgets what
    // stands on the other side than the column, and then finds the bare bytes in an index.
    out << "(";
    side(left);
    out << CollationFor(as) << " " << symbol.toLatin1() << " ";
    side(right);
    out << CollationFor(as) << ")";
}

void Writer::WriteFilter(const Expression& condition, bool onlyFilters) {
    filters = onlyFilters;
    WriteCondition(condition);
    filters = false;
}

/// The engine can't use an index for texts that it compares by our order, as the index has its own. So the
/// values that the index holds of these texts are looked up first, and the condition says in addition that
/// the column is one of them: that takes no row away. False where the condition is nothing of the kind.
bool Writer::WriteLookUp(const Expression& condition) {
    const bool list = condition.Kind == ExpressionKind::InList && !condition.IsNegated;
    const bool equals = condition.Kind == ExpressionKind::Compare && condition.Name == u"=";
    if (!list && !equals) return false;
    const bool turned = equals && condition.Operands[0]->Kind == ExpressionKind::Text;
    const Expression& column = *condition.Operands[turned ? 1 : 0];
    if (column.Kind != ExpressionKind::Column || column.Table.isEmpty() || !IsTextType(column.Type.Type))
        return false;
    // Looking up many takes longer than one walk through all.
    if (condition.Operands.size() > 100) return false;
    QStringList values;
    for (size_t index = 0; index < condition.Operands.size(); ++index) {
        const Expression& wanted = *condition.Operands[index];
        if (&wanted == &column) continue;
        if (wanted.Kind != ExpressionKind::Text) return false;
        const std::optional<QStringList> found = tables->EqualTexts(column.Table, column.Name, wanted.Name);
        if (!found) return false;
        values += *found;
    }
    // An empty list would be a mere 0 to the engine, and one side of OR without an index means a walk through
    // all rows: a text that isn't there does as well.
    if (values.isEmpty()) values << condition.Operands[turned ? 0 : 1]->Name;
    out << "(";
    Write(condition);
    out << " AND ";
    WriteColumn(column);
    out << " IN (";
    for (qsizetype index = 0; index < values.size(); ++index)
        out << (index == 0 ? "" : ", ") << QuotedText(values[index]);
    out << "))";
    return true;
}

void Writer::WriteBetween(const Expression& value) {
    const Comparing as = Decide({value.Operands[0].get(), value.Operands[1].get(), value.Operands[2].get()});
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
    const Comparing as = Decide(all);
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
    const Expression& nested = *value.Operands.back();
    const Comparing as = Decide({value.Operands.front().get(), &nested});
    out << "(";
    WriteCompared(*value.Operands.front(), as);
    out << CollationFor(as) << (value.IsNegated ? " NOT IN (" : " IN (");
    if (IsAsItComes(nested) && (as.How == As::Raw || as.How == As::Text)) {
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
    out << (value.IsTrue ? "(NOT EXISTS (SELECT 1" : "(EXISTS (SELECT 1") << NestedAsValue;
    WriteQuery(*value.Nested);
    out << ")) WHERE (";
    WriteComparison(*value.Operands.front(), value.Name, *value.Operands.back());
    out << (value.IsTrue ? ") IS NOT TRUE))" : ")))");
}

void Writer::WriteLike(const Expression& value) {
    const DataType type = value.Operands.front()->Type.Type;
    const bool padded = type == DataType::Char || type == DataType::VarChar || type == DataType::LongVarChar;
    out << (value.IsNegated ? "(NOT " : "") << (padded ? "zx_like_padded(" : "zx_like(");
    for (size_t index = 0; index < value.Operands.size(); ++index) {
        if (index > 0) out << ", ";
        Write(*value.Operands[index]);
    }
    out << (value.IsNegated ? "))" : ")");
}

}  // namespace zephrin::ado::providers::sqlite
