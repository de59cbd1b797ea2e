// Criteria as a user enters them, run on a real database: what comes back is what the operator says.

#include "BuildRun.h"
#include "flow/CalcFields.h"
#include "sqlgen/WorkingRows.h"

namespace zephrin {

namespace {

const char* const script =
    "CREATE TABLE Things (Id int, N int, X nvarchar(40), D datetime, B bit);"
    "INSERT INTO Things VALUES (1, 5, 'abc', '2003-01-31', 1), (2, 7, 'abx', '2003-02-01', 0),"
    "(3, NULL, NULL, NULL, NULL), (4, -1, 'O''Brien', '2004-12-31', 1), (5, 5, 'x y', '2003-01-31 12:30:00', "
    "0)";

/// The build-query tab on a table of its own, with all fields put out.
struct ThingsRun : test::WizardRun {
    explicit ThingsRun(const QString& dialect, const char* tables = script,
                       const QString& table = QStringLiteral("[Things]"))
        : WizardRun(dialect) {
        database.Run(QString::fromLatin1(tables));
        state.OfferedTables = Collection(QStringList{table});
        Load();
        ChooseTable(table);
        SelectTab(state, WizardTab::Fields);
        MoveAllFieldsRight(state);
        SelectTab(state, WizardTab::Build);
    }
    void Enter(const char* field, const char* listed, const char* value1, const char* value2 = "") {
        Pick(Form().lstSelectedFields.Items, QStringLiteral("[%1]").arg(QLatin1String(field)));
        Pick(Form().lstOperands.Items, QString::fromLatin1(listed));
        if (*value1) ValueTyped(state, 0, QString::fromLatin1(value1));
        if (*value2) ValueTyped(state, 1, QString::fromLatin1(value2));
        EXPECT_TRUE(Form().cmdCommit.Enabled) << listed;
        CommitEntry(state);
    }
    /// Each value that a field is looked up to have, with the rows that a condition on the picked value
    /// brings.
    QString Found(const QString& field) {
        QStringList found;
        for (int item = 0, items = 1; item < items; ++item) {
            DeleteAllRows(state.rsWhere);
            Pick(Form().lstSelectedFields.Items, field);
            Pick(Form().lstOperands.Items, QStringLiteral("="));
            LookUpFieldValues(state);
            items = Form().cmbAvailableValues1.Items.ListCount();
            if (items == 0) return Form().StatusText;
            Form().cmbAvailableValues1.Items.SetListIndex(item);
            const QString value = Form().cmbAvailableValues1.Text;
            CommitEntry(state);
            found << value + QStringLiteral(" -> ") + Ids();
        }
        return found.join(QStringLiteral("; "));
    }
    /// The first column of what the statement brings, or the error.
    QString Ids() {
        try {
            const ado::RecordsetPtr rows = state.SharedConnection().Execute(Form().txtSQL.Text);
            QStringList ids;
            for (qint64 row = 0; row < rows->RecordCount(); ++row) ids << rows->TextAt(row, 0);
            return ids.join(u',');
        } catch (const ado::Error& error) {
            return error.Description() + u'\n' + Form().txtSQL.Text;
        }
    }
};

struct RowsCase {
    const char* Field;
    const char* Operator;
    const char* Value1;
    const char* Value2;
    const char* Ids;
};

const RowsCase cases[] = {
    {"N", "=", "5", "", "1,5"},
    {"N", "<>", "5", "", "2,4"},
    {"N", ">", "5", "", "2"},
    {"N", ">=", "5", "", "1,2,5"},
    {"N", "<", "5", "", "4"},
    {"N", "<=", "5", "", "1,4,5"},
    {"N", "between", "0", "6", "1,5"},
    {"N", "is null", "", "", "3"},
    {"N", "is not null", "", "", "1,2,4,5"},
    {"X", "=", "abc", "", "1"},
    {"X", "<>", "abc", "", "2,4,5"},
    {"X", "=", "O'Brien", "", "4"},
    {"X", "like", "ab%", "", "1,2"},
    {"X", "not like", "ab%", "", "4,5"},
    {"X", "contains", "b", "", "1,2,4"},
    {"X", "does not contain", "b", "", "5"},
    {"X", "begins with", "AB", "", "1,2"},
    {"X", "does not begin with", "ab", "", "4,5"},
    {"X", "ends with", "y", "", "5"},
    {"X", "does not end with", "y", "", "1,2,4"},
    {"X", "between", "ab", "b", "1,2"},
    {"X", "is null", "", "", "3"},
    {"X", "is not null", "", "", "1,2,4,5"},
    {"D", "=", "1/31/2003", "", "1"},
    {"D", "<>", "Jan 31, 2003", "", "2,4,5"},
    {"D", ">", "2003-01-31", "", "2,4,5"},
    {"D", "<", "2/1/2003", "", "1,5"},
    {"D", ">=", "1/31/2003 12:30:00 pm", "", "2,4,5"},
    {"D", "between", "1/31/2003", "2/1/2003", "1,2,5"},
    {"D", "is null", "", "", "3"},
    {"B", "=", "1", "", "1,4"},
    {"B", "<>", "1", "", "2,5"},
};

}  // namespace

TEST(CriteriaRows, EveryOperatorBringsItsRows) {
    for (const char* dialect : {"SQL Server", "MS Access"}) {
        for (const RowsCase& row : cases) {
            ThingsRun run(QString::fromLatin1(dialect));
            run.Enter(row.Field, row.Operator, row.Value1, row.Value2);
            EXPECT_EQ(run.Ids(), QString::fromLatin1(row.Ids))
                << dialect << ": " << row.Field << ' ' << row.Operator << ' ' << row.Value1;
        }
    }
}

TEST(CriteriaRows, APickedValueFindsItsRows) {
    const char* const tables =
        "CREATE TABLE Finds (Id int, B bit, F float, M money, X nvarchar(40), D datetime, P varbinary(8), E "
        "int);"
        "INSERT INTO Finds VALUES (1, 1, 0.1, 1.5, '2003-01-31', '2003-02-01', x'01', NULL),"
        "(2, 0, 1e20, 2, '12', '2003-02-01 12:30:45', x'02', NULL),"
        "(3, 1, -2.25, 2, 'O''Brien', '2003-02-01 12:30:45.123', NULL, NULL)";
    const struct {
        const char* Field;
        const char* Server;
        const char* File;  ///< where it differs
    } rows[] = {
        {"[B]", "0 -> 2; 1 -> 1,3", "True -> 1,3; False -> 2"},
        {"[F]", "-2.25 -> 3; 0.1 -> 1; 1E+20 -> 2", ""},
        {"[M]", "1.50 -> 1; 2.00 -> 2,3", ""},
        {"[X]", "12 -> 2; 2003-01-31 -> 1; O'Brien -> 3", ""},
        {"[D]", "2003-02-01 -> 1; 2003-02-01 12:30:45 -> 2; 2003-02-01 12:30:45.123 -> 3", ""},
        {"[P]", "The field is binary: it has no values to choose from ..", ""},
        {"[E]", "The field has no values ..", ""},
        {"[Finds].[M]*2", "3.00 -> 1; 4.00 -> 2,3", ""},
        {"[Finds].[X]+'!'", "12! -> 2; 2003-01-31! -> 1; O'Brien! -> 3", ""},
    };
    for (const char* dialect : {"SQL Server", "MS Access"}) {
        for (const char* format : {"mm/dd/yyyy h:mm:ss am/pm", "m/d/yyyy", "yyyy-mm-dd hh:nn"}) {
            ThingsRun run(QString::fromLatin1(dialect), tables, QStringLiteral("[Finds]"));
            run.state.Options.gDateFormat = QString::fromLatin1(format);
            for (const auto& [expression, alias] :
                 {std::pair{u"[Finds].[M]*2", u"Twice"}, std::pair{u"[Finds].[X]+'!'", u"Loud"}}) {
                CalcFieldForm form = LoadCalcField(run.state);
                form.Criteria = QString::fromUtf16(expression);
                form.Alias = QString::fromUtf16(alias);
                EXPECT_EQ(AcceptCalcField(run.state, form), CalcOutcome::Stored);
                EndCalcField(run.state);
            }
            for (const auto& row : rows) {
                const bool other = *row.File && run.state.gDatabaseType == QLatin1String("MS Access");
                EXPECT_EQ(run.Found(QString::fromLatin1(row.Field)),
                          QString::fromLatin1(other ? row.File : row.Server))
                    << dialect << ' ' << format << '\n'
                    << qPrintable(run.Form().txtSQL.Text);
            }
        }
    }
}

TEST(CriteriaRows, ASumIsLookedUpInItsGroups) {
    ThingsRun run(QStringLiteral("SQL Server"));
    ChooseQueryMode(run.state, 1);
    for (const auto& [field, listed] : {std::pair{u"[B]", u"GROUP BY"}, std::pair{u"[N]", u"SUM"}}) {
        test::WizardRun::Pick(run.Form().lstSelectedFields.Items, QString::fromUtf16(field));
        test::WizardRun::Pick(run.Form().lstOperands.Items, QString::fromUtf16(listed));
        run.prompts->Answers = {BoxAnswer::Yes};
        CommitEntry(run.state);
    }
    ChooseQueryMode(run.state, 0);
    EXPECT_EQ(run.Found(QStringLiteral("SUMOFN")), QStringLiteral("4 -> True; 12 -> False"));
}

TEST(CriteriaRows, AlternativesAndConditionsCombine) {
    for (const char* dialect : {"SQL Server", "MS Access"}) {
        ThingsRun run(QString::fromLatin1(dialect));
        run.Enter("N", "=", "5");
        run.Enter("N", "=", "7");
        EXPECT_EQ(run.Ids(), QStringLiteral("1,2,5"));
        run.Enter("X", "begins with", "ab");
        EXPECT_EQ(run.Ids(), QStringLiteral("1,2"));
        run.Enter("X", "<>", "abc");
        EXPECT_EQ(run.Ids(), QStringLiteral("2"));
        run.Enter("D", "is not null", "");
        EXPECT_EQ(run.Ids(), QStringLiteral("2"));
    }
}

TEST(CriteriaRows, AggregatesOfEveryDialectRun) {
    for (const char* dialect : {"SQL Server", "MS Access"}) {
        ThingsRun run(QString::fromLatin1(dialect));
        ChooseQueryMode(run.state, 1);
        const QStringList operators = run.Form().lstOperands.Items.Items();
        for (const QString& listed : operators) {
            test::WizardRun::Pick(run.Form().lstSelectedFields.Items, listed == QLatin1String("GROUP BY")
                                                                          ? QStringLiteral("[B]")
                                                                          : QStringLiteral("[N]"));
            test::WizardRun::Pick(run.Form().lstOperands.Items, listed);
            run.prompts->Answers = {BoxAnswer::Yes};
            CommitEntry(run.state);
        }
        ChooseQueryMode(run.state, 0);
        test::WizardRun::Pick(run.Form().lstSelectedFields.Items, QStringLiteral("SUMOFN"));
        test::WizardRun::Pick(run.Form().lstOperands.Items, QStringLiteral(">"));
        ValueTyped(run.state, 0, QStringLiteral("1"));
        CommitEntry(run.state);
        ChooseQueryMode(run.state, 2);
        test::WizardRun::Pick(run.Form().lstSelectedFields.Items, QStringLiteral("SUMOFN"));
        test::WizardRun::Pick(run.Form().lstOperands.Items, QStringLiteral("DESC"));
        CommitEntry(run.state);
        // The groups by B: 0 has 7 and 5, 1 has 5 and -1, Null has nothing to add up.
        const ado::RecordsetPtr rows = run.state.SharedConnection().Execute(run.Form().txtSQL.Text);
        const int sum = rows->FieldIndex(u"SUMOFN");
        ASSERT_EQ(rows->RecordCount(), 2) << qPrintable(run.Form().txtSQL.Text);
        EXPECT_EQ(rows->TextAt(0, sum) + u',' + rows->TextAt(1, sum), QStringLiteral("12,4"));
        EXPECT_EQ(rows->FieldCount(), operators.size());
    }
}

}  // namespace zephrin
