#if defined(ZEPHRIN_DEMO)

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// The play ends with an error where any control is missing, hidden or disabled on the way, so its success is
// the test of the whole way from the host's call to sorted rows.
TEST(Demo, PlaysAQueryByItself) {
    const QTemporaryDir folder;
    QProcess demo;
    demo.start(QStringLiteral(ZEPHRIN_DEMO),
               {QStringLiteral("--play"), QStringLiteral("--pictures"), folder.path()});
    ASSERT_TRUE(demo.waitForFinished(100'000));
    const QString output = QString::fromUtf8(demo.readAllStandardOutput());
    ASSERT_EQ(demo.exitCode(), 0) << demo.readAllStandardError().constData();
    EXPECT_TRUE(output.contains(QStringLiteral("SELECT DISTINCT TOP 250 [Orders].[OrderID]")))
        << qPrintable(output);
    EXPECT_TRUE(output.contains(QStringLiteral("The first of 250 rows:"))) << qPrintable(output);
    EXPECT_TRUE(output.contains(QStringLiteral("[Customers] INNER JOIN [Orders]"))) << qPrintable(output);
    EXPECT_EQ(output.count(QStringLiteral("ZPBUnloaded")), 2) << qPrintable(output);

    const QStringList pictures = QDir(folder.path()).entryList({QStringLiteral("*.png")});
    EXPECT_EQ(pictures.size(), 7);
    for (const QString& name : pictures)
        EXPECT_FALSE(QImage(folder.filePath(name)).isNull()) << qPrintable(name);
}

// With its database in the folder the host of the README comes up with the wizard and stays until it is
// closed.
TEST(ReadmeHost, ShowsTheWizard) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(QStringLiteral(ZEPHRIN_SHOP_DB), folder.filePath(QStringLiteral("shop.db"))));
    QProcess host;
    host.setWorkingDirectory(folder.path());
    host.start(QStringLiteral(ZEPHRIN_README_HOST), QStringList());
    ASSERT_TRUE(host.waitForStarted());
    EXPECT_FALSE(host.waitForFinished(1500)) << host.readAllStandardError().constData();
    host.kill();
    host.waitForFinished();
}

}  // namespace

#endif
