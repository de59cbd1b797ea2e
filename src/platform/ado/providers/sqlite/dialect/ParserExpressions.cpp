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

}  // namespace zephrin::ado::providers::sqlite
