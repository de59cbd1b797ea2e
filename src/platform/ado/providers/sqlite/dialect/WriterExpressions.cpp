#include "platform/ado/providers/sqlite/dialect/FunctionTable.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/dialect/Writer.h"
#include "platform/ado/providers/sqlite/values/DateText.h"
#include "platform/ado/providers/sqlite/values/Naming.h"

namespace zephrin::ado::providers::sqlite {

void Writer::Write(const Expression& value) {
    const Level deeper(*this, value.At.From);
    out.Mark(value.At.From);
    const bool onlyFilters = std::exchange(filters, false);
    if (onlyFilters && WriteLookUp(value)) return;
    switch (value.Kind) {
        case ExpressionKind::Null:
            out << "NULL";
            break;
        case ExpressionKind::Number:
            WriteNumeral(value);
            break;
        case ExpressionKind::Text:
            out << QuotedText(value.Name);
            break;
        case ExpressionKind::Date:
            WriteDate(value.Name, value);
            break;
        case ExpressionKind::Binary:
            out << "x'" << (value.Name.size() % 2 ? "0" : "") << value.Name.toLatin1() << "'";
            break;
        case ExpressionKind::Truth:
            out << (!value.IsTrue ? "0" : IsFileDialect(speaks) ? "(-1)" : "1");
            break;
        case ExpressionKind::Column:
            WriteColumn(value);
            break;
        case ExpressionKind::Star:
            out << "*";
            break;
        case ExpressionKind::Keyword:
            out << QuotedText(value.Name);
            break;
        case ExpressionKind::Unary:
            WriteUnary(value);
            break;
        case ExpressionKind::Binary2:
            WriteArithmetic(value);
            break;
        case ExpressionKind::Logic:
            WriteLogic(value);
            break;
        case ExpressionKind::Compare:
            WriteComparison(*value.Operands[0], value.Name, *value.Operands[1]);
            break;
        case ExpressionKind::Like:
            WriteLike(value);
            break;
        case ExpressionKind::Between:
            WriteBetween(value);
            break;
        case ExpressionKind::InList:
            WriteInList(value);
            break;
        case ExpressionKind::InQuery:
            WriteInQuery(value);
            break;
        case ExpressionKind::Quantified:
            WriteQuantified(value);
            break;
        case ExpressionKind::IsNull:
            out << "(";
            Write(*value.Operands.front());
            out << (value.IsNegated ? " IS NOT NULL)" : " IS NULL)");
            break;
        case ExpressionKind::Not:
            out << "(NOT ";
            WriteCondition(*value.Operands.front());
            out << ")";
            break;
        case ExpressionKind::And:
            WriteJoined(value.Operands, 0, value.Operands.size(), " AND ", onlyFilters);
            break;
        case ExpressionKind::Or:
            WriteJoined(value.Operands, 0, value.Operands.size(), " OR ", onlyFilters);
            break;
        case ExpressionKind::Exists:
        case ExpressionKind::Subquery:
            out << (value.Kind == ExpressionKind::Exists ? "(EXISTS (" : "((");
            WriteQuery(*value.Nested);
            out << "))";
            break;
        case ExpressionKind::Function:
            WriteFunction(value);
            break;
        case ExpressionKind::Cast:
            WriteCast(value);
            break;
        case ExpressionKind::Case:
            WriteCase(value);
            break;
        case ExpressionKind::Convert:
            WriteConversion(*value.Operands.front(), value.Type);
            break;
    }
}

/// Halves the row of operands again and again: the engine limits the depth of an expression, not its width.
void Writer::WriteJoined(const std::vector<ExpressionPtr>& operands, size_t from, size_t to, const char* word,
                         bool onlyFilters) {
    if (to - from == 1) return WriteFilter(*operands[from], onlyFilters);
    const size_t middle = from + (to - from) / 2;
    out << "(";
    WriteJoined(operands, from, middle, word, onlyFilters);
    out << word;
    WriteJoined(operands, middle, to, word, onlyFilters);
    out << ")";
}

void Writer::WriteList(const std::vector<ExpressionPtr>& operands, size_t from) {
    for (size_t index = from; index < operands.size(); ++index) {
        if (index > from) out << ", ";
        Write(*operands[index]);
    }
}

void Writer::WriteCall(const char* function, const Expression& value) {
    out << function << "(";
    Write(value);
    out << ")";
}

/// A column of more digits than a double keeps comes as what such numbers are inside.
void Writer::WriteColumn(const Expression& column) {
    const bool wide = FamilyOf(column.Type) == Family::Decimal && IsWide(column.Type) && column.IsStored;
    if (wide) out << "zx_wide(";
    if (!column.Qualifier.isEmpty()) out << QuotedName(column.Qualifier) << ".";
    out << QuotedName(column.Name);
    if (wide) out << ", " << Spec(column.Type, column, column.Type.NumericScale) << ")";
}

void Writer::WriteDate(const QString& literal, const Expression& at) {
    std::optional<qint64> ticks = ReadDate(literal, IsFileDialect(speaks));
    // The server takes an empty text for the first day of its calendar.
    if (!IsFileDialect(speaks) && literal.trimmed().isEmpty()) ticks = DayZero(false) * TicksPerDay;
    if (!ticks) throw NotADate(speaks, literal, at.At.From);
    out << "'" << WriteIsoDate(*ticks) << "'";
}

void Writer::WriteCase(const Expression& value) {
    const size_t pairs = value.HasOperand ? 1 : 0;
    const size_t end = value.Operands.size() - (value.HasElse ? 1 : 0);
    out << "CASE";
    // The operand is written once, so everything that it is compared with is compared in one way.
    std::vector<const Expression*> compared;
    for (size_t index = pairs; index < end; index += 2) compared.push_back(value.Operands[index].get());
    if (value.HasOperand) compared.push_back(value.Operands.front().get());
    const Comparing as = Decide(compared);
    if (value.HasOperand) {
        out << " (";
        WriteCompared(*value.Operands.front(), as);
        out << CollationFor(as) << ")";
    }
    for (size_t index = pairs; index < end; index += 2) {
        out << " WHEN ";
        if (value.HasOperand)
            WriteCompared(*value.Operands[index], as);
        else
            WriteCondition(*value.Operands[index]);
        out << " THEN ";
        Write(*value.Operands[index + 1]);
    }
    if (value.HasElse) {
        out << " ELSE ";
        Write(*value.Operands.back());
    }
    out << " END";
}

void Writer::WriteCast(const Expression& value) {
    WriteConversion(*value.Operands.front(), value.Type,
                    value.Operands.size() > 1 ? value.Operands[1].get() : nullptr);
}

void Writer::WriteFunction(const Expression& call) {
    if (IsAggregateName(call.Name, speaks)) return WriteAggregate(call);
    const FunctionInfo& info = *FindFunction(call.Name, speaks);
    if (call.Name == u"NULLIF") return WriteNullIf(call);
    // A number function on exact numbers has to know their places, one on whole numbers their size.
    const bool ofNumber = info.Result == Gives::AsNumber || info.Result == Gives::AsWhole;
    const bool exact = ofNumber && IsOneOf(FamilyOf(call.Type), Family::Decimal | Family::Money);
    const bool whole = ofNumber && FamilyOf(call.Type) == Family::Whole;
    if (whole) out << "zx_whole(";
    QByteArray runs = info.Runs;
    if (call.Name == u"FORMAT") {
        const Family given = FamilyOf(call.Operands.front()->Type);
        runs += IsOneOf(given, Family::DateTime | Family::Date) ? "_date" : "_value";
    }
    const bool own = runs.startsWith("zx_") && !exact && !call.Operands.empty();
    if (own)
        WriteCallAt(runs, call);
    else
        out << runs << (exact ? "_exact(" : "(");
    for (size_t index = 0; index < call.Operands.size(); ++index) {
        if (index > 0) out << ", ";
        if (info.Takes[std::min(index, qstrlen(info.Takes) - 1)] == 'c')
            WriteCondition(*call.Operands[index]);
        else
            WriteOperand(*call.Operands[index]);
    }
    if (exact) {
        const ColumnType& given = call.Operands.front()->Type;
        out << ", "
            << Spec(call.Type, call, FamilyOf(given) == Family::Money ? MoneyScale : given.NumericScale);
    }
    out << ")";
    if (whole) out << ", " << Spec(call.Type, call) << ")";
}

void Writer::WriteCallAt(const QByteArray& function, const Expression& at) {
    // A view is read without the statement that made it.
    if (isStoring)
        out << function << "(";
    else
        out << function << "_at(" << QByteArray::number(at.At.From) << ", ";
}

void Writer::WriteNullIf(const Expression& call) {
    const Comparing as = Decide({call.Operands[0].get(), call.Operands[1].get()});
    // What was compared as a number of many digits is one of its own type again.
    const bool whole = FamilyOf(call.Type) == Family::Whole;
    if (as.How == As::Wide) out << (whole ? "zx_whole(" : "zx_exact(");
    out << "nullif(";
    WriteCompared(*call.Operands[0], as);
    out << CollationFor(as) << ", ";
    WriteCompared(*call.Operands[1], as);
    out << ")";
    if (as.How == As::Wide) out << ", " << Spec(call.Type, call) << ")";
}

void Writer::WriteAggregate(const Expression& call) {
    if (call.IsStar) {
        out << "COUNT(*)";
        return;
    }
    const Expression& argument = *call.Operands.front();
    const char* const distinct = call.IsDistinct ? "DISTINCT " : "";
    const auto write = [&](const QByteArray& function) {
        out << function << "(" << distinct;
        WriteKey(argument);
        out << ")";
    };
    if (call.Name == u"COUNT_BIG") return write("COUNT");
    const bool sums = call.Name == u"SUM" || call.Name == u"AVG";
    const Family family = FamilyOf(call.Type);
    if (sums && family == Family::Whole) {
        // The sum that a mean is made of has to fit as well.
        const char* const mean = call.Type.Type == DataType::BigInt ? "zx_avg_bigint" : "zx_avg_int";
        out << "zx_whole(";
        write(call.Name == u"AVG" ? mean : "zx_sum_exact");
        out << ", " << Spec(call.Type, call) << ")";
        return;
    }
    if (sums && IsOneOf(family, Family::Decimal | Family::Money)) {
        out << "zx_exact(";
        write(call.Name == u"SUM" ? "zx_sum_exact" : "zx_avg_exact");
        out << ", " << Spec(call.Type, call) << ")";
        return;
    }
    if (sums && family == Family::Float) return write(call.Name == u"SUM" ? "zx_sum_float" : "zx_avg_float");
    const bool ownFunction = call.Name.startsWith(u"STDEV") || call.Name.startsWith(u"VAR") ||
                             call.Name == u"FIRST" || call.Name == u"LAST";
    write((ownFunction ? QByteArray("zx_") : QByteArray()) + call.Name.toLower().toLatin1());
}

}  // namespace zephrin::ado::providers::sqlite
