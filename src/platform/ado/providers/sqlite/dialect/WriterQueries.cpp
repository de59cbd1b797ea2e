#include "platform/ado/providers/sqlite/dialect/Limits.h"
#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/dialect/Writer.h"
#include "platform/ado/providers/sqlite/values/DateText.h"
#include "platform/ado/providers/sqlite/values/Naming.h"

#include <algorithm>

namespace zephrin::ado::providers::sqlite {

Writer::Level::Level(Writer& of, qsizetype position) : writer(of) {
    if (writer.out.Text().size() > Limits::WrittenBytes) throw TooLong(position);
    if (++writer.level <= writer.deepest) return;
    writer.deepest = writer.level;
    writer.out.MarkDeepest(position);
}

void Writer::WriteQuery(const Query& query) {
    const QueryDepth deeper(depth);
    const bool alone = query.Arms.size() == 1;
    const SelectCore& first = query.Arms.front().Core;
    if (alone && first.Top && first.Top->Percent) return WriteShare(first, first.Distinct, query.OrderBy);
    // Unless every arm keeps its duplicates, equal rows of the arms become one.
    const bool distinct = std::any_of(query.Arms.begin(), query.Arms.end(), [](const QueryArm& arm) {
        return arm.Joined != SetOperator::First && arm.Joined != SetOperator::UnionAll;
    });
    for (const QueryArm& arm : query.Arms) {
        switch (arm.Joined) {
            case SetOperator::First:
                break;
            case SetOperator::Union:
                out << " UNION ";
                break;
            case SetOperator::UnionAll:
                out << " UNION ALL ";
                break;
            case SetOperator::Intersect:
                out << " INTERSECT ";
                break;
            case SetOperator::Except:
                out << " EXCEPT ";
                break;
        }
        WriteArm(arm, alone, distinct);
    }
    WriteOrder(query.OrderBy);
    if (alone && first.Top) WriteLimit(*first.Top);
}

void Writer::WriteArm(const QueryArm& arm, bool alone, bool distinct) {
    if (arm.Nested) {
        out << "SELECT * FROM (";
        WriteQuery(*arm.Nested);
        out << ")";
    } else if (arm.Core.Top && !alone) {
        // The engine limits the whole, not an arm.
        out << "SELECT * FROM (";
        if (arm.Core.Top->Percent) {
            WriteShare(arm.Core, distinct || arm.Core.Distinct, {});
        } else {
            WriteCore(arm.Core, distinct || arm.Core.Distinct);
            WriteLimit(*arm.Core.Top);
        }
        out << ")";
    } else {
        WriteCore(arm.Core, distinct || arm.Core.Distinct);
    }
}

/// `distinct`: the values of the items are held against each other.
void Writer::WriteCore(const SelectCore& core, bool distinct, const std::vector<OrderItem>* keys) {
    const Level deeper(*this, core.At.From);
    out.Mark(core.At.From);
    out << "SELECT " << (core.Distinct ? "DISTINCT " : "");
    WriteItems(core, distinct);
    if (keys)
        for (const OrderItem& key : *keys)
            if (key.Value->Output < 0) {
                out << ", ";
                WriteKey(*key.Value);
            }
    WriteSources(core);
    if (core.Where) {
        out << " WHERE ";
        WriteFilter(*core.Where, tables != nullptr);
    }
    for (size_t index = 0; index < core.GroupBy.size(); ++index) {
        out << (index == 0 ? " GROUP BY " : ", ");
        WriteKey(*core.GroupBy[index]);
    }
    if (core.Having) {
        out << " HAVING ";
        WriteCondition(*core.Having);
    }
}

void Writer::WriteItems(const SelectCore& core, bool distinct) {
    size_t star = 0;
    qsizetype column = 0;
    for (size_t index = 0; index < core.Items.size(); ++index) {
        if (index > 0) out << ", ";
        const Expression& value = *core.Items[index].Value;
        if (value.Kind == ExpressionKind::Star) {
            const QList<StarColumn>& columns = core.Stars[star++];
            column += columns.size();
            if (core.StarsAreDistinct)
                WriteStar(columns, distinct);
            else
                out << (value.Qualifier.isEmpty() ? QByteArray("*") : QuotedName(value.Qualifier) + ".*");
            continue;
        }
        WriteItem(value, distinct);
        const QString& name = core.Output[column++].Name;
        if (!name.isEmpty()) out << " AS " << QuotedName(name);
    }
}

/// A column of what is kept comes as the file holds it; a number that is a blob inside is none in a file.
void Writer::WriteItem(const Expression& value, bool distinct) {
    const bool kept = isStoring && depth == 1;
    const bool narrow = kept && IsWide(value.Type) && value.Kind != ExpressionKind::Null;
    if (narrow) out << "zx_narrow(";
    if (distinct)
        WriteKey(value);
    else
        Write(value);
    if (narrow) out << ")";
}

void Writer::WriteStar(const QList<StarColumn>& columns, bool distinct) {
    for (qsizetype index = 0; index < columns.size(); ++index) {
        if (index > 0) out << ", ";
        Expression column;
        column.Kind = ExpressionKind::Column;
        column.Qualifier = columns[index].Source;
        column.Name = columns[index].Name;
        column.Type = columns[index].Type;
        column.IsStored = columns[index].IsStored;
        WriteItem(column, distinct);
        out << " AS " << QuotedName(columns[index].Name);
    }
}

void Writer::WriteKey(const Expression& value) {
    const DataType type = value.Type.Type;
    if (IsDateType(type)) return WriteCompared(value, {As::Date});
    WriteOperand(value);
    if (IsComparedAsText(type) && value.Kind != ExpressionKind::Null) out << collation;
}

void Writer::WriteSources(const SelectCore& core) {
    const bool around = mayTurnJoins;
    // A star that can't be written out shows its tables in the order in which they stand.
    mayTurnJoins = core.StarsAreDistinct;
    for (size_t index = 0; index < core.From.size(); ++index) {
        out << (index == 0 ? " FROM " : ", ");
        WriteSource(*core.From[index]);
    }
    mayTurnJoins = around;
}

void Writer::WriteSource(const Source& source) {
    const Level deeper(*this, source.At.From);
    out.Mark(source.At.From);
    switch (source.Kind) {
        case SourceKind::Table:
            out << QuotedName(source.Name);
            break;
        case SourceKind::Derived:
            out << "(";
            WriteQuery(*source.Nested);
            out << ")";
            break;
        case SourceKind::Join:
            if (!WriteFullJoin(source)) WriteJoin(source);
            return;
    }
    if (!source.Alias.isEmpty()) out << " AS " << QuotedName(source.Alias);
}

void Writer::WriteJoin(const Source& join) {
    // A right join is a left join read from its other end; the engine builds no index of its own for the
    // first.
    const bool turned = join.How == JoinKind::Right && mayTurnJoins;
    static constexpr const char* words[] = {" INNER JOIN ", " LEFT JOIN ", " RIGHT JOIN ", " FULL JOIN ",
                                            " CROSS JOIN "};
    out << "(";
    WriteSource(turned ? *join.Right : *join.Left);
    out << words[int(turned ? JoinKind::Left : join.How)];
    WriteSource(turned ? *join.Left : *join.Right);
    if (join.On) {
        out << " ON ";
        WriteCondition(*join.On);
    }
    out << ")";
}

/// Neither does it build one for a full join. So between two tables the numbers of the rows that belong
/// together come from a left join and from what a second one, read from the other end, leaves over; the
/// tables are joined to these.
bool Writer::WriteFullJoin(const Source& join) {
    const auto numberOf = [&](const Source& side) {
        const CatalogTable* const table = side.Kind == SourceKind::Table ? tables->Find(side.Name) : nullptr;
        if (!table || table->RowNumber.isEmpty()) return QByteArray();
        return QuotedName(side.Alias.isEmpty() ? side.Name : side.Alias) + "." + table->RowNumber.toLatin1();
    };
    if (join.How != JoinKind::Full || !mayTurnJoins || !tables) return false;
    const QByteArray left = numberOf(*join.Left);
    const QByteArray right = numberOf(*join.Right);
    if (left.isEmpty() || right.isEmpty()) return false;
    const QByteArray rows = "zx_rows" + QByteArray::number(++fullJoins);
    const auto pairs = [&](const Source& from, const Source& to) {
        WriteSource(from);
        out << " LEFT JOIN ";
        WriteSource(to);
        out << " ON ";
        WriteCondition(*join.On);
    };
    out << "((SELECT " << left << " AS zx_left, " << right << " AS zx_right FROM ";
    pairs(*join.Left, *join.Right);
    out << " UNION ALL SELECT NULL, " << right << " FROM ";
    pairs(*join.Right, *join.Left);
    out << " WHERE " << left << " IS NULL) AS " << rows << " LEFT JOIN ";
    WriteSource(*join.Left);
    out << " ON " << left << " = " << rows << ".zx_left LEFT JOIN ";
    WriteSource(*join.Right);
    out << " ON " << right << " = " << rows << ".zx_right)";
    return true;
}

void Writer::WriteOrder(const std::vector<OrderItem>& order) {
    for (size_t index = 0; index < order.size(); ++index) {
        out << (index == 0 ? " ORDER BY " : ", ");
        const Expression& value = *order[index].Value;
        out.Mark(value.At.From);
        if (value.Output < 0) {
            WriteKey(value);
        } else {
            // By its number: inside an expression the engine would take the name for a column's.
            out << QByteArray::number(value.Output + 1);
            if (IsComparedAsText(value.Type.Type)) out << collation;
        }
        if (order[index].Descending) out << " DESC";
    }
}

void Writer::WriteChange(const Statement& statement) {
    out.Mark(statement.NameAt.From);
    const QByteArray name = "main." + QuotedName(statement.Name);
    if (statement.Kind == StatementKind::Delete) out << "DELETE FROM " << name;
    if (statement.Kind == StatementKind::Update) {
        out << "UPDATE " << name << " SET ";
        for (size_t index = 0; index < statement.Assignments.size(); ++index) {
            const Assignment& assignment = statement.Assignments[index];
            if (index > 0) out << ", ";
            out << QuotedName(assignment.Column) << " = ";
            WriteStored(*assignment.Value, assignment.Type);
        }
    }
    if (statement.Where) {
        out << " WHERE ";
        WriteCondition(*statement.Where);
    }
}

/// A date goes into its column in the one form in which dates are stored, an exact number with the places
/// that the column declares.
void Writer::WriteStored(const Expression& value, const ColumnType& column) {
    const Family family = FamilyOf(column);
    if (family == Family::Truth) return WriteTruth(value);
    if (IsOneOf(family, Family::DateTime | Family::Date) && IsDateType(value.Type.Type))
        return WriteCompared(value, {As::Date});
    const bool exact = IsOneOf(family, Family::Decimal | Family::Money);
    const bool plain = family == Family::Unknown || FamilyOf(value.Type) == Family::Unknown ||
                       value.Kind == ExpressionKind::Null || (!exact && FamilyOf(value.Type) == family);
    if (exact || IsWide(value.Type)) out << "zx_narrow(";
    if (plain)
        Write(value);
    else
        WriteConversion(value, column);
    if (exact || IsWide(value.Type)) out << ")";
}

void Writer::WriteStatement(const Statement& statement) {
    WriteChange(statement);
    if (statement.Kind != StatementKind::Insert) return;
    out << "INSERT INTO main." << QuotedName(statement.Name);
    for (qsizetype index = 0; index < statement.Columns.size(); ++index)
        out << (index == 0 ? " (" : ", ") << QuotedName(statement.Columns[index]);
    if (!statement.Columns.isEmpty()) out << ")";
    if (statement.Body) {
        out << " ";
        WriteQuery(*statement.Body);
        return;
    }
    for (size_t row = 0; row < statement.Rows.size(); ++row) {
        out << (row == 0 ? " VALUES (" : ", (");
        for (size_t index = 0; index < statement.Rows[row].size(); ++index) {
            if (index > 0) out << ", ";
            const bool known = index < size_t(statement.Assignments.size());
            WriteStored(*statement.Rows[row][index],
                        known ? statement.Assignments[index].Type : ColumnType());
        }
        out << ")";
    }
}

}  // namespace zephrin::ado::providers::sqlite
