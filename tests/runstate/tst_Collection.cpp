#include "runstate/Collection.h"

#include <gtest/gtest.h>

namespace zephrin {

TEST(Collection, KeysAreFoundWithoutCaseAndStayUnique) {
    Collection tables({QStringLiteral("[Orders]"), QStringLiteral("[orders]"), QStringLiteral("[Items]")});
    EXPECT_EQ(tables.Items(), QStringList({QStringLiteral("[Orders]"), QStringLiteral("[Items]")}));
    EXPECT_TRUE(tables.Contains(QStringLiteral("[ITEMS]")));
    EXPECT_FALSE(tables.Add(QStringLiteral("[items]")));
    EXPECT_TRUE(tables.Remove(QStringLiteral("[ORDERS]")));
    EXPECT_FALSE(tables.Remove(QStringLiteral("[Orders]")));
    EXPECT_EQ(tables.Item(1), QStringLiteral("[Items]"));
    EXPECT_EQ(tables.Item(2), QString());
    EXPECT_TRUE(tables.Contains(QStringLiteral("[items]")));
}

}  // namespace zephrin
