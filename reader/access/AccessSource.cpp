#include "reader/access/AccessSource.h"

#include <QSet>

#include <algorithm>

namespace zephrin::reader::access {

using ado::files::FailureKind;
using ado::files::TableKind;

namespace {

/// The table of all objects is the one whose place is known.
constexpr quint32 ObjectsPage = 2;
constexpr quint32 PageMask = 0xffffff;
constexpr quint32 SystemFlags = 0x80000002;

enum ObjectType { LocalTable = 1, LinkedServerTable = 4, Query = 5, LinkedTable = 6 };

/// A system table that is read row by row, its columns asked for by name.
class SystemTable {
 public:
    SystemTable(PageFile& file, ValueWriter& writer, quint32 page)
        : definition(ReadDefinition(file, page)), cursor(file, definition), values(writer) {}

    bool Next() { return cursor.Next(); }
    qint64 Number(const char* name) {
        const StoredColumn* column = Find(name);
        return column ? values.WholeNumber(cursor.At(*column)) : 0;
    }
    QString Text(const char* name) {
        const StoredColumn* column = Find(name);
        return column ? QString::fromUtf8(values.Text(cursor.At(*column), *column)) : QString();
    }
    QByteArray Bytes(const char* name) {
        const StoredColumn* column = Find(name);
        const Span bytes = column ? cursor.At(*column).Bytes : Span();
        return {reinterpret_cast<const char*>(bytes.Data), bytes.Size};
    }
    QByteArray LongBytes(const char* name) {
        const StoredColumn* column = Find(name);
        return column ? values.LongBytes(cursor.At(*column)) : QByteArray();
    }

 private:
    const StoredColumn* Find(const char* name) const {
        for (const StoredColumn& column : definition.Columns)
            if (column.Name.compare(QLatin1StringView(name), Qt::CaseInsensitive) == 0) return &column;
        return nullptr;
    }

