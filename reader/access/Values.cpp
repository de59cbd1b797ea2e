#include "reader/access/Values.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace zephrin::reader::access {

namespace {

constexpr qint64 SecondsPerDay = 86'400;
constexpr qint64 TicksPerSecond = 10'000'000;

/// Digits, perhaps with blanks in front; -1 for anything else.
qint64 Digits(const Span& bytes, int from, int to) {
    qint64 value = 0;
    for (int at = from; at < to; ++at) {
        const uchar digit = bytes.Data[at];
        if (digit == ' ' && value == 0) continue;
        if (digit < '0' || digit > '9' || value > 1'000'000'000'000'000) return -1;
        value = value * 10 + (digit - '0');
    }
    return value;
}

/// Divides a number of four words, the highest first, by 10 and returns what is left over.
quint32 DivideByTen(std::array<quint32, 4>& words) {
    quint64 rest = 0;
    for (quint32& word : words) {
        const quint64 now = rest << 32 | word;
        word = quint32(now / 10);
        rest = now % 10;
    }
    return quint32(rest);
}

}  // namespace

std::optional<ShortText> LongDateOf(const Span& bytes) {
    constexpr int colon = 19;
    if (bytes.Size < 2 * colon + 1 || bytes.Data[colon] != ':') return std::nullopt;
    const qint64 days = Digits(bytes, 0, colon);
    const qint64 ticks = Digits(bytes, colon + 1, 2 * colon + 1);
    if (days < 0 || days > 3'652'058 || ticks < 0 || ticks >= SecondsPerDay * TicksPerSecond)
        return std::nullopt;
    return WriteDate(days + 306, ticks / TicksPerSecond, ticks % TicksPerSecond);
}

QByteArray DecimalOf(bool isNegative, const Span& magnitude, int scale) {
    std::array<quint32, 4> words{};
    const int count = std::min(magnitude.Size / 4, 4);
    for (int word = 0; word < count; ++word)
        words[std::size_t(4 - count) + std::size_t(word)] = magnitude.Long(word * 4);
    QByteArray digits;
    while (std::any_of(words.begin(), words.end(), [](quint32 word) { return word != 0; }) ||
           digits.size() <= scale)
        digits.append(char('0' + DivideByTen(words)));
    if (scale > 0) digits.insert(scale, '.');
    if (isNegative && digits.count('0') + (scale > 0 ? 1 : 0) < digits.size()) digits.append('-');
    std::reverse(digits.begin(), digits.end());
    return digits;
}

ShortText GuidOf(const Span& bytes) {
    const uchar* b = bytes.Part(0, 16).Data;
    ShortText text;
    text.Size = std::snprintf(text.Bytes.data(), text.Bytes.size(),
                              "%02X%02X%02X%02X-%02X%02X-%02X%02X-%02X%02X-%02X%02X%02X%02X%02X%02X", b[3],
                              b[2], b[1], b[0], b[5], b[4], b[7], b[6], b[8], b[9], b[10], b[11], b[12],
                              b[13], b[14], b[15]);
    return text;
}

Span Calculated(const Span& stored) {
    constexpr int lengthAt = 16;
    constexpr int dataAt = 20;
    if (stored.Size < dataAt) return stored;
    const quint32 length = stored.Long(lengthAt);
    return stored.Part(dataAt, int(std::min(length, quint32(stored.Size - dataAt))));
}

}  // namespace zephrin::reader::access
