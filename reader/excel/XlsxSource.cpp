#include "reader/excel/XlsxSource.h"

#include "reader/excel/NumberFormats.h"
#include "reader/excel/XlsxSheet.h"

#include <QDir>
#include <QHash>
#include <QXmlStreamReader>

#include <algorithm>

namespace zephrin::reader::excel {

using ado::files::FailureKind;
using ado::files::TableKind;
using Token = XmlScanner::Token;

namespace {

struct Relation {
    QString Kind;  ///< the last word of its type
    QString Part;
};

/// Goes through the elements of a small part.
template <typename Element>
void ForEachElement(const QByteArray& part, Element element) {
    QXmlStreamReader xml(part);
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement) element(xml);
    if (xml.hasError()) ThrowDamaged(QStringLiteral("a part of it is not well formed"));
}

QString Attribute(const QXmlStreamReader& xml, const char* name) {
    return xml.attributes().value(QLatin1StringView(name)).toString();
}

/// An attribute whatever its prefix is.
QString LocalAttribute(const QXmlStreamReader& xml, const char* name) {
    for (const QXmlStreamAttribute& attribute : xml.attributes())
        if (attribute.name() == QLatin1StringView(name)) return attribute.value().toString();
    return {};
}

/// What a part refers to, by the names that it uses for them.
QHash<QString, Relation> RelationsOf(const Package& package, const QString& part) {
    const QString folder = part.contains(u'/') ? part.left(part.lastIndexOf(u'/') + 1) : QString();
    const QString list =
        folder + QStringLiteral("_rels/") + part.mid(folder.size()) + QStringLiteral(".rels");
    QHash<QString, Relation> relations;
    if (!package.Has(list)) return relations;
    ForEachElement(package.Whole(list), [&](const QXmlStreamReader& xml) {
        if (xml.name() != u"Relationship") return;
        const QString target = Attribute(xml, "Target");
        relations.insert(Attribute(xml, "Id"),
                         {Attribute(xml, "Type").section(u'/', -1),
                          QDir::cleanPath(target.startsWith(u'/') ? target.mid(1) : folder + target)});
    });
    return relations;
}

QString PartOf(const QHash<QString, Relation>& relations, const char* kind) {
    for (const Relation& relation : relations)
        if (relation.Kind == QLatin1StringView(kind)) return relation.Part;
    return {};
}

bool IsTrue(const QString& value) {
    return value == u"1" || value == u"true";
}

}  // namespace

XlsxSource::XlsxSource(const ado::files::Request& request)
    : hasHeads(request.HasHeads),
      mixedAsText(request.MixedAsText),
      measures(request.MeasureSheets),
      package(request.Path) {
    if (package.Has(QStringLiteral("xl/workbook.bin")))
        throw ReadError{
            FailureKind::Unsupported,
            QStringLiteral("it is a binary workbook (.xlsb), which can't be read; save it as .xlsx")};
    const QString part = PartOf(RelationsOf(package, QString()), "officeDocument");
    const QString workbook = part.isEmpty() ? QStringLiteral("xl/workbook.xml") : part;
    if (!package.Has(workbook) || !workbook.endsWith(QLatin1StringView(".xml")))
        throw ReadError{FailureKind::WrongKind, QStringLiteral("it is not an Excel workbook")};
    ReadWorkbook(workbook);
    ReadStyles();
}

void XlsxSource::ReadWorkbook(const QString& part) {
    const QHash<QString, Relation> relations = RelationsOf(package, part);
    stylesPart = PartOf(relations, "styles");
    textsPart = PartOf(relations, "sharedStrings");
    QStringList titles;
    bool isWorkbook = false;
    QXmlStreamReader xml(package.Whole(part));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        if (xml.name() == u"workbook") isWorkbook = true;
        if (xml.name() == u"workbookPr") context.CountsFrom1904 = IsTrue(Attribute(xml, "date1904"));
        if (xml.name() == u"sheet") {
            const QString title = Attribute(xml, "name");
            const Relation relation = relations.value(LocalAttribute(xml, "id"));
            // The number of a sheet counts those that are charts as well.
            sheets.push_back(
                {relation.Kind == u"worksheet" ? SafeName(title) + u'$' : QString(), title, relation.Part});
        }
        if (xml.name() == u"definedName") {
            const QString name = Attribute(xml, "name");
            const QString local = Attribute(xml, "localSheetId");
            const bool isHidden =
                IsTrue(Attribute(xml, "hidden")) || name.startsWith(QLatin1StringView("_xlnm."));
            const QString refersTo = xml.readElementText(QXmlStreamReader::IncludeChildElements);
            if (!isHidden) AddName(name, refersTo, local.isEmpty() ? -1 : local.toInt());
        }
    }
    if (xml.hasError() || !isWorkbook) ThrowDamaged(QStringLiteral("its list of sheets"));
}

/// Names of areas are tables; those of formulas, of several areas and of other files aren't.
void XlsxSource::AddName(const QString& name, const QString& refersTo, int local) {
    const qsizetype mark = refersTo.lastIndexOf(u'!');
    if (mark <= 0) return;
    QString title = refersTo.left(mark);
    if (title.startsWith(u'\'') && title.endsWith(u'\'') && title.size() > 2)
        title = title.mid(1, title.size() - 2).replace(QStringLiteral("''"), QStringLiteral("'"));
    NamedArea area;
    if (!ReadArea(QStringView(refersTo).mid(mark + 1), area.Within)) return;
    const auto on = std::find_if(sheets.begin(), sheets.end(), [&](const Sheet& sheet) {
        return sheet.Title.compare(title, Qt::CaseInsensitive) == 0 && !sheet.Name.isEmpty();
    });
    if (on == sheets.end()) return;
    area.Sheet = int(on - sheets.begin());
    const bool isLocal = local >= 0 && std::size_t(local) < sheets.size();
    area.Name = isLocal ? sheets[std::size_t(local)].Name + SafeName(name) : SafeName(name);
    names.push_back(area);
}

