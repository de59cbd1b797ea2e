#pragma once

#include "platform/ado/providers/sqlite/values/Exact.h"
#include "platform/ado/providers/sqlite/values/TypeMap.h"

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

/// What a call inside the engine has to know of the statement, in one number: the type that its result has,
/// the places of its exact operands, and where it stands, so that a failure points there.
struct TypeSpec {
    ColumnType Type;
    int LeftScale = 0;
    int RightScale = 0;
    qsizetype Position = -1;
};

/// Texts longer than this are as long as they like.
inline constexpr int LongestText = 8000;

inline qint64 Pack(const TypeSpec& spec) {
    const bool sized = IsTextType(spec.Type.Type) || IsBinaryType(spec.Type.Type);
    const int size = spec.Type.DefinedSize > LongestText ? 0 : spec.Type.DefinedSize;
    const qint64 shape = sized ? size
                               : qint64(spec.Type.Precision & 63) | qint64(spec.Type.NumericScale & 63) << 6 |
                                     qint64(spec.LeftScale & 63) << 12 | qint64(spec.RightScale & 63) << 18;
    const qint64 position = std::clamp<qint64>(spec.Position + 1, 0, 0x7fffffff);
    return qint64(int(spec.Type.Type) & 255) | shape << 8 | position << 32;
}

inline TypeSpec Unpack(qint64 packed) {
    TypeSpec spec;
    spec.Type.Type = DataType(packed & 255);
    const qint64 shape = packed >> 8 & 0xffffff;
    if (IsTextType(spec.Type.Type) || IsBinaryType(spec.Type.Type)) {
        spec.Type.DefinedSize = int(shape);
    } else {
        // A view in a file may call with any number.
        const auto digits = [&](int bits) { return std::min(int(shape >> bits & 63), MostDigits); };
        spec.Type.Precision = digits(0);
        spec.Type.NumericScale = digits(6);
        spec.LeftScale = digits(12);
        spec.RightScale = digits(18);
    }
    spec.Position = (packed >> 32) - 1;
    return spec;
}

}  // namespace zephrin::ado::providers::sqlite
