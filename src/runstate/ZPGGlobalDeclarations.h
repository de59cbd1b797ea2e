#pragma once

#include "platform/ado/Connection.h"
#include "runstate/Collection.h"
#include "runstate/FormState.h"
#include "runstate/Work.h"

#include <zephrin/Prompts.h>
#include <zephrin/ado/Recordset.h>

#include <QString>

#include <functional>
#include <memory>

namespace zephrin {

class clsBridge;

/// What the control copies from its properties when it shows the wizard. From then on the wizard reads only
/// these.
struct RunOptions {
    bool gAllowTableSelection = true;
    bool gAllowJoinCreation = true;
    bool gAllowFieldSelection = true;
    bool gAllowShowResults = true;
    bool gAllowValueSearch = true;
    bool gAllowCreateRecordset = true;
    bool gAllowGroupBy = true;
    bool gAllowOrderBy = true;
    bool gAllowCalcFields = true;
    bool gAllowAndOrOverride = false;
    bool gAllowExcelExport = true;
    bool gAllowSaveDelete = true;
    bool gAllowSQLReset = true;
    bool gAllowCreateView = false;
    bool gDisableDefaultExcelExport = false;
    bool gModalForm = false;
    QString gDateFormat = QStringLiteral("mm/dd/yyyy h:mm:ss am/pm");
    QString gRunTimeCaption = QStringLiteral("Brimlow Zephrin V1.2");
    /// OLE colours: 0x00BBGGRR, or a system colour with the top bit set.
    quint32 gLabelBackColor = 0x808080;
    quint32 gLabelForeColor = 0x80000005;
};

/// Connection data of the Excel 97 route.
struct Excel97Details {
    QString Driver, Database, Server, DBQ, UserId, Password;
    QString Trusted;  ///< "YES" or "NO"
    bool Given = false;
};

/// Everything that one wizard run shares: the connection, the dialect, the copies of the host's options, the
/// clause texts and the working recordsets that are the query under construction.
///
/// A control makes and owns one and hands it by reference to whoever works on it. A recordset pointer that is
/// null, or a recordset that is closed, counts as no columns and no rows wherever it is read.
struct ZPGGlobalDeclarations {
    ZPGGlobalDeclarations(ado::ProviderSet providers, std::shared_ptr<Prompts> prompts);
    ~ZPGGlobalDeclarations();
    ZPGGlobalDeclarations(const ZPGGlobalDeclarations&) = delete;
    ZPGGlobalDeclarations& operator=(const ZPGGlobalDeclarations&) = delete;

    // --- Connection and dialect
    // --------------------------------------------------------------------------------
    ado::ProviderSet Providers;
    std::unique_ptr<ado::Connection> adoConnection;  ///< created on first use, see SharedConnection
    ado::RecordsetPtr rsSchemaTables;
    QString gConnectionString, gUserId, gPassword;
    int gConnectionTimeout = 0;
    int gCommandTimeout = 0;
    QString gDatabaseType;  ///< "SQL Server", "MS Access", "MS Excel", "Oracle" or empty
    QString gDelimOpen, gDelimClose;
    qint64 gMaxRecords = 0;
    bool gOpenQuery = false;
    QString gQueryName;

    // --- Options and look
    // --------------------------------------------------------------------------------------
    RunOptions Options;
    Excel97Details gExcel97;
    /// Added to every id of a string resource; the single switch of the language.
    int gResourceOffset = 0;
    std::shared_ptr<Prompts> UserPrompts;

    // --- Tables and fields
    // -------------------------------------------------------------------------------------
    /// What the control has on offer. The wizard works on its own colTables and gets the offer back after
    /// unload.
    Collection OfferedTables;
    Collection colTables;
    Collection colFields;
    Collection colSelFields;

