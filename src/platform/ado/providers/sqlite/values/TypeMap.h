#pragma once

#include "platform/ado/providers/sqlite/values/Dialect.h"

#include <zephrin/ado/Types.h>

#include <QStringView>

namespace zephrin::ado::providers::sqlite {

/// What a declaration such as "nvarchar(40)" means.
struct ColumnType {
    DataType Type = DataType::Empty;  ///< Empty where nothing is declared
    int DefinedSize = 0;
    int Precision = 0;
    int NumericScale = 0;

    bool operator==(const ColumnType&) const = default;
};

/// The type of a declaration: by its name where a server has such a type, else by SQLite's rules of affinity.
ColumnType TypeOfDeclaration(QStringView declaration, Dialect dialect);

bool IsTextType(DataType type);
bool IsIntegerType(DataType type);
/// Integers, floating and exact numbers, money; not booleans.
bool IsNumberType(DataType type);
/// Dates with or without a time.
bool IsDateType(DataType type);
bool IsBinaryType(DataType type);

}  // namespace zephrin::ado::providers::sqlite
