#include "platform/ado/providers/sqlite/dialect/Keywords.h"
#include "platform/ado/providers/sqlite/dialect/Parser.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"

#include <array>

namespace zephrin::ado::providers::sqlite {

namespace {

/// Operators of one rank, the loosest rank first. MOD is a word and stands here by its name.
struct Rank {
    std::array<const char*, 6> Operators;
};

constexpr std::array serverRanks{
    Rank{{"+", "-", "&", "^", "|", nullptr}},
    Rank{{"*", "/", "%", nullptr}},
};
constexpr std::array fileRanks{
    Rank{{"&", nullptr}},  Rank{{"+", "-", nullptr}}, Rank{{"MOD", nullptr}},
    Rank{{"\\", nullptr}}, Rank{{"*", "/", nullptr}},
};

/// Operands in a row, before the tree that leans to one side becomes too deep for the engine.
constexpr int LongestChain = 900;

constexpr std::array looseWords{"IMP", "EQV", "XOR"};

bool TakesDatePart(const QString& name) {
    return name == QLatin1StringView("DATEPART") || name == QLatin1StringView("DATENAME") ||
           name == QLatin1StringView("DATEADD") || name == QLatin1StringView("DATEDIFF");
}

}  // namespace

ExpressionPtr Parser::ParseExpression() {
    const Depth deeper(*this);
    return IsFileDialect(dialect) ? Logic(0) : Disjunction();
}

ExpressionPtr Parser::Logic(int level) {
    if (level == int(looseWords.size())) return Disjunction();
    ExpressionPtr left = Logic(level + 1);
    for (int links = 0; TakeWord(looseWords[size_t(level)]); ++links) {
        if (links > LongestChain) throw TooDeep(Now().From);
        ExpressionPtr joined = Make(ExpressionKind::Logic, left->At.From);
        joined->Name = QString::fromLatin1(looseWords[size_t(level)]);
        joined->Operands.push_back(std::move(left));
        joined->Operands.push_back(Logic(level + 1));
        Close(*joined);
        left = std::move(joined);
    }
    return left;
}

ExpressionPtr Parser::Disjunction() {
    ExpressionPtr first = Conjunction();
    if (!AtWord("OR")) return first;
    ExpressionPtr all = Make(ExpressionKind::Or, first->At.From);
    all->Operands.push_back(std::move(first));
    while (TakeWord("OR")) all->Operands.push_back(Conjunction());
    Close(*all);
    return all;
}

ExpressionPtr Parser::Conjunction() {
    ExpressionPtr first = Negation();
    if (!AtWord("AND")) return first;
    ExpressionPtr all = Make(ExpressionKind::And, first->At.From);
    all->Operands.push_back(std::move(first));
    while (TakeWord("AND")) all->Operands.push_back(Negation());
    Close(*all);
    return all;
}

ExpressionPtr Parser::Negation() {
    if (!AtWord("NOT")) return Predicate();
    const Depth deeper(*this);
    const qsizetype from = Take().From;
    ExpressionPtr negated = Make(ExpressionKind::Not, from);
    negated->Operands.push_back(Negation());
    Close(*negated);
    return negated;
}

ExpressionPtr Parser::Predicate() {
    ExpressionPtr value = Arithmetic(0);
    for (int links = 0;; ++links) {
        if (links > LongestChain) throw TooDeep(Now().From);
        const Expression* const before = value.get();
        value = PredicateTail(std::move(value));
        if (value.get() == before) return value;
    }
}

/// Gives back `value` itself where no predicate follows it.
ExpressionPtr Parser::PredicateTail(ExpressionPtr value) {
    if (Now().Kind == TokenKind::Symbol) return Comparison(std::move(value));
    const qsizetype from = value->At.From;
    if (TakeWord("IS")) {
        const bool negated = TakeWord("NOT");
        ExpectWord("NULL");
        ExpressionPtr test = Make(ExpressionKind::IsNull, from);
        test->IsNegated = negated;
        test->Operands.push_back(std::move(value));
        return test;
    }
    const bool negated =
        AtWord("NOT") && (Ahead().Is(QLatin1StringView("IN")) || Ahead().Is(QLatin1StringView("LIKE")) ||
                          Ahead().Is(QLatin1StringView("BETWEEN")));
    if (negated) Take();
    ExpressionPtr test;
    if (TakeWord("LIKE")) {
        test = Make(ExpressionKind::Like, from);
        test->Operands.push_back(std::move(value));
        test->Operands.push_back(Arithmetic(0));
        if (TakeWord("ESCAPE")) test->Operands.push_back(Arithmetic(0));
    } else if (TakeWord("BETWEEN")) {
        test = Make(ExpressionKind::Between, from);
        test->Operands.push_back(std::move(value));
        test->Operands.push_back(Arithmetic(0));
        ExpectWord("AND");
        test->Operands.push_back(Arithmetic(0));
    } else if (TakeWord("IN")) {
        test = InTail(std::move(value));
    } else {
        return value;
    }
    test->IsNegated = negated;
    Close(*test);
    return test;
}

ExpressionPtr Parser::InTail(ExpressionPtr value) {
    ExpressionPtr test = Make(ExpressionKind::InList, value->At.From);
    test->Operands.push_back(std::move(value));
    ExpectSymbol("(");
    if (AtWord("SELECT")) {
        test->Kind = ExpressionKind::InQuery;
        test->Nested = ParseQuery();
    } else {
        do {
            test->Operands.push_back(ParseExpression());
        } while (TakeSymbol(","));
    }
    ExpectSymbol(")");
    return test;
}

ExpressionPtr Parser::Comparison(ExpressionPtr value) {
    static constexpr std::array operators{
        std::pair{"=", "="},   std::pair{"<>", "<>"}, std::pair{"!=", "<>"},
        std::pair{"<=", "<="}, std::pair{">=", ">="}, std::pair{"<", "<"},
        std::pair{">", ">"},   std::pair{"!<", ">="}, std::pair{"!>", "<="},
    };
    for (const auto& [typed, meant] : operators) {
        if (!TakeSymbol(typed)) continue;
        ExpressionPtr test = Make(ExpressionKind::Compare, value->At.From);
        test->Name = QString::fromLatin1(meant);
        test->Operands.push_back(std::move(value));
        const bool all = AtWord("ALL");
        if (all || AtWord("ANY") || AtWord("SOME")) {
            Take();
            test->Kind = ExpressionKind::Quantified;
            test->IsTrue = all;
            ExpectSymbol("(");
            test->Nested = ParseQuery();
            ExpectSymbol(")");
        } else {
            test->Operands.push_back(Arithmetic(0));
        }
        Close(*test);
        return test;
    }
    return value;
}

ExpressionPtr Parser::Arithmetic(int level) {
    const bool file = IsFileDialect(dialect);
    if (level == int(file ? fileRanks.size() : serverRanks.size())) return Sign();
    const Rank& rank = file ? fileRanks[size_t(level)] : serverRanks[size_t(level)];
    ExpressionPtr left = Arithmetic(level + 1);
    for (int links = 0;; ++links) {
        if (links > LongestChain) throw TooDeep(Now().From);
        const char* taken = nullptr;
        for (const char* const symbol : rank.Operators) {
            if (!symbol) break;
            if (TakeSymbol(symbol) || TakeWord(symbol)) {
                taken = symbol;
                break;
            }
        }
        if (!taken) return left;
        ExpressionPtr joined = Make(ExpressionKind::Binary2, left->At.From);
        joined->Name = QString::fromLatin1(taken);
        joined->Operands.push_back(std::move(left));
        joined->Operands.push_back(Arithmetic(level + 1));
        Close(*joined);
        left = std::move(joined);
    }
}

ExpressionPtr Parser::Sign() {
    const bool signedHere = AtSymbol("-") || AtSymbol("+") || (AtSymbol("~") && !IsFileDialect(dialect));
    if (!signedHere) return IsFileDialect(dialect) ? PowerOf() : Primary();
    const Depth deeper(*this);
    const Token sign = Take();
    ExpressionPtr with = Make(ExpressionKind::Unary, sign.From);
    with->Name = sign.Text;
    with->Operands.push_back(Sign());
    Close(*with);
    return with;
}

ExpressionPtr Parser::PowerOf() {
    ExpressionPtr base = Primary();
    for (int links = 0; TakeSymbol("^"); ++links) {
        if (links > LongestChain) throw TooDeep(Now().From);
        ExpressionPtr power = Make(ExpressionKind::Binary2, base->At.From);
        power->Name = QStringLiteral("^");
        power->Operands.push_back(std::move(base));
        // A sign binds tighter on this side only: 2^-1 is a half, -2^2 is minus four.
        power->Operands.push_back(AtSymbol("-") || AtSymbol("+") ? Sign() : Primary());
        Close(*power);
        base = std::move(power);
    }
    return base;
}

ExpressionPtr Parser::Primary() {
    const Token token = Now();
    ExpressionKind kind = ExpressionKind::Null;
    switch (token.Kind) {
        case TokenKind::Number:
            kind = ExpressionKind::Number;
            break;
        case TokenKind::Text:
            kind = ExpressionKind::Text;
            break;
        case TokenKind::Date:
            kind = ExpressionKind::Date;
            break;
        case TokenKind::Binary:
            kind = ExpressionKind::Binary;
            break;
        case TokenKind::Symbol:
            return Parenthesis();
        case TokenKind::End:
            Refuse();
        case TokenKind::QuotedName:
        case TokenKind::Word:
            return NameOrCall();
    }
    Take();
    ExpressionPtr literal = Make(kind, token.From);
    literal->Name = token.Text;
    return literal;
}

ExpressionPtr Parser::Parenthesis() {
    if (!AtSymbol("(")) Refuse();
    const qsizetype from = Take().From;
    ExpressionPtr inner;
    if (AtWord("SELECT")) {
        inner = Make(ExpressionKind::Subquery, from);
        inner->Nested = ParseQuery();
    } else {
        inner = ParseExpression();
    }
    ExpectSymbol(")");
    inner->At.From = from;
    Close(*inner);
    return inner;
}

ExpressionPtr Parser::NameOrCall() {
    const Token token = Now();
    const bool called = Ahead().IsSymbol(QLatin1StringView("("));
    if (token.Kind == TokenKind::Word) {
        if (token.Is(QLatin1StringView("CASE"))) return CaseOf();
        if (token.Is(QLatin1StringView("EXISTS"))) return ExistsOf();
        if (token.Is(QLatin1StringView("CAST")) && called) return CastCall();
        if (token.Is(QLatin1StringView("CONVERT")) && called) return ConvertCall();
        if (token.Is(QLatin1StringView("NULL"))) {
            Take();
            return Make(ExpressionKind::Null, token.From);
        }
        static constexpr std::array truths{
            std::pair{"TRUE", true},   std::pair{"YES", true}, std::pair{"ON", true},
            std::pair{"FALSE", false}, std::pair{"NO", false}, std::pair{"OFF", false},
        };
        const bool qualified = Ahead().IsSymbol(QLatin1StringView("."));
        for (const auto& [word, means] : truths) {
            if (!IsFileDialect(dialect) || !token.Is(QLatin1StringView(word)) || called || qualified)
                continue;
            Take();
            ExpressionPtr truth = Make(ExpressionKind::Truth, token.From);
            truth->IsTrue = means;
            return truth;
        }
        // Some functions share their names with words of other clauses.
        const bool shared = token.Is(QLatin1StringView("LEFT")) || token.Is(QLatin1StringView("RIGHT")) ||
                            token.Is(QLatin1StringView("ASC"));
        const bool functionName = shared || !IsReserved(token.Text);
        if (called && functionName) return Call();
    }
    return ColumnName();
}

ExpressionPtr Parser::ColumnName() {
    const qsizetype from = Now().From;
    ExpressionPtr column = Make(ExpressionKind::Column, from);
    column->Name = TakeName();
    while (AtSymbol(".") || (AtSymbol("!") && IsFileDialect(dialect))) {
        Take();
        column->Qualifier = column->Name;
        if (TakeSymbol("*")) {
            column->Kind = ExpressionKind::Star;
            column->Name.clear();
            break;
        }
        column->Name = TakeName();
    }
    Close(*column);
    return column;
}

ExpressionPtr Parser::Call() {
    const Token name = Take();
    ExpressionPtr call = Make(ExpressionKind::Function, name.From);
    call->Name = name.Text.toUpper();
    ExpectSymbol("(");
    if (TakeSymbol("*")) {
        call->IsStar = true;
    } else if (!AtSymbol(")")) {
        call->IsDistinct = TakeWord("DISTINCT");
        if (!call->IsDistinct) TakeWord("ALL");
        if (TakesDatePart(call->Name) && Now().Kind == TokenKind::Word && !IsFileDialect(dialect)) {
            const Token part = Take();
            call->Operands.push_back(Make(ExpressionKind::Keyword, part.From));
            call->Operands.back()->Name = part.Text.toLower();
            if (!AtSymbol(")")) ExpectSymbol(",");
        }
        do {
            call->Operands.push_back(ParseExpression());
        } while (TakeSymbol(","));
    }
    ExpectSymbol(")");
    // Windows of rows are not for these dialects.
    if (AtWord("OVER")) Refuse();
    Close(*call);
    return call;
}

ExpressionPtr Parser::CastCall() {
    ExpressionPtr cast = Make(ExpressionKind::Cast, Take().From);
    ExpectSymbol("(");
    cast->Operands.push_back(ParseExpression());
    ExpectWord("AS");
    cast->Name = TypeName();
    ExpectSymbol(")");
    Close(*cast);
    return cast;
}

ExpressionPtr Parser::ConvertCall() {
    ExpressionPtr cast = Make(ExpressionKind::Cast, Take().From);
    ExpectSymbol("(");
    cast->Name = TypeName();
    ExpectSymbol(",");
    cast->Operands.push_back(ParseExpression());
    if (TakeSymbol(",")) cast->Operands.push_back(ParseExpression());
    ExpectSymbol(")");
    Close(*cast);
    return cast;
}

QString Parser::TypeName() {
    QString name = TakeName();
    if (!TakeSymbol("(")) return name;
    name += u'(';
    while (!AtSymbol(")")) {
        const bool part = Now().Kind == TokenKind::Number || AtSymbol(",") || AtWord("MAX");
        if (!part) Refuse();
        name += AtWord("MAX") ? QString() : Now().Text;
        Take();
    }
    Take();
    return name + u')';
}

ExpressionPtr Parser::CaseOf() {
    ExpressionPtr cases = Make(ExpressionKind::Case, Take().From);
    if (!AtWord("WHEN")) {
        cases->HasOperand = true;
        cases->Operands.push_back(ParseExpression());
    }
    if (!AtWord("WHEN")) Refuse();
    while (TakeWord("WHEN")) {
        cases->Operands.push_back(ParseExpression());
        ExpectWord("THEN");
        cases->Operands.push_back(ParseExpression());
    }
    if (TakeWord("ELSE")) {
        cases->HasElse = true;
        cases->Operands.push_back(ParseExpression());
    }
    ExpectWord("END");
    Close(*cases);
    return cases;
}

ExpressionPtr Parser::ExistsOf() {
    ExpressionPtr exists = Make(ExpressionKind::Exists, Take().From);
    ExpectSymbol("(");
    exists->Nested = ParseQuery();
    ExpectSymbol(")");
    Close(*exists);
    return exists;
}

}  // namespace zephrin::ado::providers::sqlite
