#include "output/ExcelExport.h"

#include "runstate/clsBridge.h"

#include <zephrin/ado/Error.h>

#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace zephrin {

namespace {

constexpr int PieceLength = 255;
constexpr int MostPieces = 300;

/// Runs the statement on the connection of the run, and shows how far the rows have come.
class LiveRows final : public excel::RowSource {
 public:
    explicit LiveRows(ZPGGlobalDeclarations& runState) : state(runState), showing(state.Showing) {}

    std::unique_ptr<ado::Cursor> Run(const QString& sql) override {
        return state.SharedConnection().Stream(sql);
    }

    bool Proceed(qint64 rowsSoFar) override {
        return (!work || work->GoOn(rowsSoFar)) && state.Showing == showing;
    }

    /// Writes a status text; progress stands behind it.
    void Tell(const QString& text) {
        SetStatusText(state, text);
        if (work) work->Tell(text);
        ShowFormNow(state);
    }

    /// What lies between is the work that can be watched and stopped. How many rows there are is known as
    /// long as the last run brought all of them.
    void Begin() {
        work.emplace(state, state.Form->StatusText);
        const ado::RecordsetPtr& shown = state.rsQueryResult;
        if (shown && shown->IsOpen() && !shown->Truncated()) work->Expect(shown->RecordCount());
    }
    void End() { work.reset(); }

    bool IsOver() const { return state.Showing != showing; }

 private:
    ZPGGlobalDeclarations& state;
    int showing;
    std::optional<Work> work;
};

/// The statement runs again for the export, which is one time too many for one that changes rows.
void RequireColumns(const ZPGGlobalDeclarations& state) {
    if (!state.rsQueryResult || state.rsQueryResult->FieldCount() == 0)
        throw ado::Error(ado::ErrorNumber::ProviderFailed,
                         QStringLiteral("The statement has no result that could be exported."),
                         QStringLiteral("Excel export"));
}

/// One export from the pointer's change to its change back, whichever way it ends.
class Export {
 public:
    Export(ZPGGlobalDeclarations& runState, const ExportMeans& exportMeans)
        : state(runState), means(exportMeans), rows(state) {}

    /// Runs `fill` on an empty workbook of one sheet, then shows the workbook. `failure` makes the text of an
    /// error box.
    template <class Fill, class Failure>
    void Run(Fill fill, Failure failure) {
        state.Form->Pointer = MousePointer::Hourglass;
        rows.Tell(QStringLiteral("Connecting to Microsoft Excel ..."));
        std::unique_ptr<excel::Application> spreadsheet;
        try {
            RequireColumns(state);
            spreadsheet = means.MakeSpreadsheet(rows);
            Prepare(*spreadsheet);
            rows.Begin();
            fill(*spreadsheet, rows);
            rows.End();
            if (rows.IsOver()) throw ado::Cancelled();
            Leave();
            spreadsheet->SetDisplayAlerts(true);
            spreadsheet->SetVisible(true);
        } catch (const ado::Error& error) {
            rows.End();
            if (spreadsheet) spreadsheet->Quit();
            if (rows.IsOver()) return;
            Leave();
            if (error.Number() != ado::ErrorNumber::OperationCancelled)
                state.UserPrompts->MsgBox(failure(error), BoxStyle::Critical, state.Options.gRunTimeCaption);
        }
    }

 private:
    void Prepare(excel::Application& spreadsheet) {
        spreadsheet.AddWorkbook();
        spreadsheet.SetDisplayAlerts(false);
        while (spreadsheet.SheetCount() != 1) spreadsheet.DeleteSheet(spreadsheet.SheetAt(1));
        spreadsheet.SetSheetName(spreadsheet.ActiveSheet(), QStringLiteral("Query Results"));
    }

    void Leave() {
        state.Form->Pointer = MousePointer::Default;
        rows.Tell(QStringLiteral("Ready ..."));
    }

    ZPGGlobalDeclarations& state;
    const ExportMeans& means;
    LiveRows rows;
};

/// A query table at the corner of the active sheet, with its rows fetched.
int FillQueryTable(excel::Application& spreadsheet, const QString& connection, const QString& sql) {
    const int table = spreadsheet.AddQueryTable(spreadsheet.ActiveSheet(), connection, QStringLiteral("A1"));
    spreadsheet.SetQuerySql(table, sql);
    spreadsheet.Refresh(table);
    return table;
}

}  // namespace

