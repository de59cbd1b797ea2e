#include "platform/ado/providers/sqlite/dialect/Writer.h"

namespace zephrin::ado::providers::sqlite {

namespace {

/// The places with which an operand is read. A broken number is only read as an exact one to become money.
int PlacesOf(const ColumnType& type) {
    if (IsOneOf(FamilyOf(type), Family::Money | Family::Float)) return MoneyScale;
    return FamilyOf(type) == Family::Decimal ? type.NumericScale : 0;
}

}  // namespace

/// A truth that is reckoned with is a number: -1 in a file.
void Writer::WriteOperand(const Expression& value) {
    const bool truth = value.Type.Type == DataType::Boolean && value.Kind != ExpressionKind::Truth &&
                       value.Kind != ExpressionKind::Null;
    if (!truth) return Write(value);
    out << (IsFileDialect(speaks) ? "(-(" : "((");
    Write(value);
    out << " <> 0))";
}

void Writer::WriteOperands(const Expression& value) {
    WriteOperand(*value.Operands[0]);
    out << ", ";
    WriteOperand(*value.Operands[1]);
}

void Writer::WriteInfix(const Expression& value, const char* symbol) {
    out << "(";
    WriteOperand(*value.Operands[0]);
    out << " " << symbol << " ";
    WriteOperand(*value.Operands[1]);
    out << ")";
}

void Writer::WriteUnary(const Expression& value) {
    const Expression& operand = *value.Operands.front();
    const Family family = FamilyOf(operand.Type);
    if (value.Name == u"+") return Write(operand);
    if (value.Name == u"~") {
        // The other of two truths, or all bits of a number.
        out << (family == Family::Truth ? "(1 - " : "(~ ");
        WriteOperand(operand);
        out << ")";
        return;
    }
    const bool literal = operand.Kind == ExpressionKind::Number && !IsWide(value.Type);
    if (literal || family == Family::Unknown) {
        out << (literal ? "(- " : "(- zx_num(");
        Write(operand);
        out << (literal ? ")" : "))");
        return;
    }
    out << "zx_minus(";
    WriteOperand(operand);
    out << ", " << Spec(value.Type, value, PlacesOf(operand.Type)) << ")";
}

void Writer::WriteArithmetic(const Expression& value) {
    const auto call = [&](const char* function) {
        out << function << "(";
        WriteOperands(value);
        out << ", "
            << Spec(value.Type, value, PlacesOf(value.Operands[0]->Type), PlacesOf(value.Operands[1]->Type))
            << ")";
    };
    switch (value.What) {
        case Does::Join:
            if (value.Name == u"+") return WriteInfix(value, "||");
            out << "zx_amp(";
            WriteOperands(value);
            out << ")";
            return;
        case Does::Reckon:
        case Does::Divide:
            if (value.Name == u"+") return call("zx_add");
            if (value.Name == u"-") return call("zx_subtract");
            if (value.Name == u"*") return call("zx_multiply");
            return call(value.Name == u"/" ? "zx_divide" : "zx_remainder");
        case Does::Whole:
            return call(value.Name == u"MOD" ? "zx_remainder" : "zx_wholediv");
        case Does::Power:
            WriteCallAt("zx_power", value);
            WriteOperands(value);
            out << ")";
            return;
        case Does::Move:
            return call(value.Name == u"+" ? "zx_date_plus" : "zx_date_minus");
        case Does::Between:
            WriteCallAt("zx_days_between", value);
            WriteOperands(value);
            out << ")";
            return;
        case Does::Bits:
            if (value.Name != u"^") return WriteInfix(value, value.Name.toLatin1().constData());
            out << "zx_xor(";
            WriteOperands(value);
            out << ")";
            return;
        case Does::AsFound:
        case Does::Refuse:
            return WriteAsFound(value);
    }
}

/// Where no type is known, each row's values decide.
void Writer::WriteAsFound(const Expression& value) {
    const QString& name = value.Name;
    if (name == u"-" || name == u"*") {
        out << "(";
        WriteCallAt("zx_num", value);
        WriteOperand(*value.Operands[0]);
        out << ") " << name.toLatin1() << " ";
        WriteCallAt("zx_num", value);
        WriteOperand(*value.Operands[1]);
        out << "))";
        return;
    }
    const bool file = IsFileDialect(speaks);
    WriteCallAt(name == u"+" ? "zx_plus" : name == u"/" ? (file ? "zx_div" : "zx_anydiv") : "zx_mod", value);
    WriteOperands(value);
    out << ")";
}

void Writer::WriteLogic(const Expression& value) {
    if (value.Name == u"IMP") {
        out << "((NOT ";
        WriteCondition(*value.Operands[0]);
        out << ") OR ";
    } else {
        out << "(";
        WriteCondition(*value.Operands[0]);
        out << (value.Name == u"XOR" ? " <> " : " = ");
    }
    WriteCondition(*value.Operands[1]);
    out << ")";
}

}  // namespace zephrin::ado::providers::sqlite
