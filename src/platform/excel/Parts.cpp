#include "platform/excel/Parts.h"

#include "platform/excel/CellXml.h"

namespace zephrin::excel {

namespace {

const QByteArray Declaration =
    QByteArrayLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n");
const QByteArray Main = QByteArrayLiteral("http://schemas.openxmlformats.org/spreadsheetml/2006/main");
const QByteArray Office =
    QByteArrayLiteral("http://schemas.openxmlformats.org/officeDocument/2006/relationships");

QByteArray Number(qsizetype number) {
    return QByteArray::number(number);
}

/// A relationships part: its entries get rId1, rId2, ... in order.
class Relations {
 public:
    /// Returns the id of the new entry.
    QByteArray Add(const QByteArray& type, const QByteArray& target) {
        const QByteArray id = "rId" + Number(++count);
        entries += "<Relationship Id=\"" + id + "\" Type=\"" + Office + "/" + type + "\" Target=\"" + target +
                   "\"/>";
        return id;
    }
    bool IsEmpty() const { return count == 0; }
    QByteArray Xml() const {
        return Declaration +
               "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
               entries + "</Relationships>";
    }

 private:
    QByteArray entries;
    int count = 0;
};

/// The parts as they come, with the content type of each.
class Package {
 public:
    void Add(const QByteArray& path, const QByteArray& content, const QByteArray& type) {
        parts.push_back({path, content});
        Declare(path, type);
    }
    /// For a part that somebody else writes.
    void Declare(const QByteArray& path, const QByteArray& type) {
        overrides += "<Override PartName=\"/" + path +
                     "\" ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml." + type +
                     "+xml\"/>";
    }
    void AddRelations(const QByteArray& path, const Relations& relations) {
        if (!relations.IsEmpty()) parts.push_back({path, relations.Xml()});
    }
    std::vector<Part> Finish() {
        parts.insert(parts.begin(),
                     {"[Content_Types].xml",
                      Declaration +
                          "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
                          "<Default Extension=\"rels\" "
                          "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                          "<Default Extension=\"xml\" ContentType=\"application/xml\"/>" +
                          overrides + "</Types>"});
        return std::move(parts);
    }

