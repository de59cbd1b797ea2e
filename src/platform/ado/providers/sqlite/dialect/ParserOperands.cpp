#include "platform/ado/providers/sqlite/dialect/Keywords.h"
#include "platform/ado/providers/sqlite/dialect/Parser.h"

#include <array>

namespace zephrin::ado::providers::sqlite {

namespace {

bool TakesDatePart(const QString& name) {
    return name == QLatin1StringView("DATEPART") || name == QLatin1StringView("DATENAME") ||
           name == QLatin1StringView("DATEADD") || name == QLatin1StringView("DATEDIFF");
}

}  // namespace

ExpressionPtr Parser::Primary() {
    const Token& token = Now();
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
    const Token& token = Now();
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
    const Token& name = Take();
    ExpressionPtr call = Make(ExpressionKind::Function, name.From);
    call->Name = name.Text.toUpper();
    ExpectSymbol("(");
    if (TakeSymbol("*")) {
        call->IsStar = true;
    } else if (!AtSymbol(")")) {
        call->IsDistinct = TakeWord("DISTINCT");
        if (!call->IsDistinct) TakeWord("ALL");
        if (TakesDatePart(call->Name) && Now().Kind == TokenKind::Word && !IsFileDialect(dialect)) {
            const Token& part = Take();
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
