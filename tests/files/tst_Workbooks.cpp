#include "FilesTest.h"
#include "excel/FakeRows.h"
#include "platform/excel/WorkbookFile.h"

#include <QProcess>
#include <QStandardPaths>

namespace zephrin::ado::files::test {

namespace {

class Workbooks : public FilesTest {
 protected:
    void SetUp() override { ASSERT_TRUE(MakeWorkbook(path)); }
    static QString Excel(const QString& file, const QString& more = {}) {
        return QStringLiteral("Driver={Microsoft Excel Driver (*.xls, *.xlsx, *.xlsm, *.xlsb)};DBQ=%1;%2")
            .arg(file, more);
    }
    static QString Jet(const QString& file, const char* more) {
        return QStringLiteral(
                   "Provider=Microsoft.ACE.OLEDB.12.0;Dialect=MS Access;Data Source=%1;Extended "
                   "Properties=\"Excel 12.0 Xml;%2\"")
            .arg(file, QLatin1StringView(more));
    }
    /// The names of a schema, one behind the other.
    static QString Listed(Connection& connection, Schema schema, const QString& table, int column) {
        const RecordsetPtr rows = connection.OpenSchema(schema, table);
        QStringList names;
        for (qint64 row = 0; row < rows->RecordCount(); ++row) names << rows->TextAt(row, column);
        return names.join(u'|');
    }
    /// The workbook as LibreOffice writes it in another format; empty where that is not installed.
    QString Converted(const char* format) {
        const QString office = QStandardPaths::findExecutable(QStringLiteral("soffice"));
        if (office.isEmpty()) return {};
        QProcess process;
        process.start(
            office,
            {QStringLiteral("-env:UserInstallation=file://") + folder.filePath(QStringLiteral("profile")),
             QStringLiteral("--headless"), QStringLiteral("--convert-to"), QLatin1StringView(format),
             QStringLiteral("--outdir"), folder.filePath(QStringLiteral("made")), path});
        process.waitForFinished(100'000);
        return folder.filePath(QStringLiteral("made/book.") + QLatin1StringView(format));
    }

    const QString path = folder.filePath(QStringLiteral("book.xlsx"));
};

struct Question {
    const char* Statement;
    const char* Expected;
};

TEST_F(Workbooks, AreTablesBySheetAndByName) {
    const auto connection = Open(Excel(path));
    EXPECT_EQ(Listed(*connection, Schema::Tables, {}, 2),
              QStringLiteral("Details|Empty$|Formats$|Order Details$|Orders$"));
    EXPECT_EQ(Listed(*connection, Schema::Columns, QStringLiteral("Orders$"), 1),
              QStringLiteral("Order ID|Customer|Date|Total|Paid|A#B (x)|Customer1|Mixed|F9|Price"));
    EXPECT_EQ(Types(*connection, QStringLiteral("SELECT * FROM [Orders$]")),
              QStringLiteral("5|203|7|5|11|202|202|5|202|6"));
    EXPECT_EQ(Types(*connection, QStringLiteral("SELECT * FROM [Formats$]")),
              QStringLiteral("5|7|7|7|6|5|5"));
    static constexpr Question questions[] = {
        {"SELECT * FROM [Orders$] WHERE [Order ID] = 2", "2|K2 – ß😀 <&>|1996-07-02|2.5|False|x\r|c|2|~|2.20"},
        {"SELECT [Date], Mixed FROM [Orders$] WHERE [Order ID] = 3", "1996-07-03 08:30:00|~"},
        {"SELECT LEN([Customer]) FROM [Orders$] WHERE [Order ID] = 5", "600"},
        {"SELECT * FROM [Details]", "a|3; ~|~; b|4"},
        {"SELECT * FROM [Order Details$C5:D6]", "a|3"},
        // Ten rows more of one column, and a last one whose value is of another kind.
        {"SELECT COUNT(*), COUNT(Name), COUNT(Qty), COUNT(Name1) FROM [Order Details$]", "15|13|2|1"},
        {"SELECT * FROM [Formats$]", "40000|1899-12-30 18:00:00|1899-12-31 12:00:00|1899-12-29|5.00|0.5|12"},
        {"SELECT COUNT(*) FROM [Empty$]", "0"},
        {"SELECT o.[Order ID], d.Name FROM [Orders$] AS o INNER JOIN [Details] AS d ON o.[Order ID] = d.Qty",
         "3|a; 4|b"},
    };
    for (const Question& question : questions)
        EXPECT_EQ(Answer(*connection, QString::fromUtf8(question.Statement)),
                  QString::fromUtf8(question.Expected));
}

TEST_F(Workbooks, AreReadAsTheStringSays) {
    const auto mixed = Open(Jet(path, "HDR=Yes;IMEX=1"));
    EXPECT_EQ(Answer(*mixed, QStringLiteral("SELECT * FROM [Order Details$] WHERE Name IN ('b', 'c')")),
              QStringLiteral("b|4|one; c|many|TRUE"));
    const auto headless = Open(Jet(path, "HDR=No"));
    EXPECT_EQ(Answer(*headless, QStringLiteral("SELECT F1, F2 FROM [Details]")),
              QStringLiteral("Name|~; a|3; ~|~; b|4"));
}

TEST_F(Workbooks, OfOtherProgramsReadTheSame) {
    const QString xls = Converted("xls");
    if (xls.isEmpty()) GTEST_SKIP() << "LibreOffice is not installed";
    static constexpr Question questions[] = {
        {"SELECT [Order ID], Customer, [Date], Total, Paid, [A#B (x)], Customer1, Mixed FROM [Orders$] WHERE "
         "[Order ID] "
         "= 2",
         "2|K2 – ß😀 <&>|1996-07-02|2.5|False|x\r|c|2"},
        {"SELECT COUNT(*), COUNT(Name), COUNT(Qty), COUNT(Name1) FROM [Order Details$]", "15|13|2|1"},
        {"SELECT * FROM [Order Details$C5:D8]", "a|3; ~|~; b|4"},
    };
    for (const QString& file : {Converted("xlsx"), xls}) {
        const auto connection = Open(Excel(file));
        for (const Question& question : questions)
            EXPECT_EQ(Answer(*connection, QString::fromUtf8(question.Statement)),
                      QString::fromUtf8(question.Expected))
                << file.toStdString();
    }
}

TEST_F(Workbooks, OfOurOwnComeBack) {
    const QList<Field> fields{
        {u"ID"_qs, DataType::Integer}, {u"Name"_qs, DataType::VarWChar, 40}, {u"Day"_qs, DataType::DBDate}};
    zephrin::test::FakeRows rows(fields, 3000, [](ColumnStore& into, qint64 row) {
        into.AppendInt(0, row);
        into.AppendText(1, "<Ä & B>", 8);
        into.AppendDate(2, row);
    });
    QString written;
    excel::WorkbookFile book(rows, folder.path(), [&](const QString& file, qint64) { written = file; });
    book.AddWorkbook();
    book.SetSheetName(book.SheetAt(1), QStringLiteral("Query Results"));
    const int query = book.AddQueryTable(book.SheetAt(1), QStringLiteral("OLEDB;x"), QStringLiteral("A1"));
    book.SetQuerySql(query, QStringLiteral("SELECT"));
    book.Refresh(query);
    book.SetVisible(true);
    ASSERT_FALSE(written.isEmpty());
    const auto connection = Open(Excel(written));
    EXPECT_EQ(Answer(*connection,
                     QStringLiteral("SELECT COUNT(*), MAX(ID), MAX(Day), MIN(Name) FROM [Query Results$]")),
              QStringLiteral("3000|2999|1978-03-19|<Ä & B>"));
}

TEST_F(Workbooks, ThatCanNotBeReadSayWhy) {
    QFile whole(path);
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    QByteArray bytes = whole.readAll();
    struct Row {
        QByteArray Bytes;
        const char* Why;
    };
    const Row rows[] = {
        {{}, "it is empty"},
        {"hello", "it is not an Excel workbook"},
        {bytes.first(bytes.size() / 2), "it is damaged"},
        {QByteArray("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1") + QByteArray(5000, '\0'), "it is damaged"},
    };
    const QString file = folder.filePath(QStringLiteral("bad.xlsx"));
    for (const Row& row : rows) {
        Write(file, row.Bytes);
        const QString outcome = Outcome(Excel(file));
        EXPECT_TRUE(outcome.contains(QLatin1StringView(row.Why))) << outcome.toStdString();
    }
}

}  // namespace

}  // namespace zephrin::ado::files::test