 private:
    std::vector<Part> parts;
    QByteArray overrides;
};

QByteArray Styles() {
    // The order of the cell formats is that of CellStyle.
    return Declaration + "<styleSheet xmlns=\"" + Main +
           "\"><numFmts count=\"2\"><numFmt numFmtId=\"164\" formatCode=\"yyyy\\-mm\\-dd\"/>"
           "<numFmt numFmtId=\"165\" formatCode=\"yyyy\\-mm\\-dd\\ hh:mm:ss\"/></numFmts>"
           "<fonts count=\"2\"><font><sz val=\"11\"/><name val=\"Calibri\"/><family val=\"2\"/></font>"
           "<font><b/><sz val=\"11\"/><name val=\"Calibri\"/><family val=\"2\"/></font></fonts>"
           "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
           "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
           "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
           "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" "
           "borderId=\"0\"/></cellStyleXfs>"
           "<cellXfs count=\"6\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>"
           "<xf numFmtId=\"0\" fontId=\"1\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyFont=\"1\"/>"
           "<xf numFmtId=\"164\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
           "applyNumberFormat=\"1\"/>"
           "<xf numFmtId=\"165\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
           "applyNumberFormat=\"1\"/>"
           "<xf numFmtId=\"21\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\"/>"
           "<xf numFmtId=\"4\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
           "applyNumberFormat=\"1\"/></cellXfs>"
           "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" "
           "builtinId=\"0\"/></cellStyles></styleSheet>";
}

/// Line breaks of a statement survive as character references only.
QByteArray Attribute(const QString& text) {
    QByteArray out = Escaped(text);
    return out.replace('\n', "&#10;").replace('\t', "&#9;");
}

QByteArray Connections(const std::vector<ConnectionPart>& connections) {
    QByteArray xml = Declaration + "<connections xmlns=\"" + Main + "\">";
    int id = 0;
    for (const ConnectionPart& connection : connections) {
        const bool oleDb = connection.Text.startsWith(u"OLEDB;");
        const QString text = connection.Text.mid(connection.Text.indexOf(u';') + 1);
        ++id;
        xml += "<connection id=\"" + Number(id) + "\" name=\"Query" + Number(id) + "\" type=\"" +
               (oleDb ? "5" : "1") +
               "\" refreshedVersion=\"3\" background=\"1\" saveData=\"1\"><dbPr connection=\"" +
               Attribute(text) + "\" command=\"" + Attribute(connection.Command) +
               "\" commandType=\"2\"/></connection>";
    }
    return xml + "</connections>";
}

QByteArray QueryTable(const QueryTablePart& query, const QByteArray& name) {
    QByteArray xml =
        Declaration + "<queryTable xmlns=\"" + Main + "\" name=\"" + name + "\" connectionId=\"" +
        Number(query.Connection) +
        "\" autoFormatId=\"16\" applyNumberFormats=\"0\" applyBorderFormats=\"0\" applyFontFormats=\"0\" "
        "applyPatternFormats=\"0\" applyAlignmentFormats=\"0\" applyWidthHeightFormats=\"0\">"
        "<queryTableRefresh nextId=\"" +
        Number(query.Heads.size() + 1) + "\"><queryTableFields count=\"" + Number(query.Heads.size()) + "\">";
    int id = 0;
    for (const QString& head : query.Heads)
        xml += "<queryTableField id=\"" + Number(++id) + "\" name=\"" + Attribute(head) + "\"/>";
    return xml + "</queryTableFields></queryTableRefresh></queryTable>";
}

QByteArray CacheDefinition(const PivotPart& pivot) {
    const QByteArray source =
        pivot.SourceSheet.isEmpty()
            ? "<cacheSource type=\"external\" connectionId=\"" + Number(pivot.Connection) + "\"/>"
            : "<cacheSource type=\"worksheet\"><worksheetSource ref=\"" + pivot.SourceRange.toUtf8() +
                  "\" sheet=\"" + Attribute(pivot.SourceSheet) + "\"/></cacheSource>";
    QByteArray xml =
        Declaration + "<pivotCacheDefinition xmlns=\"" + Main + "\" saveData=\"" +
        (pivot.SaveData ? "1" : "0") +
        "\" refreshOnLoad=\"1\" createdVersion=\"3\" refreshedVersion=\"3\" minRefreshableVersion=\"3\">" +
        source + "<cacheFields count=\"" + Number(pivot.Heads.size()) + "\">";
    for (const QString& head : pivot.Heads)
        xml += "<cacheField name=\"" + Attribute(head) + "\" numFmtId=\"0\"><sharedItems/></cacheField>";
    return xml + "</cacheFields></pivotCacheDefinition>";
}

QByteArray PivotTable(const PivotPart& pivot, int cacheId) {
    QByteArray xml =
        Declaration + "<pivotTableDefinition xmlns=\"" + Main + "\" name=\"" + Attribute(pivot.TableName) +
        "\" cacheId=\"" + Number(cacheId) +
        "\" applyNumberFormats=\"0\" applyBorderFormats=\"0\" applyFontFormats=\"0\" "
        "applyPatternFormats=\"0\" applyAlignmentFormats=\"0\" applyWidthHeightFormats=\"1\" "
        "dataCaption=\"Values\" updatedVersion=\"3\" minRefreshableVersion=\"3\" createdVersion=\"3\" "
        "useAutoFormatting=\"1\" itemPrintTitles=\"1\" indent=\"0\" outline=\"1\" outlineData=\"1\">"
        "<location ref=\"A1:C18\" firstHeaderRow=\"0\" firstDataRow=\"0\" firstDataCol=\"0\"/>"
        "<pivotFields count=\"" +
        Number(pivot.Heads.size()) + "\">";
    for (qsizetype field = 0; field < pivot.Heads.size(); ++field) xml += "<pivotField showAll=\"0\"/>";
    return xml +
           "</pivotFields><pivotTableStyleInfo name=\"PivotStyleLight16\" showRowHeaders=\"1\" "
           "showColHeaders=\"1\" showRowStripes=\"0\" showColStripes=\"0\" showLastColumn=\"1\"/>"
           "</pivotTableDefinition>";
}

/// Writes a workbook's parts one after the other; the workbook part itself, which names all others, comes
/// last.
class Writer {
 public:
    explicit Writer(const WorkbookParts& parts) : workbook(parts) {}

