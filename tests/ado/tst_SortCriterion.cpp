#include "Failing.h"
#include "platform/ado/SortCriterion.h"

#include <gtest/gtest.h>

namespace zephrin::ado {
namespace {

TEST(SortCriterion, ReadsNamesAndDirections) {
    const FieldList fields(
        {Field{u"Name"_qs}, Field{u"Unit Price"_qs}, Field{u"[Orders].[ID]"_qs}, Field{u"a,b"_qs}});
    const struct {
        const char16_t* Criterion;
        const char16_t* Keys;  ///< column and direction, or the number of the error
    } cases[] = {
        {u"", u""},
        {u"  ", u""},
        {u"Name", u"0+"},
        {u"NAME asc", u"0+"},
        {u"name DESC", u"0-"},
        {u"  name   desc  ", u"0-"},
        {u"[Unit Price] DESC, Name", u"1- 0+"},
        {u"[unit price],[Name]desc", u"3001"},
        {u"Name,[Unit Price]", u"0+ 1+"},
        {u"[[Orders]].[ID]]] DESC", u"2-"},
        {u"[a,b]", u"3+"},
        {u"Unit Price", u"3001"},
        {u"Unit Price ASC", u"3001"},
        {u"Name SIDEWAYS", u"3001"},
        {u"Name DESC ASC", u"3001"},
        {u"Name,", u"3001"},
        {u",Name", u"3001"},
        {u"[Name", u"3001"},
        {u"[]", u"3001"},
        {u"Nobody", u"3265"},
        {u"Nobody DESC", u"3265"},
        {u"a,b", u"3265"},
        {u" DESC", u"3265"},
    };
    for (const auto& row : cases) {
        QStringList keys;
        const QString criterion = QString::fromUtf16(row.Criterion);
        const int number = test::NumberOf([&] {
            for (const SortKey& key : ReadSortCriterion(criterion, fields))
                keys << QString::number(key.Column) + (key.Descending ? u'-' : u'+');
        });
        EXPECT_EQ(number ? QString::number(number) : keys.join(u' '), QString::fromUtf16(row.Keys))
            << qPrintable(criterion);
    }
}

}  // namespace
}  // namespace zephrin::ado
