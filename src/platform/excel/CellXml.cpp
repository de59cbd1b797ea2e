#include "platform/excel/CellXml.h"

#include <QByteArrayView>

#include <charconv>
#include <cmath>

namespace zephrin::excel {

namespace {

constexpr int ExactDigits = 15;
/// Day numbers of 1970-01-01 and of 1900-03-01, the first day behind the one that never was.
constexpr std::int64_t EpochSerial = 25'569;
constexpr std::int64_t FirstSoundSerial = 61;

bool IsHex(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Whether the text at `at` reads "_xHHHH_".
bool LooksLikeEscape(std::string_view text, size_t at) {
    if (at + 7 > text.size() || text[at + 1] != 'x' || text[at + 6] != '_') return false;
    for (size_t digit = at + 2; digit < at + 6; ++digit)
        if (!IsHex(text[digit])) return false;
    return true;
}

/// Bytes of the noncharacters U+FFFE and U+FFFF, which XML can't hold.
bool IsNoncharacter(std::string_view text, size_t at) {
    return at + 3 <= text.size() && text[at] == '\xEF' && text[at + 1] == '\xBF' &&
           (text[at + 2] == '\xBE' || text[at + 2] == '\xBF');
}

/// Length in bytes of at most `units` UTF-16 units of valid UTF-8.
size_t PrefixOf(std::string_view text, qsizetype units) {
    qsizetype seen = 0;
    for (size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if ((byte & 0xC0) == 0x80) continue;
        seen += byte >= 0xF0 ? 2 : 1;
        if (seen > units) return at;
    }
    return text.size();
}

void AppendStyle(QByteArray& out, CellStyle style) {
    if (style == CellStyle::General) return;
    out.append(" s=\"").append(static_cast<char>('0' + static_cast<int>(style))).append('"');
}

bool HasEdgeBlank(std::string_view text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    return !text.empty() && (isBlank(text.front()) || isBlank(text.back()) || text.find('\n') != text.npos);
}

int SignificantDigits(std::string_view digits) {
    int count = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') continue;
        if (count > 0 || c != '0') ++count;
    }
    return count;
}

}  // namespace

void AppendEscaped(QByteArray& out, std::string_view text) {
    size_t plain = 0;
    const auto flush = [&](size_t to) {
        out.append(text.data() + plain, static_cast<qsizetype>(to - plain));
        plain = to + 1;
    };
    for (size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '&') {
            flush(at);
            out.append("&amp;");
        } else if (c == '<') {
            flush(at);
            out.append("&lt;");
        } else if (c == '>') {
            flush(at);
            out.append("&gt;");
        } else if (c == '"') {
            flush(at);
            out.append("&quot;");
        } else if (c == '\r') {
            flush(at);
            out.append("&#13;");
        } else if (c == '_' && LooksLikeEscape(text, at)) {
            flush(at);
            out.append("_x005F_");
        } else if (static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n') {
            flush(at);
        } else if (c == '\xEF' && IsNoncharacter(text, at)) {
            flush(at);
            at += 2;
            plain = at + 1;
        }
    }
    if (plain < text.size()) flush(text.size());
}

QByteArray Escaped(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    QByteArray out;
    AppendEscaped(out, {utf8.constData(), static_cast<size_t>(utf8.size())});
    return out;
}

bool AppendTextCell(QByteArray& out, std::string_view utf8, CellStyle style) {
    // A text that was no UTF-8 to begin with would make the whole part unreadable.
    QByteArray repaired;
    if (!QByteArrayView(utf8.data(), static_cast<qsizetype>(utf8.size())).isValidUtf8()) {
        repaired = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())).toUtf8();
        utf8 = {repaired.constData(), static_cast<size_t>(repaired.size())};
    }
    const bool whole =
        static_cast<qsizetype>(utf8.size()) <= CellTextLimit || PrefixOf(utf8, CellTextLimit) == utf8.size();
    if (!whole) utf8 = utf8.substr(0, PrefixOf(utf8, CellTextLimit));
    out.append("<c");
    AppendStyle(out, style);
    out.append(HasEdgeBlank(utf8) ? " t=\"inlineStr\"><is><t xml:space=\"preserve\">"
                                  : " t=\"inlineStr\"><is><t>");
    AppendEscaped(out, utf8);
    out.append("</t></is></c>");
    return whole;
}

void AppendEmptyCell(QByteArray& out) {
    out.append("<c/>");
}

void AppendBoolCell(QByteArray& out, bool value) {
    out.append(value ? "<c t=\"b\"><v>1</v></c>" : "<c t=\"b\"><v>0</v></c>");
}

void AppendNumberCell(QByteArray& out, double value, CellStyle style) {
    if (!std::isfinite(value)) {
        AppendTextCell(out, std::isnan(value) ? "NaN" : value < 0 ? "-Infinity" : "Infinity");
        return;
    }
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    out.append("<c");
    AppendStyle(out, style);
    out.append("><v>").append(digits, end - digits).append("</v></c>");
}

void AppendIntegerCell(QByteArray& out, std::int64_t value) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    AppendDecimalCell(out, {digits, static_cast<size_t>(end - digits)});
}

void AppendDecimalCell(QByteArray& out, std::string_view digits, CellStyle style) {
    if (SignificantDigits(digits) > ExactDigits) {
        AppendTextCell(out, digits);
        return;
    }
    out.append("<c");
    AppendStyle(out, style);
    out.append("><v>").append(digits.data(), static_cast<qsizetype>(digits.size())).append("</v></c>");
}

double DaySerial(std::int64_t daysSinceEpoch) {
    const std::int64_t serial = daysSinceEpoch + EpochSerial;
    return static_cast<double>(serial >= FirstSoundSerial ? serial : serial >= 2 ? serial - 1 : -1);
}

QString ColumnLetters(int column) {
    QString letters;
    for (int rest = column + 1; rest > 0; rest = (rest - 1) / 26)
        letters.prepend(QChar(u'A' + static_cast<char16_t>((rest - 1) % 26)));
    return letters;
}

}  // namespace zephrin::excel
