#include "platform/ado/providers/sqlite/dialect/Keywords.h"
#include "platform/ado/providers/sqlite/dialect/Limits.h"
#include "platform/ado/providers/sqlite/dialect/Parser.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

Parser::Depth::Depth(Parser& parser, int takes) : reader(parser), weight(takes) {
    reader.depth += weight;
    if (reader.depth <= Limits::Nesting) return;
    reader.depth -= weight;
    throw TooDeep(reader.Now().From);
}

Parser::Parser(const QString& text, Dialect speaks)
    : statement(text), dialect(speaks), tokens(Tokenize(statement, speaks)) {}

Statement Parser::Read() {
    if (Now().Kind == TokenKind::End) throw StatementEmpty(dialect);
    Statement read;
    if (AtWord("SELECT") || AtSymbol("(")) {
        read.Kind = StatementKind::Select;
        read.Body = ParseQuery();
    } else if (AtWord("CREATE") && Ahead().Is(QLatin1StringView("VIEW"))) {
        read = View(StatementKind::CreateView);
    } else if (AtWord("ALTER") && Ahead().Is(QLatin1StringView("VIEW"))) {
        read = View(StatementKind::AlterView);
    } else if (AtWord("INSERT")) {
        read = Insert();
    } else if (AtWord("UPDATE")) {
        read = Update();
    } else if (AtWord("DELETE")) {
        read = Delete();
    } else {
        return read;
    }
    while (TakeSymbol(";")) {
    }
    if (Now().Kind != TokenKind::End) Refuse();
    return read;
}

Statement Parser::View(StatementKind kind) {
    Statement read;
    read.Kind = kind;
    Take();
    Take();
    TableName(read);
    if (AtSymbol("(")) read.Columns = NameList();
    ExpectWord("AS");
    read.Body = ParseQuery();
    return read;
}

Statement Parser::Insert() {
    Statement read;
    read.Kind = StatementKind::Insert;
    Take();
    if (!TakeWord("INTO") && IsFileDialect(dialect)) Refuse();
    TableName(read);
    if (AtSymbol("(") && !Ahead().Is(QLatin1StringView("SELECT"))) read.Columns = NameList();
    if (!TakeWord("VALUES")) {
        read.Body = ParseQuery();
        return read;
    }
    do {
        ExpectSymbol("(");
        std::vector<ExpressionPtr> row;
        do {
            row.push_back(ParseExpression());
        } while (TakeSymbol(","));
        ExpectSymbol(")");
        read.Rows.push_back(std::move(row));
    } while (TakeSymbol(","));
    return read;
}

Statement Parser::Update() {
    Statement read;
    read.Kind = StatementKind::Update;
    Take();
    TableName(read);
    ExpectWord("SET");
    do {
        Assignment assignment;
        assignment.At.From = Now().From;
        assignment.Column = TakeName();
        while (TakeSymbol(".")) assignment.Column = TakeName();
        assignment.At.To = tokens[at - 1].To;
        ExpectSymbol("=");
        assignment.Value = ParseExpression();
        read.Assignments.push_back(std::move(assignment));
    } while (TakeSymbol(","));
    if (TakeWord("WHERE")) read.Where = ParseExpression();
    return read;
}

Statement Parser::Delete() {
    Statement read;
    read.Kind = StatementKind::Delete;
    Take();
    // The file dialects write DELETE * FROM.
    if (IsFileDialect(dialect)) TakeSymbol("*");
    if (!TakeWord("FROM") && IsFileDialect(dialect)) Refuse();
    TableName(read);
    if (TakeWord("WHERE")) read.Where = ParseExpression();
    return read;
}

void Parser::TableName(Statement& read) {
    read.NameAt.From = Now().From;
    read.Name = TakeName();
    while (TakeSymbol(".")) read.Name = TakeName();
    read.NameAt.To = tokens[at - 1].To;
}

QList<QString> Parser::NameList() {
    QList<QString> names;
    ExpectSymbol("(");
    do {
        names.append(TakeName());
    } while (TakeSymbol(","));
    ExpectSymbol(")");
    return names;
}

bool Parser::TakeWord(const char* word) {
    if (!AtWord(word)) return false;
    Take();
    return true;
}

bool Parser::TakeSymbol(const char* symbol) {
    if (!AtSymbol(symbol)) return false;
    Take();
    return true;
}

void Parser::ExpectWord(const char* word) {
    if (!TakeWord(word)) Refuse();
}

void Parser::ExpectSymbol(const char* symbol) {
    if (!TakeSymbol(symbol)) Refuse();
}

bool Parser::AtName() const {
    return Now().Kind == TokenKind::QuotedName || (Now().Kind == TokenKind::Word && !IsReserved(Now().Text));
}

QString Parser::TakeName() {
    if (!AtName()) Refuse();
    return Take().Text;
}

/// At the end of the statement it is the last word that something is missing behind.
void Parser::Refuse() const {
    const bool atEnd = Now().Kind == TokenKind::End;
    const Token& token = atEnd && at > 0 ? tokens[at - 1] : Now();
    const QString typed = statement.sliced(token.From, token.To - token.From);
    throw SyntaxNear(dialect, typed, token.From,
                     !atEnd && token.Kind == TokenKind::Word && IsReserved(token.Text));
}

ExpressionPtr Parser::Make(ExpressionKind kind, qsizetype from) const {
    auto expression = std::make_unique<Expression>();
    expression->Kind = kind;
    expression->At = {from, tokens[at > 0 ? at - 1 : 0].To};
    return expression;
}

void Parser::Close(Expression& expression) const {
    expression.At.To = tokens[at > 0 ? at - 1 : 0].To;
    int tallest = expression.Nested ? expression.Nested->Height : 0;
    for (const ExpressionPtr& operand : expression.Operands) tallest = std::max(tallest, operand->Height);
    expression.Height = HeightOver(tallest);
}

int Parser::HeightOver(int tallest) const {
    if (tallest >= Limits::TreeHeight) throw TooDeep(Now().From);
    return tallest + 1;
}

}  // namespace zephrin::ado::providers::sqlite