ExportRoute BeginExport(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    state.Bridge().RaiseExportToExcel();
    if (state.Showing != showing || state.Options.gDisableDefaultExcelExport) return ExportRoute::Done;
    return state.gExcel97.Given ? ExportRoute::AskChoice : ExportRoute::OleDb;
}

void ExportWithOleDb(ZPGGlobalDeclarations& state, const ExportMeans& means) {
    const auto fill = [&](excel::Application& spreadsheet, LiveRows& rows) {
        const QString connection = u"OLEDB;"_s + state.SharedConnection().ConnectionString();
        rows.Tell(QStringLiteral("Importing Data  ..."));
        const int table = FillQueryTable(spreadsheet, connection, state.CurrentSQL);
        rows.Tell(QStringLiteral("Building Pivot Table ..."));
        const int pivotSheet = spreadsheet.AddSheet();
        spreadsheet.SetSheetName(pivotSheet, QStringLiteral("Pivot Report"));
        const QString range = spreadsheet.ResultRangeName(table).mid(1);
        const int cache = spreadsheet.AddPivotCache(excel::SourceDatabase, range);
        spreadsheet.AddPivotTable(pivotSheet, cache, QStringLiteral("A1"),
                                  QStringLiteral("QueryBuilder Data"));
    };
    const auto failure = [&](const ado::Error& error) {
        // The fixed lines ask the user to quote the error, so it has to stand there.
        QStringList lines;
        for (const int id : {186, 187, 188, 189}) lines << ResString(state, id);
        return (lines << error.Description()).join(u"\r\n");
    };
    Export(state, means).Run(fill, failure);
}

void ExportWithOdbc(ZPGGlobalDeclarations& state, const QString& choice, const ExportMeans& means) {
    const auto fill = [&](excel::Application& spreadsheet, LiveRows& rows) {
        const QString connection = OdbcConnectionText(state);
        rows.Tell(QStringLiteral("Importing Data  ..."));
        if (choice == u"Data") {
            rows.Tell(QStringLiteral("Creating Data Sheet..."));
            spreadsheet.SetSheetName(spreadsheet.ActiveSheet(), QStringLiteral("Query Results"));
            FillQueryTable(spreadsheet, connection, state.CurrentSQL);
        } else if (choice == u"Pivot") {
            rows.Tell(QStringLiteral("Creating Pivot Table..."));
            spreadsheet.SetSheetName(spreadsheet.ActiveSheet(), QStringLiteral("Pivot Table"));
            spreadsheet.PivotTableWizard(excel::SourceExternal, CutStatement(state.CurrentSQL),
                                         QStringLiteral("Pivot Results"), false, false, {connection});
        }
    };
    const auto failure = [&](const ado::Error& error) {
        return ResString(state, 190) + u' ' + error.Description() + u"\r\n"_s + ResString(state, 191);
    };
    Export(state, means).Run(fill, failure);
}

QString OdbcConnectionText(const ZPGGlobalDeclarations& state) {
    const Excel97Details& given = state.gExcel97;
    if (state.gDatabaseType == u"SQL Server" || state.gDatabaseType == u"Oracle")
        return u"ODBC;DRIVER="_s + given.Driver + u";SERVER="_s + given.Server + u";Trusted_Connection="_s +
               given.Trusted + u";UID="_s + given.UserId + u";PWD="_s + given.Password + u";DATABASE="_s +
               given.Database;
    if (state.gDatabaseType == u"MS Access" || state.gDatabaseType == u"MS Excel")
        return u"ODBC;DBQ="_s + given.DBQ + u";DRIVER="_s + given.Driver + u";UID="_s + given.UserId +
               u";PWD="_s + given.Password + u";DATABASE="_s + given.Database;
    return {};
}

QStringList CutStatement(const QString& sql) {
    // A length that comes out even, or past the middle of a piece, gets an empty piece at the end.
    const auto pieces = static_cast<int>(std::lround(static_cast<double>(sql.size()) / PieceLength + 1));
    if (pieces > MostPieces)
        throw ado::Error(
            9,
            QStringLiteral(
                "The statement is too long for a pivot table (%1 pieces of %2 characters, %3 at most).")
                .arg(pieces)
                .arg(PieceLength)
                .arg(MostPieces),
            QStringLiteral("Excel export"));
    QStringList cut;
    for (int piece = 0; piece < pieces; ++piece) cut << sql.mid(piece * PieceLength, PieceLength);
    return cut;
}

}  // namespace zephrin
