#include "PackageTest.h"

#include <QRegularExpression>

namespace {

using zephrin::test::Outcome;
using zephrin::test::PackageTest;
using zephrin::test::RunProgram;

// Nobody may write beside an installed program, and its queries were saved where it was built: the user gets
// copies that speak of one another.
TEST_F(PackageTest, DemoWorksOnCopiesOfItsSamples) {
    const QString home = Installed().Path(QStringLiteral("home"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home);
    const QString demo = Installed().Prefix() + QStringLiteral("/bin/zephrin-demo");
    const Outcome played = RunProgram(demo, {QStringLiteral("--play")}, environment);
    ASSERT_TRUE(played.Succeeded()) << played.Text();
    EXPECT_FALSE(played.Errors.contains(QStringLiteral("sample"))) << played.Text();

    const QDir own(home + QStringLiteral("/zephrin-demo"));
    QFile master(own.filePath(QStringLiteral("queries/FreightByShipper.zpb")));
    ASSERT_TRUE(master.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(master.readAll());
    EXPECT_TRUE(text.contains(QStringLiteral("Data Source=") + own.filePath(QStringLiteral("shop.db"))));
    EXPECT_FALSE(text.contains(QStringLiteral(ZEPHRIN_BUILD_DIR "/examples")));
    static const QRegularExpression companion(QStringLiteral("\"([^\"]+\\.dat)\""));
    auto found = companion.globalMatch(text);
    EXPECT_TRUE(found.hasNext());
    while (found.hasNext()) {
        const QString path = found.next().captured(1);
        EXPECT_TRUE(QFile::exists(path) && path.startsWith(own.path())) << qPrintable(path);
    }
}

}  // namespace
