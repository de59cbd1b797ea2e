#pragma once

#include "reader/Dates.h"
#include "reader/access/PageFile.h"

#include <QByteArray>

#include <cstring>

namespace zephrin::reader::access {

/// A number as the file has it. Throws where its bytes aren't there.
template <typename Number>
Number NumberOf(const Span& bytes) {
    Number value;
    std::memcpy(&value, bytes.Part(0, int(sizeof value)).Data, sizeof value);
    return value;
}

/// A date with seven places of seconds: a text of days since 0001-01-01 and of tenths of microseconds.
std::optional<ShortText> LongDateOf(const Span& bytes);
/// An exact number: its sign, then sixteen bytes in groups of four.
QByteArray DecimalOf(bool isNegative, const Span& magnitude, int scale);
ShortText GuidOf(const Span& bytes);

/// What a calculated column has in front of its value is of no concern; this is the value.
Span Calculated(const Span& stored);

}  // namespace zephrin::reader::access
