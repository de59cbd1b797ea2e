#include "FilesTest.h"

namespace zephrin::ado::files::test {

namespace {

class AccessFiles : public FilesTest {
 protected:
    void SetUp() override {
        if (SharedFolder().isEmpty()) GTEST_SKIP() << zephrin::test::NoSharedFiles;
    }
};

TEST_F(AccessFiles, HaveTheValuesThatAreInThem) {
    struct Row {
        const char* File;
        const char* Statement;
        const char* Expected;
    };
    static constexpr Row rows[] = {
        {"testV1997.mdb", "SELECT * FROM Table1 WHERE A LIKE 'abc%'",
         "abcdefg|hijklmnop|2|222|333333333|444.555|1974-09-21|3.50|True"},
        // Calculated columns hold what the file holds, of the type of their result.
        {"calcFieldTestV2010.accdb",
         "SELECT LastFirst, LastFirstLen, MonthlySalary, IsRich, AllNames, BoolTest FROM Table1 WHERE ID IN "
         "(1, 3)",
         "Wayne, Bruce|12|83333.3333|True|Wayne, Bruce=Wayne, Bruce|True; "
         "Doe, John|9|0.00|False|Doe, John=Doe, John|True"},
        {"calcFieldTestV2010.accdb", "SELECT WeeklySalary, DecimalTest, FloatTest FROM Table1 WHERE ID = 2",
         "-0.0192307692307692|-36.2222|0.0035889593"},
        // Days before 1900, and before the calendar's change.
        {"oldDatesV2007.accdb", "SELECT DateField FROM Table1 ORDER BY ID",
         "1582-10-15; 1582-10-14; 1492-01-10; 1392-01-10"},
        // Rows that were moved to another page come where they stood.
        {"overflowTestV2003.mdb", "SELECT data1, data3, data9 FROM Table1 WHERE data3 LIKE 'row[35]%'",
         "~|row3col3|row3col9; ~|row5col2|~"},
        {"delColTestV2003.mdb", "SELECT * FROM Table1", "0|2|foo|foo2; 3|5|bar|bar2"},
        {"testUnicodeCompV2003.mdb", "SELECT Unicode FROM [Table] WHERE ID IN (2, 3, 5)",
         "ääkkösiä; Мир; 漢字仮名交じり文"},
        {"queryTestV2007.accdb", "SELECT COUNT(*) FROM MSysQueries WHERE Attribute = 255", "9"},
    };
    for (const Row& row : rows) {
        const auto connection = OpenDatabase(SharedFolder() + QLatin1StringView(row.File));
        EXPECT_EQ(Answer(*connection, QString::fromUtf8(row.Statement)), QString::fromUtf8(row.Expected))
            << row.File;
    }
}

TEST_F(AccessFiles, TellTypesAsTheirDriversDo) {
    const auto old = OpenDatabase(SharedFolder() + QStringLiteral("testV1997.mdb"));
    EXPECT_EQ(Types(*old, QStringLiteral("SELECT * FROM Table1")), QStringLiteral("202|202|17|2|3|5|7|6|11"));
    const auto calculated = OpenDatabase(SharedFolder() + QStringLiteral("calcFieldTestV2010.accdb"));
    EXPECT_EQ(Types(*calculated, QStringLiteral("SELECT * FROM Table1")),
              QStringLiteral("3|202|202|202|202|3|6|6|11|203|5|6|11|131|5|4|5"));
}

/// Every table of every file, and as many rows as the file itself counts: a damaged one would be refused.
TEST_F(AccessFiles, AreReadWhole) {
    int tables = 0;
    for (const QFileInfo& file :
         QDir(SharedFolder()).entryInfoList({QStringLiteral("*.mdb"), QStringLiteral("*.accdb")})) {
        const auto connection = OpenDatabase(file.filePath());
        const RecordsetPtr offered = connection->OpenSchema(Schema::Tables);
        for (qint64 row = 0; row < offered->RecordCount(); ++row) {
            const QString name = offered->TextAt(row, 2);
            const QString count = Answer(*connection, QStringLiteral("SELECT COUNT(*) FROM [%1]").arg(name));
            EXPECT_FALSE(count.startsWith(u'!'))
                << file.fileName().toStdString() << ' ' << count.toStdString();
            ++tables;
        }
    }
    EXPECT_GT(tables, 150);
}

TEST_F(AccessFiles, AreNeverWritten) {
    const auto connection = OpenDatabase(SharedFolder() + QStringLiteral("testV1997.mdb"));
    for (const char* statement :
         {"DELETE FROM Table1", "UPDATE Table1 SET A = 'x'", "DROP TABLE Table1",
          "CREATE VIEW V AS SELECT A FROM Table1", "INSERT INTO Table1 (A) VALUES ('x')"})
        EXPECT_TRUE(Answer(*connection, QLatin1StringView(statement))
                        .startsWith(QLatin1StringView("! The database is open for reading only")))
            << statement << Answer(*connection, QLatin1StringView(statement)).toStdString();
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT COUNT(*) FROM Table1")), QStringLiteral("2"));
}

TEST_F(AccessFiles, ShowTheirNewRowsAfterAChange) {
    const QString path = folder.filePath(QStringLiteral("shop.mdb"));
    ASSERT_TRUE(QFile::copy(SharedFolder() + QStringLiteral("delColTestV2003.mdb"), path));
    const auto connection = OpenDatabase(path);
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT COUNT(*) FROM Table1")), QStringLiteral("2"));
    QFile::remove(path);
    ASSERT_TRUE(QFile::copy(SharedFolder() + QStringLiteral("overflowTestV2003.mdb"), path));
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT COUNT(*) FROM Table1")), QStringLiteral("7"));
    QFile::remove(path);
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT COUNT(*) FROM Table1")),
              QStringLiteral("! Could not find file '%1'.").arg(path));
}

}  // namespace

}  // namespace zephrin::ado::files::test
