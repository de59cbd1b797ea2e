#include "flow/CalcFields.h"
#include "sqlgen/SqlState.h"
#include "sqlgen/WorkingRows.h"

#include <functional>
#include <gtest/gtest.h>

namespace zephrin {

namespace {

using test::SqlState;

constexpr char sumOfPrice[] = "[Items].[Price]|SUM([Items].[Price])|SUMOFPrice|YES";

/// A run with one table of two fields, put out both.
struct CalcRun : SqlState {
    explicit CalcRun(const char* dialect = "SQL Server") : SqlState(dialect) {
        Choose("[Items]", "[Items].[Id],[Items].[Price]");
        state.Options.gRunTimeCaption = QStringLiteral("Caption");
    }

    CalcOutcome Accept(const QString& expression, const QString& alias, bool show = true) {
        CalcFieldForm form = LoadCalcField(state);
        form.Criteria = expression;
        form.Alias = alias;
        form.ShowField = show;
        return AcceptCalcField(state, form);
    }

    QStringList Rows() const {
        QStringList rows;
        for (const CalcRow& row : CalcRows(state))
            rows << row.CalcField + u'|' + row.Alias + u'|' + row.Output;
        return rows;
    }
    QStringList Aliases() const {
        QStringList rows;
        for (const AliasRow& row : AliasRows(state)) rows << row.FieldName + u'|' + row.Alias;
        return rows;
    }
};

}  // namespace

TEST(CalcFields, EachDialectOffersItsOwnLists) {
    const struct {
        const char* Dialect;
        CalcFunctionType Type;
        int Count;
        const char* First;
        const char* Last;
    } rows[] = {
        {"SQL Server", CalcFunctionType::Text, 5, "LEFT(<<string,n>>)", "LEN(<<string>>)"},
        {"Oracle", CalcFunctionType::Date, 6, "DAY(<<number>>)", "CONVERT(data_type, expression, style)"},
        {"SQL Server", CalcFunctionType::Math, 6, "ABS(<<number>>)", "TAN(<<number>>)"},
        {"SQL Server", CalcFunctionType::Logical, 12, "CASE", "CHAR(<<number>>)"},
        {"SQL Server", CalcFunctionType::Aggregate, 8, "GROUP BY", "VAR"},
        {"MS Access", CalcFunctionType::Text, 9, "LEFT(<<string,n>>)", "LCASE(<<string>>)"},
        {"MS Excel", CalcFunctionType::Date, 8, "MINUTE(<<number>>)", "WEEKDAY()"},
        {"MS Access", CalcFunctionType::Math, 12, "ABS(<<number>>)", "TAN(<<number>>)"},
        {"MS Access", CalcFunctionType::Logical, 4, "IIF(<<expr,true part,false part>>)", "NOT"},
        {"MS Access", CalcFunctionType::Aggregate, 10, "GROUP BY", "LAST"},
    };
    for (const auto& row : rows) {
        const QStringList list = CalcFunctions(QString::fromUtf8(row.Dialect), row.Type);
        ASSERT_EQ(list.size(), row.Count) << row.Dialect << row.First;
        EXPECT_EQ(list.first(), QString::fromUtf8(row.First));
        EXPECT_EQ(list.last(), QString::fromUtf8(row.Last));
    }
    EXPECT_TRUE(CalcFunctions(QStringLiteral("other"), CalcFunctionType::Text).isEmpty());
    EXPECT_TRUE(CalcFunctions(QStringLiteral("SQL Server"), CalcFunctionType::Date)
                    .contains(QStringLiteral("CAST(expression AS data_type) ")));
}

TEST(CalcFields, TextGoesInBehindABlankOrInPlaceOfTheSelection) {
    const struct {
        const char* Before;
        int Start, Length;
        const char* After;
    } rows[] = {
        {"", 0, 0, " LEN()"},     {"12", 1, 0, "1 LEN()2"}, {"12", 2, 0, "12 LEN()"},
        {"abc", 1, 1, "aLEN()c"}, {"abc", 0, 3, "LEN()"},
    };
    for (const auto& row : rows) {
        CalcFieldForm form;
        form.Criteria = QString::fromUtf8(row.Before);
        form.SelStart = row.Start;
        form.SelLength = row.Length;
        InsertIntoExpression(form, QStringLiteral("LEN()"));
        EXPECT_EQ(form.Criteria, QString::fromUtf8(row.After));
        EXPECT_EQ(form.SelStart, form.Criteria.size());
        EXPECT_FALSE(form.OkEnabled) << "there is no alias";
    }
}

TEST(CalcFields, OkFollowsWhatIsThere) {
    const struct {
        const char* What;
        const char* Expression;
        const char* Alias;
        bool Before;
        std::function<void(CalcFieldForm&)> Act;
        bool After;
    } rows[] = {
        {"alias typed", "1", "A", false, AliasChanged, true},
        {"alias typed, no expression", "", "A", true, AliasChanged, false},
        {"alias emptied", "1", "", true, AliasChanged, false},
        {"field picked", "", "A", false, CalcFieldPicked, true},
        {"field picked, no alias", "1", "", true, CalcFieldPicked, false},
        {"cleared", "1", "A", true, ClearExpression, false},
        {"typed", "", "A", false, [](CalcFieldForm& f) { ExpressionTyped(f, QStringLiteral("2")); }, true},
        {"typed, no alias", "", "", false, [](CalcFieldForm& f) { ExpressionTyped(f, QStringLiteral("2")); },
         false},
        {"typed away", "1", "A", true, [](CalcFieldForm& f) { ExpressionTyped(f, QString()); }, true},
    };
    for (const auto& row : rows) {
        CalcFieldForm form;
        form.Criteria = QString::fromUtf8(row.Expression);
        form.Alias = QString::fromUtf8(row.Alias);
        form.OkEnabled = row.Before;
        row.Act(form);
        EXPECT_EQ(form.OkEnabled, row.After) << row.What;
    }
}

TEST(CalcFields, FieldsGroupsAndEarlierFieldsAreOnOffer) {
    CalcRun run;
    run.Add(run.state.rsGroupBy, sumOfPrice);
    run.Add(run.state.rsGroupBy, "[Items].[Price]|[Items].[Price]|-|YES");
    ASSERT_EQ(run.Accept(QStringLiteral("1+1"), QStringLiteral("Two")), CalcOutcome::Stored);
    const std::vector<CalcFieldForm::FieldRow> expected{
        {QStringLiteral("[Id]"), QStringLiteral("[Items].[Id]")},
        {QStringLiteral("[Price]"), QStringLiteral("[Items].[Price]")},
        {QStringLiteral("SUMOFPrice"), QStringLiteral("SUM([Items].[Price])")},
        {QStringLiteral("Two"), QStringLiteral("1+1")}};
    EXPECT_EQ(LoadCalcField(run.state).Fields, expected);
}

TEST(CalcFields, AnAggregateMustStandInAGroupRowExactly) {
    CalcRun run;
    EXPECT_EQ(run.Accept(QStringLiteral("sum([Items].[Price])*2"), QStringLiteral("X")),
              CalcOutcome::Refused);
    ASSERT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_EQ(
        run.prompts->Boxes[0].Text,
        QStringLiteral(
            "Unable to create Calculated Field : sum([Items].[Price])*2.\r\nField is using an unknown "
            "Aggregate.\r\n"
            "You must first create the Aggregate using the Group function before using the Aggregate in a "
            "Calculated field."));
    EXPECT_EQ(run.prompts->Boxes[0].Title, QStringLiteral("Calc Field Creation Error"));
    run.Add(run.state.rsGroupBy, sumOfPrice);
    EXPECT_EQ(run.Accept(QStringLiteral("sum([Items].[Price])*2"), QStringLiteral("X")), CalcOutcome::Refused)
        << "case counts";
    EXPECT_EQ(run.Accept(QStringLiteral("  SUM([Items].[Price])*2 "), QStringLiteral(" X ")),
              CalcOutcome::Stored);
    EXPECT_EQ(run.Rows(), QStringList(QStringLiteral("SUM([Items].[Price])*2 |X |YES")))
        << "only blanks in front go";
}

TEST(CalcFields, AliasesAreUniqueAndAnEditReplacesItsRow) {
    CalcRun run;
    run.Accept(QStringLiteral("1"), QStringLiteral("A"));
    run.Accept(QStringLiteral("2"), QStringLiteral("B"), false);
    EXPECT_EQ(run.Rows(), QStringList({QStringLiteral("1|A|YES"), QStringLiteral("2|B|No")}));
    run.Add(run.state.rsGroupBy, sumOfPrice);
    for (const char* taken : {" A", "a", "[A]", "b ", "sumOfPrice"})
        EXPECT_EQ(run.Accept(QStringLiteral("3"), QString::fromLatin1(taken)), CalcOutcome::TakenAlias)
            << taken;
    EXPECT_EQ(run.prompts->Boxes.last().Text,
              QStringLiteral("Alias already exists.\r\nAll Alias must be unique."));
    EXPECT_EQ(run.prompts->Boxes.last().Style, 48);
    EXPECT_EQ(run.prompts->Boxes.last().Title, QStringLiteral("Caption"));

    run.state.EditCalcField = QStringLiteral("1");
    run.state.EditCalcAlias = QStringLiteral("A");
    run.state.EditCalcShow = 1;
    const CalcFieldForm form = LoadCalcField(run.state);
    EXPECT_EQ(form.Criteria, QStringLiteral("1"));
    EXPECT_FALSE(form.AliasEnabled);
    EXPECT_EQ(run.Accept(QStringLiteral("9"), QStringLiteral("A")), CalcOutcome::Stored);
    EXPECT_EQ(run.Rows(), QStringList({QStringLiteral("2|B|No"), QStringLiteral("9|A|YES")}));
    EXPECT_EQ(run.Aliases(), QStringList({QStringLiteral("9|A"), QStringLiteral("2|B")}));
    EXPECT_EQ(run.state.EditCalcNew, QStringLiteral("9"));
    EXPECT_TRUE(run.state.CalcFieldCreated);
    EXPECT_TRUE(run.state.EditCalcField.isEmpty());
}

TEST(CalcFields, AnExpressionThatItsColumnCanNotHoldLosesNothing) {
    CalcRun run;
    run.Accept(QStringLiteral("1"), QStringLiteral("A"));
    run.state.EditCalcField = QStringLiteral("1");
    EXPECT_EQ(run.Accept(QString(8001, u'1'), QStringLiteral("A")), CalcOutcome::Refused);
    EXPECT_EQ(run.Rows(), QStringList(QStringLiteral("1|A|YES")));
    EXPECT_EQ(run.prompts->Boxes.size(), 1);
}

TEST(CalcFields, TheWholeStatementFollows) {
    CalcRun run;
    run.state.FromClause = QStringLiteral("FROM [Items]");
    const QString expression = QStringLiteral("SUM([Items].[Price])\r\n*2");
    run.Add(run.state.rsGroupBy, sumOfPrice);
    // What waits for the field, as after a change of its text.
    run.Add(run.state.rsOrderBy, {expression, expression + QStringLiteral(" DESC")});
    for (const char* lineBreak : {"\n", "\r", "\r\n"}) {
        DeleteAllRows(run.state.rsCalcFields);
        run.Accept(QStringLiteral("SUM([Items].[Price])%1*2").arg(QLatin1String(lineBreak)),
                   QStringLiteral("Twice"));
        EndCalcField(run.state);
        EXPECT_EQ(run.Form().txtSQL.Text,
                  QStringLiteral("SELECT SUM([Items].[Price]) AS SUMOFPrice, %1 AS Twice\r\nFROM [Items]\r\n"
                                 "ORDER BY %1 DESC")
                      .arg(expression));
    }
    EXPECT_GE(run.state.rsWhere->FieldIndex(u"Twice"), 0);
    EXPECT_EQ(run.Form().lstSelectedFields.Items.Items().last(), expression);
}

}  // namespace zephrin
