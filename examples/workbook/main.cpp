// Writes tables of the sample shop into a workbook, a sheet each, as the wizard's own export writes them.

#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"
#include "platform/excel/WorkbookFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

namespace {

using namespace zephrin;

class Shop final : public excel::RowSource {
 public:
    explicit Shop(const QString& file) : connection(ado::providers::AllProviders()) {
        connection.Open(
            QStringLiteral("Provider=SQLite;Dialect=MS Access;Mode=Read;Data Source=\"%1\"").arg(file));
    }
    std::unique_ptr<ado::Cursor> Run(const QString& sql) override { return connection.Stream(sql); }
    bool Proceed(qint64) override { return true; }

 private:
    ado::Connection connection;
};

void Write(const QString& shop, const QString& target) {
    const QTemporaryDir folder;
    QString written;
    Shop rows(shop);
    excel::WorkbookFile book(rows, folder.path(), [&](const QString& path, qint64) { written = path; });
    book.AddWorkbook();
    bool isFirst = true;
    for (const char* table : {"Customers", "Orders", "Order Details", "Products", "Categories", "Shippers"}) {
        const QString name = QLatin1StringView(table);
        const int sheet = isFirst ? book.SheetAt(1) : book.AddSheet();
        isFirst = false;
        book.SetSheetName(sheet, name);
        const int query = book.AddQueryTable(sheet, QStringLiteral("OLEDB;"), QStringLiteral("A1"));
        book.SetQuerySql(query, QStringLiteral("SELECT * FROM [%1]").arg(name));
        book.Refresh(query);
    }
    book.SetVisible(true);
    QFile::remove(target);
    if (!QFile::copy(written, target))
        throw ado::Error(1, QStringLiteral("'%1' can't be written").arg(target));
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
}

}  // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    try {
        if (count == 3) Write(QFile::decodeName(arguments[1]), QFile::decodeName(arguments[2]));
        return count == 3 ? 0 : 2;
    } catch (const ado::Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
