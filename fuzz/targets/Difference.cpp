#include "fuzz/Choices.h"
#include "fuzz/Targets.h"
#include "fuzz/targets/Engine.h"

#include <zephrin/ado/Error.h>

#include <algorithm>

namespace zephrin::fuzz {

namespace {

/// A piece of a statement in both languages.
struct Piece {
    QString Theirs;  ///< in the dialect
    QString Plain;   ///< for SQLite
};

Piece Same(const QString& text) {
    return {text, text};
}

Piece operator+(const Piece& one, const Piece& other) {
    return {one.Theirs + other.Theirs, one.Plain + other.Plain};
}
Piece operator+(const Piece& one, const char* text) {
    return one + Same(QString::fromLatin1(text));
}

/// Makes queries of whole numbers, conditions and groups, whose meaning no dialect changes. Texts, dates,
/// decimals and divisions are left to tables of tests: there the dialects mean something else than SQLite.
class Maker {
 public:
    Maker(Choices& given, int dialectNumber) : choices(given), access(dialectNumber != 0) {}

    Piece Query() {
        const bool joined = choices.Flip();
        Piece from = Same(QStringLiteral(" FROM [Parts] AS p"));
        if (joined)
            from = from + (choices.Flip() ? " INNER JOIN " : " LEFT JOIN ") +
                   Same(QStringLiteral("[Uses] AS u ON p.[Id] = u.[Part]"));
        columns = {"p.[Id]", "p.[A]", "p.[B]", "p.[C]"};
        if (joined)
            columns << "u.[V]"
                    << "u.[Id]";
        const Piece where = choices.Flip() ? Same(QStringLiteral(" WHERE ")) + Condition(3) : Piece();
        return choices.Below(3) == 0 ? Grouped(from + where) : Flat(from + where);
    }

 private:
    Piece Flat(const Piece& rest) {
        Piece query = Same(choices.Flip() ? QStringLiteral("SELECT DISTINCT ") : QStringLiteral("SELECT "));
        const int count = 1 + choices.Below(3);
        for (int column = 0; column < count; ++column) {
            if (column > 0) query = query + ", ";
            query = query + Value(3) + Same(QStringLiteral(" AS c%1").arg(column));
        }
        query = query + rest;
        if (choices.Flip()) query = query + (choices.Flip() ? " UNION " : " UNION ALL ") + Same(Tail(count));
        return query;
    }

    static QString Tail(int count) {
        QStringList numbers;
        for (int column = 0; column < count; ++column) numbers << QStringLiteral("[V]");
        return QStringLiteral("SELECT ") + numbers.join(u',') + QStringLiteral(" FROM [Uses]");
    }

    Piece Grouped(const Piece& rest) {
        const Piece key = Column();
        Piece query = Same(QStringLiteral("SELECT ")) + key + " AS k, " + Aggregate() + " AS a, " +
                      Aggregate() + " AS b" + rest + " GROUP BY " + key;
        if (choices.Flip()) query = query + " HAVING " + Aggregate() + Comparison() + Number();
        return query;
    }

    Piece Aggregate() {
        switch (choices.Below(5)) {
            case 0:
                return Same(QStringLiteral("COUNT(*)"));
            case 1:
                return Same(QStringLiteral("COUNT(")) + Value(2) + ")";
            case 2:
                return Same(QStringLiteral("SUM(")) + Value(2) + ")";
            case 3:
                return Same(QStringLiteral("MIN(")) + Value(2) + ")";
            default:
                return Same(QStringLiteral("MAX(")) + Value(2) + ")";
        }
    }

    Piece Column() {
        return Same(QString::fromLatin1(columns.at(choices.Below(static_cast<int>(columns.size())))));
    }
    Piece Number() {
        const int number = choices.Below(12) - 3;
        return Same(number < 0 ? QStringLiteral("(%1)").arg(number) : QString::number(number));
    }
    const char* Comparison() {
        static constexpr const char* all[] = {" = ", " <> ", " < ", " <= ", " > ", " >= "};
        return all[choices.Below(6)];
    }

