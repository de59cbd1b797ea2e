#include "demo/SampleData.h"
#include "support/DiskFaults.h"
#include "support/ExpectedLog.h"

#include <zephrin/ado/Recordset.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using zephrin::test::ContentOf;
using zephrin::test::FaultyDisk;

TEST(SampleData, WhateverTheDiskDoesThereAreWholeCopiesOrNone) {
    zephrin::test::ExpectLog(QStringLiteral("The sample queries are not complete"));
    const QTemporaryDir folder;
    const QDir place(folder.path()), built(QStringLiteral(ZEPHRIN_SAMPLE_QUERIES));
    ASSERT_TRUE(place.mkpath(QStringLiteral("installed/queries")));
    const QDir installed(place.filePath(QStringLiteral("installed")));
    const QDir queries(installed.filePath(QStringLiteral("queries")));
    const auto shop = QStringLiteral("shop.db");
    ASSERT_TRUE(QFile::copy(QStringLiteral(ZEPHRIN_SHOP_DB), installed.filePath(shop)));
    const QStringList names = built.entryList({QStringLiteral("*.zpb"), QStringLiteral("*.dat")});
    for (const QString& name : names) ASSERT_TRUE(QFile::copy(built.filePath(name), queries.filePath(name)));

    bool happened = true;
    int step = 0;
    for (; happened; ++step) {
        const QDir user(place.filePath(QStringLiteral("user")));
        {
            const FaultyDisk disk(user.path(), step, ENOSPC, FaultyDisk::Fault::FromThenOn);
            demo::CopySamples(user, installed);
            happened = disk.Happened();
        }
        // The next start, on a disk that is well, finds nothing half.
        const demo::SampleData data = demo::CopySamples(user, installed);
        EXPECT_EQ(ContentOf(data.Database).size(), ContentOf(installed.filePath(shop)).size())
            << "step " << step;
        EXPECT_EQ(QDir(data.Queries).entryList(QDir::Files | QDir::Hidden), names) << "step " << step;
        for (const QString& name : names) {
            zephrin::ado::Recordset rows;
            EXPECT_NO_THROW(rows.OpenFile(QDir(data.Queries).filePath(name))) << "step " << step;
        }
        QDir(user.path()).removeRecursively();
    }
    EXPECT_GT(step, 30);
}

}  // namespace