    std::vector<Part> Run() {
        Relations root;
        root.Add("officeDocument", "xl/workbook.xml");
        package.AddRelations("_rels/.rels", root);
        for (size_t sheet = 0; sheet < workbook.Sheets.size(); ++sheet) AddSheet(static_cast<int>(sheet));
        relations.Add("styles", "styles.xml");
        package.Add("xl/styles.xml", Styles(), "styles");
        if (!workbook.Connections.empty()) {
            relations.Add("connections", "connections.xml");
            package.Add("xl/connections.xml", Connections(workbook.Connections), "connections");
        }
        package.Add("xl/workbook.xml", WorkbookXml(), "sheet.main");
        package.AddRelations("xl/_rels/workbook.xml.rels", relations);
        return package.Finish();
    }

 private:
    void AddSheet(int index) {
        const SheetPart& sheet = workbook.Sheets.at(static_cast<size_t>(index));
        const QByteArray number = Number(sheet.File), path = RowsPath(sheet.File);
        Relations own;
        if (sheet.Query) AddQuery(*sheet.Query, index, own);
        if (sheet.Pivot) AddPivot(*sheet.Pivot, own);
        if (sheet.Query)
            package.Declare(path, "worksheet");
        else
            package.Add(path, Declaration + "<worksheet xmlns=\"" + Main + "\"><sheetData/></worksheet>",
                        "worksheet");
        package.AddRelations("xl/worksheets/_rels/sheet" + number + ".xml.rels", own);
        const QByteArray id = relations.Add("worksheet", "worksheets/sheet" + number + ".xml");
        sheets +=
            "<sheet name=\"" + Attribute(sheet.Name) + "\" sheetId=\"" + number + "\" r:id=\"" + id + "\"/>";
    }

    void AddQuery(const QueryTablePart& query, int index, Relations& own) {
        const QByteArray number = Number(++queries), name = "ExternalData_" + number;
        const QByteArray file = "queryTable" + number + ".xml";
        package.Add("xl/queryTables/" + file, QueryTable(query, name), "queryTable");
        own.Add("queryTable", "../queryTables/" + file);
        names += "<definedName name=\"" + name + "\" localSheetId=\"" + Number(index) + "\" hidden=\"1\">'" +
                 Attribute(QString(workbook.Sheets.at(static_cast<size_t>(index)).Name)
                               .replace(u'\'', QStringLiteral("''"))) +
                 "'!" + query.Range.toUtf8() + "</definedName>";
    }

    void AddPivot(const PivotPart& pivot, Relations& own) {
        const QByteArray number = Number(++pivots);
        const QByteArray cache = "pivotCache/pivotCacheDefinition" + number + ".xml";
        const QByteArray table = "pivotTables/pivotTable" + number + ".xml";
        package.Add("xl/" + cache, CacheDefinition(pivot), "pivotCacheDefinition");
        package.Add("xl/" + table, PivotTable(pivot, pivots), "pivotTable");
        own.Add("pivotTable", "../" + table);
        Relations ofTable;
        ofTable.Add("pivotCacheDefinition", "../" + cache);
        package.AddRelations("xl/pivotTables/_rels/pivotTable" + number + ".xml.rels", ofTable);
        const QByteArray id = relations.Add("pivotCacheDefinition", cache);
        caches += "<pivotCache cacheId=\"" + number + "\" r:id=\"" + id + "\"/>";
    }

    QByteArray WorkbookXml() const {
        return Declaration + "<workbook xmlns=\"" + Main + "\" xmlns:r=\"" + Office +
               "\"><bookViews><workbookView activeTab=\"" + Number(workbook.ActiveSheet) +
               "\"/></bookViews><sheets>" + sheets + "</sheets>" +
               (names.isEmpty() ? QByteArray() : "<definedNames>" + names + "</definedNames>") +
               "<calcPr calcId=\"0\"/>" +
               (caches.isEmpty() ? QByteArray() : "<pivotCaches>" + caches + "</pivotCaches>") +
               "</workbook>";
    }

    const WorkbookParts& workbook;
    Package package;
    Relations relations;
    QByteArray sheets, names, caches;
    int queries = 0;
    int pivots = 0;
};

}  // namespace

std::vector<Part> WriteParts(const WorkbookParts& workbook) {
    return Writer(workbook).Run();
}

QByteArray RowsPath(int file) {
    return "xl/worksheets/sheet" + Number(file) + ".xml";
}

}  // namespace zephrin::excel
