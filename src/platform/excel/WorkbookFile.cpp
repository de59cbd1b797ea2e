#include "platform/excel/WorkbookFile.h"

#include "platform/excel/CellXml.h"
#include "platform/excel/SheetRows.h"
#include "platform/files/Disk.h"
#include "platform/files/FolderTurn.h"

#include <zephrin/ado/Error.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace zephrin::excel {

namespace {

[[noreturn]] void Fail(const QString& text) {
    throw ado::Error(ado::ErrorNumber::ProviderFailed, text, QStringLiteral("Excel export"));
}

/// Sheet names are at most 31 characters and without these.
QString SoundSheetName(const QString& name) {
    QString sound = name.left(31);
    for (const QChar c : QStringLiteral("[]:*?/\\")) sound.replace(c, u' ');
    return sound;
}

QString FreshPath(const QString& folder) {
    const QString base =
        QStringLiteral("Query Results ") + QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH.mm.ss");
    const QDir place(folder);
    QString name = base + QStringLiteral(".xlsx");
    for (int number = 2; place.exists(name); ++number)
        name = QStringLiteral("%1 (%2).xlsx").arg(base).arg(number);
    return place.filePath(name);
}

const auto workshopName = QStringLiteral(".zephrin-export-");

/// Removes what exports have left behind whose program has died.
void ClearLeftOvers(const QString& folder) {
    const QDir place(folder);
    for (const QString& name : place.entryList({workshopName + u'*'}, QDir::Dirs | QDir::Hidden)) {
        const QString path = place.filePath(name);
        if (const files::FolderTurn turn(path, files::FolderTurn::IfTaken::GiveUp); turn.IsHeld())
            QDir(path).removeRecursively();
    }
}

/// The statement's columns without its rows.
QStringList HeadsOf(RowSource& source, const QString& sql) {
    return UniqueHeads(source.Run(sql)->Fields());
}

}  // namespace

WorkbookFile::WorkbookFile(RowSource& rowSource, QString targetFolder, Opener opener)
    : source(rowSource), folder(std::move(targetFolder)), open(std::move(opener)) {}

WorkbookFile::~WorkbookFile() = default;

/// A hidden folder beside the workbooks, in which one grows. Who has its turn works there; where nobody has
/// it, the program has died, and the next export clears it away.
struct WorkbookFile::Workshop {
    explicit Workshop(const QString& folder)
        : Folder(QDir(folder).filePath(workshopName + QStringLiteral("XXXXXX"))), Turn(Folder.path()) {}

    QString Path() const { return Folder.filePath(QStringLiteral("workbook")); }

    QTemporaryDir Folder;
    files::FolderTurn Turn;
};

void WorkbookFile::BeginFile() {
    if (!QDir().mkpath(folder))
        Fail(QStringLiteral("The folder %1 can not be made.").arg(QDir::toNativeSeparators(folder)));
    ClearLeftOvers(folder);
    workshop = std::make_unique<Workshop>(folder);
    if (!workshop->Folder.isValid())
        Fail(QStringLiteral("The folder %1 can not be written to: %2")
                 .arg(QDir::toNativeSeparators(folder), workshop->Folder.errorString()));
    begin = ZipFile::Begin::Afresh;
}

void WorkbookFile::AddWorkbook() {
    Quit();
    BeginFile();
    sheets.push_back({++lastId, QStringLiteral("Sheet1"), -1, std::nullopt});
    active = lastId;
}

void WorkbookFile::SetDisplayAlerts(bool) {
    // A file asks nothing.
}

int WorkbookFile::SheetCount() const {
    return static_cast<int>(sheets.size());
}

int WorkbookFile::SheetAt(int position) const {
    return sheets.at(static_cast<size_t>(position - 1)).Id;
}

void WorkbookFile::DeleteSheet(int sheet) {
    std::erase_if(sheets, [sheet](const Sheet& each) { return each.Id == sheet; });
    if (active == sheet && !sheets.empty()) active = sheets.front().Id;
}

int WorkbookFile::AddSheet() {
    const auto place =
        std::find_if(sheets.begin(), sheets.end(), [this](const Sheet& each) { return each.Id == active; });
    active = ++lastId;
    sheets.insert(place, {active, QStringLiteral("Sheet%1").arg(active), -1, std::nullopt});
    return active;
}

int WorkbookFile::ActiveSheet() const {
    return active;
}

WorkbookFile::Sheet& WorkbookFile::Find(int id) {
    const auto found =
        std::find_if(sheets.begin(), sheets.end(), [id](const Sheet& each) { return each.Id == id; });
    if (found == sheets.end()) Fail(QStringLiteral("The workbook has no such sheet."));
    return *found;
}

void WorkbookFile::SetSheetName(int sheet, const QString& name) {
    Find(sheet).Name = SoundSheetName(name);
}

int WorkbookFile::AddQueryTable(int sheet, const QString& connection, const QString&) {
    if (!connection.startsWith(u"OLEDB;") && !connection.startsWith(u"ODBC;"))
        Fail(QStringLiteral("There is no connection text for this database."));
    connections.push_back({connection, {}});
    queries.push_back({sheet, static_cast<int>(connections.size()), {}, 0});
    Find(sheet).Query = static_cast<int>(queries.size()) - 1;
    return Find(sheet).Query;
}

