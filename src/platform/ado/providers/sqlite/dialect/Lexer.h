#pragma once

#include "platform/ado/providers/sqlite/values/Dialect.h"

#include <QList>
#include <QString>

namespace zephrin::ado::providers::sqlite {

enum class TokenKind : quint8 {
    Word,        ///< a name or a keyword as it is typed
    QuotedName,  ///< in brackets, double quotes or grave accents
    Text,
    Date,  ///< between number signs
    Number,
    Binary,  ///< 0x...
    Symbol,
    End,
};

struct Token {
    TokenKind Kind = TokenKind::End;
    /// Where it stands in the statement, delimiters included.
    qsizetype From = 0;
    qsizetype To = 0;
    /// What it says, without delimiters and their doubling; a symbol or a number as typed.
    QString Text;

    bool Is(QLatin1StringView word) const {
        return Kind == TokenKind::Word && Text.compare(word, Qt::CaseInsensitive) == 0;
    }
    bool IsSymbol(QLatin1StringView symbol) const { return Kind == TokenKind::Symbol && Text == symbol; }
};

/// Takes a statement apart in the manner of its dialect. Comments and blanks go; the last token is End.
/// Throws ado::Error for a text, name, date or comment that never ends, and for a character that means
/// nothing.
QList<Token> Tokenize(const QString& statement, Dialect dialect);

}  // namespace zephrin::ado::providers::sqlite
