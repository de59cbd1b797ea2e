#include "platform/ado/providers/sqlite/dialect/Translation.h"

#include "platform/ado/providers/sqlite/dialect/Lexer.h"
#include "platform/ado/providers/sqlite/dialect/Parser.h"
#include "platform/ado/providers/sqlite/dialect/Resolver.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/dialect/Writer.h"
#include "platform/ado/providers/sqlite/values/Naming.h"

#include <QSet>

namespace zephrin::ado::providers::sqlite {

namespace {

QList<OutputColumn> OutputOf(const Query& query) {
    const QueryArm& first = query.Arms.front();
    return first.Nested ? OutputOf(*first.Nested) : first.Core.Output;
}

/// A statement that is not read whole goes on as it stands, but for its names, which lose their owner, and
/// its comments.
MappedText CopyTokens(const QString& statement, Dialect dialect) {
    MappedText copy;
    const QList<Token> tokens = Tokenize(statement, dialect);
    qsizetype last = 0;
    for (qsizetype index = 0; index + 1 < tokens.size(); ++index) {
        const Token& token = tokens[index];
        const bool name = token.Kind == TokenKind::Word || token.Kind == TokenKind::QuotedName;
        if (name && token.Text.compare(QLatin1StringView("dbo"), Qt::CaseInsensitive) == 0 &&
            tokens[index + 1].IsSymbol(QLatin1StringView("."))) {
            ++index;
            continue;
        }
        if (token.From > last && last > 0) copy << " ";
        copy.Mark(token.From);
        if (token.Kind == TokenKind::QuotedName)
            copy << QuotedName(token.Text);
        else if (token.Kind == TokenKind::Text)
            copy << QuotedText(token.Text);
        else
            copy << statement.sliced(token.From, token.To - token.From).toUtf8();
        last = token.To;
    }
    return copy;
}

/// The columns of a view need names, each of its own.
void CheckViewColumns(const Statement& view, const QList<OutputColumn>& output) {
    QSet<QString> seen;
    for (qsizetype index = 0; index < output.size(); ++index) {
        const QString name = index < view.Columns.size() ? view.Columns[index] : output[index].Name;
        if (name.isEmpty())
            throw Failure(
                FailureNumber::Statement,
                QStringLiteral("Create View failed because no column name was specified for column %1.")
                    .arg(index + 1));
        if (seen.contains(name.toCaseFolded()))
            throw Failure(
                FailureNumber::Statement,
                QStringLiteral("Column names in each view must be unique. Column name '%1' in view '%2' is "
                               "specified more than once.")
                    .arg(name, view.Name));
        seen.insert(name.toCaseFolded());
    }
}

MappedText WriteView(const QString& statement, Dialect dialect, const Statement& view) {
    MappedText head;
    head.Mark(view.NameAt.From);
    head << "CREATE VIEW main." << QuotedName(view.Name);
    for (qsizetype index = 0; index < view.Columns.size(); ++index)
        head << (index == 0 ? " (" : ", ") << QuotedName(view.Columns[index]);
    head << (view.Columns.isEmpty() ? " AS " : ") AS ");
    Writer writer(statement, dialect, true);
    writer.WriteQuery(*view.Body);
    return head << writer.Take().Text();
}

void CheckInsert(const Statement& insert, Dialect dialect, const Catalog& catalog,
                 std::vector<Assignment>& into) {
    const CatalogTable* const table = catalog.Find(insert.Name);
    QList<QString> names = insert.Columns;
    if (names.isEmpty())
        for (const CatalogColumn& column : table->Columns) names.append(column.Name);
    for (const QString& name : names) {
        const auto found = std::find_if(
            table->Columns.begin(), table->Columns.end(),
            [&](const CatalogColumn& column) { return column.Name.compare(name, Qt::CaseInsensitive) == 0; });
        if (found == table->Columns.end()) throw NoSuchColumn(dialect, QString(), name, insert.NameAt.From);
        into.push_back({name, insert.NameAt, nullptr, found->Type});
    }
}

}  // namespace

qsizetype MappedText::Origin(qsizetype offset) const {
    qsizetype position = -1;
    for (const Place& place : marks) {
        if (place.Offset > offset) break;
        position = place.Position;
    }
    return position;
}

Translation Translate(const QString& statement, Dialect dialect, const Catalog& catalog) {
    Statement tree = Parser(statement, dialect).Read();
    Translation translation;
    translation.Kind = tree.Kind;
    translation.Name = tree.Name;
    if (tree.Kind == StatementKind::Other) {
        translation.Steps.push_back(CopyTokens(statement, dialect));
        return translation;
    }
    Resolver(statement, dialect, catalog).Resolve(tree);
    if (tree.Kind == StatementKind::CreateView || tree.Kind == StatementKind::AlterView) {
        CheckViewColumns(tree, OutputOf(*tree.Body));
        if (tree.Kind == StatementKind::AlterView) {
            if (!catalog.Find(tree.Name)) throw NoSuchTable(dialect, tree.Name, tree.NameAt.From);
            translation.Steps.emplace_back() << "DROP VIEW main." << QuotedName(tree.Name);
        }
        translation.Steps.push_back(WriteView(statement, dialect, tree));
        return translation;
    }
    Writer writer(statement, dialect, false, tree.Kind == StatementKind::Select ? &catalog : nullptr);
    if (tree.Kind == StatementKind::Select) {
        translation.Output = OutputOf(*tree.Body);
        writer.WriteQuery(*tree.Body);
    } else {
        if (tree.Kind == StatementKind::Insert) CheckInsert(tree, dialect, catalog, tree.Assignments);
        writer.WriteStatement(tree);
    }
    translation.Steps.push_back(writer.Take());
    return translation;
}

}  // namespace zephrin::ado::providers::sqlite
