#include "Shop.h"
#include "platform/ado/providers/sqlite/dialect/Translation.h"

#include <QRandomGenerator>

namespace zephrin::ado::providers::sqlite::test {
namespace {

/// Two tables of the same rows, one with indexes: whatever is asked, both answer the same.
TEST(TextIndexes, FindWhatAScanFinds) {
    const TestDatabase database(
        "CREATE TABLE Plain (Id int, Name nvarchar(40), Code varchar(9) COLLATE NOCASE, Kind STRING);"
        "CREATE TABLE Quick (Id int, Name nvarchar(40), Code varchar(9) COLLATE NOCASE, Kind STRING);"
        "WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < 4000) INSERT INTO Plain "
        "SELECT n, "
        "CASE n % 9 WHEN 0 THEN 'Anna' WHEN 1 THEN 'ANNA  ' WHEN 2 THEN 'Änna' WHEN 3 THEN 'Zoé' WHEN 4 THEN "
        "'ZOÉ' WHEN 5 "
        "THEN 'zoe' || char(769) WHEN 6 THEN NULL WHEN 7 THEN 'n' || (n * 37 % 1009) ELSE char(65 + n % 50) "
        "|| 'x' END, "
        "CASE n % 3 WHEN 0 THEN 'ab' WHEN 1 THEN 'AB' ELSE 'c' END, n % 7 FROM c;"
        "INSERT INTO Quick SELECT * FROM Plain; INSERT INTO Quick (Id, Name) VALUES (-1, x'00ff');"
        "CREATE INDEX ByName ON Quick (Name); CREATE INDEX ByCode ON Quick (Code, Id); CREATE INDEX ByKind "
        "ON Quick (Kind);"
        "CREATE INDEX Some ON Quick (Id) WHERE Id > 5; CREATE VIEW Through AS SELECT * FROM Quick;");
    const auto connection = Connect(database, QStringLiteral("SQL Server"));
    for (const char* const condition :
         {"Name = 'anna'", "Name = 'ANNA   '", "'zoé' = Name", "Name = 'zoe'", "Name = ''", "Name = 'N37'",
          "Name = 'nobody'", "Name = 'anna' OR Name = 'nobody'", "Name IN ('anna', 'ZOÉ', 'n74')",
          "Name NOT IN ('anna', 'zoé')", "NOT (Name = 'anna')", "Name = 'it''s'",
          "(Name = 'anna') OR (Code = 'ab' AND Id < 10)", "Name = 'anna' AND Code = 'AB'", "Code = 'aB '",
          "Kind = '3'", "Name = 'anna' OR Name IS NULL", "NOT (Name = 'nobody' OR Name = 'x')",
          "(CASE WHEN Name = 'anna' THEN 1 END) IS NULL"}) {
        const QString where = QStringLiteral(" WHERE Id > 0 AND (%1)").arg(QString::fromUtf8(condition));
        const QString expected = Answer(*connection, u"SELECT COUNT(*), SUM(Id) FROM Plain"_qs + where);
        for (const char* const source : {"Quick", "Through", "(SELECT * FROM Quick) q",
                                         "Quick q INNER JOIN (SELECT 1 AS One) o ON 1 = o.One"})
            EXPECT_EQ(Answer(*connection,
                             u"SELECT COUNT(*), SUM(Id) FROM "_qs + QString::fromLatin1(source) + where),
                      expected)
                << source << ": " << condition;
    }
    // A cursor that reads on keeps nobody from writing.
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT TOP 1 Id FROM Quick WHERE Name = 'N259'")), u"7"_qs);
    database.Run("INSERT INTO Quick (Id, Name) VALUES (9999, 'aNNa')");
    EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT Id FROM Quick WHERE Name = 'ANNA' AND Id > 9000")),
              u"9999"_qs);
}

class IndexedCatalog : public Catalog {
 public:
    const CatalogTable* Find(const QString&) const override { return &table; }
    std::optional<QStringList> EqualTexts(const QString&, const QString&,
                                          const QString& text) const override {
        if (text == u"many") return std::nullopt;
        return text == u"none" ? QStringList() : QStringList{u'{' + text};
    }

 private:
    CatalogTable table{QStringLiteral("T"),
                       {{QStringLiteral("A"), {DataType::VarWChar}, true, QStringLiteral("T")},
                        {QStringLiteral("B"), {DataType::VarWChar}, true, QStringLiteral("T")}}};
};

/// Only where Null counts as False may the condition say more than it did.
TEST(TextIndexes, AreUsedWhereConditionsFilter) {
    const struct {
        const char* Condition;
        int Uses;
    } cases[] = {
        {"A = 'x'", 1},
        {"'x' = A AND B = 'y'", 2},
        {"A = 'x' OR (B = 'y' AND A = 'z')", 3},
        {"A IN ('x', 'y')", 2},
        {"A = 'x' OR A = 'none'", 1},
        {"NOT (A = 'x')", 0},
        {"A <> 'x'", 0},
        {"A NOT IN ('x')", 0},
        {"A = 'many'", 0},
        {"A = B", 0},
        {"CASE WHEN A = 'x' THEN 1 END IS NULL", 0},
        {"A IN ('x', 'many')", 0},
        {"A LIKE 'x'", 0},
        {"LEFT(A, 1) = 'x'", 0},
    };
    for (const auto& row : cases) {
        const QString statement = u"SELECT 1 FROM T WHERE "_qs + QString::fromLatin1(row.Condition);
        const QByteArray written =
            Translate(statement, Dialect::SqlServer, IndexedCatalog()).Steps.front().Text();
        EXPECT_EQ(written.count("{"), row.Uses) << written.constData();
        // The engine reads all rows for one side of OR that it takes for a constant.
        EXPECT_FALSE(written.contains("IN ()")) << written.constData();
    }
}

}  // namespace
}  // namespace zephrin::ado::providers::sqlite::test
