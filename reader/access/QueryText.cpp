#include "reader/access/QueryText.h"

#include <algorithm>

namespace zephrin::reader::access {

namespace {

enum Attribute {
    Type = 1,
    Parameter = 2,
    Flags = 3,
    RemoteDatabase = 4,
    Table = 5,
    Column = 6,
    Join = 7,
    Where = 8,
    GroupBy = 9,
    Having = 10,
    OrderBy = 11
};
enum QueryType { Select = 1, Union = 9 };
enum Flag { AllColumns = 0x01, Distinct = 0x02, DistinctRow = 0x08, Top = 0x10, Percent = 0x20 };
/// Of a union, the same bit as Distinct: without it all rows stay.
constexpr int WithoutDoubles = 0x02;

QString Quoted(const QString& name) {
    return name.startsWith(u'[') && name.endsWith(u']') ? name : u'[' + name + u']';
}

/// A part of the FROM clause and the tables, by the names that they have there, which it holds.
struct FromPart {
    QString Text;
    QStringList Holds;
};

class Writer {
 public:
    explicit Writer(QList<QueryRow> all) : rows(std::move(all)) {
        std::stable_sort(rows.begin(), rows.end(),
                         [](const QueryRow& one, const QueryRow& other) { return one.Order < other.Order; });
    }

    std::optional<QueryText> Write() {
        const int type = FlagOf(Type, Select);
        const bool elsewhere = std::any_of(rows.begin(), rows.end(), [](const QueryRow& row) {
            return row.Attribute == Parameter || (row.Attribute == RemoteDatabase && !row.Name.isEmpty());
        });
        if (elsewhere) return std::nullopt;
        if (type == Union) return WriteUnion();
        if (type != Select) return std::nullopt;
        return WriteSelect();
    }

 private:
    int FlagOf(Attribute attribute, int otherwise) const {
        for (const QueryRow& row : rows)
            if (row.Attribute == attribute) return row.Flag;
        return otherwise;
    }
    QString First(Attribute attribute, const QString& word) const {
        for (const QueryRow& row : rows)
            if (row.Attribute == attribute && !row.Expression.isEmpty()) return word + row.Expression;
        return {};
    }
    template <typename ToText>
    QString List(Attribute attribute, const QString& word, ToText toText) const {
        QStringList parts;
        for (const QueryRow& row : rows)
            if (row.Attribute == attribute) parts << toText(row);
        return parts.isEmpty() ? QString() : word + parts.join(QStringLiteral(", "));
    }
    QString Order() const {
        return List(OrderBy, QStringLiteral(" ORDER BY "), [](const QueryRow& row) {
            const bool down = row.Name.compare(QLatin1StringView("D"), Qt::CaseInsensitive) == 0;
            return down ? row.Expression + QStringLiteral(" DESC") : row.Expression;
        });
    }

    std::optional<QueryText> WriteSelect() {
        const int flags = FlagOf(Flags, 0);
        QStringList items;
        for (const QueryRow& row : rows)
            if (row.Attribute == Column && !row.Expression.isEmpty())
                items << (row.Name.isEmpty() ? row.Expression
                                             : row.Expression + QStringLiteral(" AS ") + Quoted(row.Name));
        if ((flags & AllColumns) != 0) items << QStringLiteral("*");
        const std::optional<QString> from = From();
        if (items.isEmpty() || !from) return std::nullopt;
        text.Statement =
            QStringLiteral("SELECT ") + Restriction(flags) + items.join(QStringLiteral(", ")) + *from +
            First(Where, QStringLiteral(" WHERE ")) +
            List(GroupBy, QStringLiteral(" GROUP BY "), [](const QueryRow& row) { return row.Expression; }) +
            First(Having, QStringLiteral(" HAVING ")) + Order();
        return text;
    }