void WorkbookFile::SetQuerySql(int queryTable, const QString& sql) {
    const Query& query = queries.at(static_cast<size_t>(queryTable));
    connections.at(static_cast<size_t>(query.Connection - 1)).Command = sql;
}

void WorkbookFile::Refresh(int queryTable) {
    Query& query = queries.at(static_cast<size_t>(queryTable));
    const QString& sql = connections.at(static_cast<size_t>(query.Connection - 1)).Command;
    std::shared_ptr<SheetRows> rows;
    ZipFile zip(workshop->Path(), std::exchange(begin, ZipFile::Begin::WithWhatIsThere));
    zip.AddStreamed(RowsPath(query.Sheet), [&]() -> PieceReader {
        rows = std::make_shared<SheetRows>(source, sql);
        return [rows] { return rows->NextPiece(); };
    });
    zip.Commit();
    query.Heads = rows->Heads();
    query.Rows = rows->RowCount();
    cutTexts += rows->CutTexts();
}

QString WorkbookFile::RangeOf(const Query& query, const QString& mark) const {
    const QString last = ColumnLetters(std::max(0, static_cast<int>(query.Heads.size()) - 1));
    return mark + u'A' + mark + u"1:"_s + mark + last + mark + QString::number(query.Rows + 1);
}

QString WorkbookFile::ResultRangeName(int queryTable) const {
    const Query& query = queries.at(static_cast<size_t>(queryTable));
    const auto sheet =
        std::find_if(sheets.begin(), sheets.end(), [&](const Sheet& each) { return each.Id == query.Sheet; });
    QString name = sheet == sheets.end() ? QString() : sheet->Name;
    return u"='"_s + name.replace(u'\'', QStringLiteral("''")) + u"'!"_s +
           RangeOf(query, QStringLiteral("$"));
}

int WorkbookFile::AddPivotCache(int sourceType, const QString& sourceData) {
    if (sourceType != SourceDatabase) Fail(QStringLiteral("A pivot cache is made of a range."));
    pivotSources.append(sourceData);
    return static_cast<int>(pivotSources.size()) - 1;
}

void WorkbookFile::AddPivotTable(int sheet, int pivotCache, const QString&, const QString& tableName) {
    // The range names the sheet and the cells of a query table; its heads are the pivot's fields.
    const QString wanted = u'=' + pivotSources.at(pivotCache);
    for (size_t each = 0; each < queries.size(); ++each) {
        if (ResultRangeName(static_cast<int>(each)) != wanted) continue;
        const Query& query = queries[each];
        Find(sheet).Pivot =
            PivotPart{tableName, Find(query.Sheet).Name, RangeOf(query, {}), 0, query.Heads, false};
        return;
    }
    Fail(QStringLiteral("The pivot table has no source."));
}

void WorkbookFile::PivotTableWizard(int sourceType, const QStringList& sourceData, const QString& tableName,
                                    bool saveData, bool, const QStringList& connection) {
    const QString text = connection.join(QString());
    if (sourceType != SourceExternal || text.isEmpty())
        Fail(QStringLiteral("There is no connection text for this database."));
    const QString sql = sourceData.join(QString());
    connections.push_back({text, sql});
    const int number = static_cast<int>(connections.size());
    Find(active).Pivot = PivotPart{tableName, {}, {}, number, HeadsOf(source, sql), saveData};
}

WorkbookParts WorkbookFile::Describe() const {
    WorkbookParts parts;
    parts.Connections = connections;
    for (const Sheet& sheet : sheets) {
        if (sheet.Id == active) parts.ActiveSheet = static_cast<int>(parts.Sheets.size());
        SheetPart part{sheet.Name, sheet.Id, std::nullopt, sheet.Pivot};
        if (sheet.Query >= 0) {
            const Query& query = queries.at(static_cast<size_t>(sheet.Query));
            part.Query = QueryTablePart{query.Connection, query.Heads, RangeOf(query, QStringLiteral("$"))};
        }
        parts.Sheets.push_back(std::move(part));
    }
    return parts;
}

void WorkbookFile::SetVisible(bool visible) {
    if (!visible || !workshop) return;
    {
        ZipFile zip(workshop->Path(), std::exchange(begin, ZipFile::Begin::WithWhatIsThere));
        for (const Part& part : WriteParts(Describe())) zip.Add(part.Path, part.Content);
        zip.Commit();
    }
    const QString path = FreshPath(folder);
    try {
        files::SyncFile(workshop->Path());
        QFile::setPermissions(workshop->Path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        files::RenameNew(workshop->Path(), path);
        files::SyncFolder(folder);
    } catch (const files::Failure& failure) {
        if (!QFileInfo::exists(workshop->Path())) QFile::remove(path);
        Fail(QStringLiteral("%1 can not be written: %2").arg(QDir::toNativeSeparators(path), failure.Reason));
    }
    workshop.reset();
    if (open) open(path, cutTexts);
}

void WorkbookFile::Quit() {
    workshop.reset();
    sheets.clear();
    queries.clear();
    connections.clear();
    pivotSources.clear();
}

}  // namespace zephrin::excel
