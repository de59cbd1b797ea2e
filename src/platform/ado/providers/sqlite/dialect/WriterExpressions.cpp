#include "platform/ado/providers/sqlite/dialect/FunctionTable.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/dialect/Writer.h"
#include "platform/ado/providers/sqlite/values/DateText.h"
#include "platform/ado/providers/sqlite/values/Naming.h"

namespace zephrin::ado::providers::sqlite {

void Writer::Write(const Expression& value) {
    const Level deeper(*this, value.At.From);
    out.Mark(value.At.From);
    switch (value.Kind) {
        case ExpressionKind::Null:
            out << "NULL";
            break;
        case ExpressionKind::Number:
            out << value.Name.toLatin1();
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
            Write(*value.Operands.front());
            out << ")";
            break;
        case ExpressionKind::And:
            WriteJoined(value.Operands, 0, value.Operands.size(), " AND ");
            break;
        case ExpressionKind::Or:
            WriteJoined(value.Operands, 0, value.Operands.size(), " OR ");
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
    }
}

/// Halves the row of operands again and again: the engine limits the depth of an expression, not its width.
void Writer::WriteJoined(const std::vector<ExpressionPtr>& operands, size_t from, size_t to,
                         const char* word) {
    if (to - from == 1) return Write(*operands[from]);
    const size_t middle = from + (to - from) / 2;
    out << "(";
    WriteJoined(operands, from, middle, word);
    out << word;
    WriteJoined(operands, middle, to, word);
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

void Writer::WriteColumn(const Expression& column) {
    if (!column.Qualifier.isEmpty()) out << QuotedName(column.Qualifier) << ".";
    out << QuotedName(column.Name);
}

void Writer::WriteDate(const QString& literal, const Expression& at) {
    const std::optional<qint64> ticks = ReadDate(literal, IsFileDialect(speaks));
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
    const As as = Decide(compared);
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
            Write(*value.Operands[index]);
        out << " THEN ";
        Write(*value.Operands[index + 1]);
    }
    if (value.HasElse) {
        out << " ELSE ";
        Write(*value.Operands.back());
    }
    out << " END";
}

/// The type goes along as typed, the type of the value as its number: money and dates become text in ways of
/// their own.
void Writer::WriteCast(const Expression& value) {
    out << "zx_cast(";
    Write(*value.Operands.front());
    out << ", " << QuotedText(value.Name.toLower()) << ", "
        << QByteArray::number(int(value.Operands.front()->Type.Type));
    if (value.Operands.size() > 1) {
        out << ", ";
        Write(*value.Operands[1]);
    }
    out << ")";
}

void Writer::WriteFunction(const Expression& call) {
    if (IsAggregateName(call.Name, speaks)) return WriteAggregate(call);
    const FunctionInfo* const info = FindFunction(call.Name, speaks);
    // What the dialect doesn't have may still be the engine's; an error of it shows the name as typed.
    const QString typed = text.sliced(call.At.From, call.Name.size());
    out << (info ? QByteArray(info->Runs) : QuotedName(typed)) << "(" << (call.IsStar ? "*" : "");
    for (size_t index = 0; index < call.Operands.size(); ++index) {
        if (index > 0) out << ", ";
        WriteArgument(*call.Operands[index], info && info->Input == Reads::Texts);
    }
    out << ")";
}

/// Where a text is wanted, a date is written as the dialect writes it, not as it is stored.
void Writer::WriteArgument(const Expression& value, bool asText) {
    if (asText && IsDateType(value.Type.Type))
        WriteCall("zx_datetext", value);
    else if (asText && value.Type.Type == DataType::Currency && !IsFileDialect(speaks))
        WriteCall("zx_moneytext", value);
    else
        WriteOperand(value);
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
    // The mean of whole numbers is whole on a server.
    if (call.Name == u"AVG" && !IsFileDialect(speaks) && IsIntegerType(argument.Type.Type))
        return write("zx_avg_whole");
    if (call.Name == u"COUNT_BIG") return write("COUNT");
    const bool ownFunction = call.Name.startsWith(u"STDEV") || call.Name.startsWith(u"VAR") ||
                             call.Name == u"FIRST" || call.Name == u"LAST";
    write((ownFunction ? QByteArray("zx_") : QByteArray()) + call.Name.toLower().toLatin1());
}

}  // namespace zephrin::ado::providers::sqlite