    QString Restriction(int flags) const {
        QString words;
        if ((flags & Distinct) != 0) words += QStringLiteral("DISTINCT ");
        if ((flags & DistinctRow) != 0) words += QStringLiteral("DISTINCTROW ");
        if ((flags & Top) == 0) return words;
        const auto row = std::find_if(rows.begin(), rows.end(),
                                      [](const QueryRow& one) { return one.Attribute == Flags; });
        words += QStringLiteral("TOP %1 ").arg(row->Name);
        if ((flags & Percent) != 0) words += QStringLiteral("PERCENT ");
        return words;
    }

    std::optional<QString> From() {
        QList<FromPart> parts;
        for (const QueryRow& row : rows) {
            if (row.Attribute != Table) continue;
            // A name of another file stands there.
            if (!row.Expression.isEmpty() || row.Name.isEmpty()) return std::nullopt;
            text.Tables << row.Name;
            FromPart part{Quoted(row.Name), {row.OtherName.isEmpty() ? row.Name : row.OtherName}};
            if (!row.OtherName.isEmpty()) part.Text += QStringLiteral(" AS ") + Quoted(row.OtherName);
            parts << part;
        }
        if (parts.isEmpty()) return std::nullopt;
        if (!JoinParts(parts)) return std::nullopt;
        QStringList texts;
        for (const FromPart& part : std::as_const(parts)) texts << part.Text;
        return QStringLiteral(" FROM ") + texts.join(QStringLiteral(", "));
    }

    /// Several rows for the same two tables are one join.
    bool JoinParts(QList<FromPart>& parts) const {
        QList<QueryRow> joins;
        for (const QueryRow& row : rows) {
            if (row.Attribute != Join) continue;
            const auto same = std::find_if(joins.begin(), joins.end(), [&](const QueryRow& join) {
                return join.Name == row.Name && join.OtherName == row.OtherName && join.Flag == row.Flag;
            });
            if (same == joins.end())
                joins << row;
            else
                same->Expression =
                    u'(' + same->Expression + QStringLiteral(") AND (") + row.Expression + u')';
        }
        for (const QueryRow& join : std::as_const(joins))
            if (!JoinTwo(parts, join)) return false;
        return true;
    }

    static bool JoinTwo(QList<FromPart>& parts, const QueryRow& join) {
        static const QStringList words{QStringLiteral(" INNER JOIN "), QStringLiteral(" LEFT JOIN "),
                                       QStringLiteral(" RIGHT JOIN ")};
        const auto holding = [&parts](const QString& name) {
            return std::find_if(parts.begin(), parts.end(), [&](const FromPart& part) {
                return part.Holds.contains(name, Qt::CaseInsensitive);
            });
        };
        const auto left = holding(join.Name);
        const auto right = holding(join.OtherName);
        if (left == parts.end() || right == parts.end() || left == right || join.Flag < 1 ||
            join.Flag > words.size())
            return false;
        const auto grouped = [](const FromPart& part) {
            return part.Holds.size() > 1 ? u'(' + part.Text + u')' : part.Text;
        };
        left->Text = grouped(*left) + words[join.Flag - 1] + grouped(*right) + QStringLiteral(" ON ") +
                     join.Expression;
        left->Holds += right->Holds;
        parts.erase(right);
        return true;
    }

    std::optional<QueryText> WriteUnion() {
        QStringList parts;
        for (const QueryRow& row : rows)
            if (row.Attribute == Table && !row.Expression.isEmpty()) {
                QString part = row.Expression.trimmed();
                while (part.endsWith(u';')) part = part.chopped(1).trimmed();
                parts << part;
            }
        if (parts.size() < 2) return std::nullopt;
        const bool all = (FlagOf(Flags, 0) & WithoutDoubles) == 0;
        text.Statement =
            parts.join(all ? QStringLiteral(" UNION ALL ") : QStringLiteral(" UNION ")) + Order();
        return text;
    }

    QList<QueryRow> rows;
    QueryText text;
};

}  // namespace

std::optional<QueryText> TextOfQuery(QList<QueryRow> rows) {
    return Writer(std::move(rows)).Write();
}

}  // namespace zephrin::reader::access
