#include "PackageTest.h"

namespace {

using zephrin::test::Outcome;
using zephrin::test::PackageTest;
using zephrin::test::RunProgram;

const QString shop = QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=" ZEPHRIN_SHOP_DB);

/// The cities of all customers, asked for in an open wizard.
const QStringList askForCities{
    QStringLiteral("pick lstZPQTableSelection [Customers]"),
    QStringLiteral("press cmdZPQTableRight"),
    QStringLiteral("tab TabZPG 2"),
    QStringLiteral("pick lstZPQFieldFrom [Customers].[City]"),
    QStringLiteral("press cmdZPQFieldRight"),
    QStringLiteral("tab TabZPG 3"),
    QStringLiteral("press cmdRunQuery"),
};
const QStringList leave{QStringLiteral("press cmdExit")};
const QStringList leaveUnsaved{QStringLiteral("press cmdExit"), QStringLiteral("answer No")};

class Examples : public PackageTest {
 protected:
    /// The program of an example, built against the installed package as it stands in its folder.
    static QString Host(const QString& example, const QString& program) {
        const Outcome configured =
            Installed().Configure(QStringLiteral(ZEPHRIN_EXAMPLES "/") + example, example);
        EXPECT_TRUE(configured.Succeeded()) << configured.Text();
        const Outcome built = Installed().Build(example);
        EXPECT_TRUE(built.Succeeded()) << built.Text();
        return Installed().Path(example + u'/' + program);
    }

    static void ExpectCities(const QString& program) {
        const Outcome played = Installed().Play(program, {shop}, askForCities + leaveUnsaved);
        EXPECT_TRUE(played.Succeeded()) << played.Text();
        EXPECT_TRUE(played.Output.contains(QStringLiteral("[Customers].[City]"))) << played.Text();
        EXPECT_TRUE(played.Output.contains(QStringLiteral(" rows\n"))) << played.Text();
    }
};

TEST_F(Examples, MinimalHostHearsOfAQuery) {
    const QString host = Host(QStringLiteral("minimal"), QStringLiteral("minimal_host"));
    ExpectCities(host);

    const Outcome refused =
        RunProgram(host, {QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=/no/such.db")});
    EXPECT_TRUE(refused.Ended && refused.ExitCode == 1) << refused.Text();
    EXPECT_TRUE(refused.Errors.contains(QStringLiteral("such.db"))) << refused.Text();
}

TEST_F(Examples, MinimalHostRunsOnTheStaticLibrary) {
    const QString name = QStringLiteral("static");
    const Outcome configured =
        Installed().Configure(QStringLiteral(ZEPHRIN_PROJECTS "/consumer"), name,
                              {QStringLiteral("REQUIREMENT=REQUIRED;COMPONENTS;Static"),
                               QStringLiteral("SOURCE=" ZEPHRIN_EXAMPLES "/minimal/main.cpp")});
    ASSERT_TRUE(configured.Succeeded()) << configured.Text();
    const Outcome built = Installed().Build(name);
    ASSERT_TRUE(built.Succeeded()) << built.Text();
    const QString program = Installed().Path(name + QStringLiteral("/consumer"));
    EXPECT_FALSE(RunProgram(QStringLiteral("ldd"), {program}).Output.contains(QStringLiteral("libZephrin")));
    ExpectCities(program);
}

TEST_F(Examples, MinimalHostBuildsWithPkgConfig) {
    const QString folder = Installed().LibraryFolder();
    const struct {
        const char* Package;
        bool Shared;
    } table[] = {{"zephrin", true}, {"zephrin-static", false}};
    for (const auto& row : table) {
        const QString program =
            Installed().Path(QStringLiteral("by-pkg-config-")) + QLatin1StringView(row.Package);
        const QString command =
            QStringLiteral("PKG_CONFIG_PATH='%1/pkgconfig'; export PKG_CONFIG_PATH; exec " ZEPHRIN_CXX
                           " -std=c++20 " ZEPHRIN_EXAMPLES
                           "/minimal/main.cpp -o '%2' $(pkg-config --cflags --libs %3) -Wl,-rpath,'%1'")
                .arg(folder, program, QLatin1StringView(row.Package));
        const Outcome built = RunProgram(QStringLiteral("sh"), {QStringLiteral("-c"), command});
        ASSERT_TRUE(built.Succeeded()) << built.Text();
        const QString libraries = RunProgram(QStringLiteral("ldd"), {program}).Output;
        EXPECT_EQ(libraries.contains(folder), row.Shared) << row.Package << qPrintable(libraries);
        ExpectCities(program);
    }
}

TEST_F(Examples, FormFromDesignerShowsRows) {
    const QString host = Host(QStringLiteral("form"), QStringLiteral("form_host"));
    const Outcome played = Installed().Play(
        host, {shop},
        QStringList{QStringLiteral("press buildButton")} + askForCities + leave +
            QStringList{QStringLiteral("see statementEdit FROM [Customers]"),
                        QStringLiteral("see countLabel row"), QStringLiteral("close buildButton")});
    EXPECT_TRUE(played.Succeeded()) << played.Text();
}

TEST_F(Examples, SavedQueriesAreOpenedByName) {
    const QString host = Host(QStringLiteral("saved-queries"), QStringLiteral("saved_queries_host"));
    const QString folder = Installed().Path(QStringLiteral("queries"));
    const QStringList save{
        QStringLiteral("press cmdSaveQuery"),
        QStringLiteral("type Cities"),
        QStringLiteral("answer OK"),
        QStringLiteral("see status Saved: Cities"),
    };
    const QStringList reopen{
        QStringLiteral("pick names Cities"), QStringLiteral("press openButton"),
        QStringLiteral("tab TabZPG 3"),      QStringLiteral("press cmdRunQuery"),
        QStringLiteral("see status row"),    QStringLiteral("see statement FROM [Customers]"),
    };
    const Outcome played =
        Installed().Play(host, {shop, folder},
                         QStringList{QStringLiteral("press newButton")} + askForCities + save + leaveUnsaved +
                             reopen + leaveUnsaved + QStringList{QStringLiteral("close names")});
    EXPECT_TRUE(played.Succeeded()) << played.Text();

    // The next run finds it, and deletes it.
    const QStringList remove{
        QStringLiteral("pick names Cities"),    QStringLiteral("press openButton"),
        QStringLiteral("press cmdDeleteQuery"), QStringLiteral("answer OK"),
        QStringLiteral("answer Yes"),           QStringLiteral("see status Deleted: Cities"),
    };
    const Outcome again = Installed().Play(
        host, {shop, folder}, remove + leaveUnsaved + QStringList{QStringLiteral("close names")});
    EXPECT_TRUE(again.Succeeded()) << again.Text();
    EXPECT_TRUE(QDir(folder).isEmpty()) << qPrintable(QDir(folder).entryList().join(u' '));
}

}  // namespace
