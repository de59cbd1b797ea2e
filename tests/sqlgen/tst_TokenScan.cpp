#include "SqlState.h"
#include "sqlgen/TokenScan.h"

namespace zephrin {

namespace {

QString Named(const char* cell, const char* name) {
    const test::SqlState sql;
    QString text;
    AppendNamed(text, QString::fromLatin1(cell), QString::fromLatin1(name), sql.state.Form->OperatorTokens);
    return text;
}

}  // namespace

TEST(TokenScan, NamesEveryOperatorThatIsReal) {
    const struct {
        const char* Cell;
        const char* Expected;
    } rows[] = {
        {"> 5 AND < 10", "F > 5 AND F < 10"},
        {"= 5", "F = 5"},
        {"<> 5", "F <> 5"},
        {">= 5 AND <= 9", "F >= 5 AND F <= 9"},
        {"LIKE 'a%'", "F LIKE 'a%'"},
        {"NOT LIKE 'a%'", "F NOT LIKE 'a%'"},
        {"IS NULL", "F IS NULL"},
        {"IS NOT NULL", "F IS NOT NULL"},
        {"BETWEEN 1 AND 5", "F BETWEEN 1 AND 5"},
        {"5", "5"},
        {"", ""},
        // Quotes are not seen, capitals are.
        {"= 'a=b'", "F = 'aF =b'"},
        {"= 'LIKE it'", "F = 'F LIKE it'"},
        {"like 'a'", "like 'a'"},
        // The first place that is no operator of its own ends the search for that token.
        {"> 5 AND <> 3 AND > 7", "F > 5 AND F <> 3 AND > 7"},
        {"NOT LIKE 'a' AND LIKE 'b'", "F NOT LIKE 'a' AND LIKE 'b'"},
        // Two places in front of LIKE, T alone decides.
        {"'T LIKE'", "'T LIKE'"},
        {"xLIKE", "xF LIKE"},
        {"T LIKE", "T LIKE"},
        {"=5", "F =5"},
        {">", "F >"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Named(row.Cell, "F"), QString::fromLatin1(row.Expected)) << row.Cell;
}

TEST(TokenScan, NamesThatWerePutInAreNotSearched) {
    EXPECT_EQ(Named("= 1 AND > 2", "IIF(a>b,c=1,0)"),
              QStringLiteral("IIF(a>b,c=1,0) = 1 AND IIF(a>b,c=1,0) > 2"));
}

}  // namespace zephrin
