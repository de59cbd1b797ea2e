#include "platform/ado/providers/sqlite/dialect/Parser.h"

#include <array>

namespace zephrin::ado::providers::sqlite {

namespace {

/// An operator between two operands and how tightly it binds, 0 the loosest. MOD is a word and stands here by
/// its name.
struct Operator {
    QLatin1StringView Name;
    int Rank;
};

constexpr std::array serverOperators{
    Operator{QLatin1StringView("+"), 0}, Operator{QLatin1StringView("-"), 0},
    Operator{QLatin1StringView("&"), 0}, Operator{QLatin1StringView("^"), 0},
    Operator{QLatin1StringView("|"), 0}, Operator{QLatin1StringView("*"), 1},
    Operator{QLatin1StringView("/"), 1}, Operator{QLatin1StringView("%"), 1},
};
constexpr std::array fileOperators{
    Operator{QLatin1StringView("&"), 0},  Operator{QLatin1StringView("+"), 1},
    Operator{QLatin1StringView("-"), 1},  Operator{QLatin1StringView("MOD"), 2},
    Operator{QLatin1StringView("\\"), 3}, Operator{QLatin1StringView("*"), 4},
    Operator{QLatin1StringView("/"), 4},
};
constexpr std::array logicOperators{
    Operator{QLatin1StringView("IMP"), 0}, Operator{QLatin1StringView("EQV"), 1},
    Operator{QLatin1StringView("XOR"), 2}, Operator{QLatin1StringView("OR"), 3},
    Operator{QLatin1StringView("AND"), 4},
};
constexpr int LoosestOnServer = 3;

/// The rank of the operator that the token is, -1 where it is none of them.
template <size_t Count>
int RankOf(const std::array<Operator, Count>& operators, const Token& token) {
    if (token.Kind != TokenKind::Symbol && token.Kind != TokenKind::Word) return -1;
    for (const Operator& known : operators)
        if (token.Text.compare(known.Name, Qt::CaseInsensitive) == 0) return known.Rank;
    return -1;
}

}  // namespace

ExpressionPtr Parser::ParseExpression() {
    const Depth deeper(*this, 2);
    return Logic(IsFileDialect(dialect) ? 0 : LoosestOnServer);
}

/// Takes operators from the rank `loosest` on; what binds tighter is read for the right side before they are
/// joined. One function for all ranks: what is nested deeply needs little stack.
ExpressionPtr Parser::Logic(int loosest) {
    ExpressionPtr left = Negation();
    // A row of ANDs or ORs becomes one node, whose operands may be many.
    const Expression* row = nullptr;
    for (;;) {
        const int rank = RankOf(logicOperators, Now());
        if (rank < loosest) break;
        const ExpressionKind kind = Now().Is(QLatin1StringView("AND"))  ? ExpressionKind::And
                                    : Now().Is(QLatin1StringView("OR")) ? ExpressionKind::Or
                                                                        : ExpressionKind::Logic;
        if (kind == ExpressionKind::Logic || row != left.get() || row->Kind != kind) {
            ExpressionPtr joined = Make(kind, left->At.From);
            if (kind == ExpressionKind::Logic) joined->Name = Now().Text.toUpper();
            joined->Operands.push_back(std::move(left));
            left = std::move(joined);
            row = left.get();
        }
        Take();
        left->Operands.push_back(Logic(rank + 1));
        left->Height = std::max(left->Height, HeightOver(left->Operands.back()->Height));
        left->Height = std::max(left->Height, HeightOver(left->Operands.front()->Height));
    }
    if (row) Close(*left);
    return left;
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
    for (;;) {
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
        Close(*test);
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

/// As with Logic, for the operators on values.
ExpressionPtr Parser::Arithmetic(int loosest) {
    ExpressionPtr left = Sign();
    for (;;) {
        const int rank =
            IsFileDialect(dialect) ? RankOf(fileOperators, Now()) : RankOf(serverOperators, Now());
        if (rank < loosest) return left;
        ExpressionPtr joined = Make(ExpressionKind::Binary2, left->At.From);
        joined->Name = Take().Text.toUpper();
        joined->Operands.push_back(std::move(left));
        joined->Operands.push_back(Arithmetic(rank + 1));
        Close(*joined);
        left = std::move(joined);
    }
}

ExpressionPtr Parser::Sign() {
    const bool signedHere = AtSymbol("-") || AtSymbol("+") || (AtSymbol("~") && !IsFileDialect(dialect));
    if (!signedHere) return IsFileDialect(dialect) ? PowerOf() : Primary();
    const Depth deeper(*this);
    const Token& sign = Take();
    ExpressionPtr with = Make(ExpressionKind::Unary, sign.From);
    with->Name = sign.Text;
    with->Operands.push_back(Sign());
    Close(*with);
    return with;
}

ExpressionPtr Parser::PowerOf() {
    ExpressionPtr base = Primary();
    while (TakeSymbol("^")) {
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
