#include "PackageTest.h"

namespace {

using zephrin::test::Outcome;
using zephrin::test::PackageTest;

class FindPackage : public PackageTest {};

TEST_F(FindPackage, GivesWhatIsAskedFor) {
    struct Row {
        const char* What;
        const char* Version;
        const char* Requirement;
        bool Found;
        const char* Says;
    };
#if defined(ZEPHRIN_HAS_DESIGNER)
    constexpr bool designer = true;
    const char* const designerSays = "found: 1";
#else
    constexpr bool designer = false;
    const char* const designerSays = "installed without the plugin for Qt Designer";
#endif
    const Row table[] = {
        {"nothing", "", "REQUIRED", true, "there is Zephrin::Shared"},
        {"both", "0.1", "REQUIRED;COMPONENTS;Static;Shared", true, "there is Zephrin::Static"},
        {"optional", "0.1", "REQUIRED;OPTIONAL_COMPONENTS;Sound", true, "there is Zephrin::Shared"},
        {"the plugin", "", "REQUIRED;COMPONENTS;Designer", designer, designerSays},
        {"unknown", "", "REQUIRED;COMPONENTS;Sound", false,
         "no component \"Sound\". There are Shared, Static and Designer."},
        {"unknown, not required", "", "COMPONENTS;Sound", true, "found: 0"},
        {"newer", "0.2", "REQUIRED", false, "requested version \"0.2\""},
        {"older", "0.0.1", "REQUIRED", false, "requested version \"0.0.1\""},
    };
    int number = 0;
    for (const Row& row : table) {
        const Outcome outcome = Installed().Configure(
            QStringLiteral(ZEPHRIN_PROJECTS "/consumer"), QStringLiteral("ask-%1").arg(++number),
            {QStringLiteral("VERSION=") + QLatin1StringView(row.Version),
             QStringLiteral("REQUIREMENT=") + QLatin1StringView(row.Requirement)});
        EXPECT_EQ(outcome.Succeeded(), row.Found) << row.What << ": " << outcome.Text();
        // CMake breaks the lines of an error.
        const QString said = (outcome.Output + outcome.Errors).simplified();
        EXPECT_TRUE(said.contains(QLatin1StringView(row.Says))) << row.What << ": " << outcome.Text();
    }
}

}  // namespace
