#pragma once

#include <QtGlobal>

#include <array>
#include <optional>

namespace zephrin::reader {

/// A text that is short and made often.
struct ShortText {
    std::array<char, 48> Bytes;
    int Size = 0;
};

/// A date counted in days since 1899-12-30, whose fraction is the time of the day also where the days are
/// negative. Nothing where it can't be a date.
std::optional<ShortText> DateOf(double days);
/// The day `sinceMarch0` behind 0000-03-01 and the time in it; `ticks` are the tenths of microseconds behind
/// the second.
ShortText WriteDate(qint64 sinceMarch0, qint64 secondOfDay, qint64 ticks);

}  // namespace zephrin::reader
