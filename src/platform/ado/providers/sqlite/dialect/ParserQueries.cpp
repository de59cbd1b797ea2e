#include "platform/ado/providers/sqlite/dialect/Keywords.h"
#include "platform/ado/providers/sqlite/dialect/Limits.h"
#include "platform/ado/providers/sqlite/dialect/Parser.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

namespace {

int TallestOf(const Query& query) {
    int tallest = 0;
    const auto see = [&](const auto& part) {
        if (part) tallest = std::max(tallest, part->Height);
    };
    for (const QueryArm& arm : query.Arms) {
        see(arm.Nested);
        for (const SelectItem& item : arm.Core.Items) see(item.Value);
        for (const SourcePtr& source : arm.Core.From) see(source);
        for (const ExpressionPtr& key : arm.Core.GroupBy) see(key);
        see(arm.Core.Where);
        see(arm.Core.Having);
    }
    for (const OrderItem& item : query.OrderBy) see(item.Value);
    return tallest;
}

}  // namespace

std::unique_ptr<Query> Parser::ParseQuery() {
    const Depth deeper(*this, 2);
    auto query = std::make_unique<Query>();
    query->Arms.push_back(ParseArm());
    for (;;) {
        SetOperator joined = SetOperator::Union;
        if (TakeWord("UNION")) {
            if (TakeWord("ALL")) joined = SetOperator::UnionAll;
        } else if (TakeWord("INTERSECT")) {
            joined = SetOperator::Intersect;
        } else if (TakeWord("EXCEPT")) {
            joined = SetOperator::Except;
        } else {
            break;
        }
        if (query->Arms.size() >= Limits::QueriesInUnion) throw TooLong(Now().From);
        query->Arms.push_back(ParseArm());
        query->Arms.back().Joined = joined;
    }
    if (TakeWord("ORDER")) {
        ExpectWord("BY");
        query->OrderBy = OrderItems();
    }
    query->Height = HeightOver(TallestOf(*query));
    return query;
}

QueryArm Parser::ParseArm() {
    QueryArm arm;
    if (TakeSymbol("(")) {
        arm.Nested = ParseQuery();
        ExpectSymbol(")");
    } else {
        arm.Core = ParseCore();
    }
    return arm;
}

SelectCore Parser::ParseCore() {
    SelectCore core;
    core.At.From = Now().From;
    ExpectWord("SELECT");
    if (TakeWord("DISTINCT") || (IsFileDialect(dialect) && TakeWord("DISTINCTROW")))
        core.Distinct = tokens[at - 1].Is(QLatin1StringView("DISTINCT"));
    else
        TakeWord("ALL");
    if (AtWord("TOP")) core.Top = Top();
    core.Items = Items();
    if (TakeWord("FROM")) {
        do {
            core.From.push_back(JoinedSource());
        } while (TakeSymbol(","));
    }
    if (TakeWord("WHERE")) core.Where = ParseExpression();
    if (TakeWord("GROUP")) {
        ExpectWord("BY");
        do {
            core.GroupBy.push_back(ParseExpression());
        } while (TakeSymbol(","));
    }
    if (TakeWord("HAVING")) core.Having = ParseExpression();
    core.At.To = tokens[at - 1].To;
    return core;
}

/// The number may stand in parentheses, where only the server takes a sign in front of it.
TopClause Parser::Top() {
    TopClause top;
    Take();
    const bool enclosed = TakeSymbol("(");
    top.At.From = Now().From;
    if (AtSymbol("-") || AtSymbol("+")) top.Digits = Take().Text;
    if (Now().Kind != TokenKind::Number) Refuse();
    top.Digits += Take().Text;
    top.At.To = tokens[at - 1].To;
    if (enclosed) ExpectSymbol(")");
    top.Percent = TakeWord("PERCENT");
    return top;
}

std::vector<SelectItem> Parser::Items() {
    std::vector<SelectItem> items;
    do {
        items.push_back(Item());
    } while (TakeSymbol(","));
    return items;
}

