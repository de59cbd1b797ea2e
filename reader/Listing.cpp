#include "reader/Listing.h"

#include "reader/Source.h"

#include <QTextStream>

namespace zephrin::reader {

using namespace ado::files;

namespace {

/// Counts rows and drops them.
class Counter final : public RowSink {
 protected:
    void Send(const QByteArray&) override {}
};

QString TypeOf(const ColumnInfo& column) {
    static const QStringList names{
        QStringLiteral("yes/no"),    QStringLiteral("byte"),     QStringLiteral("integer"),
        QStringLiteral("long"),      QStringLiteral("bigint"),   QStringLiteral("single"),
        QStringLiteral("double"),    QStringLiteral("currency"), QStringLiteral("decimal"),
        QStringLiteral("date/time"), QStringLiteral("text"),     QStringLiteral("fixed text"),
        QStringLiteral("memo"),      QStringLiteral("guid"),     QStringLiteral("binary"),
        QStringLiteral("ole object")};
    QString text = column.CountsItself ? QStringLiteral("counter") : names[int(column.Kind)];
    if (column.Kind == ColumnKind::Decimal)
        text += QStringLiteral("(%1,%2)").arg(column.Precision).arg(column.Scale);
    else if (column.Size > 0)
        text += QStringLiteral("(%1)").arg(column.Size);
    return text;
}

void PrintTable(Source& source, const TableInfo& table, QTextStream& out) {
    try {
        const QList<ColumnInfo> columns = source.Columns(table.Name);
        Counter rows;
        source.Rows(table.Name, rows);
        out << QStringLiteral("%1: %2 rows\n").arg(table.Name).arg(rows.Count());
        for (const ColumnInfo& column : columns)
            out << "    " << column.Name << "  " << TypeOf(column) << '\n';
    } catch (const ReadError& error) {
        out << table.Name << ": " << error.Text << '\n';
    }
}

}  // namespace

int PrintListing(const Request& request) {
    QTextStream out(stdout);
    try {
        const std::unique_ptr<Source> source = OpenSource(request);
        for (const CatalogEntry& entry : source->Catalog()) {
            if (entry.Table.Kind == TableKind::Query)
                out << entry.Table.Name << ": query " << entry.Table.Text << '\n';
            else if (entry.Table.Kind == TableKind::Linked)
                out << entry.Table.Name << ": linked to " << entry.Table.Text << '\n';
            else
                PrintTable(*source, entry.Table, out);
        }
        return 0;
    } catch (const ReadError& error) {
        QTextStream(stderr) << request.Path << ": " << error.Text << '\n';
        return 1;
    }
}

}  // namespace zephrin::reader
