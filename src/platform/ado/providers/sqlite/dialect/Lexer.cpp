#include "platform/ado/providers/sqlite/dialect/Lexer.h"

#include "platform/ado/providers/sqlite/dialect/Limits.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"

#include <algorithm>
#include <array>

namespace zephrin::ado::providers::sqlite {

namespace {

/// Those of other scripts mean nothing in a statement, and the engine would not know them.
bool IsDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

bool BeginsWord(QChar character) {
    return character.isLetter() || character == u'_' || character.isSurrogate();
}

bool ContinuesWord(QChar character) {
    return BeginsWord(character) || character.isDigit() || character.isMark() || character == u'$' ||
           character == u'@' || character == u'#';
}

class Scanner {
 public:
    Scanner(const QString& text, Dialect speaks) : statement(text), dialect(speaks) {}

    QList<Token> Run() {
        if (statement.size() > Limits::StatementCharacters) throw TooLong(Limits::StatementCharacters);
        // The engine would read the statement only that far.
        if (const qsizetype end = statement.indexOf(QChar::Null); end >= 0)
            throw SyntaxNear(dialect, QStringLiteral("\\0"), end);
        QList<Token> tokens;
        for (SkipBlanks(); at < statement.size(); SkipBlanks()) tokens.append(Next());
        tokens.append({TokenKind::End, at, at, QString()});
        return tokens;
    }

 private:
    QChar Peek(qsizetype ahead = 0) const {
        return at + ahead < statement.size() ? statement[at + ahead] : QChar();
    }

    Token Next() {
        const QChar character = Peek();
        const bool file = IsFileDialect(dialect);
        if (character == u'[') return Delimited(TokenKind::QuotedName, u']', 1);
        if (character == u'\'') return Delimited(TokenKind::Text, u'\'', 1);
        if (character == u'"') return Delimited(file ? TokenKind::Text : TokenKind::QuotedName, u'"', 1);
        if (character == u'`' && file) return Delimited(TokenKind::QuotedName, u'`', 1);
        if (character == u'#' && file) return Delimited(TokenKind::Date, u'#', 1);
        if ((character == u'N' || character == u'n') && Peek(1) == u'\'' && !file)
            return Delimited(TokenKind::Text, u'\'', 2);
        if (IsDigit(character) || (character == u'.' && IsDigit(Peek(1)))) return Number();
        if (character == u'$' && IsDigit(Peek(1)) && !file) return Money();
        if (BeginsWord(character)) return Word();
        return Symbol();
    }

    void SkipBlanks() {
        for (;;) {
            if (Peek().isSpace() || Peek() == QChar::ByteOrderMark) {
                ++at;
            } else if (Peek() == u'-' && Peek(1) == u'-') {
                while (at < statement.size() && Peek() != u'\n') ++at;
            } else if (Peek() == u'/' && Peek(1) == u'*') {
                SkipBlockComment();
            } else {
                return;
            }
        }
    }

    /// The server's block comments nest.
    void SkipBlockComment() {
        const qsizetype from = at;
        int depth = 0;
        do {
            if (at >= statement.size()) throw Unclosed(dialect, Open::Comment, statement.sliced(from), from);
            if (Peek() == u'/' && Peek(1) == u'*') {
                ++depth;
                at += 2;
            } else if (Peek() == u'*' && Peek(1) == u'/') {
                --depth;
                at += 2;
            } else {
                ++at;
            }
        } while (depth > 0);
    }

    /// A doubled closing delimiter stands for itself.
    Token Delimited(TokenKind kind, QChar close, qsizetype opening) {
        Token token{kind, at, at, QString()};
        for (at += opening; at < statement.size(); ++at) {
            if (Peek() == close) {
                ++at;
                if (Peek() != close || kind == TokenKind::Date) {
                    token.To = at;
                    return token;
                }
            }
            token.Text += Peek();
        }
        throw Unclosed(dialect,
                       kind == TokenKind::Date         ? Open::Date
                       : kind == TokenKind::QuotedName ? Open::Name
                                                       : Open::Text,
                       token.Text, token.From);
    }

    Token Number() {
        const qsizetype from = at;
        if (Peek() == u'0' && (Peek(1) == u'x' || Peek(1) == u'X') && !IsFileDialect(dialect))
            return BinaryNumber();
        while (IsDigit(Peek())) ++at;
        if (Peek() == u'.') ++at;
        while (IsDigit(Peek())) ++at;
        if (Peek() == u'e' || Peek() == u'E') {
            const qsizetype sign = Peek(1) == u'+' || Peek(1) == u'-' ? 2 : 1;
            if (IsDigit(Peek(sign)))
                for (at += sign; IsDigit(Peek());) ++at;
        }
        return {TokenKind::Number, from, at, statement.sliced(from, at - from)};
    }

    Token BinaryNumber() {
        const qsizetype from = at;
        const auto isHex = [](QChar digit) {
            return (digit >= u'0' && digit <= u'9') || (digit.toLower() >= u'a' && digit.toLower() <= u'f');
        };
        for (at += 2; isHex(Peek());) ++at;
        return {TokenKind::Binary, from, at, statement.sliced(from + 2, at - from - 2)};
    }

    Token Money() {
        const qsizetype from = at++;
        Token token = Number();
        token.From = from;
        return token;
    }

    Token Word() {
        const qsizetype from = at;
        while (at < statement.size() && ContinuesWord(Peek())) {
            // A date that stands right behind a word, as in AND#1/2/2003#, does not belong to it.
            if (Peek() == u'#' && IsFileDialect(dialect)) break;
            ++at;
        }
        return {TokenKind::Word, from, at, statement.sliced(from, at - from)};
    }

    Token Symbol() {
        static constexpr std::array pairs{
            QLatin1StringView("<>"), QLatin1StringView("<="), QLatin1StringView(">="),
            QLatin1StringView("!="), QLatin1StringView("!<"), QLatin1StringView("!>"),
        };
        static constexpr QLatin1StringView singles("=<>+-*/&|^~%(),.;\\!?@");
        const qsizetype from = at;
        const QStringView two = QStringView(statement).sliced(at).left(2);
        qsizetype length = 1;
        if (std::find(pairs.begin(), pairs.end(), two) != pairs.end())
            length = 2;
        else if (!singles.contains(Peek()))
            throw SyntaxNear(dialect, statement.sliced(at, 1), at);
        at += length;
        return {TokenKind::Symbol, from, at, statement.sliced(from, length)};
    }

    const QString& statement;
    Dialect dialect;
    qsizetype at = 0;
};

}  // namespace

QList<Token> Tokenize(const QString& statement, Dialect dialect) {
    return Scanner(statement, dialect).Run();
}

}  // namespace zephrin::ado::providers::sqlite
