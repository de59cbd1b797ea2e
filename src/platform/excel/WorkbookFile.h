#pragma once

#include "platform/excel/Application.h"
#include "platform/excel/Parts.h"
#include "platform/excel/ZipFile.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace zephrin::excel {

/// The spreadsheet program's place taken by a file: what it is told to hold becomes an .xlsx package, which
/// is written to `folder` under a fresh name and handed to `open` when it is made visible.
///
/// Rows go straight from the running statement into the package; memory does not grow with them. Until the
/// workbook is made visible nothing but a temporary file stands in the folder, and it goes with this object.
class WorkbookFile final : public Application {
 public:
    /// Gets the finished file, and the number of texts that were longer than a cell holds and lost their end.
    using Opener = std::function<void(const QString& path, qint64 cutTexts)>;
    WorkbookFile(RowSource& source, QString folder, Opener open);
    ~WorkbookFile() override;

    void AddWorkbook() override;
    void SetDisplayAlerts(bool show) override;
    int SheetCount() const override;
    int SheetAt(int position) const override;
    void DeleteSheet(int sheet) override;
    int AddSheet() override;
    int ActiveSheet() const override;
    void SetSheetName(int sheet, const QString& name) override;
    int AddQueryTable(int sheet, const QString& connection, const QString& cell) override;
    void SetQuerySql(int queryTable, const QString& sql) override;
    void Refresh(int queryTable) override;
    QString ResultRangeName(int queryTable) const override;
    int AddPivotCache(int sourceType, const QString& sourceData) override;
    void AddPivotTable(int sheet, int pivotCache, const QString& cell, const QString& tableName) override;
    void PivotTableWizard(int sourceType, const QStringList& sourceData, const QString& tableName,
                          bool saveData, bool backgroundQuery, const QStringList& connection) override;
    void SetVisible(bool visible) override;
    void Quit() override;

 private:
    struct Sheet {
        int Id = 0;
        QString Name;
        int Query = -1;
        std::optional<PivotPart> Pivot;
    };
    struct Query {
        int Sheet = 0;
        int Connection = 0;
        QStringList Heads;
        qint64 Rows = 0;
    };

    Sheet& Find(int id);
    QString RangeOf(const Query& query, const QString& separator) const;
    WorkbookParts Describe() const;
    void BeginFile();

    RowSource& source;
    QString folder;
    Opener open;
    struct Workshop;
    std::unique_ptr<Workshop> workshop;
    /// How the temporary archive is opened next: it is begun once and added to from then on.
    ZipFile::Begin begin = ZipFile::Begin::Afresh;
    std::vector<Sheet> sheets;
    std::vector<Query> queries;
    std::vector<ConnectionPart> connections;
    QStringList pivotSources;
    int active = 0;
    int lastId = 0;
    qint64 cutTexts = 0;
};

}  // namespace zephrin::excel
