#include "output/ExcelExport.h"
#include "output/FakeDatabase.h"
#include "runstate/clsBridge.h"
#include "support/ScriptedPrompts.h"

#include <gtest/gtest.h>

namespace zephrin {

namespace {

/// Writes down what it is told; starts with three sheets, as older programs did.
class RecordingSpreadsheet : public excel::Application {
 public:
    RecordingSpreadsheet(excel::RowSource& rowSource, QStringList& log) : source(rowSource), said(log) {}

    void AddWorkbook() override { said << QStringLiteral("Workbooks.Add"); }
    void SetDisplayAlerts(bool show) override { said << QStringLiteral("DisplayAlerts %1").arg(show); }
    int SheetCount() const override { return static_cast<int>(sheets.size()); }
    int SheetAt(int position) const override { return sheets.at(position - 1); }
    void DeleteSheet(int sheet) override { sheets.removeAll(sheet); }
    int AddSheet() override {
        sheets.prepend(9);
        return active = 9;
    }
    int ActiveSheet() const override { return active == 9 ? active : sheets.first(); }
    void SetSheetName(int sheet, const QString& name) override {
        said << QStringLiteral("%1 Name %2").arg(sheet).arg(name);
    }
    int AddQueryTable(int sheet, const QString& connection, const QString& cell) override {
        said << QStringLiteral("%1 QueryTable %2 %3").arg(sheet).arg(connection, cell);
        return 5;
    }
    void SetQuerySql(int, const QString& text) override { sql = text; }
    void Refresh(int) override {
        source.Run(sql);
        said << QStringLiteral("Refresh ") + sql;
        if (!source.Proceed(4096)) throw ado::Cancelled();
    }
    QString ResultRangeName(int) const override { return QStringLiteral("='Query Results'!$A$1:$A$2"); }
    int AddPivotCache(int type, const QString& data) override {
        said << QStringLiteral("PivotCache %1 %2").arg(type).arg(data);
        return 7;
    }
    void AddPivotTable(int sheet, int, const QString& cell, const QString& name) override {
        said << QStringLiteral("%1 PivotTable %2 %3").arg(sheet).arg(cell, name);
    }
    void PivotTableWizard(int type, const QStringList& data, const QString& name, bool save, bool background,
                          const QStringList& connection) override {
        said << QStringLiteral("Wizard %1 %2 %3 %4 %5 %6")
                    .arg(type)
                    .arg(data.join(u'|'), name)
                    .arg(save)
                    .arg(background)
                    .arg(connection.join(u'|'));
    }
    void SetVisible(bool visible) override { said << QStringLiteral("Visible %1").arg(visible); }
    void Quit() override { said << QStringLiteral("Quit"); }

 private:
    excel::RowSource& source;
    QStringList& said;
    QList<int> sheets{1, 2, 3};
    int active = 0;
    QString sql;
};

struct ExportRun {
    std::shared_ptr<test::FakeDatabase> Database = std::make_shared<test::FakeDatabase>();
    std::shared_ptr<test::ScriptedPrompts> Prompts = std::make_shared<test::ScriptedPrompts>();
    ZPGGlobalDeclarations State{{std::make_shared<test::FakeProvider>(Database)}, Prompts};
    QStringList Said, Status;
    ExportMeans Means{
        [this](excel::RowSource& rows) { return std::make_unique<RecordingSpreadsheet>(rows, Said); }};

