#include "SqlState.h"
#include "runstate/Dialect.h"
#include "sqlgen/CommitCriterion.h"
#include "sqlgen/CriteriaOperators.h"
#include "sqlgen/CriterionText.h"
#include "support/ScratchDatabase.h"

namespace zephrin {

namespace {

using test::SqlState;

/// A state on a table [T] of typed columns, with what the build-query tab would do before a commit.
struct CommitRun : SqlState {
    test::ScratchDatabase database{
        QStringLiteral("CREATE TABLE T (I int, X nvarchar(40), D datetime, M money, B bit, N decimal(9,2), G "
                       "uniqueidentifier);"
                       "INSERT INTO T VALUES (1, 'a', '2003-01-31', 1, 1, 1.5, 'x')")};

    explicit CommitRun(const char* dialect = "SQL Server") : SqlState(dialect) {
        const ConnectionErrors errors = OpenDatabaseConnection(
            state, database.ConnectionString(QString::fromLatin1(dialect)), 5, 5, {}, {});
        EXPECT_TRUE(errors.IsEmpty()) << qPrintable(errors.Description());
        Choose("[T]", "[T].[I],[T].[X],[T].[D],[T].[M],[T].[B],[T].[N],[T].[G],[T].[Gone],plain");
        Form().lstOperands.Items.AddItems(CriteriaOperatorList());
        state.Options.gDateFormat = QStringLiteral("yyyy-mm-dd");
    }

    /// Enters a criterion: `join` is "AND" or "OR".
    void Commit(const char* field, const char* listedOperator, const QString& value1,
                const QString& value2 = {}, const char* join = "AND") {
        Form().CriteriaField = QString::fromLatin1(field);
        Form().lstOperands.Items.SetText(QString::fromLatin1(listedOperator));
        Form().cmbAvailableValues1.Text = value1;
        Form().cmbAvailableValues2.Text = value2;
        Form().optAndOr.Selected = join == std::string("OR") ? 1 : 0;
        Form().FieldHasCriteria = Sheet().contains(QString::fromLatin1(field)) ? 1 : 0;
        CommitCriterion(state);
    }

