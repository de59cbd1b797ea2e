#include "platform/ado/providers/sqlite/values/Exact.h"

#include <array>
#include <charconv>
#include <cmath>

namespace zephrin::ado::providers::sqlite {

namespace {

using Integer = Exact::Integer;
__extension__ typedef unsigned __int128 Natural;

constexpr std::array<Integer, MostDigits + 1> MakePowers() {
    std::array<Integer, MostDigits + 1> powers{};
    powers[0] = 1;
    for (size_t index = 1; index < powers.size(); ++index) powers[index] = powers[index - 1] * 10;
    return powers;
}
constexpr auto powers = MakePowers();

Natural Magnitude(Integer value) {
    return value < 0 ? -Natural(value) : Natural(value);
}

/// 256 bits, for what two numbers of 38 digits make.
struct Double128 {
    Natural High = 0;
    Natural Low = 0;
};

Double128 Multiplied(Natural a, Natural b) {
    const Natural half = ~quint64(0);
    const Natural aLow = a & half, aHigh = a >> 64, bLow = b & half, bHigh = b >> 64;
    const Natural low = aLow * bLow;
    const Natural middle = aHigh * bLow + (low >> 64);
    const Natural cross = aLow * bHigh + (middle & half);
    return {aHigh * bHigh + (middle >> 64) + (cross >> 64), (cross << 64) | (low & half)};
}

/// Bit by bit, for the rare numbers beyond 128 bits; nothing where the quotient is beyond them too.
std::optional<Natural> Divided(const Double128& value, Natural by, Natural& remainder) {
    if (value.High >= by) return std::nullopt;
    Natural rest = value.High;
    Natural quotient = 0;
    for (int bit = 127; bit >= 0; --bit) {
        const bool carry = rest >> 127;
        rest = (rest << 1) | ((value.Low >> bit) & 1);
        quotient <<= 1;
        if (carry || rest >= by) {
            rest -= by;
            quotient |= 1;
        }
    }
    remainder = rest;
    return quotient;
}

/// The quotient of magnitudes, rounded as the sign of the whole asks for.
std::optional<Integer> Settled(Natural quotient, Natural remainder, Natural by, bool negative, Rounding how) {
    bool up = false;
    switch (how) {
        case Rounding::Cut:
            break;
        case Rounding::Down:
            up = negative && remainder != 0;
            break;
        case Rounding::Up:
            up = !negative && remainder != 0;
            break;
        case Rounding::HalfAway:
            up = remainder >= by - remainder;
            break;
        case Rounding::HalfEven:
            up = remainder > by - remainder || (remainder == by - remainder && (quotient & 1));
            break;
    }
    if (up && by > 1) ++quotient;
    if (quotient >= Natural(powers[MostDigits])) return std::nullopt;
    return negative ? -Integer(quotient) : Integer(quotient);
}

std::optional<Exact> Scaled(const Double128& magnitude, Natural by, bool negative, int scale, Rounding how) {
    Natural remainder = 0;
    std::optional<Natural> quotient;
    if (magnitude.High == 0) {
        quotient = magnitude.Low / by;
        remainder = magnitude.Low % by;
    } else {
        quotient = Divided(magnitude, by, remainder);
    }
    if (!quotient) return std::nullopt;
    const std::optional<Integer> units = Settled(*quotient, remainder, by, negative, how);
    return units ? std::optional<Exact>({*units, scale}) : std::nullopt;
}

}  // namespace

Integer PowerOfTen(int exponent) {
    return powers[size_t(exponent)];
}

bool FitsDigits(const Exact& value, int precision) {
    return Magnitude(value.Units) < Natural(powers[size_t(precision)]);
}

std::optional<Exact> Rescaled(const Exact& value, int scale, Rounding how) {
    if (scale == value.Scale) return value;
    const bool negative = value.Units < 0;
    if (scale > value.Scale)
        return Scaled(Multiplied(Magnitude(value.Units), Natural(PowerOfTen(scale - value.Scale))), 1,
                      negative, scale, how);
    return Scaled({0, Magnitude(value.Units)}, Natural(PowerOfTen(value.Scale - scale)), negative, scale,
                  how);
}

std::optional<Exact> Sum(const Exact& a, const Exact& b, int scale) {
    // Both keep all of their places until they are added.
    const int places = std::max(a.Scale, b.Scale);
    if (a.Scale == b.Scale && places == scale) {
        const Exact plain{Integer(Natural(a.Units) + Natural(b.Units)), scale};
        // 38 digits leave room for two of them.
        return FitsDigits(plain, MostDigits) ? std::optional(plain) : std::nullopt;
    }
    const std::optional<Exact> left = Rescaled(a, places);
    const std::optional<Exact> right = Rescaled(b, places);
    if (!left || !right) return std::nullopt;
    Exact sum{0, places};
    if (__builtin_add_overflow(left->Units, right->Units, &sum.Units)) return std::nullopt;
    if (!FitsDigits(sum, MostDigits)) return std::nullopt;
    return Rescaled(sum, scale);
}

std::optional<Exact> Product(const Exact& a, const Exact& b, int scale, Rounding how) {
    const bool negative = (a.Units < 0) != (b.Units < 0);
    const Double128 product = Multiplied(Magnitude(a.Units), Magnitude(b.Units));
    const int places = a.Scale + b.Scale;
    if (places >= scale) {
        // More than 38 places at once have to go in two steps; the first one only drops what can't be seen.
        const int drop = std::min(places - scale, MostDigits);
        const std::optional<Exact> once =
            Scaled(product, Natural(PowerOfTen(drop)), negative, places - drop, how);
        return once ? Rescaled(*once, scale, how) : once;
    }
    if (product.High != 0) return std::nullopt;
    return Scaled(Multiplied(product.Low, Natural(PowerOfTen(scale - places))), 1, negative, scale, how);
}

std::optional<Exact> Quotient(const Exact& a, const Exact& b, int scale) {
    const bool negative = (a.Units < 0) != (b.Units < 0);
    const int shift = scale - a.Scale + b.Scale;
    Natural dividend = Magnitude(a.Units);
    Natural divisor = Magnitude(b.Units);
    if (shift < 0) {
        const std::optional<Exact> less = Rescaled({Integer(dividend), -shift}, 0, Rounding::Cut);
        return less ? Scaled({0, Natural(less->Units)}, divisor, negative, scale, Rounding::Cut) : less;
    }
    if (shift <= MostDigits)
        return Scaled(Multiplied(dividend, Natural(PowerOfTen(shift))), divisor, negative, scale,
                      Rounding::Cut);
    // Beyond 38 places of shift the quotient comes in two halves: what divides at once, and what is left of
    // it.
    const Natural whole = dividend / divisor;
    if (whole != 0) return std::nullopt;
    Natural rest = 0;
    const std::optional<Natural> high =
        Divided(Multiplied(dividend, Natural(PowerOfTen(MostDigits))), divisor, rest);
    if (!high) return std::nullopt;
    const Natural more = Natural(PowerOfTen(shift - MostDigits));
    const Double128 first = Multiplied(*high, more);
    Natural unused = 0;
    const std::optional<Natural> low = Divided(Multiplied(rest, more), divisor, unused);
    if (first.High != 0 || !low) return std::nullopt;
    const std::optional<Integer> units = Settled(first.Low + *low, 0, 1, negative, Rounding::Cut);
    return units ? std::optional<Exact>({*units, scale}) : std::nullopt;
}

std::optional<Exact> Remainder(const Exact& a, const Exact& b, int scale) {
    const int places = std::max(a.Scale, b.Scale);
    const std::optional<Exact> left = Rescaled(a, places);
    const std::optional<Exact> right = Rescaled(b, places);
    if (!left || !right) return std::nullopt;
    return Rescaled({left->Units % right->Units, places}, scale);
}

int Compare(const Exact& a, const Exact& b) {
    const bool aNegative = a.Units < 0;
    if (aNegative != (b.Units < 0)) return aNegative ? -1 : 1;
    // Without a sign, brought to the places of both, in 256 bits.
    const int places = std::max(a.Scale, b.Scale);
    const Double128 left = Multiplied(Magnitude(a.Units), Natural(PowerOfTen(places - a.Scale)));
    const Double128 right = Multiplied(Magnitude(b.Units), Natural(PowerOfTen(places - b.Scale)));
    int order = 0;
    if (left.High != right.High)
        order = left.High < right.High ? -1 : 1;
    else if (left.Low != right.Low)
        order = left.Low < right.Low ? -1 : 1;
    return aNegative ? -order : order;
}

std::optional<Exact> ExactOfText(QStringView text) {
    QStringView digits = text.trimmed();
    const bool negative = digits.startsWith(u'-');
    if (negative || digits.startsWith(u'+')) digits = digits.sliced(1);
    Exact value;
    bool any = false;
    bool pointed = false;
    bool roundUp = false;
    bool full = false;
    for (const QChar character : digits) {
        if (character == u'.' && !pointed) {
            pointed = true;
            continue;
        }
        if (character < u'0' || character > u'9') return std::nullopt;
        any = true;
        const int digit = character.unicode() - u'0';
        if (!full && FitsDigits(value, MostDigits - 1)) {
            value.Units = value.Units * 10 + digit;
            value.Scale += pointed;
        } else if (!pointed) {
            return std::nullopt;
        } else if (!full) {
            full = true;
            roundUp = digit >= 5;
        }
    }
    if (!any) return std::nullopt;
    if (roundUp && !FitsDigits({value.Units + 1, 0}, MostDigits)) return std::nullopt;
    value.Units += roundUp;
    if (negative) value.Units = -value.Units;
    return value;
}

std::optional<Exact> ExactOfDouble(double value, int scale) {
    if (!(std::fabs(value) < 1e38)) return std::nullopt;
    // What was made of a number of up to fifteen digits is that number again.
    if (scale <= 22 && std::fabs(value) < 1e15) {
        const double units = value * double(PowerOfTen(scale));
        if (std::fabs(units) < 1e15) return Exact{Integer(std::llround(units)), scale};
    }
    std::array<char, 64> text;
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (written.ec != std::errc()) return Exact{0, scale};
    const std::optional<Exact> exact =
        ExactOfText(QString::fromLatin1(text.data(), qsizetype(written.ptr - text.data())));
    return exact ? Rescaled(*exact, scale) : exact;
}

double ToDouble(const Exact& value) {
    // Exact over exact is the nearest double.
    if (Magnitude(value.Units) < (Natural(1) << 53) && value.Scale <= 22)
        return double(value.Units) / double(PowerOfTen(value.Scale));
    return ToDigits(value).toDouble();
}

QByteArray ToDigits(const Exact& value) {
    std::array<char, 48> text;
    char* at = text.data() + text.size();
    Natural rest = Magnitude(value.Units);
    int places = value.Scale;
    do {
        *--at = char('0' + int(rest % 10));
        rest /= 10;
        if (--places == 0) *--at = '.';
    } while (rest != 0 || places >= 0);
    if (value.Units < 0) *--at = '-';
    return QByteArray(at, text.data() + text.size() - at);
}

/// The bytes from the highest on with the sign turned, and the scale behind them.
QByteArray ToWide(const Exact& value) {
    Natural bits = Natural(value.Units) ^ (Natural(1) << 127);
    QByteArray bytes(WideBytes, Qt::Uninitialized);
    for (int index = 15; index >= 0; --index, bits >>= 8) bytes[index] = char(quint8(bits));
    bytes[WideBytes - 1] = char(value.Scale);
    return bytes;
}

std::optional<Exact> OfWide(const void* bytes, int count) {
    const auto* const data = static_cast<const quint8*>(bytes);
    if (count != WideBytes || data[WideBytes - 1] > MostDigits) return std::nullopt;
    Natural bits = 0;
    for (int index = 0; index < WideBytes - 1; ++index) bits = (bits << 8) | data[index];
    return Exact{Integer(bits ^ (Natural(1) << 127)), data[WideBytes - 1]};
}

}  // namespace zephrin::ado::providers::sqlite
