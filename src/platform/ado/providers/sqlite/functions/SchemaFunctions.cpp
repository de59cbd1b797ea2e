#include "platform/ado/providers/sqlite/functions/Functions.h"
#include "platform/ado/providers/sqlite/values/TypeMap.h"

namespace zephrin::ado::providers::sqlite {

namespace {

void TypeCode(Call& call) {
    const DataType type = TypeOfDeclaration(call.Text(0), call.Speaks()).Type;
    call.Return(qint64(type == DataType::Empty ? DataType::VarWChar : type));
}

void TypeSize(Call& call) {
    const int size = TypeOfDeclaration(call.Text(0), call.Speaks()).DefinedSize;
    size > 0 ? call.Return(qint64(size)) : call.ReturnNull();
}

}  // namespace

QList<FunctionEntry> SchemaFunctions() {
    return {
        {"zx_type_code", 1, 1, TypeCode, true, CalledFrom::OwnStatements},
        {"zx_type_size", 1, 1, TypeSize, true, CalledFrom::OwnStatements},
    };
}

}  // namespace zephrin::ado::providers::sqlite