SelectItem Parser::Item() {
    SelectItem item;
    const qsizetype from = Now().From;
    if (TakeSymbol("*")) {
        item.Value = Make(ExpressionKind::Star, from);
        return item;
    }
    // The server also takes `alias = expression`.
    if (!IsFileDialect(dialect) && AtName() && Ahead().IsSymbol(QLatin1StringView("="))) {
        item.Alias = TakeName();
        Take();
        item.Value = ParseExpression();
        return item;
    }
    item.Value = ParseExpression();
    if (item.Value->Kind != ExpressionKind::Star) item.Alias = OptionalAlias(true);
    return item;
}

QString Parser::OptionalAlias(bool textsToo) {
    const bool announced = TakeWord("AS");
    if (AtName() || (textsToo && Now().Kind == TokenKind::Text)) return Take().Text;
    if (announced) Refuse();
    return {};
}

std::vector<OrderItem> Parser::OrderItems() {
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.Value = ParseExpression();
        if (TakeWord("DESC"))
            item.Descending = true;
        else
            TakeWord("ASC");
        items.push_back(std::move(item));
    } while (TakeSymbol(","));
    return items;
}

SourcePtr Parser::JoinedSource() {
    const Depth deeper(*this);
    return ContinueJoin(PrimarySource());
}

SourcePtr Parser::ContinueJoin(SourcePtr left) {
    // The engine joins 64 tables at most.
    for (int links = 0; AtJoin(); ++links) {
        if (links >= Limits::JoinedTables) throw TooDeep(Now().From);
        auto join = std::make_unique<Source>();
        join->Kind = SourceKind::Join;
        join->At.From = left->At.From;
        join->How = TakeJoin();
        join->Left = std::move(left);
        join->Right = PrimarySource();
        if (join->How != JoinKind::Cross) {
            // In `A JOIN B JOIN C ON .. ON ..` the first condition belongs to the inner pair.
            if (AtJoin()) {
                const Depth deeper(*this);
                join->Right = ContinueJoin(std::move(join->Right));
            }
            ExpectWord("ON");
            join->On = ParseExpression();
        }
        join->At.To = tokens[at - 1].To;
        join->Height =
            HeightOver(std::max({join->Left->Height, join->Right->Height, join->On ? join->On->Height : 0}));
        left = std::move(join);
    }
    return left;
}

bool Parser::AtJoin() const {
    return AtWord("JOIN") || AtWord("INNER") || AtWord("LEFT") || AtWord("RIGHT") || AtWord("FULL") ||
           AtWord("CROSS");
}

JoinKind Parser::TakeJoin() {
    JoinKind how = JoinKind::Inner;
    const Token& first = Now();
    if (!AtWord("JOIN")) Take();
    if (first.Is(QLatin1StringView("CROSS"))) how = JoinKind::Cross;
    if (first.Is(QLatin1StringView("LEFT"))) how = JoinKind::Left;
    if (first.Is(QLatin1StringView("RIGHT"))) how = JoinKind::Right;
    if (first.Is(QLatin1StringView("FULL"))) how = JoinKind::Full;
    if (how != JoinKind::Inner && how != JoinKind::Cross) TakeWord("OUTER");
    ExpectWord("JOIN");
    return how;
}

SourcePtr Parser::PrimarySource() {
    auto source = std::make_unique<Source>();
    source->At.From = Now().From;
    if (TakeSymbol("(")) {
        if (!AtWord("SELECT")) {
            SourcePtr inner = JoinedSource();
            ExpectSymbol(")");
            return inner;
        }
        source->Kind = SourceKind::Derived;
        source->Nested = ParseQuery();
        source->Height = HeightOver(source->Nested->Height);
        ExpectSymbol(")");
    } else {
        source->Name = TakeName();
        // What stands in front of the name (server, database, owner) has no meaning in a single file.
        while (TakeSymbol(".")) {
            while (TakeSymbol(".")) {
            }
            source->Name = TakeName();
        }
    }
    source->At.To = tokens[at - 1].To;
    source->Alias = OptionalAlias(false);
    SkipHints();
    return source;
}

void Parser::SkipHints() {
    if (!AtWord("WITH") || !Ahead().IsSymbol(QLatin1StringView("("))) return;
    Take();
    while (!AtSymbol(")")) {
        if (Now().Kind == TokenKind::End) Refuse();
        Take();
    }
    Take();
}

}  // namespace zephrin::ado::providers::sqlite
