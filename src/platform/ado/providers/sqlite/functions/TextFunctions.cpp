#include "platform/ado/providers/sqlite/functions/Functions.h"

#include <algorithm>
#include <string_view>

namespace zephrin::ado::providers::sqlite {

namespace {

// Longer than any text that a statement has a use for, short enough not to eat the memory.
constexpr qint64 LongestText = 100'000'000;

bool TooLong(Call& call, qint64 length) {
    if (length <= LongestText) return false;
    call.Fail(QStringLiteral("The text would become too long."), QStringLiteral("Out of string space."));
    return true;
}

/// The count of characters that LEFT and RIGHT take, or nothing after a failure.
std::optional<qint64> Length(Call& call, const char* function) {
    const std::optional<qint64> length = call.Whole(1);
    if (length && *length >= 0) return length;
    if (length)
        call.Fail(QStringLiteral("Invalid length parameter passed to the %1 function.")
                      .arg(QLatin1StringView(function)),
                  QStringLiteral("Invalid procedure call: the length for %1 is negative.")
                      .arg(QLatin1StringView(function)));
    return std::nullopt;
}

void Left(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    if (const auto length = Length(call, "left")) call.Return(call.Text(0).left(*length));
}

void Right(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const QString text = call.Text(0);
    if (const auto length = Length(call, "right")) call.Return(text.right(*length));
}

/// The server counts from 1 and takes positions in front of the text too, a file refuses them.
void Mid(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const QString text = call.Text(0);
    const std::optional<qint64> start = call.Whole(1);
    const std::optional<qint64> length =
        call.Count() > 2 ? call.Whole(2) : std::optional<qint64>(text.size());
    if (!start || !length) return;
    if (*length < 0 || (call.IsFile() && *start < 1))
        return call.Fail(
            QStringLiteral("Invalid length parameter passed to the substring function."),
            QStringLiteral("Invalid procedure call: the start or the length for Mid is out of range."));
    const qint64 size = text.size();
    // Further in front than the longest text, no length reaches the text either.
    const qint64 begin = std::max<qint64>(*start, -LongestText) - 1;
    const qint64 from = std::clamp<qint64>(begin, 0, size);
    const qint64 to =
        std::clamp<qint64>(begin >= size ? size : begin + std::min(*length, LongestText), from, size);
    call.Return(text.sliced(from, to - from));
}

/// Only blanks go, as on the servers; tabs and line ends stay.
QString WithoutBlanks(const QString& text, bool left, bool right) {
    qsizetype from = 0;
    qsizetype to = text.size();
    while (left && from < to && text[from] == u' ') ++from;
    while (right && to > from && text[to - 1] == u' ') --to;
    return text.sliced(from, to - from);
}

void LTrim(Call& call) {
    call.IsNull(0) ? call.ReturnNull() : call.Return(WithoutBlanks(call.Text(0), true, false));
}
void RTrim(Call& call) {
    call.IsNull(0) ? call.ReturnNull() : call.Return(WithoutBlanks(call.Text(0), false, true));
}
void Trim(Call& call) {
    call.IsNull(0) ? call.ReturnNull() : call.Return(WithoutBlanks(call.Text(0), true, true));
}

/// Blanks at the end don't count on a server.
void Len(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const QString text = call.Text(0);
    call.Return(qint64(call.IsFile() ? text.size() : WithoutBlanks(text, false, true).size()));
}

void Upper(Call& call) {
    call.IsNull(0) ? call.ReturnNull() : call.Return(call.Text(0).toUpper());
}
void Lower(Call& call) {
    call.IsNull(0) ? call.ReturnNull() : call.Return(call.Text(0).toLower());
}

void Replace(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const QString old = call.Text(1);
    QString text = call.Text(0);
    if (!old.isEmpty()) text.replace(old, call.Text(2), Qt::CaseInsensitive);
    call.Return(text);
}

void Space(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const std::optional<qint64> length = call.Whole(0);
    if (!length || TooLong(call, *length)) return;
    // The server gives Null for less than none.
    if (*length < 0) return call.IsFile() ? call.FailArgument(QStringLiteral("Space")) : call.ReturnNull();
    call.Return(QString(*length, u' '));
}

void Replicate(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<qint64> times = call.Whole(1);
    if (!times) return;
    if (*times < 0) return call.ReturnNull();
    const QString text = call.Text(0);
    if (TooLong(call, *times) || TooLong(call, *times * text.size())) return;
    call.Return(text.repeated(*times));
}

void Reverse(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    QString text = call.Text(0);
    std::reverse(text.begin(), text.end());
    call.Return(text);
}

void CharIndex(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const std::optional<qint64> start = call.Count() > 2 ? call.Whole(2) : std::optional<qint64>(1);
    if (!start) return;
    const QString part = call.Text(0);
    const qint64 from = std::max<qint64>(*start, 1) - 1;
    call.Return(part.isEmpty() ? qint64(0)
                               : qint64(call.Text(1).indexOf(part, from, Qt::CaseInsensitive) + 1));
}

/// INSTR([start,] text, part): the start comes first and may be left out.
void InStr(Call& call) {
    if (call.AnyNull()) return call.ReturnNull();
    const int first = call.Count() > 2 ? 1 : 0;
    const std::optional<qint64> start = first > 0 ? call.Whole(0) : std::optional<qint64>(1);
    if (!start) return;
    if (*start < 1) return call.FailArgument(QStringLiteral("InStr"));
    call.Return(qint64(call.Text(first).indexOf(call.Text(first + 1), *start - 1, Qt::CaseInsensitive) + 1));
}

/// Numbers above 127 mean the characters of the Western code page.
QChar WesternCharacter(int code) {
    static constexpr std::u16string_view from128 =
        u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D\u008F"
        u"\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178";
    return code >= 128 && code < 160 ? QChar(from128[size_t(code - 128)]) : QChar(char16_t(code));
}

void Char(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const std::optional<qint64> code = call.Whole(0);
    if (!code) return;
    if (*code < 0 || *code > 255)
        return call.IsFile() ? call.FailArgument(QStringLiteral("Chr")) : call.ReturnNull();
    call.Return(QString(WesternCharacter(int(*code))));
}

void Asc(Call& call) {
    if (call.IsNull(0)) return call.ReturnNull();
    const QString text = call.Text(0);
    if (text.isEmpty()) return call.IsFile() ? call.FailArgument(QStringLiteral("Asc")) : call.ReturnNull();
    const QChar character = text.front();
    for (int code = 128; code < 160; ++code)
        if (WesternCharacter(code) == character) return call.Return(qint64(code));
    call.Return(qint64(character.unicode()));
}

/// Here Null is an empty text.
void Concat(Call& call) {
    QString all;
    for (int index = 0; index < call.Count(); ++index) all += call.Text(index);
    call.Return(all);
}

void IsNumeric(Call& call) {
    const bool number = !call.IsNull(0) && (call.Storage(0) != SQLITE_TEXT || NumberIn(call.Text(0)));
    call.Return(qint64(!number ? 0 : call.IsFile() ? -1 : 1));
}

}  // namespace

QList<FunctionEntry> TextFunctions() {
    return {
        {"zx_left", 2, 2, Left},
        {"zx_right", 2, 2, Right},
        {"zx_mid", 2, 3, Mid},
        {"zx_ltrim", 1, 1, LTrim},
        {"zx_rtrim", 1, 1, RTrim},
        {"zx_trim", 1, 1, Trim},
        {"zx_len", 1, 1, Len},
        {"zx_upper", 1, 1, Upper},
        {"zx_lower", 1, 1, Lower},
        {"zx_replace", 3, 3, Replace},
        {"zx_space", 1, 1, Space},
        {"zx_replicate", 2, 2, Replicate},
        {"zx_reverse", 1, 1, Reverse},
        {"zx_charindex", 2, 3, CharIndex},
        {"zx_instr", 2, 4, InStr},
        {"zx_char", 1, 1, Char},
        {"zx_asc", 1, 1, Asc},
        {"zx_concat", 2, 254, Concat},
        {"zx_isnumeric", 1, 1, IsNumeric},
    };
}

}  // namespace zephrin::ado::providers::sqlite