void XlsxSource::ReadStyles() {
    if (stylesPart.isEmpty() || !package.Has(stylesPart)) return;
    QHash<int, CellKind> own;
    bool inCells = false;
    QXmlStreamReader xml(package.Whole(stylesPart));
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement && xml.name() == u"cellXfs") inCells = false;
        if (token != QXmlStreamReader::StartElement) continue;
        if (xml.name() == u"numFmt")
            own.insert(Attribute(xml, "numFmtId").toInt(), KindOfFormat(Attribute(xml, "formatCode")));
        if (xml.name() == u"cellXfs") inCells = true;
        if (xml.name() == u"xf" && inCells) {
            const int format = Attribute(xml, "numFmtId").toInt();
            context.Styles.push_back(own.contains(format) ? own.value(format) : KindOfFormat(format));
        }
    }
    if (xml.hasError()) ThrowDamaged(QStringLiteral("its formats"));
}

void XlsxSource::ReadTexts() {
    if (hasTexts) return;
    hasTexts = true;
    if (!textsPart.isEmpty() && package.Has(textsPart)) {
        XmlScanner scanner = package.Open(textsPart);
        std::string text;
        for (Token token = scanner.Next(); token != Token::Finish; token = scanner.Next()) {
            if (token != Token::Start || scanner.Name() != "si") continue;
            text.clear();
            AppendRichText(scanner, "si", text);
            context.TextStarts.push_back(context.Texts.size());
            context.Texts += text;
        }
    }
    context.TextStarts.push_back(context.Texts.size());
}

std::vector<CatalogEntry> XlsxSource::Catalog() {
    std::vector<CatalogEntry> catalog;
    for (const Sheet& sheet : sheets)
        if (!sheet.Name.isEmpty()) catalog.push_back({{sheet.Name, TableKind::Table, {}}, {}});
    for (const NamedArea& name : names) catalog.push_back({{name.Name, TableKind::Table, {}}, {}});
    return catalog;
}

/// A sheet, a name, or an area of a sheet that is written behind its name: "Sheet1$A1:C9".
XlsxSource::Place XlsxSource::Find(const QString& table) const {
    for (const NamedArea& name : names)
        if (name.Name.compare(table, Qt::CaseInsensitive) == 0)
            return {&sheets[std::size_t(name.Sheet)], name.Within, false};
    for (const Sheet& sheet : sheets) {
        if (sheet.Name.isEmpty() || !table.startsWith(sheet.Name, Qt::CaseInsensitive)) continue;
        if (table.size() == sheet.Name.size()) return {&sheet, {}, true};
        Area area;
        if (ReadArea(QStringView(table).mid(sheet.Name.size()), area)) return {&sheet, area, false};
    }
    throw ReadError{FailureKind::NoTable, QStringLiteral("it has no table %1").arg(table)};
}

/// Looks at every cell for the columns that are in use.
void XlsxSource::Measure(const Place& place, Area& area) const {
    XlsxSheet sheet(package.Open(place.On->Part), context);
    SheetRow row;
    int first = MostColumns;
    int last = -1;
    while (sheet.Next(row)) {
        const auto isValue = [](const SheetCell& cell) { return cell.Kind != CellKind::Empty; };
        const auto begin = std::find_if(row.Cells.begin(), row.Cells.end(), isValue);
        if (begin == row.Cells.end()) continue;
        const auto end = std::find_if(row.Cells.rbegin(), row.Cells.rend(), isValue);
        first = std::min(first, int(begin - row.Cells.begin()));
        last = std::max(last, int(row.Cells.rend() - end) - 1);
    }
    area.FirstColumn = last < 0 ? 0 : first;
    area.LastColumn = std::max(last, 0);
}

template <typename Work>
void XlsxSource::With(const QString& table, Work work) {
    const Place place = Find(table);
    ReadTexts();
    Area area = place.Within;
    TableOptions options{hasHeads, mixedAsText, place.IsSheet, !place.IsSheet && area.LastColumn >= 0};
    XlsxSheet sheet(package.Open(place.On->Part), context);
    if (!options.IsMeasured) {
        Area extent;
        const bool says = sheet.ReadExtent(extent) && extent.LastColumn >= 0;
        if (says && !measures) {
            area.FirstColumn = extent.FirstColumn;
            area.LastColumn = extent.LastColumn;
        } else {
            Measure(place, area);
            options.IsMeasured = true;
        }
    }
    SheetTable rows(sheet, area, options);
    work(rows);
}

QList<ColumnInfo> XlsxSource::Columns(const QString& table) {
    QList<ColumnInfo> columns;
    With(table, [&](SheetTable& rows) { columns = rows.Columns(); });
    return columns;
}

void XlsxSource::Rows(const QString& table, RowSink& into) {
    With(table, [&](SheetTable& rows) { rows.WriteRows(into); });
}

}  // namespace zephrin::reader::excel
