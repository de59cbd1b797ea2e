// How long the statement takes to be made anew: after a keystroke, at a full regeneration and at a commit of
// a criterion, and how that grows when tables, columns or rows double. A frame of the screen lasts 16 ms.

#include "bench/Measure.h"
#include "flow/BuildTab.h"
#include "sqlgen/CommitCriterion.h"
#include "sqlgen/CriteriaOperators.h"
#include "sqlgen/FromClause.h"
#include "sqlgen/Statement.h"
#include "sqlgen/WhereClause.h"

#include <QCoreApplication>

namespace zephrin::bench {
namespace {

constexpr int Runs = 21;

/// How much there is to write.
struct Size {
    int Tables;
    int Columns;
    int Rows;
    /// Every so many columns a row has a criterion.
    int CellEvery = 10;
};

QString Table(int index) {
    return QStringLiteral("[Table %1]").arg(index);
}

void AddText(const ado::RecordsetPtr& rows, const QStringList& texts) {
    rows->AddNew();
    for (int i = 0; i < texts.size(); ++i)
        if (!texts[i].isEmpty()) rows->SetValue(i, texts[i]);
    rows->Update();
}

/// Every table joined to the one before it.
void AddJoins(ZPGGlobalDeclarations& state, int tables) {
    for (int i = 0; i < tables; ++i) {
        AddText(state.rsJoinTablesUsed, {Table(i)});
        AddText(state.rsJoinTable, {Table(i)});
        if (i == 0) continue;
        AddText(state.rsJoins, {i == 1 ? Table(0) : QString(), QStringLiteral("INNER JOIN"),
                                Table(i) + QStringLiteral(" ON"), Table(i - 1) + QStringLiteral(".[Id]"),
                                QStringLiteral("="), Table(i) + QStringLiteral(".[Id]")});
    }
    RebuildJoinText(state);
}

/// Rows of the sheet that differ from each other.
void AddCriteria(ZPGGlobalDeclarations& state, const Size& size) {
    for (int row = 0; row < size.Rows; ++row) {
        state.rsWhere->AddNew();
        for (int column = 0; column < size.Columns; column += size.CellEvery)
            state.rsWhere->SetValue(column, QStringLiteral("> %1 AND < 100000").arg(row));
        state.rsWhere->Update();
    }
}

/// A state in which all fields but one are put out, so that the list is written.
class Query {
 public:
    explicit Query(const Size& size) {
        state.gDatabaseType = QStringLiteral("SQL Server");
        state.gDelimOpen = QStringLiteral("[");
        state.gDelimClose = QStringLiteral("]");
        CreateWorkingRecordsets(state);
        FormState& form = *state.Form;
        form.OperatorTokens =
            QStringLiteral("=,>,<,>=,<=,<>,LIKE,NOT LIKE,IS NULL,IS NOT NULL,BETWEEN").split(u',');
        for (int i = 0; i < size.Tables; ++i) state.colTables.Add(Table(i));
        for (int i = 0; i < size.Columns; ++i)
            state.colFields.Add(QStringLiteral("%1.[Field %2]").arg(Table(i % size.Tables)).arg(i));
        state.colSelFields = state.colFields;
        form.lstZPQTableTo.Items.AddItems(state.colTables.Items());
        form.lstZPQFieldTo.Items.AddItems(state.colFields.Items());
        form.lstZPQFieldFrom.Items.AddItem(QStringLiteral("[Table 0].[Left]"));
        form.lstOperands.Items.AddItems(CriteriaOperatorList());
        form.dgrSQL.Visible = false;
        AddJoins(state, size.Tables);
        SyncCriteriaColumns(state);
        AddCriteria(state, size);
        RegenerateStatement(state);
    }
    ZPGGlobalDeclarations& State() { return state; }

    /// A criterion on the last column, on the sheet as it was.
    double Commit(const QString& listed, bool byOr, int fieldHasCriteria) {
        const ado::RecordsetPtr kept = state.rsWhere->Clone();
        FormState& form = *state.Form;
        form.lstOperands.Items.SetText(listed);
        form.CriteriaField = state.rsWhere->FieldAt(state.rsWhere->FieldCount() - 1).Name;
        form.cmbAvailableValues1.Text = QStringLiteral("7");
        form.optAndOr.Selected = byOr ? 1 : 0;
        form.FieldHasCriteria = fieldHasCriteria;
        const double seconds = Seconds([&] {
            CommitCriterion(state);
            AssembleStatement(state);
        });
        state.rsWhere = kept;
        return seconds;
    }

 private:
    ZPGGlobalDeclarations state{{}, nullptr};
};

template <class Work>
double MedianOf(Work work) {
    std::vector<double> runs;
    for (int run = 0; run < Runs; ++run) runs.push_back(work());
    return Median(runs);
}

struct Times {
    double Regenerate, Keystroke, Colour, And, Or;
    qsizetype Length;
};

Times Measure(const Size& size) {
    Query query(size);
    ZPGGlobalDeclarations& state = query.State();
    Times times{};
    times.Regenerate = MedianOf([&] { return Seconds([&] { RegenerateStatement(state); }); });
    times.Keystroke = MedianOf([&] {
        state.Form->txtTopX.Text = QStringLiteral("10");
        return Seconds([&] { TopXChanged(state); });
    });
    times.Length = state.Form->txtSQL.Text.size();
    times.Colour = MedianOf([&] { return Seconds([&] { ColourStatement(state.Form->txtSQL.Text); }); });
    times.And = MedianOf([&] { return query.Commit(QStringLiteral("<>"), false, 1); });
    times.Or = MedianOf([&] { return query.Commit(QStringLiteral("="), true, 1); });
    return times;
}

void Print(const char* what, const Size& size) {
    const Times times = Measure(size);
    std::printf("  %-34s %9.3f %9.3f %9.3f %9.3f %9.3f %9lld\n", what, times.Regenerate * 1e3,
                times.Keystroke * 1e3, times.Colour * 1e3, times.And * 1e3, times.Or * 1e3,
                static_cast<long long>(times.Length));
}

}  // namespace
}  // namespace zephrin::bench

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    using zephrin::bench::Print;
    std::printf("  milliseconds, medians; a frame has 16\n");
    std::printf("  %-34s %9s %9s %9s %9s %9s %9s\n", "", "all anew", "keystroke", "colours", "commit",
                "commit", "length");
    std::printf("  %-34s %9s %9s %9s %9s %9s\n", "", "", "in TOP", "", "AND", "OR");
    Print("20 tables, 400 columns, 20 rows", {20, 400, 20});
    Print("40 tables", {40, 400, 20});
    Print("800 columns", {20, 800, 20});
    Print("40 rows", {20, 400, 40});
    Print("100 rows", {20, 400, 100});
    Print("200 rows", {20, 400, 200});
    Print("100 rows, every cell filled", {20, 400, 100, 1});
    return 0;
}