    TableDefinition definition;
    RowCursor cursor;
    ValueWriter& values;
};

/// Where a linked table leads to.
QString LeadsTo(const QString& table, const QString& database, const QString& connect) {
    const QString where = database.isEmpty() ? connect : database;
    return where.isEmpty() ? table : QStringLiteral("%1 in %2").arg(table, where);
}

}  // namespace

AccessSource::AccessSource(const QString& path, const QString& password)
    : file(path, password), values(file) {
    ReadObjects();
}

void AccessSource::ReadObjects() {
    SystemTable rows(file, values, ObjectsPage);
    while (rows.Next()) {
        const auto type = int(rows.Number("Type"));
        if (type != LocalTable && type != LinkedServerTable && type != LinkedTable && type != Query) continue;
        Object object;
        object.Table.Name = rows.Text("Name");
        object.Id = qint32(rows.Number("Id"));
        object.IsQuery = type == Query;
        // The program's own leftovers, and what its forms keep for themselves.
        if (object.Table.Name.isEmpty() || object.Table.Name.startsWith(u'~')) continue;
        const auto flags = quint32(rows.Number("Flags"));
        const bool isSystem =
            (flags & SystemFlags) != 0 || object.Table.Name.startsWith(QLatin1StringView("MSys"));
        object.Table.Kind = type == Query ? TableKind::Query
                            : isSystem    ? TableKind::System
                                          : TableKind::Table;
        if (type == LinkedServerTable || type == LinkedTable) {
            object.Table.Kind = TableKind::Linked;
            object.Table.Text =
                LeadsTo(rows.Text("ForeignName"), rows.Text("Database"), rows.Text("Connect"));
        }
        objects.push_back(std::move(object));
    }
}

const AccessSource::Object& AccessSource::Find(const QString& table) const {
    const auto found = std::find_if(objects.begin(), objects.end(), [&](const Object& object) {
        return !object.IsQuery && object.Table.Name.compare(table, Qt::CaseInsensitive) == 0;
    });
    if (found == objects.end())
        throw ReadError{FailureKind::NoTable, QStringLiteral("it has no table %1").arg(table)};
    if (found->Table.Kind == TableKind::Linked) throw ReadError{FailureKind::LinkedTable, found->Table.Text};
    return *found;
}

TableDefinition AccessSource::DefinitionOf(const Object& object) {
    TableDefinition definition = ReadDefinition(file, quint32(object.Id) & PageMask);
    const auto isCalculated = [](const StoredColumn& column) { return column.IsCalculated; };
    if (std::any_of(definition.Columns.begin(), definition.Columns.end(), isCalculated))
        SetCalculatedTypes(object, definition);
    return definition;
}

/// The definition calls a calculated column anything; what its values are stands among the properties.
void AccessSource::SetCalculatedTypes(const Object& object, TableDefinition& definition) {
    const QHash<QString, int> types = file.ResultTypes(PropertiesOf(object));
    for (StoredColumn& column : definition.Columns) {
        if (!column.IsCalculated) continue;
        const int type = types.value(column.Name);
        const bool isKnown = (type >= int(StoredType::Boolean) && type <= int(StoredType::Date)) ||
                             type == int(StoredType::Text) || type == int(StoredType::Memo) ||
                             type == int(StoredType::Guid) || type == int(StoredType::Decimal) ||
                             type == int(StoredType::BigInt);
        column.Type = isKnown ? StoredType(type) : StoredType::None;
    }
}

QByteArray AccessSource::PropertiesOf(const Object& object) {
    SystemTable rows(file, values, ObjectsPage);
    while (rows.Next())
        if (qint32(rows.Number("Id")) == object.Id) return rows.LongBytes("LvProp");
    return {};
}

QList<ColumnInfo> AccessSource::ColumnsOf(const Object& object) {
    QList<ColumnInfo> columns;
    for (const StoredColumn& column : DefinitionOf(object).Columns) columns << InfoOf(column);
    return columns;
}

QList<ColumnInfo> AccessSource::Columns(const QString& table) {
    return ColumnsOf(Find(table));
}

std::vector<CatalogEntry> AccessSource::Catalog() {
    std::vector<CatalogEntry> catalog;
    for (const Object& object : objects)
        if (!object.IsQuery) catalog.push_back({object.Table, {}});
    if (std::any_of(objects.begin(), objects.end(), [](const Object& object) { return object.IsQuery; }))
        AddQueries(catalog);
    return catalog;
}

/// The statements of the queries, and the columns of what they read: whoever wants to know whether they run
/// needs them.
void AccessSource::AddQueries(std::vector<CatalogEntry>& catalog) {
    const QHash<qint32, QList<QueryRow>> rows = ReadQueries();
    QSet<QString> read;
    for (const Object& object : objects) {
        if (!object.IsQuery) continue;
        const std::optional<QueryText> text = TextOfQuery(rows.value(object.Id));
        if (!text) continue;
        TableInfo table = object.Table;
        table.Text = text->Statement;
        catalog.push_back({table, {}});
        for (const QString& name : text->Tables) read.insert(name.toCaseFolded());
    }
    for (CatalogEntry& entry : catalog)
        if (entry.Table.Kind == TableKind::Table && read.contains(entry.Table.Name.toCaseFolded()))
            entry.Columns = Columns(entry.Table.Name);
}

QHash<qint32, QList<QueryRow>> AccessSource::ReadQueries() {
    QHash<qint32, QList<QueryRow>> queries;
    const auto object = std::find_if(objects.begin(), objects.end(), [](const Object& one) {
        return one.Table.Name == QLatin1StringView("MSysQueries");
    });
    if (object == objects.end()) return queries;
    SystemTable rows(file, values, quint32(object->Id) & PageMask);
    while (rows.Next()) {
        QueryRow row;
        row.Attribute = int(rows.Number("Attribute"));
        row.Flag = int(rows.Number("Flag"));
        row.Order = rows.Bytes("Order");
        row.Name = rows.Text("Name1");
        row.OtherName = rows.Text("Name2");
        row.Expression = rows.Text("Expression");
        queries[qint32(rows.Number("ObjectId"))].append(row);
    }
    return queries;
}

void AccessSource::Rows(const QString& table, RowSink& into) {
    const Object& object = Find(table);
    const TableDefinition definition = DefinitionOf(object);
    std::vector<ComplexTexts> texts(std::size_t(definition.Columns.size()));
    for (qsizetype column = 0; column < definition.Columns.size(); ++column)
        if (definition.Columns[column].Type == StoredType::Complex)
            texts[std::size_t(column)] = ReadComplex(object, definition.Columns[column]);
    RowCursor cursor(file, definition);
    while (cursor.Next()) {
        into.BeginRow();
        for (qsizetype column = 0; column < definition.Columns.size(); ++column)
            values.Write(cursor.At(definition.Columns[column]), definition.Columns[column],
                         &texts[std::size_t(column)], into);
        into.EndRow();
    }
}

/// Which table holds the attachments or values of a column, and what they are called there.
ComplexTexts AccessSource::ReadComplex(const Object& object, const StoredColumn& column) {
    const auto list = std::find_if(objects.begin(), objects.end(), [](const Object& one) {
        return one.Table.Name == QLatin1StringView("MSysComplexColumns");
    });
    if (list == objects.end()) return {};
    SystemTable rows(file, values, quint32(list->Id) & PageMask);
    while (rows.Next())
        if (quint32(rows.Number("ComplexID")) == column.ComplexId &&
            qint32(rows.Number("ConceptualTableID")) == object.Id)
            return ReadFlatTable(quint32(rows.Number("FlatTableID")) & PageMask,
                                 quint32(rows.Number("ComplexTypeObjectID")) & PageMask);
    return {};
}

ComplexTexts AccessSource::ReadFlatTable(quint32 page, quint32 typePage) {
    const TableDefinition flat = ReadDefinition(file, page);
    QSet<QString> ofType;
    for (const StoredColumn& column : ReadDefinition(file, typePage).Columns) ofType.insert(column.Name);
    const StoredColumn* key = nullptr;
    const StoredColumn* shown = nullptr;
    for (const StoredColumn& column : flat.Columns) {
        const bool isValue = ofType.contains(column.Name);
        if (!isValue && column.Type == StoredType::Long && !column.CountsItself) key = &column;
        if (isValue && (!shown || column.Name == QLatin1StringView("FileName"))) shown = &column;
    }
    ComplexTexts texts;
    if (!key || !shown) return texts;
    RowCursor cursor(file, flat);
    while (cursor.Next()) {
        const QByteArray text = values.Readable(cursor.At(*shown), *shown);
        QByteArray& all = texts[quint32(values.WholeNumber(cursor.At(*key)))];
        if (!all.isEmpty()) all += ';';
        all += text;
    }
    return texts;
}

}  // namespace zephrin::reader::access
