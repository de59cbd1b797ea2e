#pragma once

#include "platform/ado/Provider.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace zephrin::excel {

/// Where the component gets the rows of a statement from, as often as it asks.
class RowSource {
 public:
    virtual ~RowSource() = default;
    /// Runs `sql` and hands out its rows; throws ado::Error.
    virtual std::unique_ptr<ado::Cursor> Run(const QString& sql) = 0;
    /// Told now and then while rows are written; false stops the export, which then fails with
    /// ado::Cancelled().
    virtual bool Proceed(qint64 rowsSoFar) = 0;
};

/// Sources of a pivot cache, with the numbers that the spreadsheet gives them.
inline constexpr int SourceDatabase = 1;
inline constexpr int SourceExternal = 2;

/// What an export needs of a spreadsheet program: one workbook in the making, told what to hold step by step.
///
/// Sheets, query tables and pivot caches are named by the numbers that the calls return; a sheet keeps its
/// number when others are added or deleted. Every call may throw ado::Error with a text for the user.
class Application {
 public:
    virtual ~Application() = default;

    virtual void AddWorkbook() = 0;
    virtual void SetDisplayAlerts(bool show) = 0;
    virtual int SheetCount() const = 0;
    /// The sheet at `position`, from 1.
    virtual int SheetAt(int position) const = 0;
    virtual void DeleteSheet(int sheet) = 0;
    /// A new sheet in front of the active one; it becomes the active one.
    virtual int AddSheet() = 0;
    virtual int ActiveSheet() const = 0;
    virtual void SetSheetName(int sheet, const QString& name) = 0;

    /// `connection` begins with "OLEDB;" or "ODBC;", `cell` is the upper left corner.
    virtual int AddQueryTable(int sheet, const QString& connection, const QString& cell) = 0;
    virtual void SetQuerySql(int queryTable, const QString& sql) = 0;
    /// Fetches the rows.
    virtual void Refresh(int queryTable) = 0;
    /// The range that the last refresh filled, as a formula: "='Query Results'!$A$1:$C$9".
    virtual QString ResultRangeName(int queryTable) const = 0;

    virtual int AddPivotCache(int sourceType, const QString& sourceData) = 0;
    virtual void AddPivotTable(int sheet, int pivotCache, const QString& cell, const QString& tableName) = 0;
    /// A pivot table on the active sheet straight from a statement, which comes in pieces.
    virtual void PivotTableWizard(int sourceType, const QStringList& sourceData, const QString& tableName,
                                  bool saveData, bool backgroundQuery, const QStringList& connection) = 0;

    /// Hands the finished workbook to the user.
    virtual void SetVisible(bool visible) = 0;
    /// Gives up what is in the making; nothing of it stays.
    virtual void Quit() = 0;
};

}  // namespace zephrin::excel
