#include "reader/excel/XmlScanner.h"

#include <cstring>
#include <string>

namespace zephrin::reader::excel {

namespace {

constexpr std::size_t FirstRoom = 256 * 1024;
/// A tag or a text that is longer is no workbook's.
constexpr std::size_t MostRoom = 64u << 20;
constexpr int Deepest = 1000;

[[noreturn]] void ThrowMalformed() {
    ThrowDamaged(QStringLiteral("a part of it is not well formed"));
}

bool IsBlank(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r';
}

std::string_view WithoutPrefix(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

void AppendLetter(unsigned long letter, std::string& into) {
    if (letter < 0x80) {
        into += char(letter);
    } else if (letter < 0x800) {
        into += char(0xc0 | letter >> 6);
        into += char(0x80 | (letter & 0x3f));
    } else if (letter < 0x10000) {
        if (letter >= 0xd800 && letter < 0xe000) letter = 0xfffd;
        into += char(0xe0 | letter >> 12);
        into += char(0x80 | (letter >> 6 & 0x3f));
        into += char(0x80 | (letter & 0x3f));
    } else if (letter < 0x110000) {
        into += char(0xf0 | letter >> 18);
        into += char(0x80 | (letter >> 12 & 0x3f));
        into += char(0x80 | (letter >> 6 & 0x3f));
        into += char(0x80 | (letter & 0x3f));
    } else {
        ThrowMalformed();
    }
}

}  // namespace

XmlScanner::XmlScanner(Source from) : source(std::move(from)), buffer(FirstRoom) {
    Fill();
    const auto starts = [&](std::string_view with) {
        return end >= with.size() && std::memcmp(buffer.data(), with.data(), with.size()) == 0;
    };
    if (starts("\xef\xbb\xbf")) at = 3;
    if (starts("\xff\xfe") || starts("\xfe\xff"))
        throw ReadError{ado::files::FailureKind::Unsupported,
                        QStringLiteral("a part of it is not written in UTF-8")};
}

/// Takes in more; what is behind `at` stays, perhaps at another place. False at the end of the part.
bool XmlScanner::Fill() {
    if (isOver) return false;
    if (at > 0) {
        std::memmove(buffer.data(), buffer.data() + at, end - at);
        end -= at;
        at = 0;
    }
    if (end == buffer.size()) {
        if (buffer.size() >= MostRoom) ThrowMalformed();
        buffer.resize(buffer.size() * 2);
    }
    const std::size_t got = source(buffer.data() + end, buffer.size() - end);
    end += got;
    isOver = got == 0;
    return got > 0;
}

/// Where the words begin, counted from `at`.
std::size_t XmlScanner::Find(std::string_view what, std::size_t from) {
    for (;;) {
        const std::string_view have(buffer.data() + at, end - at);
        if (const std::size_t found = have.find(what, from); found != std::string_view::npos) return found;
        from = have.size() >= what.size() ? have.size() - what.size() + 1 : 0;
        if (!Fill()) ThrowMalformed();
    }
}

/// Where the tag that begins at `at` has its closing bracket; one inside quotes is none.
std::size_t XmlScanner::TagEnd() {
    for (std::size_t from = 1;;) {
        const std::size_t close = Find(">", from);
        const std::string_view tag(buffer.data() + at, close);
        char quote = 0;
        for (const char letter : tag) {
            if (quote != 0)
                quote = letter == quote ? 0 : quote;
            else if (letter == '"' || letter == '\'')
                quote = letter;
        }
        if (quote == 0) return close;
        from = close + 1;
    }
}

XmlScanner::Token XmlScanner::Next() {
    if (closes) {
        closes = false;
        --depth;
        return Token::End;
    }
    for (;;) {
        if (at == end && !Fill()) {
            if (depth != 0) ThrowMalformed();
            return Token::Finish;
        }
        if (buffer[at] != '<') {
            // Between the declaration and the outermost element.
            if (depth == 0) {
                if (!IsBlank(buffer[at++])) ThrowMalformed();
                continue;
            }
            const std::size_t length = Find("<", 0);
            text = {buffer.data() + at, length};
            isPlain = false;
            at += length;
            return Token::Text;
        }
        while (end - at < 9 && Fill()) {
        }
        const std::string_view have(buffer.data() + at, end - at);
        if (have.starts_with("<!--")) {
            const std::size_t length = Find("-->", 4) + 3;
            at += length;
            continue;
        }
        if (have.starts_with("<![CDATA[")) {
            const std::size_t length = Find("]]>", 9);
            text = {buffer.data() + at + 9, length - 9};
            isPlain = true;
            at += length + 3;
            return Token::Text;
        }
        // A declaration of own entities is a way to make much of little; no workbook has one.
        if (have.starts_with("<!")) ThrowMalformed();
        if (have.starts_with("<?")) {
            const std::size_t length = Find("?>", 2) + 2;
            at += length;
            continue;
        }
        const std::size_t length = TagEnd();
        const std::string_view tag(buffer.data() + at + 1, length - 1);
        at += length + 1;
        if (tag.empty()) ThrowMalformed();
        if (tag.front() == '/') {
            if (--depth < 0) ThrowMalformed();
            name = tag.substr(1);
            while (!name.empty() && IsBlank(name.back())) name.remove_suffix(1);
            name = WithoutPrefix(name);
            return Token::End;
        }
        if (++depth > Deepest) ThrowMalformed();
        TakeTag(tag);
        return Token::Start;
    }
}

void XmlScanner::TakeTag(std::string_view tag) {
    closes = tag.back() == '/';
    if (closes) tag.remove_suffix(1);
    std::size_t length = 0;
    while (length < tag.size() && !IsBlank(tag[length])) ++length;
    name = WithoutPrefix(tag.substr(0, length));
    rest = tag.substr(length);
}

std::string_view XmlScanner::Attribute(std::string_view wanted) const {
    std::size_t from = 0;
    while (from < rest.size()) {
        while (from < rest.size() && IsBlank(rest[from])) ++from;
        const std::size_t equals = rest.find('=', from);
        if (equals == std::string_view::npos) break;
        std::string_view key = rest.substr(from, equals - from);
        while (!key.empty() && IsBlank(key.back())) key.remove_suffix(1);
        std::size_t open = equals + 1;
        while (open < rest.size() && IsBlank(rest[open])) ++open;
        if (open >= rest.size() || (rest[open] != '"' && rest[open] != '\'')) ThrowMalformed();
        const std::size_t close = rest.find(rest[open], open + 1);
        if (close == std::string_view::npos) ThrowMalformed();
        if (key == wanted || WithoutPrefix(key) == wanted) return rest.substr(open + 1, close - open - 1);
        from = close + 1;
    }
    return {};
}

void XmlScanner::AppendText(std::string& into) const {
    if (isPlain)
        into += text;
    else
        AppendUnescaped(text, into);
}

void XmlScanner::AppendUnescaped(std::string_view raw, std::string& into) {
    for (;;) {
        const std::size_t mark = raw.find('&');
        into += raw.substr(0, mark);
        if (mark == std::string_view::npos) return;
        raw.remove_prefix(mark + 1);
        const std::size_t close = raw.find(';');
        if (close == std::string_view::npos) ThrowMalformed();
        const std::string_view entity = raw.substr(0, close);
        raw.remove_prefix(close + 1);
        if (entity == "amp")
            into += '&';
        else if (entity == "lt")
            into += '<';
        else if (entity == "gt")
            into += '>';
        else if (entity == "quot")
            into += '"';
        else if (entity == "apos")
            into += '\'';
        else if (entity.size() > 1 && entity.front() == '#') {
            const bool isHex = entity[1] == 'x';
            const std::string digits(entity.substr(isHex ? 2 : 1));
            char* stop = nullptr;
            const unsigned long letter = std::strtoul(digits.c_str(), &stop, isHex ? 16 : 10);
            if (digits.empty() || *stop != 0) ThrowMalformed();
            AppendLetter(letter, into);
        } else {
            ThrowMalformed();
        }
    }
}

}  // namespace zephrin::reader::excel
