#pragma once

#include "platform/ado/providers/sqlite/dialect/Catalog.h"
#include "platform/ado/providers/sqlite/dialect/Tree.h"
#include "platform/ado/providers/sqlite/values/Dialect.h"

#include <QByteArray>

#include <vector>

namespace zephrin::ado::providers::sqlite {

/// A text for the engine that remembers where in the user's statement each of its parts comes from.
class MappedText {
 public:
    MappedText& operator<<(const QByteArray& part) {
        text += part;
        return *this;
    }
    MappedText& operator<<(const char* part) {
        text += part;
        return *this;
    }
    /// What is written from here on stands at `position` in the statement.
    void Mark(qsizetype position) { marks.push_back({text.size(), position}); }

    /// Nothing is nested deeper than what stands at `position`.
    void MarkDeepest(qsizetype position) { deepest = position; }
    qsizetype Deepest() const { return deepest; }

    const QByteArray& Text() const { return text; }
    /// Where the byte at `offset` comes from, or -1.
    qsizetype Origin(qsizetype offset) const;

 private:
    struct Place {
        qsizetype Offset;
        qsizetype Position;
    };
    QByteArray text;
    std::vector<Place> marks;
    qsizetype deepest = -1;
};

/// A statement as the engine takes it.
struct Translation {
    StatementKind Kind = StatementKind::Other;
    /// One statement, or several that must all succeed or leave nothing behind.
    std::vector<MappedText> Steps;
    /// The columns of a query, in order; empty where only the engine knows them.
    QList<OutputColumn> Output;
    /// The view that is made or changed.
    QString Name;
};

/// Reads `statement` in its dialect and writes it anew. Throws ado::Error with the position of what is wrong.
Translation Translate(const QString& statement, Dialect dialect, const Catalog& catalog);

}  // namespace zephrin::ado::providers::sqlite