    Piece Value(int depth) {
        if (depth == 0) return choices.Flip() ? Column() : Number();
        switch (choices.Below(8)) {
            case 0:
                return Column();
            case 1:
                return Number();
            case 2:
                return Value(depth - 1) + " + " + Value(depth - 1);
            case 3:
                return Value(depth - 1) + " - " + Value(depth - 1);
            case 4:
                return Value(depth - 1) + " * " + Value(depth - 1);
            case 5:
                return Same(QStringLiteral("(")) + Value(depth - 1) + ")";
            case 6:
                return Chosen(depth);
            default:
                return Same(QStringLiteral("-")) + Column();
        }
    }

    Piece Chosen(int depth) {
        const Piece when = Condition(depth - 1), then = Value(depth - 1), otherwise = Value(depth - 1);
        const QString plain = QStringLiteral("CASE WHEN ") + when.Plain + QStringLiteral(" THEN ") +
                              then.Plain + QStringLiteral(" ELSE ") + otherwise.Plain +
                              QStringLiteral(" END");
        const QString separator = QStringLiteral(", ");
        if (access)
            return {QStringLiteral("IIF(") + when.Theirs + separator + then.Theirs + separator +
                        otherwise.Theirs + u')',
                    plain};
        return {QStringLiteral("CASE WHEN ") + when.Theirs + QStringLiteral(" THEN ") + then.Theirs +
                    QStringLiteral(" ELSE ") + otherwise.Theirs + QStringLiteral(" END"),
                plain};
    }

    Piece Condition(int depth) {
        if (depth <= 0) return Column() + Comparison() + Number();
        switch (choices.Below(8)) {
            case 0:
                return Condition(depth - 1) + " AND " + Condition(depth - 1);
            case 1:
                return Condition(depth - 1) + " OR " + Condition(depth - 1);
            case 2:
                return Same(QStringLiteral("NOT (")) + Condition(depth - 1) + ")";
            case 3:
                return Same(QStringLiteral("(")) + Condition(depth - 1) + ")";
            case 4:
                return Value(depth - 1) + (choices.Flip() ? " IS NULL" : " IS NOT NULL");
            case 5:
                return Value(depth - 1) + (choices.Flip() ? " BETWEEN " : " NOT BETWEEN ") + Number() +
                       " AND " + Number();
            case 6:
                return Value(depth - 1) + (choices.Flip() ? " IN " : " NOT IN ") + Members();
            default:
                return Value(depth - 1) + Comparison() + Value(depth - 1);
        }
    }

    Piece Members() {
        if (choices.Flip())
            return Same(QStringLiteral("(SELECT [V] FROM [Uses] WHERE [Id]")) + Comparison() + Number() + ")";
        return Same(QStringLiteral("(")) + Number() + ", " + Number() + ")";
    }

    Choices& choices;
    const bool access;
    QList<const char*> columns;
};

}  // namespace

void FeedDifference(const QByteArray& input) {
    Choices choices(input);
    const int dialect = choices.Below(3);
    const Piece query = Maker(choices, dialect).Query();
    std::optional<QStringList> plain = Engine::For(dialect).PlainRows(query.Plain);
    Require(plain.has_value(), QStringLiteral("SQLite refuses ") + query.Plain);
    QStringList rows;
    try {
        rows = Engine::For(dialect).Rows(query.Theirs);
    } catch (const ado::Error& error) {
        // A server's whole numbers end earlier.
        if (error.Description().contains(QStringLiteral("overflow"), Qt::CaseInsensitive)) return;
        throw Broken("the engine refuses " + query.Theirs.toStdString() + ": " +
                     error.Description().toStdString());
    }
    rows.sort();
    plain->sort();
    Require(rows == *plain, query.Theirs + QStringLiteral("\ngives\n") + rows.join(u'\n') +
                                QStringLiteral("\nand not\n") + plain->join(u'\n'));
}

}  // namespace zephrin::fuzz