    ExportRun() {
        State.gDatabaseType = QStringLiteral("SQL Server");
        State.Options.gRunTimeCaption = QStringLiteral("Caption");
        State.CurrentSQL = QStringLiteral("SELECT 1");
        State.rsQueryResult = std::make_shared<ado::Recordset>();
        State.rsQueryResult->Append(QStringLiteral("One"), ado::DataType::Integer);
        State.SharedConnection().Open(QStringLiteral("Provider=Fake;Data Source=x"));
        State.ShowForm = [this] {
            if (Status.isEmpty() || Status.last() != State.Form->StatusText) Status << State.Form->StatusText;
        };
    }
};

}  // namespace

TEST(ExcelExport, TheHostHearsFirstAndMayDoItAlone) {
    for (const bool disabled : {false, true}) {
        for (const bool given : {false, true}) {
            ExportRun run;
            int heard = 0;
            QObject::connect(&run.State.Bridge(), &clsBridge::ExportToExcel, [&] { ++heard; });
            run.State.Options.gDisableDefaultExcelExport = disabled;
            run.State.gExcel97.Given = given;
            EXPECT_EQ(BeginExport(run.State), disabled ? ExportRoute::Done
                                              : given  ? ExportRoute::AskChoice
                                                       : ExportRoute::OleDb);
            EXPECT_EQ(heard, 1);
        }
    }
}

TEST(ExcelExport, BothSheetsAreMadeStepByStep) {
    ExportRun run;
    ExportWithOleDb(run.State, run.Means);
    EXPECT_EQ(
        run.Said.join(u'\n'),
        QStringLiteral(
            "Workbooks.Add\nDisplayAlerts 0\n3 Name Query Results\n"
            "3 QueryTable OLEDB;Provider=Fake;Data Source=x A1\nRefresh SELECT 1\n"
            "9 Name Pivot Report\nPivotCache 1 'Query Results'!$A$1:$A$2\n9 PivotTable A1 QueryBuilder Data\n"
            "DisplayAlerts 1\nVisible 1"));
    EXPECT_EQ(run.Status,
              QStringList({QStringLiteral("Connecting to Microsoft Excel ..."),
                           QStringLiteral("Importing Data  ..."), QStringLiteral("Building Pivot Table ..."),
                           QStringLiteral("Ready ...")}));
    EXPECT_EQ(run.State.Form->Pointer, MousePointer::Default);
    EXPECT_TRUE(run.Prompts->Boxes.isEmpty());
}

TEST(ExcelExport, AFailureIsShownAndNothingStays) {
    ExportRun run;
    run.Database->Refusals[QStringLiteral("SELECT")] = QStringLiteral("Invalid object name 'x'.");
    ExportWithOleDb(run.State, run.Means);
    EXPECT_EQ(run.Said.last(), QStringLiteral("Quit"));
    ASSERT_EQ(run.Prompts->Boxes.size(), 1);
    EXPECT_EQ(
        run.Prompts->Boxes[0].Text,
        QStringLiteral("Export error: This function requires Excel 2000 or above,\r\nUnable to complete this "
                       "operation.\r\n"
                       "If you are running Excel 97 a solution exists by calling method "
                       "'ZPBExcel97ConnectionDetails'.\r\n"
                       "Please contact the person responsible for this application and quote this error.\r\n"
                       "Invalid object name 'x'."));
    EXPECT_EQ(run.Prompts->Boxes[0].Style, 16);
    EXPECT_EQ(run.Prompts->Boxes[0].Title, QStringLiteral("Caption"));
    ExportWithOdbc(run.State, QStringLiteral("Data"), run.Means);
    EXPECT_EQ(run.Prompts->Boxes.last().Text,
              QStringLiteral("Export Error: Invalid object name 'x'.\r\nUnable to complete Excel export."));
    EXPECT_EQ(run.State.Form->StatusText, QStringLiteral("Ready ..."));
    EXPECT_EQ(run.State.Form->Pointer, MousePointer::Default);
}

TEST(ExcelExport, AStatementWithoutResultIsNotRunAgain) {
    for (const bool older : {false, true}) {
        ExportRun run;
        run.State.CurrentSQL = QStringLiteral("UPDATE [T] SET [A] = [A] + 1");
        run.State.rsQueryResult = std::make_shared<ado::Recordset>();
        older ? ExportWithOdbc(run.State, QStringLiteral("Data"), run.Means)
              : ExportWithOleDb(run.State, run.Means);
        EXPECT_TRUE(run.Database->Statements.isEmpty());
        ASSERT_EQ(run.Prompts->Boxes.size(), 1);
        EXPECT_TRUE(run.Prompts->Boxes[0].Text.contains(QStringLiteral("no result that could be exported")));
        EXPECT_EQ(run.State.Form->Pointer, MousePointer::Default);
    }
}

TEST(ExcelExport, StoppingIsNoError) {
    ExportRun run;
    run.State.ShowForm = [&run] {
        if (run.State.Form->StatusText.startsWith(u"Importing")) StopWork(run.State);
    };
    ExportWithOleDb(run.State, run.Means);
    EXPECT_EQ(run.Said.last(), QStringLiteral("Quit"));
    EXPECT_TRUE(run.Prompts->Boxes.isEmpty());
    EXPECT_EQ(run.State.Form->StatusText, QStringLiteral("Ready ..."));
}

TEST(ExcelExport, TheOlderRouteHasConnectionTextsOfItsOwn) {
    ExportRun run;
    run.State.gExcel97 = {
        QStringLiteral("Drv"), QStringLiteral("Db"), QStringLiteral("Srv"), QStringLiteral("Dbq"),
        QStringLiteral("U"),   QStringLiteral("P"),  QStringLiteral("YES"), true};
    EXPECT_EQ(OdbcConnectionText(run.State),
              QStringLiteral("ODBC;DRIVER=Drv;SERVER=Srv;Trusted_Connection=YES;UID=U;PWD=P;DATABASE=Db"));
    ExportWithOdbc(run.State, QStringLiteral("Pivot"), run.Means);
    EXPECT_TRUE(run.Said.contains(QStringLiteral("3 Name Pivot Table")));
    EXPECT_TRUE(
        run.Said.contains(QStringLiteral("Wizard 2 SELECT 1 Pivot Results 0 0 ODBC;DRIVER=Drv;SERVER=Srv;"
                                         "Trusted_Connection=YES;UID=U;PWD=P;DATABASE=Db")));
    run.State.gDatabaseType = QStringLiteral("MS Excel");
    EXPECT_EQ(OdbcConnectionText(run.State),
              QStringLiteral("ODBC;DBQ=Dbq;DRIVER=Drv;UID=U;PWD=P;DATABASE=Db"));
    run.State.gDatabaseType = QStringLiteral("other");
    EXPECT_EQ(OdbcConnectionText(run.State), QString());
}

TEST(ExcelExport, StatementsAreCutInPieces) {
    const struct {
        int Length;
        int Pieces;
        int Last;
    } rows[] = {{0, 1, 0},   {100, 1, 100}, {255, 2, 0},     {256, 2, 1},
                {400, 3, 0}, {510, 3, 0},   {76'245, 300, 0}};
    for (const auto& row : rows) {
        const QString sql(row.Length, u'x');
        const QStringList pieces = CutStatement(sql);
        EXPECT_EQ(pieces.size(), row.Pieces) << row.Length;
        EXPECT_EQ(pieces.last().size(), row.Last) << row.Length;
        EXPECT_EQ(pieces.join(QString()), sql);
    }
    EXPECT_THROW(CutStatement(QString(76'500, u'x')), ado::Error);
}

}  // namespace zephrin
