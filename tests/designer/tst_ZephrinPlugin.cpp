#include "Editor.h"

#include <QApplication>
#include <QDesignerFormWindowManagerInterface>
#include <QDesignerWidgetBoxInterface>
#include <QDesignerWidgetDataBaseInterface>

#include <algorithm>
#include <gtest/gtest.h>

namespace zephrin::test {
namespace {

TEST(ZephrinPlugin, PutsTheControlIntoTheWidgetBox) {
    const Editor editor;
    const QDesignerWidgetDataBaseInterface* known = editor.core->widgetDataBase();
    const int index = known->indexOfClassName(QStringLiteral("zephrin::Zephrin"));
    ASSERT_GE(index, 0);
    const QDesignerWidgetDataBaseItemInterface* item = known->item(index);
    EXPECT_EQ(item->group(), QStringLiteral("Zephrin"));
    EXPECT_EQ(item->includeFile(), QStringLiteral("<zephrin/Zephrin.h>"));
    EXPECT_FALSE(item->icon().pixmap(24, 24).isNull());
    EXPECT_FALSE(item->toolTip().isEmpty());
    EXPECT_FALSE(item->whatsThis().isEmpty());
    EXPECT_FALSE(item->isContainer());

    const QDesignerWidgetBoxInterface* box = editor.core->widgetBox();
    QStringList offered;  // each with its icon
    for (int category = 0; category < box->categoryCount(); ++category) {
        for (int widget = 0; widget < box->widgetCount(category); ++widget) {
            if (box->category(category).name() != QLatin1StringView("Zephrin")) continue;
            offered << box->widget(category, widget).name() << box->widget(category, widget).iconName();
        }
    }
    EXPECT_EQ(offered.join(u' '), QStringLiteral("Zephrin __qt_icon__zephrin::Zephrin"));
}

TEST(ZephrinPlugin, ShowsTheControlOnAFormInItsFixedSize) {
    Editor editor;
    editor.Open();
    editor.core->topLevel()->show();
    editor.form->show();
    EXPECT_TRUE(editor.control->isVisible());
    EXPECT_EQ(editor.control->size(), editor.control->sizeHint());
}

TEST(ZephrinPlugin, HidesTheControlInAPreview) {
    Editor editor;
    editor.Open();
    editor.core->topLevel()->show();
    editor.form->show();
    editor.core->formWindowManager()->showPreview();
    QCoreApplication::processEvents();
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto preview = std::find_if(windows.begin(), windows.end(), [&editor](const QWidget* window) {
        return window != editor.core->topLevel() && window->findChild<Zephrin*>();
    });
    ASSERT_NE(preview, windows.end());
    EXPECT_TRUE((*preview)->isVisible());
    EXPECT_FALSE((*preview)->findChild<Zephrin*>()->isVisible());
    EXPECT_TRUE(editor.control->isVisible());
    editor.core->formWindowManager()->closeAllPreviews();
}

TEST(ZephrinPlugin, StoresNothingOfAControlThatNobodyChanged) {
    Editor editor;
    editor.Open();
    EXPECT_EQ(editor.Stored(), QString());
    EXPECT_FALSE(editor.form->isDirty());
    EXPECT_TRUE(editor.form->contents().contains(
        QStringLiteral("<header location=\"global\">zephrin/Zephrin.h</header>")));
}

}  // namespace
}  // namespace zephrin::test
