#include "reader/access/TextDecoder.h"

namespace zephrin::reader::access {

namespace {

constexpr char32_t Unknown = 0xfffd;

char* Put(char* into, char32_t letter) {
    if (letter < 0x80) {
        *into++ = char(letter);
    } else if (letter < 0x800) {
        *into++ = char(0xc0 | letter >> 6);
        *into++ = char(0x80 | (letter & 0x3f));
    } else if (letter < 0x10000) {
        *into++ = char(0xe0 | letter >> 12);
        *into++ = char(0x80 | (letter >> 6 & 0x3f));
        *into++ = char(0x80 | (letter & 0x3f));
    } else {
        *into++ = char(0xf0 | letter >> 18);
        *into++ = char(0x80 | (letter >> 12 & 0x3f));
        *into++ = char(0x80 | (letter >> 6 & 0x3f));
        *into++ = char(0x80 | (letter & 0x3f));
    }
    return into;
}

/// Writes units of UTF-16 one after the other. Half a pair that stands alone is no letter.
class UnitWriter {
 public:
    explicit UnitWriter(char* room) : at(room) {}

    void Put(char16_t unit) {
        if (unit >= 0xdc00 && unit < 0xe000 && high != 0) {
            at = access::Put(at, 0x10000 + ((high - 0xd800u) << 10) + (unit - 0xdc00u));
            high = 0;
            return;
        }
        Flush();
        if (unit >= 0xd800 && unit < 0xdc00)
            high = unit;
        else
            at = access::Put(at, unit >= 0xdc00 && unit < 0xe000 ? Unknown : unit);
    }
    char* End() {
        Flush();
        return at;
    }

 private:
    void Flush() {
        if (high != 0) at = access::Put(at, Unknown);
        high = 0;
    }
    char* at;
    char16_t high = 0;
};

char* FromUnits(const Span& text, char* into) {
    UnitWriter writer(into);
    for (int at = 0; at + 1 < text.Size; at += 2)
        writer.Put(char16_t(text.Data[at] | text.Data[at + 1] << 8));
    return writer.End();
}

/// The shortened form: one byte a letter until a 0, then two until the next.
char* FromShortened(const Span& text, char* into) {
    const uchar* at = text.Data + 2;
    const uchar* const end = text.Data + text.Size;
    // Nearly all texts are plain bytes to their end.
    while (at < end && *at != 0 && *at < 0x80) *into++ = char(*at++);
    UnitWriter writer(into);
    bool isShort = true;
    while (at < end) {
        if (*at == 0) {
            isShort = !isShort;
            ++at;
        } else if (isShort) {
            writer.Put(*at++);
        } else if (at + 1 < end) {
            writer.Put(char16_t(at[0] | at[1] << 8));
            at += 2;
        } else {
            break;
        }
    }
    return writer.End();
}

}  // namespace

TextDecoder::TextDecoder(int codePage) : isWide(codePage == 0) {
    if (isWide) return;
    converter = iconv_open("UTF-8", QByteArray("CP" + QByteArray::number(codePage)).constData());
    if (converter == iconv_t(-1)) converter = iconv_open("UTF-8", "CP1252");
}

TextDecoder::~TextDecoder() {
    if (converter != iconv_t(-1)) iconv_close(converter);
}

qsizetype TextDecoder::Decode(const Span& text, char* into) {
    if (!isWide) return FromCodePage(text, into);
    const bool isShortened = text.Size >= 2 && text.Data[0] == 0xff && text.Data[1] == 0xfe;
    return (isShortened ? FromShortened(text, into) : FromUnits(text, into)) - into;
}

QByteArray TextDecoder::Decoded(const Span& text) {
    QByteArray decoded(Most(text), Qt::Uninitialized);
    decoded.truncate(Decode(text, decoded.data()));
    return decoded;
}

qsizetype TextDecoder::FromCodePage(const Span& text, char* into) {
    char* const begin = into;
    char* from = const_cast<char*>(reinterpret_cast<const char*>(text.Data));
    std::size_t left = std::size_t(text.Size);
    while (left > 0 && uchar(*from) < 0x80) {
        *into++ = *from++;
        --left;
    }
    std::size_t room = left * 3 + 8;
    while (left > 0 && room >= 3) {
        if (converter != iconv_t(-1) && iconv(converter, &from, &left, &into, &room) != std::size_t(-1))
            break;
        // A byte that means nothing in this code page.
        if (left == 0 || room < 3) break;
        into = Put(into, Unknown);
        room -= 3;
        ++from;
        --left;
    }
    return into - begin;
}

}  // namespace zephrin::reader::access
