#include "excel/FakeRows.h"
#include "platform/excel/CellXml.h"
#include "platform/excel/WorkbookFile.h"
#include "support/DiskFaults.h"
#include "support/ExpectedLog.h"
#include "support/SpreadsheetProgram.h"

#include <QDate>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zephrin::excel {

namespace {

using ado::DataType;
using test::FakeRows;

qint64 TicksOf(const QDate& day, const QTime& time) {
    return QDate(1970, 1, 1).daysTo(day) * ado::TicksPerDay + time.msecsSinceStartOfDay() * 10'000LL;
}

void Text(ado::ColumnStore& into, int column, const char* text) {
    into.AppendText(column, text, qstrlen(text));
}

/// Awkward values of every kind in three rows.
FakeRows Awkward() {
    QList<ado::Field> fields;
    for (const char* name :
         {"Text", "text", "", "Whole", "Long", "Real", "Yes", "Money", "Day", "Moment", "Blob"})
        fields.append(ado::Field{QString::fromUtf8(name)});
    fields[6].Type = DataType::Boolean;
    return FakeRows(fields, 3, [](ado::ColumnStore& into, qint64 row) {
        static const char* const texts[] = {"=1+1", "O'Brien \xF0\x9F\x98\x80", ""};
        Text(into, 0, texts[row]);
        Text(into, 1, "@x");
        if (row == 0)
            into.AppendNull(2);
        else
            Text(into, 2, " +1 ");
        into.AppendInt(3, 42);
        into.AppendInt(4, row == 0 ? 123456789012345 : 1234567890123456789);
        into.AppendDouble(5, 1.5e-7);
        into.AppendInt(6, row == 0 ? -1 : 0);
        into.AppendCurrency(7, -12345);
        into.AppendDate(8, QDate(1970, 1, 1).daysTo(row == 0 ? QDate(1815, 6, 18) : QDate(1900, 1, 1)));
        into.AppendDateTime(9, TicksOf(QDate(9999, 12, 31), QTime(23, 59, 59)) + 9'999'999);
        into.AppendBytes(10, "\x00\xFF", 2);
    });
}

/// Says to `book` what an export with data sheet and pivot sheet says.
void ExportBoth(WorkbookFile& book) {
    book.AddWorkbook();
    book.SetSheetName(book.ActiveSheet(), QStringLiteral("Query Results"));
    const int table = book.AddQueryTable(book.ActiveSheet(), QStringLiteral("OLEDB;Provider=X;Name=\"a&b\""),
                                         QStringLiteral("A1"));
    book.SetQuerySql(table, QStringLiteral("SELECT 'a<b'\r\nFROM [T]\r\n"));
    book.Refresh(table);
    const int pivot = book.AddSheet();
    book.SetSheetName(pivot, QStringLiteral("Pivot Report"));
    book.AddPivotTable(pivot, book.AddPivotCache(SourceDatabase, book.ResultRangeName(table).mid(1)),
                       QStringLiteral("A1"), QStringLiteral("QueryBuilder Data"));
    book.SetVisible(true);
}

/// What the foreign reader says of the workbook, line by line.
QStringList Read(const QString& path) {
    QProcess reader;
    reader.start(QStringLiteral(ZEPHRIN_PYTHON), {QStringLiteral(ZEPHRIN_READ_WORKBOOK), path});
    reader.waitForFinished(60'000);
    EXPECT_EQ(reader.exitCode(), 0) << reader.readAllStandardError().toStdString();
    return QString::fromUtf8(reader.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

QStringList FilesIn(const QTemporaryDir& folder) {
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

}  // namespace

TEST(WorkbookFile, AForeignReaderFindsValuesTypesQueryAndPivot) {
    if (QProcess::execute(QStringLiteral(ZEPHRIN_PYTHON),
                          {QStringLiteral("-c"), QStringLiteral("import openpyxl")}) != 0)
        GTEST_SKIP() << "openpyxl is not installed";
    const QTemporaryDir folder;
    FakeRows rows = Awkward();
    QString opened;
    WorkbookFile book(rows, folder.path(), [&](const QString& path, qint64) { opened = path; });
    ExportBoth(book);
    EXPECT_EQ(FilesIn(folder), QStringList(QFileInfo(opened).fileName()));
    const QStringList said = Read(opened);
    const char* const expected[] = {
        "sheets ['Pivot Report', 'Query Results'] active Pivot Report",
        "Query Results!A1 s General 'Text'",
        "Query Results!B1 s General 'text2'",
        "Query Results!C1 s General 'Column3'",
        "Query Results!A2 s General '=1+1'",
        "Query Results!A3 s General \"O'Brien \\U0001f600\"",
        "Query Results!B2 s General '@x'",
        "Query Results!C3 s General ' +1 '",
        "Query Results!D2 n General 42",
        "Query Results!E2 n General 123456789012345",
        "Query Results!E3 s General '1234567890123456789'",
        "Query Results!F2 n General 1.5e-07",
        "Query Results!G2 b General True",
        "Query Results!G3 b General False",
        "Query Results!H2 n #,##0.00 -1.2345",
        "Query Results!I2 s General '1815-06-18'",
        "Query Results!I3 d yyyy\\-mm\\-dd datetime.datetime(1900, 1, 1, 0, 0)",
        "Query Results!J2 d yyyy\\-mm\\-dd\\ hh:mm:ss datetime.datetime(9999, 12, 31, 23, 59, 59)",
        "Query Results!K2 s General '0x00ff'",
        "pivot QueryBuilder Data Query Results A1:K4 ['Text', 'text2', 'Column3', 'Whole', 'Long', 'Real', "
        "'Yes', 'Money', "
        "'Day', 'Moment', 'Blob']",
        "Query Results!A4 s General ''",
        "part queryTable1.xml queryTable [('connectionId', '1'), ('name', 'ExternalData_1')]",
        "part connections.xml connection [('name', 'Query1'), ('type', '5')]",
        "part connections.xml dbPr [('command', \"SELECT 'a<b'\\r\\nFROM [T]\\r\\n\"), ('connection', "
        "'Provider=X;Name=\"a&b\"')]",
    };
    for (const char* line : expected)
        EXPECT_TRUE(said.contains(QString::fromUtf8(line))) << line << "\nis not in\n"
                                                            << said.join(u'\n').toStdString();
    EXPECT_FALSE(said.filter(QStringLiteral("Query Results!C2 ")).size()) << "a Null is an empty cell";
}

TEST(WorkbookFile, ASpreadsheetProgramReadsRowsAndPivot) {
    const QTemporaryDir folder;
    FakeRows rows = Awkward();
    QString opened;
    WorkbookFile book(rows, folder.path(), [&](const QString& path, qint64) { opened = path; });
    ExportBoth(book);
    const std::optional<QStringList> said = test::ReadBySpreadsheetProgram(opened);
    if (!said) GTEST_SKIP() << "LibreOffice is not installed";
    // This program counts the first two months of 1900 a day off from the one whose format it is.
    const char* const expected =
        "sheet Pivot Report\n"
        "row string:(empty)\n"
        "sheet Query Results\n"
        "row string:Text|string:text2|string:Column3|string:Whole|string:Long|string:Real|string:Yes|"
        "string:Money|string:Day|string:Moment|string:Blob\n"
        "row string:=1+1|string:@x|void|float:42|float:123456789012345|float:0.00000015|boolean:true|"
        "float:-1.2345|string:1815-06-18|date:9999-12-31T23:59:59|string:0x00ff\n"
        "row string:O'Brien \xF0\x9F\x98\x80|string:@x|string:+1|float:42|string:1234567890123456789|"
        "float:0.00000015|boolean:false|float:-1.2345|date:1899-12-31|date:9999-12-31T23:59:59|string:"
        "0x00ff\n"
        "row void|string:@x|string:+1|float:42|string:1234567890123456789|float:0.00000015|boolean:false|"
        "float:-1.2345|date:1899-12-31|date:9999-12-31T23:59:59|string:0x00ff\n"
        "pivot QueryBuilder Data of 'Query Results'.A1:'Query Results'.K4";
    EXPECT_EQ(said->join(u'\n').toStdString(), expected);
}

TEST(WorkbookFile, ACancelledOrFailedExportLeavesNoFile) {
    const QList<ado::Field> fields{ado::Field{QStringLiteral("Id")}};
    const auto write = [](ado::ColumnStore& into, qint64 row) { into.AppendInt(0, row); };
    const struct {
        const char* Name;
        std::optional<qint64> StopAt, FailAt;
        qint64 Rows;
        const char* Text;
    } cases[] = {
        {"cancelled", 8000, {}, 50'000, "Operation has been cancelled by the user."},
        {"connection lost", {}, 9000, 50'000, "the connection broke"},
        {"too many rows", {}, {}, SheetRowLimit, "more rows than the 1048575"},
    };
    for (const auto& row : cases) {
        const QTemporaryDir folder;
        FakeRows rows(fields, row.Rows, write);
        rows.StopAt = row.StopAt;
        rows.FailAt = row.FailAt;
        {
            WorkbookFile book(rows, folder.path(), {});
            try {
                ExportBoth(book);
                ADD_FAILURE() << row.Name << " went through";
            } catch (const ado::Error& error) {
                EXPECT_TRUE(error.Description().contains(QString::fromUtf8(row.Text)))
                    << row.Name << qPrintable(error.Description());
            }
        }
        EXPECT_EQ(FilesIn(folder), QStringList()) << row.Name;
    }
}

TEST(WorkbookFile, WhateverTheDiskDoesThereIsAWholeWorkbookOrNone) {
    using Fault = test::FaultyDisk::Fault;
    test::ExpectLog(QStringLiteral("QTemporaryDir: Unable to remove"));
    const QTemporaryDir folder;
    const auto runExport = [&] {
        FakeRows rows = Awkward();
        WorkbookFile book(rows, folder.path(), {});
        ExportBoth(book);
    };
    runExport();
    const QString whole = folder.filePath(FilesIn(folder).first());
    const qint64 size = QFileInfo(whole).size();
    EXPECT_EQ(QFile::permissions(whole) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    QFile::remove(whole);
    for (const Fault fault : {Fault::Once, Fault::FromThenOn, Fault::Kill}) {
        int step = 0;
        for (bool happened = true; happened; ++step) {
            bool failed = false;
            const auto attempt = [&] {
                const test::FaultyDisk disk(folder.path(), step, ENOSPC, fault);
                try {
                    runExport();
                } catch (const ado::Error&) {
                    failed = true;
                }
                happened = disk.Happened();
            };
            if (fault == Fault::Kill)
                happened = test::IsKilledIn(attempt);
            else
                attempt();
            const QStringList left = FilesIn(folder);
            // On a disk that stays broken behind the last step of all, the workbook can't be taken away again.
            EXPECT_LE(left.size(), failed && fault == Fault::Once ? 0 : 1) << "step " << step;
            for (const QString& name : left) {
                EXPECT_EQ(QFileInfo(folder.filePath(name)).size(), size) << "step " << step;
                QFile::remove(folder.filePath(name));
            }
        }
        EXPECT_GT(step, 12);
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList())
        << "what the killed ones left, the next one clears away";
}

TEST(WorkbookFile, AFolderThatCanNotBeMadeIsAnErrorWithItsName) {
    const QTemporaryDir folder;
    FakeRows rows = Awkward();
    QFile(folder.filePath(QStringLiteral("taken"))).open(QIODevice::WriteOnly);
    WorkbookFile book(rows, folder.filePath(QStringLiteral("taken/below")), {});
    EXPECT_THROW(book.AddWorkbook(), ado::Error);
}

TEST(WorkbookFile, ThePivotWizardTakesAConnectionAndAStatementInPieces) {
    if (QProcess::execute(QStringLiteral(ZEPHRIN_PYTHON),
                          {QStringLiteral("-c"), QStringLiteral("import openpyxl")}) != 0)
        GTEST_SKIP() << "openpyxl is not installed";
    const QTemporaryDir folder;
    FakeRows rows = Awkward();
    QString opened;
    WorkbookFile book(rows, folder.path(), [&](const QString& path, qint64) { opened = path; });
    book.AddWorkbook();
    book.SetSheetName(book.ActiveSheet(), QStringLiteral("Pivot Table"));
    book.PivotTableWizard(SourceExternal, {QStringLiteral("SELECT *"), QStringLiteral(" FROM [T]")},
                          QStringLiteral("Pivot Results"), false, false,
                          {QStringLiteral("ODBC;DRIVER=x;UID=u")});
    book.SetVisible(true);
    const QStringList said = Read(opened);
    EXPECT_TRUE(said.contains(QStringLiteral("sheets ['Pivot Table'] active Pivot Table")));
    EXPECT_TRUE(said.contains(QStringLiteral(
        "part connections.xml dbPr [('command', 'SELECT * FROM [T]'), ('connection', 'DRIVER=x;UID=u')]")));
    EXPECT_EQ(said.filter(QStringLiteral("pivot Pivot Results None")).size(), 1)
        << said.join(u'\n').toStdString();
}

}  // namespace zephrin::excel
