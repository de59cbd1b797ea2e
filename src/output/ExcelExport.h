#pragma once

#include "platform/excel/Application.h"
#include "runstate/ZPGGlobalDeclarations.h"

#include <functional>

namespace zephrin {

/// How a pressed Excel button goes on.
enum class ExportRoute {
    Done,      ///< the host does the export, or the showing is over
    OleDb,     ///< data sheet and pivot sheet
    AskChoice  ///< the host gave details for the older route: the user chooses data or pivot
};

/// Tells the host that the button was pressed, and says how it goes on.
ExportRoute BeginExport(ZPGGlobalDeclarations& state);

/// What an export needs from around it.
struct ExportMeans {
    /// Makes the spreadsheet that takes the rows of the given source.
    std::function<std::unique_ptr<excel::Application>(excel::RowSource&)> MakeSpreadsheet;
};

/// Sends the statement last run to a workbook: the rows with their query on one sheet, a pivot table over
/// them on the other. A failure is shown; nothing of the workbook stays then.
void ExportWithOleDb(ZPGGlobalDeclarations& state, const ExportMeans& means);

/// The route with the connection details that the host gave; `choice` is "Data" or "Pivot".
void ExportWithOdbc(ZPGGlobalDeclarations& state, const QString& choice, const ExportMeans& means);

/// The connection text of that route; empty for a dialect that has none.
QString OdbcConnectionText(const ZPGGlobalDeclarations& state);

/// `sql` in the pieces of 255 characters that the pivot wizard takes; one more than needed where it comes out
/// even. Throws ado::Error for more than 300.
QStringList CutStatement(const QString& sql);

}  // namespace zephrin
