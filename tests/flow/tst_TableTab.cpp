#include "flow/FieldTab.h"
#include "flow/JoinTab.h"
#include "flow/TableTab.h"
#include "support/WizardRun.h"

#include <gtest/gtest.h>

namespace zephrin {

namespace {

using test::WizardRun;

QString ListPicture(const ListBoxState& list) {
    QStringList items = list.Items.Items();
    if (const int selected = list.Items.ListIndex(); selected >= 0)
        items[selected] = u'<' + items[selected] + u'>';
    return items.join(u' ');
}

/// The tab as one text: the lists with the selected entry in angles, the buttons that are on, the tabs that
/// are open behind the first.
std::string Picture(const FormState& form) {
    QStringList buttons;
    if (form.cmdZPQTableRight.Enabled) buttons << QStringLiteral("right");
    if (form.cmdZPQTableRightAll.Enabled) buttons << QStringLiteral("rightall");
    if (form.cmdZPQTableLeft.Enabled) buttons << QStringLiteral("left");
    if (form.cmdZPQTableLeftAll.Enabled) buttons << QStringLiteral("leftall");
    QString tabs;
    for (int tab = 1; tab < WizardTabCount; ++tab)
        if (form.TabZPG.TabEnabled[static_cast<std::size_t>(tab)]) tabs += QString::number(tab);
    QStringList parts{ListPicture(form.lstZPQTableSelection), ListPicture(form.lstZPQTableTo),
                      buttons.join(u' '), tabs};
    parts.replaceInStrings(QStringLiteral("[Customers]"), QStringLiteral("C"));
    parts.replaceInStrings(QStringLiteral("[Order Details]"), QStringLiteral("D"));
    parts.replaceInStrings(QStringLiteral("[Orders]"), QStringLiteral("O"));
    return parts.join(QStringLiteral(" | ")).toStdString();
}

const QString customers = QStringLiteral("[Customers]");
const QString details = QStringLiteral("[Order Details]");
const QString orders = QStringLiteral("[Orders]");

}  // namespace

TEST(TableTab, ListsButtonsAndTabsFollowEveryMove) {
    WizardRun run;
    run.Load();
    FormState& form = run.Form();
    const auto pickLeft = [&](const QString& table) {
        WizardRun::Pick(form.lstZPQTableSelection.Items, table);
    };
    const auto pickRight = [&](const QString& table) { WizardRun::Pick(form.lstZPQTableTo.Items, table); };
    struct Step {
        const char* What;
        std::function<void()> Act;
        const char* Expected;
    };
    const Step steps[] = {
        {"load sorts the offer", [] {}, "C D O |  | rightall | "},
        {"a click turns the button on", [&] { pickLeft(details); }, "C <D> O |  | right rightall | "},
        {"the row behind is selected", [&] { MoveTableRight(run.state); },
         "C <O> | D | right rightall | 234"},
        {"past the end nothing is", [&] { MoveTableRight(run.state); }, "C | D O | rightall | 1"},
        {"arrival keeps its order", [&] { pickLeft(customers), MoveTableRight(run.state); },
         " | D O C | leftall | 1"},
        {"a chosen table is clicked", [&] { pickRight(orders); }, " | D <O> C | left leftall | 1"},
        {"back to its place", [&] { MoveTableLeft(run.state); }, "O | D <C> | left leftall | 1"},
        {"the last one back", [&] { MoveTableLeft(run.state); }, "C O | D | leftall | 234"},
        {"all back closes the tabs", [&] { MoveAllTablesLeft(run.state); }, "C D O |  | rightall | "},
        {"nothing left to move", [&] { MoveTableLeft(run.state); }, "C D O |  | rightall | "},
        {"all at once", [&] { MoveAllTablesRight(run.state); }, " | C D O | leftall | 1"},
    };
    for (const Step& step : steps) {
        step.Act();
        EXPECT_EQ(Picture(form), step.Expected) << step.What;
        EXPECT_TRUE(form.TablesChanged || step.What == steps[0].What || step.What == steps[1].What)
            << step.What;
    }
}

TEST(TableTab, RemembersWhatWasTakenBack) {
    WizardRun run;
    run.Load();
    run.ChooseTable(orders);
    run.ChooseTable(customers);
    MoveAllTablesLeft(run.state);
    EXPECT_EQ(run.Form().RemoveTables.Items(), QStringList({orders, customers}));
    run.ChooseTable(customers);
    EXPECT_EQ(run.Form().RemoveTables.Items(), QStringList({orders}));
    MoveAllTablesRight(run.state);
    EXPECT_TRUE(run.Form().RemoveTables.IsEmpty());
}

TEST(TableTab, WithoutJoinsOneTableLeadsOn) {
    struct Row {
        bool FieldSelection;
        WizardTab Expected;
    };
    for (const Row& row : {Row{true, WizardTab::Fields}, Row{false, WizardTab::Build}}) {
        WizardRun run;
        run.state.Options.gAllowJoinCreation = false;
        run.state.Options.gAllowFieldSelection = row.FieldSelection;
        run.Load();
        run.ChooseTable(orders);
        EXPECT_EQ(run.Form().TabZPG.Tab, static_cast<int>(row.Expected));
        EXPECT_EQ(Picture(run.Form()), "C D | O |  | 234");
        EXPECT_EQ(run.state.FromClause, QStringLiteral("FROM [Orders]"));
        EXPECT_EQ(run.state.colFields.Count(), 3);
    }
}

TEST(TableTab, WithoutJoinsASecondTableIsRefused) {
    WizardRun run;
    run.state.Options.gAllowJoinCreation = false;
    run.state.Options.gRunTimeCaption = QStringLiteral("My Tool");
    run.Load();
    run.ChooseTable(orders);
    run.Form().TabZPG.TabEnabled = {true, false, false, false, false};
    run.ChooseTable(customers);
    ASSERT_EQ(run.prompts->Boxes.size(), 1);
    EXPECT_EQ(
        run.prompts->Boxes[0].Text,
        QStringLiteral("Only 1 Table can be selected at a time.\r\nPlease de-select selected Table first."));
    EXPECT_EQ(run.prompts->Boxes[0].Style, BoxStyle::Information);
    EXPECT_EQ(run.prompts->Boxes[0].Title, QStringLiteral("My Tool"));
    // The refusal leaves the tabs as the one chosen table wants them.
    EXPECT_EQ(Picture(run.Form()), "<C> D | O |  | 234");
}

TEST(TableTab, AWizardThatEndsInTheRefusalIsLeftAlone) {
    WizardRun run;
    run.state.Options.gAllowJoinCreation = false;
    run.Load();
    run.ChooseTable(orders);
    run.prompts->WhileOpen = [&](const auto&) { UnloadForm(run.state); };
    const std::shared_ptr<FormState> form = run.state.Form;
    form->TabZPG.TabEnabled = {true, false, false, false, false};
    MoveTableRight(run.state);
    EXPECT_FALSE(form->TabZPG.TabEnabled[2]);
    EXPECT_TRUE(run.state.Form->TabZPG.TabEnabled[2]);
}

TEST(TableTab, TakingATableBackDropsEveryJoinAndAddingOneKeepsThem) {
    const auto join = [](WizardRun& run) {
        run.state.rsJoins->AddNew();
        run.state.rsJoins->SetValue(u"TableFrom", orders);
        run.state.rsJoins->Update();
        run.Form().JoinText = QStringLiteral("text");
    };
    WizardRun run;
    run.Load();
    run.ChooseTable(orders);
    run.ChooseTable(customers);
    join(run);
    run.ChooseTable(details);
    EXPECT_EQ(run.state.rsJoins->RecordCount(), 1);
    WizardRun::Pick(run.Form().lstZPQTableTo.Items, details);
    MoveTableLeft(run.state);
    EXPECT_EQ(run.state.rsJoins->RecordCount(), 0);
    EXPECT_EQ(run.Form().JoinText, QString());
    join(run);
    MoveAllTablesLeft(run.state);
    EXPECT_EQ(run.state.rsJoins->RecordCount(), 0);
}

}  // namespace zephrin
