#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/dialect/Writer.h"

namespace zephrin::ado::providers::sqlite {

namespace {

/// A number other than 0 as typed: dividing by it can't fail.
bool IsSafeDivisor(const Expression& value) {
    return value.Kind == ExpressionKind::Number && value.Name.toDouble() != 0;
}

}  // namespace

/// A truth that is reckoned with is a number: -1 in a file.
void Writer::WriteOperand(const Expression& value) {
    const bool truth = value.Type.Type == DataType::Boolean && value.Kind != ExpressionKind::Truth;
    if (!truth) return Write(value);
    out << (IsFileDialect(speaks) ? "(-(" : "((");
    Write(value);
    out << " <> 0))";
}

void Writer::WriteInfix(const Expression& value, const char* symbol) {
    out << "(";
    WriteOperand(*value.Operands[0]);
    out << " " << symbol << " ";
    WriteOperand(*value.Operands[1]);
    out << ")";
}

void Writer::WriteUnary(const Expression& value) {
    out << "(" << value.Name.toLatin1() << " ";
    WriteOperand(*value.Operands.front());
    out << ")";
}

void Writer::WriteArithmetic(const Expression& value) {
    const QString& name = value.Name;
    if (WriteDateArithmetic(value)) return;
    if (name == u"+") return WritePlus(value);
    if (name == u"/") return WriteDivision(value);
    const char* function = nullptr;
    if (name == u"&" && IsFileDialect(speaks)) function = "zx_amp";
    if (name == u"^") function = IsFileDialect(speaks) ? "zx_power" : "zx_xor";
    if (name == u"\\") function = "zx_wholediv";
    if (name == u"%" || name == u"MOD") function = "zx_mod";
    if (!function) {
        const bool texts =
            IsTextType(value.Operands[0]->Type.Type) || IsTextType(value.Operands[1]->Type.Type);
        if (texts && (name == u"&" || name == u"|"))
            throw IncompatibleTypes(speaks, text.sliced(value.At.From, value.At.To - value.At.From),
                                    value.At.From);
        if (!texts) return WriteInfix(value, name.toLatin1().constData());
        out << "(zx_num(";
        WriteOperand(*value.Operands[0]);
        out << ") " << name.toLatin1() << " zx_num(";
        WriteOperand(*value.Operands[1]);
        out << "))";
        return;
    }
    out << function << "(";
    WriteArgument(*value.Operands[0], name == u"&");
    out << ", ";
    WriteArgument(*value.Operands[1], name == u"&");
    out << ")";
}

/// Days added to a date, and the days between two.
bool Writer::WriteDateArithmetic(const Expression& value) {
    const bool left = IsDateType(value.Operands[0]->Type.Type);
    const bool right = IsDateType(value.Operands[1]->Type.Type);
    if ((!left && !right) || (value.Name != u"+" && value.Name != u"-")) return false;
    if (value.Name == u"-" && left && right)
        out << "zx_days_between(";
    else
        out << (value.Name == u"+" ? "zx_date_plus(" : "zx_date_minus(");
    Write(*value.Operands[0]);
    out << ", ";
    Write(*value.Operands[1]);
    out << ")";
    return true;
}

void Writer::WritePlus(const Expression& value) {
    const DataType left = value.Operands[0]->Type.Type;
    const DataType right = value.Operands[1]->Type.Type;
    if (IsTextType(left) && IsTextType(right)) return WriteInfix(value, "||");
    const auto reckons = [](DataType type) { return IsNumberType(type) || type == DataType::Boolean; };
    if (reckons(left) && reckons(right)) return WriteInfix(value, "+");
    out << "zx_plus(";
    WriteOperand(*value.Operands[0]);
    out << ", ";
    WriteOperand(*value.Operands[1]);
    out << ")";
}

/// Whole numbers divide whole on a server; where no type is known the values decide.
void Writer::WriteDivision(const Expression& value) {
    const DataType left = value.Operands[0]->Type.Type;
    const DataType right = value.Operands[1]->Type.Type;
    const bool safe = IsSafeDivisor(*value.Operands[1]);
    const auto isWhole = [](DataType type) { return IsIntegerType(type) || type == DataType::Boolean; };
    const auto isNumber = [](DataType type) { return IsNumberType(type) || type == DataType::Boolean; };
    if (!IsFileDialect(speaks) && isWhole(left) && isWhole(right)) {
        if (safe) return WriteInfix(value, "/");
        out << "zx_intdiv(";
    } else if (IsFileDialect(speaks) || (isNumber(left) && isNumber(right))) {
        if (safe && isNumber(left)) return WriteInfix(value, "* 1.0 /");
        out << "zx_div(";
    } else {
        out << "zx_anydiv(";
    }
    WriteOperand(*value.Operands[0]);
    out << ", ";
    WriteOperand(*value.Operands[1]);
    out << ")";
}

void Writer::WriteLogic(const Expression& value) {
    const auto truth = [&](size_t index) {
        out << "(";
        Write(*value.Operands[index]);
        out << " <> 0)";
    };
    if (value.Name == u"IMP") {
        out << "((NOT ";
        truth(0);
        out << ") OR ";
        truth(1);
    } else {
        out << "(";
        truth(0);
        out << (value.Name == u"XOR" ? " <> " : " = ");
        truth(1);
    }
    out << ")";
}

}  // namespace zephrin::ado::providers::sqlite
