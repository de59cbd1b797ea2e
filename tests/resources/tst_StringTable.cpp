#include "resources/StringTable.h"
#include "resources/StringTexts.h"

#include <gtest/gtest.h>

using namespace zephrin::resources;

namespace {

struct Named {
    int Id;
    const char* Text;
};

// Texts that are put together with others: their blanks, quotes and missing full stops are a part of the
// result.
TEST(StringTable, PiecesKeepTheirEdges) {
    const Named table[] = {
        {153, "2: All records from left table and only those records from the right Table that match"},
        {159, "Do you want to include"},
        {160, " as an Output Field ?"},
        {166, "Table : '"},
        {167, "' unknown to database"},
        {190, "Export Error:"},
        {199, "Query "},
        {202, "Error Opening Query :"},
        {209, "Connection string:"},
    };
    for (const Named& row : table) EXPECT_EQ(LoadResString(row.Id), QString::fromUtf8(row.Text)) << row.Id;
}

// The search needs rising ids, and a row outside the set could never be read.
TEST(StringTable, RowsRiseWithinTheSet) {
    int last = FirstStringId - 1;
    for (const StringRow& row : StringRows()) {
        EXPECT_GT(row.Id, last);
        EXPECT_LE(row.Id, LastStringId);
        EXPECT_TRUE(row.Texts[0]) << row.Id;
        last = row.Id;
    }
}

// A translated piece needs a blank wherever the English one has it.
TEST(StringTable, TranslationsKeepOuterBlanks) {
    for (const StringRow& row : StringRows()) {
        const QString english = LoadResString(row.Id);
        for (int set = 1; set <= 3; ++set) {
            const QString text = LoadResString(row.Id + set * StringSetDistance);
            ASSERT_FALSE(text.isEmpty()) << row.Id;
            EXPECT_EQ(text.front().isSpace(), english.front().isSpace()) << row.Id;
            EXPECT_EQ(text.back().isSpace(), english.back().isSpace()) << row.Id;
        }
    }
}

TEST(StringTable, SetsAreTwoHundredApart) {
    EXPECT_EQ(LoadResString(118), u"Execute");
    EXPECT_EQ(LoadResString(318), u"Ex\u00e9cuter");
    EXPECT_EQ(LoadResString(518), u"Ausf\u00fchren");
    EXPECT_EQ(LoadResString(718), u"Ejecutar");
}

TEST(StringTable, NoTextBesideTheSets) {
    for (const int id : {-1, 0, 100, 247, 300, 447, 500, 847, 900, 901, 918, 1301, 192, 204, 207, 210})
        EXPECT_TRUE(LoadResString(id).isEmpty()) << id;
}

}  // namespace