    /// The sheet, cells in the order of columns, rows in lines; a Null is nothing and an empty text is "".
    QString Sheet() {
        QStringList rows;
        for (qint64 row = 0; row < state.rsWhere->RecordCount(); ++row) {
            QStringList cells;
            for (int field = 0; field < state.rsWhere->FieldCount(); ++field)
                if (!state.rsWhere->IsNullAt(row, field))
                    cells << state.rsWhere->FieldAt(field).Name + u' ' + state.rsWhere->TextAt(row, field);
            rows << cells.join(QStringLiteral("; "));
        }
        return rows.join(u'\n');
    }
};

struct TextCase {
    const char* Field;
    const char* Operator;
    const char* Value1;
    const char* Value2;
    const char* Expected;
};

const TextCase serverCases[] = {
    {"[T].[X]", "contains", "ab", "", "LIKE '%ab%'"},
    {"[T].[X]", "does not contain", "ab", "", "NOT LIKE '%ab%'"},
    {"[T].[X]", "begins with", "ab", "", "LIKE 'ab%'"},
    {"[T].[X]", "does not begin with", "ab", "", "NOT LIKE 'ab%'"},
    {"[T].[X]", "ends with", "ab", "", "LIKE '%ab'"},
    {"[T].[X]", "does not end with", "ab", "", "NOT LIKE '%ab'"},
    {"[T].[X]", "like", "a_b", "", "LIKE 'a_b'"},
    {"[T].[X]", "not like", "a_b", "", "NOT LIKE 'a_b'"},
    {"[T].[I]", "=", "5", "", "= 5"},
    {"[T].[X]", "=", "5", "", "= '5'"},
    {"[T].[I]", "<>", "abc", "", "<> abc"},
    {"[T].[M]", ">=", "5.5", "", ">= 5.5"},
    {"[T].[B]", "=", "True", "", "= True"},
    // Other types go by the looks of the values.
    {"[T].[N]", "<=", "5", "", "<= 5"},
    {"[T].[G]", "=", "abc", "", "= 'abc'"},
    {"[T].[G]", "between", "abc", "7", "BETWEEN abc AND 7"},
    {"[T].[Gone]", "=", "7", "", "= 7"},
    {"plain", "=", "7", "", "= 7"},
    {"plain", "=", "x", "", "= 'x'"},
    {"[T].[I]", "between", "1", "5", "BETWEEN 1 AND 5"},
    {"[T].[X]", "between", "a", "f", "BETWEEN 'a' AND 'f'"},
    {"[T].[X]", "is null", "", "", "IS NULL"},
    {"[T].[I]", "is not null", "77", "88", "IS NOT NULL"},
    {"[T].[D]", "=", "2003-01-31", "", "= '2003-01-31'"},
    {"[T].[D]", "between", "1/31/2003", "2/1/2003", "BETWEEN '2003-01-31' AND '2003-02-01'"},
    {"[T].[D]", "between", "1/31/2003", "2", "BETWEEN '2003-01-31' AND '1900-01-01'"},
    {"[T].[D]", "=", "soon", "", "= 'soon'"},
    // A date is written in the format wherever it stands, and without delimiters where the field has none.
    {"[T].[X]", "=", "1/31/2003", "", "= '2003-01-31'"},
    {"[T].[I]", "=", "1/31/2003", "", "= 2003-01-31"},
    // Only the first apostrophe is doubled; a wildcard shifts the place.
    {"[T].[X]", "=", "O'Brien", "", "= 'O''Brien'"},
    {"[T].[X]", "=", "a'b'c", "", "= 'a''b'c'"},
    {"[T].[X]", "contains", "a'b", "", "LIKE '%a''b%'"},
    {"[T].[X]", "ends with", "'b", "", "LIKE '%''b'"},
    // What follows the apostrophe of the second value comes from the first.
    {"[T].[X]", "between", "abcdef", "x'yz", "BETWEEN 'abcdef' AND 'x''cdef'"},
    {"[T].[X]", "=", "  a b  ", "", "= 'a b'"},
    {"[T].[X]", "=", "", "", "= ''"},
    {"[T].[I]", "=", "", "", "="},
};

}  // namespace

TEST(CommitCriterion, WritesTheFragmentByOperatorValueAndType) {
    for (const TextCase& row : serverCases) {
        CommitRun run;
        run.Commit(row.Field, row.Operator, QString::fromLatin1(row.Value1), QString::fromLatin1(row.Value2));
        EXPECT_EQ(run.Sheet(), QString::fromLatin1(row.Field) + u' ' + QString::fromLatin1(row.Expected))
            << row.Operator << ' ' << row.Value1;
    }
}

TEST(CommitCriterion, DatesInFilesTakeTheirOwnDelimiter) {
    CommitRun run("MS Access");
    run.Commit("[T].[D]", "=", QStringLiteral("2003-01-31"));
    EXPECT_EQ(run.state.WhereClause, QStringLiteral("WHERE ([T].[D] = #2003-01-31#)"));
    run.Commit("[T].[X]", "=", QStringLiteral("2003-01-31"));
    EXPECT_EQ(run.Sheet(), QStringLiteral("[T].[X] = '2003-01-31'; [T].[D] = #2003-01-31#"));
}

TEST(CommitCriterion, OverridesReplaceWildcardAndDateDelimiter) {
    CommitRun run;
    run.state.WildcardOverride = QStringLiteral("*");
    run.state.DateDelimiterOverride = QStringLiteral("!");
    run.Commit("[T].[X]", "contains", QStringLiteral("ab"));
    run.Commit("[T].[D]", "=", QStringLiteral("2003-01-31"));
    run.Commit("[T].[M]", "=", QStringLiteral("2003-01-31"));
    EXPECT_EQ(run.Sheet(),
              QStringLiteral("[T].[X] LIKE '*ab*'; [T].[D] = !2003-01-31!; [T].[M] = 2003-01-31"));
}

TEST(CommitCriterion, AnUnknownDialectKeepsTheDelimiterOfTheCommitBefore) {
    CommitRun run;
    run.state.gDatabaseType = QStringLiteral("Other");
    run.Commit("[T].[D]", "=", QStringLiteral("2003-01-31"));
    EXPECT_EQ(run.Sheet(), QStringLiteral("[T].[D] = 2003-01-31"));
    run.Commit("[T].[X]", "=", QStringLiteral("a"));
    run.Commit("[T].[D]", "<", QStringLiteral("2004-01-31"));
    EXPECT_EQ(run.Sheet(), QStringLiteral("[T].[X] = 'a'; [T].[D] = 2003-01-31 AND < '2004-01-31'"));
}

TEST(CommitCriterion, EntriesCombineRowByRow) {
    const struct {
        const char* What;
        const char* Before;   ///< criteria that stand in the sheet
        const char* Entries;  ///< "join field|operator|value", one after the other
        const char* Sheet;
    } rows[] = {
        {"a further condition", "", "AND I|>|1; AND I|<|9", "I > 1 AND < 9"},
        {"AND goes where the field has no cell yet", "", "AND I|>|1; OR X|=|a; AND M|=|5",
         "I > 1; M = 5\nX = 'a'; M = 5"},
        {"an exclusion goes into every row, as its own cell requires", "", "AND I|>|1; OR X|=|a; AND X|<>|b",
         "I > 1; X <> 'b'\nX = 'a' AND <> 'b'"},
        {"another condition only where there is none, and into the last row", "",
         "AND X|=|a; OR X|=|b; AND X|like|c", "X = 'a'\nX = 'b' AND LIKE 'c'"},
        {"an emptied cell is not one without value", "[T].[I]: = 1|[T].[X]: ; [T].[I]: = 2", "AND X|=|a",
         "I = 1; X \nI = 2; X = 'a'"},
        {"but takes an exclusion", "[T].[I]: = 1|[T].[X]: ; [T].[I]: = 2", "AND X|<>|b",
         "I = 1; X <> 'b'\nI = 2; X <> 'b'"},
        {"OR on one field alone", "", "OR I|=|1; OR I|=|2", "I = 1\nI = 2"},
        {"OR multiplies out over the other fields", "", "AND I|=|1; AND M|=|2; OR I|=|3; OR M|=|4",
         "I = 1; M = 2\nI = 3; M = 2\nI = 1; M = 4\nI = 3; M = 4"},
        {"the same alternative changes nothing", "", "AND I|=|1; AND M|=|2; OR I|=|3; OR I|=|3",
         "I = 1; M = 2\nI = 3; M = 2"},
        {"OR on a field without a condition is an alternative of its own", "",
         "AND I|=|1; AND M|=|2; OR X|=|z", "I = 1; M = 2\nX = 'z'"},
    };
    for (const auto& row : rows) {
        CommitRun run;
        run.AddCriteria(row.Before);
        for (const QString& entry : test::Split(row.Entries, QLatin1String("; "))) {
            const QStringList parts = entry.section(u' ', 1).split(u'|');
            run.Commit(qPrintable(QStringLiteral("[T].[%1]").arg(parts[0])), qPrintable(parts[1]), parts[2],
                       {}, entry.startsWith(QLatin1String("OR")) ? "OR" : "AND");
        }
        EXPECT_EQ(run.Sheet().remove(QStringLiteral("[T].[")).remove(u']'), QString::fromLatin1(row.Sheet))
            << row.What;
    }
}

TEST(CommitCriterion, WritesBothClauses) {
    CommitRun run;
    run.Commit("[T].[I]", ">", QStringLiteral("1"));
    run.Commit("[T].[I]", "<", QStringLiteral("9"));
    EXPECT_EQ(run.state.WhereClause, QStringLiteral("WHERE ([T].[I] > 1 AND [T].[I] < 9)"));
    EXPECT_EQ(run.state.HavingClause, QString());
}

TEST(CommitCriterion, ACellHoldsFiveHundredAndFifty) {
    CommitRun run;
    run.Commit("[T].[X]", "=", QString(546, u'x'));
    EXPECT_EQ(run.state.rsWhere->TextAt(0, 1).size(), 550);
    run.Commit("[T].[X]", "<>", QStringLiteral("b"));
    EXPECT_EQ(run.state.rsWhere->TextAt(0, 1).size(), 550) << "no room for a further condition";
    // One alternative without room keeps the condition out of all.
    run.Commit("[T].[I]", "=", QStringLiteral("1"), {}, "OR");
    run.Commit("[T].[X]", "<>", QStringLiteral("b"));
    EXPECT_TRUE(run.state.rsWhere->IsNullAt(1, 1));
}

TEST(CommitCriterion, FieldsAreSplitAtTheirFirstDot) {
    const SqlState sql;
    const struct {
        const char* Field;
        const char* Table;
        const char* Bare;
    } rows[] = {
        {"[Orders].[Total]", "[Orders]", "[Total]"},
        {"[Order Details].[Unit Price]", "[Order Details]", "[Unit Price]"},
        {"[T].[a.b]", "[T]", "[a.b]"},
        {"alias", "", "[alias]"},
        {".", "[]", "[]"},
    };
    for (const auto& row : rows) {
        const FieldParts parts = SplitField(sql.state, QString::fromLatin1(row.Field));
        EXPECT_EQ(parts.Table, QString::fromLatin1(row.Table)) << row.Field;
        EXPECT_EQ(parts.Field, QString::fromLatin1(row.Bare)) << row.Field;
    }
}

}  // namespace zephrin