    // --- The statement
    // -----------------------------------------------------------------------------------------
    QString SelectClause, FromClause, WhereClause, GroupByClause, HavingClause, OrderByClause;
    QString CurrentSQL;
    /// In place of "%" in patterns, and of the dialect's delimiter of dates. Nothing here sets them: they are
    /// there for who embeds the generator.
    QString WildcardOverride, DateDelimiterOverride;

    // --- Working recordsets
    // ------------------------------------------------------------------------------------
    ado::RecordsetPtr rsWhere, rsHaving, rsGroupBy, rsOrderBy, rsCalcFields, rsAlias;
    ado::RecordsetPtr rsJoins, rsJoinTable, rsJoinTablesUsed, rsJoinFieldsUsed;
    ado::RecordsetPtr rsWhereClone;
    ado::RecordsetPtr rsQueryResult, rsSavedQuery, rsHostValues;

    // --- Exchange with dialogs
    // ---------------------------------------------------------------------------------
    QString CurrentCellText;
    bool CriteriaChanged = false;
    QString EditCalcField, EditCalcAlias, EditCalcNew;
    int EditCalcShow = 0;
    bool CalcFieldCreated = false;
    QString EditMode;  ///< "Group", "Order" or "Calc"
    QString ViewName;

    // --- Life of the wizard
    // ------------------------------------------------------------------------------------
    QString gLoadError;
    bool gClosingSilently = false;
    std::unique_ptr<clsBridge> oBridge;  ///< created on first use

    /// The form of the showing in hand; never null (an unused one stands between two showings, and unload
    /// puts a fresh one there). Widgets keep a pointer of their own, so that what they show lives as long as
    /// they do.
    std::shared_ptr<FormState> Form;
    /// Goes up at every load and unload, and when another query takes the place of the one in hand. Whoever let the user
    /// or the host in (a box, an event) compares it with what it was before, and does nothing more on a showing that is
    /// over.
    int Showing = 0;
    /// Makes the form that is open show this state at once; empty while there is none. Whoever makes the user
    /// wait in the middle of an operation (a statement that runs, an export) calls it through ShowFormNow.
    std::function<void()> ShowForm;
    /// Makes the form that is open show the work in hand and nothing else; empty while there is none.
    std::function<void()> ShowWork;
    WorkInHand WorkNow;
    /// What keeps the windows alive while a work goes on; null where there are none.
    std::shared_ptr<WorkSurroundings> Surroundings;
    /// Opens the query file that gQueryName names, or asks for one. False when the wizard must close: the
    /// user was told and gLoadError is set. QueryPath is not empty after a load. Empty where saved queries
    /// are not at hand.
    std::function<bool(ZPGGlobalDeclarations&)> OpenSavedQuery;

    /// The shared connection, made when there is none.
    ado::Connection& SharedConnection();
    /// The bridge to the control, made when there is none.
    clsBridge& Bridge();
};

/// Makes rsHostValues: 24 text columns "0" to "23".
void CreateHostValues(ZPGGlobalDeclarations& state);

/// Writes `text` into the first panel of the status bar. The state keeps it, a form that exists shows it.
void SetStatusText(ZPGGlobalDeclarations& state, const QString& text);

/// The working recordsets of form load, all open and empty. rsAlias is kept, without its rows, once it has
/// columns.
void CreateWorkingRecordsets(ZPGGlobalDeclarations& state);

/// Closes and releases what a showing held, in its order, and clears the clause texts.
void ReleaseWorkingRecordsets(ZPGGlobalDeclarations& state);

/// Text of a string resource in the language of the run: `id` + gResourceOffset.
QString ResString(const ZPGGlobalDeclarations& state, int id);

/// Shows the state on the form that is open, if there is one: pointer, status text, tab and all.
inline void ShowFormNow(const ZPGGlobalDeclarations& state) {
    if (state.ShowForm) state.ShowForm();
}

/// True for a recordset that is there, open and has at least one row.
bool HasRows(const ado::RecordsetPtr& recordset);

}  // namespace zephrin
